// Numbers as text, in the C locale whatever the process's locale is.
#pragma once

#include <string>
#include <string_view>

namespace EntityModel {

// Appends the shortest digits that read back as the same number; -0 as "0".
void appendNumber(std::string &text, double value);

// Reads a finite number at the start of `text`, leading blanks skipped, and cuts it off together with the blanks
// around it. False, and `text` as it was, when there is none.
bool takeNumber(std::string_view &text, double &value);

std::string_view trimmed(std::string_view text);

} // namespace EntityModel
