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

// True when a hole from one layer to another, by their names, reaches the layer `number`, counted from 1. A
// hole of which the layers are not known goes through all of them.
bool reachesLayer(const std::string &from, const std::string &to, const std::vector<std::string> &names,
                  std::size_t number);

// From a lower to an upper height; the other way round for a via between layers without a dielectric.
struct HeightRange {
    double low = 0.0, high = 0.0;
};

// True when a hole of these heights reaches a layer of those, if only its face.
bool touches(const HeightRange &hole, const HeightRange &layer);

// True when a text means this file: its path, its name with or without the extension, in any case.
bool meansFile(const std::string &text, const std::string &file);

} // namespace EDATool
