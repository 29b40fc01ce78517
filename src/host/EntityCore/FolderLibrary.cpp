// A component library in a folder.
#include "host/EntityCore/FolderLibrary.h"

#include "host/EntityCore/LibraryIndex.h"
#include "host/EntityCore/LibraryItemFiles.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/NumberText.h"
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/File.h"
#include "text/Text.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace LibraryManager {

using EntityModel::Entity;

namespace {

std::string folded(const std::string &key) { return EDA::upperCase(EntityModel::trimmed(key)); }

} // namespace

class FolderLibrary::Content {
public:
    explicit Content(const std::string &folder) : folder_(folder), files_(folder) {
        const std::vector<std::string> &types = LibraryItemFiles::itemTypes();
        componentTypes.insert(types.begin(), types.end());
        readFolder();
    }

    // What is known of a row's item.
    struct Row {
        LibraryRow row;
        FileItem *item = nullptr;
        bool isLoaded = false;
        bool isRefusalTold = false; // of the item's type
    };

    void report(const std::string &message) {
        if (messages.size() < LibraryLimits::messages) {
            messages.push_back(message);
        } else {
            ++numFurtherMessages;
        }
    }

    Row *findRow(const std::string &key, bool exact) {
        const auto found = byKey_.find(key);
        if (found != byKey_.end()) return &rows[found->second];
        if (exact) return nullptr;
        const auto alike = byFoldedKey_.find(folded(key));
        return alike == byFoldedKey_.end() ? nullptr : &rows[alike->second];
    }

    // The item of a row that maps to one, of a type that is wanted; else null.
    FileItem *itemOf(Row &row) {
        const bool mapsToItem = row.row.mapping == Mapped || row.row.mapping == Approximated;
        if (!mapsToItem) return nullptr;
        if (!row.isLoaded) load(row);
        if (!row.item) return nullptr;
        const std::string &type = row.item->getEntity()->getType().getLabel();
        if (componentTypes.count(type) > 0) return row.item;
        if (!row.isRefusalTold) report(placeOf(row) + "a " + type + " is not among the types asked for");
        row.isRefusalTold = true;
        return nullptr;
    }

    // The item, or how the lack of one is told, for both loadItem and findItem.
    FileItem *find(const std::string &name, const std::string &path, bool exact, MappingType &type) {
        type = NotMapped;
        if (!path.empty()) return findInFile(name, path, type);
        Row *const row = findRow(name, exact);
        if (!row) return nullptr;
        FileItem *const item = itemOf(*row);
        const bool isBroken = !item && (row->row.mapping == Mapped || row->row.mapping == Approximated);
        if (!isBroken) type = row->row.mapping;
        return item;
    }

    bool registerMaterials() {
        const std::string file = folder_ + "/materials.json";
        if (!FileSystem::File::exists(file)) return true;
        std::string error;
        const auto added = LibraryManager::addLibraryFile(LibraryManager::vendorMaterialsPath, file, error);
        if (added != 0) {
            registered = added;
        } else {
            report(error);
        }
        hasMaterials = registered != 0;
        return added != 0;
    }

    std::vector<Row> rows;
    std::vector<std::string> messages;
    size_t numFurtherMessages = 0;
    std::set<std::string> componentTypes;
    std::string selectedKey;
    bool hasIndex = false;
    bool hasMaterials = false;
    LibraryManager::Ticket registered = 0;

private:
    std::string indexFile() const { return folder_ + "/index.json"; }
    std::string placeOf(const Row &row) const {
        return indexFile() + ":" + std::to_string(row.row.line) + ": ";
    }

    void readFolder() {
        if (!FileSystem::Directory::exists(folder_)) return report(folder_ + ": folder does not exist");
        hasMaterials = FileSystem::File::exists(folder_ + "/materials.json");
        if (FileSystem::File::exists(indexFile())) return readIndex();
        if (!hasMaterials) report(folder_ + ": holds neither \"index.json\" nor \"materials.json\"");
    }

