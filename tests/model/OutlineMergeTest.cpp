// Merging the outlines of a layer that overlap.
#include "model/EDAOutlineMerge.h"
#include "model/OverlapSearch.h"
#include "support/CancelAfter.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

using namespace EDA;
using namespace EDA::test;
using ::testing::ElementsAre;

namespace {

EDAOutlineMerge setOf(std::initializer_list<char const *> outlines) {
    EDAOutlineMerge merge;
    for (char const *text : outlines)
        merge.addOutline(outline(text));
    return merge;
}

std::vector<double> areas(EDAOutlineMerge &merge) {
    std::vector<double> list;
    for (EDAOutline const &each : merge)
        list.push_back(each.getArea());
    return list;
}

// For each outline the lowest one that it hangs together with, by all pairs.
std::vector<std::size_t> naiveGroups(std::vector<EDAOutline> const &outlines) {
    std::vector<std::size_t> groups(outlines.size());
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[i] = i;
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        for (std::size_t j = i + 1; j < outlines.size(); ++j) {
            if (!outlines[i].intersectsHole(outlines[j]) && !outlines[j].intersectsHole(outlines[i]))
                continue;
            std::size_t const low = std::min(groups[i], groups[j]), high = std::max(groups[i], groups[j]);
            for (std::size_t &group : groups)
                if (group == high) group = low;
        }
    }
    return groups;
}

std::vector<std::size_t> indexedGroups(std::vector<EDAOutline> const &outlines) {
    OverlapMap map;
    OverlapSearch search(outlines);
    for (std::size_t i = 0; i < outlines.size(); ++i)
        search.addLater(i, map);
    map.sort(outlines.size());
    std::vector<std::size_t> groups(outlines.size());
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[i] = i;
    for (std::size_t const key : map.keys()) {
        map.forEachNeighbour(key, [&](std::size_t neighbour) {
            std::size_t const low = std::min(groups[key], groups[neighbour]);
            std::size_t const high = std::max(groups[key], groups[neighbour]);
            for (std::size_t &group : groups)
                if (group == high) group = low;
        });
    }
    return groups;
}

// So many crossings that it cannot be clipped, between x = 0 and x = 1.
EDAOutline scribble() {
    Random random(1);
    EDAOutline outline;
    for (int i = 0; i < 3200; ++i)
        outline.addPoint(0, i % 2, random.below(1000000) * 1e-6, 0.0);
    return outline;
}

} // namespace

TEST(OutlineMerge, TwoSquaresThatOverlapBecomeOne) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "1,1 3,1 3,3 1,3"});
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    EXPECT_THAT(areas(merge), ElementsAre(7.0));
}

TEST(OutlineMerge, TwoSquaresApartStayAndTheAnswerIsFalse) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "5,5 6,5 6,6 5,6"});
    EXPECT_FALSE(merge.mergeConductors(nullptr));
    EXPECT_THAT(areas(merge), ElementsAre(4.0, 1.0));
}

TEST(OutlineMerge, AChainBecomesOneThroughItsMiddle) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "3,0 5,0 5,2 3,2", "1,0 4,0 4,2 1,2"});
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    EXPECT_THAT(areas(merge), ElementsAre(10.0));
}

TEST(OutlineMerge, FourBarsAroundNothingHaveOneHole) {
    EDAOutlineMerge merge =
        setOf({"0,0 10,0 10,2 0,2", "0,8 10,8 10,10 0,10", "0,1 2,1 2,9 0,9", "8,1 10,1 10,9 8,9"});
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 1U);
    ASSERT_EQ(merge.begin()->numInternalOutlines(), 1);
    EXPECT_TRUE(merge.begin()->beginInternalOutlines()->isHole());
}

TEST(OutlineMerge, ASquareInTheHoleOfAnotherStaysApart) {
    EDAOutlineMerge merge;
    merge.addOutline(outline("0,0 10,0 10,10 0,10", "2,2 8,2 8,8 2,8"));
    merge.addOutline(outline("4,4 5,4 5,5 4,5"));
    EXPECT_FALSE(merge.mergeConductors(nullptr));
    EXPECT_EQ(merge.size(), 2U);
}

TEST(OutlineMerge, ASecondPieceGoesBehindTheOthers) {
    // The bar of the middle meets the frame by a vertex; the notch cuts the frame's copy in two.
    EDAOutlineMerge merge;
    EDAOutline cut = outline("0,0 10,0 10,2 0,2");
    cut.addInternalOutline(hole("4,-1 6,-1 6,3 4,3"));
    merge.addOutline(cut);
    merge.addOutline(outline("20,0 21,0 21,1 20,1"));
    merge.addOutline(outline("0.5,0.5 1,0.5 1,1 0.5,1"));
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    EXPECT_THAT(areas(merge), ElementsAre(8.0, 1.0, 8.0));
}

