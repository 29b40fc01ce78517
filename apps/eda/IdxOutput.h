// Writing an IDX document.
#pragma once

#include "model/EDABoard.h"

#include <string>
#include <vector>

namespace EDATool {

// True for a name that ends in ".idx", in any case.
bool isIdxName(const std::string &file);

// Before long work is done for it: throws UsageFailure when the file is among those that are read, and
// DesignFailure when it cannot be written.
void checkIdxName(const std::string &file, const std::vector<std::string> &filesRead);

// The file appears whole, or keeps what it held, and DesignFailure names it.
void writeIdx(const EDA::EDABoard &board, const std::string &file);

// What was written, as a table for people.
std::string idxSummary(const EDA::EDABoard &board, const std::string &file);

} // namespace EDATool
