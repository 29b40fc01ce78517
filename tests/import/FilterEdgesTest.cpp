// Options, filters and type maps at their edges.
#include "FilterSupport.h"
#include "support/ImportBench.h"
#include "support/TempFolder.h"

#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <limits>

using namespace TestSupport;
using testing::ElementsAre;
using testing::Pair;

namespace {

std::map<std::string, std::string> mapOf(const std::string &fileText) {
    const TempFolder folder;
    std::ofstream(folder.path() + "/user.csv", std::ios::binary) << fileText;
    const EDA::EDAImporter importer(nullptr, folder.path() + "/user.csv", "");
    std::map<std::string, std::string> map;
    importer.getTypeMap(map);
    return map;
}

} // namespace

TEST(FilterEdges, AChangedThresholdReplacesTheFormerOneInWhateverUnit) {
    ImportBench bench;
    EDA::EDAComponent part = squarePart(2.0);
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "3 mm");
    EXPECT_TRUE(isFiltered(bench));
    bench.set(Min_Height_t, "50 thou"); // 1.27 mm
    EXPECT_FALSE(isFiltered(bench));
    bench.set(Min_Height_t, "0.1 in"); // 2.54 mm
    EXPECT_TRUE(isFiltered(bench));
}

TEST(FilterEdges, OptionsThatAnEntityLacksStayAsTheyWere) {
    ImportBench bench;
    EDA::EDAComponent part = squarePart(2.0);
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "3 mm");
    EXPECT_TRUE(isFiltered(bench));
    bench.board().beginComponents()->setFiltered(false);
    bench.importer.setImportOptions(bench.chassis, bench.board()); // Has no options at all.
    EXPECT_TRUE(bench.board().beginComponents()->isFiltered());
}

TEST(FilterEdges, ThresholdsOutliveTheEntityTheyCameFrom) {
    ImportBench bench;
    EDA::EDAComponent part = squarePart(2.0);
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "3 mm");
    bench.importer.setImportOptions(bench.options(), bench.board());
    bench.optionsModel = std::make_unique<Model>(EDA_Import_Options_t);
    bench.board().beginComponents()->setFiltered(false);
    bench.importer.setImportOptions(bench.chassis, bench.board());
    EXPECT_TRUE(bench.board().beginComponents()->isFiltered());
}

TEST(FilterEdges, AComponentOfInternalOutlinesAloneIsJudgedByItsHeight) {
    ImportBench bench;
    EDA::EDAComponent part("ELECTRICAL");
    part.setUnits("MM");
    part.setHeight(1.0);
    for (const auto &[x, y] : {std::pair{0.0, 0.0}, {3.0, 0.0}, {3.0, 4.0}})
        part.addPoint(1, x, y, 0.0);
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "2 mm");
    EXPECT_TRUE(isFiltered(bench));
}

TEST(FilterEdges, AComponentOfInternalOutlinesAloneHasNoSizeToBeJudgedBy) {
    for (const int index : {0, 1}) {
        ImportBench bench;
        EDA::EDAComponent part("ELECTRICAL");
        part.setUnits("MM");
        for (const auto &[x, y] : {std::pair{0.0, 0.0}, {3.0, 0.0}, {3.0, 4.0}})
            part.addPoint(index, x, y, 0.0);
        bench.board().addComponent(part, false);
        bench.set(Filter_On_Size_t, "Yes");
        bench.set(Min_Diagonal_Size_t, "100 mm");
        EXPECT_EQ(isFiltered(bench), index == 0);
    }
}

TEST(FilterEdges, AnyOneFilterIsEnough) {
    ImportBench bench;
    EDA::EDAComponent part = squarePart(10.0);
    part.addProperty("POWER_OPR", "500");
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "2 mm");
    bench.set(Filter_On_Size_t, "Yes");
    bench.set(Min_Diagonal_Size_t, "2 mm");
    bench.set(Filter_On_Power_t, "Yes");
    bench.set(Min_Power_t, "100 mW");
    EXPECT_FALSE(isFiltered(bench));
    bench.set(Min_Power_t, "1 W");
    EXPECT_TRUE(isFiltered(bench));
}

