// The index of a component library: which key is which item.
#pragma once

#include "host/EntityModel/LibraryInterface.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace LibraryManager {

// A row of the index. The file of a row that maps to an item is a name inside the library's folder.
struct LibraryRow {
    std::string key;
    std::string item; // empty: the file's only item
    std::string file;
    EntityModel::LibraryInterface::MappingType mapping = EntityModel::LibraryInterface::Mapped;
    size_t line = 0;
};

struct LibraryIndex {
    std::vector<LibraryRow> rows;      // the good ones, in order
    std::vector<std::string> messages; // "name:line: reason" of each that was left out
    size_t numFurtherMessages = 0;     // beyond LibraryLimits::messages

    // Reads an index. A row that is wrong is left out, as is one of a key that an earlier row has. False,
    // with an empty index and such a text in `error`, when the text as a whole is no index.
    static bool parse(std::string_view text, const std::string &name, LibraryIndex &index,
                      std::string &error);

    // Why a file name must not be in a row, or null when it may: it leads out of the folder, or would on some
    // system.
    static const char *whyNotInside(const std::string &file);
};

} // namespace LibraryManager
