// Stack-ups of an IPC-2581 document as layers with heights.
#include "host/QvDbWrap/IpcStackup.h"

#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <set>
#include <utility>

namespace QvDbWrap {

namespace {

constexpr double assumedConductor = 35e-6;
constexpr double assumedBoard = 1.6e-3;
constexpr double thinnestAssumedDielectric = 50e-6;
constexpr double thinnestDielectric = 5e-6; // what is less comes of roundings
constexpr int heightAlone = 2;              // a type of layers
constexpr int maxGroupDepth = 16;

// Heights from the bottom face up; a layer ends at the very number where the next one starts.
void stack(std::vector<layerData> &layers) {
    double z = 0;
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        const double thickness = layer->zHigh;
        layer->zLow = z;
        z += thickness;
        layer->zHigh = z;
    }
}

} // namespace

std::string outerConductor(const std::vector<layerData> &layers, bool isBottom) {
    std::string name;
    for (const layerData &layer : layers) {
        if (layer.layerType != layerData::Conductor) continue;
        name = layer.name;
        if (!isBottom) break;
    }
    return name;
}

// The layers of a stack-up in order: a group that another one refers to stands in its place, once.
class IpcLayers::Flattened {
public:
    explicit Flattened(const Stackup &stackup) {
        for (const Group &group : stackup.groups) {
            groups_.emplace(group.name, &group);
            for (const Entry &entry : group.entries)
                refs_.insert(entry.ref);
        }
        std::vector<const Group *> outer;
        for (const Group &group : stackup.groups)
            if (group.name.empty() || refs_.count(group.name) == 0) outer.push_back(&group);
        std::stable_sort(outer.begin(), outer.end(),
                         [](const Group *a, const Group *b) { return firstOf(*a) < firstOf(*b); });
        for (const Group *group : outer)
            add(*group, 0);
    }
    const std::vector<Entry> &entries() const { return entries_; }

private:
    static double firstOf(const Group &group) {
        return group.entries.empty() ? 0 : group.entries.front().sequence;
    }
    void add(const Group &group, int depth) {
        if (depth > maxGroupDepth || !done_.insert(&group).second) return;
        for (const Entry &entry : group.entries) {
            const auto inner = groups_.find(entry.ref);
            if (inner != groups_.end())
                add(*inner->second, depth + 1);
            else
                entries_.push_back(entry);
        }
    }

    std::unordered_map<std::string, const Group *> groups_;
    std::set<std::string> refs_;
    std::set<const Group *> done_;
    std::vector<Entry> entries_;
};

int IpcLayers::numConductors(const Stackup &stackup) const {
    int count = 0;
    const Flattened flattened(stackup);
    for (const Entry &entry : flattened.entries()) {
        const IpcLayer *const layer = find(entry.ref);
        count += layer && layer->kind == IpcLayerKind::Conductor ? 1 : 0;
    }
    return count;
}

const IpcLayers::Stackup *IpcLayers::choose(const std::string &name) const {
    const Stackup *chosen = nullptr;
    int most = 0;
    for (const Stackup &stackup : stackups_) {
        const int count = numConductors(stackup);
        const bool isNamed = !name.empty() && stackup.name == name;
        if (count == 0 || (!isNamed && count <= most)) continue;
        chosen = &stackup;
        most = count;
        if (isNamed) break;
    }
    for (const Stackup &stackup : stackups_)
        if (chosen && &stackup != chosen)
            context_.log.warn("stack-up " + stackup.name + " is not read: the whole board gets " +
                              chosen->name);
    return chosen;
}

std::vector<layerData> IpcLayers::build(const std::string &stackup) const {
    std::vector<layerData> layers;
    if (const Stackup *const chosen = choose(stackup)) layers = layersOf(*chosen);
    if (layers.empty()) {
        context_.log.warn(
            "no stack-up gives heights: conductors are taken to be 0.035 mm high, and the board 1.6 mm");
        layers = assumedLayers();
    }
    addSpacers(layers);
    stack(layers);
    tellLeftOut(layers);
    return layers;
}

// Heights are put into zHigh here; empty where the stack-up gives none.
std::vector<layerData> IpcLayers::layersOf(const Stackup &stackup) const {
    std::vector<layerData> layers;
    std::set<std::string> names;
    bool hasHeight = false;
    const Flattened flattened(stackup);
    for (const Entry &entry : flattened.entries()) {
        hasHeight = hasHeight || entry.thickness > 0;
        if (!names.insert(entry.ref).second)
            context_.log.warn("layer " + entry.ref + " is in the stack-up more than once");
        else if (!addLayer(entry, layers))
            context_.log.warn("layer " + entry.ref + " of the stack-up has no height and is left out");
    }
    if (!hasHeight) return {};
    shareOut(stackup, layers);
    const IpcLayer *const first = find(outerConductor(layers, false));
    const IpcLayer *const last = find(outerConductor(layers, true));
    if (first && last && first->side == IpcSide::Bottom && last->side == IpcSide::Top) {
        context_.log.warn("the stack-up goes from the bottom up and is turned over");
        std::reverse(layers.begin(), layers.end());
    }
    return layers;
}

