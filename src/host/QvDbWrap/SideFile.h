// Small files that are written beside designs, and the marks that files begin with.
#pragma once

#include <string>
#include <string_view>

namespace QvDbWrap {

// Whether a regular file begins with the mark and a blank. False for one that can't be read.
bool startsWithMark(const std::string &file, std::string_view mark);

// Removes what has this name, a link itself and not what it leads to. False when something of the name
// remains.
bool removeSideFile(const std::string &file);

// Removes what has this name and writes a new file. A folder of designs may come from anybody, with links in
// it that lead elsewhere, so nothing is written through one. False, with the reason, when it can't be
// written.
bool replaceSideFile(const std::string &file, const std::string &text, std::string &error);

} // namespace QvDbWrap
