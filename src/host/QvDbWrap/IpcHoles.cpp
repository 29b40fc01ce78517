// Holes, slots and fills of a design as via models and vias.
#include "host/QvDbWrap/IpcHoles.h"

#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace QvDbWrap {

namespace {

constexpr double usualPlating = 25e-6;
constexpr double leastPlating = 1e-9; // what is thinner counts as none further on

// False also for what is no number.
bool isWithin(const _mFPOINT &point) {
    return std::abs(point.x) <= IpcGeometry::maxCoordinate && std::abs(point.y) <= IpcGeometry::maxCoordinate;
}

// Numbers of keys: what differs by less than a nanometre is the same.
std::string keyOf(double length) { return std::to_string(std::llround(length * 1e9)) + ' '; }

std::string keyOf(const IpcHole &hole, double plating) {
    std::string key = hole.slot.empty() ? keyOf(hole.diameter) : std::string("s ");
    for (const _mFPOINT &point : hole.slot)
        key += keyOf(point.x) + keyOf(point.y);
    return key + keyOf(plating) + hole.fillMaterial;
}

// The plating never closes more than half of the hole unless the document says so.
double platingOf(const IpcHole &hole) {
    if (hole.plating == IpcPlating::NonPlated) return 0;
    if (hole.platingThickness > leastPlating) return hole.platingThickness;
    return hole.slot.empty() ? std::clamp(hole.diameter / 4, 2 * leastPlating, usualPlating) : usualPlating;
}

} // namespace

// Where holes are filled, found again at the same place within a micrometre.
class IpcHoles::Fills {
public:
    explicit Fills(const std::vector<IpcFill> &fills) : fills_(fills) {
        for (std::size_t i = 0; i < fills.size(); ++i)
            cells_.emplace(cell(fills[i].at.x, 0) + cell(fills[i].at.y, 0), i);
    }
    std::string at(const _mFPOINT &place) const {
        if (cells_.empty()) return {};
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy) {
                const auto found = cells_.find(cell(place.x, dx) + cell(place.y, dy));
                if (found == cells_.end()) continue;
                const IpcFill &fill = fills_[found->second];
                if (std::hypot(fill.at.x - place.x, fill.at.y - place.y) <= reach) return fill.material;
            }
        return {};
    }

private:
    static constexpr double reach = 1e-6;

    static std::string cell(double place, int shift) {
        return std::to_string(std::llround(place / (2 * reach)) + shift) + ' ';
    }

    const std::vector<IpcFill> &fills_;
    std::unordered_map<std::string, std::size_t> cells_;
};

IpcHoles::IpcHoles(IpcContext &context, const IpcNames &names, Layout &layout)
    : context_(context), names_(names), layout_(layout) {
    for (std::size_t i = 0; i < layout.layers.size(); ++i)
        layerIndices_.emplace(layout.layers[i].name, i);
}

void IpcHoles::add(const IpcStep &step, const IpcPlacement &placement) {
    const Fills fills(step.fills);
    for (IpcHole &hole : holesOf(step)) {
        if (!complete(step, hole)) continue;
        if (hole.fillMaterial.empty()) hole.fillMaterial = fills.at(hole.at);
        addVia(hole, placement);
    }
}

// A document without drill layers still says by its pads where holes are.
std::vector<IpcHole> IpcHoles::holesOf(const IpcStep &step) const {
    if (!step.holes.empty()) return step.holes;
    std::vector<IpcHole> holes;
    std::unordered_set<std::string> places;
    for (const IpcStackPlace &place : step.stackPlaces) {
        const std::string &name = names_.get(place.padstack);
        const auto stack = step.padstacks.find(name);
        if (stack == step.padstacks.end() || !stack->second.hasHole) continue;
        IpcHole hole;
        hole.at = place.placement.apply(stack->second.holeAt);
        hole.padstack = name;
        if (std::abs(hole.at.x) > IpcGeometry::maxCoordinate ||
            std::abs(hole.at.y) > IpcGeometry::maxCoordinate)
            continue;
        if (places.insert(keyOf(hole.at.x) + keyOf(hole.at.y)).second) holes.push_back(hole);
    }
    if (!holes.empty())
        context_.log.warn("the holes are those of the pads' stacks, as no drill layer has any", holes.size());
    return holes;
}

bool IpcHoles::complete(const IpcStep &step, IpcHole &hole) const {
    const auto stack = step.padstacks.find(hole.padstack);
    if (stack != step.padstacks.end() && stack->second.hasHole) {
        if (!(hole.diameter > 0)) hole.diameter = stack->second.diameter;
        if (hole.plating == IpcPlating::Unknown) hole.plating = stack->second.plating;
    }
    if (hole.plating == IpcPlating::Unknown)
        context_.log.warn("a hole does not say whether it is plated: it is taken as plated");
    if (!hole.slot.empty() || hole.diameter > 0) return true;
    context_.log.warn("a hole has no diameter and is left out");
    return false;
}

void IpcHoles::addVia(const IpcHole &hole, const IpcPlacement &placement) {
    const _mFPOINT at = placement.apply(hole.at);
    if (!isWithin(at)) return context_.log.warn("a hole is out of all bounds");
    viaData via;
    via.x = at.x;
    via.y = at.y;
    via.angle = hole.slot.empty() ? 0 : placement.rotation;
    via.modelName = modelOf(hole);
    setSpan(hole, via);
    const std::string key = keyOf(at.x) + keyOf(at.y) + keyOf(via.angle) + via.modelName + '/' +
                            via.fromLayer + '/' + via.toLayer;
    if (!places_.insert(key).second) return context_.log.warn("a hole that is there twice is taken once");
    via.name = hole.name.empty() ? "H" + std::to_string(layout_.vias.size() + 1) : hole.name;
    layout_.vias.push_back(std::move(via));
}

const std::string &IpcHoles::modelOf(const IpcHole &hole) {
    const double plating = platingOf(hole);
    const auto [place, isNew] = models_.try_emplace(keyOf(hole, plating));
    if (!isNew) return place->second;
    viaModelData model;
    model.name = (hole.slot.empty() ? "Hole " : "Slot ") + std::to_string(layout_.viaModels.size() + 1);
    model.fillMaterial = hole.fillMaterial;
    model.platingThickness = plating;
    model.shape.kind = hole.slot.empty() ? geomElem::Circle : geomElem::Polygon;
    model.shape.radius = hole.slot.empty() ? hole.diameter / 2 : 0;
    model.shape.points = hole.slot;
    place->second = model.name;
    layout_.viaModels.push_back(std::move(model));
    return place->second;
}

void IpcHoles::setSpan(const IpcHole &hole, viaData &via) const {
    via.fromLayer = outerConductor(layout_.layers, false);
    via.toLayer = outerConductor(layout_.layers, true);
    if (hole.fromLayer.empty() && hole.toLayer.empty()) return;
    const auto from = layerIndices_.find(hole.fromLayer.empty() ? via.fromLayer : hole.fromLayer);
    const auto to = layerIndices_.find(hole.toLayer.empty() ? via.toLayer : hole.toLayer);
    if (from == layerIndices_.end() || to == layerIndices_.end())
        return context_.log.warn(
            "a hole goes from or to a layer that is not in the stack-up: it goes through all");
    via.fromLayer = layout_.layers[std::min(from->second, to->second)].name;
    via.toLayer = layout_.layers[std::max(from->second, to->second)].name;
}

} // namespace QvDbWrap
