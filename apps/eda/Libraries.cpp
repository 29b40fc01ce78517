// The libraries of one run.
#include "Libraries.h"

#include "Failure.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/OSPaths.h"
#include "Printable.h"

namespace EDATool {

using LibraryManager::FolderLibrary;
using LibraryManager::ShippedLibrary;

namespace {

void registerShippedMaterials(std::vector<std::string> &warnings) {
    std::string error;
    if (ShippedLibrary::registerMaterials(error)) return;
    warnings.push_back("the materials that come with eda cannot be used: " + printable(error));
}

} // namespace

Libraries::Libraries(const Arguments &arguments, std::vector<std::string> &warnings) {
    if (arguments.has("--no-library")) return;
    registerShippedMaterials(warnings);
    if (!arguments.has("--library")) return;
    folder_ = arguments.value("--library");
    components_ = std::make_unique<FolderLibrary>(folder_);
    if (!components_->isUsable()) {
        const std::vector<std::string> messages = newMessages();
        throw DesignFailure(inQuotes(folder_) + ": is no library" +
                            (messages.empty() ? std::string() : ": " + messages.front()));
    }
    components_->registerMaterials();
    const std::vector<std::string> messages = newMessages();
    warnings.insert(warnings.end(), messages.begin(), messages.end());
}

std::vector<std::string> Libraries::newMessages() {
    std::vector<std::string> lines;
    if (!components_) return lines;
    const std::vector<std::string> &all = components_->getMessages();
    for (; numTold_ < all.size(); ++numTold_)
        lines.push_back(shortened(all[numTold_], 2000));
    const std::size_t further = components_->getNumFurtherMessages();
    if (further > 0)
        lines.push_back("... and " + std::to_string(further) + " further messages of the library");
    return lines;
}

std::vector<std::string> Libraries::files() const {
    std::vector<std::string> names;
    if (!components_) return names;
    for (const char *name : {"/index.json", "/materials.json"})
        names.push_back(folder_ + name);
    return names;
}

std::string Libraries::shippedTypeMap() {
    const std::string folder = FileSystem::OSPaths::getSharedFolder();
    const std::string file = folder + "/type-map.csv";
    return !folder.empty() && FileSystem::File::exists(file) ? file : std::string();
}

} // namespace EDATool
