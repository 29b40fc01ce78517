// Component definitions: defaults, accessors, values from properties.
#include "model/EDAComponent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

namespace EDA {
namespace {

TEST(EDAComponent, StartsEmptyButForItsType) {
    EDAComponent const part("ELECTRICAL");
    EXPECT_EQ(part.getType(), "ELECTRICAL");
    EXPECT_EQ(part.getName(), "");
    EXPECT_EQ(part.getManufacturer(), "");
    EXPECT_EQ(part.getPartNumber(), "");
    EXPECT_EQ(part.getUnits(), "");
    EXPECT_EQ(part.getHeight(), 0.0);
    EXPECT_FALSE(part.isFiltered());
    EXPECT_EQ(part.getImportToType(), "");
    EXPECT_FALSE(part.resetCylinderOriginToCentre());
    EXPECT_TRUE(part.getOutline().empty());
    EXPECT_FALSE(part.getOutline().isHole());
    EXPECT_FALSE(part.hasGeometry());
    EXPECT_TRUE(part.beginProperties() == part.endProperties());
    EXPECT_FALSE(part.isMoldEnabled());
    EXPECT_EQ(part.getMoldMaterialName(), "");
    EXPECT_EQ(part.getMoldLength(), -1.0);
    EXPECT_EQ(part.getMoldWidth(), -1.0);
    EXPECT_EQ(part.getMoldHeight(), -1.0);
    EXPECT_TRUE(std::has_virtual_destructor_v<EDAComponent>);
}

TEST(EDAComponent, KeepsWhatItIsGivenAndCopiesIt) {
    EDAComponent part("MECHANICAL");
    part.setName("N");
    part.setManufacturer("M");
    part.setPartNumber("P");
    part.setUnits("MM");
    part.setHeight(2.5);
    part.setFiltered(true);
    part.setImportToType("Cuboid");
    part.setMoldEnabled(true);
    part.setMoldMaterialName("Epoxy");
    part.setMoldLength(4.0);
    part.addPoint(0, 1.0, 2.0, 0.0);
    part.addProperty("k", "v");
    EDAComponent copy(part);
    EDAComponent assigned("ELECTRICAL");
    assigned = part;
    for (auto const *each : {&copy, &assigned}) {
        EXPECT_EQ(each->getType(), "MECHANICAL");
        EXPECT_EQ(each->getName(), "N");
        EXPECT_EQ(each->getManufacturer(), "M");
        EXPECT_EQ(each->getPartNumber(), "P");
        EXPECT_EQ(each->getUnits(), "MM");
        EXPECT_EQ(each->getHeight(), 2.5);
        EXPECT_TRUE(each->isFiltered());
        EXPECT_EQ(each->getImportToType(), "Cuboid");
        EXPECT_TRUE(each->isMoldEnabled());
        EXPECT_EQ(each->getMoldMaterialName(), "Epoxy");
        EXPECT_EQ(each->getMoldLength(), 4.0);
        EXPECT_EQ(each->getOutline().numPoints(), 1u);
        EXPECT_EQ(each->beginProperties()->second, "v");
    }
}

TEST(EDAComponent, IsElectricalWithoutRegardToCase) {
    EXPECT_TRUE(EDAComponent("ELECTRICAL").isElectrical());
    EXPECT_TRUE(EDAComponent("electrical").isElectrical());
    EXPECT_FALSE(EDAComponent("MECHANICAL").isElectrical());
    EXPECT_FALSE(EDAComponent("").isElectrical());
}

TEST(EDAComponent, ResettingTheCylinderOriginChangesNothing) {
    EDAComponent part("ELECTRICAL");
    part.setCylinderOriginToCentre(true);
    EXPECT_TRUE(part.resetCylinderOriginToCentre());
    EXPECT_TRUE(part.resetCylinderOriginToCentre());
}

TEST(EDAComponent, TheMoldHeightGoesToTheWidth) {
    EDAComponent part("ELECTRICAL");
    part.setMoldHeight(3.0);
    EXPECT_EQ(part.getMoldHeight(), -1.0);
    EXPECT_EQ(part.getMoldWidth(), 3.0);
    part.setMoldWidth(5.0);
    EXPECT_EQ(part.getMoldWidth(), 5.0);
    part.setMoldHeight(2.0);
    EXPECT_EQ(part.getMoldWidth(), 2.0);
    EXPECT_EQ(part.getMoldLength(), -1.0);
}

TEST(EDAComponent, HasGeometryFromTheFirstPointOn) {
    EDAComponent part("ELECTRICAL");
    part.addPoint(0, 0.0, 0.0, 0.0);
    EXPECT_TRUE(part.hasGeometry());
}

TEST(EDAComponent, ASecondOutlineAloneIsNoGeometry) {
    EDAComponent part("ELECTRICAL");
    part.addPoint(1, 0.0, 0.0, 0.0);
    EXPECT_FALSE(part.hasGeometry());
}

TEST(EDAComponent, ItsSizeIsTheDiagonalOfItsBound) {
    EDAComponent part("ELECTRICAL");
    EXPECT_EQ(part.getSize(), 0.0);
    part.addPoint(0, 1.0, 1.0, 0.0);
    part.addPoint(0, 4.0, 1.0, 0.0);
    part.addPoint(0, 4.0, 5.0, 0.0);
    EXPECT_DOUBLE_EQ(part.getSize(), 5.0);
    part.addPoint(1, 100.0, 100.0, 0.0);
    EXPECT_DOUBLE_EQ(part.getSize(), 5.0);
}

TEST(EDAComponentProperties, StayInOrderWithRepetitions) {
    EDAComponent part("ELECTRICAL");
    part.addProperty("b", "1");
    part.addProperty("a", "2");
    part.addProperty("b", "3");
    ASSERT_EQ(part.endProperties() - part.beginProperties(), 3);
    EXPECT_EQ(part.beginProperties()->first, "b");
    EXPECT_EQ((part.beginProperties() + 1)->second, "2");
    EXPECT_EQ((part.beginProperties() + 2)->second, "3");
}

TEST(EDAComponentProperties, PowerIsTheFirstAndPowerValuesTheLast) {
    EDAComponent part("ELECTRICAL");
    part.addProperty("POWER_OPR", "1.5");
    part.addProperty("POWER_OPR", "2.5");
    EXPECT_EQ(part.getPower(), 1.5);
    EXPECT_EQ(part.getPowerValues(), "0,2.5");
}

TEST(EDAComponentProperties, PowerIsZeroWithoutANumber) {
    EDAComponent part("ELECTRICAL");
    EXPECT_EQ(part.getPower(), 0.0);
    part.addProperty("power_opr", "3");
    EXPECT_EQ(part.getPower(), 0.0);
    part.addProperty("POWER_OPR", "much");
    EXPECT_EQ(part.getPower(), 0.0);
    part.addProperty("POWER_OPR", "4");
    EXPECT_EQ(part.getPower(), 0.0);
}

TEST(EDAComponentProperties, PowerIsZeroForEmptyAndInfiniteValues) {
    for (auto const *value : {"", "inf", "nan", "1e400"}) {
        EDAComponent part("ELECTRICAL");
        part.addProperty("POWER_OPR", value);
        EXPECT_EQ(part.getPower(), 0.0) << value;
    }
}

TEST(EDAComponentProperties, PowerIgnoresTextBehindTheNumber) {
    EDAComponent part("ELECTRICAL");
    part.addProperty("POWER_OPR", "0.25 W");
    EXPECT_EQ(part.getPower(), 0.25);
}

TEST(EDAComponentProperties, PowerValuesAreMaximumThenOperating) {
    EDAComponent part("ELECTRICAL");
    EXPECT_EQ(part.getPowerValues(), "");
    part.addProperty("POWER_OPR", "1.25");
    part.addProperty("POWER_MAX", "2");
    EXPECT_EQ(part.getPowerValues(), "2,1.25");
}

TEST(EDAComponentProperties, AMissingResistanceIsTheTextForZero) {
    EDAComponent part("ELECTRICAL");
    part.addProperty("THETA_JC", "2.5");
    EXPECT_EQ(part.get2RValues(), "0,2.5");
    part.addProperty("THETA_JB", "7");
    EXPECT_EQ(part.get2RValues(), "7,2.5");
}

TEST(EDAComponentProperties, TheLastResistanceWinsEvenWhenEmpty) {
    EDAComponent part("ELECTRICAL");
    part.addProperty("THETA_JB", "7");
    part.addProperty("THETA_JB", "8");
    EXPECT_EQ(part.get2RValues(), "8,0");
    part.addProperty("THETA_JB", "");
    EXPECT_EQ(part.get2RValues(), "");
}

TEST(EDAComponentProperties, ResistancesThatAreNoNumbersReadAsZero) {
    EDAComponent part("ELECTRICAL");
    part.addProperty("THETA_JB", "low");
    part.addProperty("theta_jc", "5");
    EXPECT_EQ(part.get2RValues(), "0,0");
}

} // namespace
} // namespace EDA
