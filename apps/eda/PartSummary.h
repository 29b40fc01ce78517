// What became of the placements of a design in the model.
#pragma once

#include "Entities.h"
#include "host/EntityModel/LibraryInterface.h"
#include "model/EDABoard.h"
#include "Report.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace EDATool {

// How many, and the names of the first few.
struct NamedCount {
    std::size_t count = 0;
    std::vector<std::string> names;

    void add(const std::string &name) {
        if (names.size() < 5) names.push_back(name);
        ++count;
    }
};

// In watts. A part has its thermal design power at its utilisation, and what its solids dissipate.
struct PowerSums {
    double inModel = 0.0;  // of the parts that are not filtered
    double filtered = 0.0; // of the parts that are in the model, marked as filtered
    double leftOut = 0.0;  // POWER_OPR of placed parts that are not in the model
    double inDesign = 0.0; // POWER_OPR of all placed parts
};

// Names are reference designators where nothing else is said.
struct PartSummary {
    std::size_t placements = 0;

    // Each placement counts in one of these.
    EntityCounts imported; // by the label of the entity's type
    NamedCount filteredKept;
    NamedCount filteredOut;
    NamedCount notPlaced;
    NamedCount withoutDefinition; // named by package and part number too
    NamedCount withoutShape;
    NamedCount leftOutByLibrary;
    NamedCount notMade;    // the board takes no such part
    NamedCount notReached; // before the import was cancelled

    // Of those in the model, filtered or not.
    NamedCount withoutHeight; // in the design; the entity has a height that nobody asked for
    NamedCount withoutMaterial;
    std::size_t withDefaultMaterial = 0; // the design names none
    NamedCount withoutPower;
    NamedCount otherPower; // than POWER_OPR says
    std::size_t fromLibrary = 0;
    std::size_t approximated = 0;
    std::size_t inSockets = 0;

    NamedCount duplicates; // designators that several placements have
    PowerSums power;

    std::size_t numImported() const;
};

struct ImportResult {
    const EDA::EDABoard &board;
    const EntityModel::Entity *boardEntity; // null when none was made
    std::uint64_t firstNewId;               // the model's next id before the import
    EntityModel::LibraryInterface *library; // may be null
    bool wasCancelled;
};

PartSummary summarizeParts(const ImportResult &result);

// A table for people, and a member "parts" for programs.
std::string partTable(const PartSummary &summary);
void addParts(const PartSummary &summary, JsonReport &report);

} // namespace EDATool
