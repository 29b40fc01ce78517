// Reading a fabrication set through the front end.
#pragma once

#include "Design.h"

#include <string>
#include <vector>

namespace EDATool {

// Reads the files, which may be archives, and tells what each was taken for, what was normalised, what was
// guessed and what was left out. One file alone that is no archive is drawn whatever kind of layer it is.
// Throws UsageFailure for settings that name nothing that is there, and DesignFailure where nothing is read.
void readFabricationDesign(const std::vector<std::string> &files, const DesignSettings &settings,
                           Design &design);

// True for an archive that holds layers or drills, by the names in it or else by what is in its files, and no
// database of a layout suite.
bool isFabricationArchive(const std::string &file);

} // namespace EDATool
