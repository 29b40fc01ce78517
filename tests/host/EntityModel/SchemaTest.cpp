// What the entity types have, and what they must not have.
#include "ModelSupport.h"

using namespace EntityModel;

namespace {

struct Accepted {
    const char *type;
    const char *attribute;
    const char *text;
};

// Texts that the import writes; each must be taken as it stands.
const Accepted accepted[] = {
    {"PCB", "Shape", "Rectangle"},
    {"PCB", "Shape", "Cylinder"},
    {"PCB", "Shape", "Polygon"},
    {"Substrate", "Shape", "Rectangle"},
    {"Substrate", "Shape", "Cylinder"},
    {"Substrate", "Shape", "Polygon"},
    {"Component", "Shape", "Rectangle"},
    {"Component", "Shape", "Cylinder"},
    {"Component", "Shape", "Polygon"},
    {"Resistor", "Shape", "Rectangle"},
    {"Resistor", "Shape", "Polygon"},
    {"Capacitor", "Shape", "Rectangle"},
    {"Capacitor", "Shape", "Cylinder"},
    {"Inductor", "Shape", "Rectangle"},
    {"Inductor", "Shape", "Cylinder"},
    {"Inductor", "Shape", "Polygon"},
    {"Solid Obstruction", "Shape", "Cuboid"},
    {"Solid Obstruction", "Shape", "Cylinder"},
    {"Solid Obstruction", "Shape", "Polygon"},
    {"PCB Conductor", "Shape", "Rectangle"},
    {"PCB Conductor", "Shape", "Cylinder"},
    {"PCB Conductor", "Shape", "Polygon"},
    {"Substrate Conductor", "Shape", "Rectangle"},
    {"Substrate Conductor", "Shape", "Cylinder"},
    {"Substrate Conductor", "Shape", "Polygon"},
    {"PCB Conductor Hole", "Shape", "Cylinder"},
    {"Substrate Conductor Hole", "Shape", "Polygon"},
    {"Obstruction Hole", "Shape", "Rectangle"},
    {"PCB Hole", "Shape", "Cylinder"},
    {"Substrate Hole", "Shape", "Polygon"},
    {"Board Keepout", "Shape", "Polygon"},
    {"Component", "Modelling Level", "Detailed"},
    {"Component", "Modelling Level", "2R"},
    {"PCB", "Modelling Level", "Explicit Layers"},
    {"PCB", "Modelling Level", "Specified"},
    {"PCB", "Modelling Level", "Simplified Average"},
    {"Substrate", "Modelling Level", "Explicit Layers"},
    {"Conductor Layer", "Modelling Level", "Detailed"},
    {"Conductor Layer", "Modelling Level", "Uniform Conductivity"},
    {"Conductor Layer", "Modelling Level", "Simplified"},
    {"PCB", "Distribute Layers", "User Specified"},
    {"Via", "Height From", "User Specified"},
    {"Via", "Height From", "Layers"},
    {"Via", "Modelling Type", "Multiple Vias"},
    {"Bump", "Modelling Type", "Multiple Bumps"},
    {"Bump", "Definition", "Detailed"},
    {"Component", "Render Style", "Invisible"},
    {"Solid Obstruction", "Render Style", "Invisible"},
    {"Via", "Render Style", "Invisible"},
    {"PCB Conductor Hole", "Render Style", "Invisible"},
    {"Substrate Conductor Hole", "Render Style", "Invisible"},
    {"Obstruction Hole", "Render Style", "Invisible"},
    {"Conductor Layer", "Render Style", "Textured"},
    {"Component", "Rotation Mechanism", "Angle and Axis"},
    {"Solid Obstruction", "Rotation Mechanism", "Ordered"},
    {"Solid Obstruction", "Rotation Mechanism", "Angle and Axis"},
    {"Solid Obstruction", "Rotation Order", "YZX"},
    {"PCB", "Origin Point", "Centre"},
    {"PCB", "Origin Point", "Low Centre"},
    {"Solid Obstruction", "Origin Point", "Low Centre"},
    {"Solid Obstruction", "Origin Point", "Centre"},
    {"Component", "Type", "Electrical"},
    {"Component", "Type", "Mechanical"},
    {"Component", "Component Type", "Mechanical"},
    {"Solid Obstruction", "Type", "Other"},
    {"Solid Obstruction", "Type", "Encapsulant"},
    {"Solid Obstruction", "Type", "Die"},
    {"Component", "Board Side", "Top"},
    {"Component", "Board Side", "Bottom"},
    {"Cable Socket", "Board Side", "Bottom"},
    {"Board Keepout", "Board Side", "Both"},
    {"Board Keepout", "Board Side", "Top"},
    {"Board Keepout", "Board Side", "Bottom"},
    {"Board Keepout", "Keepout Type", "Components"},
    {"Board Keepout", "Keepout Type", "Vias"},
    {"Board Keepout", "Keepout Type", "Routing"},
    {"Component", "Filtered", "Yes"},
    {"Component", "Filtered", "No"},
    {"Component", "Filtered", "true"},
    {"Component", "Filtered", "false"},
    {"Inductor", "Has Hole", "No"},
    {"Solid Obstruction", "Height", "1.5 mm"},
    {"Component", "Junction to Board Thermal Resistance", "12.5 C/W"},
    {"Component", "Junction to Case Thermal Resistance", "3 C/W"},
    {"Capacitor", "Electrical Capacitance", "10 uF"},
    {"Resistor", "Electrical Resistance", "4700 Ohm"},
    {"Inductor", "Electrical Inductance", "2.2 uH"},
    {"Component", "Thermal Design Power", "250 mW"},
    {"Solid Obstruction", "Heat Dissipated", "250 mW"},
    {"Material", "Conductivity", ""},
    {"Material", "Description", "where the values come from"},
    {"Component", "Utilisation", "100"},
    {"Via", "Number Of Vias", "3"},
    {"Via", "Plating Thickness", "35 micron"},
    {"Component", "Base Width", "1 mm"},
    {"Component", "Base Depth", "1 mm"},
    {"Component", "Base Thickness", "1 mm"},
    {"Component", "Fin Height", "1 mm"},
    {"Component", "Fin Width", "1 mm"},
    {"Component", "Fin Depth", "1 mm"},
    {"Component", "Pn Width", "1 mm"},
    {"Component", "Pin Depth", "1 mm"},
    {"Component", "Pin Diameter ", "1 mm"},
    {"Cable Socket", "Pin Diameter ", "1 mm"},
    {"Daughter Board Socket", "Base Width", "1 mm"},
    {"Daughter Board Socket", "Length", "1 mm"},
    {"Daughter Board Socket", "Socket Depth", "1 mm"},
    {"Chip Socket", "Depth", "1 mm"},
    {"Heatsink", "Type", "Extruded fin"},
    {"Heatsink", "Pin Shape", "Round"},
    {"Heatsink", "Staggered", "Yes"},
    {"Conductor Layer", "Conductor Thickness", "0.07 mm"},
    {"Conductor Layer", "ImageWidth", "640"},
    {"Conductor Layer", "ImageHeight", "480"},
    {"Conductor Layer", "MaterialRed", "255"},
    {"Conductor Layer", "MaterialIsConductor", "Yes"},
    {"Conductor Layer", "BackgroundIsIgnored", "Yes"},
    {"Conductor Layer", "MaterialMap", "1,0,1"},
    {"Conductor Layer", "Top Texture File", "a/b c.png"},
    {"Dielectric Layer", "Thickness", "0.2 mm"},
    {"PCB", "Outline", "0,0,1,0,1,-1 <mm>"},
    {"Trace", "Start X", "1 mm"},
    {"Trace Segment", "End Z", "-1 mm"},
    {"Bump", "Max Diameter", "1 mm"},
    {"Bump", "Top Diameter", "1 mm"},
    {"Bump", "Bottom Diameter", "1 mm"},
    {"Via", "Via Diameter", "1 mm"},
    {"Wirebond Segment", "Start Location From Junction", "Yes"},
    {"Substrate", "X Location", "-3 mm"},
    {"Via", "From Layer", "no such layer"},
};

struct Lacking {
    const char *type;
    const char *attribute;
};

// The import writes or reads these without asking first; it relies on the answer false.
const Lacking lacking[] = {
    {"Chip Socket", "Shape"},
    {"Cable Socket", "Shape"},
    {"Daughter Board Socket", "Shape"},
    {"Chip Socket", "Diameter"},
    {"Cable Socket", "Outline"},
    {"Chip Socket", "Vias"},
    {"Chip Socket", "HeatsinkLink"},
    {"Chip Socket", "Base Width"},
    {"Daughter Board Socket", "Depth"},
    {"Substrate", "Components"},
    {"Substrate", "Resistors"},
    {"Substrate", "Chip Sockets"},
    {"Solid Obstruction", "Filtered"},
    {"Solid Obstruction", "Board Side"},
    {"Solid Obstruction", "Orientation"},
    {"Solid Obstruction", "Reference Designator"},
    {"Solid Obstruction", "Model"},
    {"Solid Obstruction", "Part Number"},
    {"Solid Obstruction", "Manufacturer"},
    {"Solid Obstruction", "Vias"},
    {"Substrate Conductor", "Outline Holes"},
    {"Substrate Conductor", "Hole 1"},
    {"Obstruction Hole", "Orientation"},
    {"PCB Conductor Hole", "Orientation"},
    {"Substrate Conductor Hole", "Orientation"},
    {"Heatsink", "Base Width"},
    {"Heatsink", "Base Depth"},
    {"Heatsink", "Base Thickness"},
    {"Heatsink", "Fin Height"},
    {"Heatsink", "Fin Width"},
    {"Heatsink", "Fin Depth"},
    {"Heatsink", "Pn Width"},
    {"Heatsink", "Pin Depth"},
    {"Heatsink", "Pin Diameter "},
    {"Component", "Orientation"},
    {"Component", "Length"},
    {"Resistor", "Angle"},
    {"Resistor", "Modelling Level"},
    {"Resistor", "Junction to Board Thermal Resistance"},
    {"Resistor", "Type"},
    {"Capacitor", "Angle"},
    {"Capacitor", "Junction to Case Thermal Resistance"},
    {"Inductor", "Modelling Level"},
    {"Chip Socket", "Angle"},
    {"PCB", "Obstructions"},
    {"PCB", "SubcomponentGroups"},
    {"PCB", "Bumps"},
    {"PCB", "Materials"},
    {"Trace", "MaterialLink"},
    {"Substrate Trace", "MaterialLink"},
    {"Component", "Pin Diameter"},
    {"Via", "Shape"},
};

struct Refused {
    const char *type;
    const char *attribute;
    const char *text;
};

const Refused refused[] = {
    {"Resistor", "Shape", "Cylinder"},
    {"Capacitor", "Shape", "Polygon"},
    {"Solid Obstruction", "Shape", "Rectangle"},
    {"Component", "Shape", "Cuboid"},
    {"Component", "Board Side", "Both"},
    {"Component", "Width", "-1 mm"},
    {"PCB", "Modelling Level", "2R"},
    {"Via", "Modelling Type", "Multiple Bumps"},
};

struct Default {
    const char *type;
    const char *attribute;
    const char *text;
};

const Default defaults[] = {
    {"PCB", "Shape", "Rectangle"},
    {"PCB", "Thickness", "1.6 mm"},
    {"PCB", "Width", "100 mm"},
    {"PCB", "Depth", "100 mm"},
    {"PCB", "Origin Point", "Corner"},
    {"PCB", "Reference Designator", ""},
    {"Component", "Width", "10 mm"},
    {"Component", "Height", "1 mm"},
    {"Component", "Type", "Electrical"},
    {"Component", "Modelling Level", "Simple"},
    {"Component", "Render Style", "Shaded"},
    {"Component", "Rotation Mechanism", "Angle and Axis"},
    {"Component", "Angle", "0 degrees"},
    {"Component", "Board Side", "Top"},
    {"Component", "Filtered", "No"},
    {"Component", "Utilisation", "100 %"},
    {"Component", "Thermal Design Power", "0 W"},
    {"Component", "Pin Diameter ", "0 mm"},
    {"Inductor", "Has Hole", "Yes"},
    {"Solid Obstruction", "Shape", "Cuboid"},
    {"Solid Obstruction", "Type", "Other"},
    {"Solid Obstruction", "Origin Point", "Low Centre"},
    {"Solid Obstruction", "Rotation Mechanism", "Ordered"},
    {"Solid Obstruction", "Rotation Order", "YZX"},
    {"PCB Conductor", "Shape", "Polygon"},
    {"Conductor Layer", "Conductor Thickness", "0.035 mm"},
    {"Conductor Layer", "Conductor Planar Percentage", "100 %"},
    {"Board Keepout", "Board Side", "Both"},
    {"Via", "Diameter", "0.3 mm"},
    {"Via", "Plated", "Yes"},
    {"Via", "Plating Thickness", "35 um"},
    {"Via", "Number Of Vias", "1"},
    {"Heatsink", "Pin Separation Across", "0 mm"},
    {"EDA Import Options", "Import Type", "PCB"},
    {"EDA Import Options", "Filter Options", "No"},
    {"EDA Import Options", "Min Power", "0 mW"},
    {"EDA Import Options", "Min Height", "0 mm"},
    {"EDA Import Options", "Import Vias", "Yes"},
    {"EDA Import Options", "Import Non Plated Vias", "Yes"},
    {"EDA Import Options", "Ignore Fill Material", "Yes"},
    {"EDA Import Options", "Group Identical Vias", "No"},
    {"EDA Import Options", "Ignore holes less than a specified size", "No"},
    {"EDA Import Options", "Maximum size to be ignored", "0 mm"},
    {"EDA Import Options", "Board Layer Options", "No"},
    {"EDA Import Options", "Import Detailed Layers", "Yes"},
    {"EDA Import Options", "Import Dielectric Layers", "No"},
    {"EDA Import Options", "Keepout Options", "No"},
    {"EDA Import Options", "Import Component Keepouts", "Yes"},
    {"EDA Import Options", "Import Via Keepouts", "Yes"},
    {"EDA Import Options", "Import Routing Keepouts", "Yes"},
    {"EDA Import Options", "Reset Board Origin", "Yes"},
    {"EDA Import Options", "Simplify Shapes", "Yes"},
    {"EDA Import Options", "Materials From Library", "Yes"},
    {"EDA Import Options", "Import Wirebonds", "Yes"},
    {"EDA Import Options", "Import Bumps", "Yes"},
    {"EDA Import Options", "Group Identical Bumps", "Yes"},
    {"EDA Import Options", "Merge Conductors", "Yes"},
    {"User Preferences", "Global Units", "Metric"},
    {"User Preferences", "Component Outline Type", "Body Outline"},
};

const EntityType &typeOf(const char *label) {
    const EntityType *const type = Schema::instance().find(TypeRef(label));
    EXPECT_NE(type, nullptr) << label;
    return *type;
}

} // namespace

