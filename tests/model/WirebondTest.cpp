// Bond wires: a plain record.
#include "model/EDAWirebond.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace EDA {
namespace {

TEST(EDAWirebond, StartsEmpty) {
    EDAWirebond const wire;
    EXPECT_EQ(wire.getName(), "");
    EXPECT_EQ(wire.getModelName(), "");
    EXPECT_EQ(wire.getGroupName(), "");
    EXPECT_EQ(wire.getDiameter(), 0.0);
    EXPECT_EQ(wire.getMaterial(), "");
    EXPECT_TRUE(wire.getPoints().empty());
    EXPECT_EQ(wire.getStartLayer(), "");
    EXPECT_EQ(wire.getEndLayer(), "");
    EXPECT_TRUE(std::has_virtual_destructor_v<EDAWirebond>);
}

TEST(EDAWirebond, KeepsWhatItIsGivenAndCopiesIt) {
    EDAWirebond wire;
    wire.setName("W");
    wire.setModelName("M");
    wire.setGroupName("G");
    wire.setDiameter(0.025);
    wire.setMaterial("Gold");
    wire.addPoint({1.0, 2.0, 3.0});
    wire.addPoint({1.0, 2.0, 3.0});
    wire.setStartLayer("TOP");
    wire.setEndLayer("L2");
    EDAWirebond copy;
    copy = wire;
    EXPECT_EQ(copy.getName(), "W");
    EXPECT_EQ(copy.getModelName(), "M");
    EXPECT_EQ(copy.getGroupName(), "G");
    EXPECT_EQ(copy.getDiameter(), 0.025);
    EXPECT_EQ(copy.getMaterial(), "Gold");
    ASSERT_EQ(copy.getPoints().size(), 2u);
    EXPECT_EQ(copy.getPoints()[1].x, 1.0);
    EXPECT_EQ(copy.getPoints()[1].y, 2.0);
    EXPECT_EQ(copy.getPoints()[1].z, 3.0);
    EXPECT_EQ(copy.getStartLayer(), "TOP");
    EXPECT_EQ(copy.getEndLayer(), "L2");
}

} // namespace
} // namespace EDA
