// Which point of an outline is the next one at the same place.
#pragma once

#include "model/EDAOutline.h"

namespace EDA {

// Stands for "no such point" in the result of `nextCoincidentPoints`.
constexpr std::size_t noPoint = static_cast<std::size_t>(-1);

// For each point but the first, the index of the first later point that equals it by
// `EDAPoint::operator==`, else `noPoint`. The first point takes no part: its entry is `noPoint`.
//
// Time n log n for any input. Points that are not finite equal nothing.
std::vector<std::size_t> nextCoincidentPoints(std::vector<EDAOutline::EDAPoint> const &points);

} // namespace EDA
