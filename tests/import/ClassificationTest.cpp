// Which type a component is found to have, by each source and in their order.
#include "support/ImportBench.h"
#include "support/Outlines.h"
#include "support/ScriptedLibrary.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using testing::Each;
using testing::ElementsAre;

namespace {

EDA::EDAComponent part(const std::string &name = "PART", const std::string &partNumber = "") {
    EDA::EDAComponent made("ELECTRICAL");
    made.setName(name);
    made.setPartNumber(partNumber);
    EDA::test::addPoints(made.getOutline(), 0, "0,0 3,0 3,4 0,4");
    return made;
}

EDA::EDAComponent partWith(std::initializer_list<std::pair<const char *, const char *>> properties) {
    EDA::EDAComponent made = part();
    for (const auto &[name, value] : properties)
        made.addProperty(name, value);
    return made;
}

struct Classifier {
    Classifier() { importer.setTypeMap({{"R", "Resistor"}, {"C", "Capacitor"}, {"", "Nameless"}}); }

    void place(const std::string &designator, const std::string &name = "PART",
               const std::string &partNumber = "") {
        EDA::EDAComponentPlacement placement;
        placement.setName(name);
        placement.setPartNumber(partNumber);
        placement.setReferenceDesignator(designator);
        board.addComponentPlacement(placement);
    }
    std::string typeOf(const EDA::EDAComponent &component, Entity *parent = nullptr) const {
        return importer.getComponentType(component, board, parent);
    }
    void answer(LibraryInterface::MappingType mapping, ScriptedLibrary::Maker make = nullptr) {
        library.items["PART"] = {mapping, std::move(make)};
    }

    ScriptedLibrary library;
    EDA::EDAImporter importer{&library, "", ""};
    EDA::EDABoard board;
};

std::string typeByDesignators(std::initializer_list<const char *> designators) {
    Classifier bench;
    bench.importer.setTypeMap({{"R", "Resistor"},
                               {"", "Nameless"},
                               {"LED", "Light"},
                               {"r", "small"},
                               {"R-", "dashed"},
                               {"\xc3\x9c", "accented"},
                               {"R\xd9\xa1", "foreign digit"},
                               {"\xff", "broken"}});
    for (const char *designator : designators)
        bench.place(designator);
    return bench.typeOf(part());
}

std::string typeByProperties(const EDA::EDAComponent &component) {
    return EDA::EDAImporter::getComponentTypeFromProperties(component);
}

} // namespace

TEST(ClassifyByProperties, EachNameTellsItsType) {
    EXPECT_EQ(typeByProperties(part()), "");
    EXPECT_EQ(typeByProperties(partWith({{"RESISTANCE", "3"}})), "Resistor");
    EXPECT_EQ(typeByProperties(partWith({{"CAPACITANCE", "3"}})), "Capacitor");
    EXPECT_EQ(typeByProperties(partWith({{"INDUCTANCE", "3"}})), "Inductor");
    EXPECT_EQ(typeByProperties(partWith({{"THETA_JB", "3"}})), "Component");
    EXPECT_EQ(typeByProperties(partWith({{"THETA_JC", ""}})), "Component");
    EXPECT_EQ(typeByProperties(partWith({{"POWER_OPR", "3"}, {"resistance", "3"}, {"THETA_JB ", "3"}})), "");
}

TEST(ClassifyByProperties, TheOrderOfTheTestsAndNotOfThePropertiesDecides) {
    EXPECT_EQ(typeByProperties(partWith({{"THETA_JB", "1"}, {"INDUCTANCE", "1"}})), "Inductor");
    EXPECT_EQ(typeByProperties(partWith({{"INDUCTANCE", "1"}, {"CAPACITANCE", "1"}})), "Capacitor");
    EXPECT_EQ(typeByProperties(partWith({{"CAPACITANCE", "1"}, {"RESISTANCE", "1"}})), "Resistor");
    EXPECT_EQ(typeByProperties(partWith({{"RESISTANCE", "1"}, {"4ZETA_TYPE", "Inductor"}})), "Inductor");
    EXPECT_EQ(typeByProperties(partWith({{"4ZETA_TYPE", "Resistor"}, {"CAPACITANCE", "1"}})), "Resistor");
}

