// Counts what happens in a file by kind, and tells it once.
#pragma once

#include "fabrication/Notes.h"

#include <array>
#include <cstddef>

namespace EDA::Fabrication {

enum class DrillTrouble {
    NotUnderstood,
    BadCoordinate,
    TooFar,
    NoTool,
    OnlyTool,
    TooManyObjects,
    TooManySlots,
    LongPath,
    TooManyRepeats,
    TooLong,
    RepeatOfNothing,
    CannedCycle,
    CannedText,
    StoredPattern,
    Compensation,
    AfterEnd,
    ArcWithoutCentre,
    PositionsAsHoles,
    OptionalBlock,
    ToolDefinedAgain,
    SizeWithoutPoint,
    ToolsInTurn,
    Count
};

class DrillTally {
public:
    void add(DrillTrouble trouble, std::size_t line, std::size_t count = 1);
    void tell(Notes &notes) const;

private:
    struct Entry {
        std::size_t line = 0;
        std::size_t count = 0;
    };
    std::array<Entry, static_cast<std::size_t>(DrillTrouble::Count)> entries_;
};

} // namespace EDA::Fabrication
