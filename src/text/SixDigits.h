// Numbers as text in six significant digits.
#pragma once

#include <cstddef>
#include <string>

namespace EDA {

// What putSixDigits may write to. The longest text has 13 characters, "-1.23457e-300".
constexpr std::size_t sixDigitsRoom = 24;

// Writes the number as a standard stream with its default format does in the C locale: rounded to six
// significant digits, without trailing zeros, with an exponent below 1e-4 and from 1e6 on ("0.1", "123.457",
// "1e+06", "-0", "inf", "nan"), but that a NaN has no sign here. Gives the end of the text; behind it, within
// `sixDigitsRoom`, may stand anything.
char *putSixDigits(char *out, double value);

// The same behind a text.
void appendSixDigits(std::string &text, double value);

} // namespace EDA
