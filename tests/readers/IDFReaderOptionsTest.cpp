// The stored preferences of the format.
#include "readers/IDFReader.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using namespace EntityModel;

// Keeps the preferences of whoever runs the tests out of them.
class IDFReaderOptions : public testing::Test {
protected:
    void SetUp() override {
#ifdef _WIN32
        _putenv_s("EDA_CONFIG_DIR", folder.path().c_str());
#else
        setenv("EDA_CONFIG_DIR", folder.path().c_str(), 1);
#endif
        UserPreference::instance().reload();
    }
    void TearDown() override { UserPreference::instance().reload(); }

    static std::string text(Entity *options, const TypeRef &label) {
        std::string result;
        const Attribute *attribute = options->findAttribute(label, false);
        return attribute == nullptr ? "<none>" : attribute->getString(result);
    }

    TestSupport::TempFolder folder;
    EDA::IDFReader reader;
};

TEST_F(IDFReaderOptions, AreTheStoredEntityOfTheFormat) {
    Entity *options = reader.getOptions();
    ASSERT_NE(options, nullptr);
    EXPECT_EQ(text(options, Name_t), "IDF");
    EXPECT_EQ(options->getType(), EDA_Import_Options_t);
    EXPECT_EQ(reader.getOptions(), options);
}

TEST_F(IDFReaderOptions, PresetTheBoardLayersEachTime) {
    Entity *options = reader.getOptions();
    ASSERT_NE(options, nullptr);
    Attribute *layers = options->findAttribute(Board_Layer_Options_t, false);
    ASSERT_NE(layers, nullptr);
    EXPECT_TRUE(layers->getBool());
    ASSERT_TRUE(layers->setFromString("false"));
    EXPECT_FALSE(layers->getBool());
    reader.getOptions();
    EXPECT_TRUE(layers->getBool());
}

} // namespace
