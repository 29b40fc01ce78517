// Paths of lines and true arcs, and the transforms that keep arcs round.
#pragma once

#include <string>
#include <vector>

namespace EDATool {

struct Point {
    double x = 0.0;
    double y = 0.0;
};

// One step of a path. A sub-path starts with Move and may end with Close.
struct PathStep {
    enum class Kind { Move, Line, Arc, Close };
    Kind kind = Kind::Move;
    Point to;
    Point centre;       // Arc
    double sweep = 0.0; // Arc: degrees, positive from +x toward +y; +-360 is a full circle
};

using Path = std::vector<PathStep>;

// Low and high corner of a box; empty while low > high.
struct Box {
    Point low{1.0, 1.0};
    Point high{-1.0, -1.0};

    bool isEmpty() const { return low.x > high.x || low.y > high.y; }
    double width() const { return isEmpty() ? 0.0 : high.x - low.x; }
    double height() const { return isEmpty() ? 0.0 : high.y - low.y; }
    Point centre() const { return {(low.x + high.x) / 2, (low.y + high.y) / 2}; }
    void add(const Point &point); // ignored unless finite
    void add(const Box &other);
};

// x' = xx x + xy y + x0, y' = yx x + yy y + y0. Only moves, turns, mirrors and even scalings: so a circle
// stays one.
struct Similarity {
    double xx = 1.0, xy = 0.0, yx = 0.0, yy = 1.0, x0 = 0.0, y0 = 0.0;

    static Similarity scaling(double factor) { return {factor, 0.0, 0.0, factor, 0.0, 0.0}; }
    static Similarity mirrorX() { return {-1.0, 0.0, 0.0, 1.0, 0.0, 0.0}; }
    static Similarity turn(double degrees); // anticlockwise where y is up
    static Similarity move(double x, double y) { return {1.0, 0.0, 0.0, 1.0, x, y}; }

    bool mirrors() const { return xx * yy - xy * yx < 0; }
    Point apply(const Point &point) const {
        return {xx * point.x + xy * point.y + x0, yx * point.x + yy * point.y + y0};
    }
    Path apply(const Path &path) const;
};

// first, then second.
Similarity then(const Similarity &first, const Similarity &second);

Path circlePath(const Point &centre, double radius);
// A line with round ends; empty for a width that is not above 0.
Path segmentPath(const Point &from, const Point &to, double width);
Path boxPath(const Box &box);
Path crossPath(const Point &centre, double halfSize);

// The box of all that the path covers, arcs included.
Box boundOf(const Path &path);

// The area of a closed path less those of its further sub-paths, which are the holes in the first.
double areaOf(const Path &path);

} // namespace EDATool
