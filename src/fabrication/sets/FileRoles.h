// What one file is, by what it says and by its name.
#pragma once

#include "fabrication/sets/FabricationSet.h"
#include "fabrication/sets/NameRules.h"

#include <string>
#include <string_view>

namespace EDA::Fabrication {

// Settles use, meaning, reason and place of a file of a layer's form from its facts and its name. A file of
// which nothing says anything stays FileUse::None.
void settleLayer(SetFile &file);

// Settles files that were settled by their names once more, by what is left of these without the start that
// all files of a folder have in common: in "edge-router_top.gbr", "edge" is of the board.
void settleByRestOfNames(std::vector<SetFile> &files);

// Takes what a name tells over into the file.
void take(SetFile &file, NameFinding const &finding, std::string const &reason);

// Values as they stand in the file, cut where they are long: "Soldermask,Top".
std::string listed(std::vector<std::string> const &values);
std::string inQuotes(std::string_view text);

} // namespace EDA::Fabrication
