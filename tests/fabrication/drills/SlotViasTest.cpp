#include "DrillBench.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace EDA::Fabrication;

namespace {

constexpr double pi = 3.14159265358979;

std::vector<EDA::EDAVia> viasOf(std::string const &body, Geometry::Bound2D const &copper, Notes &notes) {
    return slotVias(readBody(body).data, "Top", "Bottom", 1, 1.0, copper, notes);
}

std::vector<EDA::EDAVia> viasOf(std::string const &body) {
    Notes notes;
    return viasOf(body, {}, notes);
}

double areaOf(EDA::EDAOutline const &outline) {
    const auto &points = outline.getPoints(true);
    double sum = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto &a = points[i], &b = points[(i + 1) % points.size()];
        sum += a.first * b.second - a.second * b.first;
    }
    return 0.5 * sum;
}

} // namespace

TEST(SlotVias, AStraightSlotIsAStadiumAboutItsCentre) {
    const auto vias = viasOf("T2\nX1000Y5000G85X4000Y5000\n");
    ASSERT_EQ(vias.size(), 1u);
    EDA::EDAVia const &via = vias[0];
    EXPECT_NEAR(via.getXCentre(), 2.5, 1e-9);
    EXPECT_NEAR(via.getYCentre(), 5.0, 1e-9);
    EXPECT_NEAR(via.getDiameter(), 1.0, 1e-9);
    EXPECT_EQ(via.getOutline().numPoints(), 5u);
    EXPECT_NEAR(areaOf(via.getOutline()), 3.0 + 0.25 * pi, 0.02);
    Geometry::Bound2D const bound = via.getOutline().getBound();
    EXPECT_NEAR(bound.getXLow(), -2.0, 0.01);
    EXPECT_NEAR(bound.getXHigh(), 2.0, 0.01);
    EXPECT_NEAR(bound.getYHigh(), 0.5, 0.01);
}

TEST(SlotVias, GoingThereAndBackIsTheSameStadium) {
    const auto vias = viasOf("T2\nG00X2500Y5000\nM15\nG01X1000\nX4000\nM16\n");
    ASSERT_EQ(vias.size(), 1u);
    EXPECT_NEAR(vias[0].getXCentre(), 2.5, 1e-9);
    EXPECT_EQ(vias[0].getOutline().numPoints(), 5u);
    EXPECT_NEAR(areaOf(vias[0].getOutline()), 3.0 + 0.25 * pi, 0.02);
}

TEST(SlotVias, ABentPathIsTheRegionThatTheToolPasses) {
    const auto vias = viasOf("T2\nG00X0Y0\nM15\nG01X4000\nY4000\nM16\n");
    ASSERT_EQ(vias.size(), 1u);
    EXPECT_NEAR(vias[0].getXCentre(), 2.0, 1e-9);
    EXPECT_NEAR(vias[0].getYCentre(), 2.0, 1e-9);
    // Two bars that share a corner, two half discs at the ends and a quarter of one around the bend.
    EXPECT_NEAR(areaOf(vias[0].getOutline()), 7.75 + 0.25 * pi + 0.0625 * pi, 0.03);
}

TEST(SlotVias, WhatAClosedPathCutsOutIsOfTheHole) {
    const auto vias = viasOf("T2\nG00X0Y0\nM15\nG01X10000\nY10000\nX0\nY0\nM16\n");
    ASSERT_EQ(vias.size(), 1u);
    EXPECT_NEAR(areaOf(vias[0].getOutline()), 121.0 - (1.0 - 0.25 * pi), 0.05);
    EXPECT_EQ(vias[0].getOutline().numInternalOutlines(), 0);
}

TEST(SlotVias, AnArcIsFollowed) {
    const auto vias = viasOf("T2\nG00X5000Y0\nM15\nG03X-5000Y0A5000\nM16\n");
    ASSERT_EQ(vias.size(), 1u);
    EXPECT_NEAR(areaOf(vias[0].getOutline()), 5.0 * pi + 0.25 * pi, 0.1);
}

TEST(SlotVias, NamesLayersPlatingAndScaleAreSet) {
    DrillData data = readBody("X0Y0G85X1000Y0\nX0Y5000G85X1000Y5000\n").data;
    data.tools[1].plated = true;
    Notes notes;
    const auto vias = slotVias(data, "Top", "In1", 7, 0.5, {}, notes);
    ASSERT_EQ(vias.size(), 2u);
    EXPECT_EQ(vias[0].getName(), "Slot7");
    EXPECT_EQ(vias[1].getName(), "Slot8");
    EXPECT_EQ(vias[0].getHoleType(), "VIA");
    EXPECT_TRUE(vias[0].isPlated());
    std::string from, to;
    vias[0].getLayers(from, to);
    EXPECT_EQ(from + to, "TopIn1");
    EXPECT_NEAR(vias[0].getDiameter(), 0.25, 1e-9);
    EXPECT_NEAR(vias[0].getXCentre(), 0.25, 1e-9);
}

TEST(SlotVias, ATangledPathGetsItsHull) {
    std::string body = "T2\nG00X0Y0\nM15\n";
    unsigned random = 1;
    for (int i = 0; i < 5000; ++i) {
        random = random * 1103515245u + 12345u;
        body += "G01X" + std::to_string(random / 65536u % 100000u);
        random = random * 1103515245u + 12345u;
        body += "Y" + std::to_string(random / 65536u % 100000u) + "\n";
    }
    Notes notes;
    const auto vias = viasOf(body + "M16\n", {}, notes);
    ASSERT_EQ(vias.size(), 1u);
    EXPECT_GT(areaOf(vias[0].getOutline()), 3500.0);
    EXPECT_LT(vias[0].getOutline().numPoints(), 200u);
    ASSERT_EQ(notes.list().size(), 1u);
    EXPECT_THAT(notes.list()[0].what, testing::HasSubstr("convex hull"));
}

TEST(SlotVias, APathAroundTheBoardIsNoHole) {
    Notes notes;
    // With its way in from outside.
    const std::string body =
        "T2\nG00X-5000Y-5000\nM15\nG01X-1000Y-1000\nX51000\nY31000\nX-1000\nY-1000\nM16\n"
        "G05\nX1000Y5000G85X4000Y5000\n";
    const auto vias = viasOf(body, {4.5, 4.5, 45.5, 25.5}, notes);
    ASSERT_EQ(vias.size(), 1u);
    EXPECT_EQ(vias[0].getName(), "Slot1");
    EXPECT_NEAR(vias[0].getXCentre(), 2.5, 1e-9);
    ASSERT_EQ(notes.list().size(), 1u);
    EXPECT_EQ(notes.list()[0].what, "routed paths around the board or a large part of it: no holes");
    EXPECT_EQ(notes.list()[0].count, 1u);
}

TEST(SlotVias, AClosedPathAroundASmallPartOfTheBoardIsAHole) {
    Notes notes;
    const auto vias = viasOf("T2\nG00X0Y0\nM15\nG01X10000\nY10000\nX0\nY0\nM16\n", {0, 0, 30, 30}, notes);
    EXPECT_EQ(vias.size(), 1u);
    EXPECT_TRUE(notes.list().empty());
}

TEST(SlotVias, ALongPathThatEnclosesNothingIsAHole) {
    Notes notes;
    // An angle along two sides of the board.
    const auto vias = viasOf("T2\nG00X0Y0\nM15\nG01X50000\nY30000\nM16\n", {0, 0, 50, 30}, notes);
    EXPECT_EQ(vias.size(), 1u);
    EXPECT_TRUE(notes.list().empty());
}
