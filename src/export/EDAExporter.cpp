// The walk over the entities of a board.
#include "export/EDAExporter.h"

#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"

#include <algorithm>
#include <vector>

namespace EDA {

using namespace EntityModel;

namespace {

const char *const electrical = "ELECTRICAL";
const char *const mechanical = "MECHANICAL";

// The entities of a list, or none where there is no such list.
std::vector<Entity *> membersOf(const Entity *entity, const TypeRef &list) {
    std::vector<Entity *> members;
    getLinkedEntities(entity, list, members);
    return members;
}

struct PartList {
    TypeRef list;
    const char *type;
};

// Which lists hold parts, in the order of the export, and what their parts are.
const std::vector<PartList> &partLists() {
    static const std::vector<PartList> lists = {
        {Components_t, electrical},
        {Capacitors_t, electrical},
        {Resistors_t, electrical},
        {Inductors_t, electrical},
        {Daughter_Board_Sockets_t, mechanical},
        {Cable_Sockets_t, mechanical},
    };
    return lists;
}

// Components alone say themselves what they are.
const char *partType(const Entity *entity, const PartList &from) {
    static const TypeRef mechanicalValue("Mechanical");
    const bool says = from.list == Components_t;
    return says && getTypeValue(entity, Type_t, TypeRef()) == mechanicalValue ? mechanical : from.type;
}

const char *keepoutType(const Entity *entity) {
    static const TypeRef vias("Vias"), routing("Routing");
    const TypeRef type = getTypeValue(entity, Keepout_Type_t, TypeRef());
    if (type == vias) return "VIA_KEEPOUT";
    return type == routing ? "Route" : "PLACE_KEEPOUT";
}

} // namespace

EDAExporter::EDAExporter() = default;
EDAExporter::EDAExporter(const EDAExporter &) = default;
EDAExporter &EDAExporter::operator=(const EDAExporter &) = default;
EDAExporter::~EDAExporter() = default;

void EDAExporter::exportBoard(Entity *boardEntity, EDABoard &board, const std::string &units) {
    static const AttributePath thickness("Thickness");
    if (!boardEntity) return;
    settleUnits(units);
    if (boardEntity->readAttribute(Reference_Designator_t))
        board.setName(getPreciceStringValue(boardEntity, Reference_Designator_t, std::string()));
    board.setUnits(units_);
    board.setThickness(length(boardEntity, thickness));
    exportShape(boardEntity, board.getOutline(), 0, 0.0, 0.0, 0.0, false);

    const double xLow = board.getOutline().getBound().getXLow();
    const double yHigh = board.getOutline().getBound().getYHigh();
    exportHoles(boardEntity, board, xLow, yHigh);
    exportParts(boardEntity, board, xLow, -yHigh);
    exportChipSockets(boardEntity, board, xLow, -yHigh);
    exportKeepouts(boardEntity, board, xLow, -yHigh);
    for (Entity *via : membersOf(boardEntity, Vias_t))
        addVia(via, board, xLow, -yHigh);
}

void EDAExporter::settleUnits(const std::string &units) {
    static const TypeRef metric("Metric"), imperial("Imperial");
    if (!units.empty()) {
        units_ = units;
        return;
    }
    const TypeRef preferred =
        getTypeValue(UserPreference::instance().getPreferences(), Global_Units_t, TypeRef());
    if (preferred == metric) units_ = "MM";
    if (preferred == imperial) units_ = "THOU";
}

void EDAExporter::exportHoles(Entity *boardEntity, EDABoard &board, double xLow, double yHigh) const {
    EDAOutline &outline = board.getOutline();
    int number = 0;
    for (Entity *hole : membersOf(boardEntity, Holes_t)) {
        ++number;
        const double x = xLow + length(hole, X_Location_t);
        // Intended: a hole that has no Z is at y 0, not at the top edge of the board.
        const double y =
            hole->readAttribute(Z_Location_t) ? mapZCoord(length(hole, Z_Location_t) - yHigh) : 0.0;
        const double angle = getDoubleValue(hole, Orientation_t, "degrees", 0.0);
        // A hole without shape adds no outline; the next one must not skip a place, or each of its points
        // would become an outline of its own.
        exportShape(hole, outline, std::min(number, outline.numInternalOutlines() + 1), x, y, angle, false);
    }
}

void EDAExporter::exportParts(Entity *boardEntity, EDABoard &board, double offsetX, double offsetY) const {
    for (const PartList &row : partLists()) {
        for (Entity *part : membersOf(boardEntity, row.list)) {
            addComponentAndPlacement(part, partType(part, row), board, nullptr, offsetX, offsetY);
            addViasOf(part, board, offsetX, offsetY);
        }
    }
}

// A socket's own children are not walked, but for the component in it.
void EDAExporter::exportChipSockets(Entity *boardEntity, EDABoard &board, double offsetX,
                                    double offsetY) const {
    for (Entity *socket : membersOf(boardEntity, Chip_Sockets_t)) {
        addComponentAndPlacement(socket, mechanical, board, nullptr, offsetX, offsetY);
        Entity *const plugged = getLinkedEntity(socket, ComponentLink_t);
        if (!plugged) continue;
        addComponentAndPlacement(plugged, electrical, board, socket, offsetX, offsetY);
        addViasOf(plugged, board, offsetX, offsetY);
    }
}

void EDAExporter::exportKeepouts(Entity *boardEntity, EDABoard &board, double offsetX, double offsetY) const {
    for (Entity *keepout : membersOf(boardEntity, Keepouts_t))
        addKeepout(keepout, keepoutType(keepout), board, offsetX, offsetY);
}

void EDAExporter::addViasOf(Entity *part, EDABoard &board, double offsetX, double offsetY) const {
    std::vector<Entity *> children;
    part->getChildEntities(children);
    for (Entity *child : children)
        if (child->getType() == Via_t) addVia(child, board, offsetX, offsetY);
}

double EDAExporter::length(const Entity *entity, const AttributePath &path) const {
    return getDoubleValue(entity, path, units_, 0.0);
}

double EDAExporter::depth(const Entity *entity, double missing) const {
    return getDoubleValue(entity, Depth_t, units_, getDoubleValue(entity, Length_t, units_, missing));
}

} // namespace EDA
