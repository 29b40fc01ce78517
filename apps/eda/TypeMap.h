// The map from the prefixes of reference designators to the types of components, as a file of the user.
#pragma once

#include <string>
#include <vector>

namespace EDATool {

// Looks through a type map before it is used: a CSV text with a prefix and a type in each line. Adds a
// warning, with file and line, for what will not do what its author thinks: a line without a comma, a type
// that does not exist, a prefix that an earlier line has with another type, a file without any row. Throws
// DesignFailure when the file cannot be read or is larger than any type map.
void checkTypeMap(const std::string &file, std::vector<std::string> &warnings);

} // namespace EDATool
