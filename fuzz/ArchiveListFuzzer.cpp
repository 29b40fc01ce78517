// Any bytes as an archive whose entries are listed, as for the steps of a design.
#include "host/FileSystem/Path.h"
#include "host/FileSystem/ZipArchive.h"
#include "ScratchFile.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Fuzz::ScratchFile file(".zip");
    const FileSystem::ZipArchive archive(file.write(data, size));
    for (const std::string &name : archive.allEntries(true, true)) {
        const std::vector<std::string> tokens = FileSystem::Path::getTokens(name);
        if (name.empty() || name.front() == '/' || std::count(tokens.begin(), tokens.end(), "..") > 0)
            std::abort();
    }
    return 0;
}
