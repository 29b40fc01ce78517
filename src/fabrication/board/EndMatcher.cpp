// Pairs of loose ends, found in squares as wide as the gap.
#include "fabrication/board/EndMatcher.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <tuple>
#include <utility>

namespace EDA::Fabrication {

namespace {

constexpr std::size_t mostInCell = 32;

struct Candidate {
    double distance;
    std::size_t first, second; // places in the list
};

using Cell = std::pair<std::int64_t, std::int64_t>;
using Grid = std::map<Cell, std::vector<std::size_t>>;

Cell cellOf(Point const &point, double gap) {
    return {static_cast<std::int64_t>(std::floor(point.x / gap)),
            static_cast<std::int64_t>(std::floor(point.y / gap))};
}

void addCandidates(std::vector<LooseEnd> const &ends, std::size_t number,
                   std::vector<std::size_t> const &near, double gap, std::vector<Candidate> &candidates) {
    for (std::size_t const other : near) {
        if (other <= number || ends[other].stroke == ends[number].stroke) continue;
        double const distance =
            std::hypot(ends[other].at.x - ends[number].at.x, ends[other].at.y - ends[number].at.y);
        if (distance <= gap) candidates.push_back({distance, number, other});
    }
}

std::vector<Candidate> findCandidates(std::vector<LooseEnd> const &ends, double gap) {
    Grid grid;
    for (std::size_t i = 0; i < ends.size(); ++i) {
        std::vector<std::size_t> &cell = grid[cellOf(ends[i].at, gap)];
        if (cell.size() < mostInCell) cell.push_back(i);
    }
    std::vector<Candidate> candidates;
    for (auto const &[place, cell] : grid) {
        for (std::int64_t dx = -1; dx <= 1; ++dx) {
            for (std::int64_t dy = -1; dy <= 1; ++dy) {
                auto const near = grid.find({place.first + dx, place.second + dy});
                if (near == grid.end()) continue;
                for (std::size_t const number : cell)
                    addCandidates(ends, number, near->second, gap, candidates);
            }
        }
    }
    std::sort(candidates.begin(), candidates.end(), [](Candidate const &a, Candidate const &b) {
        return std::tie(a.distance, a.first, a.second) < std::tie(b.distance, b.first, b.second);
    });
    return candidates;
}

} // namespace

std::vector<EndPair> matchEnds(std::vector<LooseEnd> const &ends, double gap) {
    std::vector<EndPair> pairs;
    if (!(gap > 0.0)) return pairs;
    std::vector<bool> isTaken(ends.size(), false);
    for (Candidate const &candidate : findCandidates(ends, gap)) {
        if (isTaken[candidate.first] || isTaken[candidate.second]) continue;
        isTaken[candidate.first] = true;
        isTaken[candidate.second] = true;
        pairs.push_back({ends[candidate.first].id, ends[candidate.second].id});
    }
    return pairs;
}

} // namespace EDA::Fabrication
