// The names in a folder.
#pragma once

#include <string>
#include <vector>

namespace FileSystem {

// The last tokens of all files and folders in one folder, without "." and "..", in the order of their bytes,
// which is the same on every machine. Taken once, in the constructor. A folder that can't be read is empty
// and isValid is false.
class DirectoryListing {
public:
    using const_iterator = std::vector<std::string>::const_iterator;

    explicit DirectoryListing(const std::string &folder);

    const_iterator begin() const { return names_.begin(); }
    const_iterator end() const { return names_.end(); }
    bool isValid() const { return valid_; }

private:
    std::vector<std::string> names_;
    bool valid_ = false;
};

} // namespace FileSystem
