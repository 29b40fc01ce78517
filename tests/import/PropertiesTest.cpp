// Free-form properties of components as attributes of what they become.
#include "ComponentSupport.h"
#include "support/ScriptedLibrary.h"

using namespace TestSupport;

namespace {

using Properties = std::vector<std::pair<std::string, std::string>>;

const char *const types[] = {"Component",
                             "Resistor",
                             "Capacitor",
                             "Inductor",
                             "Cable Socket",
                             "Chip Socket",
                             "Daughter Board Socket",
                             "Solid Obstruction"};

// One component with these properties, imported as a type; as a solid, it stands on a substrate.
struct PropertyBench : ComponentBench {
    explicit PropertyBench(const std::string &type, const Properties &properties = {},
                           const char *kind = "ELECTRICAL")
        : ComponentBench(boxOutline, kind) {
        part.setImportToType(type);
        for (const auto &[name, value] : properties)
            part.addProperty(name, value);
        entity = type == "Solid Obstruction" ? importOneOnSubstrate() : importOne();
        EXPECT_TRUE(entity && entity->getType().getLabel() == type) << type;
    }
    std::string material() const {
        std::string name;
        const Entity *const linked = getLinkedEntity(entity, MaterialLink_t);
        return linked ? linked->getName(name) : "(none)";
    }
    double conductivity() const {
        return getStandardDoubleValue(getLinkedEntity(entity, MaterialLink_t),
                                      Conductivity_t / AttributePath(Value_t), -1.0);
    }

    Entity *entity = nullptr;
};

std::string noteOf(const Properties &properties) {
    return text(PropertyBench("Component", properties).entity, Description_t);
}

struct QuantityRow {
    const char *name;
    const char *attribute;
    const char *unit;
    const char *owner; // The one type that has the attribute.
};

const QuantityRow quantityRows[] = {
    {"THETA_JB", "Junction to Board Thermal Resistance", "C/W", "Component"},
    {"THETA_JC", "Junction to Case Thermal Resistance", "C/W", "Component"},
    {"CAPACITANCE", "Electrical Capacitance", "uF", "Capacitor"},
    {"RESISTANCE", "Electrical Resistance", "Ohm", "Resistor"},
    {"INDUCTANCE", "Electrical Inductance", "uH", "Inductor"},
};

} // namespace

TEST(Properties, EachQuantityGoesToTheTypeThatHasItAndIsDroppedElsewhere) {
    for (const QuantityRow &row : quantityRows) {
        for (const std::string type : types) {
            const PropertyBench bench(type, {{row.name, "2.5"}});
            const double value = getDoubleValue(bench.entity, row.attribute, row.unit, -1.0);
            EXPECT_EQ(value, type == row.owner ? 2.5 : -1.0) << row.name << " on " << type;
            const std::string description = text(bench.entity, Description_t);
            EXPECT_TRUE(description.empty() || description == "(none)") << row.name << " on " << type;
        }
    }
}

TEST(Properties, JunctionResistancesMakeAComponentOneOfTwoResistors) {
    EXPECT_EQ(text(PropertyBench("Component").entity, Modelling_Level_t), "Simple");
    for (const char *name : {"THETA_JB", "THETA_JC"}) {
        for (const char *value : {"2.5", "no number"}) {
            EXPECT_EQ(text(PropertyBench("Component", {{name, value}}).entity, Modelling_Level_t), "2R");
        }
        EXPECT_EQ(text(PropertyBench("Resistor", {{name, "1"}}).entity, Modelling_Level_t), "(none)");
    }
    EXPECT_EQ(text(PropertyBench("Component", {{"RESISTANCE", "1"}}).entity, Modelling_Level_t), "Simple");
}

TEST(Properties, ATextThatIsNoNumberSetsNothingAndTheImportGoesOn) {
    for (const char *value : {"", " ", "abc", "inf", "-inf", "nan", "1e999", "3 kOhm", "3,5", "\xff", "0x"}) {
        const PropertyBench bench("Resistor", {{"RESISTANCE", value}, {"after", "1"}});
        EXPECT_EQ(getDoubleValue(bench.entity, Electrical_Resistance_t, "Ohm", -1.0), 0.0) << value;
        EXPECT_EQ(text(bench.entity, Description_t), "after=1 ") << value;
    }
}

