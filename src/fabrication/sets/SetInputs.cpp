// Finding the files of a set.
#include "fabrication/sets/SetInputs.h"

#include "fabrication/sets/FileForm.h"
#include "fabrication/sets/FileRoles.h"
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/DirectoryListing.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/NativePath.h"
#include "host/FileSystem/Path.h"
#include "host/FileSystem/ZipArchive.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

// Archives are known by their first bytes, so that big files are not read for it.
bool isArchive(std::string const &path) {
    constexpr std::size_t looked = 512;
    std::string head(looked, '\0');
    std::FILE *const file = FileSystem::openFile(FileSystem::toNative(path), "rb");
    if (!file) return false;
    head.resize(std::fread(head.data(), 1, looked, file));
    std::fclose(file);
    return formOf(head) == FileForm::Archive;
}

// What systems leave beside files: "__MACOSX/._top.gbr", ".DS_Store".
bool isOfSystem(std::string const &name) {
    const std::vector<std::string> tokens = FileSystem::Path::getTokens(name);
    return std::any_of(tokens.begin(), tokens.end(), [](std::string const &token) {
        return token == "__MACOSX" || token == "Thumbs.db" ||
               (token.size() > 2 && token.front() == '.' && token != "..");
    });
}

std::string joined(std::string const &folder, std::string const &name) {
    const bool hasEnd = !folder.empty() && (folder.back() == '/' || folder.back() == '\\');
    return folder + (hasEnd ? "" : "/") + name;
}

} // namespace

bool SetInputs::add(std::string const &path, std::string &error) {
    const std::string name = FileSystem::Path::getLastToken(path);
    folders_.clear();
    if (FileSystem::Directory::exists(path)) {
        hasWholeSet_ = true;
        folders_.insert(FileSystem::Directory::resolved(path));
        return addFolder(path, "", 0, error);
    }
    if (!FileSystem::File::exists(path)) {
        error = path + ": no such file";
        return false;
    }
    if (!isArchive(path)) return addFile(path, name, error);
    hasWholeSet_ = true;
    return addArchive(path, error);
}

void SetInputs::leaveOut(std::string const &folder, std::string const &reason) {
    constexpr std::size_t most = 1000;
    if (warnings_.size() < most)
        warnings_.push_back("the folder " + inQuotes(folder) + " is left out: " + reason);
}

bool SetInputs::addFolder(std::string const &folder, std::string const &shown, int depth,
                          std::string &error) {
    const FileSystem::DirectoryListing listing(folder);
    if (!listing.isValid()) {
        error = folder + ": cannot be read";
        return false;
    }
    for (std::string const &name : listing) {
        const std::string path = joined(folder, name);
        const std::string inside = shown.empty() ? name : shown + "/" + name;
        if (isOfSystem(name)) continue;
        if (!FileSystem::Directory::exists(path)) {
            if (!addFile(path, inside, error)) return false;
        } else if (depth >= maxFolderDepth) {
            leaveOut(inside, "it lies deeper than " + std::to_string(maxFolderDepth) + " folders");
        } else if (!folders_.insert(FileSystem::Directory::resolved(path)).second) {
            leaveOut(inside, "it is a link to a folder that is looked through already");
        } else if (!addFolder(path, inside, depth + 1, error)) {
            return false;
        }
    }
    return true;
}

bool SetInputs::addArchive(std::string const &path, std::string &error) {
    if (!unpacked_) unpacked_ = std::make_unique<FileSystem::TemporaryFolder>();
    error = unpacked_->error();
    if (!error.empty()) return false;
    const FileSystem::ZipArchive archive(path);
    const std::string folder = joined(unpacked_->path(), std::to_string(numArchives_++));
    const std::vector<std::string> names = archive.allEntries(false, true);
    error = archive.getError();
    if (error.empty() && !archive.extractTo(folder)) error = archive.getError();
    if (!error.empty()) return false;
    const std::string shown = FileSystem::Path::getLastToken(path);
    return std::all_of(names.begin(), names.end(), [&](std::string const &name) {
        return isOfSystem(name) || addFile(joined(folder, name), shown + "/" + name, error);
    });
}

bool SetInputs::addFile(std::string const &path, std::string const &shown, std::string &error) {
    if (files_.size() >= maxSetFiles) {
        error = "there are more than " + std::to_string(maxSetFiles) + " files";
        return false;
    }
    files_.push_back({path, shown});
    return true;
}

} // namespace EDA::Fabrication
