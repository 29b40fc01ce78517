// The table of commands.
#include "Commands.h"

namespace EDATool {

const std::vector<CommandDef> &commands() {
    static const std::vector<CommandDef> table = {infoCommand(),    importCommand(),  exportCommand(),
                                                  convertCommand(), optionsCommand(), renderCommand()};
    return table;
}

} // namespace EDATool
