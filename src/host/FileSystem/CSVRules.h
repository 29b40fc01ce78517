// How text is cut into rows and tokens.
#pragma once

#include <array>

namespace FileSystem {

// The meaning of each rule is told at CSVParser, which sets them.
struct CSVRules {
    std::array<bool, 256> isSeparator{};
    char lineEnd = '\n';
    char comment = '\0'; // '\0': none
    bool mergeSeparators = false;
    bool trimTokens = false;
    bool keepLastEmpty = false;
    bool quotes = false;
    bool dropBlankRows = false;
    bool skipTitleRow = false;
};

} // namespace FileSystem