TEST(Schema, TakesEveryTextThatTheImportWrites) {
    const SampleModel sample;
    for (const Accepted &row : accepted) {
        if (*row.text == '\0') continue;
        EXPECT_TRUE(set(sample[row.type], row.attribute, row.text))
            << row.type << " / " << row.attribute << " = " << row.text;
    }
}

TEST(Schema, LacksWhatTheImportReliesOnBeingAbsent) {
    const SampleModel sample;
    for (const Lacking &row : lacking) {
        EXPECT_EQ(sample[row.type]->findAttribute(row.attribute), nullptr)
            << row.type << " / " << row.attribute;
        EXPECT_FALSE(set(sample[row.type], row.attribute, "1")) << row.type << " / " << row.attribute;
    }
}

TEST(Schema, RefusesTextsOfOtherTypes) {
    const SampleModel sample;
    for (const Refused &row : refused) {
        const std::string before = textOf(sample[row.type], TypeRef(row.attribute));
        EXPECT_FALSE(set(sample[row.type], row.attribute, row.text)) << row.type << " / " << row.attribute;
        EXPECT_EQ(textOf(sample[row.type], TypeRef(row.attribute)), before);
    }
}

TEST(Schema, HasTheseDefaults) {
    for (const Default &row : defaults) {
        const Entity entity(typeOf(row.type));
        EXPECT_EQ(textOf(&entity, TypeRef(row.attribute)), row.text) << row.type << " / " << row.attribute;
    }
}

