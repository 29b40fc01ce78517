// XFL files as designs: how they are known, what is told about them, and what becomes of the examples.
#include "Formats.h"
#include "JsonText.h"
#include "SmallDesign.h"
#include "ViewCompare.h"

#include "Entities.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace TestSupport;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

const std::string examples = std::string(EDA_EXAMPLES) + "/xfl/";

const std::string stack =
    ".unit mm\n.layer\nTOP 0.1 C Copper FR4\nCORE 1 D Copper FR4\nBOT 0.1 C Copper FR4\n.end\n";
const std::string edge = ".board_geom\nrectangle 20 10\n";
const std::string shapes = ".shape\n1 circle 1\n2 rectangle 2 1\n3 diamond 1 1\n4 oblong 1\n.end\n"
                           ".via\nV 1 2 1 0 0.02\nW 1 2 2 0\n.end\n";

std::string net(const std::string &rows) { return ".route\nN {\n" + rows + "}\n.end\n"; }

class ToolXfl : public testing::Test {
protected:
    ToolResult info(const std::string &bytes, const std::string &name = "a.xfl",
                    const std::vector<std::string> &more = {}) const {
        std::vector<std::string> arguments{"info", folder.write(name, bytes)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments);
    }

    // What is told of a file, without its name.
    std::string told(const std::string &bytes, const std::vector<std::string> &more = {}) const {
        const ToolResult result = info(bytes, "a.xfl", more);
        EXPECT_EQ(result.status, 0) << result;
        const std::string start = "eda: warning: '" + folder.path("a.xfl") + "': ";
        std::string text = result.err;
        for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start))
            text.erase(at, start.size());
        return text;
    }

    TempFolder folder;
};

// How files are known.

TEST_F(ToolXfl, AFileIsKnownByItsFirstRowWhateverItsName) {
    for (const char *name : {"a.xfl", "a.txt", "a.emn", "a.gbr", "a"}) {
        const ToolResult result = info("# a comment\n\n  " + stack + edge, name);
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(result.out, HasSubstr("Format              XFL\n"));
    }
}

TEST_F(ToolXfl, EverySectionMayComeFirst) {
    for (const char *keyword : {".version", ".unit", ".scale", ".layer", ".shape", ".board_geom", ".part",
                                ".component", ".via", ".route"}) {
        const std::string rows = std::string(keyword) + " 1 2\n.end\n";
        EXPECT_TRUE(EDATool::looksLikeXfl("a", rows)) << keyword;
        EXPECT_FALSE(EDATool::looksLikeXfl("a", "x" + rows)) << keyword;
        EXPECT_FALSE(EDATool::looksLikeXfl("a", std::string(keyword) + "s 1 2\n")) << keyword;
    }
}

TEST_F(ToolXfl, AMarkAndOtherLineEndsDoNotMatter) {
    std::string rows = "\xEF\xBB\xBF# a comment\n" + stack + edge;
    for (std::size_t at = rows.find('\n'); at != std::string::npos; at = rows.find('\n', at + 2))
        rows.replace(at, 1, "\r\n");
    const ToolResult result = info(rows, "a.txt");
    EXPECT_THAT(result.out, HasSubstr("Format              XFL\n")) << result;
    EXPECT_THAT(result.out, HasSubstr("Layers              2\n"));
    EXPECT_THAT(result.out, HasSubstr("x -10 to 10, y -5 to 5"));
}

TEST_F(ToolXfl, FilesOfOtherFormatsAreNotTaken) {
    EXPECT_FALSE(EDATool::looksLikeXfl("a", smallBoard()));
    EXPECT_FALSE(EDATool::looksLikeXfl("a", "G04 .layer*\n%FSLAX24Y24*%\n"));
    EXPECT_FALSE(EDATool::looksLikeXfl("a", ""));
    EXPECT_FALSE(EDATool::looksLikeXfl("a", "#\n# .layer\n"));
}

