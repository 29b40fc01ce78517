// Colours for dissipated power.
#include "PowerScale.h"

#include "Printable.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace EDATool {

namespace {

// "viridis" by S. van der Walt and N. Smith (2015), given to the public domain by CC0: ten even samples of
// the published table, joined by straight lines. Made for even steps of perceived colour, also with red-green
// and blue-yellow blindness.
constexpr Colour ramp[] = {{68, 1, 84},    {72, 40, 120},  {62, 74, 137},  {49, 104, 142}, {38, 130, 142},
                           {31, 158, 137}, {53, 183, 121}, {109, 205, 89}, {180, 222, 44}, {253, 231, 37}};

constexpr double smallPower = 0.1; // below it, thousandths are shown

// The smallest of 1, 2 or 5 times a power of ten that is not below `limit`.
double roundStep(double limit) {
    const double power = std::pow(10.0, std::floor(std::log10(limit)));
    for (const double step : {1.0, 2.0, 5.0}) {
        if (step * power >= limit) return step * power;
    }
    return 10.0 * power;
}

std::uint8_t mix(std::uint8_t low, std::uint8_t high, double share) {
    return static_cast<std::uint8_t>(std::lround(low + (high - low) * share));
}

} // namespace

PowerScale::PowerScale(const PowerTotals &totals, Colouring colouring) : colouring_(colouring) {
    constexpr int usualSteps = 5;
    const double greatest = colouring == Colouring::Density ? totals.greatestDensity : totals.greatest;
    const double step = greatest > 0.0 ? roundStep(greatest / usualSteps) : 0.0;
    if (!std::isnormal(step) || !std::isfinite(step * usualSteps)) return;
    step_ = step;
    numSteps_ = std::clamp(static_cast<int>(std::ceil(greatest / step - 1e-9)), 1, 2 * usualSteps);
    const bool isSmall = greatest < smallPower;
    factor_ = isSmall ? 1e3 : 1.0;
    unit_ = std::string(isSmall ? "mW" : "W") + (colouring == Colouring::Density ? "/cm\u00b2" : "");
}

std::string PowerScale::stepText(int step) const { return shortNumber(step * step_ * factor_, 4); }

double PowerScale::valueOf(const PartView &part) const {
    return colouring_ == Colouring::Density ? part.density : part.power;
}

Colour PowerScale::colourOf(double value) const {
    return colourAt(isEmpty() ? 0.0 : value / (step_ * numSteps_));
}

Colour PowerScale::colourAt(double share) {
    constexpr int last = static_cast<int>(std::size(ramp)) - 1;
    const double place = std::clamp(share, 0.0, 1.0) * last;
    const int low = std::min(static_cast<int>(place), last - 1);
    const Colour &a = ramp[low];
    const Colour &b = ramp[low + 1];
    const double between = place - low;
    return {mix(a.red, b.red, between), mix(a.green, b.green, between), mix(a.blue, b.blue, between), 255};
}

std::string powerText(double watts) {
    const bool isSmall = std::fabs(watts) < smallPower && watts != 0.0;
    return shortNumber(isSmall ? watts * 1e3 : watts, 4) + (isSmall ? " mW" : " W");
}

} // namespace EDATool
