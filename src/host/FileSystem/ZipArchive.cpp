// Listing and unpacking archives.
#include "host/FileSystem/ZipArchive.h"

#include "host/FileSystem/ArchiveWalk.h"
#include "host/FileSystem/NativePath.h"
#include "host/FileSystem/Path.h"

#include <algorithm>
#include <fstream>

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

// Whether the path, with all links followed, is the root or below it.
bool isInside(const fs::path &path, const fs::path &root) {
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    if (error) return false;
    return std::mismatch(root.begin(), root.end(), real.begin(), real.end()).first == root.end();
}

// Makes the folder of an entry; empty text, or why it can't be.
std::string makeFolder(const fs::path &folder, const fs::path &root) {
    // The part that is there already may hold a link, so it is looked at before anything is made in it.
    fs::path there = folder;
    std::error_code error;
    while (!fs::exists(fs::symlink_status(there, error)) && there.has_relative_path())
        there = there.parent_path();
    if (!isInside(there, root)) return "leads out of the folder";
    fs::create_directories(folder, error);
    return fs::is_directory(folder) ? std::string() : "can't make its folder";
}

// Writes the entry that the walk stands on; empty text, or why it can't be.
std::string writeEntry(ArchiveWalk &walk, const ArchiveEntry &entry, const fs::path &root) {
    const fs::path target = root / toNative(entry.name);
    if (entry.isFolder) return makeFolder(target, root);
    if (std::string reason = makeFolder(target.parent_path(), root); !reason.empty()) return reason;
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(target, error))) return "a link is in its place";
    std::ofstream stream(target, std::ios::binary | std::ios::trunc);
    if (!stream) return "can't be written";
    const bool read = walk.readContent([&stream](const char *data, std::size_t size) {
        return static_cast<bool>(stream.write(data, static_cast<std::streamsize>(size)));
    });
    if (!read) return walk.error();
    stream.close();
    return stream ? std::string() : "can't be written";
}

} // namespace

ZipArchive::ZipArchive(const std::string &path, int mode) : path_(path), mode_(mode) {}

std::vector<std::string> ZipArchive::allEntries(bool withFolders, bool fullPaths) const {
    std::vector<std::string> names;
    error_.clear();
    if (mode_ != readMode) {
        error_ = fileError(path_, "can only be read");
        return names;
    }
    ArchiveWalk walk(path_);
    ArchiveEntry entry;
    while (walk.next(entry))
        if (withFolders || !entry.isFolder)
            names.push_back(fullPaths ? entry.name : Path::getLastToken(entry.name));
    if (walk.error().empty()) return names;
    error_ = fileError(path_, walk.error());
    return {};
}

bool ZipArchive::readEntry(const std::string &name, std::string &content, std::uint64_t limit) const {
    content.clear();
    error_.clear();
    const auto fail = [&](const std::string &reason) {
        content.clear();
        error_ = fileError(path_, reason);
        return false;
    };
    if (mode_ != readMode) return fail("can only be read");
    ArchiveWalk walk(path_);
    ArchiveEntry entry;
    while (walk.next(entry)) {
        if (entry.isFolder || entry.name != name) continue;
        const bool read = walk.readContent([&](const char *data, std::size_t size) {
            if (size > limit - content.size()) return false;
            content.append(data, size);
            return true;
        });
        return read || fail(name + " " + walk.error());
    }
    return fail(walk.error().empty() ? "has no entry " + name : walk.error());
}

bool ZipArchive::extractTo(const std::string &folder) const {
    error_.clear();
    const auto fail = [&](const std::string &reason) {
        error_ = fileError(path_, reason);
        return false;
    };
    if (mode_ != readMode) return fail("can only be read");
    ArchiveWalk walk(path_);
    if (!walk.error().empty()) return fail(walk.error());
    std::error_code error;
    fs::create_directories(toNative(folder), error);
    const fs::path root = fs::canonical(toNative(folder), error);
    if (error) return fail("can't make the folder " + folder);
    ArchiveEntry entry;
    while (walk.next(entry))
        if (const std::string reason = writeEntry(walk, entry, root); !reason.empty())
            return fail(entry.name + " " + reason);
    return walk.error().empty() || fail(walk.error());
}

} // namespace FileSystem