// Bad files.

TEST_F(ToolXfl, AFileWithoutRowsIsRefused) {
    for (const char *bytes : {" ", "\n\n", "\t\r\n  \r\n"}) {
        const ToolResult result = info(bytes);
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_THAT(result.err, EndsWith("a.xfl': has no rows\n"));
    }
}

TEST_F(ToolXfl, AnEmptyFileIsRefused) {
    const ToolResult result = info("");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("a.xfl': is empty"));
}

TEST_F(ToolXfl, AFileWithoutASectionIsReadWithAWarning) {
    EXPECT_EQ(told("# nothing\nplain text\n"), "1 row outside of the known sections is left out\n"
                                               "no part of a board was found in the file\n");
}

TEST_F(ToolXfl, BytesThatAreNoTextAreReadWithoutHarm) {
    const ToolResult result = info(std::string("\x00\x01\xFF\xFE{}\n.layer\n\"", 15));
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("left out"));
}

TEST_F(ToolXfl, TwoFilesAreNoDesign) {
    const std::string first = folder.write("a.xfl", stack);
    const ToolResult result = runTool({"info", first, folder.write("b.xfl", stack)});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("are two XFL files"));
}

TEST_F(ToolXfl, AFileAndAnIdfFileAreNoDesign) {
    const std::string file = folder.write("a.xfl", stack);
    const ToolResult result = runTool({"info", file, writeSmallDesign(folder)});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("are not of one format"));
}

