// A first pass over a drill file: what it says of itself and what its statements look like.
#pragma once

#include "fabrication/drills/DrillComments.h"
#include "fabrication/drills/DrillText.h"

#include <cstddef>
#include <set>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

struct DrillScan {
    // A place as written; a coordinate that is left out is the former one.
    struct Place {
        DrillText::Digits x;
        DrillText::Digits y;
        bool isIncremental = false;
    };
    static constexpr std::size_t mostPlaces = 50'000;

    // A statement of a unit after the first coordinates.
    struct UnitChange {
        std::size_t firstPlace = 0; // that it counts for
        DrillNumbers said;
    };

    bool hasHeader = false;
    bool hasLayerStatements = false; // of the layer format
    bool hasEnd = false;
    bool hasToolSelects = false; // in the body
    bool hasPlunges = false;
    bool hasCuts = false; // moves that rout
    bool hasDecimals = false;
    std::size_t numStatements = 0;
    std::size_t numForeign = 0; // statements that no drill file has
    std::size_t numTools = 0;   // definitions and selections
    std::size_t numCoordinates = 0;
    std::size_t numHoles = 0;

    Unit headerUnit = Unit::Unknown; // for the sizes of tools
    DrillNumbers numbers;            // by statements alone; the unit is that of the first coordinates
    DrillComments comments;
    std::vector<std::string> firstComments;

    std::vector<double> sizes; // of tools, in the unit of the file
    std::set<int> definedTools;
    std::set<int> sizedTools;
    std::set<int> usedTools;             // by holes
    std::vector<Place> places;           // the first ones
    std::vector<UnitChange> unitChanges; // among these places

    // Numbers by statements, and by comments where they say nothing.
    DrillNumbers allNumbers() const;
    bool isDrill() const;
};

DrillScan scanDrillFile(std::string_view text);

// The unit, zeros and digits that a statement like "METRIC,TZ,000.000" names. False where it is none.
bool readUnitStatement(DrillText::Statement const &statement, DrillNumbers &numbers);

// A unit that is named after the first coordinates. It brings the digits that most files have in it, unless
// the file has other digits anyway or names them.
void changeUnit(DrillNumbers &numbers, DrillNumbers const &said);

// The tool that a number as written means: "0101" is tool 1 with its compensation, unless there is a tool
// 101.
int toolNumber(std::string_view number, std::set<int> const &defined);

// Whether statements of names are such that drill files have, whatever they do to the machine.
bool isMachineStatement(std::string_view text);

// The coordinate in millimetres. Unknown parts of `numbers` are those of most files.
double millimetres(DrillText::Digits const &digits, DrillNumbers const &numbers);

} // namespace EDA::Fabrication
