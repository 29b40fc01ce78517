// Real sets, where they are at hand.
#include "fabrication/sets/FabricationReader.h"
#include "SetBench.h"

#include <gmock/gmock.h>

#include <ostream>

namespace {

using namespace EDA;
using namespace EDA::Fabrication;
using testing::ElementsAreArray;

struct Truth {
    const char *folder;
    std::vector<std::string> copper;
    std::vector<std::string> drills;
    std::string profile;
    std::size_t numHoles = 0; // slots among them
    std::string plating = {}; // a letter for each drill file: + plated, - not, ? not told
};

std::ostream &operator<<(std::ostream &stream, const Truth &truth) { return stream << truth.folder; }

const std::vector<Truth> truths = {
    {"g01",
     {"mainboard_Top.gbr", "mainboard_Bottom.gbr"},
     {"mainboard.drl"},
     "mainboard_BoardOutline.gbr",
     168},
    {"g02",
     {"Gerber_TopLayer.GTL", "Gerber_BottomLayer.GBL"},
     {"Gerber_Drill_NPTH.DRL", "Gerber_Drill_PTH.DRL"},
     "Gerber_BoardOutline.GKO",
     98,
     "-+"},
    {"g03", {"copper_top.gbr", "copper_bottom.gbr"}, {"drills.xln"}, "profile.gbr", 39},
    {"g04",
     {"copper_top_l1.gbr", "copper_inner_l2.gbr", "copper_inner_l3.gbr", "copper_bottom_l4.gbr"},
     {},
     "profile.gbr",
     0},
    {"g05",
     {"controller.top.gbr", "controller.group3.gbr", "controller.bottom.gbr"},
     {"controller.plated-drill.cnc", "controller.unplated-drill.cnc"},
     "",
     277,
     "+-"},
    {"g06", {"power-art.gtl", "power-art.gbl"}, {"power-art.xln"}, "power-art.gko", 88},
    {"g07",
     {"TOP.art", "PWR.art", "LAYER_1.art", "GND2.art", "LAYER_2.art", "BOTTOM.art"},
     {"arena_12-12_v6_L1-L6.drl"},
     "",
     859},
    {"g08", {"ZXINET.GTL", "ZXINET.GBL"}, {"ZXINET.DRL"}, "ZXINET.GKO", 353},
    {"g09",
     {"EtchLayerTop.gdo", "EtchLayerBottom.gdo"},
     {"ContourPlated.ncd", "ThruHoleNonPlated.ncd", "ThruHolePlated.ncd"},
     "BoardOutlline.gdo",
     312,
     "+-+"},
    {"g10", {"design_export.gtl", "design_export.gbl"}, {"design_export.drl"}, "design_export.gko", 63},
    {"g11", {"copper_top.gbr", "copper_bottom.gbr"}, {}, "profile.gbr", 0},
    {"g12", {"combined.gtl", "combined.gbl"}, {"combined.txt"}, "combined.GKO", 482},
    {"g13",
     {"StickHub-F_Cu.gbr", "StickHub-B_Cu.gbr"},
     {"StickHub-NPTH.drl", "StickHub-PTH.drl"},
     "StickHub-Edge_Cuts.gbr",
     88,
     "-+"},
    {"g14",
     {"kit-dev-coldfire-xilinx_5213-F_Cu.gtl", "kit-dev-coldfire-xilinx_5213-In1_Cu.g2",
      "kit-dev-coldfire-xilinx_5213-In2_Cu.g3", "kit-dev-coldfire-xilinx_5213-B_Cu.gbl"},
     {"kit-dev-coldfire-xilinx_5213.drl"},
     "kit-dev-coldfire-xilinx_5213-Edge_Cuts.gm1",
     526},
    {"g15",
     {"custom_pads_test-F_Cu.gbr", "custom_pads_test-B_Cu.gbr"},
     {"custom_pads_test.drl"},
     "custom_pads_test-Edge_Cuts.gbr",
     4},
    {"g16",
     {"KVision_PCB_V1I1.GTL", "KVision_PCB_V1I1.G1", "KVision_PCB_V1I1.G2", "KVision_PCB_V1I1.GBL"},
     {"KVision_PCB_V1I1.TXT"},
     "Board Outline.GBR",
     500},
    {"g17",
     {"TOP.art", "L2_GND.art", "L3_PLANE.art", "BOTTOM.art"},
     {"OC_CONNECT-1_BREAKOUT_LIFE-3-1-4.drl"},
     "",
     288},
    {"g19", {"SE_SG_IF_V2.GTL", "SE_SG_IF_V2.GBL"}, {"SE_SG_IF_V2.TXT"}, "SE_SG_IF_V2.GM1", 427},
};

class CorpusSet : public testing::TestWithParam<Truth> {
protected:
    void SetUp() override {
        folder_ = std::string(EDA_CORPUS) + "/gerber/" + GetParam().folder;
        if (!std::filesystem::exists(folder_)) GTEST_SKIP() << "the corpus is not here";
        ASSERT_TRUE(reader.setFiles({folder_})) << reader.getError();
    }
    static std::string nameOf(const SetFile &file) { return FileSystem::Path::getLastToken(file.shown); }

    std::string folder_;
    FabricationReader reader;
};

TEST_P(CorpusSet, HasItsCopperInOrder) {
    std::vector<std::string> names;
    for (const SetFile &file : reader.getSet().copper)
        names.push_back(nameOf(file));
    EXPECT_THAT(names, ElementsAreArray(GetParam().copper));
}

TEST_P(CorpusSet, HasItsDrills) {
    std::vector<std::string> names;
    std::string plating;
    for (const SetDrill &drill : reader.getSet().drills) {
        names.push_back(nameOf(drill.file));
        plating += drill.plated ? (*drill.plated ? '+' : '-') : '?';
        EXPECT_EQ(drill.from, 0u);
        EXPECT_EQ(drill.to, GetParam().copper.size() - 1);
    }
    EXPECT_THAT(names, ElementsAreArray(GetParam().drills));
    if (!GetParam().plating.empty()) {
        EXPECT_EQ(plating, GetParam().plating);
    }
}

TEST_P(CorpusSet, HasItsEdge) {
    const auto &profiles = reader.getSet().profiles;
    EXPECT_EQ(profiles.empty() ? "" : nameOf(profiles.front()), GetParam().profile);
}

TEST_P(CorpusSet, IsRead) {
    ASSERT_TRUE(reader.readFiles(nullptr)) << reader.getError();
    EXPECT_EQ(reader.getBoard().numLayers(), GetParam().copper.size());
    EXPECT_EQ(reader.getBoard().getOutline().empty(), GetParam().profile.empty());
    EXPECT_EQ(reader.getBoard().numVias(1), GetParam().numHoles);
}

INSTANTIATE_TEST_SUITE_P(Sets, CorpusSet, testing::ValuesIn(truths),
                         [](const auto &truth) { return std::string(truth.param.folder); });

TEST(CorpusBag, UnrelatedFilesAreNoHarm) {
    const std::string folder = std::string(EDA_CORPUS) + "/gerber/g18";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << "the corpus is not here";
    FabricationReader reader;
    ASSERT_TRUE(reader.setFiles({folder})) << reader.getError();
    reader.readFiles(nullptr);
    EXPECT_GE(reader.getBoard().numLayers(), 1u);
}

} // namespace
