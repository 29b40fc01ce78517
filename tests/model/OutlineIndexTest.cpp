// Indexes of large outlines: the same answers as the plain rules, in less time.
#include "model/OutlineIndex.h"
#include "model/Enclosure.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using namespace EDA;
using namespace EDA::test;

namespace {

Geometry::Bound2D randomBox(Random &random) {
    double const x = random.between(0.0, 100.0), y = random.between(0.0, 100.0);
    return {x, y, x + random.between(0.0, 10.0), y + random.between(0.0, 10.0)};
}

// About the size of a board, of some size, and moved to one of a few places, so that all kinds of nesting
// occur: apart, across, within, and the same again.
EDAOutline randomPart(Random &random, bool hole) {
    constexpr double places[] = {0.0, 3.0, -8.0, 20.0};
    Random shape(static_cast<unsigned>(random.below(12)));
    EDAOutline part = randomOutline(shape, 3 + 40 * random.below(8), false);
    part.moveBy(places[random.below(4)], places[random.below(4)]);
    part.setHole(hole);
    return part;
}

EDAOutline square(double x, double y, double size, bool hole) {
    EDAOutline result(hole);
    for (auto const &[dx, dy] : Points{{0, 0}, {1, 0}, {1, 1}, {0, 1}})
        result.addPoint(0, x + dx * size, y + dy * size, 0.0);
    return result;
}

} // namespace

TEST(GrowingBoundTree, FindsTheSameAsALookAtEachBox) {
    Random random(4711);
    GrowingBoundTree tree;
    std::vector<Geometry::Bound2D> boxes;
    for (int i = 0; i < 3000; ++i) {
        boxes.push_back(randomBox(random));
        tree.add(boxes.back());
        if (i % 10 != 0) continue;
        Geometry::Bound2D const wanted = randomBox(random);
        std::vector<std::size_t> found, expected;
        tree.search(wanted, 1e-9, [&](std::size_t number) { found.push_back(number); });
        std::sort(found.begin(), found.end());
        for (std::size_t k = 0; k < boxes.size(); ++k)
            if (boxes[k].overlaps(wanted, 1e-9)) expected.push_back(k);
        EXPECT_EQ(found, expected);
        auto const holds = [&](Geometry::Bound2D const &box) { return box.contains(wanted); };
        std::size_t asked = 0;
        EXPECT_FALSE(tree.any(holds, [&](std::size_t number) {
            EXPECT_TRUE(holds(boxes[number]));
            ++asked;
            return false;
        }));
        EXPECT_EQ(asked, static_cast<std::size_t>(std::count_if(boxes.begin(), boxes.end(), holds)));
        EXPECT_EQ(tree.any(holds, [](std::size_t) { return true; }), asked > 0);
    }
}

TEST(OutlineIndex, GivesTheAnswersOfThePlainRuleWhileHolesAreAdded) {
    Random random(20261121);
    int numTouched = 0, numMissed = 0;
    for (int times = 0; times < 30; ++times) {
        EDAOutline outline = randomPart(random, false);
        OutlineIndex index;
        for (int i = 0; i < 120; ++i) {
            EDAOutline const other = randomPart(random, true);
            OutlineIndex otherIndex;
            bool const isTouched = OutlineIndex::intersectsHole(outline, index, other, otherIndex);
            EXPECT_EQ(isTouched, outline.intersectsHole(other));
            EXPECT_EQ(OutlineIndex::overlap(outline, index, other, otherIndex), outline.overlaps(other));
            ++(isTouched ? numTouched : numMissed);
            if (isTouched) outline.addInternalOutline(other);
            if (i % 7 == 0) outline.addInternalOutline(randomPart(random, false)); // solid: no hole
        }
    }
    EXPECT_GT(numTouched, 200);
    EXPECT_GT(numMissed, 300);
}

TEST(OutlineIndex, AHoleOfManyEdgesHidesWhatItEncloses) {
    Random random(1);
    EDAOutline outline = square(-100, -100, 200, false);
    EDAOutline const wide = randomOutline(random, 500, false);
    outline.addInternalOutline(wide);
    outline.beginInternalOutlines()->setHole(true);
    OutlineIndex index;
    for (int i = 0; i < 500; ++i) {
        EDAOutline const small = square(random.between(-60, 60), random.between(-60, 60), 0.5, true);
        OutlineIndex smallIndex;
        EXPECT_EQ(OutlineIndex::intersectsHole(outline, index, small, smallIndex),
                  outline.intersectsHole(small));
    }
}

TEST(OutlineIndex, TheSameHoleAgainIsNoFurtherTest) {
    EDAOutline outline = square(0, 0, 10, false);
    for (int i = 0; i < 1000; ++i)
        outline.addInternalOutline(square(2, 2, 1, true));
    OutlineIndex index, otherIndex;
    EXPECT_TRUE(OutlineIndex::intersectsHole(outline, index, square(2, 2, 1, true), otherIndex));
    EXPECT_LE(index.numHoleTests(), 1U);
}

TEST(Enclosure, HolesGoToAllThatEncloseThemInTheirOrder) {
    Random random(99);
    for (int times = 0; times < 20; ++times) {
        std::vector<EDAOutline> outlines, holes;
        for (int i = 0; i < 20; ++i)
            outlines.push_back(randomPart(random, false));
        for (int i = 0; i < 60; ++i)
            holes.push_back(
                square(random.between(-60, 60), random.between(-60, 60), random.between(0, 4), true));
        std::vector<std::vector<EDAOutline>> expected(outlines.size());
        for (std::size_t i = 0; i < outlines.size(); ++i)
            for (EDAOutline const &hole : holes)
                if (outlines[i].enclosesOutline(hole)) expected[i].push_back(hole);
        giveEnclosedHoles(outlines, holes, [](EDAOutline const &) { return true; });
        for (std::size_t i = 0; i < outlines.size(); ++i) {
            EXPECT_EQ(std::vector<EDAOutline>(outlines[i].beginInternalOutlines(),
                                              outlines[i].endInternalOutlines()),
                      expected[i]);
        }
    }
}

TEST(Enclosure, HolesAreGivenAsLongAsTheyAreTaken) {
    std::vector<EDAOutline> outlines{square(0, 0, 10, false)};
    std::vector<EDAOutline> const holes(5, square(1, 1, 1, true));
    int left = 3;
    giveEnclosedHoles(outlines, holes, [&left](EDAOutline const &) { return left-- > 0; });
    EXPECT_EQ(outlines[0].numInternalOutlines(), 3);
}
