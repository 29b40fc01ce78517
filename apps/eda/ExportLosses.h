// What an export leaves behind.
#pragma once

#include "host/EntityModel/Entity.h"

#include <string>
#include <vector>

namespace EDATool {

// What the board's entity holds and an exported board cannot carry: a line for each kind that there is, with
// its number ("12 wirebonds are left out"). A board on a socket and a substrate count as one each, as boards
// of their own. Asks the geometry builder of EntityManager for components that are modelled in detail, as the
// export does.
std::vector<std::string> exportLosses(const EntityModel::Entity &board);

} // namespace EDATool
