// Colours for dissipated power.
#pragma once

#include "BoardView.h"
#include "Picture.h"

#include <string>

namespace EDATool {

// What the colours of parts stand for.
enum class Colouring { Kind, Power, Density };

// A linear scale from 0 to a round number that is not below the greatest value of the board, with round
// steps.
class PowerScale {
public:
    // Of no power at all: a scale without steps.
    PowerScale() = default;
    PowerScale(const PowerTotals &totals, Colouring colouring);

    bool isEmpty() const { return numSteps_ == 0; }
    int numSteps() const { return numSteps_; }
    std::string stepText(int step) const; // the number at a step, 0 to numSteps(), without unit
    const std::string &unit() const { return unit_; }

    // The value of a part that the colours stand for; 0 where it has none.
    double valueOf(const PartView &part) const;

    Colour colourOf(double value) const;

    // The colour at a share of the whole scale, 0 to 1. Lightness rises evenly along it, so that it reads
    // without regard to hue, on paper too.
    static Colour colourAt(double share);

private:
    Colouring colouring_ = Colouring::Power;
    double step_ = 0.0; // watts, or W/cm^2
    int numSteps_ = 0;
    double factor_ = 1.0; // to the unit shown
    std::string unit_;
};

// A power in watts with few digits and a unit.
std::string powerText(double watts);

} // namespace EDATool
