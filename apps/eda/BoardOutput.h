// Writing a board in the format that the name of the output asks for: an IDX document or a pair of IDF files.
#pragma once

#include "model/EDABoard.h"

#include <string>
#include <vector>

namespace EDATool {

// Throws UsageFailure for a name of neither format.
void checkOutputName(const std::string &output);

// Before long work is done for it: throws UsageFailure where it would be written over a file that is read,
// and DesignFailure where it cannot be written.
void checkOutput(const std::string &output, const std::vector<std::string> &filesRead);

struct WrittenBoard {
    std::string summary;              // for people
    std::vector<std::string> notices; // what is lost or was changed, a line a kind; printable
};

// `units` is "MM", "THOU" or empty, which leaves the lengths as they are where the format can say their unit.
// What is written appears whole or not at all. Throws as makeIdfBoard and writeIdfPair do.
WrittenBoard writeBoard(const EDA::EDABoard &board, const std::string &output, const std::string &units);

} // namespace EDATool