TEST(FilterEdges, ThePowerIsTheFirstOfTwoAndZeroWhereItIsNoNumber) {
    ImportBench bench;
    EDA::EDAComponent part = squarePart(1.0);
    part.addProperty("power_opr", "900"); // Another name.
    part.addProperty("POWER_OPR", "500");
    part.addProperty("POWER_OPR", "1");
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Power_t, "Yes");
    bench.set(Min_Power_t, "100 mW");
    EXPECT_FALSE(isFiltered(bench));

    ImportBench words;
    EDA::EDAComponent other = squarePart(1.0);
    other.addProperty("POWER_OPR", "plenty");
    words.board().addComponent(other, false);
    words.set(Filter_On_Power_t, "Yes");
    words.set(Min_Power_t, "0 mW");
    EXPECT_TRUE(isFiltered(words));
}

TEST(FilterEdges, APowerOrSizeThatEqualsTheThresholdIsFilteredAndOneAboveItIsNot) {
    for (const auto &[power, isBelow] : {std::pair{"500", true}, {"500.000000002", false}}) {
        ImportBench bench;
        EDA::EDAComponent part = squarePart(1.0);
        part.addProperty("POWER_OPR", power);
        bench.board().addComponent(part, false);
        bench.set(Filter_On_Power_t, "Yes");
        bench.set(Min_Power_t, "500 mW");
        EXPECT_EQ(isFiltered(bench), isBelow);
    }
    for (const auto &[least, isBelow] : {std::pair{"5 mm", true}, {"4.999999998 mm", false}}) {
        ImportBench bench;
        EDA::EDAComponent part = squarePart(1.0);
        bench.board().addComponent(part, false);
        bench.set(Filter_On_Size_t, "Yes");
        bench.set(Min_Diagonal_Size_t, least);
        EXPECT_EQ(isFiltered(bench), isBelow);
    }
}

TEST(FilterEdges, NumbersThatAreNotFiniteAreNotBelowAnything) {
    for (const double height : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        ImportBench bench;
        EDA::EDAComponent part = squarePart(height);
        bench.board().addComponent(part, false);
        bench.set(Filter_On_Height_t, "Yes");
        bench.set(Min_Height_t, "2 mm");
        EXPECT_FALSE(isFiltered(bench));
    }
}

TEST(FilterEdges, WithUnknownUnitsTheThresholdIsTakenInItsOwn) {
    ImportBench bench;
    EDA::EDAComponent part = squarePart(2.0);
    part.setUnits("furlong");
    bench.board().addComponent(part, false);
    bench.set(Filter_On_Height_t, "Yes");
    bench.set(Min_Height_t, "1 mm");
    EXPECT_FALSE(isFiltered(bench));
    bench.set(Min_Height_t, "3 mm");
    EXPECT_TRUE(isFiltered(bench));
}

TEST(TypeMapEdges, KeysAndValuesAreTakenAsTheyStand) {
    EXPECT_THAT(
        mapOf(" R ,Chip Socket \n\"Q\",x,more\nU,\n,Component\n"),
        ElementsAre(Pair("", "Component"), Pair(" R ", "Chip Socket "), Pair("\"Q\"", "x"), Pair("U", "")));
}

TEST(TypeMapEdges, LinesOfOtherSystemsAndBlankLinesAreRead) {
    EXPECT_THAT(mapOf("R,Resistor\r\n\r\n\nC,Capacitor"),
                ElementsAre(Pair("C", "Capacitor"), Pair("R", "Resistor")));
}

TEST(TypeMapEdges, AnEmptyFileGivesAnEmptyMap) { EXPECT_TRUE(mapOf("").empty()); }

TEST(TypeMapEdges, AUsersFileOfRowsWithoutATypeGivesWayToTheDefaultFile) {
    const TempFolder folder;
    const EDA::EDAImporter importer(nullptr, folder.write("user.csv", "R\nC\n\n"),
                                    folder.write("default.csv", "L,Inductor\n"));
    std::map<std::string, std::string> map;
    importer.getTypeMap(map);
    EXPECT_THAT(map, ElementsAre(Pair("L", "Inductor")));
}

TEST(TypeMapEdges, AnyBytesGiveAMap) {
    using namespace std::string_literals;
    EXPECT_NO_THROW(mapOf("\xff\xfe,\0\n,,,,\n\x80,\xc3\x28\n"s));
}
