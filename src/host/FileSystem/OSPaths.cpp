// Working folder, long names, the preferences folder and stored names.
#include "host/FileSystem/OSPaths.h"
#include "host/FileSystem/PathConverterBase.h"

#include "host/FileSystem/NativePath.h"

#include <algorithm>
#include <cstdlib>

#ifdef _WIN32
#include <windows.h>
#endif

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

constexpr char nativeSeparator = static_cast<char>(fs::path::preferred_separator);

// An environment variable that names a folder; empty when it isn't set.
fs::path folderOf(const char *variable) {
#ifdef _WIN32
    const std::wstring name(variable, variable + std::char_traits<char>::length(variable));
    const wchar_t *value = _wgetenv(name.c_str());
#else
    const char *value = std::getenv(variable);
#endif
    return value != nullptr ? fs::path(value) : fs::path();
}

#ifdef _WIN32
fs::path userSettingsFolder() { return folderOf("APPDATA"); }
fs::path userDataFolder() { return folderOf("LOCALAPPDATA"); }
#else
// A folder of the user: the one that a variable names absolutely, or else one in his home.
fs::path userFolder(const char *variable, const char *inHome) {
    const fs::path named = folderOf(variable);
    if (named.is_absolute()) return named;
    const fs::path home = folderOf("HOME");
    return home.empty() ? home : home / inHome;
}

fs::path userSettingsFolder() { return userFolder("XDG_CONFIG_HOME", ".config"); }
fs::path userDataFolder() { return userFolder("XDG_DATA_HOME", ".local/share"); }
#endif

// What the variable names, or else the folder "eda" in one of the user's.
std::string chosenOr(const char *variable, const fs::path &parent) {
    const fs::path chosen = folderOf(variable);
    if (!chosen.empty()) return fromNative(chosen);
    return parent.empty() ? std::string() : fromNative(parent / "eda");
}

// The file of the running program; empty where the system doesn't tell.
fs::path programFile() {
#ifdef _WIN32
    std::wstring name(32768, L'\0');
    const DWORD size = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return size > 0 && size < name.size() ? fs::path(name.substr(0, size)) : fs::path();
#else
    std::error_code error;
    const fs::path file = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : file;
#endif
}

// From PREFIX/bin the folder is one level up; from the programs of a build tree up to four.
constexpr int sharedFolderLevels = 4;

} // namespace

std::string OSPaths::getCurrentDirectory() {
    std::error_code error;
    const fs::path folder = fs::current_path(error);
    return error ? std::string() : fromNative(folder);
}

bool OSPaths::setCurrentDirectory(const std::string &path) {
    std::error_code error;
    fs::current_path(toNative(path), error);
    return !error;
}

std::string OSPaths::getLongPathName(const std::string &path) {
#ifdef _WIN32
    const fs::path native = toNative(path);
    std::wstring name(32768, L'\0');
    const DWORD size = GetLongPathNameW(native.c_str(), name.data(), static_cast<DWORD>(name.size()));
    if (size > 0 && size < name.size()) return fromNative(fs::path(name.substr(0, size)));
#endif
    return path;
}

std::string OSPaths::getConfigurationFolder() { return chosenOr("EDA_CONFIG_DIR", userSettingsFolder()); }

std::string OSPaths::getDataFolder() { return chosenOr("EDA_DATA_DIR", userDataFolder()); }

std::string OSPaths::getSharedFolder() {
    const fs::path chosen = folderOf("EDA_SHARE_DIR");
    if (!chosen.empty()) return fromNative(chosen);
    fs::path above = programFile().parent_path();
    for (int i = 0; i < sharedFolderLevels && above.has_relative_path(); ++i) {
        above = above.parent_path();
        std::error_code error;
        const fs::path folder = above / "share" / "eda";
        if (fs::is_directory(folder, error)) return fromNative(folder);
    }
    return {};
}

std::string PathConverterBase::fromFFLPath(const std::string &path) {
    std::string result = path;
    std::replace(result.begin(), result.end(), '/', nativeSeparator);
    return result;
}

std::string PathConverterBase::toFFLPath(const std::string &path) {
    std::string result = path;
    std::replace(result.begin(), result.end(), nativeSeparator, '/');
    return result;
}

} // namespace FileSystem
