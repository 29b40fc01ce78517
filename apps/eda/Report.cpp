// What is in a design or a model, as JSON.
#include "Report.h"

#include "Printable.h"
#include "text/Encoding.h"

#include <cmath>

namespace EDATool {

namespace {

// JSON has no other text than Unicode; a name on the command line may be any bytes.
std::string jsonText(const std::string &text) { return EDA::isValidUtf8(text) ? text : printable(text); }

std::size_t numPoints(const EDA::EDAOutline &outline) {
    std::size_t count = outline.numPoints();
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner) {
        count += numPoints(*inner);
    }
    return count;
}

} // namespace

JsonReport::JsonReport() : writer_(buffer_) {
    writer_.SetIndent(' ', 2);
    writer_.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    writer_.StartObject();
}

void JsonReport::addText(const char *name, const std::string &value) {
    const std::string text = jsonText(value);
    writer_.Key(name);
    writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

// Files can carry numbers that overflow in the arithmetic of arcs; JSON has no way to write those.
void JsonReport::addNumber(const char *name, double value) {
    if (name != nullptr) writer_.Key(name);
    writer_.Double(std::isfinite(value) && value != 0.0 ? value : 0.0);
}

void JsonReport::addCount(const char *name, std::size_t value) {
    writer_.Key(name);
    writer_.Uint64(value);
}

void JsonReport::addBound(double xLow, double yLow, double xHigh, double yHigh) {
    writer_.Key("bound");
    writer_.StartArray();
    for (const double value : {xLow, yLow, xHigh, yHigh})
        addNumber(nullptr, value);
    writer_.EndArray();
}

void JsonReport::addOutline(const EDA::EDAOutline &outline) {
    const Geometry::Bound2D &bound = outline.getBound();
    writer_.Key("outline");
    writer_.StartObject();
    addCount("points", outline.numPoints());
    addCount("internal", static_cast<std::size_t>(outline.numInternalOutlines()));
    addBound(bound.getXLow(), bound.getYLow(), bound.getXHigh(), bound.getYHigh());
    writer_.EndObject();
}

void JsonReport::addLayer(const EDA::EDABoardLayer &layer) {
    std::size_t netTraces = 0;
    std::size_t points = 0;
    for (auto trace = layer.beginTraces(); trace != layer.endTraces(); ++trace) {
        points += numPoints(trace->getOutline());
    }
    for (auto net = layer.beginNets(); net != layer.endNets(); ++net) {
        netTraces += static_cast<std::size_t>(net->numTraces());
        for (auto trace = net->beginTraces(); trace != net->endTraces(); ++trace) {
            points += numPoints(trace->getOutline());
        }
    }
    writer_.StartObject();
    addText("name", layer.getName());
    writer_.Key("conductor");
    writer_.Bool(layer.isConductor());
    addNumber("thickness", layer.getThickness());
    addNumber("topOffset", layer.getTopOffset());
    addCount("traces", static_cast<std::size_t>(layer.numTraces()));
    addCount("nets", static_cast<std::size_t>(layer.numNets()));
    addCount("netTraces", netTraces);
    addCount("points", points);
    writer_.EndObject();
}

void JsonReport::addDesign(const Design &design) {
    const EDA::EDABoard &board = design.board();
    double xLow = 0.0;
    double yLow = 0.0;
    double xHigh = 0.0;
    double yHigh = 0.0;
    board.getOverallBound(xLow, yLow, xHigh, yHigh);
    addText("format", design.format);
    addText("name", board.getName());
    addText("units", board.getUnits());
    addNumber("thickness", board.getThickness());
    addOutline(board.getOutline());
    addBound(xLow, yLow, xHigh, yHigh);
    addCount("components", board.numComponents());
    addCount("placements", board.numComponentPlacements());
    addCount("keepouts", board.numKeepouts());
    addCount("vias", board.numVias(0));
    addCount("viaInstances", board.numVias(1) - board.numVias(0));
    addCount("bumps", board.numBumps(0));
    addCount("bumpInstances", board.numBumps(1) - board.numBumps(0));
    addCount("wirebonds", board.numWirebonds());
    addCount("routeOutlines", board.numRouteOutlines());
    addCount("placementOutlines", board.numPlacementOutlines());
    writer_.Key("layers");
    writer_.StartArray();
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer)
        addLayer(*layer);
    writer_.EndArray();
}

void JsonReport::addEntities(const EntityCounts &counts) {
    writer_.Key("entities");
    writer_.StartObject();
    for (const auto &[type, count] : counts)
        addCount(type.c_str(), count);
    writer_.EndObject();
}

std::string JsonReport::finish() {
    writer_.EndObject();
    return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n";
}

std::string joinedLines(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

} // namespace EDATool
