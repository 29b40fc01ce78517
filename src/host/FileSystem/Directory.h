// Folders. Names are UTF-8; no operation throws for what the disk answers.
#pragma once

#include <string>

namespace FileSystem {

struct Directory {
    static bool exists(const std::string &path);

    // Where the folder is once all links are followed; empty when there is none.
    static std::string resolved(const std::string &path);

    // Makes the folder and those above it. True when it exists afterwards.
    static bool create(const std::string &path);

    // Removes a folder. An empty one only, unless `withContent` is true; links inside are removed, never
    // followed. False when there was none or something in it can't be removed.
    static bool remove(const std::string &path, bool withContent = false);
};

} // namespace FileSystem
