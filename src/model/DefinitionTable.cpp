// Search for the definition of a via or bump: the keys, the grid of sizes, the table.
#include "model/DefinitionTable.h"

#include "model/EDABump.h"
#include "model/EDAVia.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string>

namespace EDA {

namespace {

// Below this number a plain walk is as fast and needs no table.
constexpr std::size_t walkLimit = 8;

// Width of a grid cell. It must be more than twice the tolerance plus the rounding of a
// double near 8192, above which doubles lie farther apart than the tolerance: then sizes
// that match lie in the cells of (size - tolerance) and (size + tolerance). The wider it is,
// the more different definitions a hostile file can put into one cell.
constexpr double cellWidth = 6e-12;

double cellOf(double size) { return std::floor(size / cellWidth) + 0.0; }

using ViaSizes = std::array<double, 2>;
using BumpSizes = std::array<double, 4>;

ViaSizes sizesOf(EDAVia const &via) { return {via.getDiameter(), via.getPlatingThickness()}; }

BumpSizes sizesOf(EDABump const &bump) {
    return {bump.getMaxDiameter(), bump.getTopDiameter(), bump.getBottomDiameter(), bump.getHeight()};
}

std::size_t add(std::size_t seed, std::string const &text) {
    return combineHash(seed, std::hash<std::string>()(text));
}

std::size_t textHash(EDAVia const &via) {
    std::string startLayer, endLayer;
    via.getLayers(startLayer, endLayer);
    auto const hash = add(add(0, via.getPlatingStyle()), via.getHoleType());
    return add(add(add(hash, startLayer), endLayer), via.getFillMaterial());
}

std::size_t textHash(EDABump const &bump) {
    return add(add(add(0, bump.getMaterial()), bump.getGroup()), bump.getLayer());
}

std::size_t addCell(std::size_t seed, double cell) { return combineHash(seed, std::hash<double>()(cell)); }

template <typename Definition> std::size_t keyHash(Definition const &definition) {
    auto hash = textHash(definition);
    for (double size : sizesOf(definition))
        hash = addCell(hash, cellOf(size));
    return hash;
}

// Calls `use` with the hash of each combination of cells that a matching definition can lie in.
template <typename Definition, typename Use> void eachNeighbourHash(Definition const &wanted, Use use) {
    auto const sizes = sizesOf(wanted);
    auto const text = textHash(wanted);
    for (std::size_t choice = 0; choice < std::size_t(1) << sizes.size(); ++choice) {
        auto hash = text;
        bool repeated = false;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            double const low = cellOf(sizes[i] - Definition::sizeTolerance);
            double const high = cellOf(sizes[i] + Definition::sizeTolerance);
            bool const takeHigh = (choice >> i & 1) != 0;
            repeated = repeated || (takeHigh && low == high);
            hash = addCell(hash, takeHigh ? high : low);
        }
        if (!repeated) use(hash);
    }
}

// Shaped and associated vias, and sizes that are not numbers, don't even match themselves.
template <typename Definition> bool canMatch(Definition const &definition) {
    return definition.isInstanceOf(definition);
}

template <typename Definition>
std::size_t walk(std::vector<Definition> const &stored, Definition const &wanted) {
    auto const found = std::find_if(stored.begin(), stored.end(),
                                    [&](Definition const &each) { return wanted.isInstanceOf(each); });
    return found == stored.end() ? PositionChains::none : static_cast<std::size_t>(found - stored.begin());
}

} // namespace

template <typename Definition>
std::size_t DefinitionTable<Definition>::find(std::vector<Definition> const &stored,
                                              Definition const &wanted) {
    if (!canMatch(wanted)) return PositionChains::none;
    if (stored.size() <= walkLimit) return walk(stored, wanted);
    update(stored);
    auto best = PositionChains::none;
    eachNeighbourHash(wanted, [&](std::size_t hash) {
        // `none` is the highest value.
        best = std::min(best, firstInChain(stored, wanted, hash));
    });
    return best;
}

template <typename Definition>
std::size_t DefinitionTable<Definition>::firstInChain(std::vector<Definition> const &stored,
                                                      Definition const &wanted, std::size_t hash) const {
    auto at = chains_.first(hash);
    while (at != PositionChains::none && !wanted.isInstanceOf(stored[at]))
        at = chains_.next(at);
    return at;
}

// An exact repetition is never the first match; leaving it out keeps the chains short.
template <typename Definition>
bool DefinitionTable<Definition>::holdsEqual(std::vector<Definition> const &stored,
                                             Definition const &definition, std::size_t hash) const {
    for (auto at = chains_.first(hash); at != PositionChains::none; at = chains_.next(at))
        if (sizesOf(stored[at]) == sizesOf(definition) && definition.isInstanceOf(stored[at])) return true;
    return false;
}

template <typename Definition>
void DefinitionTable<Definition>::update(std::vector<Definition> const &stored) {
    if (stored.size() < known_ || changesSeen_ != KeyWatch::changes()) {
        chains_.clear();
        known_ = 0;
        changesSeen_ = KeyWatch::changes();
    }
    for (; known_ < stored.size(); ++known_) {
        auto const &definition = stored[known_];
        definition.watchKey();
        if (!canMatch(definition)) continue;
        auto const hash = keyHash(definition);
        if (!holdsEqual(stored, definition, hash)) chains_.append(hash, known_);
    }
}

template class DefinitionTable<EDAVia>;
template class DefinitionTable<EDABump>;

} // namespace EDA
