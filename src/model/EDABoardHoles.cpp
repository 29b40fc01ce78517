// Vias and bumps of a board.
#include "model/Definitions.h"
#include "model/EDABoard.h"

namespace EDA {

void EDABoard::addVia(EDAVia const &via, bool merge) { addDefinition(vias_, viaTable_, via, merge); }

EDAVia *EDABoard::findViaDefinition(EDAVia const &via) { return findDefinition(vias_, viaTable_, via); }

std::size_t EDABoard::numVias(int withInstances) const { return numDefinitions(vias_, withInstances); }

void EDABoard::addBump(EDABump const &bump, bool merge) { addDefinition(bumps_, bumpTable_, bump, merge); }

EDABump *EDABoard::findBumpDefinition(EDABump const &bump) {
    return findDefinition(bumps_, bumpTable_, bump);
}

std::size_t EDABoard::numBumps(int withInstances) const { return numDefinitions(bumps_, withInstances); }

} // namespace EDA