TEST(Schema, EveryTypeHasANameFirst) {
    for (const auto &type : Schema::instance().types()) {
        EXPECT_EQ(type->attributes().front()->type, Name_t) << type->type().getLabel();
    }
}

TEST(Schema, EveryAttributeIsFoundByItsLabelAndHasADefault) {
    size_t count = 0;
    for (const auto &type : Schema::instance().types()) {
        for (size_t i = 0; i < type->attributes().size(); ++i) {
            const AttributeDef &def = *type->attributes()[i];
            ++count;
            EXPECT_EQ(def.index, static_cast<int>(i));
            ASSERT_NE(def.defaultAttribute, nullptr);
            EXPECT_TRUE(def.defaultAttribute->isDefault()) << def.type.getLabel();
            const bool isRepeated = def.type == Value_t;
            EXPECT_TRUE(isRepeated || type->find(def.type) == &def) << def.type.getLabel();
            if (def.group >= 0) {
                EXPECT_EQ(type->findWithin(*type->attributes()[static_cast<size_t>(def.group)], def.type),
                          &def);
            }
        }
    }
    EXPECT_GT(count, 500u);
}

TEST(Schema, AttributesAreFoundAtAnyDepthButOnlyInTheirGroup) {
    const EntityType &pcb = typeOf("PCB");
    const AttributeDef *const width = pcb.find(Width_t);
    ASSERT_NE(width, nullptr);
    EXPECT_EQ(pcb.findWithin(*pcb.find(Geometry_t), Width_t), width);
    EXPECT_EQ(pcb.findWithin(*pcb.find(Placement_t), Width_t), nullptr);
    EXPECT_EQ(pcb.findWithin(*pcb.find(Geometry_t), X_Location_t), nullptr);
}

