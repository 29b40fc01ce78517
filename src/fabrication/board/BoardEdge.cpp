// The edge of a board from what a profile layer draws.
#include "fabrication/board/BoardEdge.h"

#include "fabrication/board/StrokeGraph.h"
#include "model/Enclosure.h"
#include "model/GrowingBoundTree.h"
#include "model/OutlineIndex.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace EDA::Fabrication {

namespace {

double const pi = std::acos(-1.0);

// Gaps that come from rounding; wider ones are closed only where the edge stays open otherwise.
constexpr double smallGap = 0.01;
constexpr double wideGap = 0.1;
constexpr double toldGap = 1e-5; // below is arithmetic

constexpr double growth = 1.001;   // of the largest area: what makes a wide gap worth closing
constexpr double leastArea = 1e-6; // square millimetres
constexpr double sameBound = 0.002;
constexpr double leastChord = 1e-9;

// Of the copper's bound: what the edge holds of it at least, as connectors may stand out, and what a cut-out
// holds at most, as a board is where its copper is.
constexpr double heldByEdge = 0.98;
constexpr double heldByCutOut = 0.9;
// An edge that is drawn twice, or with a line for its margin, has hardly another area.
constexpr double sameEdge = 1.25;

// The longest arc in one piece: the centre of a nearly full turn is not well given by its ends and its angle.
constexpr double longestArc = 270.0;

bool isTurn(Path const &path) {
    return path.segments.size() == 1 && path.segments[0].motion != Motion::Line &&
           path.segments[0].end == path.start;
}

// An arc over a chord without length has no centre, so its end joins by a straight edge.
void addArcEnd(Point const &from, Point const &end, double sweep, double scale, EDAOutline &outline) {
    bool const hasChord = std::hypot(end.x - from.x, end.y - from.y) > leastChord;
    outline.addPoint(0, scale * end.x, scale * end.y, hasChord ? sweep : 0.0);
}

void addSegment(Point const &from, Segment const &segment, double scale, EDAOutline &outline) {
    double const sweep = signedSweep(from, segment);
    if (std::abs(sweep) <= longestArc) {
        addArcEnd(from, segment.end, sweep, scale, outline);
        return;
    }
    double const radius = std::hypot(from.x - segment.centre.x, from.y - segment.centre.y);
    double const angle =
        std::atan2(from.y - segment.centre.y, from.x - segment.centre.x) + sweep * pi / 360.0;
    Point const middle{segment.centre.x + radius * std::cos(angle),
                       segment.centre.y + radius * std::sin(angle)};
    addArcEnd(from, middle, sweep / 2.0, scale, outline);
    addArcEnd(middle, segment.end, sweep / 2.0, scale, outline);
}

EDAOutline toOutline(Path const &path, double scale, bool isHole) {
    EDAOutline outline(isHole);
    if (isTurn(path)) {
        Point const &centre = path.segments[0].centre;
        outline.addPoint(0, scale * centre.x, scale * centre.y, 0.0);
        outline.addPoint(0, scale * path.start.x, scale * path.start.y, 360.0);
        return outline;
    }
    outline.reservePoints(path.segments.size() + 1);
    outline.addPoint(0, scale * path.start.x, scale * path.start.y, 0.0);
    Point from = path.start;
    for (Segment const &segment : path.segments) {
        addSegment(from, segment, scale, outline);
        from = segment.end;
    }
    if (from != path.start) outline.addPoint(0, scale * path.start.x, scale * path.start.y, 0.0);
    return outline;
}

Path reversed(Path const &path) {
    Path result;
    result.start = path.segments.back().end;
    for (std::size_t i = path.segments.size(); i-- > 0;) {
        Segment segment = path.segments[i];
        segment.end = i > 0 ? path.segments[i - 1].end : path.start;
        if (segment.motion == Motion::Clockwise) {
            segment.motion = Motion::CounterClockwise;
        } else if (segment.motion == Motion::CounterClockwise) {
            segment.motion = Motion::Clockwise;
        }
        result.segments.push_back(segment);
    }
    return result;
}

bool isCounterClockwise(EDAOutline const &outline) {
    EDAOutline::PointList const &points = outline.getPoints(true);
    double twice = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        auto const &[x, y] = points[i];
        auto const &[nextX, nextY] = points[i + 1 < points.size() ? i + 1 : 0];
        // Relative to the first, so that far from the origin nothing is lost.
        twice += (x - points[0].first) * (nextY - points[0].second) -
                 (nextX - points[0].first) * (y - points[0].second);
    }
    return twice > 0.0;
}

