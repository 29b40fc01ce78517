// Making shapes for the clipping benchmark, and their areas by brute force.
#include "ClipShapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace EDABench {

namespace {

using Point = Geometry::Vec2T<double>;

struct Segment {
    Point a;
    Point b;
    int side;
};

Points rectangle(double x, double y, double width, double height) {
    return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

int columnsOf(int count) { return static_cast<int>(std::ceil(std::sqrt(count))); }

void addSegments(std::vector<Segment> &segments, Shape const &shape, int side) {
    for (Points const &points : shape)
        for (std::size_t i = 0; i < points.size(); ++i)
            segments.push_back({points[i], points[(i + 1) % points.size()], side});
}

std::vector<Segment> segmentsOf(Shape const &subject, Shape const &clip) {
    std::vector<Segment> segments;
    addSegments(segments, subject, 0);
    addSegments(segments, clip, 1);
    return segments;
}

std::vector<double> heightsOf(std::vector<Segment> const &segments) {
    std::vector<double> heights;
    for (Segment const &s : segments) {
        heights.push_back(s.a.y);
        for (Segment const &t : segments) {
            double const sx = s.b.x - s.a.x, sy = s.b.y - s.a.y, tx = t.b.x - t.a.x, ty = t.b.y - t.a.y;
            double const below = sx * ty - sy * tx;
            if (below == 0.0) continue;
            double const part = ((t.a.x - s.a.x) * ty - (t.a.y - s.a.y) * tx) / below;
            if (part >= 0.0 && part <= 1.0) heights.push_back(s.a.y + part * sy);
        }
    }
    std::sort(heights.begin(), heights.end());
    return heights;
}

// How much of the line at this height is inside.
double widthAt(double y, std::vector<Segment> const &segments, Operation operation) {
    std::vector<std::pair<double, int>> crossings;
    for (Segment const &s : segments)
        if ((s.a.y > y) != (s.b.y > y))
            crossings.emplace_back(s.a.x + (y - s.a.y) * (s.b.x - s.a.x) / (s.b.y - s.a.y), s.side);
    std::sort(crossings.begin(), crossings.end());
    Geometry::Clip::Inside const inside(operation, Fill::EvenOdd, Fill::EvenOdd);
    double width = 0.0;
    int counts[2] = {0, 0};
    for (std::size_t i = 0; i < crossings.size(); ++i) {
        if (inside(counts)) width += crossings[i].first - crossings[i - 1].first;
        ++counts[crossings[i].second];
    }
    return width;
}

Points degenerateContour(Random &random, int places, bool steps) {
    Points points;
    int const count = 3 + random.below(10);
    for (int i = 0; i < count; ++i) {
        double const x = random.below(places), y = random.below(places);
        if (steps && i > 0) points.emplace_back(x, points.back().y);
        points.emplace_back(x, y);
    }
    if (steps) points.emplace_back(points.front().x, points.back().y);
    return points;
}

} // namespace

Shape overlappingCircles(int count, unsigned seed) {
    constexpr int corners = 36;
    constexpr double step = 2.0 * 3.14159265358979323846 / corners;
    Random random(seed);
    double const side = 1.5 * std::sqrt(count);
    Shape shape;
    for (int i = 0; i < count; ++i) {
        double const x = side * random.unit(), y = side * random.unit();
        Points circle;
        for (int k = 0; k < corners; ++k)
            circle.emplace_back(x + std::cos(step * k), y + std::sin(step * k));
        shape.push_back(std::move(circle));
    }
    return shape;
}

Shape separateRectangles(int count, unsigned seed) {
    Random random(seed);
    int const columns = columnsOf(count);
    Shape shape;
    for (int i = 0; i < count; ++i)
        shape.push_back(rectangle(3.0 * (i % columns) + random.unit(), 3.0 * (i / columns) + random.unit(),
                                  0.5 + random.unit(), 0.5 + random.unit()));
    return shape;
}

Shape touchingRectangles(int count) {
    int const columns = columnsOf(count);
    Shape shape;
    for (int i = 0; i < count; ++i)
        shape.push_back(rectangle(i % columns, i / columns, 1.0, 1.0));
    return shape;
}

Shape degenerateShape(Random &random, int places, bool steps) {
    Shape shape;
    int const contours = 1 + random.below(2);
    for (int i = 0; i < contours; ++i)
        shape.push_back(degenerateContour(random, places, steps));
    return shape;
}

double areaOf(Shape const &shape) {
    double twice = 0.0;
    for (Points const &points : shape)
        for (std::size_t i = 1; i + 1 < points.size(); ++i)
            twice += (points[i].x - points[0].x) * (points[i + 1].y - points[0].y) -
                     (points[i + 1].x - points[0].x) * (points[i].y - points[0].y);
    return 0.5 * twice;
}

double areaByCells(Operation operation, Shape const &subject, Shape const &clip, int places) {
    std::vector<Segment> const segments = segmentsOf(subject, clip);
    Geometry::Clip::Inside const inside(operation, Fill::EvenOdd, Fill::EvenOdd);
    double area = 0.0;
    for (int x = 0; x < places; ++x)
        for (int y = 0; y < places; ++y) {
            int counts[2] = {0, 0};
            for (Segment const &s : segments)
                if ((s.a.y > y + 0.5) != (s.b.y > y + 0.5) && s.a.x < x + 0.5) ++counts[s.side];
            if (inside(counts)) area += 1.0;
        }
    return area;
}

double areaBySlabs(Operation operation, Shape const &subject, Shape const &clip) {
    std::vector<Segment> const segments = segmentsOf(subject, clip);
    std::vector<double> const heights = heightsOf(segments);
    double area = 0.0;
    for (std::size_t i = 1; i < heights.size(); ++i)
        area +=
            (heights[i] - heights[i - 1]) * widthAt(0.5 * (heights[i] + heights[i - 1]), segments, operation);
    return area;
}

} // namespace EDABench
