// Reads archives: zip, tar, also packed with gzip, compress, bzip2 or xz, and 7z.
#pragma once

#include "host/FileSystem/Limits.h"

#include <cstdint>
#include <string>
#include <vector>

namespace FileSystem {

// Every operation walks the archive from its start and answers with false or an empty list, and a text in
// getError, when the archive is damaged, protected by a password, or refused. Refused as a whole are
// archives with an absolute name or a name with ".." in them, and those beyond the limits of Limits.h.
//
// Names are UTF-8 with '/' between their tokens, whatever the archive has; "." tokens are dropped. Links and
// devices in an archive are passed over. An archive in an archive is a file like any other.
class ZipArchive {
public:
    // The only mode.
    static constexpr int readMode = 2;

    // Another mode than readMode, or a file that can't be read, leaves an archive without entries.
    explicit ZipArchive(const std::string &path, int mode = readMode);

    // The names of the entries, in the archive's order.
    //   withFolders  true: folders that have an entry of their own are among them
    //   fullPaths    false: the last token of each name alone
    std::vector<std::string> allEntries(bool withFolders, bool fullPaths) const;

    // The content of the first file entry of that full name. Larger than the limit in bytes is a failure.
    bool readEntry(const std::string &name, std::string &content, std::uint64_t limit = maxFileSize) const;

    // Writes all files below the folder, which is made if need be. Nothing is ever written outside it: a
    // place that a link leads out of the folder is a failure. After a failure, what was written before it
    // remains.
    bool extractTo(const std::string &folder) const;

    // Why the last operation failed: "name: reason". Else empty.
    const std::string &getError() const { return error_; }

private:
    std::string path_;
    int mode_;
    mutable std::string error_;
};

} // namespace FileSystem
