// Cutting one line into tokens.
#pragma once

#include "host/FileSystem/CSVRules.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace FileSystem {

enum class LineKind { Row, Blank, Comment };

LineKind lineKind(std::string_view line, const CSVRules &rules);

// Replaces the row by the line's tokens. The strings that the row had are used again.
void splitLine(std::string_view line, const CSVRules &rules, std::vector<std::string> &row);

std::size_t countTokens(std::string_view line, const CSVRules &rules);

} // namespace FileSystem
