// Between the form of a name that files of this system store and the form of the machine.
#pragma once

#include <string>

namespace FileSystem {

// The stored form is UTF-8 with '/' between its tokens on every system, so that a model file made on one
// machine can be opened on another.
struct PathConverterBase {
    // From the stored form to the machine's: '/' becomes the separator of the system.
    static std::string fromFFLPath(const std::string &path);

    // From the machine's form to the stored one. Where '\' separates tokens it becomes '/'; elsewhere it is
    // an ordinary character of a name and stays.
    static std::string toFFLPath(const std::string &path);
};

} // namespace FileSystem
