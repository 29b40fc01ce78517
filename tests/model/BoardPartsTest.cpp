// Components and placements of a board: duplicates, and how they find each other.
#include "model/EDABoard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

namespace EDA {
namespace {

EDAComponent component(std::string const &name, std::string const &partNumber = "", double height = 0.0) {
    EDAComponent part("ELECTRICAL");
    part.setName(name);
    part.setPartNumber(partNumber);
    part.setHeight(height);
    return part;
}

EDAComponentPlacement placement(std::string const &name, std::string const &partNumber = "",
                                std::string const &designator = "") {
    EDAComponentPlacement placed;
    placed.setName(name);
    placed.setPartNumber(partNumber);
    placed.setReferenceDesignator(designator);
    return placed;
}

// Adds a component and returns the name that it got.
std::string add(EDABoard &board, EDAComponent part, bool checkDuplicates = true) {
    board.addComponent(part, checkDuplicates);
    return part.getName();
}

EDAComponent const *naiveFind(EDABoard const &board, EDAComponentPlacement const &placed) {
    EDAComponent const *byName = nullptr;
    for (auto part = board.beginComponents(); part != board.endComponents(); ++part) {
        if (part->getName() != placed.getName()) continue;
        if (part->getPartNumber() == placed.getPartNumber()) return &*part;
        if (!byName) byName = &*part;
    }
    return byName;
}

std::string naiveDesignators(EDABoard const &board, EDAComponent const &part) {
    std::string both, byName;
    for (auto placed = board.beginPlacements(); placed != board.endPlacements(); ++placed) {
        if (placed->getName() != part.getName()) continue;
        byName += placed->getReferenceDesignator() + " ";
        if (placed->getPartNumber() == part.getPartNumber()) both += placed->getReferenceDesignator() + " ";
    }
    return both.empty() ? byName : both;
}

std::string designators(EDABoard const &board, EDAComponent const &part) {
    std::vector<EDAComponentPlacement> found;
    board.findComponentPlacements(part, found);
    std::string text;
    for (auto const &placed : found)
        text += placed.getReferenceDesignator() + " ";
    return text;
}

// The same by a visit that stops at the `last` one.
std::string visited(EDABoard const &board, EDAComponent const &part, std::string const &last = "none") {
    std::string text;
    board.visitComponentPlacements(part, [&](EDAComponentPlacement const &placed) {
        text += placed.getReferenceDesignator() + " ";
        return placed.getReferenceDesignator() != last;
    });
    return text;
}

TEST(EDABoardAddComponent, ATrueDuplicateIsStoredOnce) {
    EDABoard board;
    EXPECT_EQ(add(board, component("R1", "P", 1.0)), "R1");
    EXPECT_EQ(add(board, component("R1", "P", 1.0)), "R1");
    EXPECT_EQ(board.numComponents(), 1u);
}

TEST(EDABoardAddComponent, AnotherHeightGetsAnotherNameInTheCallersObjectToo) {
    EDABoard board;
    add(board, component("R1", "P", 1.0));
    auto other = component("R1", "P", std::nextafter(1.0, 2.0));
    board.addComponent(other, true);
    EXPECT_EQ(other.getName(), "R1-1");
    ASSERT_EQ(board.numComponents(), 2u);
    EXPECT_EQ((board.beginComponents() + 1)->getName(), "R1-1");
    EXPECT_EQ(board.beginComponents()->getName(), "R1");
}

TEST(EDABoardAddComponent, AnotherOutlineGetsAnotherName) {
    EDABoard board;
    add(board, component("R1"));
    auto other = component("R1");
    other.addPoint(0, 1.0, 1.0, 0.0);
    EXPECT_EQ(add(board, other), "R1-1");
}

TEST(EDABoardAddComponent, ACutOutOrAPropertyAloneMakesNoDifference) {
    EDABoard board;
    auto part = component("R1");
    part.addPoint(0, 1.0, 1.0, 0.0);
    EXPECT_EQ(add(board, part), "R1");
    part.addPoint(1, 2.0, 2.0, 0.0);
    part.addProperty("POWER_OPR", "1");
    EXPECT_EQ(add(board, part), "R1");
    EXPECT_EQ(board.numComponents(), 1u);
}

TEST(EDABoardAddComponent, OnlyTheFirstNamesakeIsCompared) {
    EDABoard board;
    add(board, component("R1", "P", 1.0));
    EXPECT_EQ(add(board, component("R1", "P", 2.0)), "R1-1");
    EXPECT_EQ(add(board, component("R1", "P", 2.0)), "R1-2");
    EXPECT_EQ(board.numComponents(), 3u);
    // One that already bears the new name is compared with that one.
    EXPECT_EQ(add(board, component("R1-1", "P", 2.0)), "R1-1");
    EXPECT_EQ(board.numComponents(), 3u);
    EXPECT_EQ(add(board, component("R1-1", "P", 3.0)), "R1-1-1");
}

TEST(EDABoardAddComponent, AnotherPartNumberIsAnotherComponent) {
    EDABoard board;
    add(board, component("R1", "P", 1.0));
    EXPECT_EQ(add(board, component("R1", "Q", 2.0)), "R1");
    EXPECT_EQ(add(board, component("R1", "p", 2.0)), "R1");
    EXPECT_EQ(board.numComponents(), 3u);
    // The count belongs to the name, whatever the part number.
    EXPECT_EQ(add(board, component("R1", "P", 5.0)), "R1-1");
    EXPECT_EQ(add(board, component("R1", "Q", 5.0)), "R1-2");
}

TEST(EDABoardAddComponent, WithoutTheCheckAllAreStored) {
    EDABoard board;
    EXPECT_EQ(add(board, component("R1"), false), "R1");
    EXPECT_EQ(add(board, component("R1"), false), "R1");
    EXPECT_EQ(add(board, component("R1", "", 3.0), false), "R1");
    EXPECT_EQ(board.numComponents(), 3u);
}

TEST(EDABoardAddComponent, ACopiedBoardKeepsTheCounts) {
    EDABoard board;
    add(board, component("R1", "P", 1.0));
    add(board, component("R1", "P", 2.0));
    EDABoard copy(board), assigned;
    assigned = board;
    EXPECT_EQ(add(copy, component("R1", "P", 3.0)), "R1-2");
    EXPECT_EQ(add(assigned, component("R1", "P", 3.0)), "R1-2");
    EXPECT_EQ(add(board, component("R1", "P", 3.0)), "R1-2");
}

TEST(EDABoardAddComponentPlacement, AppendsACopy) {
    EDABoard board;
    auto placed = placement("A", "P", "U1");
    board.addComponentPlacement(placed);
    board.addComponentPlacement(placement("B"));
    EXPECT_EQ(board.numComponentPlacements(), 2u);
    EXPECT_EQ(std::as_const(board).beginPlacements()->getReferenceDesignator(), "U1");
    board.beginPlacements()->setReferenceDesignator("U2");
    EXPECT_EQ(placed.getReferenceDesignator(), "U1");
    EXPECT_EQ(board.beginPlacements()->getReferenceDesignator(), "U2");
    EXPECT_EQ(board.endPlacements() - board.beginPlacements(), 2);
}

TEST(EDABoardFindComponent, TakesNameAndPartNumberFirstThenTheNameAlone) {
    EDABoard board;
    add(board, component("A", "P"));
    add(board, component("A", "Q"));
    auto const first = std::as_const(board).beginComponents();
    EXPECT_EQ(board.findComponent(placement("A", "Q")), &*(first + 1));
    EXPECT_EQ(board.findComponent(placement("A", "P")), &*first);
    EXPECT_EQ(board.findComponent(placement("A", "X")), &*first);
    EXPECT_EQ(board.findComponent(placement("B", "P")), nullptr);
    EXPECT_EQ(board.findComponent(placement("a", "P")), nullptr);
    EXPECT_EQ(EDABoard().findComponent(placement("")), nullptr);
}

TEST(EDABoardFindComponent, DoesNotMixUpWhereNameEndsAndPartNumberBegins) {
    EDABoard board;
    add(board, component("ab", "c"));
    add(board, component("a", "bc"));
    EXPECT_EQ(board.findComponent(placement("a", "bc")), &*(board.beginComponents() + 1));
    EXPECT_EQ(board.findComponent(placement("abc", "")), nullptr);
}

TEST(EDABoardFindComponent, SeesComponentsAddedAndRenamedAfterASearch) {
    EDABoard board;
    add(board, component("A"));
    EXPECT_EQ(board.findComponent(placement("B")), nullptr);
    add(board, component("B"));
    add(board, component("C"));
    EXPECT_EQ(board.findComponent(placement("B")), &*(board.beginComponents() + 1));
    auto part = board.beginComponents();
    part->setName("C");
    EXPECT_EQ(board.findComponent(placement("C")), &*board.beginComponents());
    EXPECT_EQ(board.findComponent(placement("A")), nullptr);
    // Through an iterator that is older than the last search.
    part->setName("D");
    EXPECT_EQ(board.findComponent(placement("D")), &*board.beginComponents());
    (part + 1)->setPartNumber("7");
    EXPECT_EQ(board.findComponent(placement("B", "7")), &*(board.beginComponents() + 1));
    *(part + 1) = component("E");
    EXPECT_EQ(board.findComponent(placement("B", "7")), nullptr);
    EXPECT_EQ(board.findComponent(placement("E")), &*(board.beginComponents() + 1));
}

TEST(EDABoardFindComponent, SeesComponentsThatChangedPlaces) {
    EDABoard board;
    for (auto const *name : {"C", "B", "A"})
        add(board, component(name));
    EXPECT_EQ(board.findComponent(placement("A")), &*(board.beginComponents() + 2));
    std::sort(board.beginComponents(), board.endComponents(),
              [](auto const &a, auto const &b) { return a.getName() < b.getName(); });
    EXPECT_EQ(board.findComponent(placement("A")), &*board.beginComponents());
}

TEST(EDABoardFindComponent, ACopyFindsItsOwnComponents) {
    EDABoard board;
    add(board, component("A"));
    ASSERT_NE(board.findComponent(placement("A")), nullptr);
    EDABoard copy(board);
    EXPECT_EQ(copy.findComponent(placement("A")), &*copy.beginComponents());
    copy.beginComponents()->setName("B");
    EXPECT_EQ(copy.findComponent(placement("A")), nullptr);
    EXPECT_EQ(board.findComponent(placement("A")), &*board.beginComponents());
    board = copy;
    EXPECT_EQ(board.findComponent(placement("A")), nullptr);
    EXPECT_EQ(board.findComponent(placement("B")), &*board.beginComponents());
}

TEST(EDABoardFindComponentPlacements, GivesCopiesInOrderByNameAndPartNumber) {
    EDABoard board;
    board.addComponentPlacement(placement("A", "P", "U1"));
    board.addComponentPlacement(placement("A", "Q", "U2"));
    board.addComponentPlacement(placement("B", "P", "U3"));
    board.addComponentPlacement(placement("A", "P", "U4"));
    EXPECT_EQ(designators(board, component("A", "P")), "U1 U4 ");
    EXPECT_EQ(designators(board, component("A", "X")), "U1 U2 U4 ");
    EXPECT_EQ(designators(board, component("C", "P")), "");
}

TEST(EDABoardFindComponentPlacements, AListThatIsNotEmptySkipsTheFallback) {
    EDABoard board;
    board.addComponentPlacement(placement("A", "P", "U1"));
    std::vector<EDAComponentPlacement> found{placement("Z")};
    board.findComponentPlacements(component("A", "X"), found);
    EXPECT_EQ(found.size(), 1u);
    board.findComponentPlacements(component("A", "P"), found);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[1].getReferenceDesignator(), "U1");
}

TEST(EDABoardVisitComponentPlacements, SeesTheSameAndStopsWhenTold) {
    EDABoard board;
    board.addComponentPlacement(placement("A", "P", "U1"));
    board.addComponentPlacement(placement("A", "Q", "U2"));
    board.addComponentPlacement(placement("A", "P", "U4"));
    for (auto const *number : {"P", "Q", "X", ""}) {
        EXPECT_EQ(visited(board, component("A", number)), designators(board, component("A", number)));
    }
    EXPECT_EQ(visited(board, component("C", "P")), "");
    EXPECT_EQ(visited(board, component("A", "P"), "U1"), "U1 "); // No fallback after a stop.
    EXPECT_EQ(visited(board, component("A", "X"), "U2"), "U1 U2 ");
}

TEST(EDABoardFindComponentPlacements, SeesRenamedPlacements) {
    EDABoard board;
    board.addComponentPlacement(placement("A", "P", "U1"));
    EXPECT_EQ(designators(board, component("B", "P")), "");
    board.beginPlacements()->setName("B");
    EXPECT_EQ(designators(board, component("B", "P")), "U1 ");
    EXPECT_EQ(designators(board, component("A", "P")), "");
}

TEST(EDABoardParts, SearchesAgreeWithAPlainWalk) {
    unsigned const seed = 20232;
    RecordProperty("seed", static_cast<int>(seed));
    std::mt19937 random(seed);
    auto const text = [&] { return std::string(1, static_cast<char>('a' + random() % 6)); };
    EDABoard board;
    int found = 0;
    for (int step = 0; step < 3000; ++step) {
        switch (random() % 8) {
        case 0:
            add(board, component(text(), text(), random() % 3), random() % 2 == 0);
            break;
        case 1:
            board.addComponentPlacement(placement(text(), text(), std::to_string(step)));
            break;
        case 2:
            if (board.numComponents() != 0 && random() % 10 == 0)
                (board.beginComponents() + static_cast<int>(random() % board.numComponents()))
                    ->setName(text());
            break;
        case 3:
            if (random() % 100 == 0) board = EDABoard(board);
            break;
        default: {
            auto const name = text(), partNumber = text();
            auto const *part = board.findComponent(placement(name, partNumber));
            ASSERT_EQ(part, naiveFind(board, placement(name, partNumber)));
            found += part != nullptr;
            if (step % 10 == 0) {
                auto const wanted = component(name, partNumber);
                ASSERT_EQ(designators(board, wanted), naiveDesignators(board, wanted));
            }
        }
        }
    }
    EXPECT_GT(found, 500);
}

TEST(EDABoardParts, ManyAreAddedAndSearchedQuickly) {
    // A walk through all components for each would take minutes.
    EDABoard board;
    int const count = 100000;
    int found = 0;
    for (int i = 0; i < count; ++i)
        add(board, component("part" + std::to_string(i)));
    for (int i = 0; i < count; ++i)
        found += board.findComponent(placement("part" + std::to_string(i), "other")) != nullptr;
    EXPECT_EQ(found, count);
}

} // namespace
} // namespace EDA
