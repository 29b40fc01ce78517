// Writing a pair of IDF files: both of them or none.
#include "IdfOutput.h"

#include "Failure.h"
#include "Files.h"
#include "host/FileSystem/FFofstream.h"
#include "host/FileSystem/Path.h"
#include "host/Tools/Clock.h"
#include "Printable.h"
#include "Report.h"
#include "writers/IDFWriter.h"

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace EDATool {

namespace {

struct ExtensionPair {
    const char *board;
    const char *library;
    const char *upperLibrary;
};

constexpr ExtensionPair extensionPairs[] = {
    {".emn", ".emp", ".EMP"}, {".brd", ".lib", ".LIB"}, {".bdf", ".ldf", ".LDF"}, {".idf", ".lib", ".LIB"}};

const ExtensionPair *findPair(const std::string &boardFile) {
    const std::string extension = lowerExtension(boardFile);
    for (const ExtensionPair &pair : extensionPairs) {
        if (extension == pair.board) return &pair;
    }
    return nullptr;
}

// The clock for as long as a pair is written.
class ClockFromEnvironment {
public:
    ClockFromEnvironment() {
        const char *text = std::getenv("SOURCE_DATE_EPOCH");
        if (text == nullptr || *text == '\0') return;
        const std::optional<Tools::DateTime> date = dateOf(text);
        if (!date) {
            throw UsageFailure("SOURCE_DATE_EPOCH is " + inQuotes(shortened(text, 40)) +
                               ", which is no number of seconds since 1970");
        }
        Tools::Clock::setSource([date] { return *date; });
    }
    ~ClockFromEnvironment() { Tools::Clock::setSource(nullptr); }
    ClockFromEnvironment(const ClockFromEnvironment &) = delete;
    ClockFromEnvironment &operator=(const ClockFromEnvironment &) = delete;

private:
    static std::optional<Tools::DateTime> dateOf(std::string_view text) {
        std::int64_t seconds = 0;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), seconds);
        if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
        return Tools::Clock::utc(seconds);
    }
};

} // namespace

bool isIdfBoardName(const std::string &file) { return findPair(file) != nullptr; }

IdfNames idfNames(const std::string &boardFile) {
    const ExtensionPair *pair = findPair(boardFile);
    if (pair == nullptr) {
        throw UsageFailure(
            "the output " + inQuotes(boardFile) +
            " must be an IDX document, whose name ends in .idx, or an IDF board file: its name "
            "ends in .emn, .brd, .bdf or .idf");
    }
    const std::string extension = FileSystem::Path::getExtension(boardFile, true);
    const bool isUpper = extension.find_first_of("abcdefghijklmnopqrstuvwxyz") == std::string::npos;
    return {boardFile,
            FileSystem::Path::stripExtension(boardFile) + (isUpper ? pair->upperLibrary : pair->library)};
}

void checkIdfNames(const IdfNames &names, const std::vector<std::string> &filesRead) {
    for (const std::string &output : {names.board, names.library}) {
        for (const std::string &file : filesRead) {
            if (isSameFile(output, file)) {
                throw UsageFailure(inQuotes(file) + " is read, so " + inQuotes(output) +
                                   " cannot be written over it");
            }
        }
        checkWritable(output);
    }
    if (isSameFile(names.board, names.library)) {
        throw UsageFailure(inQuotes(names.board) + " and " + inQuotes(names.library) + " are the same file");
    }
}

void writeIdfPair(const EDA::EDABoard &board, const IdfNames &names) {
    const ClockFromEnvironment clock;
    const EDA::IDFWriter writer;
    FileSystem::FFofstream boardStream(names.board);
    FileSystem::FFofstream libraryStream(names.library);
    writer.writeBoardFile(board, boardStream);
    writer.writeLibraryFile(board, libraryStream);
    if (FileSystem::FFofstream::closeBoth(boardStream, libraryStream)) return;
    if (!boardStream.error().empty()) failToWrite(names.board, boardStream.error());
    failToWrite(names.library, libraryStream.error());
}

std::string idfSummary(const EDA::EDABoard &board, const IdfNames &names) {
    return "Written:\n" + tableText({{"Board file", shortened(names.board, 300)},
                                     {"Library file", shortened(names.library, 300)},
                                     {"Units", board.getUnits()},
                                     {"Components", std::to_string(board.numComponents())},
                                     {"Placements", std::to_string(board.numComponentPlacements())},
                                     {"Keepouts", std::to_string(board.numKeepouts())},
                                     {"Holes and vias", std::to_string(board.numVias(0))}});
}

} // namespace EDATool
