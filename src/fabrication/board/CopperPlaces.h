// Which traces have copper at a place.
#pragma once

#include "model/BoundTree.h"
#include "model/EDATrace.h"
#include "model/EdgeIndex.h"

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace EDA::Fabrication {

// The copper of one trace: what its outline encloses, with its internal outlines cut out or put in, in their
// order; of a route, what its stroke covers. What many places are asked for is indexed at the first question.
class TraceCopper {
public:
    explicit TraceCopper(EDATrace const &trace);

    bool contains(double x, double y);

private:
    struct Ring {
        explicit Ring(EDAOutline const &outline);
        bool contains(double x, double y);

        EDAOutline const *outline;
        std::optional<EdgeIndex> edges;
        bool isFinite = true;
    };

    EDATrace const *trace_;
    Ring outer_;
    std::vector<Ring> inner_;
    std::optional<BoundTree> innerBounds_;
};

// The traces by place. The traces must outlive it and stay as they are.
class CopperPlaces {
public:
    explicit CopperPlaces(std::vector<EDATrace const *> traces);

    // Calls `visit(number)` for each trace that has copper there.
    template <typename Visit> void forEachAt(double x, double y, Visit const &visit) {
        Geometry::Bound2D place;
        place.unite(x, y);
        bounds_.search(
            place, Geometry::Bound2D::defaultTolerance,
            [&](std::size_t number) {
                ++numTests_;
                if (copperOf(number).contains(x, y)) visit(number);
            },
            [this](BoundTree::Place) { return !isSpent(); });
    }

    // True once more was looked at than any layer takes whose traces do not all lie on each other.
    bool isSpent() const { return numTests_ > mostTests; }

private:
    static constexpr std::size_t mostTests = 50'000'000;

    TraceCopper &copperOf(std::size_t number);

    std::vector<EDATrace const *> traces_;
    BoundTree bounds_;
    std::unordered_map<std::size_t, TraceCopper> large_;
    std::optional<TraceCopper> small_;
    std::size_t numTests_ = 0;
};

} // namespace EDA::Fabrication
