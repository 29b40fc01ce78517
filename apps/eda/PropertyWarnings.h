// Properties of components that should be numbers.
#pragma once

#include "model/EDABoard.h"

#include <string>
#include <vector>

namespace EDATool {

// Adds a warning, naming component, property and value, for each property that the import turns into a
// quantity and whose text is no number. The import leaves such a value out without a word.
void addPropertyWarnings(const EDA::EDABoard &board, std::vector<std::string> &warnings);

} // namespace EDATool