TEST_F(ToolXfl, UnknownUnitsAreRefusedByTheImport) {
    const std::string file = folder.write("a.xfl", ".unit furlong\n" + edge);
    const ToolResult result = runTool({"import", file, "-o", folder.path("m.json")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("unknown units \"furlong\""));
    const ToolResult other = runTool({"import", file, "-o", folder.path("m.json"), "--units", "mil"});
    EXPECT_EQ(other.status, 0) << other;
}

TEST_F(ToolXfl, AnUnknownWayToReadIsRefused) {
    const ToolResult result = info(stack, "a.xfl", {"--as", "Brick"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("PCB or Component"));
}

TEST_F(ToolXfl, HasImportOptions) {
    const ToolResult result = runTool({"options", "xfl"}, folder.path());
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Import options of XFL:"));
}

// What is told.

TEST_F(ToolXfl, NothingIsToldOfAWholeFile) {
    EXPECT_EQ(told(stack + shapes + edge +
                   ".end\n.part\nP R 0 0 1 1 1\n.end\n.component\nU1 P 0 0 1 0\n.end\n" +
                   net("rectangle 1 4 4 0 0\nvoid_circle 1 1 0 0\nshape 2 2 0 0 0 N\nvia 1 2 V 0 0\n"
                       "path 1 0.1 { 0 0\n5 0 }\n")),
              "");
}

struct Loss {
    std::string rows;
    const char *text;
};

TEST_F(ToolXfl, EachLossIsToldWithItsNumber) {
    const std::string head = stack + shapes + edge;
    const Loss losses[] = {
        {".scale 0\n.scale x\n" + head, "2 scales are no numbers, or 0, and are ignored\n"},
        {head + ".nets\nN 1\n", "2 rows outside of the known sections are left out\n"},
        {head + ".layer\nA 1 C Copper\n.end\n.part\nP R\n.end\n",
         "2 rows of sections have too few fields and are left out\n"},
        {head + ".shape\n9 polygon { 0 0 1 0\n1 1\n",
         "1 block is never closed, so it takes in all rows behind it\n"},
        {head + ".part\nP X 0 0 1 1 1\n.end\n",
         "1 part has a body that is neither R, C nor D, and gets no shape\n"},
        {head + ".part\nP R 0 0 1 1 1 {\n1 0 0\n}\nQ R 0 0 1 1 1 { 1 0 0 }\n.end\n",
         "2 parts lose their blocks, which hold their pins\n"},
        {head + net("bondwire 1 {\n2\n}\nbondwire\n"), "2 bond wires are left out\n"},
        {head + net("note {\nvia 9\n}\n"),
         "1 row of a net begins with an unknown word and is left out with its block: 'note'\n"},
        {head + net("x\ny\n"),
         "2 rows of nets begin with unknown words and are left out with their blocks: the first is 'x'\n"},
        {head + net("rectangle 0 1 1 0 0\nsquare -1 1 1 0 0\npath 3 1 0 0 1 1\nshape 9999999999 1 0 0\n"
                    "via 1 3 V 0 0\nvoid_square 3 1 1 0 0\n"),
         "6 pieces of nets are left out: they name layers that the file does not have\n"},
        {head + net("via 1 2 X 0 0\n"), "1 via is left out: its kind is not in the file\n"},
        {head + net("via 1 2 W 0 0\n"), "1 via is left out: its shape is no circle\n"},
        {head + net("shape 1 8 0 0\n"), "1 piece of copper has no points: its shape is not in the file\n"},
        {head + net("shape 1 3 0 0\nannular 2 1 2 0 0\ndiamond 2 1 2 0 0\n"),
         "3 pieces of copper have no points: their kinds of shape are not drawn\n"},
        {head + net("square 1 4 4 0 0\nvoid_diamond 1 1 1 0 0\n"),
         "1 void has no points: its kind of shape is not drawn\n"},
        {head + net("square 1 4 4 0 0\npath 2 1 0 0 1 1\nvoid_square 2 1 1 0 0\n"),
         "1 void is left out: no copper but tracks stands before it on its layer\n"},
        {head + net("rectangle 1 5\npolygon 1\npolygon 1 0 0 1 1\nshape 1 4 0 0\ncircle 1\ncomposite 1 0 0 "
                    "arc 1\n"),
         "6 pieces of copper have no area: parameters of their shapes are missing\n"},
        {head + net("path 1 1 2 2\npath 1 0 0 0 1 1\npath 1 -1 0 0 1 1\npath 1\n"),
         "4 tracks have no area: they have less than two points, or their widths are not above 0\n"},
        {head + net("square 1 4 4 0 0\nvoid_rectangle 1 1\nvoid_polygon 1 0 0 1 1\n"),
         "2 voids have no area: parameters of their shapes are missing\n"},
        {head + net("rectangle 1 5\nvoid_square 1 1 1 0 0\n"),
         "1 piece of copper has no area: parameters of its shape are missing\n"
         "1 void is left out: what it would be cut out of has no area\n"},
        {stack + shapes + ".board_geom\ndiamond 4 4\n",
         "1 edge has no points: its kind of shape is not drawn, or parameters are missing\n"},
    };
    for (const Loss &loss : losses)
        EXPECT_EQ(told(loss.rows), loss.text) << loss.rows;
}

TEST_F(ToolXfl, ShapesThatAreCompleteAreNotTold) {
    const std::string copper =
        "composite 1 { -1 0 rarc 1 0 0 0 rarc -1 0 0 0 }\npolygon 1 0 0 1 0 0 1\ncircle 1 1 0 0\n";
    EXPECT_EQ(told(stack + edge + net(copper + "void_composite 1 -1 0 rarc 1 0 0 0\n")), "");
}

TEST_F(ToolXfl, ASectionWithinAnotherIsToldWithItsKeyword) {
    const std::string within =
        "1 keyword of a section stands within the section before it, whose end or shape is "
        "missing, and counts as a row of that one: '";
    const std::string noEnd = ".unit mm\n.layer\nTOP 0.1 C Copper FR4\nCORE 1 D Copper FR4\n";
    EXPECT_EQ(told(noEnd + ".via\n.end\n" + edge), within + ".via'\n");
    EXPECT_THAT(told(stack + ".board_geom\n.route\nN {\n}\n.end\n"), HasSubstr(within + ".route'\n"));
    EXPECT_THAT(told(stack + edge + ".route\nN {\n.via\n}\n.end\n"), HasSubstr(within + ".via'\n"));
    EXPECT_THAT(told(stack + edge + ".shape\n1 polygon {\n.via\n}\n.end\n"), HasSubstr(within + ".via'\n"));
}

TEST_F(ToolXfl, ANetBehindOneWithoutItsEndIsToldByItsName) {
    EXPECT_EQ(told(stack + edge + ".route\nN {\nsquare 1 1 1 0 0\nM {\nsquare 1 1 1 0 0\n}\n}\n.end\n"),
              "1 row of a net begins with an unknown word and is left out with its block: 'M'\n");
}

TEST_F(ToolXfl, ABlockThatIsPassedOverEndsAtAnyBrace) {
    EXPECT_EQ(told(stack + edge + net("note {\n} {\nsquare 1 1 1 0 0\n")),
              "1 row of a net begins with an unknown word and is left out with its block: 'note'\n");
}

TEST_F(ToolXfl, ARowOfTooManyFieldsIsToldWithTheLimit) {
    std::string rows = ".layer\n";
    for (int i = 0; i <= 4'000'000; ++i)
        rows += "a ";
    const ToolResult result = info(rows);
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(result.err,
              "eda: '" + folder.path("a.xfl") +
                  "': cannot be read as XFL: has a row of more than 67108864 bytes or 4000000 fields\n");
}

TEST_F(ToolXfl, OfManyLayersTheFirstHundredAreListed) {
    std::string rows = ".unit mm\n.layer\n";
    for (int i = 1; i <= 103; ++i)
        rows += "C" + std::to_string(i) + " 0.1 C Copper FR4\nD 0.1 D Copper FR4\n";
    const ToolResult result = info(rows + ".end\n" + edge);
    EXPECT_THAT(result.out, HasSubstr("Layer C100 "));
    EXPECT_THAT(result.out, Not(HasSubstr("Layer C101 ")));
    EXPECT_THAT(result.out, EndsWith(" and 3 more\n"));
}

TEST_F(ToolXfl, LayersOutOfTurnAreTold) {
    EXPECT_THAT(
        told(edge + ".layer\nA 1 D Copper FR4\nB 1 D Copper FR4\nC 1 C Copper FR4\nD 1 C Copper FR4\n.end\n"),
        HasSubstr("3 layers are out of turn: "));
}

TEST_F(ToolXfl, OfAPackageLayersCountByTheirRows) {
    const std::string conductors =
        ".layer\nA 1 C Copper FR4\nB 1 C Copper FR4\nC 1 C Copper FR4\n.end\n" + edge;
    const std::string rows = conductors + net("square 3 1 1 0 0\nsquare 2 1 1 0 0\n");
    EXPECT_THAT(told(rows), Not(HasSubstr("piece")));
    EXPECT_THAT(told(rows, {"--as", "Component"}), HasSubstr("1 piece of a net is left out"));
}

TEST_F(ToolXfl, WhatIsOpenAtTheEndEndsTheWalk) {
    for (const char *rows : {".layer", ".shape\n1 polygon {", ".board_geom", ".board_geom\npolygon { 0 0",
                             ".part", ".part\nP R 0 0 1 1 1 {", ".via", ".route", ".route\nN {",
                             ".route\nN {\npath 1 1 {", ".route\nN {\nfoo {"}) {
        for (const char *way : {"PCB", "Component"}) {
            const ToolResult result = info(stack + rows, "a.xfl", {"--as", way});
            EXPECT_TRUE(result.status == 0 || result.status == 1) << result;
        }
    }
}

TEST_F(ToolXfl, AMillionRowsOfUnknownShapesAreOneLine) {
    std::string rows = stack + ".route\nN {\n";
    for (int i = 0; i < 200'000; ++i)
        rows += "shape 1 " + std::to_string(i) + " 0 0\n";
    EXPECT_EQ(told(rows), "200000 pieces of copper have no points: their shapes are not in the file\n");
}

// The examples.

// What comes to nothing in both examples, to show it.
std::string toldOf(const std::string &file, const std::string &wires) {
    const std::string start = "eda: warning: '" + file + "': ";
    return start + "1 part loses its block, which holds its pins\n" + start + wires + "\n" + start +
           "1 row of a net begins with an unknown word and is left out with its block: 'note'\n" + start +
           "1 via is left out: its shape is no circle\n" + start +
           "4 pieces of copper have no points: their kinds of shape are not drawn\n" + start +
           "2 voids have no points: their kinds of shape are not drawn\n";
}

TEST_F(ToolXfl, TheBoardExampleIsRead) {
    const ToolResult result = runTool({"info", examples + "board.xfl"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, toldOf(examples + "board.xfl", "1 bond wire is left out"));
    for (const char *text :
         {"Name                board\n", "Units               mm\n", "Thickness           1.6\n",
          "7 points, 0 cut-outs, x 0 to 40, y 0 to 25", "Components          5\n", "Placements          7\n",
          "Layer GND           conductor, thickness 0.035, 1 traces", "Layers              4\n"})
        EXPECT_THAT(result.out, HasSubstr(text));
}

TEST_F(ToolXfl, TheBoardExampleIsImported) {
    const ToolResult result =
        runTool({"import", examples + "board.xfl", "-o", folder.path("model.json"), "--json"});
    EXPECT_EQ(result.status, 0) << result;
    const rapidjson::Document report = parseJson(result.out);
    const rapidjson::Value &entities = report["entities"];
    EXPECT_EQ(entities["Conductor Layer"].GetInt(), 4);
    EXPECT_EQ(entities["PCB"].GetInt(), 1);
    EXPECT_EQ(entities["Via"].GetInt(), 24);
    EXPECT_EQ(importedAs(report["parts"], "Resistor"), 3);
    EXPECT_EQ(importedAs(report["parts"], "Component"), 4);
    EXPECT_EQ(report["copper"]["conductorsInvalid"].IsNull(), false);
    EXPECT_STREQ(report["importMessages"].GetString(), "");
}

TEST_F(ToolXfl, ThePackageExampleIsABoardAsWell) {
    const ToolResult result =
        runTool({"import", examples + "package.xfl", "-o", folder.path("model.json"), "--json"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, toldOf(examples + "package.xfl", "80 bond wires are left out"));
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_EQ(report["entities"]["Via"].GetInt(), 123);
    EXPECT_EQ(importedAs(report["parts"], "Component"), 3);
    EXPECT_DOUBLE_EQ(report["thickness"].GetDouble(), 0.592);
    EXPECT_STREQ(report["importMessages"].GetString(), "");
}

// Every keyword of a net and every kind of shape, and a comment beside each group of rows.
TEST_F(ToolXfl, TheExamplesHaveEveryWordOfTheFormat) {
    for (const char *name : {"board.xfl", "package.xfl"}) {
        const std::string file = examples + name;
        std::ifstream stream(file);
        const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        for (const char *section : {".version", ".unit", ".scale", ".layer", ".shape", ".board_geom", ".part",
                                    ".component", ".via", ".route"})
            EXPECT_THAT(text, HasSubstr("\n" + std::string(section))) << name;
        for (const char *word :
             {"via", "shape", "bondwire", "polygon", "composite", "rectangle", "square", "diamond", "circle",
              "annular", "void_polygon", "void_composite", "void_rectangle", "void_square", "void_diamond",
              "void_circle", "void_annular", "path"})
            EXPECT_THAT(text, testing::ContainsRegex("\n  " + std::string(word) + " ")) << name;
        for (const char *shape :
             {"circle", "finger", "bullet", "oblong", "rectangle", "square", "polygon", "composite", "path",
              "diamond", "annular", "void_circle", "void_finger", "void_bullet", "void_oblong",
              "void_rectangle", "void_square", "void_polygon", "void_composite"})
            EXPECT_THAT(text, testing::ContainsRegex("\n  [0-9]+ " + std::string(shape) + " ")) << name;
        for (const char *token : {" arc ", " rarc ", " arc3 "})
            EXPECT_THAT(text, HasSubstr(token)) << name;
        for (const char *body : {" R ", " C ", " D "})
            EXPECT_THAT(text, HasSubstr(body)) << name;
    }
}

TEST_F(ToolXfl, PicturesOfTheModelAndTheDesignShowTheSameParts) {
    for (const char *name : {"board.xfl", "package.xfl"}) {
        const std::string file = examples + name;
        ASSERT_EQ(runTool({"import", file, "-o", folder.path("model.json")}).status, 0);
        const auto model = loadModel(folder.path("model.json"));
        for (const Side side : {Side::Top, Side::Bottom}) {
            PartPaths design = pathsOfDesign(viewOfDesign(readDesign({file}), side), 1.0);
            PartPaths shown = pathsOfModel(viewOfModel(*findBoard(*model, file, ""), side));
            // A cylinder stands at the location of its placement, wherever the design's circle is about it.
            design.erase("T1");
            shown.erase("T1");
            expectSameParts(design, shown, 1e-6);
        }
    }
}

TEST_F(ToolXfl, LayersOfTheExamplesAreDrawn) {
    for (const char *name : {"board.xfl", "package.xfl"}) {
        for (const char *layer : {"1", "2", "3", "4"}) {
            const std::string picture = folder.path("layer.svg");
            const ToolResult result =
                runTool({"render", examples + name, "--layer", layer, "-o", picture, "--width", "600"});
            EXPECT_EQ(result.status, 0) << result;
            EXPECT_THAT(folder.read("layer.svg"), HasSubstr("<path"));
        }
    }
}

TEST_F(ToolXfl, ViasAreDrawnOnTheLayersThatTheyReach) {
    // From 1 to 2, from 2 to 3 and through all of three conductors; each of a diameter of its own.
    const std::string file = folder.write(
        "a.xfl",
        ".unit mm\n.layer\nA 0.1 C Copper FR4\nB 1 D Copper FR4\nC 0.1 C Copper FR4\nD 1 D Copper FR4\n"
        "E 0.1 C Copper FR4\n.end\n.shape\n1 circle 1\n2 circle 2\n3 circle 3\n.end\n.via\nV 0 0 1 0\n"
        "W 0 0 2 0\nX 0 0 3 0\n.end\n" +
            edge + net("via 1 2 V 0 0\nvia 2 3 W 3 0\nvia 1 3 X 6 0\n"));
    ASSERT_EQ(runTool({"import", file, "-o", folder.path("model.json")}).status, 0);
    const auto model = loadModel(folder.path("model.json"));
    const Design design = readDesign({file});
    const std::size_t numHoles[] = {2, 3, 2};
    for (std::size_t layer = 1; layer <= 3; ++layer) {
        EXPECT_EQ(viewOfBoard(design.board(), Side::Top, layer).holes.size(), numHoles[layer - 1]) << layer;
        EXPECT_EQ(viewOfModel(*findBoard(*model, file, ""), Side::Top, layer).holes.size(),
                  numHoles[layer - 1])
            << layer;
    }
}

TEST_F(ToolXfl, ABoardIsConvertedToIdf) {
    const ToolResult result =
        runTool({"convert", examples + "board.xfl", "-o", folder.path("out.emn")}, folder.path());
    EXPECT_EQ(result.status, 0) << result;
    const std::string board = folder.read("out.emn");
    EXPECT_THAT(board, HasSubstr("\"QFP32\" \"QFP32\" \"U1\""));
    EXPECT_THAT(result.err, HasSubstr("4 layers are left out"));
}

} // namespace
