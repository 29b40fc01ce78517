// Vias: defaults, kinds, instances, bound.
#include "model/EDAVia.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace EDA {
namespace {

EDAVia ofHoleType(std::string const &type) {
    EDAVia via;
    via.setHoleType(type);
    return via;
}

// A via with every compared member set, changed by `change`.
template <typename Change> EDAVia changedVia(Change change) {
    EDAVia via;
    via.setDiameter(0.3);
    via.setPlatingThickness(0.02);
    via.setPlatingStyle("PTH");
    via.setHoleType("VIA");
    via.setLayers("L1", "L4");
    via.setFillMaterial("Resin");
    change(via);
    return via;
}

template <typename Change> bool matchesAfter(Change change) {
    auto const plain = changedVia([](EDAVia &) {});
    auto const changed = changedVia(change);
    EXPECT_EQ(changed.isInstanceOf(plain), plain.isInstanceOf(changed));
    return changed.isInstanceOf(plain);
}

TEST(EDAVia, StartsAsAHoleOfTheBoardOfNoKind) {
    EDAVia const via;
    EXPECT_EQ(via.getName(), "");
    EXPECT_EQ(via.getPlatingStyle(), "");
    EXPECT_FALSE(via.isPlated());
    EXPECT_EQ(via.getDiameter(), 0.0);
    EXPECT_EQ(via.getAngle(), 0.0);
    EXPECT_EQ(via.getXCentre(), 0.0);
    EXPECT_EQ(via.getYCentre(), 0.0);
    EXPECT_EQ(via.numInstances(), 0u);
    EXPECT_EQ(via.getPlatingThickness(), 0.0);
    double zLow = 9.0, zHigh = 9.0;
    via.getZDimensions(zLow, zHigh);
    EXPECT_EQ(zLow, 0.0);
    EXPECT_EQ(zHigh, 0.0);
    EXPECT_EQ(via.getAssociatedPart(), "BOARD");
    EXPECT_EQ(via.getHoleType(), "Other");
    std::string start = "x", end = "x";
    via.getLayers(start, end);
    EXPECT_EQ(start, "");
    EXPECT_EQ(end, "");
    EXPECT_EQ(via.getFillMaterial(), "");
    EXPECT_TRUE(via.getOutline().empty());
    EXPECT_FALSE(via.getOutline().isHole());
    EXPECT_FALSE(via.isThermalVia());
    EXPECT_FALSE(via.isMountingHole());
    EXPECT_FALSE(via.isToolHole());
    EXPECT_FALSE(via.isPin());
    EXPECT_TRUE(std::has_virtual_destructor_v<EDAVia>);
}

TEST(EDAVia, KeepsWhatItIsGivenAndCopiesIt) {
    EDAVia via;
    via.setName("V");
    via.setPlatingStyle("NPTH");
    via.setDiameter(0.3);
    via.setAngle(45.0);
    via.setCentre(1.0, 2.0);
    via.addInstance("I", 3.0, 4.0);
    via.setPlatingThickness(0.02);
    via.setZDimensions(0.5, 1.5);
    via.setAssociatedPart("U1");
    via.setHoleType("PIN");
    via.setLayers("L1", "L2");
    via.setFillMaterial("Resin");
    via.getOutline().addPoint(0, 5.0, 6.0, 0.0);
    EDAVia copy(via);
    EDAVia assigned;
    assigned = via;
    for (auto const *each : {&copy, &assigned}) {
        EXPECT_EQ(each->getName(), "V");
        EXPECT_EQ(each->getPlatingStyle(), "NPTH");
        EXPECT_EQ(each->getDiameter(), 0.3);
        EXPECT_EQ(each->getAngle(), 45.0);
        EXPECT_EQ(each->getXCentre(), 1.0);
        EXPECT_EQ(each->getYCentre(), 2.0);
        EXPECT_EQ(each->getInstanceName(0), "I");
        EXPECT_EQ(each->getPlatingThickness(), 0.02);
        double zLow = 0.0, zHigh = 0.0;
        each->getZDimensions(zLow, zHigh);
        EXPECT_EQ(zLow, 0.5);
        EXPECT_EQ(zHigh, 1.5);
        EXPECT_EQ(each->getAssociatedPart(), "U1");
        EXPECT_EQ(each->getHoleType(), "PIN");
        std::string start, end;
        each->getLayers(start, end);
        EXPECT_EQ(start, "L1");
        EXPECT_EQ(end, "L2");
        EXPECT_EQ(each->getFillMaterial(), "Resin");
        EXPECT_EQ(each->getOutline().numPoints(), 1u);
    }
}

TEST(EDAVia, IsPlatedByEitherWordInAnyCase) {
    EDAVia via;
    for (auto const *style : {"PTH", "pth", "Plated", "PLATED"}) {
        via.setPlatingStyle(style);
        EXPECT_TRUE(via.isPlated()) << style;
    }
    for (auto const *style : {"NPTH", "", "NonPlated"}) {
        via.setPlatingStyle(style);
        EXPECT_FALSE(via.isPlated()) << style;
    }
}

TEST(EDAVia, SetPlatedWritesTheStyle) {
    EDAVia via;
    via.setPlated(true);
    EXPECT_EQ(via.getPlatingStyle(), "Plated");
    via.setPlatingStyle("pth");
    via.setPlated(false);
    EXPECT_EQ(via.getPlatingStyle(), "");
}

TEST(EDAVia, KindsAreReadFromTheHoleTypeWithoutRegardToCase) {
    for (auto const *type : {"VIA", "via", "ViaTerminal"})
        EXPECT_TRUE(ofHoleType(type).isThermalVia()) << type;
    for (auto const *type : {"", "MTG", "mtg", "PartMountingFeature"})
        EXPECT_TRUE(ofHoleType(type).isMountingHole()) << type;
    for (auto const *type : {"TOOL", "tool"})
        EXPECT_TRUE(ofHoleType(type).isToolHole()) << type;
    for (auto const *type : {"PIN", "pin", "ComponentTerminal"})
        EXPECT_TRUE(ofHoleType(type).isPin()) << type;
}

TEST(EDAVia, AHoleTypeIsOneKindAtMost) {
    for (auto const *type : {"VIA", "ViaTerminal", "", "MTG", "PartMountingFeature", "TOOL", "PIN",
                             "ComponentTerminal", "Other", "VIAS"}) {
        auto const via = ofHoleType(type);
        int const kinds = via.isThermalVia() + via.isMountingHole() + via.isToolHole() + via.isPin();
        EXPECT_EQ(kinds, std::string(type) == "Other" || std::string(type) == "VIAS" ? 0 : 1) << type;
    }
}

TEST(EDAViaInstances, AreKeptInOrderWithRepetitions) {
    EDAVia via;
    via.addInstance("a", 1.0, 2.0);
    via.addInstance("a", 1.0, 2.0);
    via.addInstance("b", 3.0, 4.0);
    EXPECT_EQ(via.numInstances(), 3u);
    EXPECT_EQ(via.getInstanceName(2), "b");
    EXPECT_EQ(via.getInstanceXCentre(2), 3.0);
    EXPECT_EQ(via.getInstanceYCentre(2), 4.0);
}

TEST(EDAViaInstances, ABadIndexGivesZerosAndAnEmptyName) {
    EDAVia via;
    via.addInstance("a", 1.0, 2.0);
    via.addInstance("b", 1.0, 2.0);
    for (int index : {5, 2, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(via.getInstanceXCentre(index), 0.0);
        EXPECT_EQ(via.getInstanceYCentre(index), 0.0);
        EXPECT_EQ(via.getInstanceName(index), "");
    }
}

TEST(EDAViaIsInstanceOf, NameLocationAngleHeightsAndInstancesDoNotCount) {
    EXPECT_TRUE(matchesAfter([](EDAVia &) {}));
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.setName("V2"); }));
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.setCentre(5.0, 6.0); }));
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.setAngle(90.0); }));
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.setZDimensions(0.1, 0.2); }));
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.addInstance("i", 0.0, 0.0); }));
}

