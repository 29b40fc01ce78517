// Where the application keeps files of its own.
#pragma once

#include <string>

namespace EntityGUI {

// What is known of this installation and its user.
class InstallationSettings {
public:
    // Those of the running program, as the system tells them at the time of the call.
    static InstallationSettings current();

    // Of a host that has a folder of its own for its users' files.
    explicit InstallationSettings(const std::string &dataFolder) : dataFolder_(dataFolder) {}

    // The user's folder for files; empty when the system names none.
    const std::string &getDataFolder() const { return dataFolder_; }

private:
    std::string dataFolder_;
};

struct ApplicationData {
    // The folder for files that belong to no saved model: the data folder of the settings, made here if need
    // be. Empty when there is none or it cannot be made. The flags are accepted for the interface and have
    // no meaning in this host.
    static std::string getApplicationFolder(bool, bool, bool, const InstallationSettings &settings);
};

} // namespace EntityGUI
