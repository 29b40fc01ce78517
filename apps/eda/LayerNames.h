// Layers as the command line names them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// The index of the layer that a text means: its file, where layers have files, or its name, in any case; its
// number, from 1; "top" for the first and "bottom" for the last. Files may share a name but for the
// extension, and so do their layers then. `files` is empty or as long as `names`; `option` is what the text
// came with. Throws UsageFailure naming all layers, and DesignFailure where there are none.
std::size_t findLayer(const std::vector<std::string> &names, const std::vector<std::string> &files,
                      const std::string &text, const std::string &option);

// True when a text means this file: its path, its name with or without the extension, in any case.
bool meansFile(const std::string &text, const std::string &file);

} // namespace EDATool
