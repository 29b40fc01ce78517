// A package of an XFL file as a component of its own in a model.
#include "XflPackage.h"

#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"

namespace EDATool {

using namespace EntityModel;

namespace {

std::vector<Entity *> childrenOf(const Entity &entity, const AttributePath &list) {
    std::vector<Entity *> children;
    getLinkedEntities(&entity, list, children);
    return children;
}

void setPlace(Entity *entity, double x, double z, const std::string &units) {
    EntityEditor::setValueWithUnits(entity, X_Location_t, x, units, true);
    EntityEditor::setValueWithUnits(entity, Z_Location_t, z, units, true);
}

// The location of a box is its corner of low x and high y, where z is lowest; from there its bodies count.
void becomeBox(Entity &component, const EDA::EDABoard &package) {
    Geometry::Bound2D bound;
    package.beginComponents()->getOutline().getOverallBound(bound);
    EntityEditor::setValue(&component, Shape_t, "Rectangle", true);
    EntityEditor::setValue(&component, Type_t, "Electrical", true);
    EntityEditor::setValue(&component, Reference_Designator_t, package.getName(), true);
    setPlace(&component, 0.0, 0.0, package.getUnits());
    for (Entity *group : childrenOf(component, AttributePath(SubcomponentGroups_t)))
        setPlace(group, -bound.getXLow(), bound.getYHigh(), package.getUnits());
}

} // namespace

void completeEdge(EDA::EDABoard &package) {
    EDA::EDAOutline &edge = package.getOutline();
    if (!edge.empty()) return;
    const double corners[][2] = {{0, 0}, {0, -1}, {1, -1}, {1, 0}};
    for (const auto &corner : corners)
        edge.addPoint(0, corner[0], corner[1], 0.0);
}

Entity *takeOutPackage(Entity *board, Entity *target, const EDA::EDABoard &package) {
    const UndoStackDisabler noUndo;
    const std::vector<Entity *> components = childrenOf(*board, AttributePath(Components_t));
    Entity *component = components.empty() ? nullptr : components.front();
    if (component != nullptr) {
        becomeBox(*component, package);
        Attribute *const list = target->findAttribute(Components_t, false);
        if (!EntityEditor::moveEntity(component, target, list)) component = nullptr;
    }
    EntityEditor::deleteEntity(board);
    return component;
}

} // namespace EDATool