TEST(Properties, TheLastGoodOneOfARepeatedQuantityStands) {
    const PropertyBench bench("Resistor", {{"RESISTANCE", "3"}, {"RESISTANCE", "4"}, {"RESISTANCE", "x"}});
    EXPECT_EQ(getDoubleValue(bench.entity, Electrical_Resistance_t, "Ohm", -1.0), 4.0);
}

TEST(Properties, NamesAreMatchedWithCaseAndBlanks) {
    EXPECT_EQ(noteOf({{"theta_jb", "1"}}), "theta_jb=1 ");
    EXPECT_EQ(noteOf({{"THETA_JB ", "1"}}), "THETA_JB =1 ");
    EXPECT_EQ(noteOf({{"therm_cond", "1"}}), "therm_cond=1 ");
    EXPECT_EQ(noteOf({{"", ""}}), "= ");
}

TEST(PropertyNotes, AnyOtherPropertyIsALineOfTheDescription) {
    EXPECT_EQ(noteOf({}), "");
    EXPECT_EQ(noteOf({{"MAKER", "ACME"}}), "MAKER=ACME ");
    EXPECT_EQ(noteOf({{"TOLERANCE", "5"}}), "TOLERANCE=5 % deviation");
    EXPECT_EQ(noteOf({{"A", "1"}, {"THETA_JB", "2"}, {"TOLERANCE", "5"}, {"4ZETA_TYPE", "Chip"}, {"A", ""}}),
              "A=1 \nTOLERANCE=5 % deviation\nA= ");
    EXPECT_EQ(noteOf({{"POWER_OPR", "5"}}), "POWER_OPR=5 ");
}

TEST(PropertyNotes, EveryTypeWithADescriptionTakesThem) {
    for (const char *type : types) {
        EXPECT_EQ(text(PropertyBench(type, {{"A", "1"}}).entity, Description_t), "A=1 ") << type;
    }
}

TEST(PropertyNotes, TheyFollowADescriptionThatIsThere) {
    ScriptedLibrary library;
    library.items["PART"] = {
        LibraryInterface::Mapped, [] {
            return ScriptedLibrary::makeEntity(Component_t, {{"Description", "from the library"}});
        }};
    ComponentBench bench(boxOutline, "ELECTRICAL", &library);
    bench.part.addProperty("A", "1");
    bench.part.addProperty("B", "2");
    EXPECT_EQ(text(bench.importOne(), Description_t), "from the library\nA=1 \nB=2 ");
}

TEST(PropertyNotes, WithoutTheSettingThereAreNone) {
    ComponentBench bench;
    bench.importer.setStoreExtraProperties(false);
    bench.part.addProperty("A", "1");
    bench.part.addProperty("THETA_JB", "2");
    Entity *const entity = bench.importOne();
    EXPECT_EQ(text(entity, Description_t), "");
    EXPECT_EQ(text(entity, Modelling_Level_t), "2R");
}

TEST(PropertyNotes, TwoHundredThousandOfOnePartTakeLinearTime) {
    ComponentBench bench;
    for (int i = 0; i < 200000; ++i)
        bench.part.addProperty("SOME_PROPERTY", "some longer value of it");
    EXPECT_EQ(text(bench.importOne(), Description_t).size(), 200000u * 39 - 1);
}

TEST(ThermalConductivity, TheNameOfTheMaterialDependsOnTheClassAndTheText) {
    struct Row {
        const char *value, *ofComponent, *ofPlastic;
    };
    const Row rows[] = {
        {"10", "Typical Component", "EDA Import: Conductivity=10 W/(m K)"},
        {"0.25", "EDA Import: Conductivity=0.25 W/(m K)", "ABS-Plastic"},
        {"", "Typical Component", "ABS-Plastic"},
        {"10.0", "EDA Import: Conductivity=10.0 W/(m K)", "EDA Import: Conductivity=10.0 W/(m K)"},
        {" 10", "EDA Import: Conductivity= 10 W/(m K)", "EDA Import: Conductivity= 10 W/(m K)"},
    };
    for (const Row &row : rows) {
        for (const std::string type : types) {
            const bool isPlastic = type == "Cable Socket" || type == "Daughter Board Socket";
            EXPECT_EQ(PropertyBench(type, {{"THERM_COND", row.value}}).material(),
                      isPlastic ? row.ofPlastic : row.ofComponent)
                << type;
        }
        EXPECT_EQ(PropertyBench("Component", {{"THERM_COND", row.value}}, "MECHANICAL").material(),
                  row.ofPlastic);
        EXPECT_EQ(PropertyBench("Resistor", {{"THERM_COND", row.value}}, "MECHANICAL").material(),
                  row.ofComponent);
    }
}

