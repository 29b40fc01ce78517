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
constexpr double fillReach = 1e-6;
constexpr double padReach =
    10e-6; // between a pad's hole and that of a drill layer, which is rounded otherwise

// False also for what is no number.
bool isWithin(const _mFPOINT &point) {
    return std::abs(point.x) <= IpcGeometry::maxCoordinate && std::abs(point.y) <= IpcGeometry::maxCoordinate;
}

// Numbers of keys: what differs by less than a nanometre is the same.
std::int64_t numberOf(double length) { return std::llround(length * 1e9); }

std::string keyOf(double length) { return std::to_string(numberOf(length)) + ' '; }

std::string keyOf(const IpcHole &hole, double plating) {
    std::string key = hole.slot.empty() ? keyOf(hole.diameter) : std::string("s ");
    for (const _mFPOINT &point : hole.slot)
        key += keyOf(point.x) + keyOf(point.y);
    return key + keyOf(plating) + std::to_string(hole.fillMaterial);
}

// The plating never closes more than half of the hole unless the document says so.
double platingOf(const IpcHole &hole) {
    if (hole.plating == IpcPlating::NonPlated) return 0;
    if (hole.platingThickness > leastPlating) return hole.platingThickness;
    return hole.slot.empty() ? std::clamp(hole.diameter / 4, 2 * leastPlating, usualPlating) : usualPlating;
}

} // namespace

std::size_t IpcHoles::HashOfKey::operator()(const Key &key) const {
    std::uint64_t hash = 0;
    for (const std::int64_t number : key) {
        hash = (hash ^ static_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15u;
        hash ^= hash >> 32;
    }
    return static_cast<std::size_t>(hash);
}

// Places with numbers, found again within some micrometres.
class IpcHoles::Places {
public:
    explicit Places(double reach) : reach_(reach) {}

    void add(const _mFPOINT &place, std::size_t number) {
        cells_.emplace(cell(place, 0, 0), Item{place, number});
    }
    std::optional<std::size_t> find(const _mFPOINT &place) const {
        if (cells_.empty()) return std::nullopt;
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy) {
                const auto found = cells_.find(cell(place, dx, dy));
                if (found == cells_.end()) continue;
                const _mFPOINT &at = found->second.place;
                if (std::hypot(at.x - place.x, at.y - place.y) <= reach_) return found->second.number;
            }
        return std::nullopt;
    }

private:
    struct Item {
        _mFPOINT place;
        std::size_t number;
    };

    // Places are within bounds, which leaves both numbers 32 bits.
    std::uint64_t cell(const _mFPOINT &place, int dx, int dy) const {
        const auto number = [this](double value, int shift) {
            return static_cast<std::uint32_t>(std::llround(value / (2 * reach_)) + shift);
        };
        return (std::uint64_t(number(place.x, dx)) << 32) | number(place.y, dy);
    }

    const double reach_;
    std::unordered_map<std::uint64_t, Item> cells_;
};

IpcHoles::IpcHoles(IpcContext &context, const IpcNames &names, Layout &layout)
    : context_(context), names_(names),
      layout_(layout), outer_{outerConductor(layout.layers, false), outerConductor(layout.layers, true)} {
    for (std::size_t i = 0; i < layout.layers.size(); ++i)
        layerIndices_.emplace(layout.layers[i].name, i);
}

std::size_t IpcHoles::countOf(const IpcStep &step) { return holesOf(step).size(); }

void IpcHoles::add(const IpcStep &step, const IpcPlacement &placement) {
    for (const Ready &hole : holesOf(step))
        addVia(hole, placement);
}

// All that is told of them is told once, wherever the step stands.
const std::vector<IpcHoles::Ready> &IpcHoles::holesOf(const IpcStep &step) {
    const auto [place, isNew] = holes_.try_emplace(&step);
    std::vector<Ready> &holes = place->second;
    if (!isNew) return holes;
    Places fills(fillReach);
    for (std::size_t i = 0; i < step.fills.size(); ++i)
        fills.add(step.fills[i].at, i);
    for (IpcHole &hole : drilled(step)) {
        if (!complete(step, hole)) continue;
        const auto fill = hole.fillMaterial == 0 ? fills.find(hole.at) : std::nullopt;
        if (fill) hole.fillMaterial = step.fills[*fill].material;
        const auto [from, to] = spanOf(hole);
        holes.push_back({std::move(hole.name), hole.at, !hole.slot.empty(), modelOf(hole), from, to});
    }
    return holes;
}

// A document without drill layers still says by its pads where holes are.
std::vector<IpcHole> IpcHoles::drilled(const IpcStep &step) const {
    std::vector<IpcHole> holes = step.holes;
    Places places(padReach);
    for (const IpcHole &hole : holes)
        places.add(hole.at, 0);
    std::size_t numFurther = 0;
    for (const IpcStackPlace &place : step.stackPlaces) {
        const std::optional<StackHole> stack = stackHole(step, place.padstack);
        if (!stack) continue;
        IpcHole hole;
        hole.at = place.placement.apply(stack->at);
        hole.padstack = place.padstack;
        if (!isWithin(hole.at) || places.find(hole.at)) continue;
        places.add(hole.at, 0);
        ++numFurther;
        if (step.holes.empty()) holes.push_back(std::move(hole));
    }
    context_.log.warn(step.holes.empty()
                          ? "the holes are those of the pads' stacks, as no drill layer has any"
                          : "a hole of a pad's stack is on no drill layer and is left out",
                      numFurther);
    return holes;
}