TEST(OutlineMerge, WhatWasMergedHasNoArcs) {
    EDAOutlineMerge merge = setOf({"0,0 1,0@360", "0.5,0 1.5,0@360"});
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 1U);
    EXPECT_EQ(merge.begin()->getPoints(false), merge.begin()->getPoints(true));
}

TEST(OutlineMerge, ASecondCallFindsNothingMore) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "1,1 3,1 3,3 1,3"});
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    EXPECT_FALSE(merge.mergeConductors(nullptr));
}

TEST(OutlineMerge, ACopyHasItsOwnOutlines) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "1,1 3,1 3,3 1,3"});
    EDAOutlineMerge copy = merge;
    EXPECT_TRUE(copy.mergeConductors(nullptr));
    EXPECT_EQ(merge.size(), 2U);
    EXPECT_EQ(copy.size(), 1U);
}

TEST(OutlineMerge, ClearRemovesAllOutlines) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2"});
    merge.clear();
    EXPECT_TRUE(merge.begin() == merge.end());
    EXPECT_FALSE(merge.mergeConductors(nullptr));
}

TEST(OutlineMerge, TheModelDimensionReachesTheFirstOfAGroupAlone) {
    EDAOutlineMerge merge = setOf({"0,0 10,0@360", "15,0 25,0@360"});
    merge.setModelDimension(1000.0);
    EDAOutline coarse = outline("0,0 10,0@360"), fine = coarse;
    fine.setModelDimension(1000.0);
    ASSERT_NE(fine.getPoints(true).size(), coarse.getPoints(true).size());
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    EDAOutline expected = fine;
    std::vector<EDAOutline> extra;
    expected.mergeOutline(outline("15,0 25,0@360"), extra);
    EXPECT_EQ(merge.begin()->numPoints(), expected.numPoints());
}

TEST(OutlineMerge, ProgressTellsBothSteps) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "1,1 3,1 3,3 1,3", "9,9 10,9 10,10 9,10"});
    TestSupport::RecordingProgress progress;
    EXPECT_TRUE(merge.mergeConductors(&progress));
    EXPECT_THAT(progress.texts, ElementsAre("Find Overlapping Conductors ...", "Merge Conductors ..."));
    EXPECT_THAT(progress.maxima, ElementsAre(3, 2));
    EXPECT_THAT(progress.values, ElementsAre(0, 1, 2, 1, 2)); // one for the outline, one for the group
    EXPECT_EQ(progress.starts, 2);
}

TEST(OutlineMerge, ACancelInTheSearchUsesWhatWasFound) {
    EDAOutlineMerge merge =
        setOf({"0,0 2,0 2,2 0,2", "1,1 3,1 3,3 1,3", "9,9 11,9 11,11 9,11", "10,10 12,10 12,12 10,12"});
    TestSupport::CancelAfter progress(0);
    EXPECT_TRUE(merge.mergeConductors(&progress));
    EXPECT_THAT(areas(merge), ElementsAre(7.0, 4.0, 4.0));
}

TEST(OutlineMerge, ACancelInTheUnionLosesWhatWasNotTaken) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "1,0 4,0 4,2 1,2", "3,0 6,0 6,2 3,2"});
    TestSupport::CancelAfter progress(3); // the polls of the search
    EXPECT_TRUE(merge.mergeConductors(&progress));
    EXPECT_THAT(areas(merge), ElementsAre(8.0));
}

TEST(OutlineMerge, AnOutlineThatIsNotFiniteStaysAsItIs) {
    EDAOutlineMerge merge = setOf({"0,0 2,0 2,2 0,2", "1,1 3,1 3,3 1,3"});
    EDAOutline bad = outline("0.5,0.5 1,0.5 1,1");
    bad.addPoint(0, std::numeric_limits<double>::quiet_NaN(), 1.0, 0.0);
    merge.addOutline(bad);
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 2U);
    EXPECT_EQ((merge.begin() + 1)->numPoints(), 4U);
}

TEST(OutlineMerge, AnOutlineThatIsNotFiniteTakesNoOtherOver) {
    EDAOutlineMerge merge;
    EDAOutline bad = outline("0.5,0.5 1,0.5 1,1");
    bad.addPoint(0, std::numeric_limits<double>::quiet_NaN(), 1.0, 0.0);
    merge.addOutline(bad);
    merge.addOutline(outline("0,0 2,0 2,2 0,2"));
    merge.addOutline(outline("1,1 3,1 3,3 1,3"));
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 2U);
    EXPECT_EQ(merge.begin()->numPoints(), 4U);
    EXPECT_EQ((merge.begin() + 1)->getArea(), 7.0);
}

TEST(OutlineMerge, AnOutlineThatCannotBeClippedStaysBehindTheOthers) {
    EDAOutlineMerge merge = setOf({"-0.5,0.1 0.5,0.1 0.5,0.9 -0.5,0.9", "-1,0.2 -0.2,0.2 -0.2,0.5 -1,0.5"});
    merge.addOutline(scribble());
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 2U);
    EXPECT_NEAR(merge.begin()->getArea(), 0.8 + 0.3 * 0.5, 1e-9);
    EXPECT_EQ((merge.begin() + 1)->numPoints(), 3200U);
}

