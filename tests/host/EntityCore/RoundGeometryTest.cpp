// Containment in an upright cylinder.
#include "host/EntityCore/RoundGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using EntityGUI::RoundGeometry;
using Geometry::Transform;

struct Answer {
    bool inside;
    bool onSurface;
};

Answer ask(RoundGeometry const &cylinder, double x, double y, double z, double tolerance = 1e-6) {
    bool onSurface = false;
    bool const inside = cylinder.contains(x, y, z, onSurface, tolerance);
    return {inside, onSurface};
}

TEST(RoundGeometry, InnerPointIsInsideAndNotOnTheSurface) {
    RoundGeometry const cylinder(2.0, 5.0, Transform());
    Answer const answer = ask(cylinder, 1.0, 2.5, 0.5);
    EXPECT_TRUE(answer.inside);
    EXPECT_FALSE(answer.onSurface);
}

TEST(RoundGeometry, MantleAndFacesAreSurfaceAndInside) {
    RoundGeometry const cylinder(2.0, 5.0, Transform());
    for (Answer const &answer : {ask(cylinder, 2.0, 1.0, 0.0, 0.0), ask(cylinder, 0.0, 5.0, 1.0, 0.0),
                                 ask(cylinder, 0.0, 0.0, 0.0, 0.0)}) {
        EXPECT_TRUE(answer.inside);
        EXPECT_TRUE(answer.onSurface);
    }
}

TEST(RoundGeometry, CornerOfTheBoxIsOutside) {
    RoundGeometry const cylinder(2.0, 5.0, Transform());
    EXPECT_FALSE(ask(cylinder, 1.9, 1.0, 1.9).inside);
}

TEST(RoundGeometry, ToleranceIsTheDistanceToTheNearestPoint) {
    RoundGeometry const cylinder(2.0, 5.0, Transform());
    double const aside = 2.0 + 0.9, above = 5.0 + 0.9; // 1.27 from the rim
    EXPECT_FALSE(ask(cylinder, aside, above, 0.0, 1.2).inside);
    EXPECT_TRUE(ask(cylinder, aside, above, 0.0, 1.3).inside);
}

TEST(RoundGeometry, PointJustInsideIsOnTheSurfaceWithinTheTolerance) {
    RoundGeometry const cylinder(2.0, 5.0, Transform());
    EXPECT_TRUE(ask(cylinder, 1.9, 2.5, 0.0, 0.2).onSurface);
    EXPECT_FALSE(ask(cylinder, 1.9, 2.5, 0.0, 0.05).onSurface);
}

TEST(RoundGeometry, PointsAreGivenInTheRootFrame) {
    Transform const up = Transform::createTranslation(10.0, 20.0, 30.0);
    RoundGeometry const cylinder(2.0, 5.0, up);
    EXPECT_TRUE(ask(cylinder, 10.0, 22.0, 30.0).inside);
    EXPECT_FALSE(ask(cylinder, 0.0, 2.0, 0.0).inside);
    EXPECT_EQ(cylinder.getBound().getXLow(), -2.0);
    EXPECT_EQ(cylinder.getBound().getYHigh(), 5.0);
}

TEST(RoundGeometry, NoNumberIsNowhere) {
    RoundGeometry const cylinder(2.0, 5.0, Transform());
    Answer const answer = ask(cylinder, std::nan(""), 1.0, 0.0);
    EXPECT_FALSE(answer.inside);
    EXPECT_FALSE(answer.onSurface);
}

} // namespace
