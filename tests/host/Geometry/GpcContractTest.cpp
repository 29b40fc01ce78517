// Memory and refusals of the array interface of clipping.
#include "host/Geometry/GpcContract.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace Geometry;

namespace {

using Corners = std::vector<std::pair<double, double>>;

// Owns a polygon of the array interface.
class Owned {
public:
    Owned() = default;
    explicit Owned(std::vector<Corners> const &contours) {
        gpc_allocate_contours(&polygon, static_cast<int>(contours.size()));
        for (std::size_t i = 0; i < contours.size(); ++i) {
            gpc_vertex *vertex =
                gpc_allocate_vertices(&polygon.contour[i], static_cast<int>(contours[i].size()));
            for (auto const &corner : contours[i])
                *vertex++ = {corner.first, corner.second};
        }
    }
    ~Owned() { gpc_free_polygon(&polygon); }
    Owned(Owned const &) = delete;
    Owned &operator=(Owned const &) = delete;

    gpc_polygon polygon{};
};

Corners const unitSquare{{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}};

TEST(GpcContract, NumbersOfOperationsAreFixed) {
    EXPECT_EQ(static_cast<int>(GPC_DIFF), 0);
    EXPECT_EQ(static_cast<int>(GPC_INT), 1);
    EXPECT_EQ(static_cast<int>(GPC_XOR), 2);
    EXPECT_EQ(static_cast<int>(GPC_UNION), 3);
}

TEST(GpcContract, HoleFlagsOfTheInputAreNotRead) {
    Owned flagged({unitSquare}), empty, result;
    flagged.polygon.hole[0] = 1;
    gpc_polygon_clip(GPC_UNION, &flagged.polygon, &empty.polygon, &result.polygon);
    ASSERT_EQ(result.polygon.num_contours, 1);
    EXPECT_EQ(result.polygon.hole[0], 0);
}

TEST(GpcContract, InputsStayAsTheyAre) {
    Owned subject({unitSquare}), clip({{{0.5, 0.5}, {2.0, 0.5}, {2.0, 2.0}}}), result;
    gpc_polygon_clip(GPC_XOR, &subject.polygon, &clip.polygon, &result.polygon);
    ASSERT_EQ(subject.polygon.num_contours, 1);
    EXPECT_EQ(subject.polygon.contour[0].num_vertices, 4);
    EXPECT_EQ(clip.polygon.contour[0].vertex[1].x, 2.0);
}

TEST(GpcContract, FreeingTwiceIsHarmless) {
    gpc_polygon polygon{};
    gpc_allocate_contours(&polygon, 2);
    gpc_allocate_vertices(&polygon.contour[1], 3);
    gpc_free_polygon(&polygon);
    EXPECT_EQ(polygon.num_contours, 0);
    EXPECT_EQ(polygon.contour, nullptr);
    gpc_free_polygon(&polygon);
}

TEST(GpcContract, RoomForNothingIsEmpty) {
    gpc_polygon polygon{};
    gpc_allocate_contours(&polygon, -3);
    EXPECT_EQ(polygon.num_contours, 0);
    gpc_vertex_list contour{};
    EXPECT_EQ(gpc_allocate_vertices(&contour, 0), nullptr);
}

TEST(GpcContract, RefusesCoordinatesThatAreNotFinite) {
    double const bad[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity()};
    for (double number : bad) {
        Owned subject({unitSquare}), clip({{{0.0, 0.0}, {1.0, number}, {2.0, 2.0}}}), result;
        EXPECT_THROW(gpc_polygon_clip(GPC_UNION, &subject.polygon, &clip.polygon, &result.polygon),
                     std::invalid_argument);
        EXPECT_EQ(result.polygon.num_contours, 0);
        EXPECT_THROW(gpc_polygon_clip(GPC_UNION, &clip.polygon, &subject.polygon, &result.polygon),
                     std::invalid_argument);
    }
}

TEST(GpcContract, RefusesUnknownOperations) {
    Owned subject({unitSquare}), result;
    EXPECT_THROW(
        gpc_polygon_clip(static_cast<gpc_op>(4), &subject.polygon, &subject.polygon, &result.polygon),
        std::invalid_argument);
}

TEST(GpcContract, CombOfManyLongEdgesEndsInTime) {
    Corners comb;
    int const teeth = 50000;
    for (int i = 0; i < teeth; ++i) {
        comb.emplace_back(i, 0.0);
        comb.emplace_back(i + 0.5, 1e6);
    }
    comb.emplace_back(teeth, -1.0);
    comb.emplace_back(0.0, -1.0);
    Owned subject({comb}), empty, result;
    gpc_polygon_clip(GPC_UNION, &subject.polygon, &empty.polygon, &result.polygon);
    ASSERT_EQ(result.polygon.num_contours, 1);
    EXPECT_EQ(result.polygon.contour[0].num_vertices, 2 * teeth + 2);
}

TEST(GpcContract, HatchAtFortyFiveDegreesEndsInTime) {
    std::vector<Corners> bars;
    for (int i = 0; i < 10000; ++i)
        bars.push_back({{i, 0.0}, {i + 0.5, 0.0}, {i + 10000.5, 10000.0}, {i + 10000.0, 10000.0}});
    Owned subject(bars), empty, result;
    gpc_polygon_clip(GPC_UNION, &subject.polygon, &empty.polygon, &result.polygon);
    EXPECT_EQ(result.polygon.num_contours, 10000);
}

} // namespace
