// The document of an IDX file: what is well-formed, the header, the body and its definitions.
#include "readers/IDXTestSupport.h"

#include "host/EntityModel/Entity.h"

namespace {

using namespace IDXTest;
using testing::ElementsAre;

std::string repeated(const std::string &part, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += part;
    return all;
}

const std::string boardItem = polygon("EDGE", "0,0 4,0 4,2") + part("BoardOutline", "Stratum", {"EDGE"});

// Documents.

TEST_F(IDXReaderTest, WithoutHeaderAndBodyTheBoardIsEmpty) {
    EXPECT_TRUE(readText("<EDMDDataSet/>"));
    EXPECT_EQ(reader.getError(), "");
    EXPECT_TRUE(board().getOutline().empty());
    EXPECT_EQ(board().numComponentPlacements(), 0u);
}

TEST_F(IDXReaderTest, AMissingFileIsFalseWithoutAMessage) {
    EXPECT_FALSE(reader.readFile(folder.path("none.idx")));
    EXPECT_FALSE(reader.readFile(folder.path()));
    EXPECT_FALSE(reader.readFile(""));
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDXReaderTest, WhatIsNotWellFormedIsFalseWithoutAMessage) {
    for (const char *bytes : {"", "<", "x", "<a>", "<a></b>", "<a/><b/>", "<a b=1/>", "<a b='<'/>",
                              "<a>&</a>", "\xFF\xFE", "<a>]]></a>"})
        EXPECT_FALSE(readText(bytes)) << bytes;
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDXReaderTest, AFailedReadClearsTheError) {
    EXPECT_TRUE(read(instance("NONE", "X")));
    EXPECT_EQ(reader.getError(), "Unhandled Object Type \n");
    EXPECT_FALSE(readText("<a>"));
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDXReaderTest, PrefixesPlayNoPart) {
    std::string bytes = document(boardItem);
    const std::string prefix = "foundation:";
    for (const std::string start : {"<", "</"})
        for (std::size_t at = 0; (at = bytes.find(start + prefix, at)) != std::string::npos;)
            bytes.erase(at + start.size(), prefix.size());
    EXPECT_TRUE(readText(bytes));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
}

TEST_F(IDXReaderTest, AnUndeclaredPrefixIsTakenAllTheSame) {
    std::string bytes = document(boardItem);
    const std::string declaration = " xmlns:foundation=\"urn:test:foundation\"";
    bytes.erase(bytes.find(declaration), declaration.size());
    EXPECT_TRUE(readText(bytes));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
}

TEST_F(IDXReaderTest, ElementsMayStandInGroups) {
    readWell(element("Group", element("Inner", boardItem)));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
}

TEST_F(IDXReaderTest, HeaderAndBodyMayStandAnywhere) {
    EXPECT_TRUE(readText("<a><b><Body>" +
                         std::string("<UnitLength><Fundamental>mm</Fundamental></UnitLength>") +
                         "</Body></b></a>"));
    EXPECT_EQ(board().getUnits(), "mm");
}

TEST_F(IDXReaderTest, OtherEncodingsAreRead) {
    EXPECT_TRUE(readText("\xEF\xBB\xBF<a><Body><UnitLength><Fundamental>\xC2\xB5m</Fundamental></UnitLength>"
                         "</Body></a>"));
    EXPECT_EQ(board().getUnits(), "\xC2\xB5m");
    EXPECT_TRUE(
        readText("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a><Body><UnitLength><Fundamental>\xB5"
                 "</Fundamental></UnitLength></Body></a>"));
    EXPECT_EQ(board().getUnits(), "\xC2\xB5");
    std::string wide("\xFF\xFE");
    for (char c : std::string("<a><Body><UnitLength><Fundamental>in</Fundamental></UnitLength></Body></a>"))
        wide += {c, '\0'};
    EXPECT_TRUE(readText(wide));
    EXPECT_EQ(board().getUnits(), "in");
}

TEST_F(IDXReaderTest, TextMayBeMarkedAsCharacterData) {
    readWell(withId("UnitLength", "U", element("Fundamental", "<![CDATA[m]]><!-- no -->m")));
    EXPECT_EQ(board().getUnits(), "mm");
}

TEST_F(IDXReaderTest, FileNamesAreUtf8) {
    EXPECT_TRUE(reader.readFile(folder.write("t\xC3\xA4st.idx", document(boardItem))));
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
}

// Depth and entities.

TEST_F(IDXReaderTest, ADocumentOf256LevelsIsRead) {
    EXPECT_TRUE(readText(repeated("<a>", 256) + repeated("</a>", 256)));
    EXPECT_FALSE(readText(repeated("<a>", 257) + repeated("</a>", 257)));
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDXReaderTest, ADeepDocumentDoesNoHarm) {
    for (const int depth : {25'000, 1'000'000}) {
        EXPECT_FALSE(readText(repeated("<a>", depth) + repeated("</a>", depth)));
        EXPECT_FALSE(readText(repeated("<a>", depth)));
    }
}

TEST_F(IDXReaderTest, EntitiesThatGrowAreRefused) {
    std::string declarations = "<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 40; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        declarations += "<!ENTITY e" + std::to_string(i) + " \"" + inner + inner + "\">";
    }
    EXPECT_FALSE(readText("<!DOCTYPE a [" + declarations + "]><a>&e39;</a>"));
}

TEST_F(IDXReaderTest, ElementsOutOfEntitiesCountForTheDepth) {
    const std::string nested = repeated("<b>", 20) + repeated("</b>", 20);
    const std::string start = "<!DOCTYPE a [<!ENTITY e \"" + nested + "\">]>";
    EXPECT_TRUE(readText(start + repeated("<a>", 236) + "&e;" + repeated("</a>", 236)));
    EXPECT_FALSE(readText(start + repeated("<a>", 237) + "&e;" + repeated("</a>", 237)));
}

TEST_F(IDXReaderTest, FilesThatEntitiesNameAreNotRead) {
    const std::string secret = folder.write("secret.txt", "secret");
    EXPECT_TRUE(readText("<!DOCTYPE a [<!ENTITY e SYSTEM \"file://" + secret +
                         "\">]><a><Body><UnitLength><Fundamental>&e;</Fundamental></UnitLength></Body></a>"));
    EXPECT_EQ(board().getUnits(), "");
}

// Header.

TEST_F(IDXReaderTest, TheFileTypeBecomesTheImportType) {
    readWell("", property("IDX_FILE_TYPE", "BASELINE") + property("IDX_VERSION", "2.0"));
    EXPECT_TRUE(board().isBaselineImport());
    readWell("", element("Group", property("IDX_FILE_TYPE", "CHANGE")));
    EXPECT_FALSE(board().isBaselineImport());
    readWell("");
    EXPECT_TRUE(board().isBaselineImport());
}

TEST_F(IDXReaderTest, TheFileTypeCountsInTheHeaderAlone) {
    readWell(property("IDX_FILE_TYPE", "CHANGE"));
    EXPECT_TRUE(board().isBaselineImport());
}

// Body.

TEST_F(IDXReaderTest, TheDesignFileIsTheBoardsName) {
    readWell(withId("ExternalSource", "E",
                    element("Name", "IDX_DESIGN_SUMMARY") + property("IDX_DESIGN_FILE", "controller") +
                        property("IDX_DESIGN_REV", "7")));
    EXPECT_EQ(board().getName(), "controller");
}

TEST_F(IDXReaderTest, TheDesignFileOfAnItemOrTheHeaderIsNot) {
    readWell(item("I", "S", property("IDX_DESIGN_FILE", "item")), property("IDX_DESIGN_FILE", "header"));
    EXPECT_EQ(board().getName(), "");
}

TEST_F(IDXReaderTest, UnitsStandAsTheyAre) {
    readWell(withId("UnitLength", "U", element("Fundamental", "UNIT_MM")));
    EXPECT_EQ(board().getUnits(), "UNIT_MM");
}

TEST_F(IDXReaderTest, AUnitLengthWithoutFundamentalLeavesTheUnits) {
    readWell(withId("UnitLength", "U", element("Fundamental", "thou")) + withId("UnitLength", "V", ""));
    EXPECT_EQ(board().getUnits(), "thou");
}

TEST_F(IDXReaderTest, OfTwoItemsWithOneIdTheLaterWins) {
    readWell(polygon("A", "0,0 1,0 1,1") + polygon("B", "0,0 2,0 2,2 0,1") +
             shape("AssemblyComponent", "SA", {"A"}) + shape("AssemblyComponent", "SB", {"B"}) +
             item("I", "SA", package("first") + property("PARTNUM", "1")) + instance("I", "U1") +
             item("I", "SB", package("second")));
    ASSERT_EQ(board().numComponents(), 1u);
    EXPECT_EQ(component().getName(), "second");
    EXPECT_EQ(component().getPartNumber(), "");
    EXPECT_EQ(component().getOutline().numPoints(), 4u);
}

TEST_F(IDXReaderTest, ALaterDefinitionKeepsNothingOfTheEarlier) {
    readWell(polyLine("L", "0,0 9,0 9,9", "7") + polyLine("L", "0,0 2,0 2,2") + curveSet("S", {"X"}, 1, 2) +
             curveSet("S", {"L"}) + shapeElement("E", "S") + part("P", "AssemblyComponent", {"E"}));
    EXPECT_THAT(stored(component().getOutline()), ElementsAre(At(0, 0), At(2, 0), At(2, 2)));
    EXPECT_EQ(component().getHeight(), 0.0);
}

TEST_F(IDXReaderTest, WhatStandsInADefinitionIsNoDefinition) {
    readWell(withId("PolyLine", "OUTER", point("INNER", 5, 5)) +
             item("I", "S", polyLine("HIDDEN", "0,0 1,0 1,1")) + curveSet("C", {"HIDDEN"}) +
             shapeElement("E", "C") + shape("Stratum", "T", {"E"}));
    EXPECT_TRUE(read(curveSet("C", {"HIDDEN"}) + shapeElement("E", "C") +
                     item("J", "S", polyLine("HIDDEN", "0,0")) + part("P", "AssemblyComponent", {"E"})));
    EXPECT_EQ(reader.getError(), "Failed to find curve element HIDDEN\n");
}

TEST_F(IDXReaderTest, AReferenceInAShapeIsNoDefinition) {
    readWell(polygon("A", "0,0 1,0 1,1") + part("P", "AssemblyComponent", {"A"}));
    EXPECT_EQ(component().getOutline().numPoints(), 3u);
}

TEST_F(IDXReaderTest, IdsAreToldApartByEachOfTheirCharacters) {
    const std::vector<std::string> ids = {"A", "B", "AA", "AB", "\xC3\xA4", "\xC3\xB6", " A"};
    std::string points;
    double x = 0.0;
    for (const std::string &id : ids)
        points += point(id, ++x, 0);
    readWell(points + withId("PolyLine", "L", references("Point", ids)) + curveSet("C", {"L"}) +
             shapeElement("E", "C") + part("P", "AssemblyComponent", {"E"}));
    EXPECT_THAT(stored(component().getOutline()),
                ElementsAre(At(1, 0), At(2, 0), At(3, 0), At(4, 0), At(5, 0), At(6, 0), At(7, 0)));
}

TEST_F(IDXReaderTest, AnElementWithoutIdHasTheEmptyId) {
    readWell(element("PolyLine", element("Point", "A") + element("Point", "B")) + point("A", 1, 2) +
             point("B", 3, 4) + curveSet("C", {""}) + shapeElement("E", "C") +
             part("P", "AssemblyComponent", {"E"}));
    EXPECT_THAT(stored(component().getOutline()), ElementsAre(At(1, 2), At(3, 4)));
}

TEST_F(IDXReaderTest, ANumberThatIsNoneIsZero) {
    for (const char *bad : {"", "x", "1e400", "-1e400", "inf", "nan", "1,5", "3 mm", "0x10"}) {
        readWell(withId("CartesianPoint", "P", value("X", bad) + value("Y", "2")) +
                 withId("PolyLine", "L", element("Point", "P")) + curveSet("C", {"L"}) +
                 shapeElement("E", "C") + part("P", "KeepOut", {"E"}));
        const auto &keepout = board().beginKeepouts()[static_cast<long>(board().numKeepouts()) - 1];
        EXPECT_THAT(stored(keepout.getOutline()), ElementsAre(At(0, 2))) << bad;
    }
}

TEST_F(IDXReaderTest, BlanksAroundANumberDoNotCount) {
    readWell(withId("CartesianPoint", "P", value("X", " \n 1.5e1 ") + value("Y", "-2.5")) +
             withId("PolyLine", "L", element("Point", "P")) + curveSet("C", {"L"}) + shapeElement("E", "C") +
             part("P", "AssemblyComponent", {"E"}));
    EXPECT_THAT(stored(component().getOutline()), ElementsAre(At(15, -2.5)));
}

TEST_F(IDXReaderTest, ANumberWithoutItsValueElementIsZero) {
    readWell(withId("CartesianPoint", "P", element("X", "5") + value("Y", "2")) +
             withId("PolyLine", "L", element("Point", "P")) + curveSet("C", {"L"}) + shapeElement("E", "C") +
             part("P", "AssemblyComponent", {"E"}));
    EXPECT_THAT(stored(component().getOutline()), ElementsAre(At(0, 2)));
}

// Kinds of shapes.

TEST_F(IDXReaderTest, KindsComeFromTheElementOrItsTypeElement) {
    const struct {
        const char *tag, *type, *kind;
    } shapes[] = {
        {"FunctionalItemShape", "", "FunctionalItem"},
        {"FunctionalItemShape", "<FunctionalItemShapeType>Thing</FunctionalItemShapeType>", "Thing"},
        {"InterStratumFeature", "", "Hole"},
        {"InterStratumFeature", "<InterStratumFeatureType>Milled</InterStratumFeatureType>", "Milled"},
        {"InterStratumFeature", "<InterStratumFeatureType></InterStratumFeatureType>", ""},
    };
    for (const auto &one : shapes) {
        EXPECT_TRUE(read(part("P", one.tag, {}, "", one.type)));
        EXPECT_EQ(reader.getError(), std::string("Unhandled Object Type ") + one.kind + "\n");
    }
}

TEST_F(IDXReaderTest, ReadsOfOneReaderDoNotShareElements) {
    readWell(boardItem + polygon("A", "0,0 1,0 1,1") + part("P", "AssemblyComponent", {"A"}));
    EXPECT_TRUE(read(instance("P_ITEM", "again")));
    EXPECT_EQ(reader.getError(), "Unhandled Object Type \n");
    EXPECT_EQ(board().numComponentPlacements(), 1u);
}

TEST_F(IDXReaderTest, ACopyKeepsItsOwnBoard) {
    readWell(boardItem);
    EDA::IDXReader copy(reader);
    EXPECT_EQ(copy.getBoard().getOutline().numPoints(), 3u);
    copy.getBoard().getOutline().clear();
    EXPECT_EQ(board().getOutline().numPoints(), 3u);
}

// Beside reading.

TEST_F(IDXReaderTest, ADocumentIsKnownByItsFirstElement) {
    const auto isDocument = [this](const std::string &bytes) {
        return EDA::IDXReader::isDocument(folder.write("any.xml", bytes));
    };
    EXPECT_TRUE(isDocument(document("")));
    EXPECT_TRUE(isDocument("<!-- c --><EDMDDataSet><unfinished"));
    EXPECT_TRUE(isDocument("\xEF\xBB\xBF<x:EDMDDataSet/>"));
    EXPECT_FALSE(isDocument("<Other><EDMDDataSet/></Other>"));
    EXPECT_FALSE(isDocument("EDMDDataSet"));
    EXPECT_FALSE(isDocument(""));
    EXPECT_FALSE(EDA::IDXReader::isDocument(folder.path()));
    EXPECT_FALSE(EDA::IDXReader::isDocument(folder.path("none.xml")));
}

TEST_F(IDXReaderTest, ItemsThatTellTheirGeometryTypeAreCounted) {
    readWell(element("Item", "", "id=\"A\" geometryType=\"COMPONENT\"") + withId("Item", "B", ""));
    EXPECT_EQ(reader.numTypedItems(), 1u);
    EXPECT_THAT(reader.geometryTypes(), testing::ElementsAre(testing::Pair("COMPONENT", 1u)));
    readWell("");
    EXPECT_EQ(reader.numTypedItems(), 0u);
    EXPECT_THAT(reader.geometryTypes(), testing::IsEmpty());
}

TEST_F(IDXReaderTest, ItemsBesideTheBodyTellTheirGeometryTypeAsWell) {
    EXPECT_TRUE(readText("<EDMDDataSet><Body/><Item geometryType='VIA'/><Item/><Item geometryType='VIA'/>"
                         "</EDMDDataSet>"));
    EXPECT_EQ(reader.numTypedItems(), 2u);
    EXPECT_THAT(reader.geometryTypes(), testing::ElementsAre(testing::Pair("VIA", 2u)));
}

TEST_F(IDXReaderTest, GeometryTypesBeyondTheFirstThousandAreCountedAlone) {
    std::string items = element("Item", "", "geometryType=\"T0\"");
    for (int i = 0; i < 1'500; ++i)
        items += element("Item", "", "geometryType=\"T" + std::to_string(i) + "\"");
    readWell(items + element("Item", "", "geometryType=\"T0\""));
    EXPECT_EQ(reader.numTypedItems(), 1'502u);
    EXPECT_EQ(reader.geometryTypes().size(), 1'000u);
    EXPECT_EQ(reader.geometryTypes().at("T0"), 3u);
}

TEST_F(IDXReaderTest, OptionsAreThoseOfTheFormat) {
    EntityModel::Entity *options = reader.getOptions();
    ASSERT_NE(options, nullptr);
    EXPECT_EQ(reader.getOptions(), options);
}

TEST_F(IDXReaderTest, IsNoComponent) { EXPECT_FALSE(reader.canBeComponent()); }

} // namespace
