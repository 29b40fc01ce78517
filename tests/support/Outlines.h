// Outlines from one line of text, seeded random outlines, and a matcher for lists of points.
#pragma once

#include "model/EDAOutline.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace EDA {

inline void PrintTo(EDAOutline::EDAPoint const &point, std::ostream *out) {
    *out << '(' << point.x << ',' << point.y;
    if (point.centered)
        *out << (point.clockwise ? '>' : '<') << point.centreX << ',' << point.centreY;
    else if (point.isArc())
        *out << '@' << point.angle;
    *out << ')';
}

inline void PrintTo(EDAOutline const &outline, std::ostream *out) {
    *out << (outline.isHole() ? "hole" : "outline") << '[' << outline.numPoints() << " points";
    int shown = 0;
    for (auto point = outline.beginPoints(); point != outline.endPoints() && shown < 20; ++point, ++shown) {
        *out << ' ';
        PrintTo(*point, out);
    }
    *out << "; " << outline.numInternalOutlines() << " internal]";
}

namespace test {

using Points = EDAOutline::PointList;

// Reads numbers and signs from a text; throws where the text has something else.
class PointText {
public:
    explicit PointText(char const *text) : rest_(text) {}

    bool atEnd() {
        while (*rest_ == ' ')
            ++rest_;
        return *rest_ == '\0';
    }
    bool take(char sign) {
        if (*rest_ != sign) return false;
        ++rest_;
        return true;
    }
    std::pair<double, double> pair() {
        double const first = number();
        if (!take(',')) throw std::invalid_argument(std::string("comma expected before: ") + rest_);
        return {first, number()};
    }
    double number() {
        char *end = nullptr;
        double const value = std::strtod(rest_, &end);
        if (end == rest_) throw std::invalid_argument(std::string("number expected before: ") + rest_);
        rest_ = end;
        return value;
    }

private:
    char const *rest_;
};

// Adds the points of the text to an outline: "x,y" straight, "x,y@90" after an arc of 90 degrees,
// "x,y<cx,cy" after an anticlockwise and "x,y>cx,cy" after a clockwise arc about a centre.
inline void addPoints(EDAOutline &target, int index, char const *text) {
    for (PointText rest(text); !rest.atEnd();) {
        auto const [x, y] = rest.pair();
        bool const anticlockwise = rest.take('<');
        if (anticlockwise || rest.take('>')) {
            auto const [centreX, centreY] = rest.pair();
            target.addPoint(index, x, y, centreX, centreY, !anticlockwise);
        } else {
            target.addPoint(index, x, y, rest.take('@') ? rest.number() : 0.0);
        }
    }
}

// An outline from one line of text, as `outline("0,0 4,0 4,2 0,2")`.
inline EDAOutline outline(char const *text) {
    EDAOutline result;
    addPoints(result, 0, text);
    return result;
}

// The same as a hole.
inline EDAOutline hole(char const *text) {
    EDAOutline result(true);
    addPoints(result, 0, text);
    return result;
}

// An outline with one hole.
inline EDAOutline outline(char const *text, char const *holeText) {
    EDAOutline result = outline(text);
    result.addInternalOutline(hole(holeText));
    return result;
}

// The stored vertices without their arc fields.
inline Points storedPoints(EDAOutline const &outline) {
    Points points;
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        points.emplace_back(point->x, point->y);
    return points;
}

// The points of a text without arcs.
inline Points points(char const *text) {
    Points result;
    for (PointText rest(text); !rest.atEnd();)
        result.push_back(rest.pair());
    return result;
}

// Equal values, where NaN equals NaN, and otherwise the difference is at most the tolerance.
inline bool sameNumber(double a, double b, double tolerance) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return a == b || std::abs(a - b) <= tolerance;
}

// Matches a list of points within a tolerance in each coordinate; 0 asks for identical numbers.
MATCHER_P2(PointsNear, expected, tolerance, "") {
    Points const wanted(expected);
    std::size_t const common = std::min(arg.size(), wanted.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (sameNumber(arg[i].first, wanted[i].first, tolerance) &&
            sameNumber(arg[i].second, wanted[i].second, tolerance))
            continue;
        auto const digits = result_listener->stream() ? result_listener->stream()->precision(17) : 6;
        *result_listener << "point " << i << " is (" << arg[i].first << ", " << arg[i].second << "), wanted ("
                         << wanted[i].first << ", " << wanted[i].second << ")";
        if (result_listener->stream()) result_listener->stream()->precision(digits);
        return false;
    }
    if (arg.size() == wanted.size()) return true;
    *result_listener << "there are " << arg.size() << " points, wanted " << wanted.size();
    return false;
}

// Matches the same points in the same order, as `PointsAre("0,0 4,0 4,2 0,2")`.
inline auto PointsAre(char const *text) { return PointsNear(points(text), 1e-12); }

// Puts the tolerances of outlines back when the test ends.
class ToleranceGuard {
public:
    ToleranceGuard() : ptTol_(EDAOutline::ptTol), lineTol_(EDAOutline::lineTol) {}
    ~ToleranceGuard() {
        EDAOutline::ptTol = ptTol_;
        EDAOutline::lineTol = lineTol_;
    }
    ToleranceGuard(ToleranceGuard const &) = delete;
    ToleranceGuard &operator=(ToleranceGuard const &) = delete;

private:
    double ptTol_;
    double lineTol_;
};

// Numbers that are the same on every platform for one seed.
class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}

    // From 0 to `limit` - 1.
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(engine_()) / 4294967296.0);
    }

private:
    std::mt19937 engine_;
};

// A star-shaped outline about a random centre: never crosses itself while its edges are straight.
// With `arcs`, about a third of the edges are arcs of either kind.
inline EDAOutline randomOutline(Random &random, int numPoints, bool arcs) {
    EDAOutline result;
    double const x = random.between(-50.0, 50.0);
    double const y = random.between(-50.0, 50.0);
    for (int i = 0; i < numPoints; ++i) {
        double const direction = 2.0 * 3.14159265358979323846 * (i + random.between(0.0, 0.9)) / numPoints;
        double const radius = random.between(1.0, 10.0);
        double const px = x + radius * std::cos(direction);
        double const py = y + radius * std::sin(direction);
        int const kind = arcs ? random.below(6) : 2;
        if (kind == 0)
            result.addPoint(0, px, py, random.between(-170.0, 170.0));
        else if (kind == 1)
            result.addPoint(0, px, py, x, y, random.below(2) == 0);
        else
            result.addPoint(0, px, py, 0.0);
    }
    return result;
}

} // namespace test
} // namespace EDA
