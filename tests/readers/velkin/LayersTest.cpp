// The board's header, its layers, traces and nets.
#include "VelkinBench.h"

using namespace VelkinTest;
using testing::ElementsAre;

namespace {

class VelkinLayers : public VelkinBench {
protected:
    const EDA::EDABoardLayer &layer(int index = 0) { return board().getNthLayer(index); }
    const EDA::EDATrace &trace(int index = 0) { return layer().beginTraces()[index]; }
};

std::vector<std::string> namesOf(const EDA::EDANet &net) {
    std::vector<std::string> names;
    for (auto trace = net.beginTraces(); trace != net.endTraces(); ++trace)
        names.push_back(trace->getName());
    return names;
}

} // namespace

TEST_F(VelkinLayers, TheBoardIsNamedAfterItsFileAndInMetres) {
    EXPECT_TRUE(readDesign("my.board.brd"));
    EXPECT_EQ(board().getName(), "my.board");
    EXPECT_EQ(board().getUnits(), "m");
    EXPECT_FALSE(board().isBaselineImport());
    std::string source, library;
    board().getSourceFilename(source, library);
    EXPECT_EQ(source, design("my.board.brd"));
    EXPECT_EQ(library, "");
}

TEST_F(VelkinLayers, TheBoardIsAsThickAsAllItsLayers) {
    EXPECT_TRUE(convert(R"(layer A type=0 z=3,4
        layer B type=1 z=2,3
        layer C type=5 z=0.5,2
        layer D type=-1 z=0.25,0.5)"));
    EXPECT_EQ(board().getThickness(), 3.75);
    EXPECT_EQ(board().numLayers(), 2u);
}

TEST_F(VelkinLayers, AConductorHasAllThatItsRecordTells) {
    EXPECT_TRUE(convert("layer TOP type=0 z=3,4 cu=copper di=resin\nlayer D type=1 z=1,3 di=glass"));
    EXPECT_TRUE(layer(0).isConductor());
    EXPECT_EQ(layer(0).getName(), "TOP");
    EXPECT_EQ(layer(0).getThickness(), 1.0);
    EXPECT_EQ(layer(0).getTopOffset(), 0.0);
    EXPECT_EQ(layer(0).getConductorMaterial(), "copper");
    EXPECT_EQ(layer(0).getDielectricMaterial(), "resin");
    EXPECT_FALSE(layer(1).isConductor());
    EXPECT_EQ(layer(1).getName(), "D");
    EXPECT_EQ(layer(1).getThickness(), 2.0);
    EXPECT_EQ(layer(1).getTopOffset(), 2.0);
    EXPECT_EQ(layer(1).getConductorMaterial(), "");
    EXPECT_EQ(layer(1).getDielectricMaterial(), "glass");
}

TEST_F(VelkinLayers, ADielectricHasNoTraces) {
    EXPECT_TRUE(convert("edge 0,0 1,0 1,1\nlayer D type=1 z=0,1 cu=copper\nsolid A 0,0 1,0 1,1"));
    EXPECT_EQ(layer().numTraces(), 0u);
    EXPECT_EQ(layer().getConductorMaterial(), "");
    EXPECT_EQ(board().getConductorMaterial(), "");
}

TEST_F(VelkinLayers, TheFirstMaterialsAreTheBoards) {
    EXPECT_TRUE(convert(R"(layer A type=0 z=5,6 di=mask
        layer B type=1 z=4,5
        layer C type=0 z=3,4 cu=copper
        layer D type=1 z=2,3 di=glass
        layer E type=0 z=1,2 cu=silver
        layer F type=1 z=0,1 di=paper)"));
    EXPECT_EQ(board().getConductorMaterial(), "copper");
    EXPECT_EQ(board().getDielectricMaterial(), "glass");
}

TEST_F(VelkinLayers, MaterialsOfAnEarlierReadStay) {
    makeReader();
    board().setConductorMaterial("gold");
    board().setDielectricMaterial("air");
    script().layout = layoutOf("layer A type=0 z=1,2 cu=copper\nlayer B type=1 z=0,1 di=glass");
    EXPECT_TRUE(reader->readFile(design("board.brd")));
    EXPECT_EQ(board().getConductorMaterial(), "gold");
    EXPECT_EQ(board().getDielectricMaterial(), "air");
}

TEST_F(VelkinLayers, AConductorAloneIsData) {
    EXPECT_TRUE(convert("layer A type=0"));
    EXPECT_FALSE(convert("layer A type=1"));
    EXPECT_EQ(error(), "No data read from the file.");
    EXPECT_FALSE(convert("layer A type=2\nvia v\ncomponent U\nwire W"));
}

TEST_F(VelkinLayers, ElementsWithoutANetAreLooseTraces) {
    EXPECT_TRUE(convert("layer A type=0 cu=copper\nsolid one 0,0 1,0 1,1\nsolid two kind=0 0,0 2,3"));
    ASSERT_EQ(layer().numTraces(), 2u);
    EXPECT_EQ(layer().numNets(), 0u);
    EXPECT_EQ(trace(0).getName(), "one");
    EXPECT_EQ(trace(0).getOutline().numPoints(), 3u);
    EXPECT_EQ(trace(0).getOutline().getMaterial(), "copper");
    EXPECT_FALSE(trace(0).getOutline().isHole());
    EXPECT_FALSE(trace(0).isDefinedAsRoute());
    EXPECT_EQ(trace(1).getOutline().getArea(), 6.0);
}

TEST_F(VelkinLayers, ElementsAreGatheredInNets) {
    EXPECT_TRUE(convert(R"(layer A type=0 cu=copper
        solid 1 net=VCC 0,0 1,0 1,1
        solid 2 net=GND 0,0 1,0 1,1
        solid 3 net=VCC 0,0 1,0 1,1
        solid 4 net=vcc 0,0 1,0 1,1)"));
    ASSERT_EQ(layer().numNets(), 3u);
    EXPECT_EQ(layer().numTraces(), 0u);
    EXPECT_EQ(layer().getNthNet(0).getName(), "GND");
    EXPECT_THAT(namesOf(layer().getNthNet(0)), ElementsAre("2"));
    EXPECT_THAT(namesOf(layer().getNthNet(1)), ElementsAre("1", "3"));
    EXPECT_THAT(namesOf(layer().getNthNet(2)), ElementsAre("4"));
    EXPECT_EQ(layer().getNthNet(0).beginTraces()->getOutline().getMaterial(), "copper");
}

TEST_F(VelkinLayers, HolesBelongToTheConductorBeforeThem) {
    EXPECT_TRUE(convert(R"(layer A type=0
        solid 1 0,0 9,0 9,9 0,9
        hole first 1,1 2,1 2,2
        hole second kind=0 3,3 4,4
        solid 2 net=GND 10,0 19,0 19,9 10,9
        hole third 11,1 12,1 12,2)"));
    const EDA::EDAOutline &loose = trace().getOutline();
    ASSERT_EQ(loose.numInternalOutlines(), 2);
    EXPECT_EQ(loose.beginInternalOutlines()[0].getName(), "first");
    EXPECT_TRUE(loose.beginInternalOutlines()[0].isHole());
    EXPECT_EQ(loose.beginInternalOutlines()[1].getName(), "second");
    const EDA::EDAOutline &inNet = layer().getNthNet(0).beginTraces()->getOutline();
    ASSERT_EQ(inNet.numInternalOutlines(), 1);
    EXPECT_EQ(inNet.beginInternalOutlines()->getName(), "third");
}

TEST_F(VelkinLayers, HolesFindTheirConductorWhileNetsAreSorted) {
    std::string text = "layer A type=0\n";
    for (int i = 999; i >= 0; --i) {
        const std::string name = "n" + std::to_string(i);
        text += "solid " + name + " net=" + name + " 0,0 9,0 9,9\nhole " + name + " 2,1 3,1 3,2\n";
    }
    EXPECT_TRUE(convert(text.c_str()));
    ASSERT_EQ(layer().numNets(), 1000u);
    for (auto net = layer().beginNets(); net != layer().endNets(); ++net) {
        ASSERT_EQ(net->numTraces(), 1u);
        const EDA::EDAOutline &outline = net->beginTraces()->getOutline();
        ASSERT_EQ(outline.numInternalOutlines(), 1);
        EXPECT_EQ(outline.beginInternalOutlines()->getName(), net->getName());
    }
}

TEST_F(VelkinLayers, HolesAheadOfAnyConductorAreLost) {
    EXPECT_TRUE(convert("layer A type=0\nsolid 1 0,0 9,0 9,9\nlayer B type=0\nhole lost 1,1 2,1 2,2\n"
                        "solid 2 0,0 9,0 9,9"));
    EXPECT_EQ(trace().getOutline().numInternalOutlines(), 0);
    EXPECT_EQ(layer(1).beginTraces()->getOutline().numInternalOutlines(), 0);
}

TEST_F(VelkinLayers, AnElementOfAnotherRoleIsAnInternalOutlineThatIsNoHole) {
    EXPECT_TRUE(convert("layer A type=0\nsolid 1 0,0 9,0 9,9\nhole island role=2 2,1 3,1 3,2"));
    ASSERT_EQ(trace().getOutline().numInternalOutlines(), 1);
    EXPECT_FALSE(trace().getOutline().beginInternalOutlines()->isHole());
}

TEST_F(VelkinLayers, LayersOfOneNameAreKept) {
    EXPECT_TRUE(convert("layer A type=0 z=1,2\nlayer A type=0 z=0,1"));
    EXPECT_EQ(board().numLayers(), 2u);
}

TEST_F(VelkinLayers, AreAddedToThoseOfAnEarlierRead) {
    EXPECT_TRUE(convert("layer A type=0 z=0,1"));
    EXPECT_TRUE(reader->readFile(design("other.brd")));
    EXPECT_EQ(board().numLayers(), 2u);
    EXPECT_EQ(board().getThickness(), 1.0);
    EXPECT_EQ(board().getName(), "other");
}
