// Sets in which names, lists and forms disagree or say little.
#include "fabrication/sets/FileReading.h"
#include "SetBench.h"

#include <gmock/gmock.h>

namespace {

using namespace EDA::Fabrication;
using namespace TestSupport;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Span = std::pair<std::size_t, std::size_t>;

class SetDetailsTest : public SetBench {
protected:
    std::vector<Span> spans() const {
        std::vector<Span> all;
        for (const SetDrill &drill : set.drills)
            all.emplace_back(drill.from, drill.to);
        return all;
    }
    void addFourLayers() {
        for (const char *name : {"b-F_Cu.gbr", "b-In1_Cu.gbr", "b-In2_Cu.gbr", "b-B_Cu.gbr"})
            add(name, copperText());
    }
};

std::string function(const std::string &values) { return "%TF.FileFunction," + values + "*%\n"; }
std::string drillFunction(const std::string &values) {
    return drillText("; #@! TF.FileFunction," + values + "\n");
}
std::string holes(const std::string &tools, const std::string &body) {
    return "M48\nMETRIC\n" + tools + "%\n" + body + "M30\n";
}

TEST_F(SetDetailsTest, BlindDrillsAtTheSamePlacesAreAllKept) {
    addFourLayers();
    add("a.drl", drillFunction("Plated,1,2,Blind"));
    add("b.drl", drillFunction("Plated,2,3,Buried"));
    add("c.drl", drillFunction("Plated,3,4,Blind"));
    add("d.drl", drillFunction("Plated,3,4,Blind"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("a.drl", "b.drl", "c.drl"));
    EXPECT_THAT(spans(), ElementsAre(Span(0, 1), Span(1, 2), Span(2, 3)));
    EXPECT_THAT(set.warnings, ElementsAre(HasSubstr("the same holes as \"c.drl\"")));
}

TEST_F(SetDetailsTest, HolesOfAnotherWidthAreOthers) {
    add("top.gbr", copperText());
    add("a.drl", holes("T1C0.5\n", "T1\nX1.0Y1.0\nX2.0Y1.0\n"));
    add("b.drl", holes("T1C0.508\n", "T1\nX2.0Y1.0\nX1.002Y1.0\n"));
    add("c.drl", holes("T1C0.6\n", "T1\nX1.0Y1.0\nX2.0Y1.0\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("a.drl", "c.drl"));
}

TEST_F(SetDetailsTest, WidthsThatHolesSwapAreOthers) {
    add("top.gbr", copperText());
    add("a.drl", holes("T1C0.5\nT2C0.9\n", "T1\nX1.0Y1.0\nT2\nX2.0Y1.0\n"));
    add("b.drl", holes("T1C0.9\nT2C0.5\n", "T1\nX1.0Y1.0\nT2\nX2.0Y1.0\n"));
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("a.drl", "b.drl"));
}

TEST_F(SetDetailsTest, PlatedAndUnplatedHolesAreNotTheSame) {
    add("top.gbr", copperText());
    add("a-PTH.drl", drillText());
    add("a-NPTH.drl", drillText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre("a-PTH.drl", "a-NPTH.drl"));
}

TEST_F(SetDetailsTest, ThousandsOfDrillFilesWithOtherHolesTakeNoTime) {
    add("top.gbr", copperText());
    for (int number = 0; number < 2000; ++number)
        add("d" + std::to_string(number) + ".drl", drillText("", number));
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(set.drills.size(), 2000u);
}

TEST_F(SetDetailsTest, AFileOfWhichNothingSaysWhatItIsIsTheLastToBeTheEdge) {
    add("a.gbr", edgeText());
    add("b-F_Cu.gbr", copperText());
    add("b-B_Cu.gbr", copperText());
    add("b-Edge_Cuts.gbr", edgeText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "b-Edge_Cuts.gbr");
    EXPECT_THAT(set.guesses, Not(Contains(HasSubstr("board outline"))));
}

TEST_F(SetDetailsTest, AMechanicalLayerIsTheEdgeBeforeAFileThatSaysNothing) {
    add("a.gbr", edgeText());
    add("b.gtl", copperText());
    add("b.gm1", edgeText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "b.gm1");
}

TEST_F(SetDetailsTest, AnEdgeByItsFormAloneIsTold) {
    add("a.gbr", edgeText());
    add("b.gtl", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_EQ(profile(), "a.gbr");
    EXPECT_THAT(set.guesses, ElementsAre(HasSubstr("\"a.gbr\" is taken for the board outline")));
}

TEST_F(SetDetailsTest, ALayerWithoutPlaceStandsBeforeTheLastThatSaysItsNumber) {
    add("a.gbr", copperText(function("Copper,L1,Top")));
    add("b.gbr", copperText(function("Copper,L2,Inr")));
    add("c.gbr", copperText(function("Copper,L4,Bot")));
    add("inner_gnd.gbr", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("a.gbr", "b.gbr", "inner_gnd.gbr", "c.gbr"));
}

TEST_F(SetDetailsTest, ALayerWithoutPlaceStandsBeforeTheLastNumber) {
    for (const char *name : {"layer_1.gbr", "layer_2.gbr", "layer_3.gbr", "layer_4.gbr", "gnd.gbr"})
        add(name, copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("layer_1.gbr", "layer_2.gbr", "layer_3.gbr", "gnd.gbr", "layer_4.gbr"));
}

TEST_F(SetDetailsTest, InnerNumbersAreNeverTheBottom) {
    for (const char *name : {"top.gbr", "inner_1.gbr", "inner_2.gbr", "gnd.gbr"})
        add(name, copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(copper(), ElementsAre("top.gbr", "inner_1.gbr", "inner_2.gbr", "gnd.gbr"));
}

class ToolTablesTest : public SetDetailsTest {
protected:
    Notes notes;
    DrillData data;

    // Reads the first drill file of the sorted set.
    bool read() {
        return readDrills(set.drills.at(0).file, surroundingsOf(set, settings), data, notes, error);
    }
    std::string sizeless() const { return holes("", "T1\nX1.0Y1.0\n"); }
    const char *table = "T1  20mil (0.508mm)  106\n";
};

TEST_F(ToolTablesTest, ATableOfTheSameNameGivesSizesAndIsTold) {
    add("a.drl", sizeless());
    add("a.rep", table);
    ASSERT_TRUE(sort()) << error;
    ASSERT_TRUE(read()) << error;
    EXPECT_NEAR(data.tools.at(1).diameter, 0.508, 1e-9);
    ASSERT_FALSE(notes.list().empty());
    EXPECT_EQ(notes.list()[0].kind, NoteKind::Normalised);
    EXPECT_EQ(notes.list()[0].what, "sizes of tools from \"a.rep\"");
}

TEST_F(ToolTablesTest, ATableOfAnotherNameIsAGuess) {
    add("a.drl", sizeless());
    add("tools.rep", table);
    ASSERT_TRUE(sort()) << error;
    ASSERT_TRUE(read()) << error;
    EXPECT_NEAR(data.tools.at(1).diameter, 0.508, 1e-9);
    ASSERT_FALSE(notes.list().empty());
    EXPECT_EQ(notes.list()[0].kind, NoteKind::Guessed);
}

TEST_F(ToolTablesTest, ATableOfAnotherDrillFileIsNotTaken) {
    add("a.drl", sizeless());
    add("c.drl", drillText());
    add("c.rep", table);
    ASSERT_TRUE(sort()) << error;
    ASSERT_TRUE(read()) << error;
    for (const Note &note : notes.list())
        EXPECT_THAT(note.what, Not(HasSubstr("c.rep")));
}

TEST_F(SetDetailsTest, AJobFileGivesSpanAndPlatingOfDrills) {
    addFourLayers();
    add("a.drl", drillText());
    add("c.drl", drillText("", 1));
    add("job.gbrjob", R"({"FilesAttributes": [{"Path": "a.drl", "FileFunction": "Plated,1,2,Blind"},
                         {"Path": "c.drl", "FileFunction": "NonPlated,1,4,NPTH"}]})");
    ASSERT_TRUE(sort()) << error;
    ASSERT_EQ(set.drills.size(), 2u);
    EXPECT_THAT(spans(), ElementsAre(Span(0, 1), Span(0, 3)));
    EXPECT_EQ(set.drills[0].plated, true);
    EXPECT_EQ(set.drills[1].plated, false);
    EXPECT_THAT(set.drills[0].spanReason, HasSubstr("\"job.gbrjob\" gives it the FileFunction"));
}

TEST_F(SetDetailsTest, ADrillDrawingIsNoDrillFile) {
    add("b.top", copperText());
    add("b.drd", copperText());
    add("b.gnd", copperText());
    add("b.bot", copperText());
    ASSERT_TRUE(sort()) << error;
    EXPECT_THAT(drills(), ElementsAre());
    EXPECT_THAT(copper(), ElementsAre("b.top", "b.gnd", "b.bot"));
}

TEST_F(SetDetailsTest, WordsInNamesOfDrillsGiveSpans) {
    addFourLayers();
    add("b-front-in1.drl", drillText());
    add("b-in1-in2.drl", drillText("", 1));
    add("b-in2-to-back.drl", drillText("", 2));
    add("b-in2-front.drl", drillText("", 3));
    ASSERT_TRUE(sort()) << error;
    ASSERT_THAT(drills(),
                ElementsAre("b-front-in1.drl", "b-in1-in2.drl", "b-in2-to-back.drl", "b-in2-front.drl"));
    EXPECT_THAT(spans(), ElementsAre(Span(0, 1), Span(1, 2), Span(2, 3), Span(0, 3)));
}

TEST_F(SetDetailsTest, NumbersInNamesOfDrillsAreThoseOfTheLayers) {
    for (const char *number : {"1", "2", "15", "16"})
        add(std::string("b_Copper_Layer_") + number + ".gbr", copperText());
    add("drill_1_16.xln", drillText());
    add("drill_1_2.xln", drillText("", 1));
    add("drill_2_15.xln", drillText("", 2));
    ASSERT_TRUE(sort()) << error;
    ASSERT_THAT(drills(), ElementsAre("drill_1_16.xln", "drill_1_2.xln", "drill_2_15.xln"));
    EXPECT_THAT(spans(), ElementsAre(Span(0, 3), Span(0, 1), Span(1, 2)));
}

TEST_F(SetDetailsTest, GuessesBeyondAThousandAreCounted) {
    add("top.gbr", copperText());
    for (int number = 0; number < 1010; ++number)
        add("q" + std::string(1, static_cast<char>('a' + number % 26)) + std::to_string(number) + "q.gbr",
            copperText());
    ASSERT_TRUE(sort()) << error;
    ASSERT_EQ(set.guesses.size(), 1001u);
    EXPECT_THAT(set.guesses.back(), HasSubstr("more of this kind"));
}

} // namespace
