// File names in the system's own form, and error texts.
#include "host/FileSystem/NativePath.h"

#include <cerrno>

namespace FileSystem {

std::filesystem::path toNative(const std::string &path) {
    try {
        return std::filesystem::u8path(path);
    } catch (const std::exception &) {
        return {};
    }
}

std::string fromNative(const std::filesystem::path &path) { return path.u8string(); }

std::string fileError(const std::string &path, const std::string &reason) { return path + ": " + reason; }

std::string fileError(const std::string &path, const std::error_code &reason) {
    return fileError(path, reason.message());
}

std::error_code lastError() { return {errno, std::generic_category()}; }

std::FILE *openFile(const std::filesystem::path &path, const char *mode) {
#ifdef _WIN32
    const std::wstring wideMode(mode, mode + std::char_traits<char>::length(mode));
    return _wfopen(path.c_str(), wideMode.c_str());
#else
    return std::fopen(path.c_str(), mode);
#endif
}

} // namespace FileSystem
