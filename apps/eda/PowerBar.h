// The bar that tells what the colours of power mean.
#pragma once

#include "Picture.h"
#include "PowerScale.h"

namespace EDATool {

// In multiples of the picture's unit.
constexpr double powerBarHeight = 62;

// Draws the bar with its numbers and title, from the left upper corner `at`.
void drawPowerBar(Picture &picture, const PowerScale &scale, const Point &at, double width, double unit);

} // namespace EDATool
