// Finds the boxes of a set that meet another box.
#pragma once

#include "host/Geometry/Bound2D.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace EDA {

// A packed tree over boxes that do not change, near ones together. Built in n log n; a search visits the
// boxes that it finds and a few more.
class BoundTree {
public:
    explicit BoundTree(std::vector<Geometry::Bound2D> const &bounds);

    // A node of the tree: its level above the leaves, and its place in that level.
    struct Place {
        std::size_t level;
        std::size_t index;
    };

    // Calls `visit(index)` for each box that overlaps `bound` within the tolerance, in no special order.
    // Boxes in the reset state are never found.
    template <typename Visit>
    void search(Geometry::Bound2D const &bound, double tolerance, Visit const &visit) const {
        search(bound, tolerance, visit, [](Place) { return true; });
    }

    // The same without what lies below a node for which `enter(place)` is false.
    template <typename Visit, typename Enter>
    void search(Geometry::Bound2D const &bound, double tolerance, Visit const &visit,
                Enter const &enter) const;

    // Whether `test(index)` holds for any box that `admits` does not refuse: a condition on boxes that holds
    // for a box where it holds for a part of it. Ends at the first.
    template <typename Admits, typename Test> bool any(Admits const &admits, Test const &test) const;

    std::size_t numLevels() const { return levels_.size(); }
    std::size_t numNodes(std::size_t level) const { return levels_[level].size(); }
    // The box of a leaf, and the children of any other node: their level is one less.
    std::size_t leafBox(std::size_t leaf) const { return levels_[0][leaf].first; }
    std::pair<std::size_t, std::size_t> children(Place place) const {
        std::size_t const begin = levels_[place.level][place.index].first;
        return {begin, std::min(begin + fanOut, levels_[place.level - 1].size())};
    }

private:
    static constexpr std::size_t fanOut = 8;

    struct Node {
        Geometry::Bound2D bound;
        std::uint32_t first; // of the children in the level below; of a leaf, the index of its box
    };
    using Level = std::vector<Node>;

    std::vector<Level> levels_; // the leaves first
};

template <typename Admits, typename Test> bool BoundTree::any(Admits const &admits, Test const &test) const {
    if (levels_.empty()) return false;
    std::vector<std::pair<std::size_t, std::size_t>> open; // level and index
    for (std::size_t i = 0; i < levels_.back().size(); ++i)
        open.emplace_back(levels_.size() - 1, i);
    while (!open.empty()) {
        auto const [level, index] = open.back();
        open.pop_back();
        Node const &node = levels_[level][index];
        if (!admits(node.bound)) continue;
        if (level == 0) {
            if (test(static_cast<std::size_t>(node.first))) return true;
            continue;
        }
        auto const [begin, end] = children({level, index});
        for (std::size_t i = begin; i < end; ++i)
            open.emplace_back(level - 1, i);
    }
    return false;
}

template <typename Visit, typename Enter>
void BoundTree::search(Geometry::Bound2D const &bound, double tolerance, Visit const &visit,
                       Enter const &enter) const {
    struct Range {
        std::size_t level, begin, end;
    };
    if (levels_.empty()) return;
    std::vector<Range> open{{levels_.size() - 1, 0, levels_.back().size()}};
    while (!open.empty()) {
        Range const range = open.back();
        open.pop_back();
        for (std::size_t i = range.begin; i < range.end; ++i) {
            Node const &node = levels_[range.level][i];
            if (!node.bound.overlaps(bound, tolerance)) continue;
            if (range.level == 0) {
                visit(static_cast<std::size_t>(node.first));
            } else if (enter(Place{range.level, i})) {
                auto const [begin, end] = children({range.level, i});
                open.push_back({range.level - 1, begin, end});
            }
        }
    }
}

} // namespace EDA
