// Copies of a board's items, scaled and moved.
#include "PlacedItems.h"

namespace EDATool {

namespace {

void setHeights(const EDA::EDAOutline &from, double scale, EDA::EDAOutline &to) {
    double low = 0.0, high = 0.0;
    from.getZDimensions(low, high);
    to.setZDimensions(scale * low, scale * high);
}

} // namespace

EDA::EDAOutline placedOutline(const EDA::EDAOutline &outline, const CopperPlace &place) {
    EDA::EDAOutline placed(outline.isHole());
    placed.setName(outline.getName());
    placed.setMaterial(outline.getMaterial());
    setHeights(outline, place.scale, placed);
    const auto x = [&place](double value) { return place.scale * value + place.x; };
    const auto y = [&place](double value) { return place.scale * value + place.y; };
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point) {
        if (point->centered)
            placed.addPoint(0, x(point->x), y(point->y), x(point->centreX), y(point->centreY),
                            point->clockwise);
        else
            placed.addPoint(0, x(point->x), y(point->y), point->angle);
    }
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        placed.addInternalOutline(placedOutline(*inner, place));
    return placed;
}

EDA::EDATrace placedTrace(const EDA::EDATrace &trace, const CopperPlace &place) {
    EDA::EDATrace placed;
    placed.setName(trace.getName());
    placed.setThickness(place.scale * trace.getThickness());
    if (trace.isDefinedAsRoute()) placed.setRouteWidth(place.scale * trace.getRouteWidth());
    placed.getOutline() = placedOutline(trace.getOutline(), place);
    return placed;
}

EDA::EDABoardLayer placedLayer(const EDA::EDABoardLayer &layer, const CopperPlace &place) {
    EDA::EDABoardLayer placed(layer.isConductor());
    placed.setName(layer.getName());
    placed.setThickness(place.scale * layer.getThickness());
    if (layer.getTopOffset() > -1000.0) placed.setTopOffset(place.scale * layer.getTopOffset());
    placed.setUniformConductivity(layer.getUniformConductivity());
    placed.setConductorMaterial(layer.getConductorMaterial());
    placed.setDielectricMaterial(layer.getDielectricMaterial());
    for (auto trace = layer.beginTraces(); trace != layer.endTraces(); ++trace)
        placed.addTrace(placedTrace(*trace, place));
    for (auto net = layer.beginNets(); net != layer.endNets(); ++net) {
        EDA::EDANet placedNet;
        placedNet.setName(net->getName());
        placedNet.setGlobalId(net->getGlobalId());
        placedNet.setLocalId(net->getLocalId());
        for (auto trace = net->beginTraces(); trace != net->endTraces(); ++trace)
            placedNet.addTrace(placedTrace(*trace, place));
        placed.addNet(std::move(placedNet));
    }
    return placed;
}

EDA::EDAVia placedVia(const EDA::EDAVia &via, const CopperPlace &place) {
    EDA::EDAVia placed;
    placed.setName(via.getName());
    placed.setPlatingStyle(via.getPlatingStyle());
    placed.setDiameter(place.scale * via.getDiameter());
    placed.setAngle(via.getAngle());
    placed.setCentre(place.scale * via.getXCentre() + place.x, place.scale * via.getYCentre() + place.y);
    placed.setPlatingThickness(place.scale * via.getPlatingThickness());
    double low = 0.0, high = 0.0;
    via.getZDimensions(low, high);
    placed.setZDimensions(place.scale * low, place.scale * high);
    placed.setAssociatedPart(via.getAssociatedPart());
    placed.setHoleType(via.getHoleType());
    std::string from, to;
    via.getLayers(from, to);
    placed.setLayers(from, to);
    placed.setFillMaterial(via.getFillMaterial());
    // The shape stands about the centre, so it is not moved.
    placed.getOutline() = placedOutline(via.getOutline(), {place.scale, 0.0, 0.0});
    return placed;
}

} // namespace EDATool
