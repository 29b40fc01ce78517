// Sorting the files of a set.
#include "SetBench.h"

#include <gmock/gmock.h>

namespace {

using namespace EDA::Fabrication;
using namespace TestSupport;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using FabricationSetTest = SetBench;

std::string function(const std::string &values) { return "%TF.FileFunction," + values + "*%\n"; }

TEST_F(FabricationSetTest, TheFileFunctionCountsMoreThanTheName) {
    add("a.gbl", copperText(function("Copper,L1,Top")));
    add("b.gtl", copperText(function("Copper,L3,Bot")));
    add("top.gbr", copperText(function("Copper,L2,Inr")));
    add("copper.gbr", copperText(function("Soldermask,Top")));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("a.gbl", "top.gbr", "b.gtl"));
    ASSERT_TRUE(leftOut("copper.gbr"));
    EXPECT_EQ(leftOut("copper.gbr")->meaning, "solder mask");
}

TEST_F(FabricationSetTest, AFunctionInACommentCounts) {
    add("x.gbr", copperText("G04 #@! TF.FileFunction,Copper,L2,Bot*\n"));
    add("y.gbr", copperText("G04 #@! TF.FileFunction,Copper,L1,Top*\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("y.gbr", "x.gbr"));
    EXPECT_FALSE(set.copper[0].isGuess);
}

TEST_F(FabricationSetTest, ThePhysicalOrderInCommentsCounts) {
    add("b.g1", copperText("G04 Layer_Physical_Order=3*\n"));
    add("b.g2", copperText("G04 Layer_Physical_Order=2*\n"));
    add("b.gbl", copperText("G04 Layer_Physical_Order=4*\n"));
    add("b.gtl", copperText("G04 Layer_Physical_Order=1*\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("b.gtl", "b.g2", "b.g1", "b.gbl"));
}

TEST_F(FabricationSetTest, LayerNamesInCommentsAndStatementsCount) {
    add("1.gbr", copperText("G04 Layer: BottomLayer*\n"));
    add("2.gbr", copperText("%LNTOP*%\n"));
    add("3.gbr", copperText("%INSilkscreen Top*%\n"));
    add("4.gbr", copperText("G04 LAYER: L2_GND*\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("2.gbr", "4.gbr", "1.gbr"));
    EXPECT_EQ(leftOut("3.gbr")->meaning, "legend");
}

TEST_F(FabricationSetTest, FilmsThatListNoCopperAreNone) {
    const std::string film = "G04 Film Name:    ";
    add("TOP.art", copperText(film + "TOP*\nG04 Layer:  PIN/TOP*\nG04 Layer:  ETCH/TOP*\n"));
    add("BOTTOM.art", copperText(film + "BOTTOM*\nG04 Layer:  ETCH/BOTTOM*\n"));
    add("PLAN.art", copperText(film + "PLAN*\nG04 Layer:  BOARD GEOMETRY/OUTLINE*\nG04 Layer:  PIN/TOP*\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("TOP.art", "BOTTOM.art"));
    EXPECT_EQ(leftOut("PLAN.art")->meaning, "drawing");
}

TEST_F(FabricationSetTest, FilmsTellTheOrderWhereTheyListAllLayers) {
    const std::string stack =
        "G04 Layer:  VIA KEEPOUT/ALL*\nG04 Layer:  VIA KEEPOUT/BOTTOM*\nG04 Layer:  VIA KEEPOUT/GND*\n"
        "G04 Layer:  VIA KEEPOUT/LAYER 1*\nG04 Layer:  VIA KEEPOUT/TOP*\n";
    for (const std::string name : {"BOTTOM", "GND", "LAYER 1", "TOP"})
        add(name + ".art", copperText(stack + "G04 Layer:  ETCH/" + name + "*\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("TOP.art", "LAYER 1.art", "GND.art", "BOTTOM.art"));
}

TEST_F(FabricationSetTest, InnerLayersStandBetweenTopAndBottom) {
    add("b.gbl", copperText());
    add("b.g2", copperText());
    add("b.gp1", copperText());
    add("b.g1", copperText());
    add("b.gtl", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("b.gtl", "b.g1", "b.g2", "b.gp1", "b.gbl"));
    EXPECT_THAT(set.guesses, testing::Contains(HasSubstr("planes")));
}

TEST_F(FabricationSetTest, NumbersBesideATopLayerCountInnerLayers) {
    add("LAYER_1.art", copperText());
    add("LAYER_2.art", copperText());
    add("TOP.art", copperText());
    add("BOTTOM.art", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("TOP.art", "LAYER_1.art", "LAYER_2.art", "BOTTOM.art"));
}

TEST_F(FabricationSetTest, AnUnknownLayerLikeCopperIsTakenAndTold) {
    add("top.gbr", copperText());
    add("bottom.gbr", copperText());
    add("whatever.gbr", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("top.gbr", "whatever.gbr", "bottom.gbr"));
    EXPECT_THAT(set.guesses, testing::Contains(HasSubstr("\"whatever.gbr\" is taken as copper")));
}

TEST_F(FabricationSetTest, AnUnknownLayerBesideCopperThatSaysSoIsLeftOutAndTold) {
    add("a.gbr", copperText(function("Copper,L1,Top")));
    add("b.gbr", copperText(function("Copper,L2,Bot")));
    add("whatever.gbr", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("a.gbr", "b.gbr"));
    EXPECT_THAT(set.warnings, ElementsAre(HasSubstr("whatever.gbr")));
}

TEST_F(FabricationSetTest, AnUnknownLayerThatTracesOnePathIsTheEdge) {
    add("top.gbr", copperText());
    add("bottom.gbr", copperText());
    add("whatever.gbr", edgeText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("top.gbr", "bottom.gbr"));
    EXPECT_EQ(profile(), "whatever.gbr");
}

TEST_F(FabricationSetTest, TheEdgeByItsFunctionComesBeforeNames) {
    add("a.gko", edgeText());
    add("b.gbr", edgeText(function("Profile,NP")));
    add("top.gbr", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "b.gbr");
    EXPECT_THAT(leftOut("a.gko")->reason, HasSubstr("taken before it"));
}

TEST_F(FabricationSetTest, AMechanicalLayerIsTheEdgeWhereNothingBetterIsThere) {
    add("b.gtl", copperText());
    add("b.gm1", edgeText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "b.gm1");
    EXPECT_THAT(set.guesses, ElementsAre(HasSubstr("board outline")));
    add("b.gko", edgeText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "b.gko");
}

TEST_F(FabricationSetTest, AMechanicalLayerThatDoesNotCloseIsNoEdge) {
    add("b.gtl", copperText());
    add("b.gm1", std::string(layerHead) + "X0Y0D02*\nG01X100000Y0D01*\nX200000Y5000D01*\nM02*\n");
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "");
}

TEST_F(FabricationSetTest, AMechanicalLayerThatLiesInTheBoardIsNoEdge) {
    add("b.gtl", copperText());
    add("b.gm1", edgeText("", 3, 4));
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "");
}

TEST_F(FabricationSetTest, WordsThatAllNamesStartWithAreOfTheBoard) {
    for (const char *name : {"edge-router_top.gbr", "edge-router_bottom.gbr", "edge-router_mask_top.gbr"})
        add(name, copperText());
    add("edge-router_profile.gbr", edgeText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("edge-router_top.gbr", "edge-router_bottom.gbr"));
    EXPECT_EQ(profile(), "edge-router_profile.gbr");
}

TEST_F(FabricationSetTest, HolesWithAnExtensionOfDrillsAreDrills) {
    add("b.gtl", copperText());
    add("b.xln", copperText("%LNhole_traces*%\n"));
    add("drill map.drl", copperText("%LNhole_traces*%\n", 3));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("b.xln"));
}

TEST_F(FabricationSetTest, AGroupOfCopperIsAnInnerLayerAndTold) {
    add("b.top.gbr", copperText());
    add("b.group3.gbr", copperText());
    add("b.bottom.gbr", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("b.top.gbr", "b.group3.gbr", "b.bottom.gbr"));
    EXPECT_THAT(set.guesses, ElementsAre(HasSubstr("b.group3.gbr")));
}

TEST_F(FabricationSetTest, DrillsOfALayersFormAreKnown) {
    add("top.gbr", copperText());
    add("a.gbr", copperText(function("Plated,1,2,PTH")));
    add("b.gbr", copperText(function("NonPlated,1,2,NPTH"), 3));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("a.gbr", "b.gbr"));
    EXPECT_EQ(set.drills[0].plated, true);
    EXPECT_EQ(set.drills[1].plated, false);
}

TEST_F(FabricationSetTest, AListOfLayersTellsWhatFilesAre) {
    add("a.ger", copperText());
    add("b.ger", copperText());
    add("c.ger", copperText());
    add("layers.cfg", "top copper, b.ger\nbottom copper, a.ger\ntop silkscreen, c.ger\n");
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("b.ger", "a.ger"));
    EXPECT_EQ(leftOut("c.ger")->meaning, "legend");
    EXPECT_EQ(leftOut("layers.cfg")->use, FileUse::Helper);
}

TEST_F(FabricationSetTest, AJobFileTellsWhatFilesAre) {
    add("a.ger", copperText());
    add("b.ger", copperText());
    add("job.gbrjob", R"({"FilesAttributes": [{"Path": "a.ger", "FileFunction": "Copper,L2,Bot"},
                         {"Path": "b.ger", "FileFunction": "Copper,L1,Top"}, {"Path": 3}, 7]})");
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("b.ger", "a.ger"));
}

TEST_F(FabricationSetTest, ADeepJobFileIsNoHarm) {
    add("top.gbr", copperText());
    add("job.gbrjob", "{\"FilesAttributes\":" + std::string(200000, '['));
    EXPECT_TRUE(sort()) << error;
}

TEST_F(FabricationSetTest, SpansComeFromAttributesNamesOrGoThrough) {
    for (const char *name : {"top.gbr", "In1_Cu.gbr", "In2_Cu.gbr", "bottom.gbr"})
        add(name, copperText());
    add("a.drl", drillText("; #@! TF.FileFunction,Plated,1,2,Blind\n"));
    add("x-L2-L3.drl", drillText("", 1));
    add("y.drl", drillText("", 2));
    add("z-1-2.drl", drillText("", 3));
    add("z-2-4.drl", drillText("", 4));
    add("w-1-2.drl", drillText("", 5));
    ASSERT_TRUE(sort()) << error;
    std::vector<std::pair<std::size_t, std::size_t>> spans;
    for (const SetDrill &drill : set.drills)
        spans.emplace_back(drill.from, drill.to);
    using Span = std::pair<std::size_t, std::size_t>;
    EXPECT_THAT(spans, ElementsAre(Span(0, 1), Span(1, 2), Span(0, 3), Span(0, 1), Span(1, 3), Span(0, 3)));
}

TEST_F(FabricationSetTest, SettingsGiveSpans) {
    for (const char *name : {"top.gbr", "In1_Cu.gbr", "bottom.gbr"})
        add(name, copperText());
    add("a.drl", drillText());
    settings.spans = {{"a.drl", "top", "In1_Cu.gbr"}};
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(set.drills[0].to, 1u);
    settings.spans = {{"a.drl", "top", "nothing"}};
    EXPECT_FALSE(sort());
    EXPECT_THAT(error, HasSubstr("nothing"));
    settings.spans = {{"b.drl", "top", "bottom"}};
    EXPECT_FALSE(sort());
}

TEST_F(FabricationSetTest, ListsOfLayerPairsGiveSpans) {
    for (const char *name : {"b.gtl", "b.g1", "b.gbl"})
        add(name, copperText());
    add("b.tx1", drillText());
    add("b.txt", drillText("", 1));
    add("b.ldp", "Layer Pairs Export File for PCB: b\nLayersSetName=Top_1|DrillFile=tx1|LayerPairs=gtl,g1\n"
                 "LayersSetName=Thru|DrillFile=txt|LayerPairs=gtl,gbl\n");
    ASSERT_TRUE(sort()) << error;
    ASSERT_THAT(drills(), ElementsAre("b.tx1", "b.txt"));
    EXPECT_EQ(set.drills[0].to, 1u);
    EXPECT_EQ(set.drills[1].to, 2u);
    EXPECT_THAT(set.drills[0].spanReason, HasSubstr("b.ldp"));
}

TEST_F(FabricationSetTest, TheSameDrillsTwiceAreTakenOnce) {
    add("top.gbr", copperText());
    add("a.drl", drillText());
    add("b.txt", drillText(";another\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("a.drl"));
    EXPECT_THAT(set.warnings, ElementsAre(HasSubstr("the same holes as \"a.drl\"")));
}

TEST_F(FabricationSetTest, DrillsElsewhereAreOthers) {
    add("top.gbr", copperText());
    add("a.drl", drillText());
    add("b.drl", drillText("", 1));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("a.drl", "b.drl"));
}

TEST_F(FabricationSetTest, TwoBoardsAreToldApartByTheirNames) {
    for (const std::string name : {"one", "two"}) {
        add(name + "_Top.gbr", copperText());
        add(name + "_Bottom.gbr", copperText());
        add(name + ".drl", drillText("", name == "one" ? 0 : 1));
    }
    add("two_TopMask.gbr", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(set.boards, ElementsAre("one", "two"));
    EXPECT_THAT(copper(), ElementsAre("two_Top.gbr", "two_Bottom.gbr"));
    EXPECT_THAT(drills(), ElementsAre("two.drl"));
    EXPECT_THAT(set.warnings,
                ElementsAre(testing::AllOf(HasSubstr("\"one\""), HasSubstr("\"two\" is taken"))));
    settings.board = "One";
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("one_Top.gbr", "one_Bottom.gbr"));
    EXPECT_THAT(drills(), ElementsAre("one.drl"));
    settings.board = "three";
    EXPECT_FALSE(sort());
    EXPECT_THAT(error, HasSubstr("\"one\" (3 files)"));
}

TEST_F(FabricationSetTest, TwoBoardsAreToldApartByTheirFolders) {
    for (const std::string name : {"a/top.gbr", "a/bottom.gbr", "a/x.drl", "b/top.gbr", "b/bottom.gbr"})
        add(name, name == "a/x.drl" ? drillText() : copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(set.boards, ElementsAre("a", "b"));
    EXPECT_EQ(set.copper[0].shown, "a/top.gbr");
    EXPECT_THAT(drills(), ElementsAre("x.drl"));
}

TEST_F(FabricationSetTest, TwoBoardsAreToldApartByTheirExtents) {
    add("left.gtl", copperText());
    add("right.gbl", copperText("", 100));
    add("right.gbs", copperText("", 100));
    add("edge.gko", edgeText("", 100));
    add("holes.drl", drillText("", 101));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("right.gbl"));
    EXPECT_EQ(profile(), "edge.gko");
    EXPECT_THAT(drills(), ElementsAre("holes.drl"));
}

TEST_F(FabricationSetTest, TheLayerOrderOfTheSettingsHolds) {
    add("top.gbr", copperText());
    add("bottom.gbr", copperText());
    add("x.gts", copperText());
    settings.layerOrder = {"bottom.gbr", "x"};
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("bottom.gbr", "x.gts"));
    EXPECT_THAT(leftOut("top.gbr")->reason, HasSubstr("does not name it"));
    settings.layerOrder = {"nothing"};
    EXPECT_FALSE(sort());
    settings.layerOrder = {"top", "top.gbr"};
    EXPECT_FALSE(sort());
}

TEST_F(FabricationSetTest, ALayerOrderOfOneBoardLeavesTheDrillsOfAnother) {
    for (const std::string name : {"one", "two"}) {
        add(name + "_Top.gbr", copperText());
        add(name + ".drl", drillText("", name == "one" ? 0 : 1));
    }
    settings.layerOrder = {"one_Top"};
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("one.drl"));
}

TEST_F(FabricationSetTest, AWholeNameIsMeantBeforeItsParts) {
    add("a/top.gbr", copperText());
    add("top.gbr", copperText());
    settings.layerOrder = {"top.gbr"};
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(set.copper[0].shown, "top.gbr");
}

TEST_F(FabricationSetTest, ANameThatTwoFilesHaveIsAnError) {
    add("b.gtl", copperText());
    add("b.gbl", copperText());
    settings.layerOrder = {"b"};
    EXPECT_FALSE(sort());
    EXPECT_THAT(error, testing::AllOf(HasSubstr("b.gtl"), HasSubstr("b.gbl")));
}

TEST_F(FabricationSetTest, TheProfileOfTheSettingsHolds) {
    add("b.gtl", copperText());
    add("b.gko", edgeText());
    add("c.gbr", edgeText());
    settings.profile = "c.gbr";
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "c.gbr");
}

TEST_F(FabricationSetTest, WhatIsNoLayerAndNoDrillIsLeftOutWithItsReason) {
    add("top.gbr", copperText());
    add("readme.txt", "Please make ten of these.\n");
    add("empty.gbr", "");
    add("picture.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\x01\x02\x03\x04", 16));
    ASSERT_TRUE(sort()) << error;
    for (const char *name : {"readme.txt", "empty.gbr", "picture.png"}) {
        ASSERT_TRUE(leftOut(name)) << name;
        EXPECT_EQ(leftOut(name)->use, FileUse::None);
        EXPECT_NE(leftOut(name)->reason, "");
    }
}

} // namespace
