// Single files. Names are UTF-8; no operation throws for what the disk answers.
#pragma once

#include "host/FileSystem/Limits.h"

#include <cstdint>
#include <functional>
#include <string>

namespace FileSystem {

struct File {
    // Gets the share done, 0 to 1; false stops the copy.
    using CopyCallback = std::function<bool(double)>;

    // True for anything of that name but a folder.
    static bool exists(const std::string &path);

    // The size in bytes; 0 for what is not there or no regular file.
    static std::uint64_t size(const std::string &path);

    // True when both are names of one file or folder that is there, through links too.
    static bool isSame(const std::string &path, const std::string &other);

    // Removes a file, not a folder. False when there was none or it can't be removed.
    static bool remove(const std::string &path);

    // Copies a file's content. The target's folder must exist. The target appears whole or not at all.
    //   failIfExists  true: an existing target is left alone and the result is false
    //   keepTime      true: the target gets the source's time of last change
    //   callback      told of the progress; may be empty
    static bool copyFile(const std::string &source, const std::string &target, bool failIfExists = false,
                         bool keepTime = false, const CopyCallback &callback = nullptr);

    // The whole content. False, with an empty content and "name: reason" in the error, when the file is
    // missing, is a folder, a device or another thing that is no regular file, is larger than the limit in
    // bytes, or can't be read.
    static bool readAll(const std::string &path, std::string &content, std::string &error,
                        std::uint64_t limit = maxFileSize);
};

} // namespace FileSystem
