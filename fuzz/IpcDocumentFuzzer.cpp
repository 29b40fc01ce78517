// Any bytes as an IPC-2581 document; what is read keeps the promises that its readers rely on.
#include "host/QvDbWrap/IpcDocument.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <stdexcept>
#include <string>

namespace {

using namespace QvDbWrap;

void require(bool promise) {
    if (!promise) std::abort();
}

void visit(const geomElem &element) {
    require(element.kind == geomElem::Polygon || element.kind == geomElem::Circle);
    require(std::isfinite(element.radius));
    for (const _mFPOINT &point : element.points)
        require(std::isfinite(point.x) && std::isfinite(point.y));
}

void visitLayers(const Layout &layout) {
    require(!layout.layers.empty());
    std::set<std::string> names;
    for (std::size_t i = 0; i < layout.layers.size(); ++i) {
        const layerData &layer = layout.layers[i];
        require(names.insert(layer.name).second && layer.zHigh >= layer.zLow);
        // Layers without height only make up the number that sides of the board are told by.
        const bool isSpacer =
            layer.layerType != layerData::Conductor && layer.layerType != layerData::Dielectric;
        require(isSpacer || layer.zHigh > layer.zLow);
        require(i == 0 || layer.zHigh == layout.layers[i - 1].zLow);
        require(layer.elements.empty() || layer.elements.front().role == geomElem::Solid);
        for (const geomElem &element : layer.elements)
            visit(element);
    }
    require(layout.layers.back().zLow == 0);
}

void visitHoles(const Layout &layout) {
    std::set<std::string> models;
    for (const viaModelData &model : layout.viaModels) {
        visit(model.shape);
        require(models.insert(model.name).second && model.platingThickness >= 0);
    }
    for (const viaData &via : layout.vias)
        require(models.count(via.modelName) == 1 && std::isfinite(via.x) && std::isfinite(via.y));
}

void visitParts(const Layout &layout) {
    std::set<std::string> models;
    for (const componentModelData &model : layout.componentModels) {
        visit(model.shape);
        require(models.insert(model.name).second && std::isfinite(model.height));
    }
    for (const componentData &component : layout.components) {
        require(models.count(component.modelName) == 1);
        require(std::isfinite(component.coord.x) && std::isfinite(component.coord.y));
        require(component.rotation >= 0 && component.rotation <= 360);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    WrapperLog log;
    IpcSettings settings;
    settings.useCourtyards = size % 2 == 1;
    try {
        IpcXml xml(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
        const Layout layout = readIpcDocument(xml, settings, log);
        for (const outlineData &outline : layout.outlines)
            for (const geomElem &element : outline.elements)
                visit(element);
        visitLayers(layout);
        visitHoles(layout);
        visitParts(layout);
    } catch (const std::runtime_error &error) {
        require(*error.what() != '\0');
    }
    return 0;
}
