// Making, removing and listing folders.
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/DirectoryListing.h"

#include "host/FileSystem/NativePath.h"

#include <algorithm>

namespace FileSystem {

namespace fs = std::filesystem;

bool Directory::exists(const std::string &path) {
    std::error_code error;
    return fs::is_directory(toNative(path), error);
}

std::string Directory::resolved(const std::string &path) {
    std::error_code error;
    const fs::path place = fs::canonical(toNative(path), error);
    return error ? std::string() : fromNative(place);
}

bool Directory::create(const std::string &path) {
    std::error_code error;
    fs::create_directories(toNative(path), error);
    return exists(path);
}

bool Directory::remove(const std::string &path, bool withContent) {
    std::error_code error;
    const fs::path native = toNative(path);
    if (!fs::is_directory(fs::symlink_status(native, error))) return false;
    if (!withContent) return fs::remove(native, error) && !error;
    fs::remove_all(native, error);
    return !error;
}

DirectoryListing::DirectoryListing(const std::string &folder) {
    std::error_code error;
    fs::directory_iterator entry(toNative(folder), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        names_.push_back(fromNative(entry->path().filename()));
    valid_ = !error;
    if (!valid_) names_.clear();
    std::sort(names_.begin(), names_.end());
}

} // namespace FileSystem