TEST(ThermalConductivity, AConstructedMaterialHasOnlyThatValue) {
    const PropertyBench bench("Cable Socket", {{"THERM_COND", "10"}});
    EXPECT_EQ(bench.conductivity(), 10.0);
    const Entity *const material = getLinkedEntity(bench.entity, MaterialLink_t);
    EXPECT_EQ(getStandardDoubleValue(material, Density_t / AttributePath(Value_t), -1.0), 0.0);
    EXPECT_EQ(getStandardDoubleValue(material, Specific_Heat_t / AttributePath(Value_t), -1.0), 0.0);
}

TEST(ThermalConductivity, ADefaultMaterialHasItsValuesWhateverTheTextWas) {
    EXPECT_EQ(PropertyBench("Component", {{"THERM_COND", "10"}}).conductivity(), 10.0);
    EXPECT_EQ(PropertyBench("Cable Socket", {{"THERM_COND", "0.25"}}).conductivity(), 0.25);
    EXPECT_EQ(PropertyBench("Cable Socket").conductivity(), 0.25);
}

TEST(ThermalConductivity, ATextThatIsNoNumberMakesAMaterialWithoutOne) {
    const PropertyBench bench("Component", {{"THERM_COND", "abc"}});
    EXPECT_EQ(bench.material(), "EDA Import: Conductivity=abc W/(m K)");
    EXPECT_EQ(bench.conductivity(), 0.0);
}

TEST(ThermalConductivity, TheLastOfSeveralStands) {
    const PropertyBench bench("Component", {{"THERM_COND", "3"}, {"THERM_COND", "4"}});
    EXPECT_EQ(bench.conductivity(), 4.0);
}

TEST(ThermalConductivity, ItStandsAboveTheMaterialOfTheOutline) {
    ComponentBench bench;
    bench.part.getOutline().setMaterial("Silicon");
    bench.part.addProperty("THERM_COND", "3");
    std::string name;
    EXPECT_EQ(getLinkedEntity(bench.importOne(), MaterialLink_t)->getName(name),
              "EDA Import: Conductivity=3 W/(m K)");
}

TEST(ThermalConductivity, EqualTextsShareOneMaterial) {
    ComponentBench bench;
    bench.part.addProperty("THERM_COND", "3");
    bench.addAs("U1", 30, 40);
    bench.addAs("U2", 50, 40);
    const auto placed = bench.importAll();
    ASSERT_EQ(placed.size(), 2u);
    EXPECT_TRUE(getLinkedEntity(placed[0], MaterialLink_t));
    EXPECT_EQ(getLinkedEntity(placed[0], MaterialLink_t), getLinkedEntity(placed[1], MaterialLink_t));
}

TEST(ThermalConductivity, EqualTextsOfTwoDefinitionsShareOneMaterial) {
    ComponentBench bench;
    bench.part.addProperty("THERM_COND", "3");
    EDA::EDAComponent other = bench.part;
    other.setName("OTHER");
    bench.board().addComponent(other, false);
    bench.add();
    bench.placement.setName("OTHER");
    bench.addAs("U2", 50, 40);
    const auto placed = bench.importAll();
    ASSERT_EQ(placed.size(), 2u);
    EXPECT_EQ(text(placed[0], Model_t) + text(placed[1], Model_t), "PARTOTHER");
    EXPECT_TRUE(getLinkedEntity(placed[0], MaterialLink_t));
    EXPECT_EQ(getLinkedEntity(placed[0], MaterialLink_t), getLinkedEntity(placed[1], MaterialLink_t));
}

TEST(ThermalConductivity, AConstructedMaterialIsFoundAgainAndKeepsItsValues) {
    ComponentBench bench;
    Entity *const own = EntityEditor::createEntity(Material_t, bench.model.root(), Materials_t, nullptr, true,
                                                   true, false, "EDA Import: Conductivity=3 W/(m K)");
    EntityEditor::setSIValue(own, Conductivity_t / AttributePath(Value_t), 99.0);
    bench.part.addProperty("THERM_COND", "3");
    EXPECT_EQ(getLinkedEntity(bench.importOne(), MaterialLink_t), own);
    EXPECT_EQ(getStandardDoubleValue(own, Conductivity_t / AttributePath(Value_t), -1.0), 99.0);
}
