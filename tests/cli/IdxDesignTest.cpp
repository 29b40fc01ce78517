// IDX documents as designs: how they are known, what is told about them, and what becomes of the example.
#include "BoardView.h"
#include "readers/IDXTestSupport.h"
#include "SmallDesign.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

const std::string example = std::string(EDA_EXAMPLES) + "/idx/beacon.idx";

std::string withTag(std::string text, const std::string &old, const std::string &now) {
    for (std::size_t at = text.find(old); at != std::string::npos; at = text.find(old, at + now.size()))
        text.replace(at, old.size(), now);
    return text;
}

class ToolIdx : public testing::Test {
protected:
    ToolResult info(const std::string &bytes, const std::string &name = "a.idx") const {
        return runTool({"info", folder.write(name, bytes)});
    }
    ToolResult infoOfBody(const std::string &body) const { return info(IDXTest::document(body)); }

    TempFolder folder;
};

// A board's edge, so that the document is none without a part of a board.
std::string edge() {
    return IDXTest::polygon("EDGE", "0,0 9,0 9,9 0,0") + IDXTest::part("BoardOutline", "Stratum", {"EDGE"});
}

// How documents are known.

TEST_F(ToolIdx, ADocumentIsKnownByItsFirstElementWhateverItsName) {
    for (const char *name : {"a.idx", "a.xml", "a.emn", "a.gbr", "a"}) {
        const ToolResult result = info(IDXTest::document(edge()), name);
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(result.out, HasSubstr("Format              IDX\n"));
    }
}

TEST_F(ToolIdx, RowsOfOtherFormatsInItDoNotDeceive) {
    const ToolResult result = info(withTag(IDXTest::document(edge()), "<foundation:Header>",
                                           "<!--\n.HEADER\nG04*\n-->\n<foundation:Header>"));
    EXPECT_THAT(result.out, HasSubstr("Format              IDX\n"));
}

TEST_F(ToolIdx, OtherXmlIsNoDesign) {
    const ToolResult result = info("<?xml version=\"1.0\"?>\n<drawing/>\n", "a.xml");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("a.xml': is in no format that eda reads"));
}

TEST_F(ToolIdx, AnotherFileOfItsNameIsRefused) {
    for (const char *bytes : {"<?xml version=\"1.0\"?>\n<drawing/>\n", "<a", "plain text\n"}) {
        const ToolResult result = info(bytes);
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_THAT(result.err, HasSubstr("a.idx': is no IDX document"));
    }
}

TEST_F(ToolIdx, ADocumentThatIsCutOffIsRefused) {
    const std::string whole = IDXTest::document(edge());
    const ToolResult result = info(whole.substr(0, whole.size() - 10));
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("a.idx': is no well-formed XML, or has more than 256 levels"));
}

TEST_F(ToolIdx, ADeepDocumentIsRefused) {
    std::string open, close;
    for (int i = 0; i < 100'000; ++i) {
        open += "<a>";
        close += "</a>";
    }
    const ToolResult result = infoOfBody(open + close);
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("256 levels"));
}

TEST_F(ToolIdx, TwoDocumentsAreNoDesign) {
    const std::string first = folder.write("a.idx", IDXTest::document(edge()));
    const ToolResult result = runTool({"info", first, folder.write("b.idx", IDXTest::document(edge()))});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("are two IDX documents"));
}

TEST_F(ToolIdx, ADocumentAndAnIdfFileAreNoDesign) {
    const std::string document = folder.write("a.idx", IDXTest::document(edge()));
    const ToolResult result = runTool({"info", document, writeSmallDesign(folder)});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("are not of one format"));
}

TEST_F(ToolIdx, HasImportOptions) {
    const ToolResult result = runTool({"options", "idx"}, folder.path());
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Import options of IDX:"));
}

// What is told.

