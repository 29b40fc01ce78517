// The libraries of one run: materials, and components that replace what a design has.
#pragma once

#include "Arguments.h"
#include "host/EntityCore/FolderLibrary.h"

#include <memory>
#include <string>
#include <vector>

namespace EDATool {

// Takes --library DIR and --no-library: without either the materials that come with eda serve, with the first
// those of the folder come before them, with the second there is no library at all.
class Libraries {
public:
    // Adds warnings for what is missing or broken. Throws DesignFailure when the named folder is no library.
    Libraries(const Arguments &arguments, std::vector<std::string> &warnings);

    // The components of the named folder, or null.
    EntityModel::LibraryInterface *components() const { return components_.get(); }

    // What the library found broken since it was opened or asked last: items are read when they are needed.
    std::vector<std::string> newMessages();

    // The files that the folder is known by, for the check that no output replaces them.
    std::vector<std::string> files() const;

    // The map from designators to types that comes with eda; empty when it is missing.
    static std::string shippedTypeMap();

private:
    std::string folder_;
    std::unique_ptr<LibraryManager::FolderLibrary> components_;
    std::size_t numTold_ = 0;
};

} // namespace EDATool
