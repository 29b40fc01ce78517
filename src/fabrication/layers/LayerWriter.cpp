// Writing a layer: objects as statements, nets as comments.
#include "fabrication/layers/LayerWriter.h"

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/apertures/Rings.h"
#include "fabrication/layers/ApertureTable.h"
#include "fabrication/layers/ArcPieces.h"
#include "fabrication/layers/CanonicalText.h"
#include "fabrication/layers/CutIns.h"
#include "fabrication/Limits.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace EDA::Fabrication {

namespace {

constexpr std::uint32_t noNet = static_cast<std::uint32_t>(-1);

// Edges that all swept strokes of a layer may cost together, when they are no plain lines of small shapes.
constexpr std::size_t mostSweptEdges = 10'000'000;
constexpr std::size_t fewEdges = 64;

Point sum(Point const &a, Point const &b) { return {a.x + b.x, a.y + b.y}; }

// Edges that are moved, and copies along an arc that may cross each other.
std::size_t sweepCost(std::size_t edges, Point const &from, Segment const &segment) {
    if (segment.motion == Motion::Line) return edges;
    Arc const arc = arcOf(from, segment);
    double const turn = static_cast<double>(edgesOfTurn(std::max(arc.startRadius, arc.endRadius)));
    auto const stops = static_cast<std::size_t>(turn * std::abs(arc.sweep) / fullTurn) + 1;
    return edges * stops + stops * stops;
}

// A line there and back, or no more than a dot of the file.
bool isFlat(Path const &contour) {
    auto const isLine = [](Segment const &each) { return each.motion == Motion::Line; };
    if (!std::all_of(contour.segments.begin(), contour.segments.end(), isLine)) return false;
    GridPoint const start = gridPoint(contour.start);
    GridPoint other = start;
    for (Segment const &segment : contour.segments) {
        GridPoint const end = gridPoint(segment.end);
        if (end == start || end == other) continue;
        if (other != start) return false;
        other = end;
    }
    return true;
}

} // namespace

struct LayerWriter::State {
    State(TextSink &sink, NetPoints *points) : text(sink), apertures(text), nets(points) {}

    CanonicalText text;
    ApertureTable apertures;

    NetPoints *nets;
    std::unordered_map<std::string, std::uint32_t> netIndices;
    std::uint32_t net = noNet; // of the objects that come
    std::string netName, pinName;
    std::size_t numSweptEdges = 0;

    bool wantsPoint(bool dark) const { return dark && nets != nullptr && net != noNet; }
    void addPoint(Point const &at) { nets->points.push_back({at, net}); }
    void noteNet();

    void strokeDisc(int code, double diameter, Point const &from, Segment const &segment);
    void strokeShape(Shape const &shape, Point const &from, Segment const &segment);
    void writeRing(Ring const &ring, Point const &offset);
    void startRegion(GridPoint const &at);
};

void LayerWriter::State::noteNet() {
    net = noNet;
    if (nets == nullptr || netName.empty()) return;
    auto const added = netIndices.emplace(netName, static_cast<std::uint32_t>(nets->names.size()));
    if (added.second) nets->names.push_back(netName);
    net = added.first->second;
}

void LayerWriter::State::strokeDisc(int code, double diameter, Point const &from, Segment const &segment) {
    text.select(code);
    GridPoint const start = gridPoint(from);
    if (!text.isAt(start)) text.moveTo(start);
    if (!drawSegment(text, from, segment, 0.5 * diameter, strokeChord)) text.lineTo(start);
}

void LayerWriter::State::strokeShape(Shape const &shape, Point const &from, Segment const &segment) {
    std::size_t const cost = sweepCost(apertures.edgesOf(shape), from, segment);
    if (cost > fewEdges) numSweptEdges += cost;
    for (Piece const &piece : swept(shape, from, segment))
        writeRing(piece.holes.empty() ? piece.outer : withCutIns(piece), {});
}

