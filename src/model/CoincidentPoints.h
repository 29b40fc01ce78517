// Which point of an outline is the next one at the same place.
#pragma once

#include "model/EDAOutline.h"

namespace EDA {

// Stands for "no such point" in the result of `nextCoincidentPoints`.
constexpr std::size_t noPoint = static_cast<std::size_t>(-1);

// For each point but the first, the index of the first later point that is at the same place within
// `EDAOutline::ptTol`, else `noPoint`. The first point takes no part: its entry is `noPoint`.
//
// Time n log n for any input. Points that are not finite equal nothing.
std::vector<std::size_t> nextCoincidentPoints(EDAOutline::PointList const &points);

// True only if all entries of `nextCoincidentPoints` are `noPoint`, for outlines that go to the right and
// back once, as most do; a quick look. False where it takes more to say.
bool surelyHasNoCoincidentPoints(EDAOutline::PointList const &points);

} // namespace EDA
