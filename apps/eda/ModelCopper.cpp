// The conductors of a model's layers.
#include "ModelCopper.h"

#include "Entities.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/ValueAttributes.h"
#include "LayerScene.h"

namespace EDATool {

using namespace EntityModel;
using EntityGUI::PartFrame;
using EntityGUI::PartPlace;
using EntityGUI::PartRule;

namespace {

// Flat shapes: where they stand is all that a picture of them needs.
PartRule flatRule() {
    using namespace EntityGUI;
    return {PartForm::Shaped,       AttributePath("Height"),
            AttributePath("Angle"), AttributePath("Diameter"),
            PartOrigin::Usual,      PartTurn::None,
            PartPivot::Location,    PartBase::YLocation,
            PartHold::AtCorner,     false};
}

std::vector<Entity *> childrenOf(const Entity &entity, const AttributePath &list) {
    std::vector<Entity *> children;
    if (entity.readAttribute(list) != nullptr) getLinkedEntities(&entity, list, children);
    return children;
}

double metres(const Entity &entity, const AttributePath &path) {
    return getStandardDoubleValue(&entity, path, 0.0);
}

// With the steps of a closed path as its points, but a circle as one.
EDA::EDAOutline outlineOf(const Path &path, bool isHole) {
    EDA::EDAOutline outline(isHole);
    const bool isCircle = path.size() > 1 && path[1].kind == PathStep::Kind::Arc;
    if (isCircle) outline.addPoint(0, path[1].centre.x, path[1].centre.y, 0.0);
    for (const PathStep &step : path) {
        if (isCircle && step.kind != PathStep::Kind::Move) continue;
        if (step.kind != PathStep::Kind::Close)
            outline.addPoint(0, step.to.x, step.to.y, isCircle ? 360.0 : 0.0);
    }
    return outline;
}

class CopperWalk {
public:
    CopperWalk(const Entity &board, const PartFrame &frame, const BoardPlane &plane, BoardView &view)
        : frame_(frame), plane_(plane), rule_(flatRule()), view_(view) {
        // Points of routes count from the origin of a board's own outline where it has one.
        if (getTypeValue(&board, Shape_t, TypeRef()) == Polygon_t) return;
        routeX_ = frame.cornerX;
        routeZ_ = frame.cornerZ;
    }

    void addAll(const Entity &owner) {
        for (const AttributePath &list :
             {AttributePath(Conductors_t), AttributePath(Substrate_Conductors_t)}) {
            for (const Entity *conductor : childrenOf(owner, list))
                addConductor(*conductor);
        }
        for (const AttributePath &list : {AttributePath(Traces_t), AttributePath(Substrate_Traces_t)}) {
            for (const Entity *route : childrenOf(owner, list))
                addRoute(*route);
        }
    }

private:
    void add(Path path) {
        if (!path.empty()) view_.copper.push_back(std::move(path));
    }

    void addConductor(const Entity &conductor) {
        const PartPlace place = EntityGUI::placePart(conductor, rule_, frame_);
        Path path = plane_.pathOf(conductor, place);
        const std::vector<Path> holes = holesOf(conductor, place);
        if (path.empty() || holes.empty()) return add(std::move(path));
        EDA::EDAOutline outline = outlineOf(path, false);
        for (const Path &hole : holes)
            outline.addInternalOutline(outlineOf(hole, true));
        add(copperPath(outline));
    }

    // Outlines lie where the conductor's own outline does, holes with a shape count from its corner.
    std::vector<Path> holesOf(const Entity &conductor, const PartPlace &place) const {
        std::vector<Path> holes;
        const auto *const outlines =
            dynamic_cast<const ListAttribute *>(conductor.readAttribute(Outline_Holes_t));
        for (int index = 0; outlines != nullptr && index < outlines->size(); ++index)
            addHole(outlineHole(*outlines->at(index), place), holes);
        const std::vector<Entity *> solid = childrenOf(conductor, Holes_t);
        if (solid.empty()) return holes;
        const PartFrame inside = EntityGUI::childFrame(conductor, rule_, place, frame_);
        for (const Entity *hole : solid)
            addHole(plane_.pathOf(*hole, EntityGUI::placePart(*hole, rule_, inside)), holes);
        return holes;
    }

    static void addHole(Path path, std::vector<Path> &holes) {
        if (path.size() > 2) holes.push_back(std::move(path));
    }

    Path outlineHole(const DoubleListAttribute &points, const PartPlace &place) const {
        Path path;
        for (int index = 0; index + 1 < points.getSize(); index += 2) {
            Geometry::Vec3T<double> point(points.getNthStandardValue(index), 0.0,
                                          points.getNthStandardValue(index + 1));
            place.toRoot.transform(point);
            const Point at = plane_.toPicture(point);
            path.push_back({path.empty() ? PathStep::Kind::Move : PathStep::Kind::Line, at, {}, 0.0});
        }
        if (!path.empty()) path.push_back({PathStep::Kind::Close, path.front().to, {}, 0.0});
        return path;
    }

    void addRoute(const Entity &route) {
        const std::vector<Entity *> segments = childrenOf(route, TraceSegments_t);
        for (const Entity *segment : segments)
            add(segmentPath(pointOf(*segment, startX_, startZ_), pointOf(*segment, endX_, endZ_),
                            1000.0 * metres(*segment, Width_t)));
        if (!segments.empty()) return;
        const Point point = pointOf(route, startX_, startZ_);
        add(segmentPath(point, point, 1000.0 * metres(route, Width_t)));
    }

    Point pointOf(const Entity &entity, const AttributePath &x, const AttributePath &z) const {
        return plane_.toPicture({metres(entity, x) + routeX_, 0.0, metres(entity, z) + routeZ_});
    }

    const AttributePath startX_{"Start X"};
    const AttributePath startZ_{"Start Z"};
    const AttributePath endX_{"End X"};
    const AttributePath endZ_{"End Z"};
    const PartFrame &frame_;
    const BoardPlane &plane_;
    PartRule rule_;
    BoardView &view_;
    double routeX_ = 0.0;
    double routeZ_ = 0.0;
};

} // namespace

std::vector<Entity *> conductorLayers(const Entity &board) { return childrenOf(board, Conductor_Layers_t); }

std::vector<std::string> namesOf(const std::vector<Entity *> &layers) {
    std::vector<std::string> names;
    for (const Entity *layer : layers)
        names.push_back(textOf(*layer, Name_t));
    return names;
}

void addModelCopper(const Entity &board, const Entity &layer, const PartRule &rule, const PartPlace &place,
                    const BoardPlane &plane, BoardView &view) {
    const PartFrame frame = EntityGUI::childFrame(board, rule, place, PartFrame());
    CopperWalk walk(board, frame, plane, view);
    walk.addAll(layer);
    for (const AttributePath &list : {AttributePath(Nets_t), AttributePath(Substrate_Nets_t)}) {
        for (const Entity *net : childrenOf(layer, list))
            walk.addAll(*net);
    }
}

} // namespace EDATool
