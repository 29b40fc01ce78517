// What a picture of a model's board shows.
#include "BoardView.h"

#include "Entities.h"
#include "host/EntityModel/Types.h"

#include <cmath>

namespace EDATool {

using namespace EntityModel;

namespace {

constexpr const char *unit = "mm";

double lengthOf(const Entity &entity, const AttributePath &path) {
    return getDoubleValue(&entity, path, unit, 0.0);
}

// X and Z pairs; Z runs against y.
Path outlinePath(const Entity &entity) {
    const Attribute *const attribute = entity.readAttribute(Outline_t);
    if (attribute == nullptr || !attribute->isDoubleListAttribute()) return Path();
    const auto &list = static_cast<const DoubleListAttribute &>(*attribute);
    Path path;
    for (int index = 0; index + 1 < list.getSize(); index += 2) {
        const Point point{list.getNthStandardValue(index, unit), -list.getNthStandardValue(index + 1, unit)};
        path.push_back({path.empty() ? PathStep::Kind::Move : PathStep::Kind::Line, point, {}, 0.0});
    }
    if (!path.empty()) path.push_back({PathStep::Kind::Close, path.front().to, {}, 0.0});
    return path;
}

// The shape about its own reference point: a rectangle hangs from its low-X, low-Z corner, a circle lies
// around its centre, a polygon around the origin of its outline.
Path shapePath(const Entity &entity) {
    if (entity.readAttribute(Shape_t) == nullptr) { // vias have no choice of shapes
        return circlePath({0.0, 0.0}, lengthOf(entity, Diameter_t) / 2);
    }
    const TypeRef shape = getTypeValue(&entity, Shape_t, Polygon_t);
    if (shape == Polygon_t) return outlinePath(entity);
    if (shape == Cylinder_t) return circlePath({0.0, 0.0}, lengthOf(entity, Diameter_t) / 2);
    Box box;
    box.add(Point{0.0, -lengthOf(entity, "Depth")});
    box.add(Point{lengthOf(entity, "Width"), 0.0});
    return boxPath(box);
}

// Turned as it stands, and moved to its location. A rectangle turns about its centre.
Path placedPath(const Entity &entity) {
    const Path shape = shapePath(entity);
    const double angle = getDoubleValue(&entity, "Orientation", "degrees", 0.0);
    const bool isBox = getTypeValue(&entity, Shape_t, Cylinder_t) == Rectangle_t;
    const Point pivot = isBox ? boundOf(shape).centre() : Point();
    const Similarity turn = then(then(Similarity::move(-pivot.x, -pivot.y), Similarity::turn(angle)),
                                 Similarity::move(pivot.x, pivot.y));
    const Similarity move = Similarity::move(lengthOf(entity, "X Location"), -lengthOf(entity, "Z Location"));
    return then(turn, move).apply(shape);
}

// The board's own frame starts at the low-X, low-Z corner of its shape.
Path boardEdge(const Entity &board) {
    const Path shape = shapePath(board);
    const Box box = boundOf(shape);
    return Similarity::move(-box.low.x, -box.high.y).apply(shape);
}

std::vector<Entity *> childrenOf(const Entity &board, const AttributePath &list) {
    std::vector<Entity *> children;
    if (board.readAttribute(list) != nullptr) getLinkedEntities(&board, list, children);
    return children;
}

KeepoutKind kindOf(const Entity &keepout) {
    const TypeRef kind = getTypeValue(&keepout, Keepout_Type_t, TypeRef());
    if (kind.getLabel() == "Components") return KeepoutKind::Components;
    if (kind.getLabel() == "Vias") return KeepoutKind::Vias;
    return kind.getLabel() == "Routing" ? KeepoutKind::Routing : KeepoutKind::Other;
}

} // namespace

BoardView viewOfModel(const Entity &board, Side side) {
    const std::string otherSide = side == Side::Top ? "Bottom" : "Top";
    BoardView view;
    view.name = textOf(board, Reference_Designator_t);
    view.unit = unit;
    view.side = side;
    view.thickness = lengthOf(board, "Thickness");
    view.edge = boardEdge(board);
    view.edgeBound = boundOf(view.edge);
    for (const Entity *hole : childrenOf(board, Holes_t)) {
        view.cutOuts.push_back(placedPath(*hole));
        view.edge.insert(view.edge.end(), view.cutOuts.back().begin(), view.cutOuts.back().end());
    }
    for (const Entity *via : childrenOf(board, Vias_t)) {
        const Attribute *const plated = via->readAttribute(Plated_t);
        view.holes.push_back({placedPath(*via), plated != nullptr && plated->getBool()});
    }
    for (const Entity *keepout : childrenOf(board, Keepouts_t)) {
        if (textOf(*keepout, Board_Side_t) == otherSide) continue;
        view.keepouts.push_back({placedPath(*keepout), kindOf(*keepout)});
    }
    return view;
}

} // namespace EDATool
