// Components move into the sockets that hold them.
#include "host/EntityCore/EntityManager.h"
#include "host/Geometry/Part.h"
#include "import/BoxIndex.h"
#include "import/EDAImporterDetail.h"
#include "import/RunParts.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double containTolerance = 1e-6; // metres

double middle(double low, double high) { return (low + high) * 0.5; }

// The sockets of one side of the board. A component is asked about by the middle of its bound.
class SideSockets {
public:
    // Those without a shape hold nothing.
    void add(Entity *socket, const Geometry::Part *part) {
        if (!part || !part->getGeometry()) return;
        sockets_.push_back({socket, part});
        boxes_.push_back(reach(part->getBound()));
    }
    void makeIndex() { index_ = BoxIndex(boxes_); }

    // The first that holds the component, or null.
    Entity *findFor(const Geometry::Part &component) const {
        const Geometry::Bound bound = component.getBound();
        const double x = middle(bound.getXLow(), bound.getXHigh());
        const double z = middle(bound.getZLow(), bound.getZHigh());
        const int found = index_.findFirst(x, z, [&](int place) {
            const Geometry::Part &part = *sockets_[static_cast<size_t>(place)].part;
            const Geometry::Bound own = part.getBound();
            bool onSurface = false;
            return part.getGeometry()->contains(x, middle(own.getYLow(), own.getYHigh()), z, onSurface,
                                                containTolerance);
        });
        return found < 0 ? nullptr : sockets_[static_cast<size_t>(found)].entity;
    }

private:
    struct Socket {
        Entity *entity;
        const Geometry::Part *part;
    };

    // Where a point may count as in the socket: a little more than the tolerance and the rounding, so that
    // only the socket itself decides.
    static BoxIndex::Box reach(const Geometry::Bound &bound) {
        const double largest = std::max({std::fabs(bound.getXLow()), std::fabs(bound.getXHigh()),
                                         std::fabs(bound.getZLow()), std::fabs(bound.getZHigh())});
        const double margin = 2.0 * containTolerance + 1e-12 * largest;
        return {bound.getXLow() - margin, bound.getZLow() - margin, bound.getXHigh() + margin,
                bound.getZHigh() + margin};
    }

    std::vector<Socket> sockets_;
    std::vector<BoxIndex::Box> boxes_;
    BoxIndex index_{{}};
};

std::string sideOf(const Entity &entity) { return getPreciceStringValue(&entity, Board_Side_t, ""); }

// The place of a box counts from the corner of its socket, that of any other shape from the middle.
void makeRelative(Entity *component, const Entity &socket) {
    const TypeRef shape = getTypeValue(component, Shape_t, TypeRef());
    const bool fromMiddle = shape == Polygon_t || shape == Cylinder_t;
    const auto subtract = [&](const AttributePath &path, const AttributePath &socketPath, double more) {
        const double value = getStandardDoubleValue(component, path, 0.0);
        const double base = getStandardDoubleValue(&socket, socketPath, 0.0);
        EntityEditor::setSIValueNoThrow(component, path, value - base - more, true);
    };
    const auto half = [&](const AttributePath &size) {
        return fromMiddle ? getStandardDoubleValue(&socket, size, 0.0) * 0.5 : 0.0;
    };
    subtract(X_Location_t, X_Location_t, half(Width_t));
    subtract(Z_Location_t, Z_Location_t, half(Depth_t));
    subtract(Angle_t, Orientation_t, 0.0);
}

using Move = EntityEditor::Move;

// Every component that lies in a socket of its side of the board, with the first such socket.
std::vector<Move> findMoves(const std::vector<Entity *> &components, const std::vector<Entity *> &sockets,
                            EntityGUI::GeometryBuilder &builder) {
    RunParts parts(builder);
    std::map<std::string, SideSockets> sides;
    parts.add(sockets);
    for (Entity *socket : sockets)
        sides[sideOf(*socket)].add(socket, parts.get(socket));
    for (auto &side : sides)
        side.second.makeIndex();

    std::vector<Move> moves;
    parts.add(components);
    for (Entity *component : components) {
        const auto side = sides.find(sideOf(*component));
        const Geometry::Part *const part = parts.get(component);
        Entity *const socket = part && side != sides.end() ? side->second.findFor(*part) : nullptr;
        if (socket) moves.push_back({component, socket});
    }
    return moves;
}

} // namespace

// Only the board's own components and chip sockets: what else lies in a socket stays where it is.
void EDAImporter::moveComponentsToSockets(Entity *boardEntity) const {
    EntityGUI::GeometryBuilder *const builder = EntityGUI::EntityManager::getGeometryBuilder();
    if (!builder || !boardEntity) return;
    std::vector<Entity *> components, sockets;
    boardEntity->getOwnedChildEntitiesOfType(components, Component_t, false, true);
    boardEntity->getOwnedChildEntitiesOfType(sockets, Chip_Socket_t, false, true);
    if (components.empty() || sockets.empty()) return;
    const std::vector<Move> moves = findMoves(components, sockets, *builder);
    EntityEditor::moveEntities(moves);
    // A socket takes one component. A second one stays on the board, with its place there; it does not go on
    // to a further socket.
    for (const Move &move : moves) {
        if (move.entity->getOwnerEntity() == move.newParent) makeRelative(move.entity, *move.newParent);
    }
}

} // namespace EDA