TEST(Schema, SecondLabelNamesTheSameAttribute) {
    EXPECT_EQ(typeOf("Component").find(TypeRef("Component Type")), typeOf("Component").find(Type_t));
}

TEST(Schema, MaterialValuesSitOneStepDeeper) {
    const SampleModel sample;
    Entity *const material = sample["Material"];
    const TypeRef quantities[] = {Conductivity_t, Specific_Heat_t, Density_t, Electrical_Conductivity_t};
    double value = 1.0;
    for (const TypeRef &quantity : quantities) {
        EXPECT_TRUE(EntityEditor::setSIValue(material, quantity / AttributePath(Value_t), value++));
    }
    EXPECT_EQ(textOf(material, Conductivity_t / AttributePath(Value_t)), "1 W/(m K)");
    EXPECT_EQ(textOf(material, Specific_Heat_t / AttributePath(Value_t)), "2 J/(kg K)");
    EXPECT_EQ(textOf(material, Density_t / AttributePath(Value_t)), "3 kg/m^3");
    EXPECT_EQ(textOf(material, Electrical_Conductivity_t / AttributePath(Value_t)), "4 S/m");
}

TEST(Schema, ElementListsAreFoundByNumberedLabels) {
    const EntityType &conductor = typeOf("PCB Conductor");
    int element = -1;
    EXPECT_EQ(conductor.findElementList("Hole 1", element), conductor.find(Outline_Holes_t));
    EXPECT_EQ(element, 0);
    EXPECT_NE(conductor.findElementList("Hole 12", element), nullptr);
    EXPECT_EQ(element, 11);
    for (const char *label : {"Hole", "Hole ", "Hole 0", "Hole 01", "Hole -1", "Hole1", "Hole 1 ", "hole 1",
                              "Hole 99999999999", " 1", "1", ""}) {
        EXPECT_EQ(conductor.findElementList(label, element), nullptr) << label;
    }
    EXPECT_EQ(typeOf("Substrate Conductor").findElementList("Hole 1", element), nullptr);
}

