// Rings by radius, and the cross over them.
#include "readers/gerber/MoireShape.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace EDA {

namespace {

// Lines this much apart, as a share of the radius, are one but for rounding.
constexpr double sameRadius = 1e-9;

// The cross grows by what it reaches, and then may reach more. What it encloses it has after the first time.
constexpr int maxJoins = 4;

bool unite(EDAOutline &root, const std::vector<EDAOutline *> &others) {
    std::vector<EDAOutline> lost;
    std::size_t count = 0;
    return others.empty() || root.mergeOutlines(others, lost, nullptr, count);
}

} // namespace

void MoireShape::addRing(EDAOutline ring, double radius, double otherRadius) {
    const auto [low, high] = std::minmax({std::abs(radius), std::abs(otherRadius)});
    rings_.push_back({std::move(ring), low, high});
}

// Numbers that are none take part in no order, and what has them in no union.
std::vector<MoireShape::Group> MoireShape::groupsByRadius() const {
    std::vector<Group> groups;
    Group order;
    for (std::size_t i = 0; i < rings_.size(); ++i) {
        const bool isFinite = std::isfinite(rings_[i].low) && std::isfinite(rings_[i].high);
        isFinite ? order.push_back(i) : groups.push_back({i});
    }
    std::sort(order.begin(), order.end(),
              [this](std::size_t a, std::size_t b) { return rings_[a].low < rings_[b].low; });
    double reach = -1.0;
    for (const std::size_t i : order) {
        if (rings_[i].low > reach * (1.0 + sameRadius)) groups.emplace_back();
        groups.back().push_back(i);
        reach = std::max(reach, rings_[i].high);
    }
    for (Group &group : groups)
        std::sort(group.begin(), group.end());
    std::sort(groups.begin(), groups.end());
    return groups;
}

std::vector<EDAOutline> MoireShape::unitedGroups() {
    std::vector<EDAOutline> pieces;
    for (const Group &group : groupsByRadius()) {
        EDAOutline &first = rings_[group.front()].outline;
        std::vector<EDAOutline *> others;
        for (std::size_t i = 1; i < group.size(); ++i)
            others.push_back(&rings_[group[i]].outline);
        if (unite(first, others)) others.clear();
        pieces.push_back(std::move(first));
        for (EDAOutline *const other : others)
            pieces.push_back(std::move(*other));
    }
    rings_.clear();
    return pieces;
}

// Takes the pieces up that overlap the cross. False when there are none.
bool MoireShape::joinCross(std::vector<EDAOutline> &pieces) {
    const auto apart = std::stable_partition(
        pieces.begin(), pieces.end(), [this](const EDAOutline &piece) { return !cross_.overlaps(piece); });
    std::vector<EDAOutline *> touched;
    for (auto piece = apart; piece != pieces.end(); ++piece)
        touched.push_back(&*piece);
    if (touched.empty() || !unite(cross_, touched)) return false;
    pieces.erase(apart, pieces.end());
    return true;
}

std::vector<EDAOutline> MoireShape::takePieces() {
    std::vector<EDAOutline> pieces = unitedGroups();
    for (int joins = 0; joins < maxJoins && joinCross(pieces);)
        ++joins;
    pieces.insert(pieces.begin(), std::move(cross_));
    return pieces;
}

} // namespace EDA
