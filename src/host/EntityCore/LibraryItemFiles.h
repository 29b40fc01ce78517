// The item files of a component library.
#pragma once

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/LibraryInterface.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace LibraryManager {

// An item: an entity that stands in a tree of its own, with its materials.
class FileItem : public EntityModel::LibraryItem {
public:
    explicit FileItem(EntityModel::Entity &entity) : entity_(entity) {}
    EntityModel::Entity *getEntity() override { return &entity_; }

private:
    EntityModel::Entity &entity_;
};

// Reads item files, each once. An item is an entity of a component type that is not inside another item.
class LibraryItemFiles {
public:
    explicit LibraryItemFiles(std::string folder);

    // The item of this name in a file of the folder, the first of several namesakes; without a name the
    // file's only item. Null with the reason in `problem`. `problem` stays empty when this file's reason was
    // given before.
    FileItem *find(const std::string &file, const std::string &name, std::string &problem);

    // The labels of the types that are items.
    static const std::vector<std::string> &itemTypes();

private:
    struct Content {
        std::unique_ptr<EntityModel::Entity> root; // null: can't be read
        std::vector<std::unique_ptr<FileItem>> items;
        std::unordered_map<std::string, FileItem *> byName;
    };

    Content &load(const std::string &file, std::string &problem);
    void collectItems(Content &content) const;

    std::string folder_;
    std::unordered_map<std::string, Content> files_;
    std::uint64_t bytesLeft_; // of all item files together
};

} // namespace LibraryManager
