// The commands of the tool.
#pragma once

#include "Arguments.h"

#include <string>
#include <vector>

namespace EDATool {

CommandDef infoCommand();
CommandDef importCommand();
CommandDef convertCommand();
CommandDef exportCommand();
CommandDef optionsCommand();
CommandDef renderCommand();

// In the order in which the help lists them.
const std::vector<CommandDef> &commands();

} // namespace EDATool
