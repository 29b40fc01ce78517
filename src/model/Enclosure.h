// Tells which outlines lie inside an outline of many edges.
#pragma once

#include "model/EDAOutline.h"
#include "model/EdgeIndex.h"

#include <optional>

namespace EDA {

// Answers `EDAOutline::enclosesOutline` of one outline for many others, through an index of its edges where
// they are many. The outline must outlive it and stay as it is.
class Enclosure {
public:
    explicit Enclosure(EDAOutline const &outer) : outer_(&outer) {}

    bool encloses(EDAOutline const &inner);

private:
    // From so many edges on an index pays.
    static constexpr std::size_t manyEdges = 128;

    EDAOutline const *outer_;
    std::optional<EdgeIndex> edges_; // made at the first question that needs it
};

} // namespace EDA