TEST_F(ToolIdx, KindsThatAreLeftOutAreToldWithTheirNumbers) {
    using namespace IDXTest;
    const std::string shapes = polygon("E", "0,0 1,0 1,1");
    const std::string fiducial = element("FunctionalItemShapeType", "Fiducial");
    const std::string cutout = element("InterStratumFeatureType", "Cutout");
    const ToolResult result = infoOfBody(
        edge() + shapes + part("F", "FunctionalItemShape", {"E"}, "", fiducial) + instance("F_ITEM", "F2") +
        instance("F_ITEM", "F3") + part("C", "InterStratumFeature", {"E"}, "", cutout) +
        instance("MISSING", "M1") + instance("MISSING", "M2"));
    EXPECT_EQ(result.status, 0) << result;
    const std::string file = "'" + folder.path("a.idx") + "': ";
    EXPECT_THAT(result.err, HasSubstr(file + "3 instances of the kind 'Fiducial' are left out\n"));
    EXPECT_THAT(result.err, HasSubstr(file + "1 instance of the kind 'Cutout' is left out: not round\n"));
    EXPECT_THAT(result.err,
                HasSubstr(file + "2 instances are left out: the item or its shape was not found\n"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 3);
}

TEST_F(ToolIdx, ManyKindsAreToldShort) {
    using namespace IDXTest;
    std::string body = edge() + polygon("E", "0,0 1,0 1,1");
    for (int i = 0; i < 30; ++i)
        body += part("F" + std::to_string(i), "FunctionalItemShape", {"E"}, "",
                     element("FunctionalItemShapeType", "Kind" + std::to_string(i)));
    const ToolResult result = infoOfBody(body);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 11);
    EXPECT_THAT(result.err, HasSubstr("... and 20 more kinds of instances"));
}

