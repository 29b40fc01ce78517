// Bumps: defaults, setters that ignore, groups from names, instances, bound.
#include "model/EDABump.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace EDA {
namespace {

template <typename Change> bool matchesAfter(Change change) {
    EDABump plain, changed;
    change(changed);
    EXPECT_EQ(changed.isInstanceOf(plain), plain.isInstanceOf(changed));
    return changed.isInstanceOf(plain);
}

std::string groupAfterName(std::string const &name) {
    EDABump bump;
    bump.setName(name);
    EXPECT_EQ(bump.getName(), name);
    return bump.getGroup();
}

TEST(EDABump, StartsSmallAndOfSolder) {
    EDABump const bump;
    EXPECT_EQ(bump.getName(), "");
    EXPECT_EQ(bump.getMaxDiameter(), 0.001);
    EXPECT_EQ(bump.getTopDiameter(), 0.001);
    EXPECT_EQ(bump.getBottomDiameter(), 0.001);
    EXPECT_EQ(bump.getHeight(), 0.001);
    EXPECT_EQ(bump.getVerticalOffset(), 0.0);
    EXPECT_EQ(bump.getXCentre(), 0.0);
    EXPECT_EQ(bump.getYCentre(), 0.0);
    EXPECT_EQ(bump.getGroup(), "");
    EXPECT_EQ(bump.getLayer(), "");
    EXPECT_EQ(bump.numInstances(), 0u);
    EXPECT_EQ(bump.getMaterial(), "Solder");
    EXPECT_EQ(bump.getBumpType(), 0);
    EXPECT_TRUE(std::has_virtual_destructor_v<EDABump>);
}

TEST(EDABump, KeepsWhatItIsGivenAndCopiesIt) {
    EDABump bump;
    bump.setName("B");
    bump.setMaxDiameter(0.6);
    bump.setTopDiameter(0.4);
    bump.setBottomDiameter(0.5);
    bump.setHeight(0.3);
    bump.setVerticalOffset(-0.1);
    bump.setCentre(1.0, 2.0);
    bump.setGroup("G");
    bump.setLayer("L");
    bump.addInstance("I", 3.0, 4.0);
    bump.setMaterial("Copper");
    bump.setBumpType(2);
    EDABump copy(bump);
    EDABump assigned;
    assigned = bump;
    for (auto const *each : {&copy, &assigned}) {
        EXPECT_EQ(each->getName(), "B");
        EXPECT_EQ(each->getMaxDiameter(), 0.6);
        EXPECT_EQ(each->getTopDiameter(), 0.4);
        EXPECT_EQ(each->getBottomDiameter(), 0.5);
        EXPECT_EQ(each->getHeight(), 0.3);
        EXPECT_EQ(each->getVerticalOffset(), -0.1);
        EXPECT_EQ(each->getXCentre(), 1.0);
        EXPECT_EQ(each->getYCentre(), 2.0);
        EXPECT_EQ(each->getGroup(), "G");
        EXPECT_EQ(each->getLayer(), "L");
        EXPECT_EQ(each->getInstanceXCentre(0), 3.0);
        EXPECT_EQ(each->getMaterial(), "Copper");
        EXPECT_EQ(each->getBumpType(), 2);
    }
}

TEST(EDABump, SizesNotAboveZeroAreIgnored) {
    for (double size : {0.0, -1.0, std::nan(""), -std::numeric_limits<double>::infinity()}) {
        EDABump bump;
        bump.setMaxDiameter(size);
        bump.setTopDiameter(size);
        bump.setBottomDiameter(size);
        bump.setHeight(size);
        EXPECT_EQ(bump.getMaxDiameter(), 0.001);
        EXPECT_EQ(bump.getTopDiameter(), 0.001);
        EXPECT_EQ(bump.getBottomDiameter(), 0.001);
        EXPECT_EQ(bump.getHeight(), 0.001);
    }
}

TEST(EDABump, AnEmptyMaterialIsIgnored) {
    EDABump bump;
    bump.setMaterial("");
    EXPECT_EQ(bump.getMaterial(), "Solder");
}

TEST(EDABumpGroup, IsTakenFromTheNameWithoutItsLastCharacter) {
    EXPECT_EQ(groupAfterName("BGA!!GRP1_-A7"), "GRP1");
    EXPECT_EQ(groupAfterName("BGA!!GRP1-A7"), "GRP");
    EXPECT_EQ(groupAfterName("A-B!!GRP_-C-D"), "GRP");
    EXPECT_EQ(groupAfterName("!!ab-"), "a");
}

TEST(EDABumpGroup, StaysEmptyWhenTheNameSpellsNone) {
    for (auto const *name : {"", "A7", "BGA!GRP_-A7", "BGA!!GRP_A7", "A-B!!GRP", "!!", "BGA!!x-A7"})
        EXPECT_EQ(groupAfterName(name), "") << name;
}

TEST(EDABumpGroup, StaysEmptyWhenADashFollowsTheMarker) { EXPECT_EQ(groupAfterName("BGA!!-A7"), ""); }

TEST(EDABumpGroup, ThatWasSetFirstIsNotReplaced) {
    EDABump bump;
    bump.setGroup("mine");
    bump.setName("BGA!!GRP1_-A7");
    EXPECT_EQ(bump.getGroup(), "mine");
    EDABump named;
    named.setName("BGA!!ONE_-A7");
    named.setName("BGA!!TWO_-A7");
    EXPECT_EQ(named.getGroup(), "ONE");
}

TEST(EDABumpInstances, AreKeptInOrderAndABadIndexGivesZeros) {
    EDABump bump;
    bump.addInstance("a", 1.0, 2.0);
    bump.addInstance("a", 1.0, 2.0);
    EXPECT_EQ(bump.numInstances(), 2u);
    EXPECT_EQ(bump.getInstanceName(1), "a");
    EXPECT_EQ(bump.getInstanceYCentre(1), 2.0);
    for (int index : {2, -1}) {
        EXPECT_EQ(bump.getInstanceName(index), "");
        EXPECT_EQ(bump.getInstanceXCentre(index), 0.0);
        EXPECT_EQ(bump.getInstanceYCentre(index), 0.0);
    }
}

TEST(EDABumpIsInstanceOf, NameLocationOffsetAndTypeDoNotCount) {
    EXPECT_TRUE(matchesAfter([](EDABump &) {}));
    EXPECT_TRUE(matchesAfter([](EDABump &bump) { bump.setName("B"); }));
    EXPECT_TRUE(matchesAfter([](EDABump &bump) { bump.setCentre(1.0, 2.0); }));
    EXPECT_TRUE(matchesAfter([](EDABump &bump) { bump.setVerticalOffset(1.0); }));
    EXPECT_TRUE(matchesAfter([](EDABump &bump) { bump.setBumpType(1); }));
}

TEST(EDABumpIsInstanceOf, EachSizeIsComparedWithinTheTolerance) {
    for (auto const set : {&EDABump::setMaxDiameter, &EDABump::setTopDiameter, &EDABump::setBottomDiameter,
                           &EDABump::setHeight}) {
        EXPECT_TRUE(matchesAfter([&](EDABump &bump) { (bump.*set)(0.001 + 1e-13); }));
        EXPECT_FALSE(matchesAfter([&](EDABump &bump) { (bump.*set)(0.001 + 1e-11); }));
    }
}

TEST(EDABumpIsInstanceOf, TextsAreComparedWithCase) {
    EXPECT_FALSE(matchesAfter([](EDABump &bump) { bump.setMaterial("solder"); }));
    EXPECT_FALSE(matchesAfter([](EDABump &bump) { bump.setGroup("G"); }));
    EXPECT_FALSE(matchesAfter([](EDABump &bump) { bump.setLayer("L"); }));
}

TEST(EDABumpBound, IsTheSquaresOfTheMaxDiameterAroundAllLocations) {
    EDABump bump;
    bump.setMaxDiameter(2.0);
    bump.setTopDiameter(9.0);
    bump.setCentre(1.0, 2.0);
    bump.addInstance("", -3.0, 2.0);
    Geometry::Bound2D bound(-100.0, -100.0, 100.0, 100.0);
    bump.getBound(bound);
    EXPECT_EQ(bound.getXLow(), -4.0);
    EXPECT_EQ(bound.getYLow(), 1.0);
    EXPECT_EQ(bound.getXHigh(), 2.0);
    EXPECT_EQ(bound.getYHigh(), 3.0);
}

} // namespace
} // namespace EDA
