// Another working folder for a while.
#pragma once

#include <filesystem>
#include <string>

namespace FileSystem {

// Changes the working folder of the whole process, and back when its scope ends, however it ends.
class WorkingFolder {
public:
    // Throws std::filesystem::filesystem_error, and nothing is changed, when the folder can't be entered or
    // the one before is gone. An empty name stays in the folder.
    explicit WorkingFolder(const std::string &folder);

    // Goes back unless that is done. A folder that is gone by then is left unmentioned.
    ~WorkingFolder();

    WorkingFolder(const WorkingFolder &) = delete;
    WorkingFolder &operator=(const WorkingFolder &) = delete;

    // Goes back now. Throws std::filesystem::filesystem_error when that fails, and doesn't try again.
    void goBack();

private:
    std::filesystem::path before_; // empty: done
};

} // namespace FileSystem
