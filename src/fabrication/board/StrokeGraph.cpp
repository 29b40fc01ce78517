// Closed walks in strokes: each takes what lies outermost, so crossings and bridges do no harm.
#include "fabrication/board/StrokeGraph.h"

#include "fabrication/board/EndMatcher.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace EDA::Fabrication {

namespace {

double const pi = std::acos(-1.0);

constexpr double farthest = 1e6;      // millimetres; what lies beyond is no board
constexpr double sameMiddle = 1e-4;   // between the middles of two strokes of which one repeats the other
constexpr std::size_t mostTwins = 16; // different strokes between the same two places; more are of no board

bool isNear(Point const &point) { return std::abs(point.x) < farthest && std::abs(point.y) < farthest; }

double distance(Point const &a, Point const &b) { return std::hypot(a.x - b.x, a.y - b.y); }

Point onCircle(Point const &centre, double radius, double angle) {
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

Point middleOf(Point const &from, Segment const &segment) {
    if (segment.motion == Motion::Line) return {(from.x + segment.end.x) / 2, (from.y + segment.end.y) / 2};
    double const angle = std::atan2(from.y - segment.centre.y, from.x - segment.centre.x);
    double const half = signedSweep(from, segment) * pi / 360.0;
    return onCircle(segment.centre, distance(from, segment.centre), angle + half);
}

// How a half-edge leaves its place: its angle, and how it bends away from it, to the left when positive.
struct Leaving {
    double angle;
    double bend;
};

Leaving leavingOf(Point const &from, Point const &to, Point const &centre, Motion motion) {
    if (motion == Motion::Line) return {std::atan2(to.y - from.y, to.x - from.x), 0.0};
    double const radius = std::max(distance(from, centre), 1e-9);
    double const dx = from.x - centre.x;
    double const dy = from.y - centre.y;
    return motion == Motion::CounterClockwise ? Leaving{std::atan2(dx, -dy), 1.0 / radius}
                                              : Leaving{std::atan2(-dx, dy), -1.0 / radius};
}

Motion reversed(Motion motion) {
    if (motion == Motion::Line) return motion;
    return motion == Motion::Clockwise ? Motion::CounterClockwise : Motion::Clockwise;
}

} // namespace

double signedSweep(Point const &from, Segment const &segment) {
    if (segment.motion == Motion::Line) return 0.0;
    double const start = std::atan2(from.y - segment.centre.y, from.x - segment.centre.x);
    double const end = std::atan2(segment.end.y - segment.centre.y, segment.end.x - segment.centre.x);
    double sweep = (end - start) * 180.0 / pi;
    if (segment.motion == Motion::CounterClockwise) return sweep <= 0.0 ? sweep + 360.0 : sweep;
    return sweep >= 0.0 ? sweep - 360.0 : sweep;
}

StrokeGraph::StrokeGraph(std::vector<ProfileSink::Stroke> const &strokes) {
    edges_.reserve(strokes.size());
    for (ProfileSink::Stroke const &stroke : strokes)
        addStroke(stroke);
    makeNodes();
    closeTurns();
    dropRepeated();
    countDegrees();
}

void StrokeGraph::addStroke(ProfileSink::Stroke const &stroke) {
    Segment const &segment = stroke.segment;
    bool const isArc = segment.motion != Motion::Line;
    if (!isNear(stroke.from) || !isNear(segment.end) || (isArc && !isNear(segment.centre))) {
        ++numOpen_;
        return;
    }
    edges_.push_back({{stroke.from, segment.end}, segment.centre, segment.motion, {0, 0}});
}

// Ends in one square of a nanometre are one node.
void StrokeGraph::makeNodes() {
    struct End {
        std::int64_t x, y;
        Half half;
    };
    std::vector<End> ends;
    ends.reserve(2 * edges_.size());
    for (std::size_t i = 0; i < 2 * edges_.size(); ++i) {
        Point const &point = edges_[i / 2].ends[i % 2];
        ends.push_back({std::llround(point.x * 1e6), std::llround(point.y * 1e6), static_cast<Half>(i)});
    }
    std::sort(ends.begin(), ends.end(), [](End const &a, End const &b) {
        return std::tie(a.x, a.y, a.half) < std::tie(b.x, b.y, b.half);
    });
    for (std::size_t i = 0; i < ends.size(); ++i) {
        Edge &edge = edges_[ends[i].half / 2];
        bool const isNew = i == 0 || ends[i].x != ends[i - 1].x || ends[i].y != ends[i - 1].y;
        if (isNew) places_.push_back(edge.ends[ends[i].half % 2]);
        edge.nodes[ends[i].half % 2] = static_cast<Node>(places_.size() - 1);
    }
}

// Full turns are closed by themselves; strokes without length are nothing.
void StrokeGraph::closeTurns() {
    for (Edge const &edge : edges_) {
        if (edge.nodes[0] != edge.nodes[1] || edge.motion == Motion::Line) continue;
        Segment const turn{edge.ends[0], edge.centre, edge.motion};
        bool const isTurn =
            std::abs(signedSweep(edge.ends[0], {edge.ends[1], edge.centre, edge.motion})) > 180.0;
        if (isTurn) cycles_.push_back({edge.ends[0], {turn}});
    }
    edges_.erase(std::remove_if(edges_.begin(), edges_.end(),
                                [](Edge const &edge) { return edge.nodes[0] == edge.nodes[1]; }),
                 edges_.end());
}

void StrokeGraph::dropRepeated() {
    struct Key {
        Node low, high;
        std::size_t edge;
    };
    std::vector<Key> keys;
    keys.reserve(edges_.size());
    for (std::size_t i = 0; i < edges_.size(); ++i) {
        auto const [low, high] = std::minmax(edges_[i].nodes[0], edges_[i].nodes[1]);
        keys.push_back({low, high, i});
    }
    std::sort(keys.begin(), keys.end(), [](Key const &a, Key const &b) {
        return std::tie(a.low, a.high, a.edge) < std::tie(b.low, b.high, b.edge);
    });
    std::vector<Point> middles; // of the different strokes between two nodes
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i == 0 || keys[i].low != keys[i - 1].low || keys[i].high != keys[i - 1].high) middles.clear();
        Edge &edge = edges_[keys[i].edge];
        Point const middle = middleOf(edge.ends[0], {edge.ends[1], edge.centre, edge.motion});
        bool const isKnown = std::any_of(middles.begin(), middles.end(), [&](Point const &known) {
            return distance(known, middle) < sameMiddle;
        });
        edge.isLeft = !isKnown && middles.size() < mostTwins;
        if (edge.isLeft) middles.push_back(middle);
    }
    std::size_t const before = edges_.size();
    edges_.erase(std::remove_if(edges_.begin(), edges_.end(), [](Edge const &edge) { return !edge.isLeft; }),
                 edges_.end());
    numRepeated_ = before - edges_.size();
}

