// The files that a user means by files, folders and archives.
#pragma once

#include "host/FileSystem/TemporaryFolder.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace EDA::Fabrication {

struct InputFile {
    std::string file;
    std::string shown; // "fab.zip/gerbers/top.gbr"
};

// Files in the order given; those of folders in the order of their names, folders in them too, up to a depth;
// those of archives in the archive's order. A folder deeper than that, or that a link leads back to, is left
// out with a warning. Archives are unpacked into a folder that is made then.
class SetInputs {
public:
    // False, with the reason, for what is not there, cannot be read or is beyond a limit.
    bool add(std::string const &path, std::string &error);

    std::vector<InputFile> const &files() const { return files_; }

    std::vector<std::string> const &warnings() const { return warnings_; }

    // Whether a folder or an archive was among them: a whole set, not files that were picked.
    bool hasWholeSet() const { return hasWholeSet_; }

    // The folder with what archives held, if any; it must stay while the files are read.
    std::unique_ptr<FileSystem::TemporaryFolder> takeUnpacked() { return std::move(unpacked_); }

private:
    void leaveOut(std::string const &folder, std::string const &reason);
    bool addFolder(std::string const &folder, std::string const &shown, int depth, std::string &error);
    bool addArchive(std::string const &path, std::string &error);
    bool addFile(std::string const &path, std::string const &shown, std::string &error);

    std::vector<InputFile> files_;
    std::vector<std::string> warnings_;
    std::set<std::string> folders_; // looked through, with links followed
    bool hasWholeSet_ = false;
    std::unique_ptr<FileSystem::TemporaryFolder> unpacked_;
    std::size_t numArchives_ = 0;
};

constexpr std::size_t maxSetFiles = 10'000;
constexpr int maxFolderDepth = 16;

} // namespace EDA::Fabrication
