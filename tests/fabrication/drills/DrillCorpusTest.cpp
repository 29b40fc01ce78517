// Holes and slots by tool of real files, against a count that was made apart from this reader, and their
// places against the copper that they belong to.
#include "DrillBench.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace EDA::Fabrication;
using rapidjson::Value;

namespace {

const std::string corpus = EDA_CORPUS;

// The folder holds this many drill files.
constexpr int drillFiles = 29;

struct Pair {
    const char *drills;
    const char *layer;
};

constexpr Pair pairs[] = {
    {"g01/keyboard.drl", "g01/keyboard_Bottom.gbr"},
    {"g01/mainboard.drl", "g01/mainboard_Bottom.gbr"},
    {"g01/panel.drl", "g01/panel_Bottom.gbr"},
    {"g02/Gerber_Drill_NPTH.DRL", "g02/Gerber_TopLayer.GTL"},
    {"g02/Gerber_Drill_PTH.DRL", "g02/Gerber_TopLayer.GTL"},
    {"g03/drills.xln", "g03/copper_top.gbr"},
    {"g05/controller.plated-drill.cnc", "g05/controller.bottom.gbr"},
    {"g05/controller.unplated-drill.cnc", "g05/controller.bottom.gbr"},
    {"g05/driver.plated-drill.cnc", "g05/driver.bottom.gbr"},
    {"g05/driver.unplated-drill.cnc", "g05/driver.bottom.gbr"},
    {"g06/power-art.xln", "g06/power-art.gbl"},
    {"g07/arena_12-12_v6_L1-L6.drl", "g07/BOTTOM.art"},
    {"g08/ZXINET.DRL", "g08/ZXINET.GTL"},
    {"g09/NCDrill/ThruHolePlated.ncd", "g09/Gerber/EtchLayerTop.gdo"},
    {"g09/NCDrill/ThruHoleNonPlated.ncd", "g09/Gerber/BoardOutlline.gdo"},
    {"g09/NCDrill/ContourPlated.ncd", "g09/Gerber/EtchLayerTop.gdo"},
    {"g10/design_export.drl", "g10/design_export.gtl"},
    {"g12/combined.txt", "g12/combined.gts"},
    {"g13/StickHub-PTH.drl", "g13/StickHub-F_Cu.gbr"},
    {"g14/kit-dev-coldfire-xilinx_5213.drl", "g14/kit-dev-coldfire-xilinx_5213-F_Cu.gtl"},
    {"g16/NC Drill/KVision_PCB_V1I1.TXT", "g16/gerbers/KVision_PCB_V1I1.GTL"},
    {"g17/OC_CONNECT-1_BREAKOUT_LIFE-3-1-4.drl", "g17/TOP.art"},
    {"g18/nollezappare-ThruHolePlated.ncd", "g18/nollezappare-EtchLayer2Bottom.gdo"},
    {"g19/SE_SG_IF_V2.TXT", "g19/SE_SG_IF_V2.GTL"},
    {"g18/numpres-numpres.pcb.output_plated-drill.grb", "g18/numpres-numpres.pcb.output_group1.grb"},
};

std::string contentOf(const std::string &file) {
    std::ifstream stream(std::filesystem::u8path(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string textOf(const Value &object, const char *key) {
    return object.HasMember(key) && object[key].IsString() ? object[key].GetString() : std::string();
}

struct NoSink : LayerSink {
    void flash(Shape const &, Point const &, bool) override {}
    void stroke(Shape const &, Point const &, Segment const &, bool) override {}
    void region(Path const &, bool) override {}
};

class DrillCorpus : public testing::Test {
protected:
    void SetUp() override {
        const std::string text = contentOf(corpus + "/facts.json");
        if (text.empty()) GTEST_SKIP() << "no folder of real designs here";
        facts_.Parse(text.c_str(), text.size());
        ASSERT_FALSE(facts_.HasParseError());
    }

    rapidjson::Document facts_;
};

struct ToolCount {
    int holes = 0;
    int moves = 0; // of slots
};

std::map<int, ToolCount> countsOf(DrillData const &data) {
    std::map<int, ToolCount> counts;
    for (DrillHole const &hole : data.holes)
        ++counts[hole.tool].holes;
    for (DrillSlot const &slot : data.slotHoles)
        counts[slot.tool].moves += static_cast<int>(slot.path.segments.size());
    return counts;
}

void expectTools(ReadDrills const &read, Value const &file) {
    const double unit = textOf(file, "units") == "inch" ? 25.4 : 1.0;
    std::map<int, ToolCount> counts = countsOf(read.data);
    for (auto tool = file["tools"].MemberBegin(); tool != file["tools"].MemberEnd(); ++tool) {
        const int number = std::stoi(std::string(tool->name.GetString()).substr(1));
        if (number == 0) continue;
        SCOPED_TRACE(number);
        EXPECT_EQ(counts[number].holes, tool->value["holes"].GetInt());
        EXPECT_EQ(counts[number].moves,
                  tool->value["slots_G85"].GetInt() + tool->value["rout_moves"].GetInt());
        if (!tool->value["diameter"].IsNumber()) continue;
        ASSERT_EQ(read.data.tools.count(number), 1u);
        EXPECT_NEAR(read.data.tools.at(number).diameter, unit * tool->value["diameter"].GetDouble(), 1e-6);
    }
}

} // namespace

TEST_F(DrillCorpus, ToolsHaveTheirSizesHolesAndSlots) {
    int count = 0;
    for (auto member = facts_.MemberBegin(); member != facts_.MemberEnd(); ++member) {
        if (textOf(member->value, "kind") != "excellon") continue;
        SCOPED_TRACE(member->name.GetString());
        const ReadDrills read = readDrills(contentOf(corpus + "/" + member->name.GetString()));
        EXPECT_TRUE(read.facts.isDrill);
        EXPECT_FALSE(read.notes.has(NoteKind::LeftOut));
        expectTools(read, member->value);
        ++count;
    }
    EXPECT_EQ(count, drillFiles);
}

TEST_F(DrillCorpus, NoLayerIsTakenForADrillFile) {
    for (auto member = facts_.MemberBegin(); member != facts_.MemberEnd(); ++member) {
        if (textOf(member->value, "kind") == "excellon") continue;
        SCOPED_TRACE(member->name.GetString());
        EXPECT_FALSE(lookAtDrillFile(contentOf(corpus + "/" + member->name.GetString())).isDrill);
    }
}

TEST_F(DrillCorpus, HolesLieOnTheLayersThatTheyBelongTo) {
    for (Pair const &pair : pairs) {
        SCOPED_TRACE(pair.drills);
        NoSink sink;
        Notes notes;
        const LayerFacts layer = readLayerFile(contentOf(corpus + "/gerber/" + pair.layer), {}, sink, notes);
        ASSERT_TRUE(layer.bound.isValid());
        const ReadDrills read = readDrills(contentOf(corpus + "/gerber/" + pair.drills), layer.bound);
        EXPECT_TRUE(layer.bound.contains(read.data.bound, 1.0));
        EXPECT_GT(read.data.bound.getXSize(), 0.2 * layer.bound.getXSize());
    }
}

TEST_F(DrillCorpus, AFileInTheFormOfALayerHasTheSameHoles) {
    Notes notes;
    LayerFacts facts;
    const DrillData data =
        readDrillsOfLayerFile(contentOf(corpus + "/gerber/g10/design_export.xln"), {}, notes, facts);
    const ReadDrills other = readDrills(contentOf(corpus + "/gerber/g10/design_export.drl"));
    EXPECT_EQ(data.holes.size(), other.data.holes.size());
    EXPECT_EQ(data.tools.size(), other.data.tools.size());
    EXPECT_NEAR(data.bound.getXHigh(), other.data.bound.getXHigh(), 1e-3);
}

TEST_F(DrillCorpus, AReportBesideTheFileHasItsTools) {
    const auto tools = readToolTable(contentOf(corpus + "/gerber/g19/SE_SG_IF_V2.DRR"));
    ASSERT_EQ(tools.size(), 10u);
    EXPECT_NEAR(tools.at(1).diameter, 0.3048, 1e-9);
    EXPECT_NEAR(tools.at(9).diameter, 2.9972, 1e-9);
}
