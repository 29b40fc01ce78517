// Conductors, routes and nets of detailed layers.
#include "import/EDAImporterDetail.h"

#include <algorithm>
#include <cmath>

namespace EDA {

using namespace EntityModel;

namespace {

// Where the search for the low-x, high-y corner of a polygon starts, and from where on a result is none.
constexpr double cornerStart = 1e9;
constexpr double cornerLimit = 1e8;

// The entity types of conductors and their lists.
struct Family {
    TypeRef net, nets;
    TypeRef route, routes;
    TypeRef conductor, conductors;
    TypeRef hole;
};

// Goes by the nearest board of each kind above the parent. Outside a board all types are empty, so that
// nothing can be made.
const Family &familyIn(const Entity *parent) {
    static const Family substrate{Substrate_Net_t,           Substrate_Nets_t,      Substrate_Trace_t,
                                  Substrate_Traces_t,        Substrate_Conductor_t, Substrate_Conductors_t,
                                  Substrate_Conductor_Hole_t};
    static const Family pcb{
        Net_t, Nets_t, Trace_t, Traces_t, PCB_Conductor_t, Conductors_t, PCB_Conductor_Hole_t};
    static const Family none;
    if (!parent) return none;
    if (parent->getAncestor(Substrate_t)) return substrate;
    return parent->getAncestor(PCB_t) ? pcb : none;
}

const TypeRef &startX() {
    static const TypeRef type("Start X");
    return type;
}

const TypeRef &startZ() {
    static const TypeRef type("Start Z");
    return type;
}

const TypeRef &endX() {
    static const TypeRef type("End X");
    return type;
}

const TypeRef &endZ() {
    static const TypeRef type("End Z");
    return type;
}

Entity *createPiece(const TypeRef &type, Entity *route, const TypeRef &list) {
    return EntityEditor::createEntity(type, route, AttributePath(list), nullptr, false, true, false, "", -1);
}

void linkJunction(Entity *segment, const TypeRef &link, Entity *junction) {
    if (!junction) return;
    EntityEditor::addEntity(segment, AttributePath(link), junction, false, true, true, true, false, -1);
}

// The attribute list for holes that are polygons, if the type of this conductor has one.
bool takesOutlineHoles(const Entity &conductor) {
    const Attribute *const holes = conductor.readAttribute(AttributePath(Outline_Holes_t));
    return holes && holes->kind() == AttributeKind::AttributeList;
}

bool areFinite(const std::vector<double> &numbers) {
    return std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); });
}

// Makes room for one more hole and gives its path.
AttributePath growOutlineHoles(Entity &conductor) {
    auto *const holes = static_cast<ListAttribute *>(conductor.findAttribute(Outline_Holes_t, false));
    holes->resize(holes->size() + 1);
    return AttributePath("Hole " + std::to_string(holes->size()));
}

} // namespace

// The junctions and segments of a route as its points come.
//
// The first point has no junction, and so the first segment starts at none: that is intended. A piece that
// cannot be made leaves a gap.
struct EDAImporter::RouteChain {
    Entity *route;
    double width;
    const EDABoard &board;
    double x; // Of the last point, in entity space.
    double z;
    Entity *junction = nullptr; // At the last point.

    void goTo(double nextX, double nextZ);
};

void EDAImporter::RouteChain::goTo(double nextX, double nextZ) {
    Entity *const next = createPiece(Trace_Junction_t, route, TraceJunctions_t);
    if (next) setLocation(next, nextX, nextZ, board);
    if (Entity *const segment = createPiece(Trace_Segment_t, route, TraceSegments_t)) {
        setLength(segment, Width_t, width, board);
        setLength(segment, startX(), x, board);
        setLength(segment, startZ(), z, board);
        setLength(segment, endX(), nextX, board);
        setLength(segment, endZ(), nextZ, board);
        linkJunction(segment, Start_Junction_t, junction);
        linkJunction(segment, End_Junction_t, next);
    }
    x = nextX;
    z = nextZ;
    junction = next;
}

