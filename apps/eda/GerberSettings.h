// The options of commands that read Gerber sets.
#pragma once

#include "Arguments.h"
#include "Design.h"

#include <vector>

namespace EDATool {

// The options of a command, and behind them those for designs of several steps and for Gerber sets. Those
// that the command has already, with a meaning of its own, are left out.
std::vector<OptionDef> withGerberOptions(std::vector<OptionDef> options);

// What the command line says about how a design is read.
DesignSettings designSettings(const Arguments &arguments);

} // namespace EDATool
