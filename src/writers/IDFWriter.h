// Writes a board as a pair of IDF 3.0 files.
#pragma once

#include "host/FileSystem/FFofstream.h"
#include "model/EDABoard.h"

#include <string>

namespace EDA {

// The board file holds the edge, keepouts, drilled holes and placements; the library file the component
// shapes. `IDFReader` reads both.
//
//     IDFWriter writer;
//     writer.writeFile("board.emn", "board.emp", board);
//
// What a caller should know:
// - Lengths are written as they are, next to the units that the board and each component name. Numbers have
//   six significant digits.
// - Not written are: instances of vias, of which a caller who wants them makes vias of their own first;
//   keepouts of a type other than VIA_KEEPOUT and PLACE_KEEPOUT; the curve of an arc given by its centre;
//   cut-outs within cut-outs; and whatever IDF has no section for, such as layers, bumps and wirebonds.
// - Board, placement, component and property texts are written in 8-bit characters, '?' standing for those
//   above U+00FF; all other texts as they are.
// - A text cannot break the file: line ends and tabs become blanks, and a double quote between quotes an
//   apostrophe.
// - Nothing else is mended. A board or a component without units, a placement without side or status, a
//   property key with a blank and a component type other than ELECTRICAL and MECHANICAL give rows that
//   readers take for something else.
// - The date in the headers comes from `Tools::Clock`.
class IDFWriter {
public:
    IDFWriter() = default;
    IDFWriter(IDFWriter const &) = default;
    IDFWriter &operator=(IDFWriter const &) = default;
    virtual ~IDFWriter() = default;

    // Writes both files; an empty name leaves its file out. ALWAYS true, also when a file could not be
    // written, which then stays as it was: callers who must know write to streams of their own.
    bool writeFile(std::string const &boardFile, std::string const &libraryFile, EDABoard const &board) const;

    // Write one file of the pair to a stream, which the caller then closes and asks for its errors.
    void writeBoardFile(EDABoard const &board, FileSystem::FFofstream &stream) const;
    void writeLibraryFile(EDABoard const &board, FileSystem::FFofstream &stream) const;

private:
    void writeBoardHeader(EDABoard const &board, FileSystem::FFofstream &stream) const;
    void writeBoardOutline(EDABoard const &board, FileSystem::FFofstream &stream) const;
    void writeOutline(EDAOutline const &outline, FileSystem::FFofstream &stream) const;
    void writeLibraryHeader(FileSystem::FFofstream &stream) const;
    void writePlacements(EDABoard const &board, FileSystem::FFofstream &stream) const;
    void writeKeepouts(EDABoard const &board, FileSystem::FFofstream &stream) const;
    void writeVias(EDABoard const &board, FileSystem::FFofstream &stream) const;
    void writeComponents(EDABoard const &board, FileSystem::FFofstream &stream) const;
};

} // namespace EDA
