// Thermal and electrical values of components, as properties.
#include "export/EDAExporter.h"

#include "host/EntityModel/Types.h"
#include "host/Tools/DoubleDisplay.h"

#include <cmath>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double smallestPower = 1e-6;
constexpr double exponentFrom = 1e15;

enum class Source { Part, TwoResistorPart, Material };

struct Row {
    const char *property;
    Source source;
    AttributePath attribute;
    const char *units;
    double above; // The least value, in standard units, that is not worth a property.
};

// Behind the power values, in this order. The importer reads the same names back, and puts the units behind.
const std::vector<Row> &rows() {
    static const std::vector<Row> table = {
        {"THERM_COND", Source::Material, Conductivity_t / AttributePath(Value_t), "W/(m K)", 1e-6},
        {"THETA_JB", Source::TwoResistorPart, Junction_to_Board_Thermal_Resistance_t, "C/W", 1e-12},
        {"THETA_JC", Source::TwoResistorPart, Junction_to_Case_Thermal_Resistance_t, "C/W", 1e-12},
        {"CAPACITANCE", Source::Part, Electrical_Capacitance_t, "uF", 1e-12},
        {"RESISTANCE", Source::Part, Electrical_Resistance_t, "Ohm", 1e-12},
        {"INDUCTANCE", Source::Part, Electrical_Inductance_t, "uH", 1e-12},
    };
    return table;
}

// All digits, no units.
std::string plainText(double value) {
    return DoubleDisplay::get().getDoubleString(value, std::string(), 0, exponentFrom);
}

// What an attribute of a row is read from; null where the row is not for this part.
const Entity *sourceOf(const Row &row, const Entity *entity) {
    static const TypeRef twoResistor("2R");
    switch (row.source) {
    case Source::Part:
        break;
    case Source::TwoResistorPart:
        return getTypeValue(entity, Modelling_Level_t, TypeRef()) == twoResistor ? entity : nullptr;
    case Source::Material:
        return getLinkedEntity(entity, MaterialLink_t);
    }
    return entity;
}

// A product may go beyond all numbers, and a property of no number helps nobody.
void addFinite(const char *property, double value, EDAComponent &component) {
    if (std::isfinite(value)) component.addProperty(property, plainText(value));
}

void addPower(const Entity *entity, EDAComponent &component) {
    const double milliwatts = getDoubleValue(entity, Thermal_Design_Power_t, "mW", 0.0);
    if (getStandardDoubleValue(entity, Thermal_Design_Power_t, 0.0) > smallestPower)
        component.addProperty("POWER_MAX", plainText(milliwatts));
    const double utilisation = getStandardDoubleValue(entity, Utilisation_t, 0.0);
    // Intended: here the power counts in milliwatts, so one that is too small for POWER_MAX may still show.
    if (utilisation > smallestPower && milliwatts > smallestPower)
        addFinite("POWER_OPR", utilisation * milliwatts * 0.01, component);
}

} // namespace

void EDAExporter::addProperties(const Entity *entity, EDAComponent &component) {
    addPower(entity, component);
    for (const Row &row : rows()) {
        const Entity *const source = sourceOf(row, entity);
        if (getStandardDoubleValue(source, row.attribute, 0.0) > row.above)
            component.addProperty(row.property,
                                  plainText(getDoubleValue(source, row.attribute, row.units, 0.0)));
    }
    component.addProperty("4ZETA_TYPE", entity->getType().getLabel());
}

} // namespace EDA
