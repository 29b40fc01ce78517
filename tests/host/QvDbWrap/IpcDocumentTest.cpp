// The frame of an IPC-2581 document: root, contents, units, profile and the choice of a step.
#include "IpcDocumentSupport.h"

#include "support/TempFolder.h"

#include <stdexcept>

namespace {

using namespace IpcSupport;
using testing::ElementsAre;
using testing::HasSubstr;

std::string failureOf(const std::string &text, const IpcSettings &settings = {}) {
    try {
        read(text, settings);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "none";
}

double widthOf(const Layout &layout) { return layout.outlines.at(0).elements.at(0).points.at(1).x; }

const std::string otherStep =
    R"(<Step name="other"><Profile><Polygon><PolyBegin x="0" y="0"/><PolyStepSegment x="7" y="0"/>
       <PolyStepSegment x="7" y="7"/></Polygon></Profile></Step>)";

TEST(IpcDocument, ALawfulBoardIsReadWithoutAWarning) {
    const Read read = IpcSupport::read(Text());
    EXPECT_EQ(read.log.text(), "");
    ASSERT_EQ(read.layout.outlines.size(), 1u);
    EXPECT_EQ(read.layout.outlines[0].shape, nullptr);
    ASSERT_EQ(read.layout.outlines[0].elements.size(), 1u);
    expectRing(read.layout.outlines[0].elements[0].points, {{0, 0}, {100, 0}, {100, 50}, {0, 50}});
}

TEST(IpcDocument, CutOutsFollowTheEdgeAndAllAreSolid) {
    Text text;
    text.profile = R"(<Profile><Cutout><PolyBegin x="1" y="1"/><PolyStepSegment x="2" y="1"/>
        <PolyStepSegment x="2" y="2"/></Cutout><Polygon><PolyBegin x="0" y="0"/><PolyStepSegment x="9" y="0"/>
        <PolyStepSegment x="9" y="9"/></Polygon></Profile>)";
    const Read read = IpcSupport::read(text);
    const auto &rings = read.layout.outlines.at(0).elements;
    ASSERT_EQ(rings.size(), 2u);
    expectRing(rings[0].points, {{0, 0}, {9, 0}, {9, 9}});
    expectRing(rings[1].points, {{1, 1}, {2, 1}, {2, 2}});
    for (const geomElem &ring : rings) {
        EXPECT_EQ(ring.role, geomElem::Solid);
        EXPECT_EQ(ring.kind, geomElem::Polygon);
    }
}

TEST(IpcDocument, LengthsAreInTheUnitsOfTheHeader) {
    for (const auto &[units, metres] : {std::pair{"MILLIMETER", 0.1}, {"INCH", 2.54}, {"MICRON", 1e-4}}) {
        Text text;
        text.units = units;
        EXPECT_NEAR(widthOf(IpcSupport::read(text).layout), metres, 1e-12) << units;
    }
}

TEST(IpcDocument, PrefixesOfNamesDoNotCount) {
    const std::string text =
        R"(<q:IPC-2581 revision="B" xmlns:q="urn:x"><q:Ecad><q:CadHeader units="MILLIMETER"/><q:CadData>
        <q:Step name="s"><q:Profile><q:Polygon><q:PolyBegin x="0" y="0"/><q:PolyStepSegment x="5" y="0"/>
        <q:PolyStepSegment x="5" y="5"/></q:Polygon></q:Profile></q:Step></q:CadData></q:Ecad></q:IPC-2581>)";
    EXPECT_NEAR(widthOf(read(text).layout), 5e-3, 1e-12);
}

TEST(IpcDocument, WithoutAChoiceTheFirstStepOfTheContentsIsRead) {
    Text text;
    text.content = R"(<StepRef name="other"/><StepRef name="board"/>)";
    text.otherSteps = otherStep;
    EXPECT_NEAR(widthOf(read(text).layout), 7e-3, 1e-12);
}