// Some documents name a shape of a dictionary where a stack is meant.
std::optional<IpcHoles::StackHole> IpcHoles::stackHole(const IpcStep &step, std::uint32_t padstack) const {
    if (padstack == 0) return std::nullopt;
    const std::string &name = names_.get(padstack);
    const auto stack = step.padstacks.find(name);
    if (stack != step.padstacks.end()) {
        if (!stack->second.hasHole) return std::nullopt;
        return StackHole{stack->second.holeAt, stack->second.diameter, stack->second.plating};
    }
    const ShapeDrill *const drill = context_.geometry.findDrill(name);
    if (!drill) return std::nullopt;
    const IpcPlating said = drill->isPlated.value_or(false) ? IpcPlating::Plated : IpcPlating::NonPlated;
    return StackHole{{}, drill->diameter, drill->isPlated ? said : IpcPlating::Unknown};
}

bool IpcHoles::complete(const IpcStep &step, IpcHole &hole) const {
    if (const std::optional<StackHole> stack = stackHole(step, hole.padstack)) {
        if (!(hole.diameter > 0)) hole.diameter = stack->diameter;
        if (hole.plating == IpcPlating::Unknown) hole.plating = stack->plating;
    }
    if (hole.plating == IpcPlating::Unknown)
        context_.log.warn("a hole does not say whether it is plated: it is taken as plated");
    if (!hole.slot.empty() || hole.diameter > 0) return true;
    context_.log.warn("a hole has no diameter and is left out");
    return false;
}

void IpcHoles::addVia(const Ready &hole, const IpcPlacement &placement) {
    const _mFPOINT at = placement.apply(hole.at);
    if (!isWithin(at)) return context_.log.warn("a hole is out of all bounds");
    viaData via;
    via.x = at.x;
    via.y = at.y;
    via.angle = hole.isSlot ? placement.rotation : 0;
    const Key key = {numberOf(at.x),           numberOf(at.y),          numberOf(via.angle),
                     std::int64_t(hole.model), std::int64_t(hole.from), std::int64_t(hole.to)};
    if (!places_.insert(key).second) return context_.log.warn("a hole that is there twice is taken once");
    via.name = hole.name.empty() ? "H" + std::to_string(layout_.vias.size() + 1) : hole.name;
    via.modelName = layout_.viaModels[hole.model].name;
    via.fromLayer = hole.from < layout_.layers.size() ? layout_.layers[hole.from].name : std::string();
    via.toLayer = hole.to < layout_.layers.size() ? layout_.layers[hole.to].name : std::string();
    if (context_.takePoints(IpcContext::costOf(via.name) + IpcContext::costOf(via.fromLayer) +
                            IpcContext::costOf(via.toLayer)))
        layout_.vias.push_back(std::move(via));
}

std::size_t IpcHoles::modelOf(const IpcHole &hole) {
    const double plating = platingOf(hole);
    const auto [place, isNew] = models_.try_emplace(keyOf(hole, plating), layout_.viaModels.size());
    if (!isNew) return place->second;
    viaModelData model;
    model.name = (hole.slot.empty() ? "Hole " : "Slot ") + std::to_string(layout_.viaModels.size() + 1);
    model.fillMaterial = names_.get(hole.fillMaterial);
    model.platingThickness = plating;
    model.shape.kind = hole.slot.empty() ? geomElem::Circle : geomElem::Polygon;
    model.shape.radius = hole.slot.empty() ? hole.diameter / 2 : 0;
    model.shape.points = hole.slot;
    layout_.viaModels.push_back(std::move(model));
    return place->second;
}

// From the top down. A board without conductors has no number for its outer ones.
std::pair<std::size_t, std::size_t> IpcHoles::spanOf(const IpcHole &hole) const {
    const auto indexOf = [this](const std::string &name) {
        const auto found = layerIndices_.find(name);
        return found != layerIndices_.end() ? found->second : layout_.layers.size();
    };
    const std::size_t top = indexOf(outer_[0]);
    const std::size_t bottom = indexOf(outer_[1]);
    if (hole.fromLayer == 0 && hole.toLayer == 0) return {top, bottom};
    const std::size_t from = hole.fromLayer == 0 ? top : indexOf(names_.get(hole.fromLayer));
    const std::size_t to = hole.toLayer == 0 ? bottom : indexOf(names_.get(hole.toLayer));
    if (from < layout_.layers.size() && to < layout_.layers.size()) return std::minmax(from, to);
    context_.log.warn("a hole goes from or to a layer that is not in the stack-up: it goes through all");
    return {top, bottom};
}

} // namespace QvDbWrap