TEST(EDAViaIsInstanceOf, SizesAreComparedWithinTheTolerance) {
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.setDiameter(0.3 + 1e-13); }));
    EXPECT_FALSE(matchesAfter([](EDAVia &via) { via.setDiameter(0.3 + 1e-11); }));
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.setPlatingThickness(0.02 - 1e-13); }));
    EXPECT_FALSE(matchesAfter([](EDAVia &via) { via.setPlatingThickness(0.02 - 1e-11); }));
}

TEST(EDAViaIsInstanceOf, ADifferenceEqualToTheToleranceIsADifference) {
    EDAVia zero, tolerance;
    tolerance.setDiameter(EDAVia::sizeTolerance);
    EXPECT_FALSE(zero.isInstanceOf(tolerance));
}

TEST(EDAViaIsInstanceOf, TextsAreComparedWithCase) {
    EXPECT_FALSE(matchesAfter([](EDAVia &via) { via.setPlatingStyle("pth"); }));
    EXPECT_FALSE(matchesAfter([](EDAVia &via) { via.setHoleType("Via"); }));
    EXPECT_FALSE(matchesAfter([](EDAVia &via) { via.setLayers("l1", "L4"); }));
    EXPECT_FALSE(matchesAfter([](EDAVia &via) { via.setLayers("L1", "L3"); }));
    EXPECT_FALSE(matchesAfter([](EDAVia &via) { via.setFillMaterial(""); }));
}

