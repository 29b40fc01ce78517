// Writing the private files.
#include "fabrication/sets/CanonicalFiles.h"

#include "fabrication/sets/NameRules.h"
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/NativePath.h"
#include "host/FileSystem/Path.h"

namespace EDA::Fabrication {

FileSink::FileSink(std::string const &path)
    : file_(FileSystem::openFile(FileSystem::toNative(path), "wb")), isGood_(file_ != nullptr) {}

FileSink::~FileSink() { close(); }

void FileSink::write(std::string_view text) {
    if (isGood_) isGood_ = std::fwrite(text.data(), 1, text.size(), file_) == text.size();
}

bool FileSink::close() {
    if (file_ && std::fclose(file_) != 0) isGood_ = false;
    file_ = nullptr;
    return isGood_;
}

CanonicalNames::CanonicalNames(std::string const &folder, FabricationSet const &set) : folder_(folder) {
    std::map<std::string, std::string> names;
    for (SetFile const &file : set.copper) {
        const std::string name = FileSystem::Path::getLastToken(file.file);
        const auto [place, isNew] = names.emplace(stemOf(name), name);
        if (!isNew && place->second != name) sharedStems_.insert(stemOf(name));
    }
}

std::string CanonicalNames::pathFor(SetFile const &file) {
    std::string name = FileSystem::Path::getLastToken(file.file);
    if (file.use == FileUse::Copper && sharedStems_.count(stemOf(name)) > 0) name += ".gbr";
    std::string folder = folder_;
    // File systems may take names as equal that differ in case.
    for (int number = 1; !taken_.insert(lowerCase(folder + "/" + name)).second; ++number)
        folder = folder_ + "/" + std::to_string(number);
    if (!FileSystem::Directory::create(folder)) return {};
    return folder + "/" + name;
}

} // namespace EDA::Fabrication
