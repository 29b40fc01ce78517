// Numbers as text in six significant digits.
#include "text/SixDigits.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace EDA {

namespace {

constexpr int digits = 6;
constexpr int lowestExponent = -4; // below, and from 10^digits on, the text has an exponent
constexpr std::uint32_t tenToDigits = 1'000'000;

// 10^-4 to 10^6 and 10^0 to 10^9.
constexpr double magnitudes[] = {1e-4, 1e-3, 1e-2, 1e-1, 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
constexpr double scales[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// A number of 100000 to 999999 times 10^(exponent - 5).
struct Decimal {
    std::uint32_t number = 0;
    int exponent = 0;
};

// Six digits by one multiplication. Its rounding error is below 1e-9, so that only a remainder that close to
// one half is in doubt; then, and outside of the plain range, this gives false.
bool toDecimal(double magnitude, Decimal &decimal) {
    if (!(magnitude >= magnitudes[0] && magnitude < magnitudes[digits - lowestExponent])) return false;
    int exponent = lowestExponent - 1; // counted without a branch: sizes of lengths vary
    for (const double power : magnitudes)
        exponent += magnitude >= power ? 1 : 0;
    const double scaled = magnitude * scales[digits - 1 - exponent];
    std::uint32_t number = static_cast<std::uint32_t>(scaled);
    const double remainder = scaled - number;
    if (std::fabs(remainder - 0.5) < 1e-6) return false;
    if (remainder > 0.5) ++number;
    if (number == tenToDigits) {
        number /= 10;
        ++exponent;
    }
    decimal = {number, exponent};
    return exponent < digits;
}

// "00" to "99" in a row.
struct Pairs {
    char text[200] = {};
    constexpr Pairs() {
        for (int i = 0; i < 100; ++i) {
            text[2 * i] = static_cast<char>('0' + i / 10);
            text[2 * i + 1] = static_cast<char>('0' + i % 10);
        }
    }
};
constexpr Pairs pairs;

// Copies are of a fixed size, which costs less than one of the size that is wanted.
constexpr std::size_t copySize = 8;

// The figures of a number, and so much behind them that a copy may start at any of them.
struct Figures {
    char text[digits + copySize] = {};
    int used = digits; // without trailing zeros

    explicit Figures(std::uint32_t number) {
        std::memcpy(text, pairs.text + 2 * (number / 10000), 2);
        std::memcpy(text + 2, pairs.text + 2 * (number / 100 % 100), 2);
        std::memcpy(text + 4, pairs.text + 2 * (number % 100), 2);
        while (text[used - 1] == '0')
            --used;
    }
};

char *putDecimal(char *out, const Decimal &decimal) {
    const Figures figures(decimal.number);
    const int before = decimal.exponent + 1; // digits before the point
    if (before <= 0) {
        std::memcpy(out, "0.000000", copySize);
        out += 2 - before;
        std::memcpy(out, figures.text, copySize);
        return out + figures.used;
    }
    std::memcpy(out, figures.text, copySize);
    if (figures.used <= before) return out + before;
    out[before] = '.';
    std::memcpy(out + before + 1, figures.text + before, copySize);
    return out + figures.used + 1;
}

} // namespace

char *putSixDigits(char *out, double value) {
    if (std::signbit(value) && !std::isnan(value)) *out++ = '-';
    const double magnitude = std::fabs(value);
    if (magnitude == 0.0) {
        *out = '0';
        return out + 1;
    }
    Decimal decimal;
    if (toDecimal(magnitude, decimal)) return putDecimal(out, decimal);
    return std::to_chars(out, out + sixDigitsRoom - 1, magnitude, std::chars_format::general, digits).ptr;
}

void appendSixDigits(std::string &text, double value) {
    char buffer[sixDigitsRoom];
    text.append(buffer, putSixDigits(buffer, value));
}

} // namespace EDA
