// Conversion to the integer grid of Clipper 6 and back.
#include "ClipperPeer.h"

#include <algorithm>
#include <clipper.hpp>
#include <cmath>

namespace EDABench {

namespace {

using ClipperLib::Paths;

double largestOf(Shape const &shape) {
    double largest = 0.0;
    for (Points const &points : shape)
        for (auto const &point : points)
            largest = std::max(largest, std::max(std::abs(point.x), std::abs(point.y)));
    return largest;
}

Paths toPaths(Shape const &shape, double scale) {
    Paths paths;
    paths.reserve(shape.size());
    for (Points const &points : shape) {
        paths.emplace_back();
        paths.back().reserve(points.size());
        for (auto const &point : points)
            paths.back().emplace_back(std::llround(point.x * scale), std::llround(point.y * scale));
    }
    return paths;
}

Shape toShape(Paths const &paths, double scale) {
    Shape shape;
    shape.reserve(paths.size());
    for (ClipperLib::Path const &path : paths) {
        shape.emplace_back();
        shape.back().reserve(path.size());
        for (ClipperLib::IntPoint const &point : path)
            shape.back().emplace_back(static_cast<double>(point.X) / scale,
                                      static_cast<double>(point.Y) / scale);
    }
    return shape;
}

ClipperLib::ClipType typeOf(Operation operation) {
    switch (operation) {
    case Operation::Difference:
        return ClipperLib::ctDifference;
    case Operation::Intersection:
        return ClipperLib::ctIntersection;
    case Operation::Xor:
        return ClipperLib::ctXor;
    default:
        return ClipperLib::ctUnion;
    }
}

Paths run(ClipperWay const &way, ClipperLib::ClipType type, ClipperLib::PolyFillType fill,
          Paths const &subject, Paths const &clip) {
    ClipperLib::Clipper clipper(way.strictlySimple ? ClipperLib::ioStrictlySimple : 0);
    clipper.AddPaths(subject, ClipperLib::ptSubject, true);
    clipper.AddPaths(clip, ClipperLib::ptClip, true);
    Paths result;
    clipper.Execute(type, result, fill, fill); // false also for input without an edge: the areas are to judge
    return result;
}

} // namespace

Shape clipByClipper(ClipperWay const &way, Operation operation, Fill fill, Shape const &subject,
                    Shape const &clip) {
    double const largest = std::max(largestOf(subject), largestOf(clip));
    double const scale = std::ldexp(1.0, way.gridBits - 1 - std::ilogb(std::max(largest, 1e-300)));
    Paths subjectPaths = toPaths(subject, scale), clipPaths = toPaths(clip, scale);
    if (way.normalised) {
        subjectPaths = run(way, ClipperLib::ctUnion, ClipperLib::pftEvenOdd, subjectPaths, {});
        clipPaths = run(way, ClipperLib::ctUnion, ClipperLib::pftEvenOdd, clipPaths, {});
    }
    bool const nonZero = way.normalised || fill == Fill::NonZero;
    ClipperLib::PolyFillType const type = nonZero ? ClipperLib::pftNonZero : ClipperLib::pftEvenOdd;
    return toShape(run(way, typeOf(operation), type, subjectPaths, clipPaths), scale);
}

} // namespace EDABench
