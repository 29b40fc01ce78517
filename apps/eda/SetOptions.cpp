// The values of the options of fabrication sets.
#include "SetOptions.h"

#include "Failure.h"
#include "Printable.h"

namespace EDATool {

namespace {

int digitOf(char c) { return c >= '0' && c <= '9' ? c - '0' : -1; }

} // namespace

// Names of layers have no colon; those of files may have anything.
SpanOption parseSpan(const std::string &text) {
    const std::size_t colon = text.rfind(':');
    const std::size_t equals = text.rfind('=', colon);
    if (colon == std::string::npos || equals == std::string::npos || equals == 0 || equals + 1 == colon ||
        colon + 1 == text.size()) {
        throw UsageFailure("--span " + inQuotes(text) + " has not the form FILE=FROM:TO");
    }
    return {text.substr(0, equals), text.substr(equals + 1, colon - equals - 1), text.substr(colon + 1)};
}

DrillFormat parseDrillFormat(const std::string &text) {
    if (text.size() != 3 || text[1] != '.' || digitOf(text[0]) < 0 || digitOf(text[2]) < 0)
        throw UsageFailure("--drill-format " + inQuotes(text) + " has not the form I.D, such as 2.4");
    return {digitOf(text[0]), digitOf(text[2])};
}

} // namespace EDATool