TEST(ClassifyByProperties, AChipIsAComponentAndAnyOtherNamedTypeGoesThrough) {
    EXPECT_EQ(typeByProperties(partWith({{"4ZETA_TYPE", "Chip"}})), "Component");
    EXPECT_EQ(typeByProperties(partWith({{"4ZETA_TYPE", "chip"}})), "chip");
    EXPECT_EQ(typeByProperties(partWith({{"4ZETA_TYPE", "Chip Socket"}})), "Chip Socket");
    EXPECT_EQ(typeByProperties(partWith({{"4ZETA_TYPE", "\xff\x01"}})), "\xff\x01");
}

TEST(ClassifyByProperties, TheFirstNamedTypeCountsEvenIfEmpty) {
    EXPECT_EQ(typeByProperties(partWith({{"4ZETA_TYPE", "Resistor"}, {"4ZETA_TYPE", "Capacitor"}})),
              "Resistor");
    EXPECT_EQ(typeByProperties(partWith({{"4ZETA_TYPE", ""}, {"CAPACITANCE", "1"}})), "");
}

TEST(ClassifyByDesignators, TheTextUpToTheFirstDigitIsLookedUp) {
    EXPECT_EQ(typeByDesignators({"R1"}), "Resistor");
    EXPECT_EQ(typeByDesignators({"R1", "R2", "R10A7"}), "Resistor");
    EXPECT_EQ(typeByDesignators({"LED"}), "Light"); // Without a digit all of it is the prefix.
    EXPECT_EQ(typeByDesignators({"LED2", "LED"}), "Light");
    EXPECT_EQ(typeByDesignators({"R-1"}), "dashed");
    EXPECT_EQ(typeByDesignators({"r1"}), "small");
    EXPECT_EQ(typeByDesignators({"Q1"}), "Component");
    EXPECT_EQ(typeByDesignators({"RR1"}), "Component");
}

TEST(ClassifyByDesignators, PrefixesThatDifferTellNothing) {
    EXPECT_EQ(typeByDesignators({"R1", "U2"}), "Component");
    EXPECT_EQ(typeByDesignators({"R1", "r2"}), "Component");
    EXPECT_EQ(typeByDesignators({"R1", "LED1", "R2"}), "Component");
}

TEST(ClassifyByDesignators, AnEmptyPrefixGivesWayToALaterOneButContradictsAnEarlierOne) {
    EXPECT_EQ(typeByDesignators({}), "Component");
    EXPECT_EQ(typeByDesignators({"1X"}), "Component");
    EXPECT_EQ(typeByDesignators({""}), "Component");
    EXPECT_EQ(typeByDesignators({"1X", "R1"}), "Resistor");
    EXPECT_EQ(typeByDesignators({"1X", "", "R1", "R2"}), "Resistor");
    EXPECT_EQ(typeByDesignators({"R1", "1X"}), "Component");
    EXPECT_EQ(typeByDesignators({"R1", "1X", "LED1"}), "Component"); // The walk has stopped.
}

TEST(ClassifyByDesignators, OnlyTheDigitsOfAsciiEndAPrefix) {
    EXPECT_EQ(typeByDesignators({"\xc3\x9c"
                                 "12"}),
              "accented");
    EXPECT_EQ(typeByDesignators({"R\xd9\xa1"}), "foreign digit");
    EXPECT_EQ(typeByDesignators({"\xff"
                                 "5"}),
              "broken");
}

TEST(ClassifyByDesignators, PlacementsOfThePartNumberStandAboveThoseOfTheNameAlone) {
    Classifier bench;
    bench.place("R1", "PART", "A");
    bench.place("C1", "PART", "B");
    bench.place("C2", "PART", "C");
    EXPECT_EQ(bench.typeOf(part("PART", "A")), "Resistor");
    EXPECT_EQ(bench.typeOf(part("PART", "B")), "Capacitor");
    EXPECT_EQ(bench.typeOf(part("PART", "none")), "Component"); // All three, which differ.
    EXPECT_EQ(bench.typeOf(part("OTHER", "A")), "Component");
}

