// Quantities, their units, and conversion between units.
#pragma once

#include "host/EntityModel/Type.h"

#include <string>
#include <string_view>
#include <vector>

namespace EntityModel {

struct Quantity;

// A unit of one quantity. A value in SI is value * numerator / denominator; both are whole numbers, so that
// a conversion rounds once.
struct Unit {
    const Quantity *quantity;
    std::string label; // The spelling that texts show: "mm", "W/(m K)".
    double numerator;
    double denominator;
};

// A physical quantity with its standard unit and the unit in which values are shown by default.
struct Quantity {
    std::string label; // "Length", "Power", ...
    const Unit *standard;
    const Unit *display;
};

namespace Units {

// The quantity of a label, or null. An empty label is the plain number.
const Quantity *findQuantity(std::string_view label);

// The unit of a quantity by any accepted spelling, blanks around it ignored, or null if unknown. Length
// spellings match without regard to case. All others match with case first and then without, unless two
// units of the quantity differ by case alone (mW and MW). Empty text is no unit (null).
const Unit *find(const Quantity &quantity, std::string_view spelling);

// The value converted, rounded once; the same unit gives the same bits back. A finite value stays finite:
// what would overflow becomes the largest double.
double convert(double value, const Unit &from, const Unit &to);

// All accepted spellings of the units of a quantity, and those of lengths, for messages.
std::vector<std::string> spellings(const Quantity &quantity);
std::vector<std::string> lengthSpellings();

} // namespace Units

class UnitConverter {
public:
    static UnitConverter &instance();

    // A value in the standard unit of `quantity` (a quantity's type, such as Length_t), converted to `unit`
    // (a unit's type, such as TypeRef("mm")). An unknown or empty unit gives the quantity's display unit; an
    // unknown quantity gives the value back.
    double convertFromSI(const TypeRef &quantity, double value, const TypeRef &unit) const;
};

} // namespace EntityModel
