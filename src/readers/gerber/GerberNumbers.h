// Numbers in Gerber and drill files. What is no number as a whole is 0, and so is one out of range.
#pragma once

#include <string_view>

namespace EDA {

// Blanks around the number are allowed. Whole decimal numbers with a sign.
int gerberInt(std::string_view text);

// Decimal numbers with a sign, a point and an exponent. "inf", "nan" and hexadecimal numbers are none.
double gerberDouble(std::string_view text);

// The same for the number at the start of the text, whatever follows it.
int leadingInt(std::string_view text);
double leadingDouble(std::string_view text);

} // namespace EDA
