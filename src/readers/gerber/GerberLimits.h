// What a Gerber or drill file may ask for, so that no file costs memory or time without bounds.
#pragma once

#include <cstddef>

namespace EDA {

// Far above any real design. Limits other than the usual ones are for tests.
struct GerberLimits {
    std::size_t fileSize = std::size_t(1) << 30;   // bytes; a larger file counts as unreadable
    std::size_t textSize = std::size_t(64) << 20;  // bytes of one line or joined statement
    std::size_t points = 50'000'000;               // of the outlines of one file; the rest is dropped
    std::size_t objects = 10'000'000;              // of one layer, clear ones too; the rest is dropped
    double repeats = 1e6;                          // copies of a step and repeat
    int drillRepeats = 100'000;                    // holes of one repeat statement
    int vertices = 10'000;                         // of a polygon aperture or primitive
    int rings = 1'000;                             // of a moire primitive
    std::size_t macroText = std::size_t(64) << 10; // bytes of a variable's text
    std::size_t primitives = 10'000;               // statements of one macro
    std::size_t macroFields = 1'000'000;           // of all statements of one macro
    std::size_t parameters = 100'000;              // of one aperture of a macro
    std::size_t macroWork = 6'000'000;             // steps for the macros of one file; see WorkBudget
    std::size_t strokeWork = 40'000'000;           // and for its strokes that are put together from parts
    std::size_t clearTests = 1'000'000'000; // of clear objects against what they may touch, in one file
    std::size_t messages = 1'000;           // lines of the error text; then they are counted
};

} // namespace EDA
