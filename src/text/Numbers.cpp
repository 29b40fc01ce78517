// Reading numbers from text as the C locale spells them, and cutting them to whole ones.
#include "text/Text.h"

#include "text/Encoding.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace EDA {

namespace {

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

void skipBlanks(std::string_view &text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
}

// Takes a sign off the text; true when it was a minus.
bool takeSign(std::string_view &text) {
    if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
    const bool negative = text.front() == '-';
    text.remove_prefix(1);
    return negative;
}

// Whether digits start here, perhaps after a point. Keeps "inf", "nan" and a second sign out.
template <typename IsDigit> bool startsNumber(std::string_view text, IsDigit isDigitOfBase) {
    if (!text.empty() && text.front() == '.') text.remove_prefix(1);
    return !text.empty() && isDigitOfBase(text.front());
}

bool startsHexadecimal(std::string_view text) {
    return text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X') &&
           startsNumber(text.substr(2), isHexDigit);
}

// Reads the number at the start of a text without blanks and sign; false where there is none in range.
bool readDouble(std::string_view text, double &value) {
    if (!startsNumber(text, isDigit)) return false;
    auto format = std::chars_format::general;
    if (startsHexadecimal(text)) {
        text.remove_prefix(2);
        format = std::chars_format::hex;
    }
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, format);
    return result.ec == std::errc() && std::isfinite(value);
}

} // namespace

double parseDouble(std::string_view text, double defaultValue, double emptyValue) {
    if (text.empty() || !isValidUtf8(text)) return emptyValue;
    skipBlanks(text);
    const bool negative = takeSign(text);
    double value = 0.0;
    if (!readDouble(text, value)) return defaultValue;
    return negative ? -value : value;
}

int parseInt(std::string_view text, int defaultValue, int emptyValue) {
    if (text.empty() || !isValidUtf8(text)) return emptyValue;
    skipBlanks(text);
    const std::string_view withSign = text;
    const bool negative = takeSign(text);
    if (text.empty() || !isDigit(text.front())) return defaultValue;
    if (negative) text = withSign;
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() ? value : defaultValue;
}

int toInt(double value) {
    if (std::isnan(value)) return 0;
    if (value <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    if (value >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

} // namespace EDA
