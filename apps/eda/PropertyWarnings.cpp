// Properties of components that should be numbers.
#include "PropertyWarnings.h"

#include "host/EntityModel/Attribute.h"
#include "host/EntityModel/Types.h"
#include "Printable.h"
#include "WarningList.h"

#include <map>
#include <memory>

namespace EDATool {

using namespace EntityModel;

namespace {

struct QuantityRow {
    const char *property;
    const char *entityType; // of which an attribute takes the quantity
    const char *attribute;
    const char *unit; // that the text is in
};

constexpr QuantityRow quantityRows[] = {
    {"POWER_OPR", "Component", "Thermal Design Power", "mW"},
    {"POWER_MAX", "Component", "Thermal Design Power", "mW"},
    {"THETA_JB", "Component", "Junction to Board Thermal Resistance", "C/W"},
    {"THETA_JC", "Component", "Junction to Case Thermal Resistance", "C/W"},
    {"THERM_COND", "Material", "Conductivity", "W/(m K)"},
    {"RESISTANCE", "Resistor", "Electrical Resistance", "Ohm"},
    {"CAPACITANCE", "Capacitor", "Electrical Capacitance", "uF"},
    {"INDUCTANCE", "Inductor", "Electrical Inductance", "uH"},
};

struct Probe {
    std::unique_ptr<Attribute> attribute;
    const char *unit;
};

const AttributeDef &definitionOf(const QuantityRow &row) {
    const EntityType &type = *Schema::instance().find(TypeRef(row.entityType));
    const AttributeDef &found = *type.find(TypeRef(row.attribute));
    return found.kind == AttributeKind::Composite ? *type.findWithin(found, Value_t) : found;
}

// What takes a value, is asked: an attribute of the very kind that the import writes to.
std::map<std::string, Probe> makeProbes() {
    std::map<std::string, Probe> probes;
    for (const QuantityRow &row : quantityRows)
        probes[row.property] = {makeAttribute(definitionOf(row), nullptr), row.unit};
    return probes;
}

} // namespace

void addPropertyWarnings(const EDA::EDABoard &board, std::vector<std::string> &warnings) {
    const std::map<std::string, Probe> probes = makeProbes();
    WarningList list;
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component) {
        for (auto property = component->beginProperties(); property != component->endProperties();
             ++property) {
            const auto found = probes.find(property->first);
            // An empty text says nothing, so nothing is lost.
            if (found == probes.end() || property->second.empty()) continue;
            const Probe &probe = found->second;
            if (probe.attribute->setFromString(property->second + " " + probe.unit)) continue;
            list.add("component " + inQuotes(component->getName()) + ": " + property->first + " " +
                     inQuotes(property->second) + " is no number of " + probe.unit + ", so it is left out");
        }
    }
    list.moveTo(warnings, "properties that are no numbers");
}

} // namespace EDATool
