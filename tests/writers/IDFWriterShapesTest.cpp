// Outlines as rows: points, closing rows, loops, keepouts, numbers.
#include "IDFWriterSupport.h"

#include <limits>

namespace {

using namespace IDFTest;
using EDA::EDAKeepout;
using EDA::EDAOutline;
using EDA::test::addPoints;
using EDA::test::hole;

class IDFWriterShapes : public IDFWriterTest {
protected:
    // The rows of a board outline, without the thickness.
    std::string rows(char const *points) {
        addPoints(board.getOutline(), 0, points);
        return rows();
    }
    std::string rows() const {
        const std::string text = outlineRows();
        return text.substr(text.find('\n') + 1);
    }
    std::string keepoutRows(const EDAKeepout &keepout) {
        EDAKeepout added(keepout);
        board.addKeepout(added);
        return section(boardText(), ".END_BOARD_OUTLINE", ".DRILLED_HOLES");
    }
};

TEST_F(IDFWriterShapes, TheThicknessComesFirst) {
    board.setThickness(1.57);
    EXPECT_EQ(outlineRows(), "1.57\n");
}

TEST_F(IDFWriterShapes, AnOpenOutlineGetsAClosingRow) {
    EXPECT_EQ(rows("0,0 4,0 4,2 0,2"), "0 0 0 0\n0 4 0 0\n0 4 2 0\n0 0 2 0\n0 0 0 0\n");
}

TEST_F(IDFWriterShapes, AClosedOutlineGetsNoClosingRow) {
    EXPECT_EQ(rows("0,0 4,0 4,2 0,2 0,0"), "0 0 0 0\n0 4 0 0\n0 4 2 0\n0 0 2 0\n0 0 0 0\n");
}

TEST_F(IDFWriterShapes, TheClosingRowHoldsTheFirstPointsAngle) {
    EXPECT_EQ(rows("1,2@45 4,0 4,2"), "0 1 2 45\n0 4 0 0\n0 4 2 0\n0 1 2 45\n");
}

TEST_F(IDFWriterShapes, TwoPointsGetNoClosingRow) { EXPECT_EQ(rows("1,2 3,4"), "0 1 2 0\n0 3 4 0\n"); }
TEST_F(IDFWriterShapes, ACircleIsTwoRows) { EXPECT_EQ(rows("5,5 7,5@360"), "0 5 5 0\n0 7 5 360\n"); }
TEST_F(IDFWriterShapes, ThreePointsGetAClosingRow) {
    EXPECT_EQ(rows("0,0 4,0 4,2"), "0 0 0 0\n0 4 0 0\n0 4 2 0\n0 0 0 0\n");
}

TEST_F(IDFWriterShapes, ADifferenceOfTheToleranceIsOpen) {
    EDA::test::ToleranceGuard guard;
    EDAOutline::ptTol = 0.5;
    EXPECT_EQ(rows("0,0 4,0 4,2 0,0.5"), "0 0 0 0\n0 4 0 0\n0 4 2 0\n0 0 0.5 0\n0 0 0 0\n");
}

TEST_F(IDFWriterShapes, ADifferenceOfTheToleranceInXAloneIsOpen) {
    EDA::test::ToleranceGuard guard;
    EDAOutline::ptTol = 0.5;
    EXPECT_EQ(rows("0,0 4,0 4,2 0.5,0"), "0 0 0 0\n0 4 0 0\n0 4 2 0\n0 0.5 0 0\n0 0 0 0\n");
}

TEST_F(IDFWriterShapes, TheToleranceHoldsForInternalOutlinesToo) {
    EDA::test::ToleranceGuard guard;
    EDAOutline::ptTol = 0.5;
    for (const char *points : {"1,1 4,1 4,2 1,1.5", "1,1 4,1 4,2 1.25,1.25"})
        board.getOutline().addInternalOutline(hole(points));
    EXPECT_EQ(rows(), "1 1 1 0\n1 4 1 0\n1 4 2 0\n1 1 1.5 0\n1 1 1 0\n"
                      "2 1 1 0\n2 4 1 0\n2 4 2 0\n2 1.25 1.25 0\n");
}

TEST_F(IDFWriterShapes, ADifferenceBelowTheToleranceIsClosed) {
    EDA::test::ToleranceGuard guard;
    EDAOutline::ptTol = 0.5;
    EXPECT_EQ(rows("0,0 4,0 4,2 0.25,0.25"), "0 0 0 0\n0 4 0 0\n0 4 2 0\n0 0.25 0.25 0\n");
}

TEST_F(IDFWriterShapes, StoredPointsAreWrittenSoThatArcsStayArcs) {
    EXPECT_EQ(rows("0,0 4,0 6,2@90 0,2@-30.5"), "0 0 0 0\n0 4 0 0\n0 6 2 90\n0 0 2 -30.5\n0 0 0 0\n");
}

TEST_F(IDFWriterShapes, ArcsAboutACentreBecomeStraight) {
    EXPECT_EQ(rows("0,0 4,0 6,2<4,2 0,2"), "0 0 0 0\n0 4 0 0\n0 6 2 0\n0 0 2 0\n0 0 0 0\n");
}

TEST_F(IDFWriterShapes, InternalOutlinesAreNumberedWhateverTheirHoleFlag) {
    addPoints(board.getOutline(), 0, "0,0 9,0 9,9");
    board.getOutline().addInternalOutline(hole("1,1 2,1 2,2"));
    board.getOutline().addInternalOutline(EDA::test::outline("5,5 6,5@360"));
    EXPECT_EQ(rows(), "0 0 0 0\n0 9 0 0\n0 9 9 0\n0 0 0 0\n"
                      "1 1 1 0\n1 2 1 0\n1 2 2 0\n1 1 1 0\n"
                      "2 5 5 0\n2 6 5 360\n");
}

TEST_F(IDFWriterShapes, AnEmptyInternalOutlineTakesItsNumber) {
    board.getOutline().addInternalOutline(EDAOutline(true));
    board.getOutline().addInternalOutline(hole("5,5 6,5@360"));
    EXPECT_EQ(rows(), "2 5 5 0\n2 6 5 360\n");
}

TEST_F(IDFWriterShapes, OutlinesWithinInternalOutlinesAreLeftOut) {
    EDAOutline inner = hole("5,5 6,5@360");
    inner.addInternalOutline(EDA::test::outline("5,5 5.5,5@360"));
    board.getOutline().addInternalOutline(inner);
    EXPECT_EQ(rows(), "1 5 5 0\n1 6 5 360\n");
}

TEST_F(IDFWriterShapes, NumbersHaveSixDigits) {
    EXPECT_EQ(rows("123.45678,1234567 -0.00001234567,0.1@33.3333333"),
              "0 123.457 1.23457e+06 0\n0 -1.23457e-05 0.1 33.3333\n");
}

TEST_F(IDFWriterShapes, NumbersThatAreNotFiniteAreWordsAndCloseNothing) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double x : {infinity, 1.0, 2.0})
        board.addPoint(0, x, std::numeric_limits<double>::quiet_NaN(), -0.0);
    // The infinite distance is open; one that is no number says nothing.
    EXPECT_EQ(rows(), "0 inf nan -0\n0 1 nan -0\n0 2 nan -0\n0 inf nan -0\n");
}

