// Changing the working folder, and back.
#include "host/FileSystem/WorkingFolder.h"

#include "host/FileSystem/NativePath.h"

#include <utility>

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

// The library's own exception of a failed change doesn't name the folder.
void enter(const fs::path &folder) {
    std::error_code error;
    fs::current_path(folder, error);
    if (error) throw fs::filesystem_error("can't change the working folder", folder, error);
}

} // namespace

WorkingFolder::WorkingFolder(const std::string &folder) : before_(fs::current_path()) {
    if (!folder.empty()) enter(toNative(folder));
}

WorkingFolder::~WorkingFolder() {
    if (before_.empty()) return;
    std::error_code ignored;
    fs::current_path(before_, ignored);
}

void WorkingFolder::goBack() {
    const fs::path before = std::exchange(before_, fs::path());
    if (!before.empty()) enter(before);
}

} // namespace FileSystem
