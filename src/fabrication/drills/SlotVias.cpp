// Slots as vias with an outline.
#include "fabrication/drills/DrillWriter.h"
#include "host/Geometry/ClippingEngine.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace EDA::Fabrication {

namespace {

using Geometry::Clip::Contour;
using Geometry::Clip::Engine;
using Flat = Geometry::Vec2T<double>;

// A path crosses itself a few times at most; a layer of copper, which the engine's own limits are for, may do
// so a million times.
constexpr Geometry::Clip::NodingLimits pathLimits{2e4, 4.0, 2e6, 100.0};

constexpr double fullTurn = 6.283185307179586;

// Steps of an arc whose chords lie within the tolerance.
int stepsOf(double radius, double sweep) {
    if (!(radius > chordTolerance)) return 4;
    const double step = 2.0 * std::acos(1.0 - chordTolerance / radius);
    return std::clamp(static_cast<int>(std::ceil(std::fabs(sweep) / step)), 1, 1000);
}

void addArc(std::vector<Point> &points, Segment const &segment, int mostSteps) {
    const Point start = points.back(), centre = segment.centre;
    const double from = std::atan2(start.y - centre.y, start.x - centre.x);
    double sweep = std::atan2(segment.end.y - centre.y, segment.end.x - centre.x) - from;
    if (segment.end == start) sweep = 0.0;
    if (segment.motion == Motion::CounterClockwise && sweep <= 0.0) sweep += fullTurn;
    if (segment.motion == Motion::Clockwise && sweep >= 0.0) sweep -= fullTurn;
    const double radius = std::hypot(start.x - centre.x, start.y - centre.y);
    const int steps = std::min(stepsOf(radius, sweep), mostSteps);
    for (int i = 1; i < steps; ++i) {
        const double angle = from + sweep * i / steps;
        points.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
    }
    points.push_back(segment.end);
}

// Beyond so many points of one path, or of all bent paths of a file, arcs are coarse and the hull has to do.
constexpr std::size_t mostPieces = 20'000;
constexpr std::size_t mostPiecesOfFile = 100'000;
constexpr int coarseSteps = 16; // of an arc, and of a disc

std::vector<Point> flattened(Path const &path, bool isCoarse) {
    std::vector<Point> points{path.start};
    for (Segment const &segment : path.segments) {
        if (segment.motion == Motion::Line) {
            if (segment.end != points.back()) points.push_back(segment.end);
        } else {
            addArc(points, segment, isCoarse || points.size() > mostPieces ? coarseSteps : 1000);
        }
    }
    return points;
}

// The ends of a path that lies on one line, going there and back maybe. False for any other.
bool findEnds(std::vector<Point> const &points, Point &low, Point &high) {
    const Point start = points.front();
    const auto distance = [&](Point const &point) {
        return std::hypot(point.x - start.x, point.y - start.y);
    };
    const Point far = *std::max_element(points.begin(), points.end(), [&](Point const &a, Point const &b) {
        return distance(a) < distance(b);
    });
    const double length = distance(far);
    if (!(length > 0.0)) return false;
    const double dx = (far.x - start.x) / length, dy = (far.y - start.y) / length;
    double least = 0.0, most = 0.0;
    for (Point const &point : points) {
        const double along = (point.x - start.x) * dx + (point.y - start.y) * dy;
        const double across = (point.y - start.y) * dx - (point.x - start.x) * dy;
        if (std::fabs(across) > 1e-6) return false;
        least = std::min(least, along);
        most = std::max(most, along);
    }
    low = {start.x + least * dx, start.y + least * dy};
    high = {start.x + most * dx, start.y + most * dy};
    return true;
}

// Everything within the radius of a line, counter-clockwise.
std::vector<Flat> stadium(Point const &from, Point const &to, double radius) {
    const double angle = std::atan2(to.y - from.y, to.x - from.x);
    const int steps = stepsOf(radius, 0.5 * fullTurn);
    std::vector<Flat> points;
    for (int end = 0; end < 2; ++end) {
        Point const &centre = end == 0 ? to : from;
        for (int i = 0; i <= steps; ++i) {
            const double at = angle + 0.25 * fullTurn * (end == 0 ? -1.0 : 1.0) + 0.5 * fullTurn * i / steps;
            points.emplace_back(centre.x + radius * std::cos(at), centre.y + radius * std::sin(at));
        }
    }
    return points;
}

// Twice the area.
double doubleArea(std::vector<Flat> const &points) {
    double sum = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        Flat const &a = points[i], &b = points[(i + 1) % points.size()];
        sum += a.x * b.y - a.y * b.x;
    }
    return std::fabs(sum);
}

