// A row of the table that maps the components of a design to library items.
#pragma once

#include "host/EntityModel/LibraryInterface.h"

#include <string>
#include <utility>
#include <vector>

namespace LibraryManager {

// What a host's library dialog shows and edits: the mapped item's name and path, how it is mapped, and
// further texts.
class LibraryItemMapRecord {
public:
    using MappingType = EntityModel::LibraryInterface::MappingType;

    struct Attribute {
        std::string name;
        std::string value;
        bool isShown;
    };

    explicit LibraryItemMapRecord(std::string name) : name_(std::move(name)) {}

    const std::string &getName() const { return name_; }

    void setPath(const std::string &path) { path_ = path; }
    const std::string &getPath() const { return path_; }

    void setMappingType(MappingType type) { mappingType_ = type; }
    MappingType getMappingType() const { return mappingType_; }

    // Appends a text; `isShown` tells a dialog whether it has something to show.
    void addAttribute(const std::string &name, const std::string &value, bool isShown) {
        attributes_.push_back({name, value, isShown});
    }
    const std::vector<Attribute> &getAttributes() const { return attributes_; }

private:
    std::string name_;
    std::string path_;
    MappingType mappingType_ = MappingType::NotMapped;
    std::vector<Attribute> attributes_;
};

} // namespace LibraryManager
