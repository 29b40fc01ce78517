// The parts on a board of a model.
#include "ModelParts.h"

#include "Entities.h"
#include "host/EntityModel/Types.h"
#include "LayerNames.h"
#include "ModelCopper.h"
#include "PartFinder.h"

#include <cmath>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace EDATool {

using namespace EntityModel;
using EntityGUI::PartFrame;
using EntityGUI::PartPlace;
using EntityGUI::PartRule;

namespace {

enum class Role { Part, Socket, Solid, Group, Via, Bump, Wirebond };

// What is drawn of the children of a board, a part, or a package. Boards in sockets are not.
std::optional<Role> roleOf(const Type &type) {
    static const std::unordered_map<Type, Role> roles{{Component_t, Role::Part},
                                                      {Resistor_t, Role::Part},
                                                      {Capacitor_t, Role::Part},
                                                      {Inductor_t, Role::Part},
                                                      {Chip_Socket_t, Role::Socket},
                                                      {Cable_Socket_t, Role::Socket},
                                                      {Daughter_Board_Socket_t, Role::Socket},
                                                      {Solid_Obstruction_t, Role::Solid},
                                                      {Substrate_t, Role::Solid},
                                                      {Subcomponent_Group_t, Role::Group},
                                                      {Via_t, Role::Via},
                                                      {Bump_t, Role::Bump},
                                                      {Wirebond_t, Role::Wirebond}};
    const auto found = roles.find(type);
    return found == roles.end() ? std::nullopt : std::optional<Role>(found->second);
}

// Children to be shown, and what they are measured in. Siblings, which may be millions, share it.
struct Inside {
    PartFrame frame;
    std::optional<Side> side; // of the part that they are in
    bool isFiltered = false;
};

struct Task {
    Entity *entity;
    std::shared_ptr<const Inside> inside;
};

bool hasText(const Entity &entity, const AttributePath &path, const char *text) {
    return getPreciceStringValue(&entity, path, std::string()) == text;
}

// X and Z of a list of points, each handed to `visit`.
template <class Visit> void forEachInstance(const Entity &entity, const Visit &visit) {
    const Attribute *const attribute = entity.readAttribute(Instance_Placements_t);
    if (attribute == nullptr || !attribute->isDoubleListAttribute()) return;
    const auto &list = static_cast<const DoubleListAttribute &>(*attribute);
    for (int index = 0; index + 1 < list.getSize(); index += 2)
        visit(list.getNthStandardValue(index), list.getNthStandardValue(index + 1));
}

double metres(const Entity &entity, const AttributePath &path) {
    return getStandardDoubleValue(&entity, path, 0.0);
}

class Walk {
public:
    Walk(const BoardPlane &plane, double boardHeight, const std::vector<Entity *> &layers, BoardView &view)
        : plane_(plane), boardHeight_(boardHeight), layers_(layers), layerNames_(namesOf(layers)),
          view_(view) {}

    // All below `parent`, without `left`.
    void addChildren(const Entity &parent, std::shared_ptr<const Inside> inside,
                     const Entity *left = nullptr) {
        push(parent, inside, left);
        while (!tasks_.empty()) {
            const Task task = std::move(tasks_.back());
            tasks_.pop_back();
            addEntity(*task.entity, *task.inside);
        }
    }

private:
    // In reverse, so that they are taken in their order.
    void push(const Entity &parent, const std::shared_ptr<const Inside> &inside, const Entity *left) {
        std::vector<Entity *> children;
        parent.getChildEntities(children);
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (*child != left && roleOf((*child)->getType())) tasks_.push_back({*child, inside});
        }
    }

    void addEntity(const Entity &entity, const Inside &inside) {
        const Role role = *roleOf(entity.getType());
        if (role == Role::Wirebond) {
            addWire(entity, inside);
            return;
        }
        const PartRule *const rule = EntityGUI::findPartRule(entity.getType());
        if (rule == nullptr) return;
        const PartPlace place = EntityGUI::placePart(entity, *rule, inside.frame);
        if (role == Role::Via) return addVia(entity, place);
        if (role == Role::Bump) return addBump(entity, *rule, place, inside);
        auto within = std::make_shared<Inside>();
        within->frame = EntityGUI::childFrame(entity, *rule, place, inside.frame);
        within->isFiltered = inside.isFiltered || PartFinder::isFiltered(entity);
        within->side = inside.side;
        if (role != Role::Group) {
            within->side = sideOf(entity, *rule, place, inside);
            PartView part = makePart(entity, role, place, *within);
            nameSolid(entity, role, inside, part);
            addPart(view_, std::move(part), *within->side);
        }
        push(entity, within, nullptr);
    }