// Only the first hole is looked at: that is intended.
bool EDAImporter::isTraceImported(const EDATrace &trace) { return !trace.getOutline().isBadOutline(); }

void EDAImporter::addNet(Entity *layerEntity, const EDANet &net, const EDABoard &board,
                         Tools::ToolProgress *progress, int &progressCount) const {
    const Family &family = familyIn(layerEntity);
    Entity *const entity = EntityEditor::createEntity(family.net, layerEntity, AttributePath(family.nets),
                                                      nullptr, false, false, false, net.getName(), -1);
    if (!entity) return;
    tellGeometryEditor(entity);
    EntityEditor::setValue(entity, Reference_Designator_t, net.getName(), true);
    lockData(entity, {Placement_t});
    for (auto trace = net.beginTraces(); trace != net.endTraces(); ++trace) {
        if (isTraceImported(*trace)) addTrace(entity, *trace, board);
        if (!progress) continue;
        progress->setValue(progressCount++);
        if (progress->isCancelled()) return;
    }
}

void EDAImporter::addTrace(Entity *parent, const EDATrace &trace, const EDABoard &board) const {
    if (trace.getOutline().empty()) return;
    if (trace.isDefinedAsRoute()) {
        addRoute(parent, trace, board);
    } else {
        buildTraceFromOutline(parent, trace, trace.getOutline(), board);
    }
}

void EDAImporter::addRoute(Entity *parent, const EDATrace &trace, const EDABoard &board) const {
    trace.getOutline().setModelDimension(modelDimension_);
    const EDAOutline::PointList &points = trace.getOutline().getPoints(true);
    if (points.empty()) return;
    const Family &family = familyIn(parent);
    Entity *const route = EntityEditor::createEntity(family.route, parent, AttributePath(family.routes),
                                                     nullptr, false, true, false, trace.getName(), -1);
    if (!route) return;
    tellGeometryEditor(route);
    EntityEditor::setValue(route, Ignore_Collision_Detection_t, "Yes", true);

    const auto routeX = [this](double x) { return mapX(x + traceOffsetX_); };
    const auto routeZ = [this](double y) { return mapZCoord(mapY(y + traceOffsetY_)); };
    RouteChain chain{route, trace.getRouteWidth(), board, routeX(points[0].first), routeZ(points[0].second)};
    setLength(route, Width_t, chain.width, board);
    setLength(route, startX(), chain.x, board);
    setLength(route, startZ(), chain.z, board);
    for (size_t i = 1; i < points.size(); ++i)
        chain.goTo(routeX(points[i].first), routeZ(points[i].second));
}

// A conductor on its way through the outlines inside its own.
struct EDAImporter::ConductorLevel {
    Entity *conductor;
    std::pair<double, double> corner; // that solid holes are relative to
    EDAOutline::ConstOutlineIterator inner, end;
};

// An island of conductor becomes a sibling, with what is inside it before what comes after it. Islands in
// holes stand beside these in the list of the conductor: what is in the list of a hole itself is not looked
// at.
void EDAImporter::buildTraceFromOutline(Entity *parent, const EDATrace &trace, const EDAOutline &outline,
                                        const EDABoard &board) const {
    const std::string &holeType = familyIn(parent).hole.getLabel();
    // Islands lie in islands as deep as a design likes, and a recursion would need a stack as deep. What
    // limits them is that outlines copy and destroy what is inside them by recursion: some 10,000 levels are
    // safe.
    std::vector<ConductorLevel> levels;
    const auto enter = [&](const EDAOutline &shape) {
        Entity *const conductor = addConductor(parent, trace, shape);
        if (!conductor) return;
        levels.push_back({conductor, shapeConductor(conductor, shape, board), shape.beginInternalOutlines(),
                          shape.endInternalOutlines()});
    };
    enter(outline);
    while (!levels.empty()) {
        ConductorLevel &level = levels.back();
        if (level.inner == level.end) {
            lockData(level.conductor, {Geometry_t, Placement_t});
            levels.pop_back();
            continue;
        }
        const EDAOutline &inner = *level.inner++;
        if (!inner.isHole()) {
            enter(inner);
        } else if (!isHoleIgnored(inner, board)) {
            addConductorHole(level.conductor, holeType, Holes_t.getLabel(), inner, board, level.corner.first,
                             level.corner.second);
        }
    }
}

