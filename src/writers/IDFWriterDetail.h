// What the sections of an IDF file share.
#pragma once

#include <string>

namespace EDA {

// The word of the format for a side of the board. Only the model's own spellings are known, case included;
// any other text stays.
inline std::string const &idfSide(std::string const &side) {
    static const std::string top = "TOP", bottom = "BOTTOM";
    if (side == "Top") return top;
    return side == "Bottom" ? bottom : side;
}

} // namespace EDA
