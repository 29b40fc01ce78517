// Merging of vias and bumps: the search agrees with a plain walk, and stays quick.
#include "model/EDABoard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <type_traits>

namespace EDA {
namespace {

// The search as a plain walk, and the merging that follows from it.
template <typename Definition>
Definition *naiveFind(std::vector<Definition> &list, Definition const &wanted) {
    for (auto &each : list)
        if (wanted.isInstanceOf(each)) return &each;
    return nullptr;
}

template <typename Definition>
void naiveAdd(std::vector<Definition> &list, Definition const &added, bool merge) {
    if (auto *found = merge ? naiveFind(list, added) : nullptr)
        found->addInstance(added.getName(), added.getXCentre(), added.getYCentre());
    else
        list.push_back(added);
}

template <typename Definition, typename Iterator>
void expectSame(std::vector<Definition> const &expected, Iterator begin, Iterator end) {
    ASSERT_EQ(static_cast<std::size_t>(end - begin), expected.size());
    for (auto const &each : expected) {
        ASSERT_EQ(begin->getName(), each.getName());
        ASSERT_EQ(begin->numInstances(), each.numInstances());
        for (int i = 0; i < static_cast<int>(each.numInstances()); ++i)
            ASSERT_EQ(begin->getInstanceName(i), each.getInstanceName(i));
        ++begin;
    }
}

// A size near one of few values, off by multiples of a part of the tolerance.
double randomSize(std::mt19937 &random) {
    static double const bases[] = {0.3, 1.0, 0.0, 4100.0, 8191.9999999, 8192.0, 1e6, -0.3, 6e-12};
    double const base = bases[random() % (sizeof bases / sizeof *bases)];
    return base + (static_cast<int>(random() % 21) - 10) * 0.4e-12;
}

std::string randomText(std::mt19937 &random) { return random() % 6 == 0 ? "a" : "b"; }

EDAVia randomVia(std::mt19937 &random, int number) {
    EDAVia via;
    via.setName(std::to_string(number));
    via.setCentre(number, -number);
    via.setDiameter(random() % 100 == 0 ? std::nan("") : randomSize(random));
    if (random() % 4 == 0) via.setPlatingThickness(randomSize(random));
    if (random() % 4 == 0) via.setPlatingStyle(randomText(random));
    if (random() % 4 == 0) via.setHoleType(randomText(random));
    if (random() % 4 == 0) via.setLayers(randomText(random), randomText(random));
    if (random() % 4 == 0) via.setFillMaterial(randomText(random));
    if (random() % 8 == 0) via.setAssociatedPart("U1");
    if (random() % 8 == 0) via.getOutline().addPoint(0, 1.0, 1.0, 0.0);
    return via;
}

EDABump randomBump(std::mt19937 &random, int number) {
    EDABump bump;
    bump.setName(std::to_string(number));
    bump.setCentre(number, -number);
    bump.setMaxDiameter(randomSize(random));
    if (random() % 4 == 0) bump.setTopDiameter(randomSize(random));
    if (random() % 4 == 0) bump.setBottomDiameter(randomSize(random));
    if (random() % 4 == 0) bump.setHeight(randomSize(random));
    if (random() % 4 == 0) bump.setMaterial(randomText(random));
    if (random() % 4 == 0) bump.setGroup(randomText(random));
    if (random() % 4 == 0) bump.setLayer(randomText(random));
    return bump;
}

EDAVia viaOfDiameter(double diameter) {
    EDAVia via;
    via.setDiameter(diameter);
    return via;
}

TEST(EDABoardAddVia, MergesNameAndLocationIntoTheFirstMatch) {
    EDABoard board;
    auto via = viaOfDiameter(0.3);
    via.setName("V1");
    board.addVia(via, true);
    via.setName("V2");
    via.setCentre(3.0, 4.0);
    board.addVia(via, true);
    board.addVia(viaOfDiameter(0.5), true);
    EXPECT_EQ(board.numVias(0), 2u);
    EXPECT_EQ(board.numVias(1), 3u);
    EXPECT_EQ(board.numVias(-5), 3u);
    EXPECT_EQ(board.beginVias()->getName(), "V1");
    EXPECT_EQ(board.beginVias()->getInstanceName(0), "V2");
    EXPECT_EQ(board.beginVias()->getInstanceXCentre(0), 3.0);
    EXPECT_EQ(board.beginVias()->getInstanceYCentre(0), 4.0);
}

TEST(EDABoardAddVia, WithoutMergeAllAreStored) {
    EDABoard board;
    board.addVia(viaOfDiameter(0.3), false);
    board.addVia(viaOfDiameter(0.3), false);
    EXPECT_EQ(board.numVias(0), 2u);
    board.addVia(viaOfDiameter(0.3), true);
    EXPECT_EQ(board.numVias(0), 2u);
    EXPECT_EQ(board.beginVias()->numInstances(), 1u);
}

TEST(EDABoardAddVia, InstancesOfAMergedViaAreDropped) {
    EDABoard board;
    board.addVia(viaOfDiameter(0.3), true);
    auto via = viaOfDiameter(0.3);
    via.addInstance("own", 9.0, 9.0);
    board.addVia(via, true);
    EXPECT_EQ(board.numVias(1), 2u);
}

TEST(EDABoardAddVia, ShapedAndAssociatedViasAreNeverMerged) {
    EDABoard board;
    auto shaped = viaOfDiameter(0.3);
    shaped.getOutline().addPoint(0, 0.0, 0.0, 0.0);
    auto associated = viaOfDiameter(0.3);
    associated.setAssociatedPart("U1");
    for (auto const *via : {&shaped, &associated, &shaped, &associated}) {
        EXPECT_EQ(board.findViaDefinition(*via), nullptr);
        board.addVia(*via, true);
    }
    EXPECT_EQ(board.numVias(0), 4u);
}

TEST(EDABoardAddBump, MergesNameAndLocationIntoTheFirstMatch) {
    EDABoard board;
    EDABump bump;
    board.addBump(bump, true);
    bump.setName("B2");
    bump.setCentre(1.0, 2.0);
    board.addBump(bump, true);
    EXPECT_EQ(board.numBumps(0), 1u);
    EXPECT_EQ(board.numBumps(1), 2u);
    EXPECT_EQ(board.beginBumps()->getInstanceName(0), "B2");
    EXPECT_EQ(board.beginBumps()->getInstanceYCentre(0), 2.0);
    board.addBump(bump, false);
    EXPECT_EQ(board.numBumps(0), 2u);
    EXPECT_EQ(board.endBumps() - board.beginBumps(), 2);
    EXPECT_EQ(board.findBumpDefinition(bump), &*board.beginBumps());
}

TEST(EDABoardFindViaDefinition, TakesInstancesForAReader) {
    EDABoard board;
    board.addVia(viaOfDiameter(0.3), false);
    EXPECT_EQ(board.findViaDefinition(viaOfDiameter(0.4)), nullptr);
    auto *found = board.findViaDefinition(viaOfDiameter(0.3 + 1e-13));
    ASSERT_NE(found, nullptr);
    found->addInstance("", 1.0, 2.0);
    EXPECT_EQ(board.numVias(1), 2u);
}

TEST(DefinitionSearch, SeesADefinitionThatWasChangedThroughItsPointer) {
    EDABoard board;
    for (int i = 0; i < 20; ++i)
        board.addVia(viaOfDiameter(i), true);
    auto *via = board.findViaDefinition(viaOfDiameter(10.0));
    ASSERT_NE(via, nullptr);
    via->setDiameter(100.0);
    EXPECT_EQ(board.findViaDefinition(viaOfDiameter(10.0)), nullptr);
    EXPECT_EQ(board.findViaDefinition(viaOfDiameter(100.0)), via);
    via->setHoleType("VIA");
    EXPECT_EQ(board.findViaDefinition(viaOfDiameter(100.0)), nullptr);
    via->setHoleType("Other");
    via->getOutline().addPoint(0, 0.0, 0.0, 0.0);
    EXPECT_EQ(board.findViaDefinition(viaOfDiameter(100.0)), nullptr);
}

TEST(DefinitionSearch, SeesABumpThatWasChangedThroughItsReference) {
    EDAComponentPlacement placement;
    EDABump bump;
    for (int i = 1; i <= 20; ++i) {
        bump.setHeight(i);
        placement.addBump(bump, true);
    }
    ASSERT_EQ(placement.findBumpDefinition(bump), &placement.getBump(19));
    placement.getBump(4).setHeight(20.0);
    EXPECT_EQ(placement.findBumpDefinition(bump), &placement.getBump(4));
    auto copy = placement;
    EXPECT_EQ(copy.findBumpDefinition(bump), &copy.getBump(4));
}

TEST(DefinitionSearch, MergesViasAsAPlainWalkDoes) {
    unsigned const seed = 20233;
    RecordProperty("seed", static_cast<int>(seed));
    std::mt19937 random(seed);
    EDABoard board;
    std::vector<EDAVia> expected;
    for (int i = 0; i < 6000; ++i) {
        auto const via = randomVia(random, i);
        bool const merge = random() % 20 != 0;
        board.addVia(via, merge);
        naiveAdd(expected, via, merge);
        if (i % 1000 == 999) board = EDABoard(board);
    }
    EXPECT_GT(expected.size(), 500u);
    EXPECT_GT(board.numVias(1), board.numVias(0) + 500);
    expectSame(expected, board.beginVias(), board.endVias());
}

TEST(DefinitionSearch, MergesBumpsAsAPlainWalkDoes) {
    unsigned const seed = 20234;
    RecordProperty("seed", static_cast<int>(seed));
    std::mt19937 random(seed);
    EDABoard board;
    EDAComponentPlacement placement;
    std::vector<EDABump> expected;
    for (int i = 0; i < 4000; ++i) {
        auto const bump = randomBump(random, i);
        bool const merge = random() % 20 != 0;
        board.addBump(bump, merge);
        placement.addBump(bump, merge);
        naiveAdd(expected, bump, merge);
    }
    EXPECT_GT(board.numBumps(1), board.numBumps(0) + 500);
    expectSame(expected, board.beginBumps(), board.endBumps());
    expectSame(expected, placement.beginBumps(), placement.endBumps());
}

TEST(DefinitionSearch, StaysQuickWithManyDefinitions) {
    // Half of them belong to a part and can't match; a walk through all would take hours.
    EDABoard board;
    int const count = 100000;
    for (int i = 0; i < count; ++i) {
        auto via = viaOfDiameter(1.0 + i * 1e-6);
        if (i % 2 == 0) via.setAssociatedPart("U1");
        board.addVia(via, true);
        board.addVia(via, true);
    }
    EXPECT_EQ(board.numVias(0), static_cast<std::size_t>(count + count / 2));
    EXPECT_EQ(board.numVias(1), static_cast<std::size_t>(2 * count));
}

TEST(DefinitionSearch, StaysQuickWithManyEqualDefinitionsThatDoNotMatch) {
    EDABoard board;
    int const count = 50000;
    for (int i = 0; i < count; ++i)
        board.addVia(viaOfDiameter(1.0), false);
    int found = 0;
    for (int i = 0; i < count; ++i)
        found += board.findViaDefinition(viaOfDiameter(1.0 + 1.5e-12)) != nullptr;
    EXPECT_EQ(found, 0);
}

TEST(DefinitionSearch, GrowingAListMovesItsElements) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDAVia>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDABump>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDATrace>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDANet>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDABoardLayer>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDAComponent>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDAComponentPlacement>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDAKeepout>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDAWirebond>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EDABoard>);
}

TEST(DefinitionSearch, AMillionPlacementsAndViasStaySmall) {
    // Without texts and shapes of their own.
    EXPECT_LE(sizeof(EDAComponentPlacement), 400u);
    EXPECT_LE(sizeof(EDAVia), 700u);
}

} // namespace
} // namespace EDA
