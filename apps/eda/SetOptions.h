// The values of the options of fabrication sets.
#pragma once

#include <string>

namespace EDATool {

// Of --span: where the holes of a drill file start and end.
struct SpanOption {
    std::string file;
    std::string from;
    std::string to;
};

// "FILE=FROM:TO". Throws UsageFailure for another form.
SpanOption parseSpan(const std::string &text);

// The number format of drill files.
struct DrillFormat {
    int integerDigits = 2;
    int decimalDigits = 4;
};

// "I.D". Throws UsageFailure for another form.
DrillFormat parseDrillFormat(const std::string &text);

} // namespace EDATool
