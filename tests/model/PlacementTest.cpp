// Placements: defaults, location, offset, angle, side, status, heatsink, bumps.
#include "host/Geometry/Transform.h"
#include "model/EDAComponentPlacement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace EDA {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

double storedAngle(double angle) {
    EDAComponentPlacement placement;
    placement.setAngle(angle);
    return placement.getAngle(false);
}

double bottomAngle(double angle) {
    EDAComponentPlacement placement;
    placement.setBoardSide("BOTTOM");
    placement.setAngle(angle);
    return placement.getAngle(true);
}

double orientedAngle(double xx, double xy, double yx, double yy) {
    EDAComponentPlacement placement;
    placement.setOrientation(xx, xy, yx, yy);
    EXPECT_EQ(placement.getAngle(true), placement.getAngle(false));
    return placement.getAngle(true);
}

double offsetAfter(std::string const &text) {
    EDAComponentPlacement placement;
    placement.setOffset(7.0);
    placement.setOffset(text);
    return placement.getOffset();
}

// Numbers as a host with decimal commas writes them.
class CommaDecimals : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
};

TEST(EDAComponentPlacement, StartsUnturnedOnTop) {
    EDAComponentPlacement const placement;
    EXPECT_EQ(placement.getName(), "");
    EXPECT_EQ(placement.getPartNumber(), "");
    EXPECT_EQ(placement.getReferenceDesignator(), "");
    EXPECT_EQ(placement.getXLocation(), 0.0);
    EXPECT_EQ(placement.getYLocation(), 0.0);
    EXPECT_EQ(placement.getOffset(), 0.0);
    EXPECT_EQ(placement.getAngle(false), 0.0);
    EXPECT_EQ(placement.getAngle(true), 0.0);
    EXPECT_EQ(placement.getBoardSide(), "");
    EXPECT_EQ(placement.getStatus(), "");
    double xx = 9.0, xy = 9.0, yx = 9.0, yy = 9.0;
    EXPECT_FALSE(placement.getOrientation(xx, xy, yx, yy));
    EXPECT_EQ(xx, 1.0);
    EXPECT_EQ(xy, 0.0);
    EXPECT_EQ(yx, 0.0);
    EXPECT_EQ(yy, 1.0);
    EXPECT_FALSE(placement.getHeatsink().has_value());
    EXPECT_EQ(placement.numBumps(0), 0u);
    EXPECT_FALSE(placement.hasBumps());
    EXPECT_TRUE(placement.beginBumps() == placement.endBumps());
    EXPECT_TRUE(std::has_virtual_destructor_v<EDAComponentPlacement>);
}

TEST(EDAComponentPlacement, KeepsWhatItIsGivenAndCopiesIt) {
    EDAComponentPlacement placement;
    placement.setName("QFP");
    placement.setPartNumber("P1");
    placement.setReferenceDesignator("U1");
    placement.setLocation(1.0, 2.0);
    placement.setOffset(0.5);
    placement.setAngle(45.0);
    placement.setBoardSide("Bottom");
    placement.setStatus("PLACED");
    placement.setOrientation(1.0, 2.0, 3.0, 4.0);
    placement.addBump(EDABump(), false);
    EDAComponentPlacement copy(placement);
    EDAComponentPlacement assigned;
    assigned = placement;
    for (auto const *each : {&copy, &assigned}) {
        EXPECT_EQ(each->getName(), "QFP");
        EXPECT_EQ(each->getPartNumber(), "P1");
        EXPECT_EQ(each->getReferenceDesignator(), "U1");
        EXPECT_EQ(each->getXLocation(), 1.0);
        EXPECT_EQ(each->getYLocation(), 2.0);
        EXPECT_EQ(each->getOffset(), 0.5);
        EXPECT_EQ(each->getBoardSide(), "Bottom");
        EXPECT_EQ(each->getStatus(), "PLACED");
        double xx = 0.0, xy = 0.0, yx = 0.0, yy = 0.0;
        EXPECT_TRUE(each->getOrientation(xx, xy, yx, yy));
        EXPECT_EQ(xx, 1.0);
        EXPECT_EQ(xy, 2.0);
        EXPECT_EQ(yx, 3.0);
        EXPECT_EQ(yy, 4.0);
        EXPECT_EQ(each->numBumps(0), 1u);
    }
}

TEST(EDAComponentPlacement, AnInfiniteLocationIsZeroAndNanStays) {
    EDAComponentPlacement placement;
    placement.setLocation(infinity, -infinity);
    EXPECT_EQ(placement.getXLocation(), 0.0);
    EXPECT_EQ(placement.getYLocation(), 0.0);
    placement.setLocation(std::nan(""), 3.0);
    EXPECT_TRUE(std::isnan(placement.getXLocation()));
    EXPECT_EQ(placement.getYLocation(), 3.0);
    placement.setLocation(1.0, -std::numeric_limits<double>::max());
    EXPECT_EQ(placement.getYLocation(), -std::numeric_limits<double>::max());
}

