// Very many clear objects, and the plain rule that they follow.
#include "GerberHostileSupport.h"

using namespace TestSupport;
using namespace EDA::test;
using EDA::EDAOutline;
using EDA::GerberLimits;

namespace {

// 10,000 of these are a millimetre.
std::string at(int x, int y) { return "X" + std::to_string(x) + "Y" + std::to_string(y) + "D03*\n"; }

int numHoles(GerberBench &bench) {
    const auto traces = bench.traces();
    int count = 0;
    for (const EDA::EDATrace &trace : traces)
        count += trace.getOutline().numInternalOutlines();
    return count;
}

struct Flash {
    int code;
    int x, y;
    bool dark;
};

// Each clear flash becomes a hole in all before it that it meets, by a look at all.
std::vector<EDAOutline> plainly(const std::vector<Flash> &flashes, const std::vector<EDAOutline> &shapes) {
    std::vector<EDAOutline> conductors;
    for (const Flash &flash : flashes) {
        EDAOutline copy = shapes[static_cast<std::size_t>(flash.code - 20)];
        copy.moveBy(flash.x / 1e4, flash.y / 1e4);
        if (flash.dark) {
            conductors.push_back(copy);
            continue;
        }
        copy.setHole(true);
        for (EDAOutline &conductor : conductors)
            if (conductor.intersectsHole(copy)) conductor.addInternalOutline(copy);
    }
    return conductors;
}

std::string textOf(const std::vector<Flash> &flashes) {
    std::string text = "%ADD20R,20X20*%\n%ADD21C,1*%\n%ADD22P,3X200*%\n%ADD23R,0.5X0.5*%\n";
    for (const Flash &flash : flashes)
        text += std::string(flash.dark ? "%LPD*%\n" : "%LPC*%\n") + "D" + std::to_string(flash.code) + "*\n" +
                at(flash.x, flash.y);
    return text;
}

// The shapes of that text as they are read.
std::vector<EDAOutline> shapesOf() {
    std::vector<EDAOutline> shapes;
    for (int code = 20; code < 24; ++code) {
        GerberBench bench;
        EXPECT_TRUE(bench.readLayer(textOf({{code, 0, 0, true}})));
        shapes.push_back(bench.traces().at(0).getOutline());
    }
    return shapes;
}

} // namespace

TEST(GerberHostileClears, HolesGoWhereThePlainRuleSays) {
    const std::vector<EDAOutline> shapes = shapesOf();
    Random random(20261121);
    for (int times = 0; times < 10; ++times) {
        std::vector<Flash> flashes;
        for (int i = 0; i < 400; ++i) {
            const bool isDark = random.below(5) == 0;
            flashes.push_back({20 + (isDark ? random.below(4) : 1 + random.below(3)),
                               2000 * random.below(100), 2000 * random.below(100), isDark});
        }
        GerberBench bench;
        EXPECT_TRUE(bench.readLayer(textOf(flashes)));
        const std::vector<EDAOutline> expected = plainly(flashes, shapes);
        const auto traces = bench.traces();
        ASSERT_EQ(traces.size(), expected.size());
        for (std::size_t i = 0; i < traces.size(); ++i) {
            const EDAOutline &found = traces[i].getOutline();
            ASSERT_EQ(found.numInternalOutlines(), expected[i].numInternalOutlines()) << i;
            auto other = expected[i].beginInternalOutlines();
            for (auto each = found.beginInternalOutlines(); each != found.endInternalOutlines(); ++each)
                EXPECT_EQ(*each, *other++);
        }
    }
}

TEST(GerberHostileClears, FiftyThousandHolesInOneRectangleAreQuick) {
    const Clock clock;
    std::string text = "%ADD20R,300X300*%\nD20*\nX1250000Y1000000D03*\n%LPC*%\nD23*\n%ADD23C,0.5*%\nD23*\n";
    for (int x = 0; x < 250; ++x)
        for (int y = 0; y < 200; ++y)
            text += at(10000 * x, 10000 * y);
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(text));
    EXPECT_EQ(numHoles(bench), 50'000);
}

