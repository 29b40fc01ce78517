// The parts of the tool that make pictures: paths, outlines as paths, places of names.
#include "LabelPlace.h"
#include "OutlinePath.h"
#include "Path2D.h"
#include "Picture.h"
#include "Printable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace EDATool;
using EDA::EDAOutline;

void expectBox(const Box &box, double xLow, double yLow, double xHigh, double yHigh) {
    EXPECT_NEAR(box.low.x, xLow, 1e-9);
    EXPECT_NEAR(box.low.y, yLow, 1e-9);
    EXPECT_NEAR(box.high.x, xHigh, 1e-9);
    EXPECT_NEAR(box.high.y, yHigh, 1e-9);
}

Path arcFromOrigin(double x, double y, double angle) {
    EDAOutline outline;
    outline.addPoint(0, 0.0, 0.0, 0.0);
    outline.addPoint(0, x, y, angle);
    return pathOf(outline);
}

TEST(ToolOutlinePath, HalfTurnBulgesToItsSide) {
    expectBox(boundOf(arcFromOrigin(2, 0, 180)), 0, -1, 2, 0);
    expectBox(boundOf(arcFromOrigin(2, 0, -180)), 0, 0, 2, 1);
}

TEST(ToolOutlinePath, QuarterTurnHasItsCentreLeftOfTheChord) {
    const Path path = arcFromOrigin(1, 1, 90);
    ASSERT_EQ(path[1].kind, PathStep::Kind::Arc);
    EXPECT_NEAR(path[1].centre.x, 0, 1e-12);
    EXPECT_NEAR(path[1].centre.y, 1, 1e-12);
}

TEST(ToolOutlinePath, LargeArcGoesTheLongWay) { expectBox(boundOf(arcFromOrigin(1, 1, 270)), 0, -1, 2, 1); }

TEST(ToolOutlinePath, ArcsAgreeWithTheOutlinesOwnSegments) {
    for (const double angle : {-350.0, -270.0, -181.0, -90.0, -5.0, 5.0, 60.0, 179.0, 200.0, 355.0}) {
        EDAOutline outline;
        outline.addPoint(0, 1.0, 2.0, 0.0);
        outline.addPoint(0, 4.0, 6.0, angle);
        const Path path = pathOf(outline);
        ASSERT_EQ(path[1].kind, PathStep::Kind::Arc);
        const double radius = std::hypot(path[1].to.x - path[1].centre.x, path[1].to.y - path[1].centre.y);
        for (const auto &[x, y] : outline.getPoints(true)) {
            EXPECT_NEAR(std::hypot(x - path[1].centre.x, y - path[1].centre.y), radius, 1e-6 * radius)
                << angle;
        }
    }
}

TEST(ToolOutlinePath, CircleIsOneArc) {
    EDAOutline outline;
    outline.addPoint(0, 5.0, 5.0, 0.0);
    outline.addPoint(0, 7.0, 5.0, 360.0);
    const Path path = pathOf(outline);
    EXPECT_EQ(path.size(), 3u);
    expectBox(boundOf(path), 3, 3, 7, 7);
}

TEST(ToolOutlinePath, CentredArcKeepsItsSense) {
    for (const bool clockwise : {true, false}) {
        EDAOutline outline;
        outline.addPoint(0, 1.0, 0.0, 0.0);
        outline.addPoint(0, 0.0, 1.0, 0.0, 0.0, clockwise);
        EXPECT_NEAR(pathOf(outline)[1].sweep, clockwise ? -270.0 : 90.0, 1e-9);
    }
}

TEST(ToolOutlinePath, AnglesThatAreNoArcsAreLines) {
    for (const double angle : {-360.0, 1e300, 1e-9, 720.0}) {
        EXPECT_EQ(arcFromOrigin(1, 1, angle)[1].kind, PathStep::Kind::Line) << angle;
    }
}

TEST(ToolOutlinePath, PointsThatAreNotFiniteAreLeftOut) {
    EDAOutline outline;
    outline.addPoint(0, 0.0, 0.0, 0.0);
    outline.addPoint(0, NAN, 1.0, 0.0);
    outline.addPoint(0, 1.0, HUGE_VAL, 90.0);
    outline.addPoint(0, 1.0, 1.0, 0.0);
    expectBox(boundOf(pathOf(outline)), 0, 0, 1, 1);
}

