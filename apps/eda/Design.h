// The files of one design, and the reader that holds what is in them.
#pragma once

#include "readers/EDAReader.h"

#include <memory>
#include <string>
#include <vector>

namespace EDATool {

struct Design {
    std::string format;             // "IDF"
    std::vector<std::string> files; // all that were read
    bool hasBoard = false;          // false: only a library of components
    std::unique_ptr<EDA::EDAReader> reader;
    std::vector<std::string> warnings; // printable, one line each, with the name of the file

    const EDA::EDABoard &board() const { return reader->getBoard(); }
    EDA::EDABoard &board() { return reader->getBoard(); }
};

// Reads the files of one design, and the files that belong to them. Their format is known by what is in them,
// or else by their names. Throws DesignFailure, or UsageFailure for files that make no design together.
Design readDesign(const std::vector<std::string> &files);

// True when this is a model file, by its content or else by its name. Throws DesignFailure where the file
// cannot be read.
bool isModelFile(const std::string &file);

// Prints the warnings.
void printWarnings(const Design &design);

} // namespace EDATool
