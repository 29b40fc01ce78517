// Folders that the operating system knows. Names are UTF-8.
#pragma once

#include <string>

namespace FileSystem {

struct OSPaths {
    // The working folder of the process, or empty when it is gone.
    static std::string getCurrentDirectory();

    // Changes the working folder of the whole process.
    static bool setCurrentDirectory(const std::string &path);

    // The name from the root on, as the working folder is now. An absolute name and an empty one come back as
    // they are.
    static std::string getAbsolutePath(const std::string &path);

    // Sets an environment variable of this process, and of the programs that it starts, to a UTF-8 text. An
    // empty text leaves an empty variable where the system has such, and none elsewhere: who reads a variable
    // takes both as unset. Not to be called while another thread reads the environment. False when the system
    // refuses the name.
    static bool setEnvironment(const std::string &name, const std::string &value);

    // The value of an environment variable of this process; empty when it isn't set.
    static std::string getEnvironment(const std::string &name);

    // The name with each shortened token written out, on systems that have short names. A name that doesn't
    // exist, and any name elsewhere, comes back as it is.
    static std::string getLongPathName(const std::string &path);

    // The folder for the user's preferences; it need not exist. The environment variable EDA_CONFIG_DIR
    // names it. Without that it is the folder "eda" in XDG_CONFIG_HOME, where that is an absolute path, or
    // in HOME/.config; on Windows in APPDATA. Empty when none of these is set.
    static std::string getConfigurationFolder();

    // The folder for files of the user's models that have no folder of their own yet; it need not exist. The
    // environment variable EDA_DATA_DIR names it. Without that it is the folder "eda" in XDG_DATA_HOME, where
    // that is an absolute path, or in HOME/.local/share; on Windows in LOCALAPPDATA. Empty when none of these
    // is set.
    static std::string getDataFolder();

    // The folder of the files that come with this software, such as its materials. The environment variable
    // EDA_SHARE_DIR names it. Without that it is the first folder "share/eda" found beside the folder of the
    // running program or beside one of the few folders above it, which serves installations and build trees
    // alike. Empty when there is none.
    static std::string getSharedFolder();

    // The folder of the programs that convert designs for this software. The environment variable
    // EDA_TOOLS_DIR names it; set to an empty text, there is none. Without the variable it is the first
    // folder "libexec/eda-tools" found as the shared folder is. Empty when there is none. (On Windows no
    // variable is empty: there, one that names a missing folder does it.)
    static std::string getToolsFolder();
};

} // namespace FileSystem