TEST(EDAComponentPlacementOffset, IsReadFromTextThatIsANumber) {
    EXPECT_EQ(offsetAfter("1.5"), 1.5);
    EXPECT_EQ(offsetAfter(" -2"), -2.0);
    EXPECT_EQ(offsetAfter("3e-1"), 0.3);
}

TEST(EDAComponentPlacementOffset, IsReadAlikeFromShortAndLongDecimals) {
    EXPECT_EQ(offsetAfter(".5"), 0.5);
    EXPECT_EQ(offsetAfter("5."), 5.0);
    EXPECT_EQ(offsetAfter("007.10"), 7.1);
    EXPECT_EQ(offsetAfter("0.1000000000000000000001"), 0.1);
    for (auto const *text : {".", "..5", "1.2.3", "1..", "0.10000000000000000.1"})
        EXPECT_EQ(offsetAfter(text), 7.0) << text;
}

TEST(EDAComponentPlacementOffset, StaysWhenTheTextIsMoreOrLessThanANumber) {
    for (auto const *text : {"1.5mm", "1.5 ", "", " ", "mm", "1,5", "1e400", "1.5\n"})
        EXPECT_EQ(offsetAfter(text), 7.0) << text;
    EXPECT_EQ(offsetAfter(std::string("1.5\0", 4)), 7.0);
}

TEST(EDAComponentPlacementOffset, IsReadTheSameInEveryLocale) {
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new CommaDecimals));
    double const plain = offsetAfter("1.5");
    double const withSign = offsetAfter("-1.5");
    double const withComma = offsetAfter("1,5");
    std::locale::global(before);
    EXPECT_EQ(plain, 1.5);
    EXPECT_EQ(withSign, -1.5);
    EXPECT_EQ(withComma, 7.0);
}

TEST(EDAComponentPlacementAngle, IsStoredNotNegative) {
    EXPECT_EQ(storedAngle(-90.0), 270.0);
    EXPECT_EQ(storedAngle(-450.0), 270.0);
    EXPECT_EQ(storedAngle(-360.0), 0.0);
    EXPECT_EQ(storedAngle(-3600.0), 0.0);
}

TEST(EDAComponentPlacementAngle, OfAWholeTurnOrMoreStays) {
    EXPECT_EQ(storedAngle(360.0), 360.0);
    EXPECT_EQ(storedAngle(450.0), 450.0);
}

TEST(EDAComponentPlacementAngle, FarBelowZeroEndsAtOnce) {
    EXPECT_EQ(storedAngle(-3600.0 - 90.0), 270.0);
    EXPECT_EQ(storedAngle(-3600000090.0), 270.0);
    EXPECT_EQ(storedAngle(-7200.0), 0.0);
    EXPECT_FALSE(std::signbit(storedAngle(-7200.0)));
    double const huge = storedAngle(-1e300);
    EXPECT_GE(huge, 0.0);
    EXPECT_LT(huge, 360.0);
    EXPECT_EQ(storedAngle(-infinity), 0.0);
    EXPECT_TRUE(std::isnan(storedAngle(std::nan(""))));
}

TEST(EDAComponentPlacementAngle, IsMirroredOnTheBottomWhenAsked) {
    EXPECT_EQ(bottomAngle(90.0), 270.0);
    EXPECT_EQ(bottomAngle(0.0), 0.0);
    EXPECT_EQ(bottomAngle(1e-6), 0.0);
    EXPECT_EQ(bottomAngle(2e-6), 360.0 - 2e-6);
    EXPECT_EQ(bottomAngle(360.0), 0.0);
    EXPECT_EQ(bottomAngle(450.0), -90.0);
}

TEST(EDAComponentPlacementAngle, IsTheStoredOneOtherwise) {
    EDAComponentPlacement placement;
    placement.setAngle(90.0);
    EXPECT_EQ(placement.getAngle(true), 90.0);
    placement.setBoardSide("BOTTOM");
    EXPECT_EQ(placement.getAngle(false), 90.0);
}

TEST(EDAComponentPlacementAngle, ComesFromAnOrientationWhereThereIsOne) {
    EXPECT_DOUBLE_EQ(orientedAngle(0.0, -1.0, 1.0, 0.0), 90.0);
    EXPECT_DOUBLE_EQ(orientedAngle(1.0, 0.0, 0.0, 1.0), 0.0);
    EXPECT_DOUBLE_EQ(orientedAngle(0.0, 1.0, -1.0, 0.0), 270.0);
    EXPECT_DOUBLE_EQ(orientedAngle(-1.0, 0.0, 0.0, -1.0), 180.0);
}

TEST(EDAComponentPlacementAngle, OfAnOrientationDoesNotLookAtTheSideOrTheStoredAngle) {
    EDAComponentPlacement placement;
    placement.setBoardSide("BOTTOM");
    placement.setAngle(33.0);
    placement.setOrientation(0.0, -1.0, 1.0, 0.0);
    EXPECT_DOUBLE_EQ(placement.getAngle(true), 90.0);
}

