// What the sections of an IDF file share.
#pragma once

#include "model/EDAOutline.h"
#include "writers/IDFRowsDetail.h"

#include <string>

namespace EDA {

// The rows of an outline and of those inside it. They stay among the others on their way to the stream: many
// outlines are short.
void addOutline(EDAOutline const &outline, IDFRows &rows);

// The word of the format for a side of the board. Only the model's own spellings are known, case included;
// any other text stays.
inline std::string const &idfSide(std::string const &side) {
    static const std::string top = "TOP", bottom = "BOTTOM";
    if (side == "Top") return top;
    return side == "Bottom" ? bottom : side;
}

} // namespace EDA
