// Reading an IDF design: a board file and its library file.
#include "Console.h"
#include "Failure.h"
#include "Files.h"
#include "Formats.h"
#include "Printable.h"
#include "readers/IDFReader.h"
#include "text/Text.h"

#include <algorithm>

namespace EDATool {

namespace {

// The file's own header says what it is; all but libraries stand for a board.
bool isLibrary(const EDA::IDFReader &reader) {
    std::string fileType;
    int version = 0;
    reader.getLastFileDetails(fileType, version);
    return EDA::equalsIgnoreCase(fileType, "library_file");
}

void readFile(const std::string &file, EDA::IDFReader &reader, Design &design) {
    const std::string unsupported = EDA::IDFReader::describeUnsupported(file);
    if (!unsupported.empty()) throw DesignFailure(printable(unsupported));
    const bool isRead = reader.readFile(file);
    const std::vector<std::string> lines = messageLines(reader.getError());
    if (!isRead) {
        const std::string reason = lines.empty() ? "cannot be read, or holds no records" : lines.back();
        throw DesignFailure(inQuotes(file) + ": " + reason);
    }
    for (const std::string &line : lines)
        design.warnings.push_back(inQuotes(file) + ": " + line);
    design.files.push_back(file);
}

// Where the library of a board file should be. Extensions of files from other systems may be in upper case.
std::string libraryNameOf(const std::string &boardFile, const EDA::IDFReader &reader) {
    const std::string extension = lowerExtension(boardFile);
    const std::string stem = boardFile.substr(0, boardFile.size() - extension.size());
    return reader.getMatchingLibraryFilename(stem + extension);
}

void readMatchingLibrary(const std::string &boardFile, EDA::IDFReader &reader, Design &design) {
    const std::string expected = libraryNameOf(boardFile, reader);
    const std::string found = findIgnoringCase(expected);
    if (!found.empty() && !isSameFile(found, boardFile)) {
        readFile(found, reader, design);
    } else if (reader.getBoard().numComponentPlacements() > 0) {
        design.warnings.push_back(inQuotes(boardFile) + ": the library file " + inQuotes(expected) +
                                  " is missing, so its components have no shapes");
    }
}

} // namespace

bool looksLikeIdf(const std::string &, std::string_view head) {
    constexpr std::string_view marks[] = {".HEADER", "IDF_Header"}; // versions 2 and 3, version 4
    for (std::size_t start = 0; start < head.size();) {
        const std::size_t end = std::min(head.find_first_of("\r\n", start), head.size());
        const std::size_t text = std::min(head.find_first_not_of(" \t", start), end);
        for (const std::string_view mark : marks) {
            if (EDA::equalsIgnoreCase(head.substr(text, std::min(mark.size(), end - text)), mark))
                return true;
        }
        start = end + 1;
    }
    return false;
}

std::unique_ptr<EDA::EDAReader> makeIdfReader() { return std::make_unique<EDA::IDFReader>(); }

void readIdfDesign(const std::vector<std::string> &files, const DesignSettings &, Design &design) {
    auto reader = std::make_unique<EDA::IDFReader>();
    std::string boardFile;
    std::string libraryFile;
    for (const std::string &file : files) {
        readFile(file, *reader, design);
        std::string &role = isLibrary(*reader) ? libraryFile : boardFile;
        if (!role.empty()) {
            throw UsageFailure(inQuotes(role) + " and " + inQuotes(file) + " are two " +
                               (isLibrary(*reader) ? "library" : "board") +
                               " files; a design has one of each");
        }
        role = file;
    }
    design.hasBoard = !boardFile.empty();
    if (design.hasBoard && libraryFile.empty()) readMatchingLibrary(boardFile, *reader, design);
    design.reader = std::move(reader);
}

} // namespace EDATool
