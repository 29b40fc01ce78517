// The two files of an IDF pair and their headers.
#include "writers/IDFWriter.h"

#include "host/Tools/Clock.h"
#include "text/Encoding.h"
#include "writers/IDFRowsDetail.h"

namespace EDA {

namespace {

// " 3-11-2026.9:5:0": with a blank of its own, day before month, and no leading zeros.
void addStamp(IDFRows &rows) {
    const Tools::DateTime now = Tools::Clock::now();
    rows.add(' ').add(now.day).add('-').add(now.month).add('-').add(now.year);
    rows.add('.').add(now.hour).add(':').add(now.minute).add(':').add(now.second);
}

// The blank in front of the stamp stands beside the stamp's own.
void addFileRecord(const char *fileType, IDFRows &rows) {
    rows.add(fileType).add(" 3.0 \"Velkin Solver IDF Writer\" ");
    addStamp(rows);
    rows.add(" 1").endRow();
}

} // namespace

bool IDFWriter::writeFile(std::string const &boardFile, std::string const &libraryFile,
                          EDABoard const &board) const {
    if (!boardFile.empty()) {
        FileSystem::FFofstream stream(boardFile);
        writeBoardFile(board, stream);
        stream.close();
    }
    if (!libraryFile.empty()) {
        FileSystem::FFofstream stream(libraryFile);
        writeLibraryFile(board, stream);
        stream.close();
    }
    return true;
}

void IDFWriter::writeBoardFile(EDABoard const &board, FileSystem::FFofstream &stream) const {
    writeBoardHeader(board, stream);
    writeBoardOutline(board, stream);
    writeKeepouts(board, stream);
    writeVias(board, stream);
    writePlacements(board, stream);
}

void IDFWriter::writeLibraryFile(EDABoard const &board, FileSystem::FFofstream &stream) const {
    writeLibraryHeader(stream);
    writeComponents(board, stream);
}

void IDFWriter::writeBoardHeader(EDABoard const &board, FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    rows.add(".HEADER").endRow();
    addFileRecord("BOARD_FILE", rows);
    rows.addQuoted(utf8ToLatin1(board.getName())).add(' ').addBare(board.getUnits()).endRow();
    rows.add(".END_HEADER").endRow();
}

void IDFWriter::writeLibraryHeader(FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    rows.add(".HEADER").endRow();
    addFileRecord("LIBRARY_FILE", rows);
    rows.add(".END_HEADER").endRow();
}

} // namespace EDA
