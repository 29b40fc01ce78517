// The stack-up of the external suite: layers with their traces and nets.
#include "readers/VelkinEDAReader.h"

#include "host/QvDbWrap/DbWrapper.h"
#include "readers/VelkinEDAReaderDetail.h"

#include <utility>

namespace EDA {

using QvDbWrap::geomElem;
using QvDbWrap::layerData;

namespace {

// A layer without its traces.
EDABoardLayer layerOf(const layerData &record, double boardThickness) {
    EDABoardLayer layer(record.layerType == layerData::Conductor);
    layer.setName(record.name);
    layer.setThickness(record.zHigh - record.zLow);
    layer.setTopOffset(boardThickness - record.zLow);
    if (layer.isConductor()) layer.setConductorMaterial(record.conductorMaterial);
    layer.setDielectricMaterial(record.dielectricMaterial);
    return layer;
}

// The net of this name, made if need be. It is looked for again once it is added, since that moves the nets.
EDANet *netOf(const std::string &name, EDABoardLayer &layer) {
    if (EDANet *const net = layer.findNet(name)) return net;
    EDANet net;
    net.setName(name);
    layer.addNet(std::move(net));
    return layer.findNet(name);
}

// Gives the trace as the layer or the net holds it, until the next one is added.
EDATrace *store(EDATrace trace, const std::string &netName, EDABoardLayer &layer) {
    EDANet *const net = netName.empty() ? nullptr : netOf(netName, layer);
    return net != nullptr ? net->addTrace(std::move(trace)) : layer.addTrace(std::move(trace));
}

void takeIfMissing(std::string &text, const std::string &other) {
    if (text.empty()) text = other;
}

} // namespace

bool VelkinEDAReader::convertBoardLayers(const QvDbWrap::DbWrapper &wrapper, Stack &stack) {
    const VelkinEDASection section("EDAConvertBoardLayers");
    measureStack(wrapper.GetAllLayers(), stack);
    std::string conductorMaterial = board_.getConductorMaterial();
    std::string dielectricMaterial = board_.getDielectricMaterial();
    bool hasConductor = false;
    for (const layerData &record : wrapper.GetAllLayers()) {
        if (record.layerType == layerData::Conductor) {
            if (!hasConductor) stack.topGap = board_.getThickness() - record.zHigh;
            hasConductor = true;
            stack.bottomZ = record.zLow;
            takeIfMissing(conductorMaterial, record.conductorMaterial);
            convertConductor(record);
        } else if (record.layerType == layerData::Dielectric) {
            board_.addLayer(layerOf(record, board_.getThickness()));
            takeIfMissing(dielectricMaterial, record.dielectricMaterial);
        }
    }
    for (auto layer = board_.beginLayers(); layer != board_.endLayers(); ++layer)
        stack.topOffsets.emplace(layer->getName(), layer->getTopOffset());
    if (!conductorMaterial.empty()) board_.setConductorMaterial(conductorMaterial);
    if (!dielectricMaterial.empty()) board_.setDielectricMaterial(dielectricMaterial);
    return hasConductor;
}

// Layers of every type count for the thickness and for the half of the stack that a layer is in.
void VelkinEDAReader::measureStack(const std::vector<layerData> &layers, Stack &stack) {
    double thickness = 0.0;
    for (const layerData &layer : layers) {
        thickness += layer.zHigh - layer.zLow;
        stack.indices[layer.name] = stack.numLayers++;
    }
    board_.setThickness(thickness);
}

void VelkinEDAReader::convertConductor(const layerData &record) {
    EDABoardLayer layer = layerOf(record, board_.getThickness());
    EDATrace *last = nullptr;
    for (const geomElem &element : record.elements) {
        if (element.role == geomElem::Solid) {
            EDATrace trace;
            trace.setName(element.name);
            convertGeometry(element, trace.getOutline(), 0);
            last = store(std::move(trace), element.netName, layer);
            last->getOutline().setMaterial(room_.takeText(record.conductorMaterial));
        } else if (last != nullptr) {
            EDAOutline hole(true);
            hole.setName(element.name);
            convertGeometry(element, hole, 0);
            last->getOutline().addInternalOutline(hole);
        }
    }
    board_.addLayer(std::move(layer));
}

} // namespace EDA
