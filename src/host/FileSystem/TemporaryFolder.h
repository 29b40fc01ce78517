// A folder for a while.
#pragma once

#include <string>

namespace FileSystem {

// A new, empty folder below the system's folder for temporary files, for its user alone where the system has
// such rights. It is removed with all that is in it at the end; links inside are removed, never followed.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    // Empty when no folder could be made.
    const std::string &path() const { return path_; }

    // "name: reason" when no folder could be made.
    const std::string &error() const { return error_; }

private:
    std::string path_;
    std::string error_;
};

} // namespace FileSystem