// Dielectrics without a height share what the others leave of the board. What leaves nothing is a board
// without them, unless it has no other dielectric.
void IpcLayers::shareOut(const Stackup &stackup, std::vector<layerData> &layers) const {
    double rest = stackup.thickness > 0 && stackup.thickness <= IpcGeometry::maxCoordinate ? stackup.thickness
                                                                                           : assumedBoard;
    int numMissing = 0;
    bool hasDielectric = false;
    for (const layerData &layer : layers) {
        rest -= layer.zHigh;
        numMissing += layer.zHigh > 0 ? 0 : 1;
        hasDielectric = hasDielectric || (layer.layerType == layerData::Dielectric && layer.zHigh > 0);
    }
    if (numMissing == 0) return;
    double share = rest / numMissing;
    if (!hasDielectric) share = std::max(share, thinnestAssumedDielectric);
    const bool isLeftOut = share < thinnestDielectric;
    for (layerData &layer : layers) {
        if (layer.zHigh > 0) continue;
        context_.log.warn("layer " + layer.name + " of the stack-up has no height and " +
                          (isLeftOut ? "is left out" : "gets its share of the board's"));
        if (!isLeftOut) layer.zHigh = share;
    }
    const auto isFlat = [](const layerData &layer) { return !(layer.zHigh > 0); };
    layers.erase(std::remove_if(layers.begin(), layers.end(), isFlat), layers.end());
}

// A component counts as on the bottom where the index of its layer is above half the number of layers, which
// no layer of one or two is.
void IpcLayers::addSpacers(std::vector<layerData> &layers) const {
    constexpr std::size_t fewest = 3;
    std::set<std::string> names;
    for (const layerData &layer : layers)
        names.insert(layer.name);
    for (int number = 1; layers.size() < fewest; ++number) {
        layerData spacer;
        spacer.name = "Spacer " + std::to_string(number);
        spacer.layerType = heightAlone;
        if (!find(spacer.name) && names.insert(spacer.name).second)
            layers.insert(layers.begin(), std::move(spacer));
    }
}

// A dielectric without a height is to get one later. False for what has none and needs one.
bool IpcLayers::addLayer(const Entry &entry, std::vector<layerData> &layers) const {
    IpcLayer undeclared;
    undeclared.name = entry.ref;
    undeclared.kind = IpcLayerKind::Dielectric;
    const IpcLayer *const known = find(entry.ref);
    if (!known)
        context_.log.warn("layer " + entry.ref +
                          " of the stack-up is not declared and taken as a dielectric");
    layerData layer = describe(known ? *known : undeclared);
    const bool isConductor = layer.layerType == layerData::Conductor;
    const bool isFlat = !(entry.thickness > 0);
    if (isFlat && layer.layerType == heightAlone) return false;
    if (isFlat && isConductor)
        context_.log.warn("conductor " + entry.ref + " has no height in the stack-up: 0.035 mm are taken");
    layer.zHigh = !isFlat ? entry.thickness : isConductor ? assumedConductor : 0;
    if (!entry.material.empty())
        (isConductor ? layer.conductorMaterial : layer.dielectricMaterial) = entry.material;
    const std::string function = known ? plainName(known->function) : std::string();
    if (function == "SOLDERPASTE" || function == "PASTEMASK")
        context_.log.warn("solder paste counts in the height of the board, as the stack-up gives it");
    layers.push_back(std::move(layer));
    return true;
}

// Masks, coatings and the like have a height and nothing else.
layerData IpcLayers::describe(const IpcLayer &layer) const {
    layerData data;
    data.name = layer.name;
    data.layerType = layer.kind == IpcLayerKind::Conductor    ? layerData::Conductor
                     : layer.kind == IpcLayerKind::Dielectric ? layerData::Dielectric
                                                              : heightAlone;
    const std::string material = specOf(layer.specs).material;
    (data.layerType == layerData::Conductor ? data.conductorMaterial : data.dielectricMaterial) = material;
    return data;
}

// Without heights the dielectrics share what the conductors leave of a usual board; where none is declared,
// one is put between any two conductors.
std::vector<layerData> IpcLayers::assumedLayers() const {
    std::vector<const IpcLayer *> order;
    bool hasDielectric = false;
    for (const IpcLayer &layer : layers_) {
        if (layer.kind != IpcLayerKind::Conductor && layer.kind != IpcLayerKind::Dielectric) continue;
        order.push_back(&layer);
        hasDielectric = hasDielectric || layer.kind == IpcLayerKind::Dielectric;
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const IpcLayer *a, const IpcLayer *b) { return a->side < b->side; });
    std::vector<layerData> layers;
    int numDielectrics = 0;
    const auto addDielectric = [&] {
        IpcLayer between;
        between.kind = IpcLayerKind::Dielectric;
        do
            between.name = "Dielectric " + std::to_string(++numDielectrics);
        while (find(between.name));
        layers.push_back(describe(between));
    };
    for (const IpcLayer *layer : order) {
        if (!hasDielectric && !layers.empty()) addDielectric();
        layers.push_back(describe(*layer));
    }
    if (!hasDielectric && layers.size() < 2) addDielectric();
    const auto isConductor = [](const layerData &layer) { return layer.layerType == layerData::Conductor; };
    const auto conductors = static_cast<double>(std::count_if(layers.begin(), layers.end(), isConductor));
    const double rest =
        (assumedBoard - conductors * assumedConductor) / (static_cast<double>(layers.size()) - conductors);
    for (layerData &layer : layers)
        layer.zHigh = isConductor(layer) ? assumedConductor : std::max(rest, thinnestAssumedDielectric);
    return layers;
}

void IpcLayers::tellLeftOut(const std::vector<layerData> &layers) const {
    std::set<std::string> names;
    for (const layerData &layer : layers)
        names.insert(layer.name);
    for (const IpcLayer &layer : layers_)
        if (layer.kind == IpcLayerKind::Conductor && names.count(layer.name) == 0)
            context_.log.warn("conductor " + layer.name + " is not in the stack-up and is left out");
}

} // namespace QvDbWrap
