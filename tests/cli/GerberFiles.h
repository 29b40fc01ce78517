// Small Gerber and drill files as text, to be changed by the tests.
#pragma once

#include "support/TempFolder.h"

#include <string>
#include <vector>

namespace TestSupport {

// A layer in millimetres with four decimals: aperture 10 is a circle of 1 mm, 11 a square of 2 mm.
inline std::string gerberLayer(const std::string &body, const std::string &header = std::string()) {
    return "G04 a layer*\n%FSLAX24Y24*%\n%MOMM*%\n" + header + "%ADD10C,1*%\n%ADD11R,2X2*%\n" + body +
           "M02*\n";
}

// Two squares that overlap, and one apart.
inline std::string threeSquares() { return "D11*\nX0Y0D03*\nX010000Y0D03*\nX100000Y0D03*\n"; }

inline std::string drillFile(const std::string &body, const std::string &header = "METRIC,TZ\nT01C0.8\n") {
    return "M48\n" + header + "%\n" + body + "M30\n";
}

// A board of two layers with a hole through both and a solder mask beside them.
inline std::vector<std::string> writeGerberSet(const TempFolder &folder) {
    return {folder.write("bottom.gbr", gerberLayer("D10*\nX0Y0D03*\n")),
            folder.write("top.gbr", gerberLayer(threeSquares())),
            folder.write("top_mask.gbr", gerberLayer("D11*\nX0Y0D03*\n")),
            folder.write("holes.drl", drillFile("T01\nX010000Y020000\n"))};
}

} // namespace TestSupport
