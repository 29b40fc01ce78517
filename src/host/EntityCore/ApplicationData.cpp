// Where the application keeps files of its own.
#include "host/EntityCore/ApplicationData.h"

#include "host/FileSystem/Directory.h"
#include "host/FileSystem/OSPaths.h"

namespace EntityGUI {

InstallationSettings InstallationSettings::current() {
    return InstallationSettings(FileSystem::OSPaths::getDataFolder());
}

std::string ApplicationData::getApplicationFolder(bool, bool, bool, const InstallationSettings &settings) {
    const std::string &folder = settings.getDataFolder();
    return !folder.empty() && FileSystem::Directory::create(folder) ? folder : std::string();
}

} // namespace EntityGUI
