// Looking through a type map of the user.
#include "TypeMap.h"

#include "Failure.h"
#include "Files.h"
#include "host/FileSystem/CSVParser.h"
#include "host/FileSystem/File.h"
#include "import/EDAImporter.h"
#include "Printable.h"
#include "WarningList.h"

#include <cstdint>
#include <map>
#include <set>

namespace EDATool {

namespace {

constexpr std::uint64_t maxSize = std::uint64_t{16} << 20; // a million prefixes

// What is known while the rows are looked through.
struct Check {
    std::string file;
    std::set<std::string> types;
    std::string typeList;
    std::map<std::string, std::string> map;
    WarningList warnings;
};

void checkSize(const std::string &file) {
    readHead(file); // for its messages about files that cannot be read
    std::string bytes;
    std::string error;
    if (FileSystem::File::readAll(file, bytes, error, maxSize)) return;
    throw DesignFailure(inQuotes(file) + ": cannot be read, or is larger than 16 MiB, which no type map is");
}

std::string placeOf(const Check &check, std::size_t line) {
    return inQuotes(check.file) + ", line " + std::to_string(line) + ": ";
}

void checkRow(const std::vector<std::string> &tokens, std::size_t line, Check &check) {
    if (tokens.size() < 2) {
        check.warnings.add(placeOf(check, line) + "has no comma, so it is left out; a line is: prefix,type");
        return;
    }
    const std::string &type = tokens[1];
    if (check.types.count(type) == 0) {
        check.warnings.add(placeOf(check, line) + "there is no type " + inQuotes(type) +
                           ", so its parts become Component; the types are: " + check.typeList);
    }
    const auto [entry, isNew] = check.map.emplace(tokens[0], type);
    if (!isNew && entry->second != type) {
        check.warnings.add(placeOf(check, line) + "the prefix " + inQuotes(tokens[0]) +
                           " stands in an earlier line as well, with another type; the last line counts");
        entry->second = type;
    }
}

} // namespace

void checkTypeMap(const std::string &file, std::vector<std::string> &warnings) {
    checkSize(file);
    // Blank lines count here, so that rows are lines.
    FileSystem::CSVParser parser(',', false, false, '\n', true);
    if (!parser.parseFile(file, false, false, false))
        throw DesignFailure(inQuotes(file) + ": is no text with a prefix and a type in each line");
    Check check{file, {}, {}, {}, {}};
    EDA::EDAImporter::getComponentTypes(check.types);
    for (const std::string &type : check.types)
        check.typeList += (check.typeList.empty() ? "" : ", ") + type;
    std::size_t line = 0;
    for (auto row = parser.beginRows(); row != parser.endRows(); ++row) {
        ++line;
        const std::vector<std::string> tokens(row->begin(), row->end());
        if (!tokens.empty()) checkRow(tokens, line, check);
    }
    check.warnings.moveTo(warnings, "warnings about this type map");
    if (check.map.empty())
        warnings.push_back(inQuotes(file) + ": has no row, so the type map that comes with eda is used");
}

} // namespace EDATool
