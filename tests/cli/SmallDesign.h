// A small IDF pair as text, to be changed by the tests.
#pragma once

#include "support/TempFolder.h"

#include <string>

namespace TestSupport {

// 40 by 20 mm with a rounded corner of radius 5, a round cut-out of radius 2, a keepout on each side, two
// drilled holes, and three placements: U1 on top, U2 on the bottom turned by 90 degrees, H1 mechanical.
inline std::string smallBoard(const std::string &units = "MM") {
    return ".HEADER\nBOARD_FILE 3.0 \"test\" 2024/01/01.00:00:00 1\nsmall " + units +
           "\n.END_HEADER\n"
           ".BOARD_OUTLINE ECAD\n1.6\n"
           "0 0 0 0\n0 40 0 0\n0 40 15 0\n0 35 20 90\n0 0 20 0\n0 0 0 0\n"
           "1 10 10 0\n1 12 10 360\n"
           ".END_BOARD_OUTLINE\n"
           ".PLACE_KEEPOUT ECAD\nTOP 1.0\n0 20 2 0\n0 30 2 0\n0 30 6 0\n0 20 6 0\n0 20 2 "
           "0\n.END_PLACE_KEEPOUT\n"
           ".VIA_KEEPOUT ECAD\n0 2 2 0\n0 6 2 0\n0 6 6 0\n0 2 6 0\n0 2 2 0\n.END_VIA_KEEPOUT\n"
           ".DRILLED_HOLES\n3.2 36 4 NPTH BOARD MTG ECAD\n0.8 18 15 PTH BOARD VIA ECAD\n.END_DRILLED_HOLES\n"
           ".PLACEMENT\nQFP P1 U1\n25 12 0 0 TOP PLACED\nQFP P1 U2\n15 12 0 90 BOTTOM PLACED\n"
           "POST P2 H1\n30 16 0 0 TOP PLACED\n.END_PLACEMENT\n";
}

inline std::string smallLibrary() {
    return ".HEADER\nLIBRARY_FILE 3.0 \"test\" 2024/01/01.00:00:00 1\n.END_HEADER\n"
           ".ELECTRICAL\nQFP P1 MM 1.5\n0 -3 -2 0\n0 3 -2 0\n0 3 2 0\n0 -3 2 0\n0 -3 -2 0\n.END_ELECTRICAL\n"
           ".MECHANICAL\nPOST P2 MM 8\n0 0 0 0\n0 1 0 360\n.END_MECHANICAL\n";
}

// Writes the pair as small.emn and small.emp; gives the path of the board file.
inline std::string writeSmallDesign(const TempFolder &folder) {
    folder.write("small.emp", smallLibrary());
    return folder.write("small.emn", smallBoard());
}

// A board with so many keepouts that its import takes a while.
inline std::string bigBoard(int keepouts) {
    std::string text = ".HEADER\nBOARD_FILE 3.0 \"test\" 2024/01/01.00:00:00 1\nbig MM\n.END_HEADER\n"
                       ".BOARD_OUTLINE ECAD\n1.6\n0 0 0 0\n0 100 0 0\n0 100 100 0\n0 0 100 0\n0 0 0 0\n"
                       ".END_BOARD_OUTLINE\n";
    for (int index = 0; index < keepouts; ++index) {
        text +=
            ".PLACE_KEEPOUT ECAD\nTOP 1.0\n0 1 1 0\n0 2 1 0\n0 2 2 0\n0 1 3 0\n0 1 1 0\n.END_PLACE_KEEPOUT\n";
    }
    return text;
}

} // namespace TestSupport
