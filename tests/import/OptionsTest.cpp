// Options, filters and type maps.
#include "FilterSupport.h"
#include "support/ImportBench.h"
#include "support/TempFolder.h"

#include <fstream>
#include <gmock/gmock.h>

using namespace TestSupport;
using testing::ElementsAre;
using testing::Pair;

namespace {

void addPart(ImportBench &bench, double height, const char *power = nullptr, const char *units = "MM") {
    EDA::EDAComponent part = squarePart(height, units);
    if (power) part.addProperty("POWER_OPR", power);
    bench.board().addComponent(part, false);
}

} // namespace

TEST(ImportOptions, ANullEntityChangesNothing) {
    ImportBench bench;
    bench.importer.setImportOptions(nullptr, bench.board());
    EXPECT_EQ(bench.importer.getImportAs(), PCB_t);
}

TEST(ImportOptions, WhatABoardIsImportedAsComesFromTheOptions) {
    ImportBench bench;
    bench.set(Import_Type_t, "Component");
    bench.importer.setImportOptions(bench.options(), bench.board());
    EXPECT_EQ(bench.importer.getImportAs(), Component_t);
}

TEST(ImportOptions, AnEntityWithoutImportTypeGivesTheEmptyType) {
    ImportBench bench;
    bench.importer.setImportOptions(bench.chassis, bench.board());
    EXPECT_EQ(bench.importer.getImportAs(), TypeRef());
}

TEST(Filters, WithoutOptionsNothingIsFiltered) {
    ImportBench bench;
    addPart(bench, 0.0);
    EXPECT_FALSE(isFiltered(bench));
}

TEST(Filters, AHeightThatEqualsTheThresholdIsFilteredAndOneAboveItIsNot) {
    ImportBench bench;
    addPart(bench, 2.0);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "2 mm");
    EXPECT_TRUE(isFiltered(bench));
    ImportBench above;
    addPart(above, 2.0 + 2e-9);
    above.set(Filter_On_Height_t, "Yes");
    above.set(Min_Height_t, "2 mm");
    EXPECT_FALSE(isFiltered(above));
}

TEST(Filters, ThresholdsAreAskedForInTheUnitsOfTheComponent) {
    ImportBench bench;
    addPart(bench, 100.0, nullptr, "THOU"); // 2.54 mm
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "2.5 mm");
    EXPECT_FALSE(isFiltered(bench));
    bench.set(Min_Height_t, "2.6 mm");
    EXPECT_TRUE(isFiltered(bench));
}

TEST(Filters, AComponentWithoutUnitsIsInThoseOfTheBoard) {
    ImportBench bench;
    bench.board().setUnits("THOU");
    addPart(bench, 100.0, nullptr, "");
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "2.5 mm");
    EXPECT_FALSE(isFiltered(bench));
}

TEST(Filters, TheSizeIsTheDiagonalOfTheOutline) {
    ImportBench bench;
    addPart(bench, 1.0);
    bench.set(Filter_On_Size_t, "Yes");
    bench.set(Min_Diagonal_Size_t, "4.9 mm");
    EXPECT_FALSE(isFiltered(bench));
    bench.set(Min_Diagonal_Size_t, "5 mm");
    EXPECT_TRUE(isFiltered(bench));
}

TEST(Filters, ThePowerIsTheFirstOperatingPowerInMilliwatts) {
    ImportBench bench;
    addPart(bench, 1.0, "500");
    bench.set(Filter_On_Power_t, "Yes");
    bench.set(Min_Power_t, "0.4 W");
    EXPECT_FALSE(isFiltered(bench));
    bench.set(Min_Power_t, "0.6 W");
    EXPECT_TRUE(isFiltered(bench));
}

TEST(Filters, AMinimumPowerOfZeroFiltersWhatNamesNoPower) {
    ImportBench bench;
    addPart(bench, 1.0);
    bench.set(Filter_On_Power_t, "Yes");
    EXPECT_TRUE(isFiltered(bench));
}

TEST(Filters, AComponentWithoutGeometryIsNeverFiltered) {
    ImportBench bench;
    EDA::EDAComponent part("ELECTRICAL");
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "2 mm");
    EXPECT_FALSE(isFiltered(bench));
}

TEST(Filters, ANewDecisionReplacesTheFormerOne) {
    ImportBench bench;
    addPart(bench, 1.0);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "2 mm");
    EXPECT_TRUE(isFiltered(bench));
    bench.set(Filter_On_Height_t, "No");
    EXPECT_FALSE(isFiltered(bench));
}

TEST(TypeMap, TheUsersFileIsReadAndTheLastRowOfAKeyStands) {
    const TempFolder folder;
    std::ofstream(folder.path() + "/user.csv") << "R,Resistor\nC,Capacitor\nlonely\nR,Component\n";
    EDA::EDAImporter importer(nullptr, folder.path() + "/user.csv", "");
    std::map<std::string, std::string> map;
    importer.getTypeMap(map);
    EXPECT_THAT(map, ElementsAre(Pair("C", "Capacitor"), Pair("R", "Component")));
}

TEST(TypeMap, TheDefaultFileServesWhereTheUsersGivesNothing) {
    const TempFolder folder;
    std::ofstream(folder.path() + "/default.csv") << "L,Inductor\n";
    EDA::EDAImporter importer(nullptr, folder.path() + "/absent.csv", folder.path() + "/default.csv");
    std::map<std::string, std::string> map;
    importer.getTypeMap(map);
    EXPECT_THAT(map, ElementsAre(Pair("L", "Inductor")));
}

TEST(TypeMap, TheDefaultMapIsThatOfItsFileWhateverIsInUse) {
    const TempFolder folder;
    std::ofstream(folder.path() + "/user.csv") << "R,Resistor\n";
    std::ofstream(folder.path() + "/default.csv") << "L,Inductor\n";
    EDA::EDAImporter importer(nullptr, folder.path() + "/user.csv", folder.path() + "/default.csv");
    std::map<std::string, std::string> map{{"old", "entry"}};
    importer.getDefaultTypeMap(map);
    EXPECT_THAT(map, ElementsAre(Pair("L", "Inductor")));
}

TEST(TypeMap, TheComponentTypesAreAddedToTheSet) {
    std::set<std::string> types{"Own"};
    EDA::EDAImporter::getComponentTypes(types);
    EXPECT_THAT(types, ElementsAre("Cable Socket", "Capacitor", "Chip Socket", "Component",
                                   "Daughter Board Socket", "Inductor", "Own", "Resistor"));
}
