// Records that no design has.
#include "VelkinBench.h"

#include <chrono>
#include <cmath>
#include <limits>

using namespace VelkinTest;

namespace {

class VelkinHostile : public VelkinBench {
protected:
    bool readLayout() { return readDesign("board.brd"); }
    QvDbWrap::Layout &layout() { return script().layout; }
};

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

QvDbWrap::geomElem polygon(std::vector<QvDbWrap::_mFPOINT> points) {
    QvDbWrap::geomElem element;
    element.points = std::move(points);
    return element;
}

// Points on a circle.
std::vector<QvDbWrap::_mFPOINT> ring(int count, double radius, double x = 0, double y = 0) {
    std::vector<QvDbWrap::_mFPOINT> points;
    for (int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count;
        points.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
    }
    return points;
}

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

TEST_F(VelkinHostile, OddNumbersPassThroughEveryRecord) {
    const double numbers[] = {notANumber, infinite, -infinite, 1e308, -1e308, 1e-308, -0.0};
    for (const double odd : numbers) {
        SCOPED_TRACE(odd);
        layout() = layoutOf(R"(edge 0,0 4,0 4,3 0,3
            layer TOP type=0
            solid S 0,0 4,0 4,3 0,3 0,1 1,1 1,2 2,2 2,1 1,1 0,1
            hole H 1,1 2,1 2,2
            viamodel V kind=2
            viamodel W 0,0 1,0 1,1
            via v model=V
            via w model=W
            package P mold=1,1,1 0,0 4,0 4,3 0,3
            component U model=P layer=TOP
            bump B layer=TOP
            wire X
            path 0,0,0)");
        layout().outlines[0].elements[0].points[1].x = odd;
        layout().layers[0].zLow = odd;
        layout().layers[0].elements[0].points[2] = {odd, odd};
        layout().layers[0].elements[1].points[0].y = odd;
        layout().viaModels[0].shape.radius = odd;
        layout().viaModels[0].platingThickness = odd;
        layout().viaModels[1].shape.points[1] = {odd, 0};
        layout().vias[0].x = layout().vias[0].angle = odd;
        layout().componentModels[0].height = layout().componentModels[0].moldLength = odd;
        layout().componentModels[0].shape.points[3] = {odd, -odd};
        layout().components[0].coord = {odd, odd};
        layout().components[0].rotation = odd;
        layout().components[0].bumps[0].height = odd;
        layout().wirebonds[0].paths[0].points[0] = {odd, odd, odd};
        EXPECT_TRUE(readLayout());
        EXPECT_EQ(board().numVias(1), 2u);
        EXPECT_EQ(board().numComponentPlacements(), 1u);
        EXPECT_EQ(board().numWirebonds(), 1u);
    }
}

TEST_F(VelkinHostile, AnOutlineWithCutInsAndAPointThatIsNoPlaceStandsAsItIs) {
    layout() = layoutOf("edge 0,0 10,0 10,10 0,10 0,5 4,5 4,6 6,6 6,4 4,4 4,5 0,5");
    for (const double odd : {notANumber, infinite}) {
        layout().outlines[0].elements[0].points[2].x = odd;
        EXPECT_TRUE(readLayout());
        EXPECT_EQ(board().getOutline().numPoints(), 12u);
        EXPECT_EQ(board().getOutline().numInternalOutlines(), 0);
    }
}

TEST_F(VelkinHostile, CutInsOfLargeCoordinatesAreRepaired) {
    layout() = layoutOf("edge 0,0 10,0 10,10 0,10 0,5 4,5 4,6 6,6 6,4 4,4 4,5 0,5");
    for (QvDbWrap::_mFPOINT &point : layout().outlines[0].elements[0].points)
        point = {point.x * 1e60, point.y * 1e60};
    EXPECT_TRUE(readLayout());
    EXPECT_EQ(board().getOutline().numPoints(), 4u);
    EXPECT_EQ(board().getOutline().numInternalOutlines(), 1);
}

// Squares of their differences are beyond all numbers, so that all points seem to lie on one line.
TEST_F(VelkinHostile, OutlinesOfCoordinatesBeyondMeasureAreEmpty) {
    layout() = layoutOf("edge 0,0 10,0 10,10 0,10 0,5 4,5 4,6 6,6 6,4 4,4 4,5 0,5");
    for (QvDbWrap::_mFPOINT &point : layout().outlines[0].elements[0].points)
        point = {point.x * 1e300, point.y * 1e300};
    EXPECT_FALSE(readLayout());
    EXPECT_TRUE(board().getOutline().empty());
    EXPECT_EQ(error(), "No data read from the file.");
}

TEST_F(VelkinHostile, NamesMayBeOfAnyBytes) {
    layout() = layoutOf(
        "edge 0,0 4,0 4,3\nlayer A type=0\nsolid S 0,0 1,0 1,1\nvia v\ncomponent U\nwire W\npath 0,0,0");
    const std::string bytes("\0\xFF\n\xC3", 4);
    layout().layers[0].name = layout().layers[0].elements[0].netName = bytes;
    layout().vias[0].name = layout().vias[0].modelName = layout().components[0].compName = bytes;
    layout().wirebonds[0].name = bytes;
    EXPECT_TRUE(readLayout());
    EXPECT_EQ(board().getNthLayer(0).getNthNet(0).getName(), bytes);
}

TEST_F(VelkinHostile, AllRecordsMayBeEmpty) {
    using namespace QvDbWrap;
    layout() = {};
    layout().outlines.resize(3);
    layout().outlines[1].elements.resize(2);
    layout().layers.resize(2);
    layout().layers[0].elements.resize(2);
    layout().viaModels.resize(1);
    layout().vias.resize(1);
    layout().componentModels.resize(2);
    layout().components.resize(2);
    layout().components[0].bumps.resize(2);
    layout().wirebonds.resize(2);
    layout().wirebonds[0].paths.resize(2);
    EXPECT_TRUE(readLayout());
    EXPECT_EQ(board().numLayers(), 2u);
    EXPECT_EQ(board().numComponents(), 1u);
    EXPECT_EQ(board().numWirebonds(), 2u);
}

TEST_F(VelkinHostile, ManyCutOutsTakeLinearTime) {
    layout() = {};
    layout().outlines.resize(1);
    layout().outlines[0].elements.push_back(polygon(ring(20000, 1000)));
    for (int i = 0; i < 20000; ++i)
        layout().outlines[0].elements.push_back(polygon(ring(36, 0.5, 2.0 * (i % 200), 2.0 * (i / 200))));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(readLayout());
    EXPECT_LT(secondsSince(start), 10);
    EXPECT_EQ(board().getOutline().numInternalOutlines(), 20000);
}

TEST_F(VelkinHostile, CutOutsOfAnEdgeThatCannotBeRepairedTakeLinearTime) {
    layout() = {};
    layout().outlines.resize(1);
    std::vector<QvDbWrap::_mFPOINT> points = ring(20000, 1000);
    points.insert(points.end(), points.rbegin(), points.rend());
    points[7].x = notANumber;
    layout().outlines[0].elements.push_back(polygon(points));
    for (int i = 0; i < 20000; ++i)
        layout().outlines[0].elements.push_back(polygon(ring(12, 0.5, 2.0 * (i % 200), 2.0 * (i / 200))));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(readLayout());
    EXPECT_LT(secondsSince(start), 10);
    EXPECT_EQ(board().getOutline().numInternalOutlines(), 20000);
}

TEST_F(VelkinHostile, AConductorWithThousandsOfHolesOnSlitsIsRepairedInGoodTime) {
    // A comb of slits that come in from the left edge, each to a square hole.
    const int count = 5000;
    std::vector<QvDbWrap::_mFPOINT> points = {{0, -1}, {10, -1}, {10, count}, {0, count}};
    for (int i = count - 1; i >= 0; --i) {
        const double y = i;
        for (const QvDbWrap::_mFPOINT &point : {QvDbWrap::_mFPOINT{0, y},
                                                {4, y},
                                                {4, y + 0.3},
                                                {5, y + 0.3},
                                                {5, y - 0.3},
                                                {4, y - 0.3},
                                                {4, y},
                                                {0, y}})
            points.push_back(point);
    }
    layout() = layoutOf("layer A type=0");
    layout().layers[0].elements.push_back(polygon(points));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(readLayout());
    EXPECT_LT(secondsSince(start), 10);
    EXPECT_EQ(board().getNthLayer(0).beginTraces()->getOutline().numInternalOutlines(), count);
}

TEST_F(VelkinHostile, AConductorWithThousandsOfHolesThatTouchItsEdgeIsRepairedInGoodTime) {
    const int count = 20000;
    std::vector<QvDbWrap::_mFPOINT> points = {{0, 0}};
    for (int i = 0; i < count; ++i) {
        const double x = 10.0 * i + 5;
        for (const QvDbWrap::_mFPOINT &point :
             {QvDbWrap::_mFPOINT{x, 0}, {x - 1, 1}, {x, 2}, {x + 1, 1}, {x, 0}, {x + 3, -1}})
            points.push_back(point);
    }
    points.push_back({10.0 * count, 0});
    points.push_back({10.0 * count, 10});
    points.push_back({0, 10});
    layout() = layoutOf("layer A type=0");
    layout().layers[0].elements.push_back(polygon(points));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(readLayout());
    EXPECT_LT(secondsSince(start), 10);
    EXPECT_EQ(board().getNthLayer(0).beginTraces()->getOutline().numInternalOutlines(), count);
}

TEST_F(VelkinHostile, RingsInRingsDoNotMultiply) {
    // Each ring lies in the one before, and all are joined by a slit: every second ring is a hole.
    const int count = 2000;
    std::vector<QvDbWrap::_mFPOINT> points;
    for (int i = count; i > 0; --i) {
        const double half = i;
        for (const QvDbWrap::_mFPOINT &point : {QvDbWrap::_mFPOINT{half, 0},
                                                {half, half},
                                                {-half, half},
                                                {-half, -half},
                                                {half, -half},
                                                {half, 0}})
            points.push_back(point);
    }
    for (int i = 1; i <= count; ++i)
        points.push_back({static_cast<double>(i), 0});
    layout() = layoutOf("layer A type=0");
    layout().layers[0].elements.push_back(polygon(points));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(readLayout());
    EXPECT_LT(secondsSince(start), 20);
    std::size_t copies = 0;
    const EDA::EDAOutline &outline = board().getNthLayer(0).beginTraces()->getOutline();
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        copies += 1 + static_cast<std::size_t>(inner->numInternalOutlines());
    EXPECT_GE(copies, static_cast<std::size_t>(count - 1));
    EXPECT_LE(copies, static_cast<std::size_t>(count) * 65);
    EXPECT_THAT(warnings(), testing::HasSubstr("too many nested rings"));
}

TEST_F(VelkinHostile, ALongNameThatAllTracesShareIsNotCopiedForEver) {
    layout() = layoutOf("layer A type=0");
    layout().layers[0].conductorMaterial = std::string(1 << 20, 'x');
    for (int i = 0; i < 100; ++i)
        layout().layers[0].elements.push_back(polygon({{0, 0}, {9, 0}, {9, 9}}));
    EXPECT_TRUE(readLayout());
    const EDA::EDABoardLayer &layer = board().getNthLayer(0);
    EXPECT_EQ(layer.getConductorMaterial().size(), std::size_t{1} << 20);
    EXPECT_EQ(layer.beginTraces()[63].getOutline().getMaterial().size(), std::size_t{1} << 20);
    EXPECT_EQ(layer.beginTraces()[64].getOutline().getMaterial(), "");
    EXPECT_EQ(warnings(), "Warning: long names that many parts share were left out (36 times).\n");
}

TEST_F(VelkinHostile, LongNamesOfViasBumpsAndWiresAreNotCopiedForEver) {
    layout() = layoutOf(
        "edge 0,0 4,0 4,3\nviamodel V kind=2\nvia v model=V\ncomponent U\nbump B\nwire W\npath 0,0,0");
    const std::string name((64 << 20) + 1, 'x');
    layout().viaModels[0].fillMaterial = layout().components[0].compName = layout().wirebonds[0].name = name;
    EXPECT_TRUE(readLayout());
    EXPECT_EQ(board().beginVias()->getFillMaterial(), "");
    EXPECT_EQ(board().beginPlacements()->getReferenceDesignator().size(), name.size());
    EXPECT_EQ(board().beginPlacements()->getBump(0).getGroup(), "");
    EXPECT_EQ(board().beginWirebonds()->getName(), "");
    EXPECT_EQ(warnings(), "Warning: long names that many parts share were left out (3 times).\n");
}

TEST_F(VelkinHostile, ALargeShapeThatManyViasShareIsNotCopiedForEver) {
    layout() = layoutOf("edge 0,0 4,0 4,3\nviamodel V");
    layout().viaModels[0].shape.points = ring(100000, 1);
    for (int i = 0; i < 102; ++i)
        layout().vias.push_back({"v", "V", "", "", 0, 0, 0});
    EXPECT_TRUE(readLayout());
    ASSERT_EQ(board().numVias(0), 102u - 1); // the last is as the one before
    EXPECT_FALSE(board().beginVias()[99].getOutline().empty());
    EXPECT_TRUE(board().beginVias()[100].getOutline().empty());
    EXPECT_EQ(warnings(), "Warning: large shapes of vias were left out (2 times).\n");
}

TEST_F(VelkinHostile, BumpsFindTheirLayerAmongMany) {
    layout() = layoutOf("component U");
    layout().layers.resize(20000);
    for (std::size_t i = 0; i < layout().layers.size(); ++i)
        layout().layers[i].name = "layer with a name of some length " + std::to_string(i);
    layout().components[0].bumps.resize(20000);
    for (QvDbWrap::bumpData &bump : layout().components[0].bumps)
        bump.layerName = layout().layers.back().name;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(readLayout());
    EXPECT_LT(secondsSince(start), 10);
}

TEST_F(VelkinHostile, ManyNetsAndHolesTakeLinearTime) {
    layout() = layoutOf("layer A type=0");
    for (int i = 0; i < 100000; ++i) {
        layout().layers[0].elements.push_back(polygon({{0, 0}, {9, 0}, {9, 9}}));
        layout().layers[0].elements.back().netName = "net" + std::to_string(i * 7919 % 100000);
        layout().layers[0].elements.push_back(polygon({{3, 1}, {4, 1}, {4, 2}}));
        layout().layers[0].elements.back().role = QvDbWrap::geomElem::Hole;
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(readLayout());
    EXPECT_LT(secondsSince(start), 10);
    EXPECT_EQ(board().getNthLayer(0).numNets(), 100000u);
}