TEST(ClassifyByDesignators, AMappedTextIsGivenAsItStands) {
    Classifier bench;
    bench.importer.setTypeMap({{"R", ""}, {"C", " x"}});
    bench.place("R1");
    bench.place("C1", "CAP");
    EXPECT_EQ(bench.typeOf(part()), "");
    EXPECT_EQ(bench.typeOf(part("CAP")), " x");
}

TEST(Classify, WithoutOutlineThereIsNoGeometryWhateverElseSpeaks) {
    Classifier bench;
    bench.answer(LibraryInterface::DoNotImport);
    EDA::EDAComponent component("ELECTRICAL");
    component.setName("PART");
    component.addProperty("RESISTANCE", "1");
    EXPECT_EQ(bench.typeOf(component), "No Geometry");
    EXPECT_TRUE(bench.library.finds.empty());
}

TEST(Classify, InnerOutlinesAloneAreAGeometry) {
    EDA::EDAComponent component("ELECTRICAL");
    EDA::test::addPoints(component.getOutline(), 1, "0,0 3,0 3,4");
    EXPECT_EQ(Classifier().typeOf(component), "Component");
}

TEST(Classify, TheLibraryIsAskedOnceForExactlyTheNameWithoutPath) {
    Classifier bench;
    bench.typeOf(part("PART", "N1"));
    ASSERT_EQ(bench.library.finds.size(), 1u);
    EXPECT_EQ(bench.library.finds[0].name, "PART");
    EXPECT_EQ(bench.library.finds[0].path, "");
    EXPECT_TRUE(bench.library.finds[0].exact);
    EXPECT_EQ(bench.library.finds[0].numAttributes, 0u);
    EXPECT_TRUE(bench.library.loads.empty());
    EXPECT_TRUE(bench.library.askedMappings.empty());
}

TEST(Classify, AMappedItemGivesItsTypeAttributeAsItStands) {
    Classifier bench;
    const auto make = [] { return ScriptedLibrary::makeEntity(Component_t, {{"Type", "Mechanical"}}); };
    bench.answer(LibraryInterface::Mapped, make);
    EXPECT_EQ(bench.typeOf(partWith({{"RESISTANCE", "1"}})), "Mechanical");
    bench.answer(LibraryInterface::Mapped, [] { return ScriptedLibrary::makeEntity(Component_t); });
    EXPECT_EQ(bench.typeOf(part()), "Electrical");
}

TEST(Classify, AnItemOfNoSuchAttributeAndOneOfNothingFallThrough) {
    Classifier bench;
    bench.place("C1");
    bench.answer(LibraryInterface::Mapped, [] { return ScriptedLibrary::makeEntity(Resistor_t); });
    EXPECT_EQ(bench.typeOf(part()), "Capacitor");
    bench.answer(LibraryInterface::Mapped, []() -> Entity * { return nullptr; }); // An item without entity.
    EXPECT_EQ(bench.typeOf(part()), "Capacitor");
    bench.answer(LibraryInterface::Mapped); // No item.
    EXPECT_EQ(bench.typeOf(part()), "Capacitor");
}

TEST(Classify, AnyOtherMappingFallsThroughToTheParent) {
    Model model(Substrate_t);
    for (const auto mapping : {LibraryInterface::NotMapped, LibraryInterface::Approximated,
                               LibraryInterface::MappingType{}, LibraryInterface::MappingType(5)}) {
        Classifier bench;
        bench.answer(mapping, [] { return ScriptedLibrary::makeEntity(Component_t); });
        EXPECT_EQ(bench.typeOf(partWith({{"RESISTANCE", "1"}})), "Resistor") << mapping;
        EXPECT_EQ(bench.typeOf(partWith({{"RESISTANCE", "1"}}), model.root()), "Component") << mapping;
    }
}