TEST_F(IDFWriterShapes, AViaKeepoutHasItsOutlineOnly) {
    EDAKeepout keepout("VIA_KEEPOUT");
    keepout.setBoardSide("Top");
    keepout.setHeight(3.0);
    addPoints(keepout.getOutline(), 0, "0,0 1,0 1,1");
    EXPECT_EQ(keepoutRows(keepout), ".VIA_KEEPOUT UNOWNED\n0 0 0 0\n0 1 0 0\n0 1 1 0\n0 0 0 0\n"
                                    ".END_VIA_KEEPOUT\n");
}

TEST_F(IDFWriterShapes, APlaceKeepoutHasItsSideAndHeight) {
    EDAKeepout keepout("PLACE_KEEPOUT");
    keepout.setBoardSide("Both");
    keepout.setHeight(2.5);
    addPoints(keepout.getOutline(), 0, "5,5 6,5@360");
    EXPECT_EQ(keepoutRows(keepout),
              ".PLACE_KEEPOUT UNOWNED\nBoth 2.5\n0 5 5 0\n0 6 5 360\n.END_PLACE_KEEPOUT\n");
}

TEST_F(IDFWriterShapes, SidesOfTheModelBecomeThoseOfTheFormat) {
    for (const auto &[side, word] : {std::pair{"Top", "TOP 0\n"},
                                     {"Bottom", "BOTTOM 0\n"},
                                     {"top", "top 0\n"},
                                     {"bottom", "bottom 0\n"},
                                     {"BOTH", "BOTH 0\n"},
                                     {"", " 0\n"}}) {
        board = EDA::EDABoard();
        EDAKeepout keepout("PLACE_KEEPOUT");
        keepout.setBoardSide(side);
        EXPECT_EQ(keepoutRows(keepout),
                  std::string(".PLACE_KEEPOUT UNOWNED\n") + word + ".END_PLACE_KEEPOUT\n");
    }
}