TEST(EDAViaIsInstanceOf, AViaOfAPartMatchesNothingNotEvenItself) {
    for (auto const *part : {"U1", "board", "Board"}) {
        auto const change = [&](EDAVia &via) { via.setAssociatedPart(part); };
        EXPECT_FALSE(matchesAfter(change)) << part;
        EXPECT_FALSE(changedVia(change).isInstanceOf(changedVia(change))) << part;
    }
}

TEST(EDAViaIsInstanceOf, AnEmptyAssociatedPartIsTheBoard) {
    EXPECT_TRUE(matchesAfter([](EDAVia &via) { via.setAssociatedPart(""); }));
}

TEST(EDAViaIsInstanceOf, AShapedViaMatchesNothingNotEvenItself) {
    auto const change = [](EDAVia &via) { via.getOutline().addPoint(0, 0.0, 0.0, 0.0); };
    EXPECT_FALSE(matchesAfter(change));
    EXPECT_FALSE(changedVia(change).isInstanceOf(changedVia(change)));
}

TEST(EDAViaIsInstanceOf, SizesThatAreNoNumbersMatchNothing) {
    for (double size : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        auto const via = changedVia([&](EDAVia &each) { each.setDiameter(size); });
        EXPECT_FALSE(via.isInstanceOf(via));
    }
}

TEST(EDAViaBound, IsTheSquaresAroundAllLocations) {
    EDAVia via;
    via.setDiameter(2.0);
    via.setCentre(1.0, 1.0);
    Geometry::Bound2D bound(-100.0, -100.0, 100.0, 100.0);
    via.getBound(bound);
    EXPECT_EQ(bound.getXLow(), 0.0);
    EXPECT_EQ(bound.getYLow(), 0.0);
    EXPECT_EQ(bound.getXHigh(), 2.0);
    EXPECT_EQ(bound.getYHigh(), 2.0);
    via.addInstance("", 10.0, -5.0);
    via.getBound(bound);
    EXPECT_EQ(bound.getXLow(), 0.0);
    EXPECT_EQ(bound.getYLow(), -6.0);
    EXPECT_EQ(bound.getXHigh(), 11.0);
    EXPECT_EQ(bound.getYHigh(), 2.0);
}

} // namespace
} // namespace EDA
