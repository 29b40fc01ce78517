// Bond wires: chains of junctions and segments.
#include "import/EDAImporterDetail.h"

namespace EDA {

using namespace EntityModel;

namespace {

Entity *createPiece(const TypeRef &type, Entity *wire, const TypeRef &list) {
    return EntityEditor::createEntity(type, wire, AttributePath(list), nullptr, false, true, false, "", -1);
}

void linkJunction(Entity *segment, const TypeRef &link, Entity *junction, const TypeRef &locationFrom) {
    EntityEditor::addEntity(segment, AttributePath(link), junction, false, true, true, true, false, -1);
    EntityEditor::setValue(segment, locationFrom, "Yes", true);
}

} // namespace

// The junctions of a wire as they come, each with a segment to the one before.
struct EDAImporter::WireChain {
    Entity *wire;
    const EDABoard &board;
    Entity *last = nullptr;

    void add(double x, double height, double z);
};

void EDAImporter::WireChain::add(double x, double height, double z) {
    Entity *const junction = createPiece(Wirebond_Junction_t, wire, WirebondJunctions_t);
    if (!junction) return;
    setLocation(junction, x, z, board);
    setLength(junction, Y_Location_t, height, board);
    lockData(junction, {Placement_t});
    Entity *const segment = last ? createPiece(Wirebond_Segment_t, wire, WirebondSegments_t) : nullptr;
    if (segment) {
        linkJunction(segment, Start_Junction_t, last, Start_Location_From_Junction_t);
        linkJunction(segment, End_Junction_t, junction, End_Location_From_Junction_t);
        lockData(segment, {Geometry_t, Placement_t});
    }
    last = junction;
}

void EDAImporter::addWirebond(Entity *parent, const EDAWirebond &wirebond, const EDABoard &board) const {
    Entity *const wire = createPiece(Wirebond_t, parent, Wirebonds_t);
    if (!wire) return;
    tellGeometryEditor(wire);
    EntityEditor::setValue(wire, Name_t, wirebond.getName(), true);
    setLength(wire, Diameter_t, wirebond.getDiameter(), board);
    // Free texts: a layer that is not there stops nothing.
    EntityEditor::setValueNoThrow(wire, From_Layer_t, wirebond.getStartLayer());
    EntityEditor::setValueNoThrow(wire, To_Layer_t, wirebond.getEndLayer());

    WireChain chain{wire, board};
    for (const Geometry::Vec3T<double> &point : wirebond.getPoints()) {
        chain.add(mapX(point.x), point.z, mapZCoord(mapY(point.y)));
    }
    landWire(chain, wirebond);
    if (!wirebond.getMaterial().empty()) {
        attachDefaultMaterial(wire, "", wirebond.getMaterial(), MaterialLink_t, true);
    }
    lockData(wire, {Geometry_t, Placement_t});
}

// The end alone comes down on its layer, the wire's centre line half a wire above the surface. The start is
// left as it was drawn: that is intended.
void EDAImporter::landWire(WireChain &chain, const EDAWirebond &wirebond) {
    const EDABoardLayer *const layer = chain.board.findLayer(wirebond.getEndLayer());
    if (!layer || !chain.last) return;
    const double surface = (chain.board.getThickness() - layer->getTopOffset()) + layer->getThickness();
    setLength(chain.last, Y_Location_t, surface + wirebond.getDiameter() * 0.5, chain.board);
    // Read in the units that they were written in, so the drop is straight to the last bit.
    const double x = getDoubleValue(chain.last, X_Location_t, "", 0.0);
    const double z = getDoubleValue(chain.last, Z_Location_t, "", 0.0);
    chain.add(x, surface, z);
}

} // namespace EDA
