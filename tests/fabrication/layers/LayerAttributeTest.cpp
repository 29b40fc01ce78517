// Attributes of layer files.
#include "LayerScript.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

// The functions of the shapes that are flashed.
class Functions : public LayerSink {
public:
    Lines functions;
    void flash(Shape const &shape, Point const &, bool) override { functions.push_back(shape.function); }
    void stroke(Shape const &, Point const &, Segment const &, bool) override {}
    void region(Path const &, bool) override {}
};

Lines functionsOf(std::string const &body) {
    Functions sink;
    Notes notes;
    readLayerFile("%FSLAX23Y23*%%MOMM*%" + body + "M02*", {}, sink, notes);
    return sink.functions;
}

TEST(LayerAttributes, ThoseOfTheFileAreKept) {
    const LayerFacts facts = readBody("%TF.FileFunction,Copper,L1,Top*%%TF.Part,Single*%%TFMine*%").facts;
    EXPECT_EQ(facts.attribute(".FileFunction"), (Lines{"Copper", "L1", "Top"}));
    EXPECT_EQ(facts.attribute(".Part"), Lines{"Single"});
    EXPECT_EQ(facts.attributes.count("Mine"), 1u);
    EXPECT_TRUE(facts.attribute(".None").empty());
}

TEST(LayerAttributes, CommentsMayHoldThem) {
    const Reading read = readBody("G04 #@! TF.FileFunction,Copper,L2,Inr*\nG04 #@! TO.N,GND*\nX0Y0D03*");
    EXPECT_EQ(read.facts.attribute(".FileFunction"), (Lines{"Copper", "L2", "Inr"}));
    EXPECT_EQ(read.lines(), (Lines{"net GND ", "flash C0.1 at 0,0"}));
    EXPECT_TRUE(read.facts.comments.empty());
}

TEST(LayerAttributes, EscapesAreResolved) {
    const LayerFacts facts = readBody("%TFA,a\\u002Cb,\\u00e4,\\U0001F600,\\u12,\\x*%%TFB,x\\uD800y*%").facts;
    EXPECT_EQ(facts.attribute("A"), (Lines{"a,b", "\xC3\xA4", "\xF0\x9F\x98\x80", "\\u12", "\\x"}));
    EXPECT_EQ(facts.attribute("B"), Lines{"x\xEF\xBF\xBDy"});
}

TEST(LayerAttributes, BytesThatAreNoTextBecomeText) {
    EXPECT_EQ(readBody("%TFA,\xE4*%").facts.attribute("A"), Lines{"\xC3\xA4"});
}

TEST(LayerAttributes, AnApertureHasTheFunctionOfItsDefinition) {
    EXPECT_EQ(functionsOf("%TA.AperFunction,SMDPad,CuDef*%%ADD10C,0.1*%%TA.AperFunction,ViaPad*%"
                          "%ADD11C,0.1*%%TD*%%ADD12C,0.1*%D10*X0Y0D03*D11*D03*D12*D03*"),
              (Lines{"SMDPad", "ViaPad", ""}));
}

TEST(LayerAttributes, OneOfThemMayBeDeleted) {
    EXPECT_EQ(functionsOf("%TA.AperFunction,ViaPad*%%TD.Other*%%ADD10C,0.1*%%TD.AperFunction*%"
                          "%ADD11C,0.1*%D10*X0Y0D03*D11*D03*"),
              (Lines{"ViaPad", ""}));
}

TEST(LayerAttributes, NetsAreToldWhereTheyChange) {
    EXPECT_EQ(readBody("X0Y0D03*%TO.N,GND*%X0D03*%TO.N,GND*%X0D03*%TO.N,VCC*%X1000D01*%TD.N*%X0D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "net GND ", "flash C0.1 at 0,0", "flash C0.1 at 0,0", "net VCC ",
                     "line C0.1 0,0 1,0", "net  ", "flash C0.1 at 0,0"}));
}

TEST(LayerAttributes, PinsAreTold) {
    EXPECT_EQ(readBody("%TO.P,U1,3,RESET*%%TO.N,GND*%X0Y0D03*%TD*%D03*").lines(),
              (Lines{"net GND U1,3", "flash C0.1 at 0,0", "net  ", "flash C0.1 at 0,0"}));
}

TEST(LayerAttributes, NoNetAndNotConnectedAreNone) {
    EXPECT_EQ(readBody("%TO.N,*%X0Y0D03*%TO.N,N/C*%D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "flash C0.1 at 0,0"}));
}

TEST(LayerAttributes, RegionsHaveNets) {
    EXPECT_EQ(readBody("%TO.N,GND*%G36*X0Y0D02*X1000D01*Y1000D01*X0Y0D01*G37*").lines(),
              (Lines{"net GND ", "region 0,0 1,0 1,1 0,0"}));
}

TEST(LayerAttributes, ObjectsInRepeatsKeepTheirNets) {
    EXPECT_EQ(readBody("%SRX2I5*%%TO.N,A*%X0Y0D03*%TO.N,B*%D03*%SR*%%TD*%X0D03*").lines(),
              (Lines{"net A ", "flash C0.1 at 0,0", "net B ", "flash C0.1 at 0,0", "net A ",
                     "flash C0.1 at 5,0", "net B ", "flash C0.1 at 5,0", "net  ", "flash C0.1 at 0,0"}));
}

TEST(LayerAttributes, ObjectsInRepeatsDoNotTakeTheNetOfLaterOnes) {
    EXPECT_EQ(readBody("%SRX2Y1I5J0*%X0Y0D03*%TO.N,GND*%X0Y30000D03*%SR*%X1000Y0D03*").lines(),
              (Lines{"flash C0.1 at 0,0", "net GND ", "flash C0.1 at 0,30", "net  ", "flash C0.1 at 5,0",
                     "net GND ", "flash C0.1 at 5,30", "flash C0.1 at 1,0"}));
}

TEST(LayerAttributes, RepeatsInBlocksTakeTheNetOfTheFlash) {
    EXPECT_EQ(
        readBody("%ABD12*%%SRX2I5*%X0Y0D03*%TO.N,A*%X1000D03*%SR*%%TD*%%AB*%D12*%TO.N,B*%X0Y0D03*").lines(),
        (Lines{"net B ", "flash C0.1 at 0,0", "net A ", "flash C0.1 at 1,0", "net B ", "flash C0.1 at 5,0",
               "net A ", "flash C0.1 at 6,0"}));
}

TEST(LayerAttributes, AFlashedBlockGivesItsNetToWhatHasNone) {
    EXPECT_EQ(readBody("%ABD12*%X0Y0D03*%TO.N,A*%D03*%TD*%%AB*%D12*%TO.N,B*%X0Y0D03*").lines(),
              (Lines{"net B ", "flash C0.1 at 0,0", "net A ", "flash C0.1 at 0,0"}));
}

} // namespace
