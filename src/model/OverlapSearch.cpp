// Overlaps by bounds, then by vertices.
#include "model/OverlapSearch.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace EDA {

namespace {

constexpr double boundTolerance = Geometry::Bound2D::defaultTolerance;

bool isFinite(EDAOutline const &outline) {
    auto const &points = outline.getPoints(true);
    bool const own = std::all_of(points.begin(), points.end(), [](auto const &point) {
        return std::isfinite(point.first) && std::isfinite(point.second);
    });
    return own && std::all_of(outline.beginInternalOutlines(), outline.endInternalOutlines(), isFinite);
}

// In the reset state for what takes no part.
std::vector<Geometry::Bound2D> boundsOf(std::vector<EDAOutline> const &outlines,
                                        std::vector<std::size_t> const *members) {
    std::vector<Geometry::Bound2D> bounds(outlines.size());
    std::size_t const count = members ? members->size() : outlines.size();
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const number = members ? (*members)[i] : i;
        if (isFinite(outlines[number])) bounds[number] = outlines[number].getBound();
    }
    return bounds;
}

std::vector<OutlineStrip> stripsOf(std::vector<EDAOutline> const &outlines,
                                   std::vector<Geometry::Bound2D> const &bounds) {
    std::vector<OutlineStrip> strips;
    strips.reserve(outlines.size());
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        bool const takesPart = bounds[i].isValid() && !OutlineIndex::isWorthwhile(outlines[i]);
        strips.push_back(takesPart ? OutlineStrip(outlines[i]) : OutlineStrip());
    }
    return strips;
}

} // namespace

void OverlapMap::add(std::size_t a, std::size_t b) {
    pairs_.emplace_back(static_cast<std::uint32_t>(a), static_cast<std::uint32_t>(b));
    pairs_.emplace_back(static_cast<std::uint32_t>(b), static_cast<std::uint32_t>(a));
}

void OverlapMap::sort(std::size_t numOutlines) {
    std::sort(pairs_.begin(), pairs_.end());
    begins_.assign(numOutlines + 1, 0);
    for (auto const &pair : pairs_)
        ++begins_[pair.first + 1];
    for (std::size_t i = 0; i < numOutlines; ++i)
        begins_[i + 1] += begins_[i];
}

std::vector<std::size_t> OverlapMap::keys() const {
    std::vector<std::size_t> keys;
    for (auto const &pair : pairs_) {
        if (keys.empty() || keys.back() != pair.first) keys.push_back(pair.first);
    }
    return keys;
}

Groups::Groups(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), std::uint32_t(0));
}

std::uint32_t Groups::of(std::size_t index) {
    auto group = static_cast<std::uint32_t>(index);
    while (parents_[group] != group) {
        parents_[group] = parents_[parents_[group]];
        group = parents_[group];
    }
    return group;
}

void Groups::join(std::size_t a, std::size_t b) {
    std::uint32_t const first = of(a), second = of(b);
    parents_[std::max(first, second)] = std::min(first, second);
}

OverlapSearch::OverlapSearch(std::vector<EDAOutline> const &outlines, std::vector<std::size_t> const *members)
    : outlines_(outlines), bounds_(boundsOf(outlines, members)), strips_(stripsOf(outlines, bounds_)),
      tree_(bounds_), groups_(outlines.size()) {
    for (std::size_t level = 0; level < tree_.numLevels(); ++level) {
        members_.emplace_back(level == 0 ? 0 : tree_.numNodes(level), mixed);
    }
}

void OverlapSearch::addLater(std::size_t index, OverlapMap &overlaps) {
    tree_.search(
        bounds_[index], boundTolerance,
        [&](std::size_t other) {
            if (other <= index || groups_.of(other) == groups_.of(index)) return;
            if (areApart(index, other) || !meets(index, other)) return;
            overlaps.add(index, other);
            groups_.join(index, other);
        },
        [&](BoundTree::Place place) { return !isWholeGroup(place, groups_.of(index)); });
}

// Looks one level down only: each visit learns from those below it what earlier ones found.
bool OverlapSearch::isWholeGroup(BoundTree::Place place, std::uint32_t group) {
    std::uint32_t &member = members_[place.level][place.index];
    if (member != mixed) return groups_.of(member) == group;
    auto const [begin, end] = tree_.children(place);
    std::uint32_t first = mixed;
    for (std::size_t i = begin; i < end; ++i) {
        std::uint32_t const each =
            place.level == 1 ? static_cast<std::uint32_t>(tree_.leafBox(i)) : members_[place.level - 1][i];
        if (each == mixed || groups_.of(each) != group) return false;
        first = each;
    }
    member = first;
    return true;
}

bool OverlapSearch::meets(std::size_t first, std::size_t second) {
    OutlineIndex small, otherSmall;
    OutlineIndex *const index = keptIndex(first), *const otherIndex = keptIndex(second);
    return OutlineIndex::overlap(outlines_[first], index ? *index : small, outlines_[second],
                                 otherIndex ? *otherIndex : otherSmall);
}

// Tells it without a look at all points and edges where one of the two is a strip that runs aslant, and the
// other beside it: the boxes of such say little.
bool OverlapSearch::areApart(std::size_t first, std::size_t second) {
    OutlineStrip const &strip = strips_[first], &otherStrip = strips_[second];
    return (strip.isNarrow() && otherStrip.isKnown() && strip.isBeside(outlines_[second])) ||
           (otherStrip.isNarrow() && strip.isKnown() && otherStrip.isBeside(outlines_[first]));
}

// Null for an outline that is not worth one.
OutlineIndex *OverlapSearch::keptIndex(std::size_t number) {
    return OutlineIndex::isWorthwhile(outlines_[number]) ? &indexes_[number] : nullptr;
}

} // namespace EDA
