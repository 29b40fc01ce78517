// Text of designs made fit for terminals and pictures.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace EDATool {

// The text as valid UTF-8 on one line that cannot steer a terminal or turn the reading direction: control
// and formatting characters become "\u{1B}", bytes that are no UTF-8 become "\xNN".
std::string printable(std::string_view text);

// printable(), cut to `limit` characters with an ellipsis as the last. Names of a design have no length
// limit of their own.
std::string shortened(std::string_view text, std::size_t limit);

// The number of characters, code points that is, of valid UTF-8.
std::size_t countCharacters(std::string_view text);

// The text between single quotes, printable, for messages.
std::string inQuotes(std::string_view text);

// The text with & < > " written as entities, for XML. The text must be printable() already.
std::string xmlEscaped(std::string_view text);

// A number in few digits, as a person would write it: "12.5", "1e+09". C locale always.
std::string shortNumber(double value, int digits = 6);

} // namespace EDATool
