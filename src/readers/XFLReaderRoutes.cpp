// The nets of an XFL file: copper, voids in it and vias.
#include "readers/XFLReader.h"

#include "host/Geometry/PolygonPrismGeometryMaker.h"
#include "text/Text.h"

#include <algorithm>
#include <iterator>

namespace EDA {

namespace {

// A thinner plating is none.
constexpr double leastPlating = 1e-6;

} // namespace

// A keyword of a net and who reads its row.
struct XFLReader::RouteRule {
    std::string_view keyword;
    void (XFLReader::*read)(RowIterator &row, const RowIterator &end, bool hasPlace);
    bool hasPlace; // the last two parameters say where the shape is; else it is drawn about the origin
};

XFLReader::RowIterator XFLReader::readRoutes(RowIterator row, const RowIterator &end) {
    state_.inNet = false;
    while (nextRowOfSection(row, end))
        readRouteRow(row, end);
    return row;
}

// A bond wire is an unknown keyword like any other: without its block being passed over, the "}" of the block
// would end the net.
void XFLReader::readRouteRow(RowIterator &row, const RowIterator &end) {
    static constexpr RouteRule rules[] = {
        {"via", &XFLReader::readVia, false},
        {"path", &XFLReader::readPath, false},
        {"shape", &XFLReader::readPlacedShape, false},
        {"polygon", &XFLReader::readShapeInPlace, false},
        {"composite", &XFLReader::readShapeInPlace, false},
        {"rectangle", &XFLReader::readShapeInPlace, true},
        {"square", &XFLReader::readShapeInPlace, true},
        {"diamond", &XFLReader::readShapeInPlace, true},
        {"circle", &XFLReader::readShapeInPlace, true},
        {"annular", &XFLReader::readShapeInPlace, true},
        {"void_polygon", &XFLReader::readVoid, false},
        {"void_composite", &XFLReader::readVoid, false},
        {"void_rectangle", &XFLReader::readVoid, true},
        {"void_square", &XFLReader::readVoid, true},
        {"void_diamond", &XFLReader::readVoid, true},
        {"void_circle", &XFLReader::readVoid, true},
        {"void_annular", &XFLReader::readVoid, true},
        {"}", &XFLReader::leaveNet, false},
    };
    const std::string &keyword = field(*row, 0);
    if (!state_.inNet) {
        state_.net = keyword;
        state_.inNet = true;
        return;
    }
    const auto rule = std::find_if(std::begin(rules), std::end(rules),
                                   [&](const RouteRule &known) { return known.keyword == keyword; });
    if (rule == std::end(rules))
        skipBlock(row, end, 1);
    else
        (this->*rule->read)(row, end, rule->hasPlace);
}

void XFLReader::leaveNet(RowIterator &, const RowIterator &, bool) { state_.inNet = false; }

// Start layer, end layer, name of the kind, X, Y.
void XFLReader::readVia(RowIterator &row, const RowIterator &, bool) {
    const auto definition = viaDefinitions_.find(field(*row, 3));
    if (definition == viaDefinitions_.end()) return;
    const Shape &shape = findShape(definition->second.shapeId);
    if (shape.type != "circle") return;
    const ViaSpan span{intField(*row, 1), intField(*row, 2)};
    if (!hasLayer(span.start) || !hasLayer(span.end) || !hasFaces(span.start) || !hasFaces(span.end)) return;
    if (!takeItem()) return;
    const double plating = definition->second.platingThickness;
    double diameter = parameter(shape, 0);
    // The plating has no scale.
    if (plating > leastPlating) diameter += 2.0 * plating;
    if (componentMode_)
        addBodyVia(*row, span, diameter);
    else
        addVia(*row, span, diameter, plating);
}

// A via reaches from the lower face of its first layer to the upper face of its last: it lies between the
// layers and not in them. This is intended.
void XFLReader::addVia(const Row &row, const ViaSpan &span, double diameter, double plating) {
    EDAVia via;
    via.setName(field(row, 3));
    via.setHoleType("PIN");
    via.setCentre(lengthField(row, 4), lengthField(row, 5));
    via.setDiameter(diameter);
    via.setZDimensions(heightOf(upperFace(span.end)), heightOf(lowerFace(span.start)));
    if (plating > leastPlating) {
        via.setPlated(true);
        via.setPlatingThickness(plating);
    }
    board_.addVia(via, true);
}

void XFLReader::addBodyVia(const Row &row, const ViaSpan &span, double diameter) {
    EDAOutline &via = newBody();
    via.setName(field(row, 3));
    addCircle(via, lengthField(row, 4), lengthField(row, 5), diameter);
    via.setZDimensions(heightOf(upperFace(span.end)), heightOf(lowerFace(span.start)));
    via.setMaterial(conductorMaterial(span.end));
}

// Layer, shape, X, Y, rotation. A mirror behind them plays no part.
void XFLReader::readPlacedShape(RowIterator &row, const RowIterator &, bool) {
    const Place place{lengthField(*row, 3), lengthField(*row, 4)};
    addShape(intField(*row, 1), findShape(intField(*row, 2)), place, parseDouble(field(*row, 5), 0.0, 0.0));
}

void XFLReader::readShapeInPlace(RowIterator &row, const RowIterator &end, bool hasPlace) {
    const int layer = intField(*row, 1);
    readShape(state_.shape, row, end, 0, 1);
    addShape(layer, state_.shape, hasPlace ? placeOf(state_.shape) : Place(0.0, 0.0), 0.0);
}

// A shape that is not known has no points, but is there.
void XFLReader::addShape(int layer, const Shape &shape, Place place, double rotation) {
    if (!hasLayer(layer) || !takeItem()) return;
    EDAOutline &outline = componentMode_ ? newBodyTrace(layer) : newTrace(layer, false).getOutline();
    generateOutline(outline, shape, place.first, place.second, rotation);
}

// A width of 0 makes a route as well.
void XFLReader::readPath(RowIterator &row, const RowIterator &end, bool) {
    const int layer = intField(*row, 1);
    const double width = lengthField(*row, 2);
    readShape(state_.shape, row, end, 0, 2);
    if (!hasLayer(layer) || !takeItem()) return;
    if (componentMode_) {
        EDAOutline &line = newBodyTrace(layer);
        generateOutline(line, state_.shape, 0.0, 0.0, 0.0);
        thicken(line, width);
    } else {
        EDATrace &trace = newTrace(layer, true);
        generateOutline(trace.getOutline(), state_.shape, 0.0, 0.0, 0.0);
        trace.setRouteWidth(width);
    }
}

// Voids alone count from a corner of a package's edge.
void XFLReader::readVoid(RowIterator &row, const RowIterator &end, bool hasPlace) {
    const int layer = intField(*row, 1);
    readShape(state_.shape, row, end, 0, 1);
    if (!hasLayer(layer) || !takeItem()) return;
    const Place place = hasPlace ? placeOf(state_.shape) : Place(0.0, 0.0);
    EDAOutline hole(true);
    generateOutline(hole, state_.shape, place.first + lowestX_, place.second + highestY_, 0.0);
    addHole(layer, hole);
}

// In a component the layer only has to be there: a void must not go to the shape before its own, where that
// one is left out for its layer.
void XFLReader::addHole(int layer, const EDAOutline &hole) {
    if (componentMode_) {
        if (body().numInternalOutlines() > 0) lastBody().addInternalOutline(hole);
        return;
    }
    LayerTraces &made = tracesOf(layer);
    if (made.lastShape)
        made.lastShape->getOutline().addInternalOutline(hole);
    else
        board_.getNthLayer(layer - 1).addHoleToLastTrace(hole); // a trace of a file read before this one
}

XFLReader::LayerTraces &XFLReader::tracesOf(int layer) {
    const auto position = static_cast<std::size_t>(layer) - 1;
    if (position >= state_.layers.size()) state_.layers.resize(position + 1);
    return state_.layers[position];
}

EDATrace &XFLReader::newTrace(int layer, bool isRoute) {
    LayerTraces &made = tracesOf(layer);
    EDATrace &trace = made.add();
    trace.setName(takeText(state_.net));
    if (!isRoute) made.lastShape = &trace;
    return trace;
}

EDATrace &XFLReader::LayerTraces::add() {
    if (blocks.empty() || blocks.back().size() == blockSize) {
        blocks.emplace_back();
        blocks.back().reserve(blockSize);
    }
    return blocks.back().emplace_back();
}

std::size_t XFLReader::LayerTraces::size() const {
    return blocks.empty() ? 0 : (blocks.size() - 1) * blockSize + blocks.back().size();
}

EDAOutline &XFLReader::newBody() {
    body().addInternalOutline(EDAOutline());
    return lastBody();
}

EDAOutline &XFLReader::lastBody() { return *std::prev(body().endInternalOutlines()); }

EDAOutline &XFLReader::newBodyTrace(int layer) {
    EDAOutline &outline = newBody();
    outline.setName(takeText(state_.net));
    outline.setZDimensions(heightOf(lowerFace(layer)), heightOf(upperFace(layer)));
    outline.setMaterial(conductorMaterial(layer));
    return outline;
}

// A line becomes the area that it covers, nothing where it has no length or no width.
void XFLReader::thicken(EDAOutline &line, double width) {
    std::vector<double> xs, ys, outXs, outYs;
    for (const auto &[x, y] : line.getPoints(true)) {
        xs.push_back(x);
        ys.push_back(y);
    }
    Geometry::PolygonPrismGeometryMaker::getThickPolylineOutline(xs, ys, width, outXs, outYs);
    line.clear();
    for (std::size_t i = 0; i < outXs.size(); ++i)
        if (!addPoint(line, 0, outXs[i], outYs[i], 0.0)) return;
}

bool XFLReader::hasLayer(int layer) const {
    if (componentMode_) return hasFaces(layer);
    return layer >= 1 && static_cast<std::size_t>(layer) <= board_.numLayers();
}

bool XFLReader::hasFaces(int layer) const { return layer >= 1 && hasFace(lowerFace(layer)); }

bool XFLReader::hasFace(long long face) const {
    return face >= 0 && static_cast<unsigned long long>(face) < layerOffsets_.size();
}

double XFLReader::heightOf(long long face) const {
    return totalThickness() - layerOffsets_[static_cast<std::size_t>(face)];
}

double XFLReader::totalThickness() const { return layerOffsets_.empty() ? 0.0 : layerOffsets_.back(); }

// A second list of layers begins with an offset of its own, so that there may be less materials than faces.
const std::string &XFLReader::conductorMaterial(int layer) {
    const std::string &material = field(conductorMaterials_, static_cast<std::size_t>(upperFace(layer)));
    return takeText(material);
}

} // namespace EDA
