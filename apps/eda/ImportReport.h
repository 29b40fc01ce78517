// The summary that an import ends with.
#pragma once

#include "CopperSummary.h"
#include "Design.h"
#include "Entities.h"
#include "PartSummary.h"

#include <string>

namespace EDATool {

struct ImportOutcome {
    bool isComponent = false; // the board was imported as a component
    bool wasCancelled = false;
    bool isSaved = false;
    std::string messages; // the importer's and the library's, a line each
    double seconds = 0.0;
    PartSummary parts;
    CopperSummary copper;
};

// For people. `output` is where the model went.
std::string importText(const Design &design, const EntityCounts &counts, const ImportOutcome &outcome,
                       const std::string &output);

// One JSON object for programs, with the members of "info --json" first.
std::string importJson(const Design &design, const EntityCounts &counts, const ImportOutcome &outcome);

} // namespace EDATool