TEST_F(IDFWriterShapes, KeepoutsOfOtherTypesAreLeftOut) {
    for (const char *type :
         {"Route", "Via", "ComponentPlacement", "via_keepout", "Place_Keepout", "", "ROUTE_KEEPOUT"}) {
        EDAKeepout keepout(type);
        board.addKeepout(keepout);
    }
    EXPECT_THAT(boardText(), testing::HasSubstr("\n.END_BOARD_OUTLINE\n.DRILLED_HOLES\n"));
}

TEST_F(IDFWriterShapes, KeepoutsStandInTheirOrder) {
    for (const char *type : {"VIA_KEEPOUT", "PLACE_KEEPOUT", "Route", "VIA_KEEPOUT"}) {
        EDAKeepout keepout(type);
        keepout.setBoardSide("TOP");
        board.addKeepout(keepout);
    }
    EXPECT_EQ(section(boardText(), ".END_BOARD_OUTLINE", ".DRILLED_HOLES"),
              ".VIA_KEEPOUT UNOWNED\n.END_VIA_KEEPOUT\n.PLACE_KEEPOUT UNOWNED\nTOP 0\n.END_PLACE_KEEPOUT\n"
              ".VIA_KEEPOUT UNOWNED\n.END_VIA_KEEPOUT\n");
}

TEST_F(IDFWriterShapes, AKeepoutsHolesAreLoopsOfTheirOwn) {
    EDAKeepout keepout("VIA_KEEPOUT");
    addPoints(keepout.getOutline(), 0, "0,0 9,0 9,9");
    keepout.getOutline().addInternalOutline(hole("5,1 6,1@360"));
    EXPECT_THAT(keepoutRows(keepout), testing::HasSubstr("0 0 0 0\n1 5 1 0\n1 6 1 360\n.END"));
}

TEST_F(IDFWriterShapes, TheLocaleOfTheProcessPlaysNoPart) {
    // A facet of its own: the machine may have no locale with a decimal comma.
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale old = std::locale::global(std::locale(std::locale::classic(), new Comma));
    Tools::Clock::setSource([] { return Tools::DateTime{12026, 1, 2, 3, 4, 5}; });
    board.setThickness(1234.5);
    const std::string text = boardText();
    std::locale::global(old);
    EXPECT_THAT(text, testing::HasSubstr("\n1234.5\n"));
    EXPECT_THAT(text, testing::HasSubstr("  2-1-12026.3:4:5 1\n"));
}

} // namespace
