// What Gerber and drill files say that their reader passes over, counted so that it can be told.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// One kind of loss in one file.
struct GerberLoss {
    std::string what; // "coordinates with a decimal point"
    std::string meaning;
    std::size_t line = 0; // of the first, from 1
    std::size_t count = 0;
};

// What a look through a file tells, without reading it as a design.
struct GerberFacts {
    bool isGerberText = false;             // a statement of layer files or of drill files was found
    bool isDrill = false;                  // a drill file: it has "M48" or tools
    std::vector<std::string> fileFunction; // "Copper", "L1", "Top"; in comments as well; of drill files too
    std::vector<std::string> names;        // of the layer or the image, as the file tells them
    int physicalOrder = 0;                 // "Layer_Physical_Order" in a comment; 0: not told
    std::string units;                     // "mm", "in" or empty
    bool hasFormat = false;                // a number format stands in the header of a drill file:
    int integerDigits = 0;
    int decimalDigits = 0;
    std::vector<GerberLoss> losses;
};

// Looks through the text of a file. Takes any bytes.
GerberFacts lookThroughGerber(std::string text);

} // namespace EDATool
