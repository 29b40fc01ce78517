// Reading drill files from texts.
#pragma once

#include "fabrication/drills/DrillWriter.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace EDA::Fabrication {

struct ReadDrills {
    DrillFacts facts;
    DrillNumbers numbers;
    DrillData data;
    Notes notes;

    // The first note with this text in it; null where there is none.
    Note const *note(std::string_view part) const {
        for (Note const &entry : notes.list())
            if (entry.what.find(part) != std::string::npos) return &entry;
        return nullptr;
    }
    std::size_t numHoles(int tool) const {
        return static_cast<std::size_t>(
            std::count_if(data.holes.begin(), data.holes.end(),
                          [tool](DrillHole const &hole) { return hole.tool == tool; }));
    }
};

inline ReadDrills readDrills(std::string_view text, Geometry::Bound2D const &layers = {},
                             DrillNumbers const &given = {}, std::map<int, DrillTool> const &beside = {}) {
    ReadDrills result;
    result.facts = lookAtDrillFile(text);
    result.numbers = settleNumbers(text, result.facts, given, layers, result.notes);
    result.data = readDrillFile(text, result.numbers, beside, result.notes);
    return result;
}

// Statements between a header of millimetres with decimals and the end of the program.
inline ReadDrills readBody(std::string const &body) {
    return readDrills("M48\nMETRIC,TZ,000.000\nT1C0.5\nT2C1.0\n%\nT1\n" + body + "M30\n");
}

struct StringSink : TextSink {
    std::string text;
    void write(std::string_view piece) override { text += piece; }
};

} // namespace EDA::Fabrication
