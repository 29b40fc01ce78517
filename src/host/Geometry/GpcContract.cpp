// The array interface of polygon clipping: memory, and conversion to and from the engine.
#include "host/Geometry/GpcContract.h"

#include "host/Geometry/ClippingEngine.h"

#include <climits>
#include <cstddef>
#include <stdexcept>

namespace Geometry {

namespace {

Clip::Inside::Operation operationOf(gpc_op op) {
    switch (op) {
    case GPC_DIFF:
        return Clip::Inside::Operation::Difference;
    case GPC_INT:
        return Clip::Inside::Operation::Intersection;
    case GPC_XOR:
        return Clip::Inside::Operation::Xor;
    case GPC_UNION:
        return Clip::Inside::Operation::Union;
    }
    throw std::invalid_argument("unknown clipping operation");
}

void addContours(Clip::Engine &engine, Clip::Engine::Operand operand, gpc_polygon const &polygon) {
    for (int i = 0; i < polygon.num_contours; ++i) {
        gpc_vertex_list const &contour = polygon.contour[i];
        if (contour.num_vertices > 0)
            engine.addContour(operand, contour.vertex, static_cast<std::size_t>(contour.num_vertices));
    }
}

int checkedCount(std::size_t count) {
    if (count > static_cast<std::size_t>(INT_MAX)) throw std::length_error("clipping result is too large");
    return static_cast<int>(count);
}

void copyContours(std::vector<Clip::Contour> const &contours, gpc_polygon *result) {
    gpc_allocate_contours(result, checkedCount(contours.size()));
    for (std::size_t i = 0; i < contours.size(); ++i) {
        std::vector<Vec2T<double>> const &points = contours[i].points;
        result->hole[i] = contours[i].hole ? 1 : 0;
        gpc_vertex *vertex = gpc_allocate_vertices(&result->contour[i], checkedCount(points.size()));
        for (Vec2T<double> const &point : points)
            *vertex++ = {point.x, point.y};
    }
}

} // namespace

void gpc_allocate_contours(gpc_polygon *polygon, int count) {
    *polygon = gpc_polygon{};
    if (count < 1) return;
    auto const size = static_cast<std::size_t>(count);
    polygon->hole = new int[size]();
    try {
        polygon->contour = new gpc_vertex_list[size]();
    } catch (...) {
        gpc_free_polygon(polygon);
        throw;
    }
    polygon->num_contours = count;
}

gpc_vertex *gpc_allocate_vertices(gpc_vertex_list *contour, int count) {
    *contour = gpc_vertex_list{};
    if (count < 1) return nullptr;
    contour->vertex = new gpc_vertex[static_cast<std::size_t>(count)]();
    contour->num_vertices = count;
    return contour->vertex;
}

void gpc_polygon_clip(gpc_op op, gpc_polygon const *subject, gpc_polygon const *clip, gpc_polygon *result) {
    *result = gpc_polygon{};
    Clip::Inside const inside(operationOf(op), Clip::Inside::Fill::EvenOdd, Clip::Inside::Fill::EvenOdd);
    Clip::Engine engine;
    addContours(engine, Clip::Engine::Subject, *subject);
    addContours(engine, Clip::Engine::Clip, *clip);
    std::vector<Clip::Contour> const contours = engine.run(inside);
    try {
        copyContours(contours, result);
    } catch (...) {
        gpc_free_polygon(result);
        throw;
    }
}

void gpc_free_polygon(gpc_polygon *polygon) {
    for (int i = 0; i < polygon->num_contours; ++i)
        delete[] polygon->contour[i].vertex;
    delete[] polygon->contour;
    delete[] polygon->hole;
    *polygon = gpc_polygon{};
}

} // namespace Geometry
