// The first of many boxes that holds a point.
#include "import/BoxIndex.h"
#include "support/Outlines.h"

#include <gtest/gtest.h>

using EDA::BoxIndex;
using EDA::test::Random;

namespace {

const auto yes = [](int) { return true; };

} // namespace

TEST(BoxIndex, WithoutBoxesThereIsNone) { EXPECT_EQ(BoxIndex({}).findFirst(0, 0, yes), -1); }

TEST(BoxIndex, TheBorderCounts) {
    const BoxIndex index({{0, 0, 2, 1}});
    for (const auto &[x, z] : {std::pair{0.0, 0.0}, {2.0, 1.0}, {1.0, 0.5}})
        EXPECT_EQ(index.findFirst(x, z, yes), 0);
    for (const auto &[x, z] : {std::pair{-0.1, 0.5}, {2.1, 0.5}, {1.0, 1.1}, {1.0, std::nan("")}}) {
        EXPECT_EQ(index.findFirst(x, z, yes), -1);
    }
}

TEST(BoxIndex, AsksInTheOrderOfTheListUntilOneIsAccepted) {
    const BoxIndex index({{9, 9, 9, 9}, {0, 0, 5, 5}, {1, 1, 2, 2}, {0, 0, 3, 3}, {1, 1, 4, 4}});
    std::vector<int> asked;
    const int found = index.findFirst(1.5, 1.5, [&asked](int place) {
        asked.push_back(place);
        return place == 3;
    });
    EXPECT_EQ(found, 3);
    EXPECT_EQ(asked, (std::vector<int>{1, 2, 3}));
}

TEST(BoxIndex, FindsWhatALoopOverAllFinds) {
    Random random(11);
    for (int round = 0; round < 200; ++round) {
        std::vector<BoxIndex::Box> boxes(static_cast<size_t>(random.below(60)));
        for (auto &box : boxes) {
            box.xLow = random.below(20);
            box.zLow = random.below(20);
            box.xHigh = box.xLow + random.below(8);
            box.zHigh = box.zLow + random.below(8);
        }
        const BoxIndex index(boxes);
        for (int question = 0; question < 50; ++question) {
            const double x = random.below(28), z = random.below(28);
            const int modulus = 1 + random.below(4);
            const auto accept = [modulus](int place) { return place % modulus == 0; };
            int expected = -1;
            for (int i = 0; expected < 0 && i < static_cast<int>(boxes.size()); ++i) {
                if (boxes[static_cast<size_t>(i)].contains(x, z) && accept(i)) expected = i;
            }
            EXPECT_EQ(index.findFirst(x, z, accept), expected);
        }
    }
}

TEST(BoxIndex, BoxesOnOneAnotherCostNoMoreThanOne) {
    const BoxIndex index(std::vector<BoxIndex::Box>(100000, {0, 0, 1, 1}));
    int asked = 0;
    for (int i = 0; i < 100000; ++i) {
        EXPECT_EQ(index.findFirst(0.5, 0.5, [&asked](int) { return ++asked > 0; }), 0);
    }
    EXPECT_EQ(asked, 100000);
}