TEST(IpcDocument, TheChosenStepGoesBeforeThatOfTheContents) {
    Text text;
    text.content = R"(<StepRef name="other"/>)";
    text.otherSteps = otherStep;
    IpcSettings settings;
    settings.step = "board";
    EXPECT_NEAR(widthOf(read(text, settings).layout), 0.1, 1e-12);
}

TEST(IpcDocument, WithoutContentsTheFirstBoardIsRead) {
    Text text;
    text.otherSteps = otherStep;
    std::string typed = text.text();
    typed.replace(typed.find("<Step name=\"board\""), 18, "<Step type=\"PALLET\" name=\"board\"");
    EXPECT_NEAR(widthOf(read(typed).layout), 7e-3, 1e-12);
}

TEST(IpcDocument, AMissingStepOfTheContentsIsTold) {
    Text text;
    text.content = R"(<StepRef name="gone"/>)";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.log.text(), "Warning: step gone of the contents is missing\n");
    EXPECT_NEAR(widthOf(read.layout), 0.1, 1e-12);
}

TEST(IpcDocument, FailuresSayWhatIsWrong) {
    EXPECT_THAT(failureOf("<Other/>"), HasSubstr("the root element is Other, not IPC-2581"));
    EXPECT_EQ(failureOf("<IPC-2581 revision=\"C\"/>"), "the document has no step");
    IpcSettings settings;
    settings.step = "gone";
    EXPECT_EQ(failureOf(Text().text(), settings), "the document has no step gone");
    EXPECT_THAT(failureOf("no document"), HasSubstr("line 1"));
    EXPECT_THAT(failureOf(Text().text().substr(0, Text().text().size() - 5)), HasSubstr("line"));
}

TEST(IpcDocument, AStepWithoutAProfileIsToldAndRead) {
    Text text;
    text.profile = "";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.log.text(), "Warning: the step has no profile: the board has no edge\n");
    EXPECT_TRUE(read.layout.outlines.empty());
    EXPECT_EQ(read.layout.layers.size(), 3u);
}

TEST(IpcDocument, WhatIsPassedOverIsToldOnceWithACount) {
    const Read read = readStep("<BendArea/><BendArea/><StackupZone name=\"z\"/><Datum x=\"0\" y=\"0\"/>");
    EXPECT_EQ(read.log.text(), "Warning: element BendArea is not read (2 times)\n"
                               "Warning: element StackupZone is not read\n");
}

TEST(IpcDocument, AnUnknownRevisionIsTold) {
    Text text;
    text.revision = "Q";
    EXPECT_EQ(read(text).log.text(), "Warning: revision \"Q\" is not known: it is read as revision C\n");
}

TEST(IpcDocument, OfTwoStepsWithOneNameTheFirstIsRead) {
    Text text;
    text.otherSteps = "<Step name=\"board\"/>";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.log.text(), "Warning: step board is there more than once\n");
    EXPECT_EQ(read.layout.outlines.size(), 1u);
}

TEST(IpcDocument, AFileIsKnownByItsRoot) {
    const TestSupport::TempFolder folder;
    EXPECT_TRUE(isIpcDocument(folder.write("a.xml", Text().text())));
    EXPECT_FALSE(isIpcDocument(folder.write("b.xml", "<foundation/>")));
    EXPECT_FALSE(isIpcDocument(folder.write("c.xml", "IPC-2581")));
    EXPECT_FALSE(isIpcDocument(folder.write("d.xml", "")));
    EXPECT_FALSE(isIpcDocument(folder.path("missing.xml")));
}

TEST(IpcDocument, TheStepsOfAFileAreListedInOrder) {
    const TestSupport::TempFolder folder;
    Text text;
    text.otherSteps = otherStep + "<Step name=\"a\"/>";
    EXPECT_THAT(stepsOfIpcDocument(folder.write("a.xml", text.text())), ElementsAre("board", "other", "a"));
    EXPECT_TRUE(stepsOfIpcDocument(folder.write("b.xml", "<foundation/>")).empty());
    EXPECT_THROW(stepsOfIpcDocument(folder.write("c.xml", text.text().substr(0, 300))), std::runtime_error);
}

} // namespace
