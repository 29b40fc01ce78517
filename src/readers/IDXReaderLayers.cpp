// The layers of an IDX document, with their traces.
#include "readers/IDXReader.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace EDA {

namespace {

constexpr double heightTolerance = 1e-9;
constexpr int noLayer = std::numeric_limits<int>::max();

} // namespace

void IDXReader::addLayer(const Shape &shape) {
    if (shape.technology.isEmpty()) {
        ++passedOver_.bareStrata;
        return;
    }
    if (!takeLength(shape.technology) || !takeLength(shape.name)) return;
    const StratumTechnology &technology = lookUp(tables_.technologies, shape.technology);
    if (technology.purpose == QLatin1String("GenericLayer") && !tables_.fromDesignForce) {
        ++passedOver_.genericLayers;
        return;
    }
    const std::string name = (shape.name.isEmpty() ? technology.id : shape.name).toStdString();
    double low = 0.0, high = 0.0;
    const bool hasHeight = getZDimensions(shape, low, high);
    const int layer = layerFor(name, hasHeight, low, high);
    for (const QString &id : shape.elements) {
        const ShapeElement *const element = takeElement(id);
        if (!element) return;
        addTrace(*element, layer);
    }
}

int IDXReader::layerFor(const std::string &name, bool hasHeight, double low, double high) {
    const int found = findLayer(name, hasHeight, high);
    if (found != noLayer) return found;
    EDABoardLayer layer;
    layer.setName(name);
    if (hasHeight) layer.setThickness(std::isfinite(high - low) ? high - low : 0.0);
    if (hasHeight && tables_.fromExpedition) layer.setTopOffset(high);
    const int index = static_cast<int>(board_.numLayers());
    noteLayer(layer, index);
    board_.addLayer(std::move(layer));
    return index;
}

// The first layer of the name. One system writes a layer as several of different names at one height: there
// the first at that height counts as well.
int IDXReader::findLayer(const std::string &name, bool hasHeight, double high) const {
    const auto named = making_.layersByName.find(name);
    int found = named == making_.layersByName.end() ? noLayer : named->second;
    if (!tables_.fromExpedition || !hasHeight) return found;
    auto layer = making_.layersByTop.lower_bound(high - heightTolerance);
    for (; layer != making_.layersByTop.end() && layer->first <= high + heightTolerance; ++layer)
        if (std::abs(layer->first - high) < heightTolerance) found = std::min(found, layer->second);
    return found;
}

// Only the first layer of a name or a height is ever found.
void IDXReader::noteLayer(const EDABoardLayer &layer, int index) {
    making_.layersByName.emplace(layer.getName(), index);
    making_.layersByTop.emplace(layer.getTopOffset(), index);
}

void IDXReader::addTrace(const ShapeElement &element, int layer) {
    if (!takeOutlines(1)) return;
    EDATrace trace;
    double width = 0.0, low = 0.0, high = 0.0;
    generateOutline(trace.getOutline(), element, 0, width);
    if (!trace.getOutline().isClosed() && width > 0.0) trace.setRouteWidth(width);
    trace.setName(takeText(element.description));
    if (getZDimensions(element, low, high)) trace.setThickness(std::isfinite(high - low) ? high - low : 0.0);
    board_.getNthLayer(layer).addTrace(std::move(trace));
}

} // namespace EDA
