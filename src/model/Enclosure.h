// Tells which outlines lie inside an outline of many edges.
#pragma once

#include "model/EDAOutline.h"
#include "model/EdgeIndex.h"

#include <functional>
#include <optional>
#include <vector>

namespace EDA {

// `outer.enclosesOutline(inner)`, for one outer outline and many others: through an index of its edges where
// they are many. The index is made at the first question that needs it, and its points must be finite.
bool encloses(EDAOutline const &outer, EDAOutline const &inner, std::optional<EdgeIndex> &edges);

// The same with the index. The outline must outlive it and keep its points.
class Enclosure {
public:
    explicit Enclosure(EDAOutline const &outer) : outer_(&outer) {}

    bool encloses(EDAOutline const &inner) { return EDA::encloses(*outer_, inner, edges_); }

private:
    EDAOutline const *outer_;
    std::optional<EdgeIndex> edges_;
};

// Gives each outline a copy of each hole that it encloses, in the order of the holes. Each hole is held only
// against outlines whose box holds its own. `take(hole)` is asked before each copy; once it refuses, no more
// are given.
void giveEnclosedHoles(std::vector<EDAOutline> &outlines, std::vector<EDAOutline> const &holes,
                       std::function<bool(EDAOutline const &)> const &take);

} // namespace EDA
