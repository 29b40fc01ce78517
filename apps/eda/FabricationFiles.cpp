// Which archives hold a fabrication set.
#include "FabricationDesign.h"

#include "Files.h"
#include "Formats.h"
#include "host/FileSystem/ArchiveWalk.h"

#include <algorithm>
#include <iterator>

namespace EDATool {

namespace {

constexpr std::size_t headSize = 4096;

// Extensions that layers and drills have and nothing else.
const char *const layerExtensions[] = {".gbr", ".gtl", ".gbl", ".gts", ".gbs", ".gto", ".gbo", ".gtp",
                                       ".gbp", ".gko", ".gm1", ".gml", ".g1",  ".g2",  ".drl", ".xln",
                                       ".exc", ".nc",  ".ger", ".pho", ".art", ".gdo", ".gbx"};

bool isLayerName(const std::string &name) {
    return std::find(std::begin(layerExtensions), std::end(layerExtensions), lowerExtension(name)) !=
           std::end(layerExtensions);
}

// "design/matrix/matrix", "steps/pcb/..." of the databases of layouts.
bool isSuiteName(const std::string &name) {
    std::string path = "/" + name;
    std::transform(path.begin(), path.end(), path.begin(), [](unsigned char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    });
    return path.find("/matrix/matrix") != std::string::npos || path.find("/steps/") != std::string::npos;
}

struct Names {
    bool hasSuite = false;
    bool hasLayer = false;
};

Names lookAtNames(const std::string &file) {
    Names names;
    FileSystem::ArchiveWalk walk(file);
    FileSystem::ArchiveEntry entry;
    while (!names.hasSuite && walk.next(entry)) {
        names.hasSuite = isSuiteName(entry.name);
        names.hasLayer |= !entry.isFolder && isLayerName(entry.name);
    }
    return names;
}

bool holdsLayerText(const std::string &file) {
    FileSystem::ArchiveWalk walk(file);
    FileSystem::ArchiveEntry entry;
    while (walk.next(entry)) {
        if (entry.isFolder) continue;
        std::string head;
        const bool isRead = walk.readContent([&head](const char *data, std::size_t size) {
            head.append(data, std::min(size, headSize - std::min(headSize, head.size())));
            return true;
        });
        if (!isRead) return false;
        head.erase(std::remove(head.begin(), head.end(), '\0'), head.end());
        if (looksLikeGerber(entry.name, head)) return true;
    }
    return false;
}

} // namespace

bool isFabricationArchive(const std::string &file) {
    const Names names = lookAtNames(file);
    return !names.hasSuite && (names.hasLayer || holdsLayerText(file));
}

} // namespace EDATool