TEST(Schema, ConstantsHaveTheLabelsThatTheTypesUse) {
    EXPECT_EQ(PCBLink_t.getLabel(), "PCBLink");
    EXPECT_EQ(SubcomponentGroups_t.getLabel(), "SubcomponentGroups");
    EXPECT_EQ(TraceJunctions_t.getLabel(), "TraceJunctions");
    EXPECT_EQ(TraceSegments_t.getLabel(), "TraceSegments");
    EXPECT_EQ(WirebondJunctions_t.getLabel(), "WirebondJunctions");
    EXPECT_EQ(WirebondSegments_t.getLabel(), "WirebondSegments");
    EXPECT_EQ(MaterialLink_t.getLabel(), "MaterialLink");
    EXPECT_EQ(DielectricMaterialLink_t.getLabel(), "DielectricMaterialLink");
    EXPECT_EQ(HeatsinkLink_t.getLabel(), "HeatsinkLink");
    EXPECT_EQ(ComponentLink_t.getLabel(), "ComponentLink");
    EXPECT_EQ(MaterialMap_t.getLabel(), "MaterialMap");
    EXPECT_EQ(ImageWidth_t.getLabel(), "ImageWidth");
    EXPECT_EQ(BackgroundIsIgnored_t.getLabel(), "BackgroundIsIgnored");
    EXPECT_EQ(MaterialIsConductor_t.getLabel(), "MaterialIsConductor");
    EXPECT_EQ(Junction_to_Board_Thermal_Resistance_t.getLabel(), "Junction to Board Thermal Resistance");
    EXPECT_EQ(Ignore_holes_less_than_a_specified_size_t.getLabel(),
              "Ignore holes less than a specified size");
    EXPECT_EQ(Length_t.getLabel(), "Length");
}

TEST(Schema, EveryNamedTypeIsUsed) {
    std::vector<std::string> unused;
    const auto isUsed = [](const std::string &label) {
        const Type type = TypeFactory::getType(label);
        for (const auto &entityType : Schema::instance().types()) {
            if (entityType->type() == type || entityType->find(type)) return true;
            for (const auto &def : entityType->attributes()) {
                for (const Type &choice : def->choices) {
                    if (choice == type) return true;
                }
            }
        }
        return false;
    };
#define EDA_TYPE(constant)                                                                                   \
    if (!isUsed(constant.getLabel())) unused.push_back(constant.getLabel());
#include "host/EntityModel/TypeNames.def"
#undef EDA_TYPE
    EXPECT_EQ(unused, std::vector<std::string>{"Yes"});
}
