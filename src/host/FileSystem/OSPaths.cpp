// Working folder, environment, long names, the folders of the user and of this software, and stored names.
#include "host/FileSystem/OSPaths.h"
#include "host/FileSystem/PathConverterBase.h"

#include "host/FileSystem/NativePath.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#ifdef _WIN32
#include <windows.h>
#endif

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

constexpr char nativeSeparator = static_cast<char>(fs::path::preferred_separator);

// What an environment variable says; nothing when it isn't set.
std::optional<fs::path> valueOf(const char *variable) {
#ifdef _WIN32
    const std::wstring name(variable, variable + std::char_traits<char>::length(variable));
    const wchar_t *value = _wgetenv(name.c_str());
#else
    const char *value = std::getenv(variable);
#endif
    return value != nullptr ? std::make_optional<fs::path>(value) : std::nullopt;
}

// An environment variable that names a folder; empty when it isn't set.
fs::path folderOf(const char *variable) { return valueOf(variable).value_or(fs::path()); }

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
constexpr int folderLevels = 4;

// The folder of that relative name beside the program's folder or beside one above it; empty without one.
std::string folderNearProgram(const fs::path &relative) {
    fs::path above = programFile().parent_path();
    for (int i = 0; i < folderLevels && above.has_relative_path(); ++i) {
        above = above.parent_path();
        std::error_code error;
        const fs::path folder = above / relative;
        if (fs::is_directory(folder, error)) return fromNative(folder);
    }
    return {};
}

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

std::string OSPaths::getAbsolutePath(const std::string &path) {
    const fs::path native = toNative(path);
    if (native.empty() || native.is_absolute()) return path;
    std::error_code error;
    const fs::path absolute = fs::absolute(native, error);
    return error ? path : fromNative(absolute);
}

bool OSPaths::setEnvironment(const std::string &name, const std::string &value) {
#ifdef _WIN32
    return _wputenv_s(toNative(name).c_str(), toNative(value).c_str()) == 0;
#else
    return setenv(name.c_str(), value.c_str(), 1) == 0;
#endif
}

std::string OSPaths::getEnvironment(const std::string &name) { return fromNative(folderOf(name.c_str())); }

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
    return folderNearProgram(fs::path("share") / "eda");
}

std::string OSPaths::getToolsFolder() {
    if (const std::optional<fs::path> chosen = valueOf("EDA_TOOLS_DIR")) return fromNative(*chosen);
    return folderNearProgram(fs::path("libexec") / "eda-tools");
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
