// One read of an IDF file: parsing, the walk over its sections, the header.
#include "readers/IDFReader.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/CSVParser.h"
#include "host/FileSystem/Path.h"
#include "host/Profiling/ProfileSectionProxy.h"
#include "text/Text.h"

#include <exception>

namespace EDA {

// The first token of a section and who reads it, in the order in which they are tried.
struct IDFReader::Section {
    std::string_view token;
    void (*read)(IDFReader &reader, RowIterator &row, const RowIterator &end);
};

const IDFReader::Section *IDFReader::findSection(std::string_view token) {
    using Self = IDFReader &;
    using At = RowIterator &;
    using End = const RowIterator &;
    static constexpr Section sections[] = {
        {".HEADER", [](Self self, At row, End end) { self.readHeader(row, end); }},
        {".BOARD_OUTLINE", [](Self self, At row, End end) { self.readBoardOutline(row, end); }},
        {".ELECTRICAL",
         [](Self self, At row, End end) { self.readComponentOutline(row, end, "ELECTRICAL"); }},
        {".MECHANICAL",
         [](Self self, At row, End end) { self.readComponentOutline(row, end, "MECHANICAL"); }},
        {".PLACEMENT", [](Self self, At row, End end) { self.readComponentPlacement(row, end); }},
        {".VIA_KEEPOUT", [](Self self, At row, End end) { self.readKeepout(row, end, "VIA_KEEPOUT"); }},
        {".PLACE_KEEPOUT", [](Self self, At row, End end) { self.readKeepout(row, end, "PLACE_KEEPOUT"); }},
        {".DRILLED_HOLES", [](Self self, At row, End end) { self.readVia(row, end); }},
        {".ROUTE_OUTLINE", [](Self self, At row, End end) { self.readRouteOutline(row, end); }},
        {".PLACE_OUTLINE", [](Self self, At row, End end) { self.readPlacementOutline(row, end); }},
        {".NOTES", [](Self self, At row, End end) { self.readNotes(row, end); }},
    };
    for (const Section &section : sections)
        if (equalsIgnoreCase(token, section.token)) return &section;
    return nullptr;
}

bool IDFReader::readFile(const std::string &filename) {
    Profiling::ProfileSectionProxy section("IDFReader", __LINE__, "EDA::IDFReader::readFile", "ReadIDFFile",
                                           true, "");
    error_.clear();
    state_ = {};
    try {
        FileSystem::CSVParser parser(' ', true, false, '\n', false);
        parser.addSeparator('\t');
        parser.setCommentCharacter('#');
        parser.parseFile(filename, true, true, false);
        if (parser.getNumberOfRows() == 0) return false;
        readSections(parser.beginRows(), parser.endRows());
    } catch (const std::exception &failure) {
        addError(failure.what());
        return false;
    }
    if (!state_.headerSeen) addError("Missing IDF file header!");
    // Without a header nothing says that this is a board file, whatever file was read before it.
    if (state_.headerSeen && equalsIgnoreCase(lastFileType_, "board_file"))
        board_.setSourceBoardFile(filename);
    else
        board_.setSourceLibraryFile(filename);
    return state_.headerSeen;
}

void IDFReader::readSections(RowIterator row, const RowIterator &end) {
    while (row != end) {
        const Row &tokens = *row;
        const bool mayBegin = !tokens.empty() && !tokens.front().empty() && tokens.front().front() == '.';
        if (const Section *section = mayBegin ? findSection(tokens.front()) : nullptr)
            section->read(*this, row, end);
        nextRow(row, end);
    }
    if (state_.boardCleanUpDue) board_.getOutline().removeDegeneratePoints();
}

void IDFReader::readHeader(RowIterator &row, const RowIterator &end) {
    state_.headerSeen = true;
    if (!nextRow(row, end)) return;
    checkRecordSize(row, "IDF Header record 2", 2, true);
    lastFileType_ = (*row)[0];
    lastFileVersion_ = parseInt((*row)[1], 0, 0);
    if (equalsIgnoreCase(lastFileType_, "board_file")) {
        if (!nextRow(row, end)) return;
        checkRecordSize(row, "IDF Board file Header record 3", 2, false);
        board_.setName((*row)[0]);
        board_.setUnits((*row)[1]);
    }
    skipToEndOfHeader(row, end);
}

// A header without its end leaves off at its last record, so that the sections behind it are still read.
void IDFReader::skipToEndOfHeader(RowIterator &row, const RowIterator &end) {
    if (state_.endHeaderMissing) return;
    for (RowIterator ahead = row; ahead != end; ++ahead) {
        if (!equalsIgnoreCase(ahead->front(), ".END_HEADER")) continue;
        row = ahead;
        return;
    }
    state_.endHeaderMissing = true;
}

EntityModel::Entity *IDFReader::getOptions() {
    EntityModel::Entity *options = EntityModel::UserPreference::instance().getPreference(
        EntityModel::EDA_Import_Options_t, EntityModel::Name_t, "IDF", true, nullptr);
    if (options == nullptr) return nullptr;
    // IDF knows no layers; the copper of a board is what the host takes it to be.
    if (EntityModel::Attribute *layers = options->findAttribute(EntityModel::Board_Layer_Options_t, false))
        layers->setFromString("true");
    return options;
}

std::string IDFReader::getMatchingLibraryFilename(const std::string &boardFile) const {
    struct Pair {
        std::string_view board;
        std::string_view library;
    };
    static constexpr Pair pairs[] = {{".emn", ".emp"}, {".brd", ".lib"}, {".bdf", ".ldf"}, {".idf", ".lib"}};
    std::string name = FileSystem::Path::stripExtension(boardFile);
    const std::string extension = FileSystem::Path::getExtension(boardFile, true);
    for (const Pair &pair : pairs)
        if (extension == pair.board) return name.append(pair.library);
    return name;
}

void IDFReader::getLastFileDetails(std::string &fileType, int &version) const {
    fileType = lastFileType_;
    version = lastFileVersion_;
}

} // namespace EDA
