// Real Gerber and drill files against facts that another program counted in their text.
#include "GerberTally.h"
#include "readers/gerber/GerberReader.h"
#include "support/LayerSampler.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace {

using namespace EDA;
using namespace TestSupport;
using rapidjson::Value;

// The folder holds this many files of each kind.
constexpr int layerFiles = 201;
constexpr int copperFiles = 69;
constexpr int drillFiles = 29;

constexpr double secondsOfFile = 20.0; // a tenth of it, where nothing else runs
constexpr std::size_t samplePoints = 10'000;

const std::string corpus = EDA_CORPUS;

int intOf(const Value &object, const char *key) { return object.HasMember(key) ? object[key].GetInt() : 0; }

std::string textOf(const Value &object, const char *key) {
    return object.HasMember(key) && object[key].IsString() ? object[key].GetString() : std::string();
}

std::string contentOf(const std::string &file) {
    std::ifstream stream(std::filesystem::u8path(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

bool isTold(const std::string &text, std::initializer_list<const char *> words) {
    return std::any_of(words.begin(), words.end(),
                       [&text](const char *word) { return text.find(word) != std::string::npos; });
}

// By what their makers call them.
bool isCopper(const std::string &name) {
    return isTold(name, {"_Bottom.gbr", "_Top.gbr", "BottomLayer", "TopLayer", "copper_",     "r.bottom.gbr",
                         "r.top.gbr",   ".group",   ".gbl",        ".gtl",     ".GBL",        ".GTL",
                         ".G1",         ".G2",      ".g2",         ".g3",      "/BOTTOM.art", "/TOP.art",
                         "GND2",        "LAYER_",   "PWR.art",     "L2_GND",   "L3_PLANE",    "EtchLayer",
                         "_Cu.gbr",     "g18/"});
}

// In an attribute; what a comment says does not count.
bool saysNotCopper(const std::string &content) {
    const std::string attribute = "\n%TF.FileFunction,";
    const std::size_t at = content.find(attribute);
    return at != std::string::npos && content.compare(at + attribute.size(), 6, "Copper") != 0;
}

class GerberCorpus : public testing::Test {
protected:
    void SetUp() override {
        const std::string text = contentOf(corpus + "/facts.json");
        if (text.empty()) GTEST_SKIP() << "no folder of real designs here";
        facts_.Parse(text.c_str(), text.size());
        ASSERT_FALSE(facts_.HasParseError());
    }

    // Calls `use(name, facts)` for each file of this kind, and gives their number.
    template <typename Use> int eachFile(const std::string &kind, Use use) const {
        int count = 0;
        for (auto member = facts_.MemberBegin(); member != facts_.MemberEnd(); ++member) {
            const std::string name = member->name.GetString();
            if (name.compare(0, 7, "gerber/") != 0 || textOf(member->value, "kind") != kind) continue;
            SCOPED_TRACE(name);
            const auto start = std::chrono::steady_clock::now();
            use(name, member->value);
            const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
            EXPECT_LT(time.count(), secondsOfFile);
            ++count;
        }
        return count;
    }

    rapidjson::Document facts_;
};

std::vector<EDATrace> tracesOf(const std::string &name, bool merge) {
    GerberReader reader;
    reader.setMergeConductors(merge);
    EXPECT_TRUE(reader.readFile(corpus + "/" + name)) << reader.getError();
    const EDABoard &board = reader.getBoard();
    if (board.numLayers() != 1) {
        ADD_FAILURE() << "no layer";
        return {};
    }
    return {board.beginLayers()->beginTraces(), board.beginLayers()->endTraces()};
}

// What the counts of objects leave out: shapes. Strokes and flashes of an aperture without extent leave
// nothing. The parts of a stroke are united where one has a vertex in the other, so that some strokes stay in
// two or three conductors; and a region that touches itself may come apart.
struct ShapeDifference {
    const char *name;
    int conductors;
};

const ShapeDifference withoutExtent[] = {
    {"g03/profile.gbr", -4},     {"g09/Gerber/BoardOutlline.gdo", -4},   {"g12/combined.GKO", -2184},
    {"g18/uwe-example.gbr", -4}, {"g09/Gerber/EtchLayerBottom.gdo", -2},
};

const ShapeDifference inSeveralPieces[] = {
    {"g01/mainboard_Top.gbr", 8},
    {"g01/panel_Bottom.gbr", 2},
    {"g02/Gerber_TopSilkLayer.GTO", 13},
    {"g04/copper_top_l1.gbr", 2},
    {"g04/silkscreen_top.gbr", 74},
    {"g06/power-art.gbl", 1},
    {"g06/power-art.gtl", 12},
    {"g07/BOTTOM.art", 3},
    {"g07/LAYER_1.art", 1},
    {"g08/ZXINET.GBL", 14},
    {"g08/ZXINET.GTL", 13},
    {"g09/Gerber/DrillDrawingThrough.gdo", 419},
    {"g09/Gerber/EtchLayerTop.gdo", 2},
    {"g13/StickHub-B_Cu.gbr", 1},
    {"g13/StickHub-F_Cu.gbr", 2},
    {"g14/kit-dev-coldfire-xilinx_5213-F_Cu.gtl", 1},
    {"g16/gerbers/KVision_PCB_V1I1.GBL", 12},
    {"g16/gerbers/KVision_PCB_V1I1.GTL", 1},
    {"g17/SSB.art", 6},
    {"g17/TOP.art", 1},
    {"g18/eaglecad1-top-cop.gbx", 100},
    {"g18/nollezappare-EtchLayer2Bottom.gdo", 233},
    {"g19/SE_SG_IF_V2.GTL", 1},
};

int shapeDifference(const std::string &name) {
    int sum = 0;
    const auto add = [&](const ShapeDifference &each) {
        sum += name == std::string("gerber/") + each.name ? each.conductors : 0;
    };
    std::for_each(std::begin(withoutExtent), std::end(withoutExtent), add);
    std::for_each(std::begin(inSeveralPieces), std::end(inSeveralPieces), add);
    return sum;
}

TEST_F(GerberCorpus, TheTallyCountsWhatTheFactsCount) {
    eachFile("gerber", [](const std::string &name, const Value &facts) {
        const GerberTally tally(contentOf(corpus + "/" + name));
        EXPECT_EQ(tally.draws + tally.regionDraws, static_cast<std::size_t>(intOf(facts, "D01")));
        EXPECT_EQ(tally.regionDraws, static_cast<std::size_t>(intOf(facts["in_regions"], "D01")));
        EXPECT_EQ(tally.regionMoves, static_cast<std::size_t>(intOf(facts["in_regions"], "D02")));
        EXPECT_EQ(tally.flashes, static_cast<std::size_t>(intOf(facts, "D03")));
    });
}

// Each conductor is a draw, a flash or a contour of the facts, or a rule says why it is not.
TEST_F(GerberCorpus, LayersHaveTheObjectsOfTheirFacts) {
    std::size_t conductors = 0;
    const int count = eachFile("gerber", [&conductors](const std::string &name, const Value &) {
        const std::string content = contentOf(corpus + "/" + name);
        if (saysNotCopper(content)) {
            GerberReader reader;
            EXPECT_FALSE(reader.readFile(corpus + "/" + name));
            EXPECT_EQ(reader.getError().find("This file does not represent a Copper layer"), 0U)
                << reader.getError();
            EXPECT_EQ(reader.getBoard().numLayers(), 0U);
            return;
        }
        const std::size_t number = tracesOf(name, false).size();
        const std::size_t expected = GerberTally(content).conductors();
        EXPECT_EQ(static_cast<int>(number) - static_cast<int>(expected), shapeDifference(name));
        conductors += number;
    });
    EXPECT_EQ(count, layerFiles);
    EXPECT_GT(conductors, 200'000U);
}

TEST_F(GerberCorpus, MergedLayersCoverWhatTheyCoveredBefore) {
    int layers = 0;
    eachFile("gerber", [&layers](const std::string &name, const Value &) {
        if (!isCopper(name)) return;
        ++layers;
        const std::vector<EDATrace> before = tracesOf(name, false), after = tracesOf(name, true);
        EXPECT_LE(after.size(), before.size());
        const SampleResult result = compareCover(before, after, samplePoints, static_cast<unsigned>(layers));
        EXPECT_GT(result.compared, samplePoints * 99 / 100);
        EXPECT_GT(result.inside, 0U);
        EXPECT_EQ(result.onlyBefore.size(), 0U);
        EXPECT_EQ(result.onlyAfter.size(), 0U);
    });
    EXPECT_EQ(layers, copperFiles);
}

TEST_F(GerberCorpus, LayersAndDrillFilesAreToldApart) {
    const GerberReader reader;
    eachFile("gerber", [&reader](const std::string &name, const Value &) {
        EXPECT_FALSE(reader.isDrillFile(corpus + "/" + name));
    });
    eachFile("excellon", [&reader](const std::string &name, const Value &) {
        EXPECT_TRUE(reader.isDrillFile(corpus + "/" + name));
    });
}

// Holes of the facts, but for what this reader takes otherwise: a "G93" with its place is no hole; a slot is
// one hole; and a move of a route without a "G01" of its own drills one.
int expectedHoles(const Value &facts) {
    const Value &flags = facts["flags"];
    const int routes = intOf(facts, "rout_moves") - intOf(flags, "G01");
    return intOf(facts, "holes") - intOf(flags, "G93") + intOf(facts, "slots_G85") + routes;
}

TEST_F(GerberCorpus, DrillFilesHaveTheHolesOfTheirFacts) {
    std::size_t holes = 0;
    const int count = eachFile("excellon", [&holes](const std::string &name, const Value &facts) {
        GerberReader reader;
        EXPECT_TRUE(reader.readFile(corpus + "/" + name));
        const EDABoard &board = reader.getBoard();
        EXPECT_EQ(static_cast<int>(board.numVias(1)), expectedHoles(facts));
        EXPECT_EQ(board.getUnits(), textOf(facts, "units") == "inch" ? "in" : "mm");
        holes += board.numVias(1);
    });
    EXPECT_EQ(count, drillFiles);
    EXPECT_GT(holes, 4'000U);
}

// Tools with their sizes in the file's units and what they drill.
TEST_F(GerberCorpus, ToolsDrillHolesOfTheirSize) {
    eachFile("excellon", [](const std::string &name, const Value &facts) {
        if (intOf(facts, "rout_moves") > 0 || intOf(facts, "slots_G85") > 0) return;
        std::map<double, int> expected, found;
        for (auto tool = facts["tools"].MemberBegin(); tool != facts["tools"].MemberEnd(); ++tool) {
            if (intOf(tool->value, "holes") > 0)
                expected[tool->value["diameter"].GetDouble()] += intOf(tool->value, "holes");
        }
        GerberReader reader;
        reader.readFile(corpus + "/" + name);
        const EDABoard &board = reader.getBoard();
        for (auto via = board.beginVias(); via != board.endVias(); ++via)
            found[via->getDiameter()] += 1 + static_cast<int>(via->numInstances());
        EXPECT_EQ(found, expected);
    });
}

// The format has no place for points: such a number is 0.
TEST_F(GerberCorpus, CoordinatesWithPointsAreZero) {
    int files = 0;
    eachFile("excellon", [&files](const std::string &name, const Value &facts) {
        if (intOf(facts, "with_decimal_point") == 0) return;
        ++files;
        GerberReader reader;
        reader.readFile(corpus + "/" + name);
        const EDABoard &board = reader.getBoard();
        for (auto via = board.beginVias(); via != board.endVias(); ++via) {
            EXPECT_EQ(via->getXCentre(), 0.0);
            EXPECT_EQ(via->getYCentre(), 0.0);
        }
        EXPECT_EQ(static_cast<int>(board.numVias(1)), intOf(facts, "with_decimal_point"));
    });
    EXPECT_EQ(files, 1);
}

} // namespace
