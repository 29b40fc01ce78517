// The table of commands.
#include "Commands.h"

namespace EDATool {

const std::vector<CommandDef> &commands() {
    static const std::vector<CommandDef> table = {infoCommand(), importCommand(), renderCommand()};
    return table;
}

} // namespace EDATool
