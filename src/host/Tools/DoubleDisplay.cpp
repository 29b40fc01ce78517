// Shortest decimal text of a number.
#include "host/Tools/DoubleDisplay.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace EntityModel {

namespace {

constexpr double smallestPlain = 1e-4;
// More places than any double has above the smallest magnitude that is written without an exponent.
constexpr int mostDecimals = 20;

// Room for every double in fixed notation: 309 digits, point, sign and places.
constexpr std::size_t bufferSize = 512;

void dropTrailingZeros(std::string &text) {
    if (text.find('.') == std::string::npos) return;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
}

std::string shortest(double value, std::chars_format format) {
    char buffer[bufferSize];
    const auto result = std::to_chars(buffer, buffer + bufferSize, value, format);
    return {buffer, result.ptr};
}

std::string rounded(double value, int decimals) {
    char buffer[bufferSize];
    const int places = std::min(decimals, mostDecimals);
    const auto result = std::to_chars(buffer, buffer + bufferSize, value, std::chars_format::fixed, places);
    std::string text(buffer, result.ptr);
    dropTrailingZeros(text);
    return text == "-0" ? "0" : text;
}

std::string number(double value, int decimals, double exponentFrom) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
    if (value == 0.0) return "0";
    const double magnitude = std::fabs(value);
    if (magnitude >= exponentFrom) return shortest(value, std::chars_format::scientific);
    if (decimals > 0) return rounded(value, decimals);
    if (magnitude < smallestPlain) return shortest(value, std::chars_format::scientific);
    return shortest(value, std::chars_format::fixed);
}

} // namespace

DoubleDisplay &DoubleDisplay::get() {
    static DoubleDisplay display;
    return display;
}

std::string DoubleDisplay::getDoubleString(double value, const std::string &units, int decimals,
                                           double exponentFrom) const {
    const std::string text = number(value, decimals, exponentFrom);
    return units.empty() ? text : text + ' ' + units;
}

} // namespace EntityModel