EDAImporter::Entity *EDAImporter::addConductor(Entity *parent, const EDATrace &trace,
                                               const EDAOutline &outline) const {
    const Family &family = familyIn(parent);
    Entity *const conductor =
        EntityEditor::createEntity(family.conductor, parent, AttributePath(family.conductors), nullptr, false,
                                   false, false, trace.getName(), -1);
    if (!conductor) return nullptr;
    tellGeometryEditor(conductor);
    EntityEditor::setValue(conductor, Ignore_Collision_Detection_t, "Yes", true);
    outline.setModelDimension(modelDimension_);
    attachDefaultMaterial(conductor, "", outline.getMaterial(), MaterialLink_t, true);
    return conductor;
}

// Gives the point, before the sign of y is flipped, that solid holes of the conductor are relative to: the
// low-x, high-y corner of a polygon, else the location.
std::pair<double, double> EDAImporter::shapeConductor(Entity *conductor, const EDAOutline &outline,
                                                      const EDABoard &board) const {
    // Intended: a conductor with a hole is a polygon whatever its edge, and whatever the options say.
    const Shape shape = outline.hasHoles() ? Shape()
                                           : recogniseShape(outline, conversionOptions_.conductorMinPoints,
                                                            conversionOptions_.conductorTolerance);
    setShape(conductor, shape, board);
    double x = 0.0;
    double y = 0.0;
    double refX = cornerStart;
    double refY = -cornerStart;
    if (shape.kind == Shape::Polygon) {
        const MappedPoints mapped = mapPoints(outline);
        for (const auto &[pointX, pointY] : mapped.points) {
            refX = std::min(refX, pointX);
            refY = std::max(refY, pointY);
        }
        setOutlinePoints(conductor, Outline_t, mapped.numbers(0.0, 0.0), board.getUnits());
    } else {
        x = mapX(shape.x);
        y = mapY(shape.y);
    }
    setLocation(conductor, x, mapZCoord(y), board);
    return {refX >= cornerLimit ? x : refX, refY <= -cornerLimit ? y : refY};
}

// A hole that is larger in one direction alone stays.
bool EDAImporter::isHoleIgnored(const EDAOutline &hole, const EDABoard &board) const {
    if (!options_.ignoreSmallHoles || !maxIgnoredHoleSizeAttribute_) return false;
    const double limit = maxIgnoredHoleSizeAttribute_->getValueIn(board.getUnits());
    Geometry::Bound2D bound;
    hole.getOverallBound(bound);
    return std::fabs(bound.getXSize()) <= limit && std::fabs(bound.getYSize()) <= limit;
}

void EDAImporter::addConductorHole(Entity *conductor, const std::string &type, const std::string &list,
                                   const EDAOutline &hole, const EDABoard &board, double refX,
                                   double refY) const {
    hole.setModelDimension(modelDimension_);
    // Intended: unlike a solid hole, a polygon hole is where the conductor's own outline is.
    std::vector<double> numbers = mapPoints(hole).numbers(0.0, 0.0);
    // No attribute takes them, so the hole would be there without a shape.
    if (numbers.empty() || !areFinite(numbers)) return;
    double x = 0.0, y = 0.0, diameter = 0.0;
    if (!takesOutlineHoles(*conductor) ||
        (options_.simplifyShapes && isRound(hole, x, y, diameter, conversionOptions_.solidHoleMinPoints,
                                            conversionOptions_.solidHoleTolerance))) {
        addSolidHole(conductor, type, list, hole, board, refX, refY);
        return;
    }
    setOutlinePoints(conductor, growOutlineHoles(*conductor), std::move(numbers), board.getUnits());
}

} // namespace EDA
