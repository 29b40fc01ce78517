// Registered libraries, their items, and loading from them.
#include "host/EntityCore/LibraryManager.h"

#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/ModelFile.h"
#include "host/FileSystem/OSPaths.h"

#include <algorithm>
#include <utility>

namespace LibraryManager {

using EntityModel::Entity;
using EntityModel::Type;

namespace {

class Registry {
public:
    static Registry &instance() {
        // The schema outlives the entities of the libraries.
        EntityModel::Schema::instance();
        static Registry registry;
        return registry;
    }

    Library *find(const std::string &path) const {
        const auto found = libraries_.find(path);
        return found == libraries_.end() ? nullptr : found->second.library.get();
    }

    LibraryManager::Ticket add(std::unique_ptr<Library> library) {
        longestPath_ = std::max(longestPath_, library->getPath().size());
        const std::string path = library->getPath();
        libraries_[path] = {std::move(library), ++lastTicket_};
        return lastTicket_;
    }

    bool remove(LibraryManager::Ticket ticket) {
        const auto same = [ticket](const auto &entry) { return entry.second.ticket == ticket; };
        const auto found = std::find_if(libraries_.begin(), libraries_.end(), same);
        if (found == libraries_.end()) return false;
        libraries_.erase(found);
        return true;
    }

    size_t longestPath() const { return longestPath_; }

private:
    struct Entry {
        std::unique_ptr<Library> library;
        LibraryManager::Ticket ticket = 0;
    };
    std::unordered_map<std::string, Entry> libraries_;
    LibraryManager::Ticket lastTicket_ = 0;
    size_t longestPath_ = 0; // of any library so far
};

} // namespace

std::string LibraryRecord::getLibraryPath(const LibraryRecord *item) {
    return item ? item->getLibrary().getPath() + "/" + item->getName() : std::string();
}

Library::Library(std::string path, std::unique_ptr<Entity> root)
    : path_(std::move(path)), root_(std::move(root)) {
    std::vector<Entity *> children;
    if (root_) root_->getChildEntities(children);
    for (const Entity *child : children) {
        std::string name;
        child->getName(name);
        if (find(name, child->getType())) continue;
        items_[name].push_back(std::make_unique<LibraryRecord>(*this, name, *child));
        ++size_;
    }
}

LibraryRecord *Library::find(const std::string &name, const Type &type) const {
    const auto named = items_.find(name);
    if (named == items_.end()) return nullptr;
    for (const auto &record : named->second) {
        if (record->getType() == type) return record.get();
    }
    return nullptr;
}

Library *LibraryManager::findLibraryByLibraryPath(const std::string &path, Library *within) {
    return Registry::instance().find(within ? within->getPath() + "/" + path : path);
}

LibraryRecord *LibraryManager::findItemByNameAndType(const std::string &name, const Type &type,
                                                     Library *library, const std::string &) {
    return library ? library->find(name, type) : nullptr;
}

LibraryRecord *LibraryManager::findItemByPath(const std::string &path, const Type &type) {
    // Both the library's path and the item's name may hold slashes: the longest path of a library counts.
    const Registry &registry = Registry::instance();
    size_t slash = path.rfind('/', registry.longestPath());
    while (slash != std::string::npos) {
        const Library *const library = registry.find(path.substr(0, slash));
        LibraryRecord *const item = library ? library->find(path.substr(slash + 1), type) : nullptr;
        if (item) return item;
        slash = slash == 0 ? std::string::npos : path.rfind('/', slash - 1);
    }
    return nullptr;
}

LibraryManager::Ticket LibraryManager::addLibrary(std::unique_ptr<Library> library) {
    return library ? Registry::instance().add(std::move(library)) : 0;
}

bool LibraryManager::removeLibrary(Ticket ticket) { return Registry::instance().remove(ticket); }

LibraryManager::Ticket LibraryManager::addLibraryFile(const std::string &path, const std::string &filename,
                                                      std::string &error) {
    std::unique_ptr<Entity> root = EntityModel::ModelFile::loadTree(filename, error);
    return root ? addLibrary(std::make_unique<Library>(path, std::move(root))) : 0;
}

bool ShippedLibrary::registerMaterials(std::string &error, const std::string &filename) {
    const std::string file = filename.empty() ? getMaterialsFile() : filename;
    if (!file.empty()) {
        return LibraryManager::addLibraryFile(LibraryManager::shippedMaterialsPath, file, error) != 0;
    }
    error = "there is no folder of shared files; EDA_SHARE_DIR can name one";
    return false;
}

std::string ShippedLibrary::getMaterialsFile() {
    const std::string folder = FileSystem::OSPaths::getSharedFolder();
    return folder.empty() ? folder : folder + "/materials.json";
}

void LibraryDefaultLoader::setSelectedPath(const std::string &path, const std::string &) {
    selectedPath_ = path;
}

void LibraryDefaultLoader::setComponentTypes(const std::set<std::string> &) {}

void LibraryDefaultLoader::getMapping(std::string &result, const std::string &, std::string &path,
                                      MappingType &type) {
    result.clear();
    path.clear();
    type = NotMapped;
}

Entity *LibraryDefaultLoader::loadItem(const std::string &, const std::string &, bool, Attributes &,
                                       MappingType &type) {
    type = NotMapped;
    return nullptr;
}

EntityModel::LibraryItem *LibraryDefaultLoader::findItem(const std::string &, const std::string &, bool,
                                                         Attributes &, MappingType &type) {
    type = NotMapped;
    return nullptr;
}

bool LibraryDefaultLoader::supplyContent(Entity &entity) {
    if (selectedPath_.empty()) return false;
    const LibraryRecord *const item = LibraryManager::findItemByPath(selectedPath_, entity.getType());
    return item && EntityModel::EntityEditor::copyContent(item->getEntity(), entity);
}

} // namespace LibraryManager
