// What each kind of attribute answers.
#include "ModelSupport.h"

#include <cmath>
#include <limits>
#include <stdexcept>

using namespace EntityModel;

namespace {

// One entity of each type, for reading and writing single attributes.
class AttributeKinds : public testing::Test {
protected:
    Attribute *find(const char *type, const char *label) const { return sample[type]->findAttribute(label); }
    DoubleAttribute &number(const char *type, const char *label) const {
        return static_cast<DoubleAttribute &>(*find(type, label));
    }
    DoubleListAttribute &list(const char *type, const char *label) const {
        return static_cast<DoubleListAttribute &>(*find(type, label));
    }
    Entity *at(const char *type) const { return sample[type]; }

    SampleModel sample;
};

const double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST_F(AttributeKinds, TextIsKeptVerbatim) {
    for (const std::string &text :
         {std::string("a\nb "), std::string("<mm>"), std::string(" "), std::string()}) {
        EXPECT_TRUE(set(at("PCB"), "Description", text));
        EXPECT_EQ(textOf(at("PCB"), Description_t), text);
    }
}

TEST_F(AttributeKinds, YesNoTakesFourTextsAndReadsAsTwo) {
    Attribute &plated = *find("Via", "Plated");
    for (const char *yes : {"Yes", "true"}) {
        plated.setFromString("No");
        EXPECT_TRUE(plated.setFromString(yes));
        EXPECT_TRUE(plated.getBool());
        EXPECT_TRUE(plated.isValue(Yes_t));
        EXPECT_EQ(getTypeValue(at("Via"), Plated_t, TypeRef()), Yes_t);
    }
    for (const char *no : {"No", "false"}) {
        plated.setFromString("Yes");
        EXPECT_TRUE(plated.setFromString(no));
        EXPECT_FALSE(plated.getBool());
        EXPECT_FALSE(plated.isValue(Yes_t));
        EXPECT_TRUE(plated.isValue("No"));
    }
    for (const char *bad : {"", "yes", "YES", "1", "maybe", " Yes"})
        EXPECT_FALSE(plated.setFromString(bad)) << bad;
    EXPECT_EQ(textOf(at("Via"), Plated_t), "No");
}

TEST_F(AttributeKinds, ChoiceTakesExactLabelsOnly) {
    auto &shape = static_cast<ChoiceAttribute &>(*find("PCB", "Shape"));
    EXPECT_TRUE(shape.setFromString("Polygon"));
    for (const char *bad : {"polygon", "Polygon ", "", "Blob"})
        EXPECT_FALSE(shape.setFromString(bad)) << bad;
    EXPECT_TRUE(shape.isValue(Polygon_t));
    EXPECT_FALSE(shape.isValue(Rectangle_t));
    EXPECT_EQ(shape.indexOfChoice("Rectangle"), 0);
    EXPECT_EQ(shape.indexOfChoice("Blob"), -1);
    EXPECT_EQ(getTypeValue(at("PCB"), Shape_t, TypeRef("x")), Polygon_t);
    EXPECT_EQ(getTypeValue(at("Via"), Shape_t, TypeRef("x")), TypeRef("x"));
    EXPECT_EQ(getTypeValue(nullptr, Shape_t, TypeRef("x")), TypeRef("x"));
}

TEST_F(AttributeKinds, SameValueComparesValuesAndRefusesNull) {
    EXPECT_FALSE(find("PCB", "Shape")->sameValue(nullptr));
    EXPECT_TRUE(find("PCB", "Shape")->sameValue(find("Component", "Shape")));
    set(at("PCB"), "Shape", "Polygon");
    EXPECT_FALSE(find("PCB", "Shape")->sameValue(find("Component", "Shape")));
    set(at("PCB"), "Width", "25.4 mm");
    set(at("Component"), "Width", "25.4 mm");
    EXPECT_TRUE(find("PCB", "Width")->sameValue(find("Component", "Width")));
    EXPECT_FALSE(find("PCB", "Width")->sameValue(find("Via", "Plated")));
}

TEST_F(AttributeKinds, NumberTextIsPrefixAndUnit) {
    DoubleAttribute &width = number("PCB", "Width");
    EXPECT_TRUE(width.setFromString("1.5 mm"));
    EXPECT_EQ(width.getStandardValue(), 0.0015);
    EXPECT_TRUE(width.setFromString(" 2.5in "));
    EXPECT_EQ(textOf(at("PCB"), Width_t), "2.5 in");
    EXPECT_TRUE(width.setFromString("3"));
    EXPECT_EQ(textOf(at("PCB"), Width_t), "3 in");
    for (const char *bad : {"", "mm", "1 furlong", "1,5 mm", "-1 mm", "inf mm", "nan", "1e400", "0x10 mm"}) {
        EXPECT_FALSE(width.setFromString(bad)) << bad;
    }
    EXPECT_EQ(textOf(at("PCB"), Width_t), "3 in");
    EXPECT_TRUE(EntityEditor::setValue(at("Material"), Conductivity_t / AttributePath(Value_t), "3 W/(m K)"));
    EXPECT_EQ(getStandardDoubleValue(at("Material"), Conductivity_t / AttributePath(Value_t), -1.0), 3.0);
}

TEST_F(AttributeKinds, NumberReadBackInItsUnitIsTheSameDouble) {
    for (const double value : {0.1, 1.0 / 3.0, 1e-300, 12345.6789}) {
        for (const char *unit : {"mm", "in", "thou", "TNM", "m"}) {
            ASSERT_TRUE(EntityEditor::setValueWithUnits(at("PCB"), Width_t, value, unit));
            EXPECT_EQ(getDoubleValue(at("PCB"), Width_t, unit, -1.0), value);
            EXPECT_EQ(getDoubleValue(at("PCB"), Width_t, "", -1.0), value);
            EXPECT_EQ(getDoubleValue(at("PCB"), Width_t, "furlong", -1.0), value);
        }
    }
}

TEST_F(AttributeKinds, DisplayUnitFollowsUnitsButNotStandardValues) {
    EntityEditor::setValueWithUnits(at("PCB"), Width_t, 1.0, "in");
    EntityEditor::setSIValue(at("PCB"), Width_t, 0.0508);
    EXPECT_EQ(textOf(at("PCB"), Width_t), "2 in");
    EntityEditor::setValue(at("PCB"), Width_t, 3.0);
    EXPECT_EQ(textOf(at("PCB"), Width_t), "3 in");
    EntityEditor::setValueWithUnits(at("PCB"), Width_t, 4.0, "");
    EXPECT_EQ(textOf(at("PCB"), Width_t), "4 in");
}

TEST_F(AttributeKinds, SettersWithUnitsThrowForWhatCannotBe) {
    EntityEditor::setValueWithUnits(at("PCB"), Width_t, 7.0, "mm");
    const auto setWidth = [this](double value, const char *unit) {
        EntityEditor::setValueWithUnits(at("PCB"), Width_t, value, unit);
    };
    EXPECT_THROW(setWidth(1.0, "furlong"), std::out_of_range);
    EXPECT_THROW(setWidth(-1.0, "mm"), std::out_of_range);
    EXPECT_THROW(setWidth(infinity, "mm"), std::out_of_range);
    EXPECT_THROW(setWidth(std::nan(""), "mm"), std::out_of_range);
    EXPECT_EQ(textOf(at("PCB"), Width_t), "7 mm");
    EXPECT_FALSE(EntityEditor::setValueWithUnits(at("PCB"), TypeRef("Nothing"), 1.0, "mm"));
    EXPECT_FALSE(EntityEditor::setValueWithUnits(nullptr, Width_t, 1.0, "mm"));
}

TEST_F(AttributeKinds, OtherSettersAnswerFalseForWhatCannotBe) {
    EXPECT_FALSE(EntityEditor::setValue(at("PCB"), Width_t, -1.0));
    EXPECT_FALSE(EntityEditor::setValue(at("PCB"), Width_t, infinity));
    EXPECT_FALSE(EntityEditor::setSIValue(at("PCB"), Width_t, -1.0));
    EXPECT_FALSE(EntityEditor::setValueNoThrow(at("PCB"), Width_t, -1.0));
    EXPECT_FALSE(EntityEditor::setValueNoThrow(at("PCB"), Width_t, "x"));
    EXPECT_FALSE(EntityEditor::setSIValueNoThrow(at("PCB"), Width_t, std::nan("")));
    EXPECT_FALSE(EntityEditor::setValue(at("PCB"), Geometry_t, "x"));
    EXPECT_FALSE(EntityEditor::setValue(at("PCB"), Holes_t, "x"));
    EXPECT_FALSE(EntityEditor::setValue(at("PCB"), Name_t, 1.0));
    EXPECT_FALSE(EntityEditor::setValue(at("PCB"), Width_t, std::vector<int>{1}));
    EXPECT_EQ(textOf(at("PCB"), Width_t), "100 mm");
}

TEST_F(AttributeKinds, LocationsAndPinSeparationsMayBeNegative) {
    EXPECT_TRUE(EntityEditor::setValueWithUnits(at("PCB"), X_Location_t, -1.0, "mm"));
    EXPECT_TRUE(EntityEditor::setValue(at("Heatsink"), Pin_Separation_Across_t, -1.0));
    EXPECT_EQ(textOf(at("Heatsink"), Pin_Separation_Across_t), "-1 mm");
    EXPECT_TRUE(EntityEditor::setValueWithUnits(at("PCB"), X_Location_t, -0.0, "mm"));
    EXPECT_TRUE(std::signbit(getDoubleValue(at("PCB"), X_Location_t, "mm", 1.0)));
}

TEST_F(AttributeKinds, PercentIsNotAFraction) {
    EXPECT_TRUE(EntityEditor::setSIValue(at("Component"), Utilisation_t, 50.0));
    EXPECT_EQ(textOf(at("Component"), Utilisation_t), "50 %");
    EXPECT_TRUE(set(at("Component"), "Utilisation", "75"));
    EXPECT_EQ(getStandardDoubleValue(at("Component"), Utilisation_t, -1.0), 75.0);
}

TEST_F(AttributeKinds, IntegersRoundAndRefuse) {
    EXPECT_TRUE(set(at("Via"), "Number Of Vias", "3"));
    EXPECT_TRUE(EntityEditor::setValue(at("Via"), Number_Of_Vias_t, 4));
    EXPECT_EQ(getDoubleValue(at("Via"), Number_Of_Vias_t, "", -1.0), 4.0);
    for (const char *bad : {"", "x", "1.5", "99999999999", "1 mm"}) {
        EXPECT_FALSE(set(at("Via"), "Number Of Vias", bad)) << bad;
    }
    EXPECT_FALSE(EntityEditor::setValue(at("Via"), Number_Of_Vias_t, 1e10));
    EXPECT_FALSE(EntityEditor::setValue(at("Via"), Number_Of_Vias_t, std::nan("")));
    EXPECT_EQ(textOf(at("Via"), Number_Of_Vias_t), "4");
}

TEST_F(AttributeKinds, AbsentValuesGiveTheDefaultOfTheCaller) {
    EXPECT_EQ(getDoubleValue(at("Via"), Shape_t, "mm", 7.0), 7.0);
    EXPECT_EQ(getDoubleValue(nullptr, Width_t, "mm", 7.0), 7.0);
    EXPECT_EQ(getStandardDoubleValue(at("PCB"), Name_t, 7.0), 7.0);
    EXPECT_EQ(getPreciceStringValue(at("Via"), Shape_t, "none"), "none");
    EXPECT_EQ(getLinkedEntity(at("Via"), Shape_t), nullptr);
    EXPECT_EQ(getDoubleValue(at("PCB"), Conductivity_t / AttributePath(Value_t), "", 7.0), 7.0);
}

TEST_F(AttributeKinds, DoubleListTakesNumbersAndUnit) {
    DoubleListAttribute &outline = list("PCB", "Outline");
    EXPECT_TRUE(outline.setFromString("1,2,-3.5,4 <in>"));
    EXPECT_EQ(outline.getSize(), 4);
    EXPECT_EQ(outline.getNthStandardValue(0), 0.0254);
    EXPECT_EQ(outline.getNthStandardValue(2, "in"), -3.5);
    EXPECT_EQ(outline.getNthStandardValue(0, "mm"), 25.4);
    EXPECT_EQ(outline.getNthStandardValue(-1), 0.0);
    EXPECT_EQ(outline.getNthStandardValue(4), 0.0);
    double low = -1.0, high = -1.0;
    outline.getBoundStandardValues(0, low, high);
    EXPECT_EQ(low, Units::convert(-3.5, outline.unit(), *outline.definition()->quantity->standard));
    EXPECT_EQ(high, 0.0254);
    outline.getBoundStandardValues(1, low, high);
    EXPECT_EQ(low, 2 * 0.0254);
    EXPECT_EQ(high, 4 * 0.0254);
}

TEST_F(AttributeKinds, DoubleListRefusesBadEntriesWhole) {
    DoubleListAttribute &outline = list("PCB", "Outline");
    ASSERT_TRUE(outline.setFromString("1,2 <mm>"));
    for (const char *bad :
         {"1,x", "1,,2", "1,", ",1", "1 2", "1,inf", "nan", "1,2 <furlong>", "1,2 <mm", "1e400"}) {
        EXPECT_FALSE(outline.setFromString(bad)) << bad;
    }
    EXPECT_EQ(textOf(at("PCB"), Outline_t), "1,2 <mm>");
}

TEST_F(AttributeKinds, DoubleListInItsOwnUnitAndEmpty) {
    DoubleListAttribute &outline = list("PCB", "Outline");
    ASSERT_TRUE(outline.setFromString("1,2 <in>"));
    EXPECT_TRUE(outline.setFromString("3,4 <>"));
    EXPECT_EQ(textOf(at("PCB"), Outline_t), "3,4 <in>");
    EXPECT_TRUE(outline.setFromString("5,6"));
    EXPECT_EQ(textOf(at("PCB"), Outline_t), "5,6 <in>");
    EXPECT_TRUE(outline.setFromString(""));
    EXPECT_EQ(outline.getSize(), 0);
    double low = 1.0, high = 1.0;
    outline.getBoundStandardValues(0, low, high);
    EXPECT_EQ(low, 0.0);
    EXPECT_EQ(high, 0.0);
}

TEST_F(AttributeKinds, IntListTakesTextAndVectors) {
    EXPECT_TRUE(EntityEditor::setValue(at("Conductor Layer"), MaterialMap_t, std::vector<int>{1, -2, 3}));
    EXPECT_EQ(textOf(at("Conductor Layer"), MaterialMap_t), "1,-2,3");
    EXPECT_TRUE(set(at("Conductor Layer"), "MaterialMap", "4,5"));
    EXPECT_FALSE(set(at("Conductor Layer"), "MaterialMap", "4,5.5"));
    EXPECT_FALSE(set(at("Conductor Layer"), "MaterialMap", "4 <mm>"));
    EXPECT_EQ(textOf(at("Conductor Layer"), MaterialMap_t), "4,5");
}

TEST_F(AttributeKinds, AttributeListGrowsAndItsElementsAreFoundByLabel) {
    Entity *const conductor = at("PCB Conductor");
    auto &holes = static_cast<ListAttribute &>(*conductor->findAttribute(Outline_Holes_t));
    EXPECT_EQ(conductor->findAttribute("Hole 1"), nullptr);
    holes.resize(2);
    EXPECT_TRUE(set(conductor, "Hole 2", "1,2 <mm>"));
    EXPECT_EQ(conductor->findAttribute("Hole 2"), holes.at(1));
    EXPECT_EQ(conductor->findAttribute("Hole 2")->getType(), TypeRef("Hole 2"));
    EXPECT_TRUE(conductor->findAttribute("Hole 2")->isDoubleListAttribute());
    EXPECT_EQ(conductor->findAttribute("Hole 2")->getOwnerEntity(), conductor);
    EXPECT_EQ(holes.at(1)->getSize(), 2);
    EXPECT_EQ(holes.at(2), nullptr);
    EXPECT_EQ(holes.at(-1), nullptr);
    holes.resize(-1);
    EXPECT_EQ(holes.size(), 2);
}

TEST_F(AttributeKinds, KindsAreTold) {
    EXPECT_TRUE(find("PCB", "Width")->isDoubleAttribute());
    EXPECT_FALSE(find("Via", "Number Of Vias")->isDoubleAttribute());
    EXPECT_TRUE(find("PCB", "Outline")->isDoubleListAttribute());
    EXPECT_TRUE(find("PCB", "Holes")->isEntityList());
    EXPECT_TRUE(find("PCB", "Conductor Material")->isEntityLink());
    EXPECT_TRUE(find("Chip Socket", "ComponentLink")->isEntityLink());
    EXPECT_FALSE(find("PCB", "Holes")->isEntityLink());
}

TEST_F(AttributeKinds, ClonesAreUnownedAndKeepEverything) {
    find("PCB", "Width")->setFromString("2 in");
    find("PCB", "Width")->setLocked(true);
    find("PCB", "Width")->setFlag(true);
    const std::unique_ptr<Attribute> clone(find("PCB", "Width")->clone());
    EXPECT_EQ(clone->getOwnerEntity(), nullptr);
    EXPECT_TRUE(clone->isLocked());
    EXPECT_TRUE(clone->getFlag());
    EXPECT_EQ(clone->getType(), Width_t);
    std::string text;
    EXPECT_EQ(clone->getString(text), "2 in");
    EXPECT_FALSE(clone->setFromString("-1 mm")) << "the limit is cloned";
    EXPECT_TRUE(clone->setFromString("5 thou"));
    EXPECT_EQ(textOf(at("PCB"), Width_t), "2 in");
}

TEST_F(AttributeKinds, OptionValuesGoFromCloneToCloneByText) {
    Entity *const pcb = at("PCB");
    set(pcb, "Width", "0.1 thou");
    const std::unique_ptr<Attribute> from(pcb->findAttribute(Width_t)->clone());
    const std::unique_ptr<Attribute> to(pcb->findAttribute(Depth_t)->clone());
    std::string text;
    ASSERT_TRUE(to->setFromString(from->getString(text)));
    EXPECT_EQ(to->getValueIn("thou"), 0.1);
    EXPECT_TRUE(to->sameValue(from.get()));
}

TEST_F(AttributeKinds, GroupsFindTheirMembersAndCanBeLocked) {
    auto *const geometry = dynamic_cast<CompositeAttribute *>(find("PCB", "Geometry"));
    ASSERT_NE(geometry, nullptr);
    EXPECT_EQ(geometry->findAttribute(Width_t), find("PCB", "Width"));
    EXPECT_EQ(geometry->findAttribute(X_Location_t), nullptr);
    EXPECT_EQ(at("PCB")->findAttribute(Geometry_t / AttributePath(Width_t)), find("PCB", "Width"));
    geometry->setLocked(true);
    EXPECT_TRUE(find("PCB", "Geometry")->isLocked());
    EXPECT_TRUE(set(at("PCB"), "Width", "5 mm")) << "locks bind the user alone";
}

TEST_F(AttributeKinds, PathTextIsOneLabelNeverTrimmed) {
    EXPECT_NE(at("Component")->findAttribute(AttributePath("Pin Diameter ")), nullptr);
    EXPECT_EQ(at("Component")->findAttribute(AttributePath("Pin Diameter")), nullptr);
    EXPECT_EQ(at("Material")->findAttribute(AttributePath("Conductivity/Value")), nullptr);
    EXPECT_NE(TypeRef("x"), TypeRef("x "));
    EXPECT_EQ(TypeFactory::getType("never heard of").getLabel(), "never heard of");
}

TEST_F(AttributeKinds, SearchNeverEntersChildren) {
    EXPECT_EQ(at("Chassis")->findAttribute(Width_t), nullptr);
    EXPECT_EQ(at("Net")->findAttribute(Diameter_t), nullptr);
}

TEST_F(AttributeKinds, EntityListIsInOrderAndGivesNullOutside) {
    Entity *const pcb = at("PCB");
    auto &holes = static_cast<EntityList &>(*pcb->findAttribute(Holes_t));
    Entity *const first = holes.at(0);
    Entity *const second = create(pcb, "Holes", "PCB Hole");
    EXPECT_EQ(holes.size(), 2);
    EXPECT_EQ(holes.at(1), second);
    EXPECT_EQ(holes.at(2), nullptr);
    EXPECT_EQ(holes.at(-1), nullptr);
    EXPECT_EQ(std::vector<Entity *>(holes.begin(), holes.end()), (std::vector<Entity *>{first, second}));
    std::vector<Entity *> linked;
    getLinkedEntities(pcb, Holes_t, linked);
    EXPECT_EQ(linked, (std::vector<Entity *>{first, second}));
    holes.clear();
    EXPECT_EQ(holes.size(), 0);
    ASSERT_TRUE(UndoStack::instance().undo());
    EXPECT_EQ(holes.at(1), second);
}

TEST_F(AttributeKinds, AngleToTheBoardIsDisabledUnlessThePartIsACylinder) {
    SampleModel parts;
    for (const char *type : {"Component", "Capacitor"}) {
        Entity *const part = parts[type];
        const Attribute *const angle = part->findAttribute(Angle_To_Board_t);
        EXPECT_TRUE(angle->isDisabled()) << type;
        EXPECT_TRUE(set(part, "Angle To Board", "90")) << "that stops no writing";
        set(part, "Shape", "Cylinder");
        EXPECT_FALSE(angle->isDisabled()) << type;
        EXPECT_EQ(angle->getStandardValue(), 90.0);
    }
    set(parts["Resistor"], "Shape", "Polygon");
    EXPECT_TRUE(parts["Resistor"]->findAttribute(Angle_To_Board_t)->isDisabled())
        << "no cylinder among its shapes";
    EXPECT_FALSE(parts["Component"]->findAttribute(Angle_t)->isDisabled());
    EXPECT_FALSE(parts["Component"]->isDisabled());
}

TEST_F(AttributeKinds, HeatsinkLengthsAreHidden) {
    SampleModel parts;
    const char *const lengths[] = {"Base Width", "Base Depth", "Base Thickness", "Fin Height",   "Fin Width",
                                   "Fin Depth",  "Pn Width",   "Pin Depth",      "Pin Diameter "};
    for (const char *length : lengths)
        EXPECT_TRUE(parts["Component"]->findAttribute(length)->definition()->hidden) << length;
    EXPECT_FALSE(parts["Component"]->findAttribute(Width_t)->definition()->hidden);
}
