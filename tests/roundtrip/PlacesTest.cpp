// Parts without any symmetry cover the same places of the board, generation after generation.
#include "Cover.h"

using namespace TestSupport;

namespace {

constexpr double width = 100.0, depth = 60.0;

struct Case {
    bool isPolygonBoard;
    double angle;
    const char *side;
};

class RoundTripOfPlace : public RoundTrip, public testing::WithParamInterface<Case> {
protected:
    void SetUp() override {
        std::vector<std::pair<double, double>> edge = {
            {10, 20}, {10 + width, 20}, {10 + width, 20 + depth}, {10, 20 + depth}};
        if (GetParam().isPolygonBoard) edge.insert(edge.begin() + 1, {50, 25});
        addEdge(edge);
        EDA::EDAComponent hook = component("HOOK", {{-1, -2}, {9, -2}, {9, 1}, {2, 1}, {2, 14}, {-1, 14}});
        EDA::EDAComponent brick = component("BRICK", {{1, 2}, {13, 2}, {13, 7}, {1, 7}});
        design.addComponent(hook, true);
        design.addComponent(brick, true);
        place("HOOK", "U1", 42.3, 51.9, GetParam().angle, GetParam().side);
        place("BRICK", "U2", 77.7, 48.1, GetParam().angle, GetParam().side);
    }
};

TEST_P(RoundTripOfPlace, StaysTheSame) {
    const Generation first = imported(design);
    const Generation second = imported(exported(first));
    const Generation third = imported(exported(second));
    for (const char *designator : {"U1", "U2"}) {
        SCOPED_TRACE(designator);
        const auto cover = coverOf(first, designator);
        EXPECT_GT(cover.size(), 300u);
        EXPECT_EQ(coverOf(second, designator), cover);
        EXPECT_EQ(coverOf(third, designator), cover);
    }
}

TEST_P(RoundTripOfPlace, IsTheSameTextFromTheSecondGenerationOn) {
    const Generation second = throughFiles(imported(design));
    EXPECT_EQ(throughFiles(second).text(), second.text());
}

std::vector<Case> cases() {
    std::vector<Case> result;
    for (const bool isPolygonBoard : {false, true})
        for (const double angle : {0.0, 30.0, 90.0, 212.5, 345.0})
            for (const char *side : {"TOP", "BOTTOM"})
                result.push_back({isPolygonBoard, angle, side});
    return result;
}

INSTANTIATE_TEST_SUITE_P(All, RoundTripOfPlace, testing::ValuesIn(cases()), [](const auto &test) {
    return std::string(test.param.isPolygonBoard ? "Polygon" : "Rectangle") +
           std::to_string(static_cast<int>(test.param.angle)) + test.param.side;
});

} // namespace
