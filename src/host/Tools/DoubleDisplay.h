// Numbers as text for people.
#pragma once

#include <string>

namespace EntityModel {

// The one formatter of numbers for display. It has no state and does not look at the process locale.
class DoubleDisplay {
public:
    static DoubleDisplay &get();

    // The number as short decimal text in the C locale, then a blank and the units where those are not empty.
    //   decimals      0: the fewest digits that read back as the same number. Above 0: rounded to at most
    //                 that many places after the point, without trailing zeros.
    //   exponentFrom  magnitudes from here on are written with an exponent; so are those below 1e-4 when
    //                 `decimals` is 0.
    // Zero of either sign is "0". A number that is not finite is "nan", "inf" or "-inf".
    std::string getDoubleString(double value, const std::string &units, int decimals,
                                double exponentFrom) const;

private:
    DoubleDisplay() = default;
};

} // namespace EntityModel
