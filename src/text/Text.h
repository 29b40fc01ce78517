// Comparing text without regard to case and reading numbers, in the same way in every locale.
//
// Nothing here looks at the process locale: a design must read alike on a machine with decimal commas.
#pragma once

#include <string>
#include <string_view>

namespace EDA {

// The text in upper case, one UTF-8 character at a time. Each character of the basic multilingual plane is
// replaced by its simple upper-case mapping from a fixed table. Characters above it and bytes that are not
// valid UTF-8 are copied as they stand. Some mappings change the length in bytes.
std::string upperCase(std::string_view text);

// True when the two texts are the same bytes once both are in upper case (see upperCase).
// ASCII texts are compared in place, without an allocation.
bool equalsIgnoreCase(std::string_view a, std::string_view b);

// Order of the two texts in upper case, compared as unsigned bytes; a prefix stands before the longer text.
// A strict weak ordering, whose equivalence is equalsIgnoreCase.
bool lessIgnoreCase(std::string_view a, std::string_view b);

// Orders the keys of a container with lessIgnoreCase.
struct LessIgnoreCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return lessIgnoreCase(a, b); }
};

// The number at the start of the text: blanks, a sign, then decimal digits with an optional point and
// exponent (".5", "5.", "1e5"), or a hexadecimal number ("0x1p3", an exponent being optional).
// What follows the number is ignored, so "3 mm" is 3.
//   emptyValue    the text is empty, or anywhere in it not valid UTF-8
//   defaultValue  no number at the start, "inf", "nan", or a number outside the range of double:
//                 too large, or not zero and too small to be told from it
double parseDouble(std::string_view text, double defaultValue, double emptyValue);

// The decimal whole number at the start of the text, after blanks and a sign. What follows is ignored, so
// "3.7" is 3. The results for text that gives no number are those of parseDouble; out of range is anything
// that int can't hold.
int parseInt(std::string_view text, int defaultValue, int emptyValue);

// The number cut to a whole one toward zero, and held to the range of int. NaN gives 0.
int toInt(double value);

} // namespace EDA
