// Reading drill and rout files.
#pragma once

#include "fabrication/layers/LayerFile.h"

#include <map>
#include <optional>

namespace EDA::Fabrication {

struct DrillTool {
    double diameter = 0.0; // millimetres; 0: not known
    std::optional<bool> plated;
    std::string function; // "ViaDrill"
};

struct DrillHole {
    Point at;
    int tool = 0;
};

// A hole longer than wide: what a tool clears along a path.
struct DrillSlot {
    Path path;
    int tool = 0;
};

struct DrillData {
    std::map<int, DrillTool> tools;
    std::vector<DrillHole> holes;
    std::vector<DrillSlot> slotHoles; // not "slots", which is a macro of the toolkit
    Geometry::Bound2D bound;          // of the places, widths left out
};

enum class Zeros { Unknown, LeadingOmitted, TrailingOmitted, AllKept };

// How the numbers of a drill file are read.
struct DrillNumbers {
    Unit unit = Unit::Unknown;
    int integerDigits = -1; // -1: unknown
    int decimalDigits = -1;
    Zeros zeros = Zeros::Unknown;
};

// What a drill file says of itself.
struct DrillFacts {
    bool isDrill = false;     // statements of drill files were found
    DrillNumbers numbers;     // by the header, codes and comments; what they leave open is unknown
    bool hasDecimals = false; // coordinates with a decimal point
    bool hasCoordinates = false;
    std::size_t numHoles = 0;   // about
    std::optional<bool> plated; // by comments and attributes; not by tool
    int fromLayer = 0;          // 1 is the top one; 0: not told
    int toLayer = 0;
    std::vector<std::string> fileFunction; // {"Plated", "1", "4", "PTH"}
    std::vector<std::string> comments;     // the first fifty
    std::vector<int> toolsWithoutSize;     // that holes use
};

DrillFacts lookAtDrillFile(std::string_view bytes);

// Tools of a report file beside the drill file ("T1  12mil (0.3048mm)  106"), or of a table in any text
// that names tools with sizes; empty where there is none.
std::map<int, DrillTool> readToolTable(std::string_view bytes);

// Settles what the file leaves open: by the digits of its coordinates, by where its holes come to lie in
// `layers` (the bound of the copper; may be in the reset state), by `given` (what the caller or another drill
// file of the set says; unknown parts are open) and last by what most files have. Each choice that the file
// did not make itself is a note of NoteKind::Guessed with its reason.
DrillNumbers settleNumbers(std::string_view bytes, DrillFacts const &facts, DrillNumbers const &given,
                           Geometry::Bound2D const &layers, Notes &notes);

// Reads the file: holes, repeats, patterns, hole circles, slots by G85, routed paths, offsets and zero
// sets, incremental mode, changes of unit. `beside` gives the sizes that the file does not. Takes any bytes;
// what is not understood is a note with its line.
DrillData readDrillFile(std::string_view bytes, DrillNumbers const &numbers,
                        std::map<int, DrillTool> const &beside, Notes &notes,
                        Tools::ToolProgress *progress = nullptr);

// Holes from a file in the form of a layer: round flashes are holes, strokes of discs slots, each diameter is
// a tool. What is neither is left out with a note.
DrillData readDrillsOfLayerFile(std::string_view bytes, LayerRules const &rules, Notes &notes,
                                LayerFacts &facts, Tools::ToolProgress *progress = nullptr);

// Sets the plating of tools for which nothing says it.
void setPlating(DrillData &data, bool plated);

// Notes how many holes and slots are of tools for which nothing says the plating: they are taken as not
// plated.
void tellUnknownPlating(DrillData const &data, Notes &notes);

} // namespace EDA::Fabrication
