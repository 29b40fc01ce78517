// Reading a file of the published layer format, all of it.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "fabrication/Notes.h"
#include "host/Geometry/Bound2D.h"
#include "host/Tools/ToolProgress.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

enum class Unit { Unknown, Millimetre, Inch };

// What a file says of itself, apart from what it draws.
struct LayerFacts {
    // The file attributes, also those in comments: ".FileFunction" is {"Copper", "L1", "Top"}.
    std::map<std::string, std::vector<std::string>> attributes;
    std::vector<std::string> names;    // of the image and its parts
    std::vector<std::string> comments; // the first fifty
    Unit unit = Unit::Unknown;         // the first that the file names
    bool hasFormat = false;            // a number format
    int integerDigits = 0;
    int decimalDigits = 0;
    bool isNegative = false; // the image is what is not drawn

    std::size_t numApertures = 0;
    std::size_t numFlashes = 0;
    std::size_t numStrokes = 0; // lines and arcs
    std::size_t numArcs = 0;    // in strokes and regions
    std::size_t numRegions = 0;
    std::size_t numObjects() const { return numFlashes + numStrokes + numRegions; }
    Geometry::Bound2D bound; // of what is drawn, dark or clear, widths included

    // Values of a file attribute, or an empty list.
    std::vector<std::string> const &attribute(std::string const &name) const;
};

struct LayerRules {
    // What stands in for a file that does not say it.
    Unit unit = Unit::Unknown;
    bool isProbe = false; // read the heads alone: stop at the first object
};

// Reads the file and hands what it draws to the sink, in order. Everything is taken that revisions of the
// published format ever had: codes with and without operations, modal coordinates, operations and modes,
// single and multi quadrant arcs, incremental notation, both omissions of zeros, inch and millimetre by %MO,
// G70 and G71, step and repeat (a new one closes the one before: they nest through blocks only), block
// apertures, macros, aperture and file and object attributes (in comments too), mirroring, offset, scale,
// axes, image rotation and polarity, object polarity, mirroring, rotation and scale, regions, the end of the
// program, statements joined in one block or spread over lines. A negative image is drawn as a dark box
// around all that it holds, a millimetre wider, with dark and clear exchanged. Takes any bytes: what is not
// understood is a note with its line, and reading goes on. Stops when the sink is full, when the progress
// says cancelled and at the limits of Limits.h, with a note.
LayerFacts readLayerFile(std::string_view bytes, LayerRules const &rules, LayerSink &sink, Notes &notes,
                         Tools::ToolProgress *progress = nullptr);

} // namespace EDA::Fabrication
