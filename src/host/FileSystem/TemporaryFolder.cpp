// Making and removing a folder for a while.
#include "host/FileSystem/TemporaryFolder.h"

#include "host/FileSystem/Directory.h"
#include "host/FileSystem/NativePath.h"

#include <filesystem>
#include <random>

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

constexpr int nameTries = 1000;

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    std::random_device random;
    for (int number = 0; number < nameTries && !error; ++number) {
        const fs::path folder = parent / ("eda-" + std::to_string(random()) + std::to_string(random()));
        // False without an error when the name is taken.
        if (!fs::create_directory(folder, error)) continue;
        path_ = fromNative(folder);
        fs::permissions(folder, fs::perms::owner_all, error);
        return;
    }
    error_ = fileError(fromNative(parent), error ? error.message() : "no name is left for a folder");
}

TemporaryFolder::~TemporaryFolder() {
    if (!path_.empty()) Directory::remove(path_, true);
}

} // namespace FileSystem