// Board edges run counter-clockwise, cut-outs clockwise.
EDAOutline turnedOutline(Path const &path, double scale, bool isHole) {
    EDAOutline outline = toOutline(path, scale, isHole);
    if (isTurn(path) || isCounterClockwise(outline) != isHole) return outline;
    return toOutline(reversed(path), scale, isHole);
}

// One closed path, in millimetres.
struct Loop {
    Path path;
    EDAOutline outline;
    double area;
};

std::vector<Loop> toLoops(std::vector<Path> paths) {
    std::vector<Loop> loops;
    for (Path &path : paths) {
        EDAOutline outline = toOutline(path, 1.0, false);
        double const area = outline.getArea();
        if (std::isfinite(area) && area > leastArea)
            loops.push_back({std::move(path), std::move(outline), area});
    }
    std::stable_sort(loops.begin(), loops.end(),
                     [](Loop const &a, Loop const &b) { return a.area > b.area; });
    return loops;
}

bool areSame(Loop const &a, Loop const &b) {
    return a.area < b.area * growth && b.area < a.area * growth &&
           a.outline.getBound().contains(b.outline.getBound(), sameBound) &&
           b.outline.getBound().contains(a.outline.getBound(), sameBound);
}

double areaOf(Geometry::Bound2D const &bound) { return bound.getXSize() * bound.getYSize(); }

// The share of the copper's bound that lies within the bound of the loop; 0 where nothing is known of copper.
double shareHeld(Loop const &loop, Geometry::Bound2D const &copper) {
    double const area = areaOf(copper);
    if (!(area > 0.0)) return 0.0;
    Geometry::Bound2D const bound = loop.outline.getBound();
    double const width =
        std::min(bound.getXHigh(), copper.getXHigh()) - std::max(bound.getXLow(), copper.getXLow());
    double const height =
        std::min(bound.getYHigh(), copper.getYHigh()) - std::max(bound.getYLow(), copper.getYLow());
    return std::max(width, 0.0) * std::max(height, 0.0) / area;
}

// The same for a loop that may be far from filling its bound.
double shareCovered(Loop const &loop, Geometry::Bound2D const &copper) {
    double const area = areaOf(loop.outline.getBound());
    return area > 0.0 ? shareHeld(loop, copper) * std::min(1.0, loop.area / area) : 0.0;
}

// Closed paths, the largest first, and which of them is the edge.
struct Found {
    std::vector<Loop> loops;
    std::size_t edge = 0;
    bool holdsCopper = false;

    double area() const { return loops.empty() ? 0.0 : loops[edge].area; }
};

Found withEdge(std::vector<Loop> loops, Geometry::Bound2D const &copper) {
    Found found{std::move(loops)};
    auto const holds = [&copper](Loop const &loop) { return shareHeld(loop, copper) >= heldByEdge; };
    auto const smallest = std::find_if(found.loops.rbegin(), found.loops.rend(), holds);
    if (smallest == found.loops.rend()) return found;
    auto const edge = std::find_if(found.loops.begin(), found.loops.end(), [&](Loop const &loop) {
        return loop.area <= smallest->area * sameEdge && holds(loop);
    });
    found.edge = static_cast<std::size_t>(edge - found.loops.begin());
    found.holdsCopper = true;
    return found;
}

// Whether the one, with its wider gaps closed, has another edge.
bool isBetter(Found const &wide, Found const &narrow) {
    if (wide.holdsCopper != narrow.holdsCopper) return wide.holdsCopper;
    if (wide.area() > narrow.area() * growth) return true;
    return wide.holdsCopper && narrow.area() > wide.area() * growth; // the narrow one is a frame
}

// Closes gaps of rounding, and wider ones where that makes the edge.
Found findLoops(ProfileSink const &profile, Geometry::Bound2D const &copper, Notes &notes) {
    Notes narrowNotes, wideNotes;
    Found narrow = withEdge(toLoops(closedPaths(profile, smallGap, narrowNotes)), copper);
    Found wide;
    if (narrowNotes.has(NoteKind::LeftOut))
        wide = withEdge(toLoops(closedPaths(profile, wideGap, wideNotes)), copper);
    bool const takesWide = isBetter(wide, narrow);
    for (Note const &note : (takesWide ? wideNotes : narrowNotes).list())
        notes.add(note.kind, note.what, note.line, note.count);
    return takesWide ? std::move(wide) : std::move(narrow);
}

// The edge and what lies in it, the largest first.
class Nesting {
public:
    Nesting(Loop const &edge, Geometry::Bound2D const &copper)
        : edge_(edge), copper_(copper), enclosure_(edge.outline) {}

    void addLarger(Loop const &loop) {
        if (!areSame(edge_, loop)) ++numLarger_;
    }

