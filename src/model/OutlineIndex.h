// Answers which outlines meet, for outlines of many edges or many holes.
#pragma once

#include "model/EDAOutline.h"
#include "model/EdgeIndex.h"
#include "model/GrowingBoundTree.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace EDA {

// What is known of one outline, gathered as questions come: its edges, its points and its holes by place. So
// `EDAOutline::intersectsHole` can be asked for one outline with many others without a walk over all of it.
// The points of the outlines must be finite.
//
//     OutlineIndex plane, flash;
//     OutlineIndex::intersectsHole(planeOutline, plane, flashOutline, flash);
class OutlineIndex {
public:
    // Whether the outline is large enough to be worth one that is kept.
    static bool isWorthwhile(EDAOutline const &outline);

    // `outline.intersectsHole(other)`, each with its own index. An outline must be the same at each call, but
    // may have got further internal outlines behind those that it had.
    static bool intersectsHole(EDAOutline const &outline, OutlineIndex &index, EDAOutline const &other,
                               OutlineIndex &otherIndex);
    // Either way round, as `EDAOutline::overlaps`.
    static bool overlap(EDAOutline const &outline, OutlineIndex &index, EDAOutline const &other,
                        OutlineIndex &otherIndex);

    // How often one of its holes was held against an outline, so far.
    std::size_t numHoleTests() const { return numHoleTests_; }

    // How many points were looked at or held against an edge, so far, at most.
    std::size_t numPointTests() const { return numPointTests_; }

private:
    using PointList = EDAOutline::PointList;

    // From so many on an index pays.
    static constexpr std::size_t manyPoints = 128;
    static constexpr int manyInternals = 16;
    static constexpr std::size_t run = 16; // points in one box
    // What a question to the index of many edges costs, in points held against an edge.
    static constexpr std::size_t indexTests = 16;

    bool contains(EDAOutline const &outline, std::pair<double, double> const &point);
    template <typename Test>
    bool anyPointWithin(EDAOutline const &outline, Geometry::Bound2D const &bound, Test const &test);
    bool isInHole(EDAOutline const &outline, EDAOutline const &other);
    bool encloses(EDAOutline const &outline, std::uint32_t hole, EDAOutline const &other);
    void takeHoles(EDAOutline const &outline);
    bool isKnownHole(EDAOutline const &outline, std::uint32_t number);

    std::optional<EdgeIndex> edges_;
    std::optional<BoundTree> runs_; // boxes of points next to each other
    GrowingBoundTree holeBounds_;
    std::vector<std::uint32_t> holes_; // of each box, which internal outline it is of
    std::unordered_multimap<std::size_t, std::uint32_t> holesByPoints_;
    std::unordered_map<std::uint32_t, std::optional<EdgeIndex>> holeEdges_;
    int numInternals_ = 0; // that were looked at
    std::size_t numHoleTests_ = 0;
    std::size_t numPointTests_ = 0;
};

} // namespace EDA