// The convex hull, for paths that are too tangled for more.
std::vector<Flat> hullOf(std::vector<Flat> points) {
    std::sort(points.begin(), points.end(),
              [](Flat const &a, Flat const &b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    std::vector<Flat> hull;
    for (int side = 0; side < 2; ++side) {
        const std::size_t first = hull.size();
        for (Flat const &point : points) {
            while (hull.size() >= first + 2) {
                Flat const &a = hull[hull.size() - 2], &b = hull.back();
                if ((b.x - a.x) * (point.y - a.y) - (b.y - a.y) * (point.x - a.x) > 0.0) break;
                hull.pop_back();
            }
            hull.push_back(point);
        }
        hull.pop_back(); // starts the other side
        std::reverse(points.begin(), points.end());
    }
    return hull;
}

std::vector<Flat> hullOf(std::vector<Point> const &points, double radius) {
    std::vector<Flat> all;
    all.reserve(points.size() * coarseSteps);
    for (Point const &point : points) {
        for (int i = 0; i < coarseSteps; ++i) {
            const double angle = fullTurn * i / coarseSteps;
            all.emplace_back(point.x + radius * std::cos(angle), point.y + radius * std::sin(angle));
        }
    }
    return hullOf(std::move(all));
}

// Of the bent paths of a file.
struct BentPaths {
    double mostEnclosed; // square millimetres that one may cut out
    std::size_t pieces = 0;
    std::size_t numHulls = 0;
    std::size_t numAround = 0; // that cut out more
};

// The outer edge of what the tool passes. What lies within a closed path falls out, so that it is of the
// hole.
std::vector<Flat> swept(std::vector<Point> const &points, double radius, BentPaths &bent, bool &isHull) {
    bent.pieces += points.size();
    isHull = true;
    if (points.size() > mostPieces || bent.pieces > mostPiecesOfFile) return hullOf(points, radius);
    Engine engine(pathLimits);
    for (std::size_t i = 1; i < points.size(); ++i) {
        const std::vector<Flat> piece = stadium(points[i - 1], points[i], radius);
        engine.addContour(Engine::Subject, piece.data(), piece.size());
    }
    try {
        using Geometry::Clip::Inside;
        const std::vector<Contour> contours =
            engine.run({Inside::Operation::Union, Inside::Fill::NonZero, Inside::Fill::NonZero});
        const auto largest =
            std::max_element(contours.begin(), contours.end(), [](Contour const &a, Contour const &b) {
                return doubleArea(a.points) < doubleArea(b.points);
            });
        isHull = largest == contours.end();
        if (!isHull) return largest->points;
    } catch (std::logic_error const &) { // refused by the engine
    }
    return hullOf(points, radius);
}

Point middleOf(std::vector<Point> const &points) {
    Geometry::Bound2D bound;
    for (Point const &point : points)
        bound.unite(point.x, point.y);
    return {0.5 * (bound.getXLow() + bound.getXHigh()), 0.5 * (bound.getYLow() + bound.getYHigh())};
}

void addStadium(EDAOutline &outline, Point const &low, Point const &high, double radius, double scale) {
    const double length = std::hypot(high.x - low.x, high.y - low.y);
    const double x = -radius * (high.y - low.y) / length, y = radius * (high.x - low.x) / length;
    outline.addPoint(0, scale * (low.x - x), scale * (low.y - y), 0.0);
    outline.addPoint(0, scale * (high.x - x), scale * (high.y - y), 0.0);
    outline.addPoint(0, scale * (high.x + x), scale * (high.y + y), 180.0);
    outline.addPoint(0, scale * (low.x + x), scale * (low.y + y), 0.0);
    outline.addPoint(0, scale * (low.x - x), scale * (low.y - y), 180.0);
}

void addContour(EDAOutline &outline, std::vector<Flat> const &points, double scale) {
    if (points.empty()) return;
    outline.reservePoints(points.size() + 1);
    for (Flat const &point : points)
        outline.addPoint(0, scale * point.x, scale * point.y, 0.0);
    outline.makeClosed();
}

// At least what lies within the edge and is not passed by the tool itself.
double enclosedArea(std::vector<Flat> const &edge, std::vector<Point> const &points, double radius) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
    return 0.5 * doubleArea(edge) - radius * (2.0 * length + 0.5 * fullTurn * radius);
}

// About the centre, which is the middle of the box around the path. A path without length stays round. False
// where the path is no hole.
bool shape(EDAVia &via, Path const &path, double radius, double scale, BentPaths &bent) {
    std::vector<Point> points = flattened(path, bent.pieces > mostPiecesOfFile);
    const Point centre = middleOf(points);
    for (Point &point : points)
        point = {point.x - centre.x, point.y - centre.y};
    via.setCentre(scale * centre.x, scale * centre.y);
    Point low, high;
    if (points.size() < 2) return true;
    if (findEnds(points, low, high)) {
        addStadium(via.getOutline(), low, high, radius, scale);
        return true;
    }
    bool isHull = false;
    const std::vector<Flat> edge = swept(points, radius, bent, isHull);
    if (enclosedArea(edge, points, radius) > bent.mostEnclosed) {
        ++bent.numAround;
        return false;
    }
    if (isHull) ++bent.numHulls;
    addContour(via.getOutline(), edge, scale);
    return true;
}

double mostEnclosedOf(Geometry::Bound2D const &copper) {
    const double area = copper.getXSize() * copper.getYSize();
    return area > 0.0 ? 0.25 * area : std::numeric_limits<double>::infinity();
}

} // namespace

std::vector<EDAVia> slotVias(DrillData const &data, std::string const &startLayer,
                             std::string const &endLayer, std::size_t first, double scale,
                             Geometry::Bound2D const &copper, Notes &notes) {
    std::vector<EDAVia> vias;
    BentPaths bent{mostEnclosedOf(copper)};
    for (DrillSlot const &slot : data.slotHoles) {
        const auto tool = data.tools.find(slot.tool);
        if (tool == data.tools.end() || !(tool->second.diameter > 0.0)) continue;
        EDAVia via;
        via.setHoleType("VIA");
        via.setDiameter(scale * tool->second.diameter);
        via.setPlated(tool->second.plated.value_or(false));
        via.setLayers(startLayer, endLayer);
        if (!shape(via, slot.path, 0.5 * tool->second.diameter, scale, bent)) continue;
        via.setName("Slot" + std::to_string(first++));
        vias.push_back(std::move(via));
    }
    notes.add(NoteKind::LeftOut, "routed paths around the board or a large part of it: no holes", 0,
              bent.numAround);
    notes.add(NoteKind::LeftOut, "shapes of slots too tangled to follow: their convex hull is the hole", 0,
              bent.numHulls);
    return vias;
}

} // namespace EDA::Fabrication
