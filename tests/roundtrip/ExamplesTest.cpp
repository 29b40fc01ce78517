// The examples go through models and files until nothing changes.
#include "RoundTrip.h"

#include <set>

using namespace TestSupport;

namespace {

struct Example {
    const char *file;
    const char *units;
};

class RoundTripOfExample : public RoundTrip, public testing::WithParamInterface<Example> {
protected:
    Generation first() const { return read(std::string(EDA_EXAMPLES) + "/" + GetParam().file); }
};

INSTANTIATE_TEST_SUITE_P(All, RoundTripOfExample,
                         testing::Values(Example{"controller/controller.emn", "MM"},
                                         Example{"thou-board/blinker.emn", "THOU"}),
                         [](const auto &test) { return std::string(test.param.units); });

TEST_P(RoundTripOfExample, SecondAndThirdGenerationAreEqual) {
    const Generation second = throughFiles(first(), GetParam().units);
    const Generation third = throughFiles(second, GetParam().units);
    EXPECT_EQ(second.text(), third.text());
}

TEST_P(RoundTripOfExample, OtherUnitsSettleAsWell) {
    const Generation second = throughFiles(first(), "CM");
    const Generation third = throughFiles(second, "CM");
    EXPECT_EQ(second.text(), third.text());
}

TEST_P(RoundTripOfExample, KeepsEveryEntityOfABoardButRoutingKeepouts) {
    const Generation before = first();
    const Generation after = throughFiles(before, GetParam().units);
    for (const TypeRef &list : {Holes_t, Components_t, Capacitors_t, Resistors_t, Inductors_t, Chip_Sockets_t,
                                Cable_Sockets_t, Daughter_Board_Sockets_t})
        EXPECT_EQ(after.members(list).size(), before.members(list).size()) << list.getLabel();
    std::size_t routing = 0;
    for (const Entity *keepout : before.members(Keepouts_t))
        routing += getPreciceStringValue(keepout, Keepout_Type_t, "") == "Routing";
    EXPECT_EQ(after.members(Keepouts_t).size() + routing, before.members(Keepouts_t).size());
}

// Six digits of a length of up to 4 inches, and of the angle that a place was turned by.
TEST_P(RoundTripOfExample, KeepsPlacesAndThermalValues) {
    const Generation before = first();
    const Generation after = throughFiles(before, GetParam().units);
    std::set<std::string> seen;
    for (const TypeRef &list : {Components_t, Capacitors_t, Resistors_t, Inductors_t}) {
        for (Entity *part : before.members(list)) {
            const std::string designator = getPreciceStringValue(part, Reference_Designator_t, "");
            // A designator that two parts share does not tell which of them came back where.
            if (!seen.insert(designator).second) continue;
            SCOPED_TRACE(designator);
            Entity *const back = after.part(designator);
            ASSERT_NE(back, nullptr);
            for (const TypeRef &label :
                 {X_Location_t, Y_Location_t, Z_Location_t, Width_t, Depth_t, Height_t, Diameter_t})
                EXPECT_NEAR(getDoubleValue(back, label, "mm", 0.0), getDoubleValue(part, label, "mm", 0.0),
                            2e-4)
                    << label.getLabel();
            for (const TypeRef &label : {Board_Side_t, Modelling_Level_t, Type_t, Shape_t})
                EXPECT_EQ(getPreciceStringValue(back, label, ""), getPreciceStringValue(part, label, ""))
                    << label.getLabel();
            for (const TypeRef &label :
                 {Angle_t, Orientation_t, Thermal_Design_Power_t, Utilisation_t,
                  Junction_to_Board_Thermal_Resistance_t, Junction_to_Case_Thermal_Resistance_t,
                  Electrical_Resistance_t, Electrical_Capacitance_t, Electrical_Inductance_t}) {
                const double value = getStandardDoubleValue(part, label, 0.0);
                EXPECT_NEAR(getStandardDoubleValue(back, label, 0.0), value, 1e-5 * std::abs(value))
                    << label.getLabel();
            }
            const auto conductivity = [](const Entity *entity) {
                return getStandardDoubleValue(getLinkedEntity(entity, MaterialLink_t),
                                              Conductivity_t / AttributePath(Value_t), 0.0);
            };
            EXPECT_EQ(conductivity(back), conductivity(part));
        }
    }
    EXPECT_GT(seen.size(), 5u);
}

} // namespace