    void add(Loop const &loop) {
        if (areSame(edge_, loop)) return;
        if (!enclosure_.encloses(loop.outline)) {
            OutlineIndex index;
            bool const isAcross = OutlineIndex::overlap(edge_.outline, index_, loop.outline, index);
            ++(isAcross ? numCrossing_ : numBeside_);
        } else if (shareCovered(loop, copper_) > heldByCutOut) {
            ++numAroundCopper_;
        } else {
            addWithin(loop);
        }
    }

    std::vector<Loop const *> const &cutOuts() const { return cutOuts_; }

    void tell(Notes &notes) const {
        notes.add(NoteKind::LeftOut, "closed paths larger than the board's edge, such as frames", 0,
                  numLarger_);
        notes.add(NoteKind::LeftOut, "loops around most of the copper inside the board's edge", 0,
                  numAroundCopper_);
        notes.add(NoteKind::LeftOut, "closed paths beside the one that is taken for the board's edge", 0,
                  numBeside_);
        notes.add(NoteKind::LeftOut, "closed paths across the board's edge", 0, numCrossing_);
        notes.add(NoteKind::LeftOut, "closed paths within cut-outs of the board", 0, numDeeper_);
    }

private:
    void addWithin(Loop const &loop) {
        bool isDouble = false;
        bool const isDeeper = bounds_.any(
            [&loop](Geometry::Bound2D const &box) {
                return box.contains(loop.outline.getBound(), sameBound);
            },
            [&](std::size_t number) {
                isDouble = areSame(*cutOuts_[number], loop);
                return isDouble || enclosures_[number].encloses(loop.outline);
            });
        if (isDouble) return;
        if (isDeeper) {
            ++numDeeper_;
            return;
        }
        bounds_.add(loop.outline.getBound());
        cutOuts_.push_back(&loop);
        enclosures_.emplace_back(loop.outline);
    }

    Loop const &edge_;
    Geometry::Bound2D const &copper_;
    Enclosure enclosure_;
    OutlineIndex index_;
    GrowingBoundTree bounds_;
    std::vector<Loop const *> cutOuts_;
    std::vector<Enclosure> enclosures_;
    std::size_t numLarger_ = 0;
    std::size_t numAroundCopper_ = 0;
    std::size_t numBeside_ = 0;
    std::size_t numCrossing_ = 0;
    std::size_t numDeeper_ = 0;
};

void tellGaps(StrokeGraph const &graph, Notes &notes) {
    if (graph.widestGap() <= toldGap) return;
    if (graph.widestGap() <= smallGap) {
        notes.add(NoteKind::Normalised, "gaps of up to 0.01 mm in the board's edge, closed", 0,
                  graph.numJoined());
    } else {
        notes.add(NoteKind::Guessed, "gaps of up to 0.1 mm in the board's edge, closed", 0,
                  graph.numJoined());
    }
}

} // namespace

void ProfileSink::flash(Shape const &, Point const &, bool) {}

void ProfileSink::stroke(Shape const &, Point const &from, Segment const &segment, bool dark) {
    if (dark) strokes_.push_back({from, segment});
}

void ProfileSink::region(Path const &contour, bool dark) {
    if (dark && !contour.segments.empty()) contours_.push_back(contour);
}

std::vector<Path> closedPaths(ProfileSink const &profile, double gap, Notes &notes) {
    StrokeGraph graph(profile.strokes());
    graph.joinEnds(gap);
    std::vector<Path> paths = graph.takeCycles();
    notes.add(NoteKind::Normalised, "strokes of the board's edge drawn twice", 0, graph.numRepeated());
    tellGaps(graph, notes);
    notes.add(NoteKind::LeftOut, "strokes that are part of no closed path", 0, graph.numOpen());
    paths.insert(paths.end(), profile.contours().begin(), profile.contours().end());
    return paths;
}

bool findBoardEdge(ProfileSink const &profile, double scale, Geometry::Bound2D const &copper,
                   EDAOutline &outline, Notes &notes) {
    outline.clear();
    Found const found = findLoops(profile, copper, notes);
    if (found.loops.empty()) return false;
    Nesting nesting(found.loops[found.edge], copper);
    for (std::size_t i = 0; i < found.edge; ++i)
        nesting.addLarger(found.loops[i]);
    for (std::size_t i = found.edge + 1; i < found.loops.size(); ++i)
        nesting.add(found.loops[i]);
    nesting.tell(notes);
    EDAOutline edge = turnedOutline(found.loops[found.edge].path, scale, false);
    for (Loop const *const cutOut : nesting.cutOuts())
        edge.addInternalOutline(turnedOutline(cutOut->path, scale, true));
    outline.resetOutline(edge, true);
    return true;
}

} // namespace EDA::Fabrication
