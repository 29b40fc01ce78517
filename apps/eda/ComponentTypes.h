// Which type each component of a design is imported as.
#pragma once

#include "import/EDAImporter.h"

namespace EDATool {

// Gives every component of the board the type that the importer finds for it; to be called once the options
// are set. `boardEntity` is the board that is imported over, or null for a new one. A component without
// shape, and one that the library leaves out, gets none: the import leaves both out by itself.
void chooseComponentTypes(const EDA::EDAImporter &importer, EDA::EDABoard &board,
                          EntityModel::Entity *boardEntity);

} // namespace EDATool