void LayerWriter::State::startRegion(GridPoint const &at) {
    text.line("G36*");
    text.moveTo(at);
}

void LayerWriter::State::writeRing(Ring const &ring, Point const &offset) {
    if (ring.size() < 3) return;
    GridPoint const start = gridPoint(sum(ring.front(), offset));
    startRegion(start);
    for (std::size_t i = 1; i < ring.size(); ++i) {
        GridPoint const p = gridPoint(sum(ring[i], offset));
        if (p != text.current()) text.lineTo(p);
    }
    if (text.current() != start) text.lineTo(start);
    text.line("G37*");
}

LayerWriter::LayerWriter(TextSink &sink, std::string const &fileFunction, NetPoints *nets)
    : state_(std::make_unique<State>(sink, nets)) {
    CanonicalText &text = state_->text;
    text.line("%FSLAX46Y46*%");
    text.line("%MOMM*%");
    if (!fileFunction.empty()) text.line("%TF.FileFunction," + attributeText(fileFunction, true) + "*%");
    text.line("G75*");
    text.line("%LPD*%");
}

LayerWriter::~LayerWriter() = default;

void LayerWriter::flash(Shape const &shape, Point const &at, bool dark) {
    if (shape.isNothing()) return;
    State &state = *state_;
    ApertureTable::Form const &form = state.apertures.formOf(shape, dark);
    if (form.codes.empty() && form.regions.empty()) return;
    state.text.setPolarity(dark);
    GridPoint const place = gridPoint(at);
    for (int const code : form.codes) {
        state.text.select(code);
        state.text.flash(place);
    }
    for (Ring const &ring : form.regions)
        state.writeRing(ring, at);
    if (state.wantsPoint(dark)) state.addPoint(sum(at, state.apertures.insideOf(shape)));
}

void LayerWriter::stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) {
    if (shape.isNothing()) return;
    State &state = *state_;
    state.text.setPolarity(dark);
    if (ApertureTable::isFineDisc(shape)) {
        ApertureTable::Form const &form = state.apertures.formOf(shape, true);
        if (form.codes.empty()) return;
        state.strokeDisc(form.codes.front(), shape.width, from, segment);
    } else {
        state.strokeShape(shape, from, segment);
    }
    if (state.wantsPoint(dark)) state.addPoint(sum(from, state.apertures.insideOf(shape)));
}

void LayerWriter::region(Path const &contour, bool dark) {
    if (isFlat(contour)) return;
    State &state = *state_;
    CanonicalText &text = state.text;
    text.setPolarity(dark);
    GridPoint const start = gridPoint(contour.start);
    state.startRegion(start);
    Point from = contour.start;
    for (Segment const &segment : contour.segments) {
        drawSegment(text, from, segment, 0.0, regionChord);
        from = segment.end;
    }
    if (text.current() != start) text.lineTo(start);
    text.line("G37*");
    Point inside;
    if (state.wantsPoint(dark) && findPointInside(contour, inside)) state.addPoint(inside);
}

void LayerWriter::setNet(std::string_view net, std::string_view pin) {
    State &state = *state_;
    if (net == state.netName && pin == state.pinName) return;
    bool const isLess = (net.empty() && !state.netName.empty()) || (pin.empty() && !state.pinName.empty());
    if (isLess) state.text.line("G04 #@! TD*");
    if (!net.empty() && (isLess || net != state.netName)) {
        state.text.line("G04 #@! TO.N," + attributeText(net, false) + "*");
    }
    if (!pin.empty() && (isLess || pin != state.pinName)) {
        state.text.line("G04 #@! TO.P," + attributeText(pin, true) + "*");
    }
    state.netName = net;
    state.pinName = pin;
    state.noteNet();
}

bool LayerWriter::isFull() const {
    return state_->numSweptEdges > mostSweptEdges || state_->text.numOperations() > Limits::points;
}

void LayerWriter::finish() {
    state_->text.line("M02*");
    state_->text.flush();
}

} // namespace EDA::Fabrication