    void readIndex() {
        std::string text;
        std::string error;
        LibraryIndex index;
        hasIndex = FileSystem::File::readAll(indexFile(), text, error, LibraryLimits::indexSize) &&
                   LibraryIndex::parse(text, indexFile(), index, error);
        if (!hasIndex) return report(error);
        messages = std::move(index.messages);
        numFurtherMessages = index.numFurtherMessages;
        rows.reserve(index.rows.size());
        for (LibraryRow &row : index.rows)
            addRow(std::move(row));
    }

    void addRow(LibraryRow row) {
        const size_t place = rows.size();
        byKey_.emplace(row.key, place);
        byFoldedKey_.emplace(folded(row.key), place);
        if (!row.file.empty()) knownFiles_.insert(row.file);
        rows.emplace_back();
        rows.back().row = std::move(row);
    }

    void load(Row &row) {
        row.isLoaded = true;
        std::string problem;
        row.item = files_.find(row.row.file, row.row.item, problem);
        if (!problem.empty()) report(placeOf(row) + problem);
    }

    // Only files that a row names are read.
    FileItem *findInFile(const std::string &name, const std::string &path, MappingType &type) {
        if (knownFiles_.count(path) == 0) return nullptr;
        std::string problem;
        FileItem *const item = files_.find(path, name, problem);
        if (!problem.empty()) report(problem);
        if (!item || componentTypes.count(item->getEntity()->getType().getLabel()) == 0) return nullptr;
        type = Mapped;
        return item;
    }

    std::string folder_;
    LibraryItemFiles files_;
    std::unordered_map<std::string, size_t> byKey_;
    std::unordered_map<std::string, size_t> byFoldedKey_; // the first row of such a key
    std::unordered_set<std::string> knownFiles_;
};

FolderLibrary::FolderLibrary(const std::string &folder) : content_(std::make_unique<Content>(folder)) {}

FolderLibrary::~FolderLibrary() { LibraryManager::removeLibrary(content_->registered); }

bool FolderLibrary::isUsable() const { return content_->hasIndex || content_->hasMaterials; }

size_t FolderLibrary::getNumRows() const { return content_->rows.size(); }

bool FolderLibrary::registerMaterials() { return content_->registerMaterials(); }

const std::vector<std::string> &FolderLibrary::getMessages() const { return content_->messages; }

size_t FolderLibrary::getNumFurtherMessages() const { return content_->numFurtherMessages; }

void FolderLibrary::setComponentTypes(const std::set<std::string> &types) {
    content_->componentTypes = types;
    for (Content::Row &row : content_->rows)
        row.isRefusalTold = false;
}

void FolderLibrary::getMapping(std::string &result, const std::string &key, std::string &path,
                               MappingType &type) {
    result.clear();
    path.clear();
    type = NotMapped;
    Content::Row *const row = content_->findRow(key, true);
    if (!row) return;
    Attributes none;
    EntityModel::LibraryItem *const item = findItem(key, "", true, none, type);
    result = row->row.item;
    path = row->row.file;
    if (result.empty() && item) item->getEntity()->getName(result);
}

Entity *FolderLibrary::loadItem(const std::string &name, const std::string &path, bool exact, Attributes &,
                                MappingType &type) {
    FileItem *const item = content_->find(name, path, exact, type);
    return item ? EntityModel::EntityEditor::cloneEntity(*item->getEntity()).release() : nullptr;
}

EntityModel::LibraryItem *FolderLibrary::findItem(const std::string &name, const std::string &path,
                                                  bool exact, Attributes &, MappingType &type) {
    return content_->find(name, path, exact, type);
}

void FolderLibrary::setSelectedKey(const std::string &key) { content_->selectedKey = key; }

bool FolderLibrary::supplyContent(Entity &entity) {
    MappingType type = NotMapped;
    if (content_->selectedKey.empty()) return false;
    FileItem *const item = content_->find(content_->selectedKey, "", true, type);
    return item && EntityModel::EntityEditor::copyContent(*item->getEntity(), entity);
}

} // namespace LibraryManager