    // By what mounts it, or what it is part of, or else by its middle.
    Side sideOf(const Entity &entity, const PartRule &rule, const PartPlace &place,
                const Inside &inside) const {
        if (inside.frame.plug) return inside.frame.plug->onBottom ? Side::Bottom : Side::Top;
        if (rule.base == EntityGUI::PartBase::BoardSide)
            return hasText(entity, Board_Side_t, "Bottom") ? Side::Bottom : Side::Top;
        if (inside.side) return *inside.side;
        const double half = std::isfinite(place.height) ? place.height * 0.5 : 0.0;
        Geometry::Vec3T<double> middle(place.footprint.xMiddle(), half, place.footprint.zMiddle());
        place.toRoot.transform(middle);
        return sideAt(middle.y);
    }

    Side sideAt(double y) const { return y < 0.5 * boardHeight_ ? Side::Bottom : Side::Top; }

    PartView makePart(const Entity &entity, Role role, const PartPlace &place, const Inside &within) const {
        PartView part;
        part.body = plane_.pathOf(entity, place);
        for (const Path &hole : holesOf(entity, within.frame))
            part.body.insert(part.body.end(), hole.begin(), hole.end());
        part.at = plane_.toPicture(place.toRoot.getTranslation());
        part.designator = textOf(entity, Reference_Designator_t);
        part.kind = kindOf(entity, role);
        if (isHolder(entity, part.kind)) part.labelPlace = LabelPlace::Above;
        part.isFiltered = within.isFiltered;
        part.power = PartFinder::ownPowerOf(entity);
        return part;
    }

    // Beside a substrate the name of a solid is its designator. What is in a part goes without.
    static void nameSolid(const Entity &entity, Role role, const Inside &inside, PartView &part) {
        if (role != Role::Solid) return;
        if (inside.side)
            part.labelPlace = LabelPlace::Nowhere;
        else
            entity.getName(part.designator);
    }

    static bool isHolder(const Entity &entity, PartKind kind) {
        if (kind == PartKind::Container) return true;
        return entity.getType() == Chip_Socket_t && getLinkedEntity(&entity, ComponentLink_t) != nullptr;
    }

    static PartKind kindOf(const Entity &entity, Role role) {
        if (role == Role::Socket) return PartKind::Socket;
        if (hasText(entity, Render_Style_t, "Invisible")) return PartKind::Container;
        if (role == Role::Solid) return PartKind::Solid;
        return hasText(entity, Type_t, "Mechanical") ? PartKind::Mechanical : PartKind::Component;
    }

    std::vector<Path> holesOf(const Entity &entity, const PartFrame &frame) const {
        std::vector<Path> paths;
        if (entity.readAttribute(Holes_t) == nullptr) return paths;
        std::vector<Entity *> holes;
        getLinkedEntities(&entity, Holes_t, holes);
        for (const Entity *hole : holes) {
            const PartRule *const rule = EntityGUI::findPartRule(hole->getType());
            if (rule != nullptr)
                paths.push_back(plane_.pathOf(*hole, EntityGUI::placePart(*hole, *rule, frame)));
        }
        return paths;
    }

    bool isShown(const Entity &via) const {
        const std::size_t number = view_.layerNumber;
        if (number == 0) return true;
        if (hasText(via, Height_From_t, "User Specified")) return spansLayer(via, number);
        return !hasText(via, Height_From_t, "Layers") ||
               reachesLayer(textOf(via, From_Layer_t), textOf(via, To_Layer_t), layerNames_, number);
    }

    bool spansLayer(const Entity &via, std::size_t number) const {
        if (number > layers_.size()) return true;
        const Entity &layer = *layers_[number - 1];
        const double low = metres(via, Y_Location_t), bottom = metres(layer, Y_Location_t);
        return touches({low, low + metres(via, Height_t)},
                       {bottom, bottom + metres(layer, AttributePath("Conductor Thickness"))});
    }

