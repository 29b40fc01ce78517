// Laws of the union of outlines, on seeded random ones.
#include "model/EDAOutlineMerge.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace EDA;
using namespace EDA::test;

namespace {

constexpr int rounds = 100;

double areaOf(EDAOutline const &outline) {
    double area = outline.getArea();
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        area += inner->isHole() ? -inner->getArea() : inner->getArea();
    return area;
}

double areaOf(std::vector<EDAOutline> const &outlines) {
    double area = 0.0;
    for (EDAOutline const &each : outlines)
        area += areaOf(each);
    return area;
}

std::vector<EDAOutline> randomOutlines(Random &random, int count) {
    std::vector<EDAOutline> outlines;
    for (int i = 0; i < count; ++i)
        outlines.push_back(randomOutline(random, 3 + random.below(9), random.below(2) == 0));
    return outlines;
}

// The union of all, whether they overlap or not, as its pieces.
std::vector<EDAOutline> unionOf(std::vector<EDAOutline> outlines) {
    std::vector<EDAOutline> pieces;
    std::vector<EDAOutline *> others;
    for (std::size_t i = 1; i < outlines.size(); ++i)
        others.push_back(&outlines[i]);
    std::size_t count = 0;
    EXPECT_TRUE(outlines[0].mergeOutlines(others, pieces, nullptr, count));
    pieces.insert(pieces.begin(), outlines[0]);
    return pieces;
}

std::vector<EDAOutline> merged(std::vector<EDAOutline> const &outlines) {
    EDAOutlineMerge merge;
    for (EDAOutline const &each : outlines)
        merge.addOutline(each);
    merge.mergeConductors(nullptr);
    return {merge.begin(), merge.end()};
}

// What one outline encloses, with crossings of its own edges resolved.
double materialArea(EDAOutline const &outline) { return areaOf(unionOf({outline})); }

void shuffle(std::vector<EDAOutline> &outlines, Random &random) {
    for (int i = static_cast<int>(outlines.size()) - 1; i > 0; --i)
        std::swap(outlines[static_cast<std::size_t>(i)],
                  outlines[static_cast<std::size_t>(random.below(i + 1))]);
}

} // namespace

TEST(OutlineUnionLaws, TheAreaIsNeverAboveTheSumNorBelowTheLargest) {
    Random random(1);
    for (int round = 0; round < rounds; ++round) {
        auto const outlines = randomOutlines(random, 2 + random.below(30));
        double sum = 0.0, largest = 0.0;
        for (EDAOutline const &each : outlines) {
            sum += materialArea(each);
            largest = std::max(largest, materialArea(each));
        }
        double const area = areaOf(unionOf(outlines));
        EXPECT_LE(area, sum * (1 + 1e-9)) << "round " << round;
        EXPECT_GE(area, largest * (1 - 1e-9)) << "round " << round;
    }
}

TEST(OutlineUnionLaws, TheOrderDoesNotMatter) {
    Random random(2);
    for (int round = 0; round < rounds; ++round) {
        auto outlines = randomOutlines(random, 2 + random.below(30));
        auto const first = unionOf(outlines);
        shuffle(outlines, random);
        auto const second = unionOf(outlines);
        EXPECT_EQ(first.size(), second.size()) << "round " << round;
        EXPECT_NEAR(areaOf(first), areaOf(second), 1e-9 * areaOf(first)) << "round " << round;
    }
}

TEST(OutlineUnionLaws, OneAfterTheOtherIsAsAllAtOnce) {
    Random random(3);
    for (int round = 0; round < rounds; ++round) {
        auto const outlines = randomOutlines(random, 2 + random.below(8));
        std::vector<EDAOutline> pieces{outlines[0]};
        for (std::size_t i = 1; i < outlines.size(); ++i) {
            pieces.push_back(outlines[i]);
            pieces = unionOf(pieces);
        }
        double const area = areaOf(unionOf(outlines));
        EXPECT_NEAR(areaOf(pieces), area, 1e-9 * area) << "round " << round;
    }
}

TEST(OutlineUnionLaws, AUnionWithItselfIsItself) {
    Random random(4);
    for (int round = 0; round < rounds; ++round) {
        auto const once = unionOf(randomOutlines(random, 2 + random.below(20)));
        auto twice = once;
        twice.insert(twice.end(), once.begin(), once.end());
        auto const again = unionOf(twice);
        EXPECT_EQ(again.size(), once.size()) << "round " << round;
        EXPECT_NEAR(areaOf(again), areaOf(once), 1e-9 * areaOf(once)) << "round " << round;
    }
}

TEST(OutlineUnionLaws, AResultUnitedAgainIsTheSameToTheBit) {
    Random random(5);
    for (int round = 0; round < rounds; ++round) {
        auto const once = unionOf(randomOutlines(random, 2 + random.below(20)));
        auto const again = unionOf(once);
        ASSERT_EQ(again.size(), once.size()) << "round " << round;
        for (std::size_t i = 0; i < once.size(); ++i)
            EXPECT_EQ(storedPoints(again[i]), storedPoints(once[i])) << "round " << round << " piece " << i;
    }
}

TEST(OutlineUnionLaws, ThePiecesAreDisjoint) {
    Random random(6);
    for (int round = 0; round < rounds; ++round) {
        auto const pieces = unionOf(randomOutlines(random, 2 + random.below(30)));
        // Of two that overlapped, the union would be smaller than their sum.
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            for (std::size_t j = i + 1; j < pieces.size(); ++j) {
                double const sum = areaOf(pieces[i]) + areaOf(pieces[j]);
                EXPECT_NEAR(areaOf(unionOf({pieces[i], pieces[j]})), sum, 1e-9 * sum) << "round " << round;
            }
        }
    }
}

TEST(OutlineUnionLaws, DisjointOutlinesKeepTheirAreas) {
    Random random(7);
    for (int round = 0; round < rounds; ++round) {
        auto outlines = randomOutlines(random, 2 + random.below(20));
        double sum = 0.0;
        for (std::size_t i = 0; i < outlines.size(); ++i) {
            outlines[i].moveBy(static_cast<double>(i) * 1000, 0.0);
            sum += materialArea(outlines[i]);
        }
        EXPECT_NEAR(areaOf(unionOf(outlines)), sum, 1e-9 * sum) << "round " << round;
    }
}

TEST(OutlineUnionLaws, MergingASetNeverAddsAreaAndASecondMergeChangesNothing) {
    Random random(8);
    for (int round = 0; round < rounds; ++round) {
        auto const outlines = randomOutlines(random, 2 + random.below(60));
        double sum = 0.0;
        for (EDAOutline const &each : outlines)
            sum += materialArea(each);
        auto const once = merged(outlines);
        EXPECT_LE(once.size(), outlines.size() * 4) << "round " << round;
        EXPECT_LE(areaOf(unionOf(once)), sum * (1 + 1e-9)) << "round " << round;
        EXPECT_NEAR(areaOf(unionOf(once)), areaOf(unionOf(outlines)), 1e-9 * sum) << "round " << round;
    }
}
