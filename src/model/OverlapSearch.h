// Finds which outlines of a set overlap.
#pragma once

#include "model/BoundTree.h"
#include "model/EDAOutline.h"
#include "model/OutlineIndex.h"
#include "model/OutlineStrip.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace EDA {

// Which outlines overlap which, as far as it takes to know what hangs together: symmetric, ascending.
// Outlines without overlap have no entry.
class OverlapMap {
public:
    void add(std::size_t a, std::size_t b);
    // Due after the last `add`: until then the map is empty to look at.
    void sort(std::size_t numOutlines);

    bool empty() const { return pairs_.empty(); }
    // The outlines that overlap others, ascending, each once.
    std::vector<std::size_t> keys() const;
    // Calls `visit` with each outline that the map has next to this one.
    template <typename Visit> void forEachNeighbour(std::size_t index, Visit const &visit) const {
        for (std::size_t i = begins_[index]; i < begins_[index + 1]; ++i)
            visit(std::size_t(pairs_[i].second));
    }

private:
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs_;
    std::vector<std::size_t> begins_; // of each outline's pairs
};

// Sets that only ever grow together.
class Groups {
public:
    explicit Groups(std::size_t count);
    std::uint32_t of(std::size_t index);
    void join(std::size_t a, std::size_t b);

private:
    std::vector<std::uint32_t> parents_;
};

// Answers `EDAOutline::overlaps` for the outlines of a set, which must stay as they are. It asks only those
// whose bounds meet and that are not known to hang together already, so that a thousand outlines in one place
// are no million pairs, and looks into outlines of many edges or holes through an index. An outline with a
// coordinate that is not finite overlaps nothing: it could not be united.
class OverlapSearch {
public:
    // With `members`, all others take no part.
    explicit OverlapSearch(std::vector<EDAOutline> const &outlines,
                           std::vector<std::size_t> const *members = nullptr);

    // Adds to `overlaps` the outlines behind `index` that overlap it, but for those that hang together with
    // it through others.
    void addLater(std::size_t index, OverlapMap &overlaps);

private:
    bool isWholeGroup(BoundTree::Place place, std::uint32_t group);
    bool meets(std::size_t first, std::size_t second);
    bool areApart(std::size_t first, std::size_t second);
    OutlineIndex *keptIndex(std::size_t number);

    std::vector<EDAOutline> const &outlines_;
    std::vector<Geometry::Bound2D> bounds_; // in the reset state for what is not finite
    std::vector<OutlineStrip> strips_;
    BoundTree tree_;
    Groups groups_;
    // Of each node above the leaves: a box of the one group that all below it are known to be in, or `mixed`.
    static constexpr std::uint32_t mixed = static_cast<std::uint32_t>(-1);
    std::vector<std::vector<std::uint32_t>> members_;
    std::unordered_map<std::size_t, OutlineIndex> indexes_; // of large outlines
};

} // namespace EDA
