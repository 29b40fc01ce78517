// Finds out which edges of a plane graph bound the result.
#pragma once

#include "host/Geometry/ClipNoder.h"

#include <vector>

namespace Geometry {
namespace Clip {

// Tells whether a place with these two winding numbers belongs to the result.
class Inside {
public:
    enum class Operation { Difference, Intersection, Xor, Union };
    enum class Fill { EvenOdd, NonZero };

    Inside(Operation operation, Fill subjectFill, Fill clipFill)
        : operation_(operation), masks_{maskOf(subjectFill), maskOf(clipFill)} {}

    Operation operation() const { return operation_; }

    bool operator()(int const windings[2]) const {
        bool const subject = (windings[0] & masks_[0]) != 0;
        bool const clip = (windings[1] & masks_[1]) != 0;
        switch (operation_) {
        case Operation::Difference:
            return subject && !clip;
        case Operation::Intersection:
            return subject && clip;
        case Operation::Xor:
            return subject != clip;
        default:
            return subject || clip;
        }
    }

private:
    // The bits of a winding number that make a place filled.
    static int maskOf(Fill fill) { return fill == Fill::EvenOdd ? 1 : -1; }

    Operation operation_;
    int masks_[2];
};

// What the sweep found out about an edge.
struct Side {
    bool bounds = false;      // the result is on exactly one side
    bool insideAbove = false; // that side is the upper (for a vertical edge the left) one
    Index floor = none;       // a bounding edge of the same region below; none: the outside
};

// Turns every edge so that it leads from its left to its right vertex (from its lower to
// its upper one where it is vertical) and gives the sides of each. The edges must be a plane graph.
std::vector<Side> findSides(Grid const &grid, std::vector<Edge> &edges, Inside const &inside);

} // namespace Clip
} // namespace Geometry