void StrokeGraph::countDegrees() {
    degrees_.assign(places_.size(), 0);
    for (Edge const &edge : edges_) {
        ++degrees_[edge.nodes[0]];
        ++degrees_[edge.nodes[1]];
    }
}

void StrokeGraph::joinEnds(double gap) {
    std::vector<LooseEnd> ends;
    for (std::size_t i = 0; i < 2 * edges_.size(); ++i) {
        Node const node = origin(static_cast<Half>(i));
        if (degrees_[node] == 1) ends.push_back({places_[node], i / 2, i});
    }
    for (EndPair const &pair : matchEnds(ends, gap)) {
        Edge &edge = edges_[pair.second / 2];
        Node const kept = origin(static_cast<Half>(pair.first));
        Node const gone = edge.nodes[pair.second % 2];
        Point const &a = places_[kept];
        Point const &b = places_[gone];
        widestGap_ = std::max(widestGap_, distance(a, b));
        places_[kept] = {(a.x + b.x) / 2, (a.y + b.y) / 2};
        edge.nodes[pair.second % 2] = kept;
        ++numJoined_;
    }
    countDegrees();
}

void StrokeGraph::makeRings() {
    struct Spoke {
        Node node;
        Leaving leaving;
        Half half;
    };
    std::vector<Spoke> spokes;
    spokes.reserve(2 * edges_.size());
    for (std::size_t i = 0; i < edges_.size(); ++i) {
        Edge const &edge = edges_[i];
        auto const half = static_cast<Half>(2 * i);
        spokes.push_back(
            {edge.nodes[0], leavingOf(edge.ends[0], edge.ends[1], edge.centre, edge.motion), half});
        spokes.push_back({edge.nodes[1],
                          leavingOf(edge.ends[1], edge.ends[0], edge.centre, reversed(edge.motion)),
                          half + 1});
    }
    std::sort(spokes.begin(), spokes.end(), [](Spoke const &a, Spoke const &b) {
        return std::tie(a.node, a.leaving.angle, a.leaving.bend, a.half) <
               std::tie(b.node, b.leaving.angle, b.leaving.bend, b.half);
    });
    after_.resize(spokes.size());
    before_.resize(spokes.size());
    firsts_.assign(places_.size(), 0);
    for (std::size_t begin = 0, end = 0; begin < spokes.size(); begin = end) {
        while (end < spokes.size() && spokes[end].node == spokes[begin].node)
            ++end;
        firsts_[spokes[begin].node] = spokes[begin].half;
        for (std::size_t i = begin; i < end; ++i) {
            Half const next = spokes[i + 1 < end ? i + 1 : begin].half;
            after_[spokes[i].half] = next;
            before_[next] = spokes[i].half;
        }
    }
}

void StrokeGraph::removeHalf(Half half) {
    Node const node = origin(half);
    if (firsts_[node] == half) firsts_[node] = after_[half];
    after_[before_[half]] = after_[half];
    before_[after_[half]] = before_[half];
    if (--degrees_[node] == 1) lonely_.push_back(after_[half]);
}

