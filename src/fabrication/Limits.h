// Limits of the front end, far above any real design.
#pragma once

#include <cstddef>

namespace EDA::Fabrication::Limits {

constexpr std::size_t objects = 10'000'000;         // of one layer, copies of blocks and repeats counted
constexpr std::size_t repeats = 1'000'000;          // copies of one step and repeat
constexpr std::size_t blockDepth = 64;              // blocks and repeats within each other
constexpr std::size_t points = 50'000'000;          // of all shapes and paths of one layer
constexpr std::size_t macroVertices = 10'000;       // of one primitive
constexpr std::size_t moireRings = 1'000;           // of one primitive
constexpr std::size_t macroText = 64 * 1024;        // of one expression
constexpr std::size_t expressionDepth = 64;         // brackets within each other
constexpr std::size_t macroSteps = 100'000;         // evaluated for one aperture
constexpr std::size_t drillRepeats = 100'000;       // of one statement
constexpr std::size_t statement = 64 * 1024 * 1024; // bytes of one

} // namespace EDA::Fabrication::Limits
