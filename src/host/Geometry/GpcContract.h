// Clipping of polygons given as plain arrays of contours.
#pragma once

namespace Geometry {

enum gpc_op { GPC_DIFF = 0, GPC_INT = 1, GPC_XOR = 2, GPC_UNION = 3 };

struct gpc_vertex {
    double x;
    double y;
};

struct gpc_vertex_list {
    int num_vertices;
    gpc_vertex *vertex;
};

// A set of contours. Start from a value-initialised one (`gpc_polygon polygon{}`), fill it
// with `gpc_allocate_contours` and `gpc_allocate_vertices`, release it with `gpc_free_polygon`.
// It owns its arrays by hand, so a plain copy shares them.
struct gpc_polygon {
    int num_contours;
    int *hole;                // 1 for a contour that bounds a hole, else 0
    gpc_vertex_list *contour; // vertices in order, the first not repeated at the end
};

// Gives an empty polygon room for `count` contours, each empty and not a hole. Throws
// std::bad_alloc; `count` below 1 leaves the polygon empty.
void gpc_allocate_contours(gpc_polygon *polygon, int count);

// Gives an empty contour room for `count` vertices, all (0, 0), and hands them over.
gpc_vertex *gpc_allocate_vertices(gpc_vertex_list *contour, int count);

// Combines two polygons into `result`, which must be released later and is overwritten
// without being released now; it may not be one of the inputs. The inputs are only read.
//
// In the inputs, a point is inside when an odd number of the polygon's contours enclose it
// (even-odd). The hole flags are not read, the direction does not matter, contours may
// cross and touch, share edges, repeat points, or have fewer than three; no contours at
// all is an empty polygon.
//
// The result:
// - Contours have disjoint insides; the hole flag is set exactly for those that bound a
//   hole. Outers run anticlockwise, holes clockwise. None is without area or has a spike.
// - Pieces that share an edge are joined, pieces that touch at a vertex are separate. A
//   hole that touches its outer at a vertex is part of that outer, which then visits the
//   vertex twice.
// - A vertex that is one of the input is that same double, bit for bit; a new one is the
//   crossing of two input edges rounded to double. Vertices in the middle of a straight
//   run stay, and there may be new ones where another input vertex lies on the run.
// - Nothing is told apart that differs by less than 2e-14 of the larger side of the bound
//   of all input, by a few roundings of its largest coordinate, or by 1e-300: such vertices
//   count as the first of them, edges that near fall together, and regions that narrow are
//   dropped.
// - Outers come in the order of their lowest vertex (by y, then x), each right before the
//   holes that lie in it, which are in the same order. A contour starts at its lowest vertex.
//
// Throws, with `result` empty: std::invalid_argument for a coordinate that is not finite or
// an unknown operation, std::length_error for input with so many crossings (above four
// million and 16 an edge) that memory or time would run out. All other input has a result.
void gpc_polygon_clip(gpc_op op, gpc_polygon const *subject, gpc_polygon const *clip, gpc_polygon *result);

// Releases the arrays and leaves the polygon empty. Harmless on an empty one.
void gpc_free_polygon(gpc_polygon *polygon);

} // namespace Geometry
