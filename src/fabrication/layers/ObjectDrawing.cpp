// Objects reach their sink: recordings are drawn copy by copy, and everything is counted.
#include "fabrication/layers/ObjectStream.h"
#include "fabrication/Limits.h"

#include <cmath>

namespace EDA::Fabrication {

namespace {

// A kilometre: nothing that is meant lies beyond, and sums of such numbers stay exact enough.
constexpr double mostReach = 1e6;

// Objects that draw nothing take time, too.
constexpr std::size_t maxReplayed = 2 * Limits::objects;

constexpr std::size_t pollObjects = 10'000;

bool isInReach(Point const &point) { return std::abs(point.x) < mostReach && std::abs(point.y) < mostReach; }

bool isSame(ApertureTransform const &a, ApertureTransform const &b) {
    return a.mirrorX == b.mirrorX && a.mirrorY == b.mirrorY && a.scaleX == b.scaleX && a.scaleY == b.scaleY &&
           a.rotation == b.rotation;
}

} // namespace

// Copies stand in the order of the format: first along Y, then along X. Each is drawn as a whole.
void ObjectStream::drawCopies(PlacedRecording const &placed, Point const &at, Context const &context) {
    Repeats const &repeats = placed.repeats;
    for (int column = 0; column < repeats.columns; ++column) {
        for (int row = 0; row < repeats.rows; ++row) {
            if (isStopped_) return;
            const Point origin{at.x + column * repeats.columnStep, at.y + row * repeats.rowStep};
            const Placement inner = composed(context.placement, placedAt(origin, placed.transform));
            draw(*placed.recording, {inner, context.isInverted, context.net});
        }
    }
}

void ObjectStream::findShapes(Recording const &recording, ApertureTransform const &transform) {
    if (recording.shapes.size() == recording.uses.size() && isSame(recording.shapesTransform, transform))
        return;
    recording.shapes.clear();
    for (ApertureUse const &use : recording.uses)
        recording.shapes.push_back(&apertures_.shapeOf(*use.aperture, composed(transform, use.transform)));
    recording.shapesTransform = transform;
}

void ObjectStream::draw(Recording const &recording, Context const &context) {
    findShapes(recording, context.placement.turn);
    Placement const &placement = context.placement;
    const Point *points = recording.points.data();
    for (Recording::Object const &object : recording.objects) {
        if (++numReplayed_ > maxReplayed) stop("objects beyond the limit of one layer");
        if (progress_ && numReplayed_ % pollObjects == 0 && progress_->isCancelled()) isStopped_ = true;
        if (isStopped_) return;
        const bool isDark = object.isDark != context.isInverted;
        const std::uint32_t net = object.net != 0 ? object.net : context.net;
        switch (object.kind) {
        case Recording::Kind::Flash:
            emitFlash(*recording.shapes[object.index], placement.at(*points), isDark, net);
            points += 1;
            break;
        case Recording::Kind::Stroke: {
            const bool isArc = object.motion != Motion::Line;
            const Segment segment{points[1], isArc ? points[2] : Point(), object.motion};
            emitStroke(*recording.shapes[object.index], placement, points[0], segment, isDark, net);
            points += isArc ? 3 : 2;
            break;
        }
        case Recording::Kind::Region:
            emitRegion(placement, recording.regions[object.index], isDark, net);
            break;
        case Recording::Kind::Recording:
            drawCopies(recording.recordings[object.index], *points, {placement, !isDark, net});
            points += 1;
            break;
        }
    }
}

void ObjectStream::startNegative(Geometry::Bound2D const &box) {
    Path contour;
    contour.start = {box.getXLow(), box.getYLow()};
    contour.segments = {{{box.getXHigh(), box.getYLow()}, {}, Motion::Line},
                        {{box.getXHigh(), box.getYHigh()}, {}, Motion::Line},
                        {{box.getXLow(), box.getYHigh()}, {}, Motion::Line},
                        {contour.start, {}, Motion::Line}};
    emitRegion(contour, true, 0);
    isNegative_ = true;
}

bool ObjectStream::admits(Point const &point) {
    if (isInReach(point)) return true;
    if (numBeyond_++ == 0) lineBeyond_ = line_;
    return false;
}

bool ObjectStream::admits(Point const &from, Segment const &segment) {
    return admits(from) && admits(segment.end) && (segment.motion == Motion::Line || admits(segment.centre));
}

bool ObjectStream::prepare(std::uint32_t net, std::size_t numPoints) {
    numPoints_ += numPoints;
    if (++numEmitted_ > Limits::objects) stop("objects beyond the limit of one layer");
    if (numPoints_ > Limits::points) stop("points beyond the limit of one layer");
    if (isStopped_) return false;
    if (sink_.isFull()) {
        isStopped_ = true;
        return false;
    }
    if (net != sinkNet_) {
        sinkNet_ = net;
        sink_.setNet(nets_[net].first, nets_[net].second);
    }
    return true;
}

void ObjectStream::uniteBound(Box const &path, Box const &reach) {
    bound_.unite(path.xLow + reach.xLow, path.yLow + reach.yLow);
    bound_.unite(path.xHigh + reach.xHigh, path.yHigh + reach.yHigh);
}

void ObjectStream::emitFlash(PlacedShape const &shape, Point const &at, bool isDark, std::uint32_t net) {
    if (shape.shape.isNothing() || !admits(at) || !prepare(net, 1)) return;
    ++facts_.numFlashes;
    uniteBound({at.x, at.y, at.x, at.y, false}, shape.box);
    sink_.flash(shape.shape, at, isDark != isNegative_);
}

// Lines that draw nothing are handed on, too: they may be the edge of a board.
void ObjectStream::emitStroke(PlacedShape const &shape, Point const &from, Segment const &segment,
                              bool isDark, std::uint32_t net) {
    if (!admits(from, segment) || !prepare(net, 1)) return;
    ++facts_.numStrokes;
    if (segment.motion != Motion::Line) ++facts_.numArcs;
    Box path{from.x, from.y, from.x, from.y, false};
    unite(path, from, segment);
    uniteBound(path, shape.box);
    sink_.stroke(shape.shape, from, segment, isDark != isNegative_);
}

// Arcs that a transform would make elliptic are drawn as lines.
void ObjectStream::emitStroke(PlacedShape const &shape, Placement const &placement, Point const &from,
                              Segment const &segment, bool isDark, std::uint32_t net) {
    if (segment.motion == Motion::Line || placement.keepsArcs()) {
        emitStroke(shape, placement.at(from), placement.at(segment), isDark, net);
        return;
    }
    std::vector<Segment> lines;
    addLinesAlong(from, segment, lines);
    Point start = placement.at(from);
    for (Segment const &line : lines) {
        const Segment placed = placement.at(line);
        emitStroke(shape, start, placed, isDark, net);
        start = placed.end;
    }
}

void ObjectStream::emitRegion(Path const &contour, bool isDark, std::uint32_t net) {
    Box box{contour.start.x, contour.start.y, contour.start.x, contour.start.y, false};
    bool isAdmitted = admits(contour.start);
    std::size_t numArcs = 0;
    Point from = contour.start;
    for (Segment const &segment : contour.segments) {
        isAdmitted = isAdmitted && admits(from, segment);
        if (segment.motion != Motion::Line) ++numArcs;
        if (isAdmitted) unite(box, from, segment);
        from = segment.end;
    }
    if (!isAdmitted || !prepare(net, contour.segments.size())) return;
    ++facts_.numRegions;
    facts_.numArcs += numArcs;
    uniteBound(box, {0.0, 0.0, 0.0, 0.0, false});
    sink_.region(contour, isDark != isNegative_);
}

void ObjectStream::emitRegion(Placement const &placement, Path const &contour, bool isDark,
                              std::uint32_t net) {
    const bool keepsArcs = placement.keepsArcs();
    placed_.start = placement.at(contour.start);
    placed_.segments.clear();
    Point from = contour.start;
    for (Segment const &segment : contour.segments) {
        if (segment.motion == Motion::Line || keepsArcs) {
            placed_.segments.push_back(placement.at(segment));
        } else {
            const std::size_t first = placed_.segments.size();
            addLinesAlong(from, segment, placed_.segments);
            for (std::size_t i = first; i < placed_.segments.size(); ++i)
                placed_.segments[i] = placement.at(placed_.segments[i]);
        }
        from = segment.end;
    }
    emitRegion(placed_, isDark, net);
}

} // namespace EDA::Fabrication
