// Numbers of coordinates in the format that a layer file states.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace EDA::Fabrication {

struct CoordinateFormat {
    bool omitsTrailing = false; // zeros at the end; else those at the start
    bool isIncremental = false;
    std::array<int, 2> integerDigits{2, 2}; // of X and Y
    std::array<int, 2> decimalDigits{4, 4};
};

// What follows "FS" in the statement of the format. False, and nothing is changed, where it states no digits.
bool parseFormat(std::string_view text, CoordinateFormat &format);

// A number as it stands in a statement.
struct Digits {
    std::int64_t value = 0; // of all digits; of the first eighteen where there are more
    int count = 0;          // of digits
    int decimals = -1;      // digits after a decimal point; -1: there is no point
};

inline Digits takeDigits(const char *&at, const char *end) {
    constexpr int most = 18;
    Digits digits;
    const bool isNegative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++at;
    for (; at != end; ++at) {
        const char c = *at;
        if (c >= '0' && c <= '9') {
            if (digits.count >= most) continue;
            digits.value = digits.value * 10 + (c - '0');
            ++digits.count;
            if (digits.decimals >= 0) ++digits.decimals;
        } else if (c == '.' && digits.decimals < 0) {
            digits.decimals = 0;
        } else {
            break;
        }
    }
    if (isNegative) digits.value = -digits.value;
    return digits;
}

// Turns the numbers of statements into millimetres.
class CoordinateScale {
public:
    CoordinateScale() { set({}, 1.0); }
    // A unit of the file is this many millimetres.
    void set(CoordinateFormat const &format, double unit);

    // Axis 0 is X (and I), 1 is Y (and J).
    double millimetres(Digits const &digits, int axis) const {
        const double value = static_cast<double>(digits.value) * unit_;
        if (digits.decimals >= 0) return value / powers_[static_cast<std::size_t>(digits.decimals)];
        const auto row = static_cast<std::size_t>(axis);
        return value / divisors_[row][static_cast<std::size_t>(digits.count)];
    }

private:
    static constexpr std::size_t size = 19;

    double unit_ = 1.0;
    std::array<double, size> powers_{};
    std::array<std::array<double, size>, 2> divisors_{}; // by the number of digits
};

// A decimal number; false unless all of the text is one, blanks around it aside, and it is finite.
bool parseDecimal(std::string_view text, double &value);

// A decimal number at the start of the text, which is cut off it; false where there is none.
bool takeDecimal(std::string_view &text, double &value);

// A whole number without sign at the start of the text, which is cut off it. Huge ones are cut to the
// largest.
bool takeInteger(std::string_view &text, int &value);

std::string_view trimmed(std::string_view text);

} // namespace EDA::Fabrication