TEST_F(ToolIdx, MissingCurvesAreToldOnce) {
    using namespace IDXTest;
    const ToolResult result =
        infoOfBody(edge() + curveSet("S", {"LOST_1", "LOST_2"}) + shapeElement("E", "S") +
                   part("P", "AssemblyComponent", {"E"}) + instance("P_ITEM", "P2"));
    EXPECT_THAT(
        result.err,
        HasSubstr("4 curves are missing in the document, or made of themselves: 'LOST_1' and others"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
}

TEST_F(ToolIdx, LineBreaksInNamesMakeNoWarnings) {
    using namespace IDXTest;
    const std::string kind = "Odd&#10;one&#10;two&#13;three";
    const ToolResult result = infoOfBody(
        edge() + part("F", "InterStratumFeature", {}, "", element("InterStratumFeatureType", kind)));
    EXPECT_THAT(result.err, HasSubstr("1 instance of the kind 'Odd one two three' is left out\n"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
}

TEST_F(ToolIdx, NamesInWarningsCannotSteerATerminal) {
    using namespace IDXTest;
    const ToolResult result = infoOfBody(edge() + curveSet("S", {"A\xC2\x9B\x42"}) + shapeElement("E", "S") +
                                         part("P", "AssemblyComponent", {"E"}));
    EXPECT_THAT(result.err, HasSubstr("'A\\u{9B}B'"));
}

TEST_F(ToolIdx, WhatTheReaderPassesOverIsToldAsWell) {
    using namespace IDXTest;
    const std::string shapes = polygon("E", "0,0 1,0 1,1", 0, 0, element("ShapeElementType", "F"));
    const ToolResult result = infoOfBody(
        edge() + shapes + part("K", "KeepIn", {"E"}, "", element("Purpose", "Route")) +
        technology("T", "GenericLayer") + shape("Stratum", "L1", {"E"}, element("StratumTechnology", "T")) +
        shape("Stratum", "L2", {"E"}, element("StratumTechnology", "T")) + shape("Stratum", "L3", {"E"}));
    EXPECT_THAT(result.err, HasSubstr("1 region to keep in is left out\n"));
    EXPECT_THAT(result.err, HasSubstr("2 layers of the purpose GenericLayer are left out\n"));
    EXPECT_THAT(result.err, HasSubstr("1 stratum without a technology is left out\n"));
}

TEST_F(ToolIdx, ADocumentOfTheNewerStyleIsToldOnce) {
    const std::string typed = "<foundation:Item id=\"A\" geometryType=\"VIA\"/>";
    const ToolResult result = infoOfBody(typed + withTag(typed, "\"A\"", "\"B\""));
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err,
                HasSubstr("2 items tell their kind by a geometryType: the document is of a newer style"));
    EXPECT_THAT(result.err, HasSubstr(". Items: 2 VIA\n"));
    EXPECT_THAT(result.err, HasSubstr("no part of a board was found in the document"));
}

TEST_F(ToolIdx, ItemsOfTheNewerStyleAreToldByKindTheMostFrequentFirst) {
    std::string items;
    for (const char *type : {"VIA", "COMPONENT", "VIA", "KEEPOUT&#10;\xC2\x9B"})
        items += "<foundation:Item geometryType=\"" + std::string(type) + "\"/>";
    EXPECT_THAT(infoOfBody(items).err, HasSubstr(". Items: 2 VIA, 1 COMPONENT, 1 KEEPOUT\\u{0A}\\u{9B}\n"));
    for (int i = 0; i < 30; ++i)
        items += "<foundation:Item geometryType=\"OTHER_" + std::to_string(i) + "\"/>";
    const std::string err = infoOfBody(items).err;
    EXPECT_THAT(err, HasSubstr("34 items tell their kind"));
    EXPECT_THAT(err, HasSubstr(". Items: 2 VIA, 1 COMPONENT, "));
    EXPECT_THAT(err, HasSubstr(" and 13 more\n"));
}

// Real documents of the newer style.

class CorpusIdx : public testing::Test {
protected:
    void SetUp() override {
        std::ifstream stream(std::filesystem::u8path(corpus + "/facts.json"), std::ios::binary);
        if (!stream) GTEST_SKIP() << "no folder of real designs here";
        const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        facts.Parse(text.c_str(), text.size());
        ASSERT_FALSE(facts.HasParseError());
    }
    const std::string corpus = EDA_CORPUS;
    rapidjson::Document facts;
};

TEST_F(CorpusIdx, InfoTellsEachKindOfItemThatItCannotTakeWithItsNumber) {
    for (const char *name : {"idx/x01/baseline.idx", "idx/x02/demo-output.idx"}) {
        SCOPED_TRACE(name);
        const ToolResult result = runTool({"info", corpus + "/" + name});
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.out, HasSubstr("Format              IDX\n"));
        const std::size_t begin = result.err.find(" items tell their kind by a geometryType: ");
        ASSERT_NE(begin, std::string::npos) << result;
        const std::string line = result.err.substr(begin, result.err.find('\n', begin) - begin);
        std::size_t total = 0;
        ASSERT_TRUE(facts.HasMember(name));
        const rapidjson::Value &types = facts[name]["geometryType"];
        for (auto type = types.MemberBegin(); type != types.MemberEnd(); ++type) {
            total += type->value.GetUint();
            const std::string entry = std::to_string(type->value.GetUint()) + " " + type->name.GetString();
            EXPECT_THAT(line + ",", HasSubstr(" " + entry + ","));
        }
        EXPECT_THAT(result.err, HasSubstr(": " + std::to_string(total) + " items tell their kind"));
        EXPECT_THAT(result.err, HasSubstr("no part of a board was found in the document"));
    }
}

// The example.

TEST_F(ToolIdx, TheExampleIsReadWhole) {
    const ToolResult result = runTool({"info", example});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    for (const char *text :
         {"Name                beacon\n", "Units               mm\n", "Thickness           1.6\n",
          "7 points, 2 cut-outs, x 0 to 30, y 0 to 20", "Placements          2\n", "Keepouts            1\n",
          "2 kinds, 4 in all", "Layer TOP           conductor, thickness 0.035, 3 traces",
          "Layer BOTTOM        conductor, thickness 0.035, 2 traces"})
        EXPECT_THAT(result.out, HasSubstr(text));
}

TEST_F(ToolIdx, TheExampleIsImported) {
    const ToolResult result = runTool({"import", example, "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    for (const char *text :
         {"Conductor Layer        2\n", "PCB Conductor          2\n", "Trace                  3\n",
          "Via                    3\n", "Board Keepout          1\n", "Imported                 2\n"})
        EXPECT_THAT(result.out, HasSubstr(text));
}

// By hand: L1 is mirrored in x and turned by -30 degrees, then goes to 20, 4; U1 is turned by 90 degrees.
TEST(IdxExample, PartsStandWhereTheirTransformsPutThem) {
    EDA::IDXReader reader;
    ASSERT_TRUE(reader.readFile(example));
    const auto cornersOf = [&reader](EDATool::Side side) {
        std::vector<std::pair<double, double>> corners;
        const EDATool::BoardView view = EDATool::viewOfBoard(reader.getBoard(), side);
        EXPECT_EQ(view.parts.size(), 1u);
        for (const EDATool::PathStep &step : view.parts.at(0).body)
            corners.emplace_back(step.to.x, step.to.y);
        return corners;
    };
    const auto near = [](double x, double y) {
        return testing::Pair(testing::DoubleNear(x, 1e-3), testing::DoubleNear(y, 1e-3));
    };
    EXPECT_THAT(cornersOf(EDATool::Side::Top),
                testing::IsSupersetOf({near(13, 7), near(13, 13), near(10, 13), near(9, 11), near(9, 7)}));
    EXPECT_THAT(cornersOf(EDATool::Side::Bottom),
                testing::IsSupersetOf({near(20, 4), near(15.6699, 6.5), near(16.4199, 7.7990),
                                       near(19.0179, 6.2990), near(20.2679, 8.4641), near(22, 7.4641)}));
}

// Tracks have their width in the picture: each of the four segments ends in half circles.
TEST_F(ToolIdx, TracksAreDrawnByTheirWidth) {
    const std::string picture = folder.path("top.svg");
    const ToolResult result =
        runTool({"render", example, "--layer", "top", "-o", picture, "--width", "1000"});
    EXPECT_EQ(result.status, 0) << result;
    const std::string svg = folder.read("top.svg");
    const double scale = (1000.0 - 2 * 28.0) / 30.0; // pixels for a millimetre, not counting margins
    int segments = 0;
    for (std::size_t at = svg.find("<path d=\""); at != std::string::npos;
         at = svg.find("<path d=\"", at + 1)) {
        const std::string path = svg.substr(at, svg.find('>', at) - at);
        if (std::count(path.begin(), path.end(), 'A') != 2 || path.find('L') == std::string::npos) continue;
        const double radius = std::atof(path.c_str() + path.find('A') + 1);
        if (radius < 0.3 * scale) ++segments;
    }
    EXPECT_EQ(segments, 4);
}

TEST_F(ToolIdx, PicturesOfTheModelAndTheDesignShowTheSameParts) {
    runTool({"import", example, "-o", folder.path("model.json")});
    for (const char *side : {"top", "bottom"}) {
        runTool({"render", example, "-o", folder.path("design.svg"), "--side", side});
        runTool({"render", folder.path("model.json"), "-o", folder.path("model.svg"), "--side", side});
        const std::string fill = "fill=\"#262c34\""; // of parts
        const auto partOf = [&](const std::string &name) {
            const std::string svg = folder.read(name);
            const std::size_t at = svg.find(fill);
            return at == std::string::npos ? name : svg.substr(svg.rfind("<path", at), 60);
        };
        EXPECT_EQ(partOf("design.svg"), partOf("model.svg")) << side;
    }
}

} // namespace
