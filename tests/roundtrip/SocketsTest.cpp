// Chip sockets with what is plugged into them, generation after generation.
#include "Cover.h"

#include <cmath>

using namespace TestSupport;

namespace {

struct Case {
    bool isPolygonBoard;
    double angle; // of the socket
    const char *side;
};

// A socket XU1 with a part U1 without any symmetry in it.
class RoundTripOfSocket : public RoundTrip {
protected:
    void addBoard(const Case &row, double socketOffset, const std::string &pluggedType = "ELECTRICAL") {
        std::vector<std::pair<double, double>> edge = {{10, 20}, {110, 20}, {110, 80}, {10, 80}};
        if (row.isPolygonBoard) edge.insert(edge.begin() + 1, {50, 25});
        addEdge(edge);
        EDA::EDAComponent socket = component("SOCKET", {{-10, -6}, {10, -6}, {10, 6}, {-10, 6}});
        socket.addProperty("4ZETA_TYPE", "Chip Socket");
        design.addComponent(socket, true);
        EDA::EDAComponent hook(pluggedType);
        hook.setName("HOOK");
        hook.setPartNumber("P-HOOK");
        hook.setUnits("MM");
        hook.setHeight(2.0);
        hook.addProperty("4ZETA_TYPE", "Component");
        for (const auto &[x, y] : {std::pair{-1, -2}, {5, -2}, {5, 0}, {1, 0}, {1, 4}, {-1, 4}})
            hook.addPoint(0, x, y, 0.0);
        design.addComponent(hook, true);
        place("SOCKET", "XU1", 52.3, 51.9, row.angle, row.side);
        (design.endPlacements() - 1)->setOffset(socketOffset);
        place("HOOK", "U1", 51.1, 50.7, row.angle + 30, row.side);
        (design.endPlacements() - 1)->setOffset(2.0);
    }

    // The part that is plugged into the only socket.
    static Entity *plugged(const Generation &generation) {
        const std::vector<Entity *> sockets = generation.members(Chip_Sockets_t);
        EXPECT_EQ(sockets.size(), 1u);
        Entity *const part = sockets.empty() ? nullptr : getLinkedEntity(sockets.front(), ComponentLink_t);
        EXPECT_NE(part, nullptr);
        return part;
    }
    static double offsetOf(const Entity *part) { return getDoubleValue(part, Y_Location_t, "mm", -1.0); }
    static double bottomOf(const Generation &generation) {
        const Geometry::Part *const part = generation.parts->getPart(plugged(generation));
        return part ? part->getBound().getYLow() * 1e3 : std::nan("");
    }
};

class RoundTripOfPlug : public RoundTripOfSocket, public testing::WithParamInterface<Case> {};

TEST_P(RoundTripOfPlug, StaysTheSameInASocketOnTheBoard) {
    addBoard(GetParam(), 0.0);
    const Generation first = imported(design);
    const Generation second = imported(exported(first));
    const Generation third = imported(exported(second));
    for (const Generation *generation : {&first, &second, &third}) {
        EXPECT_EQ(plugged(*generation), generation->part("U1"));
        EXPECT_NEAR(offsetOf(plugged(*generation)), 2.0, 1e-9);
    }
    for (const char *designator : {"XU1", "U1"}) {
        SCOPED_TRACE(designator);
        const auto cover = coverOf(first, designator);
        EXPECT_GT(cover.size(), 100u);
        EXPECT_EQ(coverOf(second, designator), cover);
        EXPECT_EQ(coverOf(third, designator), cover);
    }
}

TEST_P(RoundTripOfPlug, IsTheSameTextFromTheSecondGenerationOn) {
    addBoard(GetParam(), 0.0);
    const Generation second = throughFiles(imported(design));
    plugged(second);
    EXPECT_EQ(throughFiles(second).text(), second.text());
}

// Known loss. Places and angles are made relative to the socket as they come in, heights are not: the export
// adds that of the socket each time, and so the part rises by it.
TEST_P(RoundTripOfPlug, RisesByTheOffsetOfItsSocketEachTime) {
    addBoard(GetParam(), 1.5);
    const Generation first = imported(design);
    const Generation second = imported(exported(first));
    const Generation third = imported(exported(second));
    EXPECT_NEAR(offsetOf(plugged(first)), 2.0, 1e-9);
    EXPECT_NEAR(offsetOf(plugged(second)), 3.5, 1e-9);
    EXPECT_NEAR(offsetOf(plugged(third)), 5.0, 1e-9);
    const double away = std::string(GetParam().side) == "TOP" ? 1.0 : -1.0;
    EXPECT_NEAR(bottomOf(second) - bottomOf(first), away * 1.5, 1e-9);
    EXPECT_NEAR(bottomOf(third) - bottomOf(second), away * 1.5, 1e-9);
    EXPECT_EQ(coverOf(third, "U1"), coverOf(first, "U1"));
    EXPECT_NEAR(offsetOf(third.members(Chip_Sockets_t).front()), 1.5, 1e-9);
}

std::vector<Case> cases() {
    std::vector<Case> result;
    for (const bool isPolygonBoard : {false, true})
        for (const double angle : {0.0, 90.0, 212.5, 345.0})
            for (const char *side : {"TOP", "BOTTOM"})
                result.push_back({isPolygonBoard, angle, side});
    return result;
}

INSTANTIATE_TEST_SUITE_P(All, RoundTripOfPlug, testing::ValuesIn(cases()), [](const auto &test) {
    return std::string(test.param.isPolygonBoard ? "Polygon" : "Rectangle") +
           std::to_string(static_cast<int>(test.param.angle)) + test.param.side;
});

// Known loss: what is plugged counts as electrical.
TEST_F(RoundTripOfSocket, AMechanicalPartInASocketComesBackElectrical) {
    addBoard({true, 0.0, "TOP"}, 0.0, "MECHANICAL");
    const Generation first = imported(design);
    EXPECT_EQ(getPreciceStringValue(plugged(first), Type_t, ""), "Mechanical");
    const EDA::EDABoard board = exported(first);
    ASSERT_EQ(board.numComponents(), 2u);
    EXPECT_EQ(board.beginComponents()[1].getName(), "HOOK");
    EXPECT_EQ(board.beginComponents()[1].getType(), "ELECTRICAL");
    EXPECT_EQ(getPreciceStringValue(plugged(throughFiles(first)), Type_t, ""), "Electrical");
}

} // namespace
