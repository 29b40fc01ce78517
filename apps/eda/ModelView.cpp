// What a picture of a model's board shows.
#include "BoardView.h"

#include "Entities.h"
#include "host/EntityModel/Types.h"
#include "ModelCopper.h"
#include "ModelParts.h"

#include <cmath>

namespace EDATool {

using namespace EntityModel;

namespace {

// Paths of what is on the board, in the picture's frame.
class BoardShapes {
public:
    BoardShapes(const Entity &board, const EntityGUI::PartRule &rule, const EntityGUI::PartPlace &place)
        : plane_(place.footprint), edge_(plane_.pathOf(board, place)),
          frame_(EntityGUI::childFrame(board, rule, place, EntityGUI::PartFrame())) {}

    const BoardPlane &plane() const { return plane_; }
    const Path &edge() const { return edge_; }

    Path pathOf(const Entity &child) const {
        const EntityGUI::PartRule *const rule = EntityGUI::findPartRule(child.getType());
        return rule == nullptr ? Path() : plane_.pathOf(child, EntityGUI::placePart(child, *rule, frame_));
    }

private:
    BoardPlane plane_;
    Path edge_;
    EntityGUI::PartFrame frame_;
};

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

void addCutOuts(const Entity &board, const BoardShapes &shapes, BoardView &view) {
    for (const Entity *hole : childrenOf(board, Holes_t)) {
        Path path = shapes.pathOf(*hole);
        view.edge.insert(view.edge.end(), path.begin(), path.end());
        view.cutOuts.push_back(std::move(path));
    }
}

void addKeepouts(const Entity &board, const BoardShapes &shapes, BoardView &view) {
    const std::string otherSide = view.side == Side::Top ? "Bottom" : "Top";
    for (const Entity *keepout : childrenOf(board, Keepouts_t)) {
        if (textOf(*keepout, Board_Side_t) == otherSide) continue;
        view.keepouts.push_back({shapes.pathOf(*keepout), kindOf(*keepout)});
    }
}

} // namespace

BoardView viewOfModel(const Entity &board, Side side, std::size_t layerNumber) {
    BoardView view;
    view.name = textOf(board, Reference_Designator_t);
    view.unit = "mm";
    view.side = side;
    view.layerNumber = layerNumber;
    view.thickness = getDoubleValue(&board, "Thickness", view.unit, 0.0);
    const EntityGUI::PartRule *const rule = EntityGUI::findPartRule(board.getType());
    if (rule == nullptr) return view;
    EntityGUI::PartPlace place = EntityGUI::placePart(board, *rule, EntityGUI::ownerFrame(board));
    place.toRoot = Geometry::Transform(); // The picture shows the board as it is by itself.
    const BoardShapes shapes(board, *rule, place);
    view.edge = shapes.edge();
    view.edgeBound = boundOf(view.edge);
    addCutOuts(board, shapes, view);
    const std::vector<Entity *> layers = conductorLayers(board);
    addModelParts(board, *rule, place, shapes.plane(), layers, view);
    if (layerNumber > 0) {
        view.parts.clear();
        view.bumps.clear();
        view.wires.clear();
        if (layerNumber <= layers.size())
            addModelCopper(board, *layers[layerNumber - 1], *rule, place, shapes.plane(), view);
    } else {
        addKeepouts(board, shapes, view);
    }
    return view;
}

} // namespace EDATool
