// The files of a Gerber set, told apart and put in order.
#pragma once

#include "Design.h"
#include "GerberRoles.h"
#include "readers/gerber/GerberReader.h"
#include "SetOptions.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

struct GerberFile {
    std::string file;
    GerberFacts facts;
    GerberRole role;
};

struct DrillFile {
    GerberFile drill;
    std::size_t from = 0; // layers where its holes start and end
    std::size_t to = 0;
};

struct GerberSet {
    std::vector<GerberFile> layers; // of copper, from top to bottom
    std::vector<DrillFile> drills;

    std::vector<std::string> layerFiles() const;
    std::vector<std::string> layerNames() const; // files without folder and extension, not always unique
};

// Looks through the files and sorts them. What is left out, and each choice made, goes to the warnings,
// notices and sources of the design. Throws UsageFailure for settings that name no file or layer, and
// DesignFailure where nothing is left.
GerberSet sortGerberFiles(const std::vector<std::string> &files, const DesignSettings &settings,
                          Design &design);

// As the settings say, or else that of the first layer, or else 2.4; tells which.
DrillFormat drillFormatOf(const GerberSet &set, const DesignSettings &settings, Design &design);

// The tool unites conductors unless the settings say otherwise: the pieces as drawn overlap. The options are
// those of this process alone; nothing is saved. Throws UsageFailure for options that there are not.
void uniteUnlessTold(EDA::GerberReader &reader, const DesignSettings &settings);

} // namespace EDATool
