// Finds the via or bump definition that another one is an instance of.
#pragma once

#include "model/KeyWatch.h"
#include "model/LookupTable.h"

#include <vector>

namespace EDA {

// Gives the first of the stored definitions that `isInstanceOf` accepts, as a walk through
// all of them would, in a time that does not grow with their number. `isInstanceOf` compares
// texts exactly and sizes within a tolerance; the table hashes the texts and the cell of a
// grid that the sizes fall in, and looks into the neighbour cell where the tolerance reaches it.
//
// Definitions appended to the vector are taken in at the next search; a vector that shrank,
// or a definition changed in place, rebuilds the table.
// `Definition` is `EDAVia` or `EDABump`.
template <typename Definition> class DefinitionTable {
public:
    // Position of the first definition that `wanted.isInstanceOf` accepts, or `PositionChains::none`.
    std::size_t find(std::vector<Definition> const &stored, Definition const &wanted);

private:
    void update(std::vector<Definition> const &stored);
    std::size_t firstInChain(std::vector<Definition> const &stored, Definition const &wanted,
                             std::size_t hash) const;
    bool holdsEqual(std::vector<Definition> const &stored, Definition const &definition,
                    std::size_t hash) const;

    PositionChains chains_;
    std::size_t known_ = 0;
    std::uint64_t changesSeen_ = KeyWatch::changes();
};

} // namespace EDA