TEST(EDAComponentPlacementAngle, OfAMirroringOrientationIsNegated) {
    double const c = std::cos(Geometry::Transform::pi / 6.0), s = 0.5;
    EXPECT_NEAR(orientedAngle(c, -s, s, c), 30.0, 1e-9);
    EXPECT_NEAR(orientedAngle(-c, s, s, c), 330.0, 1e-9);
    EXPECT_NEAR(orientedAngle(-c, -s, -s, c), 30.0, 1e-9);
}

TEST(EDAComponentPlacementAngle, OfAnOrientationThatFlattensIsNotNegated) {
    EXPECT_DOUBLE_EQ(orientedAngle(1.0, 1.0, 1.0, 1.0), 45.0);
    EXPECT_DOUBLE_EQ(orientedAngle(1.0, 1.0 + 0.5e-9, 1.0, 1.0), 45.0);
    EXPECT_DOUBLE_EQ(orientedAngle(1.0, 1.0 + 2e-9, 1.0, 1.0), 315.0) << "now it mirrors";
}

TEST(EDAComponentPlacementAngle, OfATinyNegativeTurnStaysNegative) {
    double const turn = -1e-7 * Geometry::Transform::pi / 180.0;
    EXPECT_NEAR(orientedAngle(1.0, -turn, turn, 1.0), -1e-7, 1e-12);
}

TEST(EDAComponentPlacement, TopIsEmptyOrTopInAnyCase) {
    EDAComponentPlacement placement;
    EXPECT_TRUE(placement.isOnBoardTop());
    for (auto const *side : {"TOP", "top"}) {
        placement.setBoardSide(side);
        EXPECT_TRUE(placement.isOnBoardTop()) << side;
    }
    for (auto const *side : {"Bottom", "BOTH", " TOP"}) {
        placement.setBoardSide(side);
        EXPECT_FALSE(placement.isOnBoardTop()) << side;
    }
}

TEST(EDAComponentPlacement, OnlyUnplacedInAnyCaseIsNotPlaced) {
    EDAComponentPlacement placement;
    EXPECT_TRUE(placement.isPlaced());
    for (auto const *status : {"UNPLACED", "unplaced"}) {
        placement.setStatus(status);
        EXPECT_FALSE(placement.isPlaced()) << status;
    }
    for (auto const *status : {"PLACED", "MCAD", "ECAD"}) {
        placement.setStatus(status);
        EXPECT_TRUE(placement.isPlaced()) << status;
    }
}

TEST(EDAComponentPlacement, KeepsACopyOfItsHeatsink) {
    EDAComponentPlacement placement;
    EDAHeatsink heatsink;
    heatsink.setName("H1");
    placement.setHeatsink(heatsink);
    auto const copy = placement;
    heatsink.setName("H2");
    EXPECT_EQ(placement.getHeatsink()->getName(), "H1");
    placement.setHeatsink(heatsink);
    EXPECT_EQ(placement.getHeatsink()->getName(), "H2");
    EXPECT_EQ(copy.getHeatsink()->getName(), "H1");
    placement.setHeatsink(*placement.getHeatsink());
    EXPECT_EQ(placement.getHeatsink()->getName(), "H2");
}

TEST(EDAComponentPlacementBumps, MergeOnlyWhenAsked) {
    EDAComponentPlacement placement;
    EDABump bump;
    bump.setName("B1");
    placement.addBump(bump, true);
    bump.setName("B2");
    bump.setCentre(3.0, 4.0);
    placement.addBump(bump, true);
    EXPECT_EQ(placement.numBumps(0), 1u);
    EXPECT_EQ(placement.numBumps(1), 2u);
    EXPECT_EQ(placement.getBump(0).getInstanceName(0), "B2");
    EXPECT_EQ(placement.getBump(0).getInstanceXCentre(0), 3.0);
    EXPECT_EQ(placement.getBump(0).getInstanceYCentre(0), 4.0);
    placement.addBump(bump, false);
    EXPECT_EQ(placement.numBumps(0), 2u);
    EXPECT_EQ(placement.numBumps(-1), 3u);
    EXPECT_EQ(placement.endBumps() - placement.beginBumps(), 2);
    EXPECT_EQ(placement.findBumpDefinition(bump), &placement.getBump(0));
}

TEST(EDAComponentPlacementBumps, CountAsBumpsWhenOneHasAType) {
    EDAComponentPlacement placement;
    placement.addBump(EDABump(), false);
    EXPECT_FALSE(placement.hasBumps());
    placement.addBump(EDABump(), false);
    placement.getBump(1).setBumpType(2);
    EXPECT_TRUE(placement.hasBumps());
}

TEST(EDAComponentPlacementBumps, ABadIndexThrowsWithItsText) {
    EDAComponentPlacement placement;
    placement.addBump(EDABump(), false);
    try {
        placement.getBump(1);
        FAIL() << "nothing thrown";
    } catch (std::out_of_range const &error) {
        EXPECT_STREQ(error.what(), "Index out of range in EDAComponentPlacement::getBump");
    }
    EXPECT_THROW(std::as_const(placement).getBump(static_cast<std::size_t>(-1)), std::out_of_range);
    EXPECT_NO_THROW(std::as_const(placement).getBump(0));
}

} // namespace
} // namespace EDA
