// Free-form properties of a component become attributes, notes and power.
#include "import/EDAImporterDetail.h"

#include "text/Text.h"

#include <algorithm>

namespace EDA {

using namespace EntityModel;

namespace {

// A property whose text is the number of a quantity in this unit.
struct QuantityRow {
    const char *name;
    const TypeRef &attribute;
    const char *unit;
    bool isOf2R; // A resistance of the model of two resistors.
};

const QuantityRow *findQuantity(const std::string &name) {
    static const QuantityRow rows[] = {
        {"THETA_JB", Junction_to_Board_Thermal_Resistance_t, " C/W", true},
        {"THETA_JC", Junction_to_Case_Thermal_Resistance_t, " C/W", true},
        {"CAPACITANCE", Electrical_Capacitance_t, " uF", false},
        {"RESISTANCE", Electrical_Resistance_t, " Ohm", false},
        {"INDUCTANCE", Electrical_Inductance_t, " uH", false},
    };
    const auto *const row = std::find_if(std::begin(rows), std::end(rows),
                                         [&name](const QuantityRow &each) { return name == each.name; });
    return row == std::end(rows) ? nullptr : row;
}

// Intended: without a unit the line ends in a blank.
std::string noteOf(const std::string &name, const std::string &value) {
    return name + "=" + value + " " + (name == "TOLERANCE" ? "% deviation" : "");
}

// Adds lines to the description of an entity that has one.
void addNotes(Entity *entity, const std::string &lines) {
    const Attribute *const description = entity ? entity->readAttribute(Description_t) : nullptr;
    if (!description || lines.empty()) return;
    std::string text;
    description->getString(text);
    if (!text.empty()) text += '\n';
    EntityEditor::setValue(entity, Description_t, text + lines, true);
}

double numberOf(const std::string &text) { return parseDouble(text, 0.0, 0.0); }

} // namespace

void EDAImporter::addProperty(Entity *entity, const std::string &name, const std::string &value) const {
    if (!addKnownProperty(entity, name, value) && storeExtraProperties_)
        addNotes(entity, noteOf(name, value));
}

void EDAImporter::addProperties(Entity *entity, const EDAComponent &component) const {
    // The notes come in one go: one by one they would copy the description each time.
    std::string notes;
    for (auto property = component.beginProperties(); property != component.endProperties(); ++property) {
        if (addKnownProperty(entity, property->first, property->second) || !storeExtraProperties_) continue;
        if (!notes.empty()) notes += '\n';
        notes += noteOf(property->first, property->second);
    }
    addNotes(entity, notes);
}

// False for a property that can only be noted. A text that is no number sets nothing, and the import goes on.
bool EDAImporter::addKnownProperty(Entity *entity, const std::string &name, const std::string &value) const {
    if (name == "4ZETA_TYPE") return true; // It chose the entity's type.
    if (name == "THERM_COND") {
        attachDefaultMaterial(entity, value, "", MaterialLink_t, true);
        return true;
    }
    const QuantityRow *const row = findQuantity(name);
    if (!row) return false;
    if (row->isOf2R) EntityEditor::setValue(entity, Modelling_Level_t, "2R", false);
    EntityEditor::setValue(entity, row->attribute, value + row->unit, true, nullptr, true, true);
    return true;
}

// Intended: of repeated properties the last counts here, while the power filter looks at the first.
void EDAImporter::addPowerValues(Entity *entity, const EDAComponent &component) const {
    std::string operating, maximum;
    for (auto property = component.beginProperties(); property != component.endProperties(); ++property) {
        if (property->first == "POWER_OPR") operating = property->second;
        if (property->first == "POWER_MAX") maximum = property->second;
    }
    if (entity && entity->getType() == Solid_Obstruction_t) {
        if (operating.empty()) return;
        EntityEditor::setValue(entity, Heat_Dissipated_t, operating + " mW", true);
        EntityEditor::setValue(entity, Type_t, "Die", true);
    } else if (!maximum.empty()) {
        EntityEditor::setValue(entity, Thermal_Design_Power_t, maximum + " mW", true);
        const double most = numberOf(maximum);
        const double utilisation = most != 0.0 ? numberOf(operating) / most * 100.0 : 0.0;
        EntityEditor::setSIValue(entity, Utilisation_t, utilisation, true); // Per cent.
    } else if (!operating.empty()) {
        EntityEditor::setValue(entity, Thermal_Design_Power_t, operating + " mW", true);
        EntityEditor::setValue(entity, Utilisation_t, "100", true);
    }
}

bool EDAImporter::has2RProperties(const EDAComponent &component) {
    std::string value;
    return hasProperty(component, "THETA_JB", value) || hasProperty(component, "THETA_JC", value);
}

bool EDAImporter::hasProperty(const EDAComponent &component, const std::string &name, std::string &value) {
    const auto found = std::find_if(component.beginProperties(), component.endProperties(),
                                    [&name](const auto &property) { return property.first == name; });
    if (found == component.endProperties()) return false;
    value = found->second;
    return true;
}

} // namespace EDA
