// Preferences in memory and on disk.
#include "ModelSupport.h"

#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/File.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

using namespace EntityModel;

namespace {

void setVariable(const char *name, const std::string &value) {
#ifdef _WIN32
    _putenv_s(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}

// Each test has preferences of its own, in a folder that does not exist yet.
class UserPreferences : public testing::Test {
protected:
    void SetUp() override {
        const std::string name = "eda-preferences-" + std::to_string(std::random_device()());
        base_ = std::filesystem::temp_directory_path() / name;
        setVariable("EDA_CONFIG_DIR", (base_ / "config").string());
        store().reload();
    }
    void TearDown() override {
        store().reload();
        std::error_code ignored;
        std::filesystem::remove_all(base_, ignored);
    }

    static UserPreference &store() { return UserPreference::instance(); }
    Entity *options(const std::string &name, bool create = true, bool *created = nullptr) const {
        return store().getPreference(EDA_Import_Options_t, Name_t, name, create, created);
    }
    std::string file() const { return (base_ / "config" / "preferences.json").string(); }
    void write(const std::string &text) const {
        std::filesystem::create_directories(base_ / "config");
        std::ofstream(file()) << text;
    }

private:
    std::filesystem::path base_;
};

} // namespace

TEST_F(UserPreferences, FileStandsInTheConfigurationFolder) {
    EXPECT_EQ(std::filesystem::u8path(UserPreference::fileName()), std::filesystem::path(file()));
}

TEST_F(UserPreferences, EntityIsMadeOnFirstUseAndReturnedUnchangedLater) {
    bool created = false;
    Entity *const idf = options("IDF", true, &created);
    ASSERT_NE(idf, nullptr);
    EXPECT_TRUE(created);
    EXPECT_EQ(idf->getType(), EDA_Import_Options_t);
    EXPECT_EQ(textOf(idf, Name_t), "IDF");
    set(idf, "Min Height", "2 mm");
    EXPECT_EQ(options("IDF", true, &created), idf);
    EXPECT_FALSE(created);
    EXPECT_EQ(textOf(idf, Min_Height_t), "2 mm");
    EXPECT_NE(options("IDX"), idf);
}

TEST_F(UserPreferences, AbsentEntityIsNullUnlessAskedFor) {
    bool created = true;
    EXPECT_EQ(options("IDF", false, &created), nullptr);
    EXPECT_FALSE(created);
    EXPECT_EQ(options("IDF", false, nullptr), nullptr);
}

TEST_F(UserPreferences, OtherTypesAndNamesAreNoPreferences) {
    EXPECT_EQ(store().getPreference(PCB_t, Name_t, "x", true, nullptr), nullptr);
    EXPECT_EQ(store().getPreference(TypeRef("No Such Type"), Name_t, "x", true, nullptr), nullptr);
    EXPECT_EQ(store().getPreference(EDA_Import_Options_t, TypeRef("Nothing"), "x", true, nullptr), nullptr);
    EXPECT_EQ(store().getPreference(EDA_Import_Options_t, Min_Height_t, "low", true, nullptr), nullptr);
}

TEST_F(UserPreferences, ComeBackFromDisk) {
    Entity *const gerber = options("Gerber");
    set(gerber, "Merge Conductors", "false");
    set(gerber, "Min Power", "2 W");
    gerber->findAttribute(Import_Vias_t)->setFlag(true);
    set(store().getPreferences(), "Global Units", "Imperial");
    std::string error;
    ASSERT_TRUE(store().save(error)) << error;
    store().reload();
    Entity *const again = options("Gerber", false);
    ASSERT_NE(again, nullptr) << store().loadError();
    EXPECT_EQ(textOf(again, Merge_Conductors_t), "No");
    EXPECT_EQ(textOf(again, Min_Power_t), "2 W");
    EXPECT_TRUE(again->findAttribute(Import_Vias_t)->getFlag());
    EXPECT_FALSE(again->findAttribute(Import_Bumps_t)->getFlag());
    EXPECT_EQ(textOf(store().getPreferences(), Global_Units_t), "Imperial");
    EXPECT_EQ(store().loadError(), "");
}

TEST_F(UserPreferences, AreNoUndoSteps) {
    UndoStack::instance().clear();
    {
        const UndoStackOpener opener("Import");
        options("IDF");
    }
    EXPECT_EQ(UndoStack::instance().numSteps(), 0u);
    EXPECT_NE(options("IDF", false), nullptr);
}

TEST_F(UserPreferences, BadFileCountsAsAbsentAndIsReported) {
    write("{\"format\":\"eda-model\",\n\"version\":3}");
    EXPECT_EQ(options("IDF", false), nullptr);
    EXPECT_EQ(store().loadError(), file() + ":2: version 3 can't be read; this is version 1");
    EXPECT_NE(options("IDF"), nullptr);
}

TEST_F(UserPreferences, ModelOfADesignIsNoPreferencesFile) {
    write(ModelFile::toText(Model()));
    EXPECT_NE(store().getPreferences(), nullptr);
    EXPECT_EQ(store().loadError(), file() + ": is not a preferences file");
}

TEST_F(UserPreferences, FolderThatCanNotBeMadeIsReported) {
    write("");
    setVariable("EDA_CONFIG_DIR", file() + "/below");
    store().reload();
    options("IDF");
    std::string error;
    EXPECT_FALSE(store().save(error));
    EXPECT_NE(error.find("preferences.json: "), std::string::npos) << error;
}

TEST_F(UserPreferences, SavingWhatWasNeverUsedWritesNothing) {
    std::string error;
    EXPECT_TRUE(store().save(error));
    EXPECT_FALSE(FileSystem::File::exists(file()));
}

TEST_F(UserPreferences, ProxyGivesGlobalChoices) {
    EXPECT_EQ(UserPreferencesProxy::typeValue(Component_Outline_Type_t, TypeRef("x")),
              TypeRef("Body Outline"));
    set(store().getPreferences(), "Component Outline Type", "DFA Bound");
    EXPECT_EQ(UserPreferencesProxy::typeValue(Component_Outline_Type_t, TypeRef("x")), DFA_Bound_t);
    EXPECT_EQ(UserPreferencesProxy::typeValue(TypeRef("Nothing"), DFA_Bound_t), DFA_Bound_t);
}
