// The configuration file that stands for one step of a design.
#pragma once

#include <string>

namespace QvDbWrap {

struct Configuration {
    std::string design; // the file, with its whole path
    std::string step;   // empty: the one that the design itself names
};

// Whether a file starts as a configuration, whatever its name. False for one that can't be read.
bool isConfiguration(const std::string &file);

// Throws std::runtime_error with "line N: reason" for a file that is none.
Configuration readConfiguration(const std::string &file);

// Puts the file in the place of whatever has its name; a link is replaced, never followed. Throws
// std::runtime_error when it can't be written.
void writeConfiguration(const Configuration &configuration, const std::string &file);

} // namespace QvDbWrap
