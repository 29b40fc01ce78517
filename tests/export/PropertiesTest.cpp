// Properties of components.
#include "ExportScene.h"

using namespace TestSupport;

namespace {

using Properties = std::vector<std::pair<std::string, std::string>>;

Properties propertiesOf(const EDA::EDAComponent &component) {
    return {component.beginProperties(), component.endProperties()};
}

std::string valueOf(const EDA::EDAComponent &component, const std::string &key) {
    for (const auto &[name, value] : propertiesOf(component))
        if (name == key) return value;
    return "(none)";
}

struct Case {
    const char *type;
    const char *list;
    std::vector<std::pair<const char *, std::string>> values;
    const char *property;
    const char *expected;
};

class ExportedProperty : public ExportScene, public testing::WithParamInterface<Case> {};

TEST_P(ExportedProperty, HasTheTextOfTheAttribute) {
    add(pcb, GetParam().type, GetParam().list, GetParam().values);
    EXPECT_EQ(valueOf(component(exported()), GetParam().property), GetParam().expected);
}

const char *const power = "Thermal Design Power";
const char *const board2R = "Junction to Board Thermal Resistance";
const char *const case2R = "Junction to Case Thermal Resistance";

// Limits count in standard units, whatever the unit of the text.
INSTANTIATE_TEST_SUITE_P(
    All, ExportedProperty,
    testing::Values(
        Case{"Component", "Components", {{power, "1.25 W"}}, "POWER_MAX", "1250"},
        Case{"Component", "Components", {{power, "0.1 mW"}}, "POWER_MAX", "0.1"},
        Case{"Component", "Components", {{power, "1e-6 W"}}, "POWER_MAX", "(none)"},
        Case{"Component", "Components", {{power, "1.1e-6 W"}}, "POWER_MAX", "0.0011"},
        Case{"Component", "Components", {{power, "-1 W"}}, "POWER_MAX", "(none)"},
        Case{"Component", "Components", {}, "POWER_MAX", "(none)"},
        Case{"Component", "Components", {{power, "1 W"}}, "POWER_OPR", "1000"},
        Case{"Component", "Components", {{power, "1 W"}, {"Utilisation", "40"}}, "POWER_OPR", "400"},
        Case{"Component", "Components", {{power, "1 W"}, {"Utilisation", "1e-6"}}, "POWER_OPR", "(none)"},
        Case{"Component", "Components", {{power, "0.9e-9 W"}}, "POWER_OPR", "(none)"},
        Case{"Component", "Components", {{power, "1e-8 W"}}, "POWER_OPR", "1e-05"},
        Case{"Component", "Components", {{power, "1e-8 W"}}, "POWER_MAX", "(none)"},
        Case{"Component", "Components", {{power, "1e300"}, {"Utilisation", "1e20"}}, "POWER_OPR", "(none)"},
        Case{"Component", "Components", {{power, "1e300 W"}, {"Utilisation", "1e20"}}, "POWER_MAX", "1e+303"},
        Case{"Cable Socket", "Cable Sockets", {{power, "1 W"}}, "POWER_MAX", "1000"},
        Case{"Component", "Components", {{"Modelling Level", "2R"}, {board2R, "12.5"}}, "THETA_JB", "12.5"},
        Case{"Component", "Components", {{"Modelling Level", "2R"}, {case2R, "3 K/W"}}, "THETA_JC", "3"},
        Case{"Component", "Components", {{board2R, "12.5"}}, "THETA_JB", "(none)"},
        Case{"Component", "Components", {{case2R, "3"}}, "THETA_JC", "(none)"},
        Case{"Component",
             "Components",
             {{"Modelling Level", "Detailed"}, {case2R, "3"}},
             "THETA_JC",
             "(none)"},
        Case{
            "Component", "Components", {{"Modelling Level", "2R"}, {board2R, "1e-12"}}, "THETA_JB", "(none)"},
        Case{"Component", "Components", {{"Modelling Level", "2R"}, {case2R, "1e-12"}}, "THETA_JC", "(none)"},
        Case{"Component", "Components", {{"Modelling Level", "2R"}, {case2R, "2e-12"}}, "THETA_JC", "2e-12"},
        Case{"Capacitor", "Capacitors", {{"Electrical Capacitance", "4.7 uF"}}, "CAPACITANCE", "4.7"},
        Case{"Capacitor", "Capacitors", {{"Electrical Capacitance", "1 pF"}}, "CAPACITANCE", "(none)"},
        Case{"Capacitor", "Capacitors", {{"Electrical Capacitance", "2 pF"}}, "CAPACITANCE", "2e-06"},
        Case{"Capacitor", "Capacitors", {}, "CAPACITANCE", "(none)"},
        Case{"Resistor", "Resistors", {{"Electrical Resistance", "4.7 kOhm"}}, "RESISTANCE", "4700"},
        Case{"Resistor", "Resistors", {}, "RESISTANCE", "(none)"},
        Case{"Resistor", "Resistors", {{"Electrical Resistance", "1e-12 Ohm"}}, "RESISTANCE", "(none)"},
        Case{"Resistor", "Resistors", {{"Electrical Resistance", "2e-12 Ohm"}}, "RESISTANCE", "2e-12"},
        Case{"Inductor", "Inductors", {{"Electrical Inductance", "10 nH"}}, "INDUCTANCE", "0.01"},
        Case{"Inductor", "Inductors", {}, "INDUCTANCE", "(none)"},
        Case{"Inductor", "Inductors", {{"Electrical Inductance", "1e-12 H"}}, "INDUCTANCE", "(none)"},
        Case{"Inductor", "Inductors", {{"Electrical Inductance", "2e-12 H"}}, "INDUCTANCE", "2e-06"},
        Case{"Resistor",
             "Resistors",
             {{"Electrical Resistance", "0.1234567890123"}},
             "RESISTANCE",
             "0.1234567890123"},
        Case{"Component", "Components", {}, "4ZETA_TYPE", "Component"},
        Case{"Daughter Board Socket", "Daughter Board Sockets", {}, "4ZETA_TYPE", "Daughter Board Socket"}),
    [](const auto &test) { return "Case" + std::to_string(test.index); });

class ExportedProperties : public ExportScene {
protected:
    Entity *addMaterial(const char *conductivity) {
        Entity *const material = add(model.root(), "Material", "Materials");
        EXPECT_TRUE(EntityEditor::setValue(material, Conductivity_t / AttributePath(Value_t), conductivity));
        return material;
    }
};

TEST_F(ExportedProperties, ConductivityIsThatOfTheLinkedMaterial) {
    Entity *const part = addComponent();
    ASSERT_TRUE(EntityEditor::addEntity(part, MaterialLink_t, addMaterial("12.5 W/(m K)")));
    EXPECT_EQ(valueOf(component(exported()), "THERM_COND"), "12.5");
}

TEST_F(ExportedProperties, SmallestConductivityIsNone) {
    Entity *const part = addComponent();
    ASSERT_TRUE(EntityEditor::addEntity(part, MaterialLink_t, addMaterial("1e-6")));
    EXPECT_EQ(valueOf(component(exported()), "THERM_COND"), "(none)");
}

TEST_F(ExportedProperties, WithoutMaterialHaveNoConductivity) {
    addMaterial("12.5");
    addComponent();
    EXPECT_EQ(valueOf(component(exported()), "THERM_COND"), "(none)");
}

TEST_F(ExportedProperties, ComeInAFixedOrder) {
    Entity *const part =
        addComponent({{power, "1 W"}, {"Modelling Level", "2R"}, {board2R, "2"}, {case2R, "3"}});
    ASSERT_TRUE(EntityEditor::addEntity(part, MaterialLink_t, addMaterial("4")));
    EXPECT_EQ(propertiesOf(component(exported())), (Properties{{"POWER_MAX", "1000"},
                                                               {"POWER_OPR", "1000"},
                                                               {"THERM_COND", "4"},
                                                               {"THETA_JB", "2"},
                                                               {"THETA_JC", "3"},
                                                               {"4ZETA_TYPE", "Component"}}));
}

TEST_F(ExportedProperties, OfADefinitionAreThoseOfItsFirstPart) {
    addComponent({{"Model", "A"}, {power, "1 W"}});
    addComponent({{"Model", "A"}, {power, "2 W"}});
    const EDA::EDABoard board = exported();
    ASSERT_EQ(board.numComponents(), 1u);
    EXPECT_EQ(valueOf(component(board), "POWER_MAX"), "1000");
}

} // namespace
