// Heatsinks: a plain record.
#include "model/EDAHeatsink.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace EDA {
namespace {

TEST(EDAHeatsink, StartsWithNothingGiven) {
    EDAHeatsink const heatsink;
    EXPECT_EQ(heatsink.getName(), "");
    EXPECT_EQ(heatsink.getHeatSinkType(), "");
    EXPECT_EQ(heatsink.getPinShape(), "");
    EXPECT_EQ(heatsink.getHeatSinkMaterial(), "");
    EXPECT_FALSE(heatsink.getStaggered());
    EXPECT_EQ(heatsink.getHeatSinkLength(), -1.0);
    EXPECT_EQ(heatsink.getHeatSinkWidth(), -1.0);
    EXPECT_EQ(heatsink.getBaseThickness(), -1.0);
    EXPECT_EQ(heatsink.getLimbHeight(), -1.0);
    EXPECT_EQ(heatsink.getLimbLength(), -1.0);
    EXPECT_EQ(heatsink.getLimbWidth(), -1.0);
    EXPECT_EQ(heatsink.getPitchInWidth(), -1.0);
    EXPECT_EQ(heatsink.getPitchInLength(), -1.0);
    EXPECT_TRUE(std::has_virtual_destructor_v<EDAHeatsink>);
}

TEST(EDAHeatsink, KeepsWhatItIsGivenAndCopiesIt) {
    EDAHeatsink heatsink;
    heatsink.setName("H");
    heatsink.setHeatSinkType("Pin Fin");
    heatsink.setPinShape("Round");
    heatsink.setHeatSinkMaterial("Aluminium");
    heatsink.setStaggered(true);
    heatsink.setHeatSinkLength(1.0);
    heatsink.setHeatSinkWidth(2.0);
    heatsink.setBaseThickness(3.0);
    heatsink.setLimbHeight(4.0);
    heatsink.setLimbLength(5.0);
    heatsink.setLimbWidth(6.0);
    heatsink.setPitchInWidth(7.0);
    heatsink.setPitchInLength(8.0);
    EDAHeatsink copy;
    copy = heatsink;
    EXPECT_EQ(copy.getName(), "H");
    EXPECT_EQ(copy.getHeatSinkType(), "Pin Fin");
    EXPECT_EQ(copy.getPinShape(), "Round");
    EXPECT_EQ(copy.getHeatSinkMaterial(), "Aluminium");
    EXPECT_TRUE(copy.getStaggered());
    EXPECT_EQ(copy.getHeatSinkLength(), 1.0);
    EXPECT_EQ(copy.getHeatSinkWidth(), 2.0);
    EXPECT_EQ(copy.getBaseThickness(), 3.0);
    EXPECT_EQ(copy.getLimbHeight(), 4.0);
    EXPECT_EQ(copy.getLimbLength(), 5.0);
    EXPECT_EQ(copy.getLimbWidth(), 6.0);
    EXPECT_EQ(copy.getPitchInWidth(), 7.0);
    EXPECT_EQ(copy.getPitchInLength(), 8.0);
}

} // namespace
} // namespace EDA
