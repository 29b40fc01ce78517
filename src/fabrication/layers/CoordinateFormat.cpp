// Number formats of layer files.
#include "fabrication/layers/CoordinateFormat.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace EDA::Fabrication {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// "24", and "2.4" as some write it.
bool takeAxis(std::string_view &text, int &integerDigits, int &decimalDigits) {
    if (text.empty() || !isDigit(text[0])) return false;
    const std::size_t second = text.size() > 1 && text[1] == '.' ? 2 : 1;
    if (text.size() <= second || !isDigit(text[second])) return false;
    integerDigits = text[0] - '0';
    decimalDigits = text[second] - '0';
    text.remove_prefix(second + 1);
    return true;
}

} // namespace

std::string_view trimmed(std::string_view text) {
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool parseFormat(std::string_view text, CoordinateFormat &format) {
    CoordinateFormat read = format;
    read.omitsTrailing = read.isIncremental = false;
    bool has[2] = {false, false};
    while (!text.empty()) {
        const char c = text[0];
        text.remove_prefix(1);
        if (c == 'T' || c == 't') read.omitsTrailing = true;
        if (c == 'I' || c == 'i') read.isIncremental = true;
        if (c == 'X' || c == 'x') has[0] = takeAxis(text, read.integerDigits[0], read.decimalDigits[0]);
        if (c == 'Y' || c == 'y') has[1] = takeAxis(text, read.integerDigits[1], read.decimalDigits[1]);
    }
    if (!has[0] && !has[1]) return false;
    // One that stands alone is that of both.
    const std::size_t from = has[0] ? 0 : 1;
    for (std::size_t axis = 0; axis < 2; ++axis) {
        if (has[axis]) continue;
        read.integerDigits[axis] = read.integerDigits[from];
        read.decimalDigits[axis] = read.decimalDigits[from];
    }
    format = read;
    return true;
}

void CoordinateScale::set(CoordinateFormat const &format, double unit) {
    unit_ = unit;
    for (std::size_t i = 0; i < size; ++i) {
        powers_[i] = std::pow(10.0, static_cast<double>(i));
        for (std::size_t axis = 0; axis < 2; ++axis) {
            // With zeros left off at the end, the first digit is that of the highest power.
            const int decimals = format.omitsTrailing ? static_cast<int>(i) - format.integerDigits[axis]
                                                      : format.decimalDigits[axis];
            divisors_[axis][i] = std::pow(10.0, decimals);
        }
    }
}

bool takeDecimal(std::string_view &text, double &value) {
    std::string_view rest = trimmed(text);
    if (rest.size() > 1 && rest[0] == '+' && rest[1] != '-') rest.remove_prefix(1);
    double read = 0.0;
    const auto result =
        std::from_chars(rest.data(), rest.data() + rest.size(), read, std::chars_format::fixed);
    if (result.ec != std::errc() || !std::isfinite(read)) return false;
    value = read;
    text = rest.substr(static_cast<std::size_t>(result.ptr - rest.data()));
    return true;
}

bool parseDecimal(std::string_view text, double &value) {
    return takeDecimal(text, value) && trimmed(text).empty();
}

bool takeInteger(std::string_view &text, int &value) {
    constexpr int most = std::numeric_limits<int>::max();
    if (text.empty() || !isDigit(text[0])) return false;
    value = 0;
    for (; !text.empty() && isDigit(text[0]); text.remove_prefix(1)) {
        const int digit = text[0] - '0';
        value = value > (most - digit) / 10 ? most : value * 10 + digit;
    }
    return true;
}

} // namespace EDA::Fabrication
