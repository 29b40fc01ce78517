// The table of entity types that have parts.
#include "host/EntityCore/PartRules.h"

#include <unordered_map>

namespace EntityGUI {

namespace {

using EntityModel::Type;
using EntityModel::TypeFactory;

struct Row {
    char const *type;
    char const *height = "";
    char const *angle = "";
    char const *diameter = "Diameter";
    PartForm form = PartForm::Shaped;
    PartOrigin origin = PartOrigin::Usual;
    PartTurn turn = PartTurn::None;
    PartPivot pivot = PartPivot::Location;
    PartBase base = PartBase::YLocation;
    PartHold hold = PartHold::AtCorner;
    bool inShapeFrame = false;
};

constexpr Row group(char const *type) {
    Row row{type};
    row.form = PartForm::None;
    return row;
}

constexpr Row board(char const *type) {
    Row row{type, "Thickness"};
    row.origin = PartOrigin::ChosenInPlane;
    row.hold = PartHold::AsBoard;
    return row;
}

constexpr Row mounted(char const *type, char const *angle, PartHold hold = PartHold::AtCorner) {
    Row row{type, "Height", angle};
    row.turn = PartTurn::AboutVertical;
    row.pivot = PartPivot::BaseCentre;
    row.base = PartBase::BoardSide;
    row.hold = hold;
    return row;
}

constexpr Row solid(char const *type) {
    Row row{type, "Height", "Angle 1"};
    row.origin = PartOrigin::Chosen;
    row.turn = PartTurn::Ordered;
    row.pivot = PartPivot::BodyCentre;
    return row;
}

constexpr Row keepout(char const *type) {
    Row row{type, "Height"};
    row.base = PartBase::AlongBoard;
    return row;
}

// A hole turns about its location, which is the corner of a rectangular one: the importer writes it and the
// exporter reads it that way.
constexpr Row boardHole(char const *type) {
    Row row{type, "", "Orientation"};
    row.turn = PartTurn::AboutVertical;
    row.base = PartBase::ThroughOwner;
    return row;
}

// A hole of a solid is measured in the frame of the solid's own outline, not from its corner. The importer
// writes numbers that count from the board's origin; they are taken in this frame as they stand.
constexpr Row solidHole(char const *type) {
    Row row{type};
    row.base = PartBase::ThroughOwner;
    row.inShapeFrame = true;
    return row;
}

constexpr Row round(char const *type, char const *diameter, PartBase base) {
    Row row{type, "Height", "", diameter};
    row.form = PartForm::Round;
    row.base = base;
    return row;
}

constexpr Row rows[] = {
    group("Velkin Solver Project"),
    group("Chassis"),
    group("Test Chamber"),
    group("Subcomponent Group"),
    board("PCB"),
    board("Substrate"),
    mounted("Component", "Angle"),
    mounted("Resistor", "Orientation"),
    mounted("Capacitor", "Orientation"),
    mounted("Inductor", "Orientation"),
    mounted("Chip Socket", "Orientation", PartHold::Plugged),
    mounted("Cable Socket", "Orientation"),
    mounted("Daughter Board Socket", "Orientation"),
    solid("Solid Obstruction"),
    keepout("Board Keepout"),
    boardHole("PCB Hole"),
    boardHole("Substrate Hole"),
    solidHole("Obstruction Hole"),
    round("Via", "Diameter", PartBase::Drilled),
    round("Bump", "Max Diameter", PartBase::YLocation),
};

PartRule toRule(Row const &row) {
    return {row.form, row.height, row.angle, row.diameter, row.origin,
            row.turn, row.pivot,  row.base,  row.hold,     row.inShapeFrame};
}

std::unordered_map<Type, PartRule> makeRules() {
    std::unordered_map<Type, PartRule> rules;
    for (Row const &row : rows)
        rules.emplace(TypeFactory::getType(row.type), toRule(row));
    return rules;
}

} // namespace

PartRule const *findPartRule(Type const &type) {
    static std::unordered_map<Type, PartRule> const rules = makeRules();
    auto const found = rules.find(type);
    return found == rules.end() ? nullptr : &found->second;
}

} // namespace EntityGUI
