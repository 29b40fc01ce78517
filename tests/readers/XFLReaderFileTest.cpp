// The frame of an XFL file: the bytes, the rows, the sections of one row, what a read leaves.
#include "readers/XFLTestSupport.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"

#include <cstdlib>
#include <type_traits>

namespace {

using namespace XFLTest;

static_assert(std::is_copy_constructible_v<EDA::XFLReader> && std::is_copy_assignable_v<EDA::XFLReader>);
static_assert(!std::is_convertible_v<bool, EDA::XFLReader>);

class XFLFile : public XFLReaderTest {};

TEST_F(XFLFile, WithoutRowsIsAFailureWithoutAMessage) {
    for (const char *text : {"", "\n\n", " \t \r\n", "\xEF\xBB\xBF"})
        for (const bool componentMode : {false, true}) {
            EDA::XFLReader fresh(componentMode);
            EXPECT_FALSE(fresh.readFile(folder.write("empty.xfl", text)));
            EXPECT_EQ(fresh.getError(), "");
            EXPECT_EQ(fresh.getBoard().getName(), "");
            EXPECT_EQ(fresh.getBoard().numComponents(), 0u);
        }
}

TEST_F(XFLFile, ThatIsMissingIsAFailureWithoutAMessage) {
    EDA::XFLReader fresh(false);
    EXPECT_FALSE(fresh.readFile(folder.path("none.xfl")));
    EXPECT_FALSE(fresh.readFile(folder.path()));
    EXPECT_FALSE(fresh.readFile(""));
    EXPECT_EQ(fresh.getError(), "");
}

TEST_F(XFLFile, OfNothingButACommentIsRead) { EXPECT_EQ(readBoard("# nothing\n").numLayers(), 0u); }

TEST_F(XFLFile, GivesTheBoardItsName) {
    EDA::XFLReader fresh(false);
    EXPECT_TRUE(fresh.readFile(folder.write("main.board.xfl", "x")));
    EXPECT_EQ(fresh.getBoard().getName(), "main.board");
}

TEST_F(XFLFile, GivesTheComponentAndItsPlacementTheirNames) {
    EDA::XFLReader fresh(true);
    EXPECT_TRUE(fresh.readFile(folder.write("BGA 12.xfl", "x")));
    const EDA::EDABoard &board = fresh.getBoard();
    EXPECT_EQ(board.getName(), "");
    ASSERT_EQ(board.numComponents(), 1u);
    EXPECT_EQ(board.beginComponents()->getName(), "BGA 12");
    EXPECT_EQ(board.beginComponents()->getPartNumber(), "BGA 12");
    EXPECT_EQ(board.beginComponents()->getType(), "Component");
    ASSERT_EQ(board.numComponentPlacements(), 1u);
    EXPECT_EQ(board.beginPlacements()->getName(), "BGA 12");
    EXPECT_EQ(board.beginPlacements()->getPartNumber(), "BGA 12");
    EXPECT_EQ(board.findComponent(*board.beginPlacements()), &*board.beginComponents());
}

TEST_F(XFLFile, IsNoSourceOfTheBoardAndABaseline) {
    const EDA::EDABoard &board = readBoard(stack);
    std::string boardFile, libraryFile;
    board.getSourceFilename(boardFile, libraryFile);
    EXPECT_EQ(boardFile, "");
    EXPECT_EQ(libraryFile, "");
    EXPECT_TRUE(board.isBaselineImport());
}

TEST_F(XFLFile, HasAVersionOfTwoFields) {
    readBoard(".version 3\n");
    EXPECT_EQ(reader->getVersion(), "");
    readBoard(".version 3 14 15\n");
    EXPECT_EQ(reader->getVersion(), "3.14");
}

TEST_F(XFLFile, HasItsUnitsAsTheyStandInBothModes) {
    EXPECT_EQ(readBoard(".unit microns\n").getUnits(), "microns");
    EXPECT_EQ(readWell(true, ".unit Mils x\n").getUnits(), "Mils");
    EXPECT_EQ(readBoard(".unit mm\n.unit\n").getUnits(), "mm");
}

TEST_F(XFLFile, DividesItsLengthsByTheScale) {
    EXPECT_DOUBLE_EQ(readBoard(".scale 1000\n.layer\nA 35 C m d\n.end\n").getThickness(), 0.035);
}

TEST_F(XFLFile, TakesTheScaleFromWhereItStandsOn) {
    const EDA::EDABoard &board = readBoard(".layer\nA 8 C m d\n.end\n.scale 2\n.layer\nB 8 C m d\n.end\n");
    EXPECT_EQ(board.getNthLayer(0).getThickness(), 8.0);
    EXPECT_EQ(board.getNthLayer(1).getThickness(), 4.0);
}

TEST_F(XFLFile, KeepsTheScaleBeforeOneThatIsNone) {
    for (const char *scale : {"0", "0.0", "-0", "nan", "inf", "-inf", "1e999", "1e-999", "mm", "", "\"\""}) {
        const std::string text = std::string(".scale 4\n.scale ") + scale + "\n.layer\nA 8 C m d\n.end\n";
        EXPECT_EQ(readBoard(text).getThickness(), 2.0) << scale;
    }
    EXPECT_EQ(readBoard(".scale 0\n.layer\nA 8 C m d\n.end\n").getThickness(), 8.0);
    EXPECT_EQ(readBoard(".scale -4mm\n.layer\nA 8 C m d\n.end\n").getThickness(), -2.0);
}

TEST_F(XFLFile, ComparesItsKeywordsWithCase) {
    EXPECT_EQ(readBoard(".LAYER\nA 1 C m d\n.end\n").numLayers(), 0u);
    EXPECT_EQ(readBoard(".layers\nA 1 C m d\n.end\n").numLayers(), 0u);
    EXPECT_EQ(readBoard("layer\nA 1 C m d\n.end\n").numLayers(), 0u);
    EXPECT_EQ(readBoard(".layer\nA 1 C m d\n.END\nB 1 C m d\n.end\nC 1 C m d\n").numLayers(), 2u);
}

TEST_F(XFLFile, PassesOverUnknownRows) {
    const EDA::EDABoard &board = readBoard("hello\n.unknown\nA 1 C m d\n.end\n" + stack + "bye\n");
    EXPECT_EQ(board.numLayers(), 2u);
}

// The same design, in all the ways to write its bytes.
class XFLBytes : public XFLReaderTest, public testing::WithParamInterface<std::string> {};

const std::string plainDesign =
    ".unit mm\n" + stack + section("shape", "1 polygon {\n0 0\n2 0\n2 1\n}\n") + net("shape 1 1 0 0 0\n");

std::string replaced(std::string text, const std::string &from, const std::string &to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string utf16(const std::string &text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text)
        bytes.append(1, c).append(1, '\0');
    return bytes;
}

TEST_P(XFLBytes, AreTheSameDesign) {
    const EDA::EDABoard &board = readBoard(GetParam());
    EXPECT_EQ(board.getUnits(), "mm");
    ASSERT_EQ(board.numLayers(), 2u);
    ASSERT_EQ(board.getNthLayer(0).numTraces(), 1u);
    EXPECT_EQ(drawn(traces(board, 1)[0].getOutline()), "0,0 2,0 2,1");
}

INSTANTIATE_TEST_SUITE_P(
    All, XFLBytes,
    testing::Values(plainDesign, replaced(plainDesign, "\n", "\r\n"), replaced(plainDesign, "\n", "\r"),
                    "\xEF\xBB\xBF" + plainDesign, "\xEF\xBB\xBF" + replaced(plainDesign, "\n", "\r\n"),
                    utf16(plainDesign), "  " + replaced(plainDesign, "\n", "\n\t "),
                    replaced(plainDesign, " ", " \t  "), replaced(plainDesign, "\n", " \t\n"),
                    replaced(plainDesign, "\n", "\n\n \n"), replaced(plainDesign, "\n", "\n# } .end\n  #}\n"),
                    plainDesign.substr(0, plainDesign.size() - 1)));

TEST_F(XFLFile, HasNoCommentBehindAField) {
    EXPECT_EQ(readBoard(".unit #mm\n").getUnits(), "#mm");
    readBoard(".version 1 # 2\n");
    EXPECT_EQ(reader->getVersion(), "1.#");
}

TEST_F(XFLFile, MayQuoteAFieldWithBlanks) {
    EXPECT_EQ(readBoard(".layer\n\"top side\" 1 C m d\n.end\n").getNthLayer(0).getName(), "top side");
}

TEST_F(XFLFile, IsReadIntoACopyAsIntoTheReader) {
    readBoard(".scale 2\n" + stack + section("shape", "1 square 4 0\n"));
    EDA::XFLReader copy(*reader);
    EDA::XFLReader assigned(true);
    assigned = *reader;
    const std::string second = folder.write("second.xfl", net("shape 2 1 0 0 0\n"));
    for (EDA::XFLReader *each : {&copy, &assigned}) {
        EXPECT_TRUE(each->readFile(second));
        ASSERT_EQ(each->getBoard().numLayers(), 2u);
        EXPECT_EQ(each->getBoard().getNthLayer(1).numTraces(), 1u);
    }
    EXPECT_EQ(drawn(traces(copy.getBoard(), 2)[0].getOutline()), "-1,-1 1,-1 1,1 -1,1");
    EXPECT_EQ(reader->getBoard().getNthLayer(1).numTraces(), 0u);
}

TEST_F(XFLFile, AddsItsVoidsToTheTracesOfAnEarlierFile) {
    readBoard(stack + net("square 1 4 0 0\npath 1 1 0 0 1 0\n"));
    EXPECT_TRUE(
        reader->readFile(folder.write("second.xfl", net("void_square 1 2 0 0\nvoid_square 2 2 0 0\n"))));
    const auto made = traces(reader->getBoard(), 1);
    ASSERT_EQ(made.size(), 2u);
    EXPECT_EQ(made[0].getOutline().numInternalOutlines(), 1);
    EXPECT_EQ(made[1].getOutline().numInternalOutlines(), 0);
}

TEST_F(XFLFile, ReadsAsAComponentWhatIsInAnyOrderOfSections) {
    EXPECT_EQ(readBodies(net("square 1 1 0 0\n") + stack).size(), 0u);
    EXPECT_EQ(readBodies(stack + net("square 1 1 0 0\n")).size(), 1u);
}

TEST_F(XFLFile, LeavesTheBoardOfAComponentWithoutLayers) {
    const EDA::EDABoard &board =
        readWell(true, stack + ".board_geom\nsquare 4 4\n" + net("square 1 1 0 0\n"));
    EXPECT_EQ(board.numLayers(), 0u);
    EXPECT_EQ(board.getThickness(), 0.0);
    EXPECT_TRUE(board.getOutline().empty());
    EXPECT_TRUE(board.beginComponents()->getOutline().empty());
}

TEST_F(XFLFile, HasOptionsWithoutAPreset) {
#ifdef _WIN32
    _putenv_s("EDA_CONFIG_DIR", folder.path().c_str());
#else
    setenv("EDA_CONFIG_DIR", folder.path().c_str(), 1);
#endif
    using namespace EntityModel;
    UserPreference::instance().reload();
    EDA::XFLReader fresh(false);
    Entity *options = fresh.getOptions();
    ASSERT_NE(options, nullptr);
    std::string name;
    const Attribute *attribute = options->findAttribute(Name_t, false);
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->getString(name), "XFL");
    EXPECT_EQ(options->getType(), EDA_Import_Options_t);
    EXPECT_EQ(fresh.getOptions(), options);
    UserPreference::instance().reload();
}

TEST_F(XFLFile, CannotBeAComponentByItself) {
    EDA::XFLReader fresh(true);
    EXPECT_FALSE(fresh.canBeComponent());
    EXPECT_TRUE(fresh.readLayerDetails());
}

} // namespace
