// The documents that the IDX writer makes, element by element.
#include "IDXWriterSupport.h"

#include <cmath>
#include <limits>
#include <map>

namespace {

using namespace EDA;
using namespace IDXTest;
using test::outline;
using testing::HasSubstr;

TEST_F(IDXWriterTest, AWholeDocumentIsAsExpected) {
    board.setName("demo");
    board.setUnits("mm");
    board.setThickness(1.6);
    board.getOutline() = outline("0,0 40,0 0,30");
    EDAOutline hole(true);
    hole.resetOutline(round(5, 5, 3), false);
    board.getOutline().addInternalOutline(hole);
    addComponent("CAP", "C-1", round(0, 0, 4), 2);
    place("CAP", "C-1", 20, 8, 30, "BOTTOM");
    const std::string B = "BOARD_OUTLINE", H = "BOARD_OUTLINE_HOLE_1", Q = "PART_1_OUTLINE";
    const auto ref = [](const std::string &tag, const std::string &id) {
        return "<" + tag + ">" + id + "</" + tag + ">";
    };
    const std::string expected =
        "<foundation:Body><foundation:System id=\"THERMAL_SYSTEM\"><foundation:GlobalName>Velkin "
        "Solver</foundation:GlobalName></foundation:System><foundation:UnitLength "
        "id=\"LENGTH_UNIT_ITEM\"><property:Fundamental>mm</property:Fundamental></foundation:UnitLength>"
        "<foundation:ExternalSource id=\"DESIGN_SUMMARY_EXTERNAL_SOURCE\">" +
        ref("foundation:Name", "IDX_DESIGN_SUMMARY") + U("IDX_DESIGN_FILE", "demo") +
        U("IDX_DESIGN_REV", "1") + "</foundation:ExternalSource>" + P(B + "_POINT_1", "0", "0") +
        P(B + "_POINT_2", "40", "0") + P(B + "_POINT_3", "0", "30") + "<foundation:PolyLine id=\"" + B +
        "_POLYLINE\">" + ref("d2:Point", B + "_POINT_1") + ref("d2:Point", B + "_POINT_2") +
        ref("d2:Point", B + "_POINT_3") + "</foundation:PolyLine>" +
        C(B, B + "_POLYLINE", "1.6", "FeatureShapeElement", "false") + "<foundation:Stratum id=\"" + B +
        "_STRATUM\">" + ref("pdm:ShapeElement", B + "_SHAPE_ELEMENT") +
        ref("pdm:ShapeElement", H + "_SHAPE_ELEMENT") + ref("pdm:StratumType", "DesignLayerStratum") +
        ref("pdm:StratumSurfaceDesignation", "PrimarySurface") + "</foundation:Stratum>" +
        P(H + "_CENTER", "5", "5") + O(H, "3") + C(H, H + "_CIRCLE", "1.6", "FeatureShapeElement", "true") +
        item(B, B + "_STRATUM") + A(B, "BoardOutline", B + "_ITEM") + U("THICKNESS", "1.6") +
        U("TYPE", "BOARDOUTLINE") + Z + P(Q + "_CENTER", "0", "0") + O(Q, "4") +
        C(Q, Q + "_CIRCLE", "2", "PartFeature", "false") +
        "<foundation:AssemblyComponent id=\"PART_1_COMPONENT\">" +
        ref("pdm:ShapeElement", Q + "_SHAPE_ELEMENT") + ref("pdm:AssemblyComponentType", "Physical") +
        "</foundation:AssemblyComponent>" +
        item("PART_1", "PART_1_COMPONENT",
             U("HEIGHT", "2") + U("PARTNUM", "C-1") + "<pdm:PackageName>" + S +
                 ref("foundation:ObjectName", "CAP") + "</pdm:PackageName>") +
        A("PLACEMENT_1", "C1", "PART_1_ITEM") + "<pdm:Transformation>" + ref("pdm:TransformationType", "d2") +
        X("-0.866025", "0.5", "0.5", "0.866025", "20", "8") + "</pdm:Transformation>" + Z;
    EXPECT_EQ(body(), expected);
}

TEST_F(IDXWriterTest, TheFrameIsAsExpected) {
    const std::string text = written();
    const std::string host = "http://www.prostep.org";
    EXPECT_THAT(text,
                testing::StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<foundation:EDMDDataSet "
                                    "xmlns:external=\"" +
                                    host + "/ecad-mcad/edmd/2.0/external\" "));
    for (const char *space : {"external", "material", "annotation", "pdm", "grouping", "computational",
                              "property", "administration", "foundation"})
        EXPECT_THAT(text, HasSubstr(" xmlns:" + std::string(space) + "=\"" + host + "/ecad-mcad/edmd/2.0/" +
                                    space + "\""));
    EXPECT_THAT(text, HasSubstr(" xmlns:d2=\"" + host + "/ecad-mcad/edmd/2.0/geometry.d2\""));
    EXPECT_THAT(text, HasSubstr(" xmlns:idx=\"" + host + "/edmd/1.0/idx\""));
    EXPECT_THAT(text, HasSubstr(" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""));
    EXPECT_THAT(text, HasSubstr(" xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\""));
    const std::string flat = EDA::test::replaced(text, ">\\s+<", "><");
    EXPECT_THAT(
        flat,
        HasSubstr("><foundation:ProcessInstruction "
                  "xsi:type=\"computational:EDMDProcessInstructionSendInformation\"/><foundation:Header>" +
                  U("IDX_VERSION", "2.0") + U("IDX_FILE_TYPE", "BASELINE") +
                  "<foundation:CreatorSystem>Velkin Solver 2025.1-HF1</foundation:CreatorSystem>"
                  "<foundation:GlobalUnitLength>LENGTH_UNIT_ITEM</foundation:GlobalUnitLength>"
                  "</foundation:Header><foundation:Body>"));
}

TEST_F(IDXWriterTest, ElementsAreIndentedByTwo) {
    EXPECT_THAT(written(), HasSubstr("\n  <foundation:Header>\n    <foundation:UserProperty "));
}

// Files.

TEST_F(IDXWriterTest, AnEmptyNameIsFalse) {
    EXPECT_FALSE(IDXWriter().writeFile("", board));
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST_F(IDXWriterTest, AFileThatCannotBeWrittenIsFalse) {
    EXPECT_FALSE(IDXWriter().writeFile(folder.path("no/such/out.idx"), board));
    EXPECT_FALSE(IDXWriter().writeFile(folder.path(), board));
    EXPECT_EQ(folder.numEntries(), 0u);
}

TEST_F(IDXWriterTest, AFileIsReplacedWhole) {
    folder.write("out.idx", std::string(100'000, 'x'));
    EXPECT_THAT(written(), testing::EndsWith("</foundation:EDMDDataSet>\n"));
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST_F(IDXWriterTest, OneWriterWritesAnyNumberOfFiles) {
    IDXWriter writer;
    board.getOutline() = outline("0,0 4,0 4,2");
    ASSERT_TRUE(writer.writeFile(folder.path("a.idx"), board));
    ASSERT_TRUE(writer.writeFile(folder.path("b.idx"), board));
    IDXWriter copy(writer);
    ASSERT_TRUE(copy.writeFile(folder.path("c.idx"), board));
    copy = writer;
    ASSERT_TRUE(copy.writeFile(folder.path("d.idx"), board));
    for (const char *name : {"b.idx", "c.idx", "d.idx"})
        EXPECT_EQ(folder.read(name), folder.read("a.idx")) << name;
}

TEST_F(IDXWriterTest, FileNamesAreUtf8) {
    ASSERT_TRUE(IDXWriter().writeFile(folder.path("t\xC3\xA4st.idx"), board));
    EXPECT_NE(folder.read("t\xC3\xA4st.idx"), "<missing>");
}

// Texts and numbers.

TEST_F(IDXWriterTest, TextsAreUtf8AndEscaped) {
    board.setName("\xC3\xB6 <a> & \"b\" \xE2\x84\xA6");
    EXPECT_THAT(written(),
                HasSubstr("<property:Value>\xC3\xB6 &lt;a> &amp; \"b\" \xE2\x84\xA6</property:Value>"));
}

TEST_F(IDXWriterTest, CharactersThatXmlCannotHoldAreDropped) {
    board.setName(std::string("a\0b\x01\x1F\xEF\xBF\xBF\tc", 10));
    EXPECT_THAT(written(), HasSubstr("<property:Value>ab\tc</property:Value>"));
}

TEST_F(IDXWriterTest, LengthsHave15Digits) {
    board.getOutline() = outline("0,0 123456.789012345,0 4,0.1");
    EXPECT_THAT(elementWithId("BOARD_OUTLINE_POINT_2"), HasSubstr(V("123456.789012345")));
    EXPECT_THAT(elementWithId("BOARD_OUTLINE_POINT_3"), HasSubstr(V("0.1")));
}

TEST_F(IDXWriterTest, ThePlaceOfATransformHasSixDigits) {
    addComponent("CAP", "", outline("0,0 4,0 4,2"), 1);
    place("CAP", "", 123.4567891, -0.0, 0, "TOP");
    EXPECT_EQ(transform(), X("1", "0", "0", "1", "123.457", "0"));
}

TEST_F(IDXWriterTest, ANumberThatIsNotFiniteIsZero) {
    board.setThickness(std::numeric_limits<double>::quiet_NaN());
    EXPECT_THAT(body(), HasSubstr(U("THICKNESS", "0")));
}

// Outlines.

TEST_F(IDXWriterTest, AClosedOutlineComesBackToItsFirstPlaceByAPointOfItsOwn) {
    board.getOutline() = outline("0,0 4,0 4,2 0,0");
    EXPECT_THAT(elementWithId("BOARD_OUTLINE_POINT_4"), HasSubstr(V("0") + "</d2:X>"));
    EXPECT_THAT(elementWithId("BOARD_OUTLINE_POLYLINE"),
                HasSubstr("<d2:Point>BOARD_OUTLINE_POINT_4</d2:Point>"));
    EXPECT_EQ(elementWithId("BOARD_OUTLINE_POINT_5"), "<missing>");
}

TEST_F(IDXWriterTest, ArcsBecomeSegments) {
    board.getOutline() = outline("0,0 4,0 4,4@90 0,4");
    const std::string line = elementWithId("BOARD_OUTLINE_POLYLINE");
    std::size_t points = 0;
    for (std::size_t at = 0; (at = line.find("<d2:Point>", at)) != std::string::npos; ++at)
        ++points;
    EXPECT_EQ(points, board.getOutline().getPoints(true).size());
    EXPECT_GT(points, 8u);
}

TEST_F(IDXWriterTest, ACircleInAnyFormIsACircle) {
    EDAOutline byCentre;
    byCentre.addPoint(0, 5, 5, 0);
    byCentre.addPoint(0, 6, 5, 360);
    EDAOutline byPoints;
    for (int i = 0; i < 24; ++i)
        byPoints.addPoint(0, 5 + std::cos(i * 0.2617993877991494), 5 + std::sin(i * 0.2617993877991494), 0);
    for (const EDAOutline &circle : {byCentre, byPoints, round(5, 5, 2)}) {
        board.getOutline() = circle;
        EXPECT_THAT(elementWithId("BOARD_OUTLINE_CIRCLE"), HasSubstr("<d2:Diameter>"));
        EXPECT_EQ(elementWithId("BOARD_OUTLINE_POLYLINE"), "<missing>");
    }
}

TEST_F(IDXWriterTest, ASmallCircleOnALargeBoardIsACircle) {
    board.getOutline() = outline("0,0 4000,0 4000,4000 0,4000");
    EDAOutline hole(true);
    hole.resetOutline(round(50, 50, 0.2), false);
    board.getOutline().addInternalOutline(hole);
    board.getOutline().setModelDimension(4000); // as an import would: its arcs have 8 points now
    EXPECT_THAT(elementWithId("BOARD_OUTLINE_HOLE_1_CIRCLE"), HasSubstr("<d2:Diameter>"));
}

TEST_F(IDXWriterTest, ARoundBoardWithHolesIsACircle) {
    board.getOutline() = round(0, 0, 100);
    board.getOutline().addInternalOutline(outline("0,0 4,0 4,2"));
    EXPECT_THAT(elementWithId("BOARD_OUTLINE_CIRCLE"), HasSubstr("<d2:Diameter>"));
    EXPECT_THAT(elementWithId("BOARD_OUTLINE_HOLE_1_SHAPE_ELEMENT"),
                HasSubstr("<pdm:Inverted>false<")); // no hole
}

TEST_F(IDXWriterTest, APolygonOfFewCornersIsNoCircle) {
    EDAOutline octagon;
    for (int i = 0; i < 8; ++i)
        octagon.addPoint(0, std::cos(i * 0.78539816339744828), std::sin(i * 0.78539816339744828), 0);
    board.getOutline() = octagon;
    EXPECT_EQ(elementWithId("BOARD_OUTLINE_CIRCLE"), "<missing>");
}

TEST_F(IDXWriterTest, AnEmptyBoardIsAPolylineWithoutPoints) {
    EXPECT_THAT(body(), HasSubstr("<foundation:PolyLine id=\"BOARD_OUTLINE_POLYLINE\"/>"));
}

// Components and placements.

TEST_F(IDXWriterTest, LengthsOfAComponentAreConvertedToTheBoardsUnits) {
    board.setUnits("mm");
    EDAComponent &part = addComponent("CAP", "", outline("0,0 100,0 100,50"), 10);
    part.setUnits("THOU");
    EXPECT_THAT(elementWithId("PART_1_OUTLINE_POINT_2"), HasSubstr(V("2.54")));
    EXPECT_THAT(elementWithId("PART_1_OUTLINE_CURVESET"), HasSubstr("<d2:UpperBound>" + V("0.254")));
    EXPECT_THAT(body(), HasSubstr(U("HEIGHT", "0.254")));
    part.getOutline() = round(0, 0, 100);
    EXPECT_THAT(elementWithId("PART_1_OUTLINE_CIRCLE"), HasSubstr("<d2:Diameter>" + V("2.54")));
}

TEST_F(IDXWriterTest, LengthsOfUnknownUnitsStandAsTheyAre) {
    board.setUnits("mm");
    EDAComponent &part = addComponent("CAP", "", outline("0,0 100,0 100,50"), 10);
    for (const char *units : {"furlong", "", "mm", "MM"}) {
        part.setUnits(units);
        EXPECT_THAT(elementWithId("PART_1_OUTLINE_POINT_2"), HasSubstr(V("100"))) << units;
    }
    part.setUnits("in");
    board.setUnits("");
    EXPECT_THAT(body(), HasSubstr(U("HEIGHT", "10")));
}

TEST_F(IDXWriterTest, APlacementWithoutItsComponentIsLeftOut) {
    addComponent("CAP", "", outline("0,0 4,0 4,2"), 1);
    place("RES", "", 1, 1, 0, "TOP");
    place("CAP", "", 1, 1, 0, "TOP");
    EXPECT_EQ(elementWithId("PLACEMENT_1_ASSEMBLY"), "<missing>");
    EXPECT_THAT(elementWithId("PLACEMENT_2_ASSEMBLY"), HasSubstr("<pdm:Item>PART_1_ITEM</pdm:Item>"));
}

TEST_F(IDXWriterTest, OnTheTopThePartTurnsAnticlockwise) {
    addComponent("CAP", "", outline("0,0 4,0 4,2"), 1);
    place("CAP", "", 1, 2, 90, "");
    EXPECT_EQ(transform(), X("0", "-1", "1", "0", "1", "2"));
}

TEST_F(IDXWriterTest, OnTheBottomThePartIsMirroredAsWell) {
    addComponent("CAP", "", outline("0,0 4,0 4,2"), 1);
    place("CAP", "", 1, 2, 90, "BOTTOM");
    EXPECT_EQ(transform(), X("0", "1", "1", "0", "1", "2"));
}

TEST_F(IDXWriterTest, AnOrientationIsWrittenByItsAngle) {
    addComponent("CAP", "", outline("0,0 4,0 4,2"), 1);
    place("CAP", "", 0, 0, 0, "").setOrientation(0, -1, 1, 0);
    EXPECT_EQ(transform(), X("0", "-1", "1", "0", "0", "0"));
}

// Keepouts.

TEST_F(IDXWriterTest, KeepoutsTellTheirPurposeAndSide) {
    const struct {
        const char *type, *side, *purpose, *sideText;
    } keepouts[] = {{"PLACE_KEEPOUT", "top", "ComponentPlacement", "TOP"},
                    {"VIA_KEEPOUT", "BOTTOM", "Via", "BOTTOM"},
                    {"Route", "BOTH", "Route", "ALL"},
                    {"Other &", "", "Other &amp;", "ALL"}};
    for (const auto &one : keepouts) {
        EDAKeepout keepout(one.type);
        keepout.setBoardSide(one.side);
        keepout.setName("K 1");
        keepout.setHeight(3);
        keepout.getOutline() = outline("1,1 4,1 4,2");
        board.addKeepout(keepout);
        const std::string base = "KEEPOUT_" + std::to_string(board.numKeepouts());
        EXPECT_THAT(elementWithId(base + "_KEEPOUT"),
                    HasSubstr("<pdm:ShapeElement>" + base +
                              "_OUTLINE_SHAPE_ELEMENT</pdm:ShapeElement><pdm:Purpose>" + one.purpose + "<"));
        EXPECT_THAT(body(), HasSubstr(item(base, base + "_KEEPOUT") + A(base, "K 1", base + "_ITEM") +
                                      U("SIDE", one.sideText) + Z));
        EXPECT_THAT(elementWithId(base + "_OUTLINE_SHAPE_ELEMENT"), HasSubstr(">NonFeatureShapeElement<"));
        EXPECT_THAT(elementWithId(base + "_OUTLINE_CURVESET"), HasSubstr("<d2:UpperBound>" + V("3")));
    }
}

// Vias.

TEST_F(IDXWriterTest, AViaIsACircleAboutTheOriginAtItsPlace) {
    board.setThickness(1.6);
    EDAVia via;
    via.setName("V");
    via.setDiameter(0.8);
    via.setCentre(10, 20);
    via.setAngle(90);
    via.setPlated(true);
    via.addInstance("W", 30, 40); // left out
    board.addVia(via, false);
    const std::string Q = "VIA_1_OUTLINE";
    EXPECT_THAT(body(),
                HasSubstr(P(Q + "_CENTER", "0", "0") + O(Q, "0.8") +
                          C(Q, Q + "_CIRCLE", "1.6", "ViaTerminal", "false") +
                          "<foundation:InterStratumFeature id=\"VIA_1_VIA\"><pdm:ShapeElement>" + Q +
                          "_SHAPE_ELEMENT</pdm:ShapeElement><pdm:InterStratumFeatureType>PlatedCutout</"
                          "pdm:InterStratumFeatureType></foundation:InterStratumFeature>" +
                          item("VIA_1", "VIA_1_VIA") + A("VIA_1", "V", "VIA_1_ITEM") +
                          U("ICMIDX_ATTRIBUTE_HOLE_ASSOCIATED_PART", "BOARD") +
                          "<pdm:Transformation><pdm:TransformationType>d2</pdm:TransformationType>" +
                          X("0", "-1", "1", "0", "10", "20") + "</pdm:Transformation>" + Z));
    EXPECT_EQ(elementWithId("VIA_2_VIA"), "<missing>");
}

TEST_F(IDXWriterTest, AShapedViaIsAPolyline) {
    EDAVia via;
    via.getOutline() = outline("0,0 4,0 4,2");
    board.addVia(via, false);
    EXPECT_THAT(elementWithId("VIA_1_OUTLINE_POLYLINE"), HasSubstr("VIA_1_OUTLINE_POINT_3"));
    EXPECT_THAT(elementWithId("VIA_1_VIA"), HasSubstr(">Cutout<"));
}

TEST_F(IDXWriterTest, AShapedViaHasTheDefaultStepsWhateverItsModelWas) {
    EDAVia via;
    via.getOutline() = outline("0,0 4,0 4,4@90 0,4");
    board.addVia(via, false);
    const std::string before = elementWithId("VIA_1_OUTLINE_POLYLINE");
    board.beginVias()->getOutline().setModelDimension(4000); // as an import would
    EXPECT_EQ(elementWithId("VIA_1_OUTLINE_POLYLINE"), before);
}

// Ids.

TEST_F(IDXWriterTest, NoIdComesTwiceWhateverTheNames) {
    board.getOutline() = outline("0,0 4,0 4,2 0,0");
    board.getOutline().addInternalOutline(outline("1,0 2,0 2,1"));
    for (int i = 0; i < 3; ++i) {
        addComponent("SAME NAME", "", outline("0,0 4,0 4,2"), 1);
        place("SAME NAME", "", 0, 0, 0, "TOP");
        EDAKeepout keepout("Via");
        keepout.setName("SAME NAME");
        keepout.getOutline() = outline("0,0 4,0 4,2");
        board.addKeepout(keepout);
        EDAVia via;
        via.setName("SAME NAME");
        board.addVia(via, false);
    }
    const std::string text = body();
    std::map<std::string, int> ids;
    for (const std::string &id : EDA::test::allMatches(text, " id=\"([^\"]*)\""))
        ++ids[id];
    EXPECT_GT(ids.size(), 90u);
    for (const auto &[name, count] : ids)
        EXPECT_EQ(count, 1) << name;
}

} // namespace
