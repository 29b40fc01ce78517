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

const char *kindText(EDA::Fabrication::NoteKind kind) {
    using EDA::Fabrication::NoteKind;
    if (kind == NoteKind::Normalised) return "normalised";
    return kind == NoteKind::Guessed ? "guessed" : "left out";
}

} // namespace

JsonReport::JsonReport() : writer_(buffer_) {
    writer_.SetIndent(' ', 2);
    writer_.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    writer_.StartObject();
}

void JsonReport::addName(const char *name) {
    if (name != nullptr) writer_.Key(name);
}

void JsonReport::addText(const char *name, const std::string &value) {
    const std::string text = jsonText(value);
    addName(name);
    writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void JsonReport::addTexts(const char *name, const std::vector<std::string> &values) {
    beginArray(name);
    for (const std::string &value : values)
        addText(nullptr, value);
    endArray();
}

void JsonReport::addFlag(const char *name, bool value) {
    addName(name);
    writer_.Bool(value);
}

void JsonReport::beginObject(const char *name) {
    addName(name);
    writer_.StartObject();
}

void JsonReport::beginArray(const char *name) {
    addName(name);
    writer_.StartArray();
}

// Files can carry numbers that overflow in the arithmetic of arcs; JSON has no way to write those.
void JsonReport::addNumber(const char *name, double value) {
    addName(name);
    writer_.Double(std::isfinite(value) && value != 0.0 ? value : 0.0);
}

void JsonReport::addCount(const char *name, std::size_t value) {
    addName(name);
    writer_.Uint64(value);
}

void JsonReport::addBound(double xLow, double yLow, double xHigh, double yHigh) {
    beginArray("bound");
    for (const double value : {xLow, yLow, xHigh, yHigh})
        addNumber(nullptr, value);
    endArray();
}

void JsonReport::addOutline(const EDA::EDAOutline &outline) {
    const Geometry::Bound2D &bound = outline.getBound();
    beginObject("outline");
    addCount("points", outline.numPoints());
    addCount("internal", static_cast<std::size_t>(outline.numInternalOutlines()));
    addBound(bound.getXLow(), bound.getYLow(), bound.getXHigh(), bound.getYHigh());
    endObject();
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
    beginObject(nullptr);
    addText("name", layer.getName());
    addFlag("conductor", layer.isConductor());
    addNumber("thickness", layer.getThickness());
    addNumber("topOffset", layer.getTopOffset());
    addCount("traces", static_cast<std::size_t>(layer.numTraces()));
    addCount("nets", static_cast<std::size_t>(layer.numNets()));
    addCount("netTraces", netTraces);
    addCount("points", points);
    endObject();
}

// Only sets of files that were told apart have this member.
void JsonReport::addSources(const Design &design) {
    beginArray("files");
    for (const SourceFile &source : design.sources) {
        beginObject(nullptr);
        addText("file", source.file);
        addText("use", source.use);
        addText("reason", source.reason);
        endObject();
    }
    endArray();
    addTexts("notices", design.notices);
}

// Only sets that went through the front end have this member.
void JsonReport::addFabrication(const FabricationReport &report) {
    beginObject("fabrication");
    beginArray("files");
    for (const FabricationReport::File &file : report.files) {
        beginObject(nullptr);
        addText("file", file.file);
        addText("use", file.use);
        addText("reason", file.reason);
        beginArray("notes");
        for (const EDA::Fabrication::Note &note : file.notes) {
            beginObject(nullptr);
            addText("kind", kindText(note.kind));
            addText("what", note.what);
            addCount("line", note.line);
            addCount("count", note.count);
            endObject();
        }
        endArray();
        endObject();
    }
    endArray();
    addTexts("guesses", report.guesses);
    addTexts("warnings", report.warnings);
    endObject();
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
    beginArray("layers");
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer)
        addLayer(*layer);
    endArray();
    if (!design.sources.empty()) addSources(design);
    if (design.fabrication) addFabrication(*design.fabrication);
}

void JsonReport::addEntities(const EntityCounts &counts) { addCounts("entities", counts); }

void JsonReport::addCounts(const char *name, const EntityCounts &counts) {
    beginObject(name);
    for (const auto &[type, count] : counts)
        addCount(type.c_str(), count);
    endObject();
}

std::string JsonReport::finish() {
    endObject();
    return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n";
}

std::string joinedLines(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

} // namespace EDATool