TEST(Classify, DoNotImportStandsAboveAllButTheGeometry) {
    Model model(Substrate_t);
    Classifier bench;
    bench.answer(LibraryInterface::DoNotImport);
    EXPECT_EQ(bench.typeOf(partWith({{"4ZETA_TYPE", "Resistor"}}), model.root()), "DO NOT IMPORT");
    bench.answer(LibraryInterface::DoNotImport, [] { return ScriptedLibrary::makeEntity(Component_t); });
    EXPECT_EQ(bench.typeOf(part()), "DO NOT IMPORT");
}

TEST(Classify, TheLibraryStandsAboveASubstrate) {
    Model model(Substrate_t);
    Classifier bench;
    bench.answer(LibraryInterface::Mapped, [] { return ScriptedLibrary::makeEntity(Component_t); });
    EXPECT_EQ(bench.typeOf(part(), model.root()), "Electrical");
}

TEST(Classify, OnASubstrateAllIsComponentsAndOnOtherBoardsNot) {
    Classifier bench;
    bench.place("C1");
    Model substrate(Substrate_t);
    EXPECT_EQ(bench.typeOf(part(), substrate.root()), "Component");
    EXPECT_EQ(bench.typeOf(partWith({{"4ZETA_TYPE", "Resistor"}}), substrate.root()), "Component");
    Model board(PCB_t);
    EXPECT_EQ(bench.typeOf(part(), board.root()), "Capacitor");
}

TEST(Classify, PropertiesStandAboveDesignators) {
    Classifier bench;
    bench.place("C1");
    EXPECT_EQ(bench.typeOf(partWith({{"RESISTANCE", "1"}})), "Resistor");
    EXPECT_EQ(bench.typeOf(partWith({{"THETA_JB", "1"}})), "Component");
    EXPECT_EQ(bench.typeOf(partWith({{"4ZETA_TYPE", ""}})), "Capacitor"); // An empty type is no answer.
}

TEST(Classify, WithoutLibraryAllElseHolds) {
    EDA::EDAImporter importer(nullptr, "", "");
    EXPECT_EQ(importer.getComponentType(part(), EDA::EDABoard(), nullptr), "Component");
}

TEST(Classify, TheChosenTypeIsKeptInTheComponent) {
    EDA::EDAComponent component = part();
    EDA::EDAImporter::setComponentType(component, "Chip Socket");
    EXPECT_EQ(component.getImportToType(), "Chip Socket");
}

TEST(ClassifyBoard, EachComponentGetsWhatItGetsAlone) {
    Classifier bench;
    bench.place("R1", "A", "1");
    bench.place("C1", "A", "2");
    bench.place("C1", "B", "1");
    bench.place("C2", "B", "2");
    for (const char *name : {"A", "B", "A 1", ""}) {
        for (const char *number : {"", "1", "2", "3"}) {
            EDA::EDAComponent component = part(name, number);
            bench.board.addComponent(component, false);
        }
    }
    std::vector<std::string> alone;
    for (auto each = bench.board.beginComponents(); each != bench.board.endComponents(); ++each) {
        alone.push_back(bench.typeOf(*each));
    }
    EXPECT_EQ(bench.importer.getTypesOfComponents(bench.board, nullptr), alone);
    EXPECT_THAT(alone,
                ElementsAre("Component", "Resistor", "Capacitor", "Component", "Capacitor", "Capacitor",
                            "Capacitor", "Capacitor", "Component", "Component", "Component", "Component",
                            "Component", "Component", "Component", "Component"));
}

TEST(ClassifyBoard, AHundredThousandPartsThatShareAsManyPlacementsTakeLinearTime) {
    Classifier bench;
    for (int i = 0; i < 100000; ++i) {
        bench.place("R" + std::to_string(i), "PART", "placed");
        EDA::EDAComponent component = part("PART", std::to_string(i));
        bench.board.addComponent(component, false);
    }
    const auto types = bench.importer.getTypesOfComponents(bench.board, nullptr);
    EXPECT_EQ(types.size(), 100000u);
    EXPECT_THAT(types, Each("Resistor"));
}