    // A via goes through the board: both sides show it. One that stands for many has theirs about its
    // location.
    void addVia(const Entity &via, const PartPlace &place) {
        if (!isShown(via)) return;
        const Attribute *const plated = via.readAttribute(Plated_t);
        const bool isPlated = plated != nullptr && plated->getBool();
        const auto add = [&](Path path) {
            if (!path.empty()) view_.holes.push_back({std::move(path), isPlated});
        };
        if (!hasText(via, Modelling_Type_t, "Multiple Vias")) return add(plane_.pathOf(via, place));
        const double diameter = metres(via, "Via Diameter");
        forEachInstance(via, [&](double x, double z) { add(plane_.circleAt(place, x, z, diameter)); });
    }

    // The bumps below a package are seen only where its substrate is shown by itself.
    void addBump(const Entity &bump, const PartRule &rule, const PartPlace &place, const Inside &inside) {
        Geometry::Vec3T<double> middle(0.0, std::isfinite(place.height) ? place.height * 0.5 : 0.0, 0.0);
        place.toOwner.transform(middle);
        const bool isUpper = middle.y >= 0.5 * inside.frame.height;
        const Side face = isUpper ? Side::Top : Side::Bottom;
        if (inside.side ? !isUpper || *inside.side != view_.side : face != view_.side) return;
        const auto add = [this](Path path) {
            if (!path.empty()) view_.bumps.push_back(std::move(path));
        };
        if (!hasText(bump, Modelling_Type_t, "Multiple Bumps")) return add(plane_.pathOf(bump, place));
        const double diameter = metres(bump, rule.diameter);
        forEachInstance(bump, [&](double x, double z) { add(plane_.circleAt(place, x, z, diameter)); });
    }

    // Its segments are lines from junction to junction, measured where the wire itself is. One that lacks a
    // junction of this wire is left out.
    void addWire(const Entity &wire, const Inside &inside) {
        std::unordered_map<const Entity *, Geometry::Vec3T<double>> points;
        double middle = 0.0;
        std::vector<Entity *> junctions, segments;
        getLinkedEntities(&wire, AttributePath(WirebondJunctions_t), junctions);
        for (const Entity *junction : junctions) {
            Geometry::Vec3T<double> point(metres(*junction, X_Location_t) + inside.frame.cornerX,
                                          metres(*junction, Y_Location_t),
                                          metres(*junction, Z_Location_t) + inside.frame.cornerZ);
            inside.frame.toRoot.transform(point);
            points.emplace(junction, point);
            middle += point.y / static_cast<double>(junctions.size());
        }
        if (inside.side.value_or(sideAt(middle)) != view_.side) return;
        WireView view{{}, 1000.0 * metres(wire, Diameter_t)};
        getLinkedEntities(&wire, AttributePath(WirebondSegments_t), segments);
        for (const Entity *segment : segments) {
            const auto start = points.find(getLinkedEntity(segment, Start_Junction_t));
            const auto end = points.find(getLinkedEntity(segment, End_Junction_t));
            if (start == points.end() || end == points.end()) continue;
            view.path.push_back({PathStep::Kind::Move, plane_.toPicture(start->second), {}, 0.0});
            view.path.push_back({PathStep::Kind::Line, plane_.toPicture(end->second), {}, 0.0});
        }
        if (!view.path.empty()) view_.wires.push_back(std::move(view));
    }

    const BoardPlane &plane_;
    double boardHeight_;
    const std::vector<Entity *> &layers_;
    const std::vector<std::string> layerNames_;
    BoardView &view_;
    std::vector<Task> tasks_;
};

} // namespace

void addModelParts(const Entity &board, const PartRule &rule, const PartPlace &place, const BoardPlane &plane,
                   const std::vector<Entity *> &layers, BoardView &view) {
    Walk walk(plane, std::isfinite(place.height) ? place.height : 0.0, layers, view);
    auto on = std::make_shared<Inside>();
    on->frame = EntityGUI::childFrame(board, rule, place, PartFrame());
    walk.addChildren(board, on);
    const Entity *const group = board.getType() == Substrate_t ? board.getOwnerEntity() : nullptr;
    if (group == nullptr) return;
    auto beside = std::make_shared<Inside>();
    beside->frame = EntityGUI::ownerFrame(board);
    beside->frame.toRoot = place.toOwner.inverse();
    walk.addChildren(*group, beside, &board);
}

} // namespace EDATool
