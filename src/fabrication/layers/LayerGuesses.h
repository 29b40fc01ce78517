// What a layer file that does not state its format or unit most likely means.
#pragma once

#include "fabrication/layers/CoordinateFormat.h"
#include "fabrication/layers/LayerFile.h"

#include <string_view>

namespace EDA::Fabrication {

// What the statements of a whole file show.
struct LayerSurvey {
    Unit unit = Unit::Unknown; // the first that is named anywhere
    int mostDigits = 0;        // of a coordinate without decimal point
    bool hasUneven = false;    // coordinates differ in their number of digits
    bool hasLeadingZeros = false;
    std::int64_t mostValue = 0;   // of the coordinates as whole numbers
    bool hasSignedOffset = false; // an offset to a centre with a minus sign
};

LayerSurvey surveyOf(std::string_view bytes);

// The format of a file that states none; the unit is that of the file.
CoordinateFormat guessedFormat(LayerSurvey const &survey, Unit unit);

// The unit of a file that states none, by its format: boards are smaller than a metre.
Unit guessedUnit(LayerSurvey const &survey, CoordinateFormat const &format);

} // namespace EDA::Fabrication