void StrokeGraph::removeEdge(std::size_t edge) {
    if (!edges_[edge].isLeft) return;
    edges_[edge].isLeft = false;
    removeHalf(static_cast<Half>(2 * edge));
    removeHalf(static_cast<Half>(2 * edge + 1));
}

// What hangs on one end closes nothing.
void StrokeGraph::prune() {
    while (!lonely_.empty()) {
        Half const half = lonely_.back();
        lonely_.pop_back();
        removeEdge(half / 2);
    }
}

// Where the walk around the outside passes the leftmost place of an edge, and which way: down.
StrokeGraph::Start StrokeGraph::startOf(std::size_t number) const {
    Edge const &edge = edges_[number];
    auto const half = static_cast<Half>(2 * number);
    Half const leftEnd = edge.ends[0].x <= edge.ends[1].x ? half : half + 1;
    double const x = std::min(edge.ends[0].x, edge.ends[1].x);
    if (edge.motion == Motion::Line) return {x, leftEnd, true};
    bool const isForward = edge.motion == Motion::CounterClockwise;
    Point const leftmost{edge.centre.x - distance(edge.ends[0], edge.centre), edge.centre.y};
    double const whole = std::abs(signedSweep(edge.ends[0], {edge.ends[1], edge.centre, edge.motion}));
    double const part = std::abs(signedSweep(edge.ends[0], {leftmost, edge.centre, edge.motion}));
    if (part < whole && leftmost.x < x) return {leftmost.x, isForward ? half : half + 1, false};
    return {x, leftEnd, true};
}

std::vector<Path> StrokeGraph::takeCycles() {
    makeRings();
    visits_.assign(places_.size(), 0);
    for (Half half = 0; half < after_.size(); ++half) {
        if (degrees_[origin(half)] == 1) lonely_.push_back(half);
    }
    prune();
    std::vector<Start> starts;
    starts.reserve(edges_.size());
    for (std::size_t i = 0; i < edges_.size(); ++i) {
        if (edges_[i].isLeft) starts.push_back(startOf(i));
    }
    std::sort(starts.begin(), starts.end(),
              [](Start const &a, Start const &b) { return std::tie(a.x, a.half) < std::tie(b.x, b.half); });
    for (Start const &start : starts) {
        // What was taken may not hold the leftmost place again, but what comes round it goes first.
        while (edges_[start.half / 2].isLeft)
            takeWalk(start.isAtNode ? firsts_[origin(start.half)] : start.half);
    }
    numOpen_ += static_cast<std::size_t>(
        std::count_if(edges_.begin(), edges_.end(), [](Edge const &edge) { return !edge.isUsed; }));
    return std::move(cycles_);
}

// At each place the sharpest turn to the right that there is leads around the outside.
void StrokeGraph::takeWalk(Half start) {
    std::vector<Half> walk;
    for (Half half = start; walk.empty() || half != start; half = after_[half ^ 1U])
        walk.push_back(half);
    splitWalk(walk);
    for (Half const half : walk)
        removeEdge(half / 2);
    prune();
}

// A walk that passes a place again has closed a path there.
void StrokeGraph::splitWalk(std::vector<Half> const &walk) {
    std::vector<Half> open;
    for (Half const half : walk) {
        open.push_back(half);
        visits_[origin(half)] = open.size();
        std::size_t const known = visits_[origin(half ^ 1U)];
        if (known == 0) continue;
        addCycle(open, known - 1);
        for (std::size_t i = known - 1; i < open.size(); ++i)
            visits_[origin(open[i])] = 0;
        open.resize(known - 1);
    }
}

// Where ends were joined across a gap, an arc no longer than that may have turned about.
bool StrokeGraph::isStillArc(Edge const &edge) const {
    double const drawn = signedSweep(edge.ends[0], {edge.ends[1], edge.centre, edge.motion});
    double const joined =
        signedSweep(places_[edge.nodes[0]], {places_[edge.nodes[1]], edge.centre, edge.motion});
    return std::abs(drawn - joined) < 90.0;
}

void StrokeGraph::addCycle(std::vector<Half> const &walk, std::size_t begin) {
    bool const isBridge = walk.size() - begin == 2 && walk[begin] / 2 == walk[begin + 1] / 2;
    if (isBridge) return; // to and fro
    Path path;
    path.start = places_[origin(walk[begin])];
    for (std::size_t i = begin; i < walk.size(); ++i) {
        Edge &edge = edges_[walk[i] / 2];
        edge.isUsed = true;
        Motion const motion = walk[i] % 2 == 0 ? edge.motion : reversed(edge.motion);
        path.segments.push_back(
            {places_[origin(walk[i] ^ 1U)], edge.centre, isStillArc(edge) ? motion : Motion::Line});
    }
    cycles_.push_back(std::move(path));
}

} // namespace EDA::Fabrication
