// The power of components and solids, from their properties.
#include "ComponentSupport.h"

using namespace TestSupport;

namespace {

using Properties = std::vector<std::pair<std::string, std::string>>;

const char *const types[] = {
    "Component", "Resistor", "Capacitor", "Inductor", "Cable Socket", "Chip Socket", "Daughter Board Socket"};

struct Power {
    double designMilliwatts, utilisation;
};

Power powerOf(const Properties &properties, const char *type = "Component") {
    ComponentBench bench;
    bench.part.setImportToType(type);
    for (const auto &[name, value] : properties)
        bench.part.addProperty(name, value);
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, Heat_Dissipated_t), "(none)");
    return {getDoubleValue(entity, Thermal_Design_Power_t, "mW", -1.0),
            getStandardDoubleValue(entity, Utilisation_t, -1.0)};
}

void expectPower(const Properties &properties, double designMilliwatts, double utilisation) {
    const Power power = powerOf(properties);
    const std::string shown = testing::PrintToString(properties);
    EXPECT_NEAR(power.designMilliwatts, designMilliwatts, 1e-9) << shown;
    EXPECT_NEAR(power.utilisation, utilisation, 1e-9) << shown;
}

Properties both(const char *operating, const char *maximum) {
    return {{"POWER_OPR", operating}, {"POWER_MAX", maximum}};
}

} // namespace

TEST(Power, EveryTypeOnABoardHasADesignPowerAndAUtilisation) {
    for (const char *type : types) {
        const Power power = powerOf(both("500", "2000"), type);
        EXPECT_EQ(power.designMilliwatts, 2000.0) << type;
        EXPECT_EQ(power.utilisation, 25.0) << type;
    }
}

TEST(Power, TheOperatingPowerAloneIsTheDesignPowerInFullUse) {
    expectPower({{"POWER_OPR", "500"}}, 500.0, 100.0);
    expectPower(both("500", ""), 500.0, 100.0);
}

TEST(Power, TheMaximumAloneIsADesignPowerWithoutUse) {
    expectPower({{"POWER_MAX", "2000"}}, 2000.0, 0.0);
    expectPower(both("", "2000"), 2000.0, 0.0);
}

TEST(Power, WithoutEitherAllStaysAsItWas) {
    expectPower({}, 0.0, 100.0);
    expectPower(both("", ""), 0.0, 100.0);
    expectPower({{"power_opr", "500"}, {"POWER_MAX ", "500"}}, 0.0, 100.0);
}

TEST(Power, AMaximumOfZeroHasNoUse) {
    expectPower(both("500", "0"), 0.0, 0.0);
    expectPower(both("500", "-0"), 0.0, 0.0);
    expectPower(both("500", "0.0e5"), 0.0, 0.0);
}

TEST(Power, OfRepeatedPropertiesTheLastCounts) {
    expectPower({{"POWER_OPR", "1"}, {"POWER_MAX", "9"}, {"POWER_OPR", "500"}, {"POWER_MAX", "1000"}}, 1000.0,
                50.0);
    expectPower({{"POWER_OPR", "1"}, {"POWER_OPR", ""}}, 0.0, 100.0);
}

TEST(Power, ATextThatIsNoNumberCountsAsZeroAndSetsNoPower) {
    for (const char *value : {"abc", " ", "inf", "nan", "1e999",
                              "\xff"
                              "5"}) {
        expectPower(both("500", value), 0.0, 0.0);
        expectPower(both(value, "1000"), 1000.0, 0.0);
        expectPower({{"POWER_OPR", value}}, 0.0, 100.0);
    }
}

TEST(Power, NumbersAreReadWhereTheTextGoesOn) {
    expectPower(both("500 mW", "1000"), 1000.0, 50.0);
    expectPower(both("500\xc2\xb5", "1000"), 1000.0, 50.0);
    expectPower(both(" \t+500", "1000 "), 1000.0, 50.0);
    expectPower(both("500", "1000 of them"), 0.0, 50.0); // The power itself takes no such text.
}

TEST(Power, AUtilisationBeyondAllNumbersIsRefused) { expectPower(both("1e308", "1e-8"), 1e-8, 100.0); }

TEST(SolidPower, TheOperatingPowerIsDissipatedByADie) {
    ComponentBench bench;
    bench.part.addProperty("POWER_OPR", "1");
    bench.part.addProperty("POWER_OPR", "500");
    bench.part.addProperty("POWER_MAX", "9000");
    Entity *const solid = bench.importOneOnSubstrate();
    EXPECT_EQ(getDoubleValue(solid, Heat_Dissipated_t, "mW", -1.0), 500.0);
    EXPECT_EQ(text(solid, Type_t), "Die");
}

TEST(SolidPower, WithoutOperatingPowerASolidStaysWhatItIs) {
    for (const Properties &properties : {Properties{{"POWER_MAX", "9000"}}, both("", "9000"), Properties{}}) {
        ComponentBench bench;
        for (const auto &[name, value] : properties)
            bench.part.addProperty(name, value);
        Entity *const solid = bench.importOneOnSubstrate();
        EXPECT_EQ(getDoubleValue(solid, Heat_Dissipated_t, "mW", -1.0), 0.0);
        EXPECT_EQ(text(solid, Type_t), "Other");
    }
}

TEST(SolidPower, ATextThatIsNoNumberStillMakesADie) {
    ComponentBench bench;
    bench.part.addProperty("POWER_OPR", "abc");
    Entity *const solid = bench.importOneOnSubstrate();
    EXPECT_EQ(getDoubleValue(solid, Heat_Dissipated_t, "mW", -1.0), 0.0);
    EXPECT_EQ(text(solid, Type_t), "Die");
}
