// Packages and components of a design as component models and placements.
#include "host/QvDbWrap/IpcParts.h"

#include "host/QvDbWrap/WrapperLog.h"

#include <cmath>
#include <utility>

namespace QvDbWrap {

namespace {

double wrapped(double degrees) {
    const double rest = std::fmod(degrees, 360.0);
    return rest < 0 ? rest + 360.0 : rest;
}

bool isWithin(const _mFPOINT &point) {
    return std::abs(point.x) <= IpcGeometry::maxCoordinate && std::abs(point.y) <= IpcGeometry::maxCoordinate;
}

double heightOf(const IpcPackage *package, const IpcComponent &component) {
    const double height = component.height > 0 || !package ? component.height : package->height;
    return height <= IpcGeometry::maxCoordinate ? height : 0;
}

} // namespace

IpcParts::IpcParts(IpcContext &context, const IpcLayers &layers, Layout &layout)
    : context_(context), layers_(layers), layout_(layout), top_(outerConductor(layout.layers, false)),
      bottom_(outerConductor(layout.layers, true)), startLayers_{startLayer(false), startLayer(true)} {}

// A step that stands on the board many times tells of its packages once.
void IpcParts::add(const IpcStep &step, const IpcPlacement &placement, const std::string &suffix) {
    const auto [packages, isNew] = packages_.try_emplace(&step);
    if (isNew) packages->second = packagesOf(step);
    for (const IpcComponent &component : step.components) {
        componentData data;
        data.compName = component.designator + suffix;
        data.modelName = modelOf(step, packages->second, component);
        place(component, placement, data);
        if (!context_.takePoints(IpcContext::costOf(data.compName) + IpcContext::costOf(data.modelName) +
                                 IpcContext::costOf(data.startLayerName)))
            break;
        if (isWithin(data.coord))
            layout_.components.push_back(std::move(data));
        else
            context_.log.warn("a component is out of all bounds");
    }
    if (isNew) addUnused(step);
}

IpcParts::Packages IpcParts::packagesOf(const IpcStep &step) const {
    Packages packages;
    for (const IpcPackage &package : step.packages)
        if (!packages.byName.emplace(package.name, &package).second)
            context_.log.warn("package " + package.name + " is there more than once");
    for (const IpcComponent &component : step.components)
        packages.parts[component.package].insert(component.part);
    return packages;
}

const std::string &IpcParts::modelOf(const IpcStep &step, const Packages &packages,
                                     const IpcComponent &component) {
    const auto found = packages.byName.find(component.package);
    const IpcPackage *const package = found != packages.byName.end() ? found->second : nullptr;
    if (!package) context_.log.warn("package " + component.package + " of a component is missing");
    const double height = heightOf(package, component);
    const std::string key =
        step.name + '\n' + component.package + '\n' + component.part + '\n' + std::to_string(height);
    const auto [model, isNew] = models_.try_emplace(key);
    if (!isNew) return model->second;
    const bool hasParts = packages.parts.at(component.package).size() > 1 && !component.part.empty();
    model->second = hasParts ? component.package + ' ' + component.part : component.package;
    addModel(package ? *package : IpcPackage(), model->second, component.part, height);
    return model->second;
}

void IpcParts::addModel(const IpcPackage &package, std::string &name, const std::string &part,
                        double height) {
    if (!names_.insert(name).second) {
        const std::string plain = name;
        int &number = nextNumbers_.try_emplace(plain, 2).first->second;
        do
            name = plain + " (" + std::to_string(number++) + ')';
        while (!names_.insert(name).second);
    }
    componentModelData model;
    model.shape.points = package.outline;
    model.name = name;
    model.partNumber = part;
    model.height = height;
    layout_.componentModels.push_back(std::move(model));
}

void IpcParts::addUnused(const IpcStep &step) {
    std::set<std::string> used;
    for (const IpcComponent &component : step.components)
        used.insert(component.package);
    for (const IpcPackage &package : step.packages) {
        if (!used.insert(package.name).second) continue;
        const auto [model, isNew] = models_.try_emplace(step.name + '\n' + package.name, package.name);
        if (isNew) addModel(package, model->second, std::string(), heightOf(&package, IpcComponent()));
    }
}

// The outer conductors come first, then what the layer says of itself. On a layer inside, a component that is
// mirrored looks down.
bool IpcParts::isOnBottom(const IpcComponent &component) const {
    if (top_ != bottom_ && (component.layer == top_ || component.layer == bottom_))
        return component.layer == bottom_;
    const IpcLayer *const layer = layers_.find(component.layer);
    if (!layer) context_.log.warn("layer " + component.layer + " of a component is missing");
    if (!layer || layer->side == IpcSide::Inside) return component.placement.isMirrored;
    return layer->side == IpcSide::Bottom;
}

// A component counts as on the bottom where its layer's index is above half the number of layers. That fails
// the outer conductors of some one-sided boards, for which the outermost layer stands in.
std::string IpcParts::startLayer(bool isBottom) const {
    const std::vector<layerData> &layers = layout_.layers;
    if (layers.empty()) return {};
    const std::string &conductor = isBottom ? bottom_ : top_;
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (layers[i].name == conductor && (i > layers.size() / 2) == isBottom) return conductor;
    return isBottom ? layers.back().name : layers.front().name;
}

// A package on the bottom is drawn as on the top, turned and then flipped over. Records flip first, so that
// the turn goes the other way.
void IpcParts::place(const IpcComponent &component, const IpcPlacement &placement,
                     componentData &data) const {
    const bool isBottom = isOnBottom(component);
    IpcPlacement own = component.placement;
    if (own.isMirrored && !isBottom)
        context_.log.warn("a component on the top is mirrored: that is left out");
    if (!own.isMirrored && isBottom)
        context_.log.warn("a component on the bottom is not mirrored: it is taken as such");
    own.isMirrored = isBottom;
    data.startLayerName = startLayers_[isBottom ? 1 : 0];
    data.coord = placement.apply(own.apply({0, 0}));
    const double rotation = wrapped(own.rotation);
    data.rotation = wrapped(placement.rotation + (isBottom ? -rotation : rotation));
}

} // namespace QvDbWrap
