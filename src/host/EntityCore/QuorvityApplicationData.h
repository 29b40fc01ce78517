// Where the tools of the external layout suite are.
#pragma once

#include <string>

namespace EntityGUI {

// What is configured of the external suite.
class QuorvityApplicationData {
public:
    // `application` names whose configuration is meant, empty the running program's. This host keeps one
    // configuration, which is the same for all names.
    explicit QuorvityApplicationData(const std::string &application);

    // The folder of the suite's tools, with a "/" at its end; empty when none is configured. It is the one
    // that the environment variable EDA_TOOLS_DIR names, or else the folder "libexec/eda-tools" of the
    // installation or build tree that the running program is part of (FileSystem::OSPaths::getToolsFolder). A
    // folder that the variable names need not exist.
    const std::string &getEDAToolsFolder() const { return toolsFolder_; }

private:
    std::string toolsFolder_;
};

} // namespace EntityGUI
