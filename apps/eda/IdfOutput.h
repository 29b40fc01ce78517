// Writing a pair of IDF files: both of them or none.
#pragma once

#include "model/EDABoard.h"

#include <string>
#include <vector>

namespace EDATool {

struct IdfNames {
    std::string board;
    std::string library;
};

// True for a name that ends in an extension of IDF board files, in any case: ".emn", ".brd", ".bdf" or
// ".idf".
bool isIdfBoardName(const std::string &file);

// The pair that -o names by its board file: OUT.emn and OUT.emp, OUT.brd and OUT.lib, OUT.bdf and OUT.ldf,
// OUT.idf and OUT.lib. An extension in upper case gives one in upper case. Throws UsageFailure for any other
// name.
IdfNames idfNames(const std::string &boardFile);

// Before long work is done for the pair: throws UsageFailure when one of its files is among those that are
// read or both are the same file, and DesignFailure when one of them cannot be written.
void checkIdfNames(const IdfNames &names, const std::vector<std::string> &filesRead);

// Writes the pair. Both files appear whole, or both names keep what they held, and DesignFailure names the
// file and the reason. The date in the files is that of SOURCE_DATE_EPOCH where this environment variable
// gives the seconds since 1970, in universal time; UsageFailure where it is no such number.
void writeIdfPair(const EDA::EDABoard &board, const IdfNames &names);

// What was written, as a table for people.
std::string idfSummary(const EDA::EDABoard &board, const IdfNames &names);

} // namespace EDATool