TEST(ToolOutlinePath, EmptyOutlineIsAnEmptyPath) { EXPECT_TRUE(pathOf(EDAOutline()).empty()); }

TEST(ToolOutlinePath, HolesAreSubPaths) {
    EDAOutline outline;
    for (const auto &[x, y] : {std::pair(0.0, 0.0), {4.0, 0.0}, {4.0, 4.0}})
        outline.addPoint(0, x, y, 0.0);
    outline.addPoint(1, 3.0, 1.0, 0.0);
    outline.addPoint(1, 3.5, 1.0, 360.0);
    const Path path = pathWithHoles(outline);
    EXPECT_EQ(std::count_if(path.begin(), path.end(),
                            [](const PathStep &step) { return step.kind == PathStep::Kind::Move; }),
              2);
}

TEST(ToolPath, MirroringTurnsArcsRound) {
    const Path mirrored = Similarity::mirrorX().apply(arcFromOrigin(1, 1, 90));
    EXPECT_EQ(mirrored[1].sweep, -90.0);
    EXPECT_EQ(mirrored[1].to.x, -1.0);
}

TEST(ToolPath, TurnsByRightAnglesAreExact) {
    const Point point = Similarity::turn(-270).apply(Point{1.0, 0.0});
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 1.0);
}

TEST(ToolPath, ThenAppliesTheFirstFirst) {
    const Point point = then(Similarity::move(1, 0), Similarity::turn(90)).apply(Point{0.0, 0.0});
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 1.0);
}

TEST(ToolLabelPlace, ConvexShapeGivesItsWholeBox) {
    expectBox(roomForLabel(circlePath({5, 5}, 5)), 0, 0, 10, 10);
}

TEST(ToolLabelPlace, AngleGivesARoomInOneOfItsLimbs) {
    EDAOutline angle;
    for (const auto &[x, y] :
         {std::pair(0.0, 0.0), {12.0, 0.0}, {12.0, 2.0}, {2.0, 2.0}, {2.0, 8.0}, {0.0, 8.0}}) {
        angle.addPoint(0, x, y, 0.0);
    }
    expectBox(roomForLabel(pathOf(angle)), 0, 0, 12, 2);
}

TEST(ToolPicture, SvgWritesAFullCircleAsTwoHalves) {
    Picture picture(100, 100, Colour{255, 255, 255, 255});
    Style style;
    style.fill = Colour{0, 0, 0, 255};
    picture.add(circlePath({50, 50}, 10), style);
    EXPECT_THAT(toSvg(picture), testing::HasSubstr("M60 50A10 10 0 0 1 40 50A10 10 0 0 1 60 50Z"));
}

TEST(ToolPicture, SvgHoldsNumbersWithinReach) {
    Picture picture(100, 100, Colour());
    picture.add({{PathStep::Kind::Move, {1e300, NAN}, {}, 0}}, Style());
    EXPECT_THAT(toSvg(picture), testing::HasSubstr("M10000000 0\""));
}

TEST(ToolPrintable, ControlsAndDirectionMarksBecomeText) {
    EXPECT_EQ(printable("a\tb\x7f"), "a\\u{09}b\\u{7F}");
    EXPECT_EQ(printable("\u202e\u2066"), "\\u{202E}\\u{2066}");
    EXPECT_EQ(printable("\xff\xc3"), "\\xFF\\xC3");
    EXPECT_EQ(printable("\u00e9 \u4e2d \U0001f600"), "\u00e9 \u4e2d \U0001f600");
}

TEST(ToolPrintable, LongTextsEndInAnEllipsis) {
    EXPECT_EQ(shortened("abcdef", 6), "abcdef");
    EXPECT_EQ(shortened("abcdefg", 6), "abcde\u2026");
    EXPECT_EQ(countCharacters(shortened(std::string(1'000'000, '\x01'), 20)), 20u);
}

TEST(ToolPrintable, NumbersAreShort) {
    EXPECT_EQ(shortNumber(0.1), "0.1");
    EXPECT_EQ(shortNumber(-0.0), "0");
    EXPECT_EQ(shortNumber(1234567.0), "1.23457e+06");
}

} // namespace
