// Materials that come from the registered libraries.
#include "host/EntityCore/LibraryManager.h"
#include "support/ImportBench.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace TestSupport;

namespace {

using Libraries = LibraryManager::LibraryManager;

// A library of materials, each with a conductivity, registered for the time of a test.
class MaterialLibrary {
public:
    MaterialLibrary(const char *path, const std::vector<std::pair<std::string, double>> &materials) {
        Model model(Velkin_Solver_Project_t);
        for (const auto &[name, conductivity] : materials) {
            Entity *const material = EntityEditor::createEntity(Material_t, model.root(), Materials_t,
                                                                nullptr, true, true, false, name);
            EntityEditor::setSIValue(material, Conductivity_t / AttributePath(Value_t), conductivity);
        }
        const TempFolder folder;
        std::string error;
        EXPECT_TRUE(ModelFile::save(model, folder.path("library.json"), error)) << error;
        ticket_ = Libraries::addLibraryFile(path, folder.path("library.json"), error);
        EXPECT_NE(ticket_, 0u) << error;
    }
    ~MaterialLibrary() { Libraries::removeLibrary(ticket_); }
    MaterialLibrary(const MaterialLibrary &) = delete;
    MaterialLibrary &operator=(const MaterialLibrary &) = delete;

private:
    Libraries::Ticket ticket_;
};

// A board whose conductor is of a material, imported.
struct ConductorBench : ImportBench {
    explicit ConductorBench(const std::string &name, bool fromLibrary = true) {
        rectangle(0, 0, 0, 4, 2);
        board().setConductorMaterial(name);
        set(Materials_From_Library_t, fromLibrary ? "Yes" : "No");
        boardEntity = import();
    }
    double value(const TypeRef &quantity) const {
        return getStandardDoubleValue(getLinkedEntity(boardEntity, Conductor_Material_t),
                                      quantity / AttributePath(Value_t), -1.0);
    }
    double conductivity() const { return value(Conductivity_t); }

    Entity *boardEntity = nullptr;
};

constexpr const char *vendor = "Vendor Libraries/Materials";
constexpr const char *shipped = "Orvane Material Library";

} // namespace

TEST(MaterialLibraries, AMaterialOfALibraryBringsItsOwnValuesAndNoDefaults) {
    for (const char *path : {vendor, shipped}) {
        const MaterialLibrary library(path, {{"Copper", 123.0}});
        const ConductorBench bench("Copper");
        EXPECT_EQ(bench.conductivity(), 123.0) << path;
        EXPECT_EQ(bench.value(Density_t), 0.0) << path;
        std::string name;
        EXPECT_EQ(getLinkedEntity(bench.boardEntity, Conductor_Material_t)->getName(name), "Copper");
    }
}

TEST(MaterialLibraries, TheVendorsStandsAboveTheShippedOne) {
    const MaterialLibrary second(shipped, {{"Copper", 2.0}, {"Tin", 3.0}});
    const MaterialLibrary first(vendor, {{"Copper", 1.0}});
    EXPECT_EQ(ConductorBench("Copper").conductivity(), 1.0);
    EXPECT_EQ(ConductorBench("Tin").conductivity(), 3.0);
}

TEST(MaterialLibraries, LibrariesOfOtherPathsAreNotSearched) {
    const MaterialLibrary other("Vendor Libraries", {{"Copper", 1.0}, {"Materials/Copper", 2.0}});
    EXPECT_EQ(ConductorBench("Copper").conductivity(), 386.0);
}

TEST(MaterialLibraries, NamesAreMatchedWithCase) {
    const MaterialLibrary library(vendor, {{"copper", 1.0}});
    EXPECT_EQ(ConductorBench("Copper").conductivity(), 386.0);
}

TEST(MaterialLibraries, WithoutTheOptionNoneIsSearched) {
    const MaterialLibrary library(vendor, {{"Copper", 1.0}});
    EXPECT_EQ(ConductorBench("Copper", false).conductivity(), 386.0);
}

TEST(MaterialLibraries, EvenTheDefaultMaterialsComeFromALibraryThatHasThem) {
    const MaterialLibrary library(vendor, {{"Typical Component", 1.0}});
    const ConductorBench bench("Typical Component");
    EXPECT_EQ(bench.conductivity(), 1.0);
    EXPECT_EQ(bench.value(Specific_Heat_t), 0.0);
}

TEST(MaterialLibraries, AMaterialOfTheModelStandsAboveThem) {
    const MaterialLibrary library(vendor, {{"Copper", 1.0}});
    ImportBench bench;
    Entity *const own = EntityEditor::createEntity(Material_t, bench.model.root(), Materials_t, nullptr, true,
                                                   true, false, "Copper");
    bench.rectangle(0, 0, 0, 4, 2);
    bench.board().setConductorMaterial("Copper");
    EXPECT_EQ(getLinkedEntity(bench.import(), Conductor_Material_t), own);
}

TEST(MaterialLibraries, OneCopyServesAModelAndOutlivesTheLibrary) {
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.board().setConductorMaterial("Copper");
    bench.board().setDielectricMaterial("Copper");
    Entity *board = nullptr;
    {
        const MaterialLibrary library(vendor, {{"Copper", 1.0}});
        board = bench.import();
    }
    Entity *const material = getLinkedEntity(board, Conductor_Material_t);
    EXPECT_EQ(material, getLinkedEntity(board, Dielectric_Material_t));
    EXPECT_EQ(bench.children(bench.model.root(), Material_t).size(), 1u);
    EXPECT_EQ(getStandardDoubleValue(material, Conductivity_t / AttributePath(Value_t), -1.0), 1.0);
}

TEST(MaterialLibraries, NamesWithSlashesAreNamesLikeAnyOther) {
    const MaterialLibrary library(vendor, {{"a/b", 1.0}, {"/", 2.0}});
    EXPECT_EQ(ConductorBench("a/b").conductivity(), 1.0);
    EXPECT_EQ(ConductorBench("/").conductivity(), 2.0);
    EXPECT_EQ(ConductorBench(std::string(100000, '/')).conductivity(), 0.3);
}

TEST(MaterialLibraries, UndoTakesTheCopyOut) {
    const MaterialLibrary library(vendor, {{"Copper", 1.0}});
    ImportBench bench;
    bench.rectangle(0, 0, 0, 4, 2);
    bench.board().setConductorMaterial("Copper");
    const std::string before = ModelFile::toText(bench.model);
    bench.import();
    EXPECT_NE(ModelFile::toText(bench.model), before);
    UndoStack::instance().undo();
    EXPECT_EQ(ModelFile::toText(bench.model), before);
}

TEST(MaterialLibraries, AnItemWithASlashOfAnotherLibraryDoesNotPassForOneOfTheVendors) {
    const MaterialLibrary other("Vendor Libraries", {{"Materials/Copper", 2.0}});
    const MaterialLibrary library(vendor, {{"Copper", 1.0}});
    EXPECT_EQ(ConductorBench("Copper").conductivity(), 1.0);
}
