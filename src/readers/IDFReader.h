// Reads board and library files of the formats IDF 2.0 and 3.0.
#pragma once

#include "host/FileSystem/CSVParserBase.h"
#include "readers/EDAReader.h"
#include "readers/IDFReaderLimits.h"

#include <string>
#include <string_view>

namespace EDA {

// A design is a pair of files, read one after the other into the same reader in either order: a board file
// with the edge, holes, keepouts and placements, and a library file with the component shapes. The header of
// each file tells which it is and its version, on which the layout of a few records depends. Where the
// version is neither 2 nor 3, nothing that depends on it is checked, and placements keep no more than their
// names.
//
// Sections may come in any order and any may be missing. Lengths stay in the units of the file, and those of
// a component in the units that its own record names. A number that can't be read is 0.
class IDFReader : public EDAReader {
public:
    IDFReader() = default;
    explicit IDFReader(const IDFReaderLimits &limits) : limits_(limits) {}

    // True when the file had a header and every record the right size. On false getError is
    //   empty                                              the file is missing, unreadable or has no rows
    //   "Missing IDF file header!"                         all sections were read all the same
    //   "RECORD has incorrect number of entries: <ROW>"    the read stopped at that row
    // A limit that was reached adds a line to the error and does not fail the read.
    bool readFile(const std::string &filename) override;

    // The "IDF" preferences, with the options of board layers preset to on.
    EntityModel::Entity *getOptions() override;

    // The name of the library file that belongs to a board file: .emn and .emp, .brd and .lib, .bdf and .ldf,
    // .idf and .lib, in lower case as here. Any other extension is dropped. Does not look at the disk.
    std::string getMatchingLibraryFilename(const std::string &boardFile) const;

    // Type ("board_file", "LIBRARY_FILE", ...) and major version as the last header of any file read gave
    // them; empty and 0 before the first.
    void getLastFileDetails(std::string &fileType, int &version) const;

    // Why a front end should not hand this file to readFile: for a file in the form of IDF 4.0, which has no
    // rows that readFile knows, a message with its name. Empty for any other file, also an unreadable one.
    static std::string describeUnsupported(const std::string &filename);

private:
    using RowIterator = FileSystem::CSVParserBase::RowIterator;
    using Row = FileSystem::CSVParserBase::Row;

    // What lasts for one call of readFile.
    struct ReadState {
        bool headerSeen = false;
        bool endHeaderMissing = false; // no ".END_HEADER" from here to the end of the file
        bool boardCleanUpDue = false;
        bool pointsDropped = false;
        std::size_t points = 0;
        std::size_t boardCleanUpWork = 0;
    };

    struct Section;
    static const Section *findSection(std::string_view token);

    void readSections(RowIterator row, const RowIterator &end);

    // One section each. They start on the section's first row and leave `row` on its last, or at the end
    // where the rows end before the section does.
    void readHeader(RowIterator &row, const RowIterator &end);
    void readBoardOutline(RowIterator &row, const RowIterator &end);
    void readComponentOutline(RowIterator &row, const RowIterator &end, const std::string &label);
    void readComponentPlacement(RowIterator &row, const RowIterator &end);
    void readKeepout(RowIterator &row, const RowIterator &end, const std::string &label);
    void readVia(RowIterator &row, const RowIterator &end);
    void readRouteOutline(RowIterator &row, const RowIterator &end);
    void readPlacementOutline(RowIterator &row, const RowIterator &end);
    void readNotes(RowIterator &row, const RowIterator &end);

    void skipToEndOfHeader(RowIterator &row, const RowIterator &end);
    void readComponentRow(const Row &row, EDAComponent &component);
    void readPlacementRow(const Row &row, EDAComponentPlacement &placement) const;
    bool skipOutlineRecord(RowIterator &row, const RowIterator &end, std::string_view endToken,
                           const char *recordName, std::size_t size) const;
    void addViaDefinition(const Row &row);
    void cleanBoardOutline();

    // Adds the points of the rows up to the end token. Starts on the first row to look at.
    void readOutlineRows(RowIterator &row, const RowIterator &end, std::string_view endToken,
                         EDAOutline &outline);

    // Adds the point that a row of four entries gives, unless the limit of points is reached.
    void addPoint(EDAOutline &outline, int index, const Row &row);

    void addError(const std::string &text);

    static constexpr std::size_t pointEntries = 4;
    static constexpr std::size_t propertyEntries = 3;

    // An entry of a row, or nothing where the row ends before it: with an unknown version no row is checked.
    static std::string textAt(const Row &row, std::size_t index);
    static double numberAt(const Row &row, std::size_t index);

    static bool nextRow(RowIterator &row, const RowIterator &end);

    // Throws std::runtime_error with the message of a record of the wrong size.
    static void checkRecordSize(const RowIterator &row, const std::string &recordName, std::size_t size,
                                bool atLeast);

    std::string lastFileType_;
    int lastFileVersion_ = 0;
    IDFReaderLimits limits_;
    std::size_t boardPoints_ = 0; // of the board outline, from all files: a clean-up visits them all
    ReadState state_;
};

} // namespace EDA
