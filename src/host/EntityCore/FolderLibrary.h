// A component library in a folder: an index of names, and items in files beside it.
#pragma once

#include "host/EntityCore/LibraryManager.h"
#include "host/EntityModel/LibraryInterface.h"

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace LibraryManager {

// All far above any real library. A file beyond them can't be read.
namespace LibraryLimits {
constexpr size_t indexSize = size_t{32} << 20; // bytes of the index
constexpr size_t itemSize = size_t{64} << 20;  // bytes of an item file
constexpr size_t itemsSize = size_t{1} << 30;  // bytes of all item files
constexpr size_t messages = 1000;              // kept; further ones are counted
} // namespace LibraryLimits

// The library of a folder. All it may hold, "index.json" with its item files and "materials.json", is told in
// docs/libraries.md. What is broken is left out with a message, and the rest works: a row of the index that
// is wrong does not exist, and one whose item can't be loaded counts as not mapped.
//
// An item file is read once, when an item of it is first asked for; every placement gets a copy. Lookups
// never scan. Entities that were given out may outlive the library.
class FolderLibrary : public EntityModel::LibraryInterface {
public:
    // Reads the index. `folder` is a name in UTF-8.
    explicit FolderLibrary(const std::string &folder);

    // Takes the registered materials back.
    ~FolderLibrary() override;
    FolderLibrary(const FolderLibrary &) = delete;
    FolderLibrary &operator=(const FolderLibrary &) = delete;

    // Is there a folder with an index, or with materials, that can be used?
    bool isUsable() const;

    // The good rows of the index.
    size_t getNumRows() const;

    // Registers "materials.json" of the folder as LibraryManager::vendorMaterialsPath, in place of any other.
    // True without such a file; false, with a message, when it is broken; then what was registered stays.
    bool registerMaterials();

    // What was left out: the file, the place in it and the reason. Grows as items are loaded.
    const std::vector<std::string> &getMessages() const;
    size_t getNumFurtherMessages() const; // beyond those kept

    // Items of other types are refused, with a message, and count as not mapped. All component types of the
    // schema are taken until this is called.
    void setComponentTypes(const std::set<std::string> &types) override;

    // The item's name and file, and how the key is mapped, as the row of exactly this key tells. No row:
    // both empty and NotMapped. A row of a broken item: its name and file, and NotMapped.
    void getMapping(std::string &result, const std::string &key, std::string &path,
                    MappingType &type) override;

    // A copy of the item that belongs to the caller, and how it is mapped. With an empty path `name` is a key
    // of the index; without `exact` it is compared without its blanks at the ends and without regard to case
    // where no row has it exactly. With a path, as getMapping gives it, `name` is that of an item.
    // `attributes` is left alone. Null when there is no row (NotMapped), when the row maps to nothing (`type`
    // tells), or when the item is broken or of a type that isn't wanted (NotMapped).
    // Links of the copy to the item's own materials lead into the library until the copy is added to a model.
    EntityModel::Entity *loadItem(const std::string &name, const std::string &path, bool exact,
                                  Attributes &attributes, MappingType &type) override;

    // The same item itself, which stays the library's. It must not be changed.
    EntityModel::LibraryItem *findItem(const std::string &name, const std::string &path, bool exact,
                                       Attributes &attributes, MappingType &type) override;

    // The key of the item that supplyContent copies; the empty key selects none.
    void setSelectedKey(const std::string &key);
    bool supplyContent(EntityModel::Entity &entity) override;

private:
    class Content;
    std::unique_ptr<Content> content_;
};

} // namespace LibraryManager