TEST(OutlineMerge, AFirstOfItsGroupThatCannotBeClippedDoesNotKeepTheOthersApart) {
    EDAOutlineMerge merge;
    merge.addOutline(scribble());
    merge.addOutline(outline("-0.5,0.1 0.5,0.1 0.5,0.9 -0.5,0.9"));
    merge.addOutline(outline("9,9 10,9 10,10 9,10"));
    merge.addOutline(outline("-0.4,0.2 0.6,0.2 0.6,0.5 -0.4,0.5"));
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 3U);
    EXPECT_EQ(merge.begin()->numPoints(), 3200U);
    EXPECT_NEAR((merge.begin() + 1)->getArea(), 0.8 + 0.3 * 0.1, 1e-9);
    EXPECT_EQ((merge.begin() + 2)->getArea(), 1.0);
}

TEST(OutlineMerge, TwentyThousandOutlinesInOnePlaceAreNoSquareOfPairs) {
    EDAOutlineMerge merge;
    for (int i = 0; i < 20000; ++i) {
        EDAOutline each = outline("0,0 2,0 2,2 0,2");
        each.moveBy(1e-6 * i, 0.0);
        merge.addOutline(std::move(each));
    }
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 1U);
    EXPECT_NEAR(merge.begin()->getArea(), 2.0 * (2.0 + 0.019999), 1e-9);
}

TEST(OutlineMerge, AChainOfAHundredThousandIsNoDeepRecursion) {
    EDAOutlineMerge merge;
    for (int i = 0; i < 100000; ++i) {
        EDAOutline link;
        for (auto const &[x, y] : {std::pair{0.0, 0.0}, {1.5, 0.0}, {1.5, 1.0}, {0.0, 1.0}}) {
            link.addPoint(0, i + x, y, 0.0);
        }
        merge.addOutline(std::move(link));
    }
    EXPECT_TRUE(merge.mergeConductors(nullptr));
    ASSERT_EQ(merge.size(), 1U);
    EXPECT_NEAR(merge.begin()->getArea(), 100000.5, 1e-6);
}

TEST(OutlineMerge, TheIndexFindsTheGroupsThatAllPairsMake) {
    Random random(7);
    for (int round = 0; round < 20; ++round) {
        std::vector<EDAOutline> outlines;
        for (int i = 0; i < 150; ++i) {
            EDAOutline each = randomOutline(random, 3 + random.below(i % 10 == 0 ? 400 : 8), i % 3 == 0);
            if (random.below(4) == 0) {
                EDAOutline inner = each;
                inner.setHole(true);
                inner.rotate(10.0, 0.0, 0.0);
                each.addInternalOutline(inner);
            }
            outlines.push_back(each);
        }
        EXPECT_EQ(indexedGroups(outlines), naiveGroups(outlines)) << "round " << round;
    }
}

TEST(OutlineMerge, TheOrderOfTheOutlinesDoesNotMatterForTheArea) {
    Random random(11);
    for (int round = 0; round < 20; ++round) {
        std::vector<EDAOutline> outlines;
        for (int i = 0; i < 80; ++i)
            outlines.push_back(randomOutline(random, 3 + random.below(8), false));
        double total[2] = {0.0, 0.0};
        for (int turn = 0; turn < 2; ++turn) {
            EDAOutlineMerge merge;
            for (EDAOutline const &each : outlines)
                merge.addOutline(each);
            merge.mergeConductors(nullptr);
            for (EDAOutline const &each : merge) {
                total[turn] += each.getArea();
                for (auto in = each.beginInternalOutlines(); in != each.endInternalOutlines(); ++in)
                    total[turn] -= in->getArea();
            }
            std::reverse(outlines.begin(), outlines.end());
        }
        EXPECT_NEAR(total[0], total[1], 1e-9 * total[0]);
    }
}

TEST(OutlineMerge, DiagonalBarsAreGroupedAsAllPairsSay) {
    Random random(5);
    std::vector<EDAOutline> bars;
    for (int i = 0; i < 300; ++i) {
        int const x = random.below(400), y = random.below(400), length = 5 + random.below(100);
        int const slope = random.below(4) - 1; // of most, one is aslant by 45 degrees
        EDAOutline bar;
        bar.addPoint(0, x, y, 0.0);
        bar.addPoint(0, x + length, y + slope * length, 0.0);
        bar.addPoint(0, x + length, y + slope * length + 2.0, 0.0);
        bar.addPoint(0, x, y + 2.0, 0.0);
        bars.push_back(bar);
    }
    EXPECT_EQ(indexedGroups(bars), naiveGroups(bars));
}
