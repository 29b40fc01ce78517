// Merged layers cover what they covered before, point by point.
#include "GerberTestSupport.h"
#include "support/LayerSampler.h"

using namespace TestSupport;
using EDA::EDATrace;
using EDA::test::Random;

namespace {

constexpr std::size_t points = 10'000;

// Statements of a layer drawn by dice, in units of a hundredth of a millimetre.
class LayerDice {
public:
    LayerDice(unsigned seed, int size) : random_(seed), size_(size) {}

    std::string objects(int count, bool withClear) {
        std::string text;
        while (count-- > 0)
            text += object(withClear);
        return text;
    }

private:
    std::string place() {
        return "X" + std::to_string(random_.below(size_) * 100) + "Y" +
               std::to_string(random_.below(size_) * 100);
    }
    std::string aperture() { return "D" + std::to_string(10 + random_.below(8)) + "*\n"; }

    std::string object(bool withClear) {
        switch (random_.below(withClear ? 7 : 6)) {
        case 0:
        case 1:
            return aperture() + place() + "D03*\n";
        case 2:
        case 3:
            return aperture() + place() + "D02*\n" + place() + "D01*\n";
        case 4:
            return aperture() + place() + "D02*\nG03" + place() + "I" +
                   std::to_string(random_.below(30) * 1000) + "J" + std::to_string(random_.below(30) * 1000) +
                   "D01*\nG01X0Y0D02*\n";
        case 5:
            return region();
        default:
            return "%LPC*%\n" + aperture() + place() + "D03*\n" + region() + "%LPD*%\n";
        }
    }
    std::string region() {
        std::string text = "G36*\n" + place() + "D02*\n";
        for (int i = 2 + random_.below(6); i > 0; --i)
            text += place() + "D01*\n";
        return text + "G37*\n";
    }

    Random random_;
    int size_;
};

std::vector<EDATrace> tracesOf(const std::string &statements, bool merge) {
    GerberBench bench;
    bench.reader.setMergeConductors(merge);
    EXPECT_TRUE(bench.read(
        "%FSLAX24Y24*%\n%MOMM*%\n%AMTWO*1,1,$1,0,0*1,0,$2,0,0*21,1,0.5,0.5,2,0,30*%\n"
        "%ADD10C,0.5*%\n%ADD11R,3X1.5*%\n%ADD12C,4X2*%\n%ADD13R,4X4X1X2*%\n%ADD14O,1X3*%\n%ADD15P,3X5X10*%\n"
        "%ADD16TWO,2X1*%\n%ADD17C,1.2*%\nG75*\nG01*\nX0Y0D02*\n" +
        statements));
    return bench.traces();
}

void expectSameCover(const std::string &statements, unsigned seed) {
    const std::vector<EDATrace> before = tracesOf(statements, false), after = tracesOf(statements, true);
    const SampleResult result = compareCover(before, after, points, seed);
    EXPECT_LE(after.size(), before.size());
    EXPECT_GT(result.compared, points * 99 / 100);
    EXPECT_GT(result.inside, 0U);
    EXPECT_LT(result.inside, result.compared);
    const auto tell = [](const auto &list) {
        return list.empty() ? std::string()
                            : std::to_string(list[0].first) + ", " + std::to_string(list[0].second);
    };
    EXPECT_EQ(result.onlyBefore.size(), 0U) << tell(result.onlyBefore);
    EXPECT_EQ(result.onlyAfter.size(), 0U) << tell(result.onlyAfter);
}

} // namespace

TEST(GerberMerge, SparseLayersCoverTheSame) {
    for (unsigned seed = 1; seed <= 10; ++seed) {
        SCOPED_TRACE(seed);
        expectSameCover(LayerDice(seed, 5000).objects(300, false), seed);
    }
}

TEST(GerberMerge, CrowdedLayersCoverTheSame) {
    for (unsigned seed = 11; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        expectSameCover(LayerDice(seed, 1000).objects(60, false), seed);
    }
}

TEST(GerberMerge, LayersWithClearObjectsCoverTheSame) {
    for (unsigned seed = 21; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        expectSameCover(LayerDice(seed, 3000).objects(200, true), seed);
    }
}

TEST(GerberMerge, RepeatedObjectsCoverTheSame) {
    for (unsigned seed = 31; seed <= 34; ++seed) {
        SCOPED_TRACE(seed);
        expectSameCover("%SRX3Y4I11.0J7.5*%\n" + LayerDice(seed, 900).objects(12, false), seed);
    }
}

TEST(GerberMerge, ALatticeOfStrokesCoversTheSame) {
    std::string text = "D10*\n";
    for (int i = 0; i < 40; ++i) {
        const std::string at = std::to_string(i * 20000);
        text += "X" + at + "Y0D02*\nY780000D01*\nX0Y" + at + "D02*\nX780000D01*\n";
    }
    expectSameCover(text, 1);
}
