// An IDF pair made of parts, to be filled by the tests.
#pragma once

#include "support/TempFolder.h"

#include <string>

namespace TestSupport {

// A board of 200 by 100 mm. Its parts are rectangles of 4 by 2 mm about their origins, or of any other size.
class PartDesign {
public:
    // A definition of an electrical part; each property is "NAME VALUE".
    PartDesign &define(const std::string &package, const std::string &properties = "", double height = 1.0,
                       double width = 4.0, double depth = 2.0) {
        const std::string x = std::to_string(width / 2);
        const std::string y = std::to_string(depth / 2);
        library_ += ".ELECTRICAL\n" + package + " PN MM " + std::to_string(height) + "\n0 -" + x + " -" + y +
                    " 0\n0 " + x + " -" + y + " 0\n0 " + x + " " + y + " 0\n0 -" + x + " " + y + " 0\n0 -" +
                    x + " -" + y + " 0\n";
        if (!properties.empty()) library_ += "PROP " + properties + "\n";
        library_ += ".END_ELECTRICAL\n";
        return *this;
    }

    // Another record of the library as it stands.
    PartDesign &defineAs(const std::string &record) {
        library_ += record;
        return *this;
    }

    PartDesign &place(const std::string &package, const std::string &designator,
                      const std::string &status = "PLACED", const std::string &side = "TOP", double x = 50.0,
                      double y = 50.0) {
        placements_ += package + " PN " + designator + "\n" + std::to_string(x) + " " + std::to_string(y) +
                       " 0 0 " + side + " " + status + "\n";
        return *this;
    }

    // Writes parts.emn and parts.emp; gives the path of the board file.
    std::string write(const TempFolder &folder) const {
        folder.write("parts.emp",
                     ".HEADER\nLIBRARY_FILE 3.0 \"test\" 2024/01/01.00:00:00 1\n.END_HEADER\n" + library_);
        return folder.write("parts.emn",
                            ".HEADER\nBOARD_FILE 3.0 \"test\" 2024/01/01.00:00:00 1\nparts MM\n.END_HEADER\n"
                            ".BOARD_OUTLINE ECAD\n1.6\n0 0 0 0\n0 200 0 0\n0 200 100 0\n0 0 100 0\n0 0 0 "
                            "0\n.END_BOARD_OUTLINE\n.PLACEMENT\n" +
                                placements_ + ".END_PLACEMENT\n");
    }

private:
    std::string library_;
    std::string placements_;
};

} // namespace TestSupport
