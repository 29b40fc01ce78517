// Any bytes as the index of a component library. No row may name a file outside the library's folder.
#include "host/EntityCore/LibraryIndex.h"

#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

namespace {

// What a broken promise looks like to the fuzzer.
void require(bool promise) {
    if (!promise) std::abort();
}

bool mapsToItem(const LibraryManager::LibraryRow &row) {
    using EntityModel::LibraryInterface;
    return row.mapping == LibraryInterface::Mapped || row.mapping == LibraryInterface::Approximated;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace LibraryManager;
    LibraryIndex index;
    std::string error;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const bool isIndex = LibraryIndex::parse(text, "fuzz", index, error);
    require(isIndex == error.empty());
    require(isIndex || (index.rows.empty() && index.messages.empty()));
    std::set<std::string> keys;
    for (const LibraryRow &row : index.rows) {
        require(!row.key.empty() && keys.insert(row.key).second && row.line > 0);
        require(!mapsToItem(row) || !row.file.empty());
        require(row.file.empty() ||
                (row.file.front() != '/' && ("/" + row.file + "/").find("/../") == std::string::npos));
    }
    return 0;
}
