// What is noticed in layer files, counted where it comes in thousands.
#pragma once

#include "fabrication/Notes.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>

namespace EDA::Fabrication {

enum class Tally {
    Points,
    RepeatedFlashes,
    RepeatedOperations,
    EarlyCoordinates,
    SingleQuadrantArcs,
    UnfitArcs,
    GuessedQuadrants,
    ScaledLines,
    FlashesInRegions,
    RegionsWithoutArea,
    OpenContours,
    BlockStrokes,
    NoAperture,
    UnknownCodes,
    UnitChanges,
    BadCommands,
    Count,
};

class LayerTallies {
public:
    void count(Tally tally, std::size_t line) {
        Entry &entry = entries_[static_cast<std::size_t>(tally)];
        if (entry.count++ == 0) entry.line = line;
    }
    // An aperture that is selected without being defined.
    void countUndefined(int code, std::size_t line);
    // An extended command, by its two letters, that nothing is known of or that has no effect here.
    void countUnknown(std::string const &letters, std::size_t line);

    void addTo(Notes &notes) const;

private:
    struct Entry {
        std::size_t count = 0;
        std::size_t line = 0;
    };

    std::array<Entry, static_cast<std::size_t>(Tally::Count)> entries_;
    std::map<int, Entry> undefined_;
    Entry moreUndefined_;
    std::map<std::string, Entry> unknown_;
};

} // namespace EDA::Fabrication
