// Libraries of entities: what is in them, finding items, loading them.
#pragma once

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/LibraryInterface.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace LibraryManager {

class Library;

// One item of a library: an entity with all below it, by name and type.
class LibraryRecord {
public:
    LibraryRecord(const Library &library, std::string name, const EntityModel::Entity &entity)
        : library_(library), name_(std::move(name)), entity_(entity) {}

    const std::string &getName() const { return name_; }
    const EntityModel::Type &getType() const { return entity_.getType(); }
    const Library &getLibrary() const { return library_; }
    const EntityModel::Entity &getEntity() const { return entity_; }

    // The item's path: that of its library, a slash, its name. Empty for null.
    static std::string getLibraryPath(const LibraryRecord *item);

private:
    const Library &library_;
    std::string name_;
    const EntityModel::Entity &entity_;
};

// A tree of entities whose root's children are the items, such as the materials of a project. Of several
// items of one name and type the first counts.
class Library {
public:
    // Takes a tree that is outside every model, as ModelFile::loadTree gives it.
    Library(std::string path, std::unique_ptr<EntityModel::Entity> root);

    const std::string &getPath() const { return path_; }
    size_t getSize() const { return size_; }

    // The item of exactly this name and type, or null.
    LibraryRecord *find(const std::string &name, const EntityModel::Type &type) const;

private:
    std::string path_;
    std::unique_ptr<EntityModel::Entity> root_;
    // By name; each list holds one record a type.
    std::unordered_map<std::string, std::vector<std::unique_ptr<LibraryRecord>>> items_;
    size_t size_ = 0;
};

// The libraries of the process. Lookups never scan: libraries and items are indexed by name. Not guarded
// against threads: add the libraries before other threads use them.
class LibraryManager {
public:
    // The paths under which an import looks for materials, in this order.
    static constexpr const char *vendorMaterialsPath = "Vendor Libraries/Materials";
    static constexpr const char *shippedMaterialsPath = "Orvane Material Library";

    // A registered library by its path, for example "Vendor Libraries/Materials"; with `within`, the path
    // continues that library's own. Null if there is none.
    static Library *findLibraryByLibraryPath(const std::string &path, Library *within);

    // The first item of exactly this name and type in a library, or null. The last argument is accepted for
    // the interface and has no meaning in this host.
    static LibraryRecord *findItemByNameAndType(const std::string &name, const EntityModel::Type &type,
                                                Library *library, const std::string &);

    // The item of a path as LibraryRecord::getLibraryPath gives it, or null. Where the path can be read in
    // several ways, the item of the library with the longest path.
    static LibraryRecord *findItemByPath(const std::string &path, const EntityModel::Type &type);

    // Tells one registration from all others of the process; 0 is none.
    using Ticket = std::uint64_t;

    // Registers a library in place of one of the same path. 0 for null.
    static Ticket addLibrary(std::unique_ptr<Library> library);

    // Takes a registration back. False when it doesn't stand (any more).
    static bool removeLibrary(Ticket ticket);

    // Reads a model file and registers the children of its root under a path. 0, with the file and the reason
    // in `error`, when it can't be read; then what was registered stays.
    static Ticket addLibraryFile(const std::string &path, const std::string &filename, std::string &error);
};

// The materials that come with this software.
class ShippedLibrary {
public:
    // Registers them under shippedMaterialsPath. Without a file name, that of getMaterialsFile. False, with
    // the reason in `error`, when there are none.
    static bool registerMaterials(std::string &error, const std::string &filename = std::string());

    // The file "materials.json" in the folder of shared files; empty when there is no such folder.
    static std::string getMaterialsFile();
};

// Fills a new entity from a library item: hand it to EntityEditor::createEntity. Without a selected path it
// supplies nothing, and the entity is a plain new one.
class LibraryDefaultLoader : public EntityModel::LibraryInterface {
public:
    // The item's path, as LibraryRecord::getLibraryPath gives it. The second text is accepted for the
    // interface and has no meaning in this host.
    void setSelectedPath(const std::string &path, const std::string &);

    // This loader maps nothing: no item, NotMapped.
    void setComponentTypes(const std::set<std::string> &types) override;
    void getMapping(std::string &result, const std::string &key, std::string &path,
                    MappingType &type) override;
    EntityModel::Entity *loadItem(const std::string &name, const std::string &path, bool exact,
                                  Attributes &attributes, MappingType &type) override;
    EntityModel::LibraryItem *findItem(const std::string &name, const std::string &path, bool exact,
                                       Attributes &attributes, MappingType &type) override;

    // Copies the selected item, if it is of the entity's type. The entity keeps the name that it has.
    bool supplyContent(EntityModel::Entity &entity) override;

private:
    std::string selectedPath_;
};

} // namespace LibraryManager
