// Reads the item files of a component library.
#include "host/EntityCore/LibraryItemFiles.h"

#include "host/EntityCore/FolderLibrary.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "host/FileSystem/File.h"

#include <algorithm>

namespace LibraryManager {

using namespace EntityModel;

const std::vector<std::string> &LibraryItemFiles::itemTypes() {
    static const std::vector<std::string> types = {"Component",
                                                   "Resistor",
                                                   "Capacitor",
                                                   "Inductor",
                                                   "Chip Socket",
                                                   "Cable Socket",
                                                   "Daughter Board Socket"};
    return types;
}

LibraryItemFiles::LibraryItemFiles(std::string folder)
    : folder_(std::move(folder)), bytesLeft_(LibraryLimits::itemsSize) {}

FileItem *LibraryItemFiles::find(const std::string &file, const std::string &name, std::string &problem) {
    problem.clear();
    Content &content = load(file, problem);
    if (!content.root) return nullptr;
    const std::string path = folder_ + "/" + file;
    if (name.empty()) {
        if (content.items.size() == 1) return content.items.front().get();
        problem =
            path + (content.items.empty() ? ": there is no component in it"
                                          : ": there are several components in it; the row must name one");
        return nullptr;
    }
    const auto found = content.byName.find(name);
    if (found != content.byName.end()) return found->second;
    problem = path + ": there is no component \"" + name.substr(0, 80) + "\" in it";
    return nullptr;
}

LibraryItemFiles::Content &LibraryItemFiles::load(const std::string &file, std::string &problem) {
    const auto [place, isNew] = files_.try_emplace(file);
    Content &content = place->second;
    if (!isNew) return content;
    const std::string path = folder_ + "/" + file;
    std::string text;
    const std::uint64_t limit = std::min<std::uint64_t>(LibraryLimits::itemSize, bytesLeft_);
    if (!FileSystem::File::readAll(path, text, problem, limit)) return content;
    bytesLeft_ -= text.size();
    content.root = ModelFile::parseTree(text, path, problem);
    if (content.root) collectItems(content);
    return content;
}

void LibraryItemFiles::collectItems(Content &content) const {
    std::vector<Entity *> pending{content.root.get()};
    while (!pending.empty()) {
        Entity *const entity = pending.back();
        pending.pop_back();
        const std::string &type = entity->getType().getLabel();
        if (std::find(itemTypes().begin(), itemTypes().end(), type) == itemTypes().end()) {
            std::vector<Entity *> children;
            entity->getChildEntities(children);
            pending.insert(pending.end(), children.rbegin(), children.rend());
            continue;
        }
        content.items.push_back(std::make_unique<FileItem>(*entity));
        std::string name;
        content.byName.emplace(entity->getName(name), content.items.back().get());
    }
}

} // namespace LibraryManager
