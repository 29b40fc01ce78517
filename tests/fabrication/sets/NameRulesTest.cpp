// What names of files and layers say.
#include "fabrication/sets/NameRules.h"

#include "fabrication/sets/DrillSpans.h"
#include "fabrication/sets/FileForm.h"

#include <gmock/gmock.h>

#include <ostream>

namespace {

using namespace EDA::Fabrication;
using testing::ElementsAre;

struct CopperName {
    const char *name;
    double place; // 0: none
};

std::ostream &operator<<(std::ostream &stream, const CopperName &name) { return stream << name.name; }

class NameOfCopper : public testing::TestWithParam<CopperName> {};

TEST_P(NameOfCopper, HasItsPlace) {
    const NameFinding finding = findByWords(GetParam().name);
    EXPECT_EQ(finding.use, FileUse::Copper);
    EXPECT_EQ(finding.hasPlace ? finding.place : 0.0, GetParam().place);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NameOfCopper,
    testing::Values(CopperName{"TOP", 1}, CopperName{"BOTTOM", bottomPlace}, CopperName{"board-F_Cu", 1},
                    CopperName{"board-B.Cu", bottomPlace}, CopperName{"board-In1_Cu", 2},
                    CopperName{"board-In2.Cu", 3}, CopperName{"copper_top_l1", 1},
                    CopperName{"copper_inner_l2", 2}, CopperName{"copper_bottom_l4", 4},
                    CopperName{"EtchLayerTop", 1}, CopperName{"EtchLayer2Bottom", 2},
                    CopperName{"Gerber_BottomLayer", bottomPlace}, CopperName{"Gerber_InnerLayer1", 2},
                    CopperName{"L2_GND", 2}, CopperName{"L3_PLANE", 3}, CopperName{"LAYER_2", 2},
                    CopperName{"controller.top", 1}, CopperName{"controller.group3", 1003},
                    CopperName{"Copper Layer 15", 15}, CopperName{"bottom layer 1", bottomPlace},
                    CopperName{"GND2", 0}, CopperName{"PWR", 0}, CopperName{"mask_rom-F_Cu", 1},
                    CopperName{"internalplane2", 3}, CopperName{"solder side", bottomPlace},
                    CopperName{"component side", 1}, CopperName{"keyboard_Top", 1},
                    CopperName{"TOP_COPPER_NONE_3", 1}, CopperName{"topcopper", 1},
                    CopperName{"art_sig_3", 3}, CopperName{"art02", 2}, CopperName{"smd_panel_Top", 1}));

struct OtherName {
    const char *name;
    FileUse use;
    const char *meaning;
};

std::ostream &operator<<(std::ostream &stream, const OtherName &name) { return stream << name.name; }

class NameOfAnother : public testing::TestWithParam<OtherName> {};

TEST_P(NameOfAnother, HasItsMeaning) {
    const NameFinding finding = findByWords(GetParam().name);
    EXPECT_EQ(finding.use, GetParam().use);
    EXPECT_EQ(finding.meaning, GetParam().meaning);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NameOfAnother,
    testing::Values(OtherName{"board-F_Mask", FileUse::Other, "solder mask"},
                    OtherName{"TopSolderMaskLayer", FileUse::Other, "solder mask"},
                    OtherName{"controller.bottommask", FileUse::Other, "solder mask"},
                    OtherName{"componentmask", FileUse::Other, "solder mask"},
                    OtherName{"Top Solder", FileUse::Other, "solder mask"},
                    OtherName{"SMT", FileUse::Other, "solder mask"},
                    OtherName{"Top Copper (Resist)", FileUse::Other, "solder mask"},
                    OtherName{"sm0126", FileUse::Other, "solder mask"},
                    OtherName{"smd0126", FileUse::Other, "solder paste"},
                    OtherName{"amp_smdmask_top", FileUse::Other, "solder paste"},
                    OtherName{"tcream", FileUse::Other, "solder paste"},
                    OtherName{"dd0124", FileUse::Other, "drill drawing"},
                    OtherName{"adt0127", FileUse::Other, "assembly drawing"},
                    OtherName{"documentation", FileUse::Other, "documentation"},
                    OtherName{"board-Cmts_User", FileUse::Other, "comments"},
                    OtherName{"board-Dwgs_User", FileUse::Other, "drawing"},
                    OtherName{"board-User_1", FileUse::Other, "drawing"},
                    OtherName{"BottomPasteMaskLayer", FileUse::Other, "solder paste"},
                    OtherName{"SolderPasteTop", FileUse::Other, "solder paste"},
                    OtherName{"PMB", FileUse::Other, "solder paste"},
                    OtherName{"topsilk", FileUse::Other, "legend"},
                    OtherName{"silk_screen_bottom", FileUse::Other, "legend"},
                    OtherName{"Top Overlay", FileUse::Other, "legend"},
                    OtherName{"SSB", FileUse::Other, "legend"},
                    OtherName{"board-Edge_Cuts", FileUse::Profile, "board outline"},
                    OtherName{"BoardOutlline", FileUse::Profile, "board outline"},
                    OtherName{"profile", FileUse::Profile, "board outline"},
                    OtherName{"GLOBAL_BOUNDARY_UROUTE_9", FileUse::Profile, "board outline"},
                    OtherName{"DrillDrawingThrough", FileUse::Other, "drill drawing"},
                    OtherName{"FAB", FileUse::Other, "fabrication drawing"},
                    OtherName{"Fabrication Notes", FileUse::Other, "fabrication drawing"},
                    OtherName{"Component Placement Bottom", FileUse::Other, "placement drawing"},
                    OtherName{"Assembly", FileUse::Other, "assembly drawing"},
                    OtherName{"board-F_CrtYd", FileUse::Other, "courtyard"},
                    OtherName{"mechanical details", FileUse::Other, "mechanical"},
                    OtherName{"laptop", FileUse::None, ""}, OtherName{"backup", FileUse::None, ""},
                    OtherName{"design", FileUse::None, ""}, OtherName{"", FileUse::None, ""}));

TEST(NameRules, ANameOfLayerWordsAloneIsPure) {
    EXPECT_TRUE(findByWords("Bottom Copper").isPure);
    EXPECT_TRUE(findByWords("GROUP3").isPure);
    EXPECT_FALSE(findByWords("mask_rom").isPure);
}

TEST(NameRules, ExtensionsTellPlaces) {
    EXPECT_EQ(findByExtension(".GTL").place, 1.0);
    EXPECT_EQ(findByExtension(".cmp").place, 1.0);
    EXPECT_EQ(findByExtension(".toplayer").place, 1.0);
    EXPECT_EQ(findByExtension(".gbl").place, bottomPlace);
    EXPECT_EQ(findByExtension(".sol").place, bottomPlace);
    EXPECT_EQ(findByExtension(".G1").place, 2.0);
    EXPECT_EQ(findByExtension(".ly2").place, 2.0);
    EXPECT_EQ(findByExtension(".gl2").place, 2.0);
    EXPECT_EQ(findByExtension(".g3l").place, 3.0);
    EXPECT_EQ(findByExtension(".pwr").use, FileUse::Copper);
    EXPECT_FALSE(findByExtension(".pwr").hasPlace);
    EXPECT_LT(findByExtension(".g9").place, findByExtension(".gp1").place);
    EXPECT_LT(findByExtension(".internalplane1").place, findByExtension(".internalplane2").place);
}

TEST(NameRules, ExtensionsTellOtherUses) {
    for (const char *extension : {".gts", ".GBS", ".gtp", ".gto", ".plc", ".stc", ".bottomsilkscreen",
                                  ".topsoldermask", ".gd1", ".gg1", ".fab", ".ast"})
        EXPECT_EQ(findByExtension(extension).use, FileUse::Other) << extension;
    for (const char *extension : {".gko", ".gml", ".oln", ".dim"})
        EXPECT_EQ(findByExtension(extension).use, FileUse::Profile) << extension;
    for (const char *extension : {".drl", ".xln", ".ncd", ".cnc", ".exc", ".tap", ".nc"})
        EXPECT_EQ(findByExtension(extension).use, FileUse::Drill) << extension;
    for (const char *extension : {".gbr", ".art", ".pho", ".ger", ".gdo", ".txt", ""})
        EXPECT_EQ(findByExtension(extension).use, FileUse::None) << extension;
    EXPECT_TRUE(findByExtension(".gm1").isMechanical);
}

TEST(NameRules, WordsAreCutAtCapitalsNumbersAndMarks) {
    EXPECT_THAT(wordsOf("EtchLayer2Bottom"), ElementsAre("etch", "layer", "2", "bottom"));
    EXPECT_THAT(wordsOf("L2_GNDPlane"), ElementsAre("l", "2", "gnd", "plane"));
    EXPECT_THAT(wordsOf("...--"), ElementsAre());
}

TEST(NameRules, TheStemIsWhatIsLeftWithoutTheWordsForLayers) {
    EXPECT_EQ(boardStem("keyboard_Bottom.gbr"), "keyboard");
    EXPECT_EQ(boardStem("keyboard_BoardOutline.gbr"), "keyboard");
    EXPECT_EQ(boardStem("controller.plated-drill.cnc"), "controller");
    EXPECT_EQ(boardStem("controller.group3.gbr"), "controller");
    EXPECT_EQ(boardStem("kit-5213-In1_Cu.g2"), "kit-5213");
    EXPECT_EQ(boardStem("LAYER_1.art"), "");
    EXPECT_EQ(boardStem("GND2.art"), "");
}

TEST(NameRules, NamesTellPlating) {
    EXPECT_EQ(platingByName("ThruHoleNonPlated"), false);
    EXPECT_EQ(platingByName("board-NPTH"), false);
    EXPECT_EQ(platingByName("driver.unplated-drill"), false);
    EXPECT_EQ(platingByName("ThruHolePlated"), true);
    EXPECT_EQ(platingByName("Gerber_Drill_PTH"), true);
    EXPECT_EQ(platingByName("board"), std::nullopt);
}

TEST(NameRules, LongNamesOfRepeatedWordsEnd) {
    std::string name;
    for (int i = 0; i < 20000; ++i)
        name += "soldermask";
    EXPECT_EQ(findByWords(name + "x").use, FileUse::Other);
    EXPECT_EQ(boardStem("x" + name).size(), 1000u);
}

TEST(DrillSpanNames, LayersWithLettersStandAnywhere) {
    const auto span = spanInName("arena_12-12_v6_L1-L6");
    ASSERT_TRUE(span);
    EXPECT_EQ(span->from, 1);
    EXPECT_EQ(span->to, 6);
    EXPECT_TRUE(span->hasLetters);
    EXPECT_EQ(spanInName("board_L2-L3_laser")->to, 3);
}

TEST(DrillSpanNames, NumbersAloneStandAtTheEnd) {
    const auto span = spanInName("LIFE-3-1-4");
    ASSERT_TRUE(span);
    EXPECT_EQ(span->from, 1);
    EXPECT_EQ(span->to, 4);
    EXPECT_FALSE(span->hasLetters);
    EXPECT_FALSE(spanInName("1-2_board"));
    EXPECT_FALSE(spanInName("board_4-1"));
    EXPECT_FALSE(spanInName("2012-2014"));
    EXPECT_FALSE(spanInName(""));
}

TEST(FileForms, TheFirstLineThatTellsDecides) {
    EXPECT_EQ(formOf("G04 a layer*\nM48\n"), FileForm::Layer);
    EXPECT_EQ(formOf("*\r\n%ICAS*%\r\n"), FileForm::Layer);
    EXPECT_EQ(formOf("X10Y20D02*\n"), FileForm::Layer);
    EXPECT_EQ(formOf(";Layer_Color=1\nM48\n"), FileForm::Drill);
    EXPECT_EQ(formOf("%\nM48\nMETRIC\n"), FileForm::Drill);
    EXPECT_EQ(formOf("T01C0.5\n"), FileForm::Drill);
    EXPECT_EQ(formOf("X1000Y-2000\n"), FileForm::Drill);
}

TEST(FileForms, OtherFilesAreNeither) {
    EXPECT_EQ(formOf("T1        12mil (0.3048mm)         106\n"), FileForm::Text);
    EXPECT_EQ(formOf("D10   ROUNDED  13,000\n"), FileForm::Text);
    EXPECT_EQ(formOf("top copper, board.gtl\n"), FileForm::Text);
    EXPECT_EQ(formOf(""), FileForm::Text);
    EXPECT_EQ(formOf(std::string("\x54\x07\x02\x80\x01\x02\x03", 7)), FileForm::Binary);
    EXPECT_EQ(formOf("%PDF-1.4\n%text\nX10Y10\n"), FileForm::Binary);
    EXPECT_EQ(formOf("PK\x03\x04rest"), FileForm::Archive);
}

} // namespace