TEST(GerberHostileClears, FiftyThousandHolesInOnePlaceAreQuick) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(
        bench.readLayer("%ADD20R,90X90*%\nD20*\nX0Y0D03*\n%LPC*%\nD10*\n" + repeated("X0Y0D03*\n", 50'000)));
    EXPECT_EQ(numHoles(bench), 50'000);
}

TEST(GerberHostileClears, HolesInAnOutlineOfManyEdgesAreQuick) {
    const Clock clock;
    std::string text = "G36*\nX0Y0D02*\n";
    for (int i = 0; i < 50'000; ++i)
        text += "X" + std::to_string(20 * i) + "Y-" + std::to_string(i % 2 + 1) + "D01*\n";
    text += "X1000000Y1000000D01*\nX0Y1000000D01*\nX0Y0D01*\nG37*\n%LPC*%\nD11*\n";
    for (int x = 2; x < 100; ++x)
        for (int y = 2; y < 100; ++y)
            text += at(10000 * x, 10000 * y);
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(text));
    EXPECT_GT(numHoles(bench), 9000);
}

TEST(GerberHostileClears, AHoleOfManyEdgesOverManyFlashesIsQuick) {
    const Clock clock;
    std::string text = "D11*\n";
    for (int x = 0; x < 200; ++x)
        for (int y = 0; y < 200; ++y)
            text += at(50000 * x, 50000 * y);
    text += "%LPC*%\nG36*\nX0Y0D02*\n";
    for (int i = 0; i < 50'000; ++i)
        text += "X" + std::to_string(200 * i) + "Y" + std::to_string(i % 2 == 0 ? 25000 : 9975000) + "D01*\n";
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(text + "G37*\n"));
    EXPECT_EQ(bench.traces().size(), 40'000U);
}

TEST(GerberHostileClears, TestsBeyondTheLimitAreNotMade) {
    GerberLimits limits;
    limits.clearTests = 1000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("%ADD20R,90X90*%\nD20*\n" + repeated("X0Y0D03*\n", 100) + "%LPC*%\nD10*\n" +
                                repeated("X0Y0D03*\n", 100)));
    EXPECT_EQ(bench.traces().size(), 100U);
    EXPECT_LT(numHoles(bench), 2000);
    EXPECT_EQ(bench.reader.getError(), "Clear objects beyond 1000 tests of what they touch are left out.\n");
}

TEST(GerberHostileClears, AHundredThousandFlashesInOnePlaceMergeQuickly) {
    const Clock clock;
    GerberBench bench;
    bench.reader.setMergeConductors(true);
    EXPECT_TRUE(bench.readLayer("D11*\n" + repeated("X0Y0D03*\n", 100'000)));
    ASSERT_EQ(bench.traces().size(), 1U);
    EXPECT_NEAR(bench.traces()[0].getOutline().getArea(), 2.0, 1e-9);
}

TEST(GerberHostileClears, ContoursInContoursGetNoMoreHolesThanTheLimitOfPoints) {
    const Clock clock;
    // Squares in squares, hung together by cut-ins: each second one is solid and gets all holes within.
    constexpr int depth = 400;
    std::string text = "G36*\nX0Y0D02*\n";
    for (int i = 0; i < depth; ++i) {
        const std::string low = std::to_string(100 * i), high = std::to_string(100000 - 100 * i);
        text += "X" + low + "Y" + low + "D01*\nX" + high + "D01*\nY" + high + "D01*\nX" + low + "D01*\nY" +
                low + "D01*\n";
    }
    for (int i = depth - 1; i >= 0; --i)
        text += "X" + std::to_string(100 * i) + "Y" + std::to_string(100 * i) + "D01*\n";
    GerberLimits limits;
    limits.points = 20'000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer(text + "G37*\n"));
    EXPECT_LT(numHoles(bench), 5000);
    EXPECT_NE(bench.reader.getError().find("or 20000 points"), std::string::npos);
}
