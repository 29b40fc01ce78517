// Vias of boards and of components.
#include "export/EDAExporter.h"

#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Units.h"
#include "host/Geometry/Part.h"

namespace EDA {

using namespace EntityModel;

namespace {

// The part that the via belongs to; null for a via of the board. Intended: a chip socket is no such part.
const Entity *findOwningPart(const Entity *via) {
    static const TypeRef owners[] = {Component_t, Resistor_t,     Capacitor_t,
                                     Inductor_t,  Cable_Socket_t, Daughter_Board_Socket_t};
    const Entity *const owner = via->getOwnerEntity();
    if (!owner) return nullptr;
    for (const TypeRef &type : owners)
        if (owner->getType() == type) return owner;
    return nullptr;
}

bool hasLocation(const Entity *via) {
    return via->readAttribute(X_Location_t) && via->readAttribute(Z_Location_t);
}

} // namespace

void EDAExporter::addVia(Entity *entity, EDABoard &board, double offsetX, double offsetY) const {
    EDAVia via;
    via.setName(getPreciceStringValue(entity, Name_t, std::string()));
    via.setDiameter(length(entity, Diameter_t));
    if (const Attribute *const plated = entity->readAttribute(Plated_t))
        via.setPlatingStyle(plated->isValue(Yes_t) ? "PTH" : "NPTH");
    via.setHoleType("VIA");
    if (const Entity *const part = findOwningPart(entity))
        via.setAssociatedPart(getPreciceStringValue(part, Reference_Designator_t, std::string()));
    if (getTypeValue(entity, Modelling_Type_t, TypeRef()) == Multiple_Vias_t)
        addMultipleVias(entity, via, board, offsetX, offsetY);
    else
        addSingleVia(entity, via, board, offsetX, offsetY);
}

void EDAExporter::addSingleVia(Entity *entity, EDAVia &via, EDABoard &board, double offsetX,
                               double offsetY) const {
    if (hasLocation(entity)) {
        double x = 0.0, z = 0.0;
        if (findInBoardFrame(entity, x, z)) {
            offsetX = offsetY = 0.0; // The frame of the board's part is that of the board's outline.
        } else {
            x = length(entity, X_Location_t);
            z = length(entity, Z_Location_t);
        }
        via.setCentre(x + offsetX, mapZCoord(z + offsetY));
    }
    board.addVia(via, false);
}

// Intended: in a component with built parts the pattern is put at the via's origin in the frame of the board,
// the via's location and the offsets are added again, and the pattern is not turned.
void EDAExporter::addMultipleVias(Entity *entity, EDAVia &via, EDABoard &board, double offsetX,
                                  double offsetY) const {
    const Attribute *const placements = entity->readAttribute(Instance_Placements_t);
    if (!placements || !placements->isDoubleListAttribute() || !hasLocation(entity)) return;
    const auto &list = static_cast<const DoubleListAttribute &>(*placements);
    double originX = 0.0, originZ = 0.0;
    findInBoardFrame(entity, originX, originZ);
    originX += length(entity, X_Location_t);
    originZ += length(entity, Z_Location_t);
    for (int i = 0; i + 1 < list.getSize(); i += 2) {
        const double x = originX + list.getNthStandardValue(i, units_);
        const double z = originZ + list.getNthStandardValue(i + 1, units_);
        via.setCentre(x + offsetX, mapZCoord(z + offsetY));
        board.addVia(via, false);
    }
}

// The origin of a via that belongs to a part, in the frame of the board's part and in the units of the
// export. False, and the outputs as they were, without the parts of both.
bool EDAExporter::findInBoardFrame(Entity *via, double &x, double &z) const {
    const EntityGUI::GeometryBuilder *const builder = EntityGUI::EntityManager::getGeometryBuilder();
    if (!builder || !findOwningPart(via)) return false;
    const Geometry::Part *const viaPart = builder->getPart(via);
    const Geometry::Part *const boardPart = builder->getPart(via->getAncestor(PCB_t));
    if (!viaPart || !boardPart) return false;
    Geometry::Vec3T<double> point(0.0, 0.0, 0.0);
    boardPart->transformToThisCoordinateSystem(viaPart).transform(point);
    const TypeRef unit(units_);
    x = UnitConverter::instance().convertFromSI(Length_t, point.x, unit);
    z = UnitConverter::instance().convertFromSI(Length_t, point.z, unit);
    return true;
}

} // namespace EDA
