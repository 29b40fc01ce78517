// The steps of a clipping, from contours to edges and back.
#include "host/Geometry/ClippingEngine.h"

#include "host/Geometry/ClipShortcuts.h"
#include "host/Geometry/ClipTracer.h"

#include <stdexcept>

namespace Geometry {
namespace Clip {

void Engine::addPoint(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) throw std::invalid_argument("coordinate is not finite");
    points_.emplace_back(x, y);
    bound_.unite(x, y);
}

void Engine::endContour(Operand operand) { contours_.push_back({points_.size(), operand}); }

void Engine::makeEdges(Grid &grid, std::vector<Edge> &edges) const {
    std::vector<Index> vertices;
    vertices.reserve(points_.size());
    std::size_t begin = 0;
    for (ContourEnd const &contour : contours_) {
        vertices.clear();
        for (std::size_t i = begin; i < contour.end; ++i)
            vertices.push_back(grid.addPoint(points_[i].x, points_[i].y));
        begin = contour.end;
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            Index const from = vertices[i], to = vertices[i + 1 < vertices.size() ? i + 1 : 0];
            if (from == to) continue;
            edges.emplace_back();
            Edge &edge = edges.back();
            edge.from = edge.sourceFrom = from;
            edge.to = edge.sourceTo = to;
            edge.windings[contour.operand] = 1;
        }
    }
}

bool Engine::runShort(Frame const &frame, Inside const &inside, std::vector<Contour> &result) const {
    constexpr std::size_t few = 8; // beyond it the contours are hardly ever all apart
    if (contours_.size() > few) return false;
    std::vector<Outline> outlines;
    outlines.reserve(contours_.size());
    std::size_t begin = 0;
    for (ContourEnd const &contour : contours_) {
        if (contour.end > begin)
            outlines.push_back({points_.data() + begin, contour.end - begin, contour.operand});
        begin = contour.end;
    }
    return clipApart(outlines, inside.operation(), frame, result);
}

std::vector<Contour> Engine::runWhole(Frame const &frame, Inside const &inside) const {
    if (points_.size() >= none / 2) throw std::length_error("too many vertices to clip");
    Grid grid(frame, points_.size());
    std::vector<Edge> edges;
    edges.reserve(points_.size());
    makeEdges(grid, edges);
    makePlaneGraph(grid, edges, limits_);
    std::vector<Side> const sides = findSides(grid, edges, inside);
    return traceContours(grid, edges, sides);
}

std::vector<Contour> Engine::run(Inside const &inside) {
    std::vector<Contour> result;
    if (bound_.isValid()) {
        Frame const frame(bound_);
        if (!runShort(frame, inside, result)) result = runWhole(frame, inside);
    }
    points_.clear();
    contours_.clear();
    bound_.reset();
    return result;
}

} // namespace Clip
} // namespace Geometry
