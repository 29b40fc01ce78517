// The units of IDF files: millimetres, "MM", and thousandths of an inch, "THOU".
#pragma once

#include "Arguments.h"
#include "host/EntityModel/Units.h"

#include <string>

namespace EDATool {

// The word of IDF for a unit in any spelling: "MM" or "THOU". Empty for any other text.
std::string idfUnits(const std::string &spelling);

// Throws UsageFailure where --units is given and IDF has no word for it.
void checkIdfUnits(const Arguments &arguments);

// From the units of a design to those of its IDF file.
struct IdfLengths {
    const EntityModel::Unit *from = nullptr;
    const EntityModel::Unit *to = nullptr;

    double convert(double length) const { return EntityModel::Units::convert(length, *from, *to); }
    std::string word() const; // "MM" or "THOU"
};

// From the units of this spelling to those that `asked` names, "MM" or "THOU"; where that is empty, to the
// same units or, where IDF has no word for them, to the nearest that it has. Null in both where the spelling
// is unknown.
IdfLengths idfLengths(const std::string &spelling, const std::string &asked);

} // namespace EDATool
