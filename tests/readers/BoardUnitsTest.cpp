// Units that the host doesn't know.
#include "readers/BoardUnits.h"

#include <gtest/gtest.h>

namespace {

using namespace EDA;

constexpr const char *advice = ", every length in them would be lost; known are mm, cm, m, um, in, mil, thou "
                               "and other spellings of these";

EDABoard boardWith(const std::string &units) {
    EDABoard board;
    board.setUnits(units);
    board.addPoint(0, 1.0, 1.0, 0.0);
    return board;
}

void addComponent(EDABoard &board, const std::string &units) {
    EDAComponent component("ELECTRICAL");
    component.setUnits(units);
    board.addComponent(component, false);
}

TEST(BoardUnits, SpellingsOfLengthsAreKnown) {
    for (const char *units : {"MM", "mm", "THOU", "thou", "TNM", "INCH", "in", "mil", "um", " MM "})
        EXPECT_TRUE(isKnownLengthUnit(units)) << units;
}

TEST(BoardUnits, OtherTextsAreNot) {
    for (const char *units : {"", " ", "FURLONG", "W", "MMM", "1"})
        EXPECT_FALSE(isKnownLengthUnit(units)) << units;
}

TEST(BoardUnits, NothingIsSaidOfKnownUnits) {
    EDABoard board = boardWith("MM");
    addComponent(board, "THOU");
    addComponent(board, "");
    EXPECT_EQ(describeUnknownUnits(board), "");
}

TEST(BoardUnits, BoardWithoutUnitsIsNamed) {
    EXPECT_EQ(describeUnknownUnits(boardWith("")), std::string("unknown units \"\"") + advice);
}

TEST(BoardUnits, EmptyBoardNeedsNoUnits) { EXPECT_EQ(describeUnknownUnits(EDABoard()), ""); }

TEST(BoardUnits, LibraryAloneNeedsNoUnitsOfTheBoard) {
    EDABoard board;
    addComponent(board, "MM");
    EXPECT_EQ(describeUnknownUnits(board), "");
    addComponent(board, "");
    EXPECT_EQ(describeUnknownUnits(board), std::string("unknown units \"\"") + advice);
}

TEST(BoardUnits, UnitsOfComponentsAreLookedAt) {
    EDABoard board = boardWith("MM");
    addComponent(board, "ELL");
    addComponent(board, "CUBIT");
    addComponent(board, "ELL");
    EXPECT_EQ(describeUnknownUnits(board), std::string("unknown units \"CUBIT\", \"ELL\"") + advice);
}

TEST(BoardUnits, LongNamesAreCutBetweenCharacters) {
    const std::string start(39, 'x');
    EXPECT_EQ(describeUnknownUnits(boardWith(start + "\u00e9" + std::string(1'000'000, 'y'))),
              "unknown units \"" + start + "...\"" + advice);
    EXPECT_EQ(describeUnknownUnits(boardWith(start + "y")), "unknown units \"" + start + "y\"" + advice);
}

TEST(BoardUnits, LongListsAreCut) {
    EDABoard board = boardWith("MM");
    for (char c = 'a'; c < 'z'; ++c)
        addComponent(board, std::string("x") + c);
    EXPECT_EQ(describeUnknownUnits(board),
              std::string("unknown units \"xa\", \"xb\", \"xc\", \"xd\", \"xe\", ...") + advice);
}

} // namespace
