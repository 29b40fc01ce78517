// The contract of every reader: one reader fills one board, file by file.
//
// The host constructs a reader, calls readFile for each file of a design, and on false shows getError. It may
// ask for the options of the format at any time. A board after a failed read is incomplete and must not be
// imported. The reader then goes to EDAImporter::importBoard, which takes its board and its preferences.
//
//     IDFReader reader;
//     if (!reader.readFile("board.emn") || !reader.readFile("board.emp"))
//         report(reader.getError());
//
// A reader and its board belong to one thread at a time. No reader starts a thread.
#pragma once

#include "model/EDABoard.h"

#include <string>

namespace EntityModel {
class Entity;
}

namespace EDA {

class EDAReader {
public:
    // How eagerly an outline is taken for a circle: for each kind of outline the fewest points and the
    // tolerance that are handed to EDAOutline::isCylinder.
    struct GeometryConversionOptions {
        int boardMinPoints = 12;
        double boardTolerance = 1e-4;
        int componentMinPoints = 12;
        double componentTolerance = 1e-4;
        int keepoutMinPoints = 12;
        double keepoutTolerance = 1e-4;
        int conductorMinPoints = 8;
        double conductorTolerance = 1e-5;
        int holeMinPoints = 8;
        double holeTolerance = 1e-4;          // holes of a PCB
        double substrateHoleTolerance = 1e-5; // holes of a substrate
        int solidHoleMinPoints = 8;           // holes in conductors and in solids
        double solidHoleTolerance = 1e-5;
    };

    EDAReader() = default;
    EDAReader(const EDAReader &) = default;
    EDAReader &operator=(const EDAReader &) = default;
    virtual ~EDAReader();

    // Reads one file and adds what it holds to the board. Nothing resets the board between calls, so the
    // files of a design are read one after the other. Clears the error first. False on failure; the error
    // then tells why, but may be empty, for instance for a file without any rows. What was read before the
    // failure stays.
    virtual bool readFile(const std::string &filename) = 0;

    // Completes the layers of the board before an import. False fails the import, with getError as the
    // reason.
    virtual bool readLayerDetails();

    // The stored preference entity of the format, made at first use, with the options preset that make no
    // sense for the format. It belongs to the host. Null where the host has none.
    virtual EntityModel::Entity *getOptions() = 0;

    // Whether the design may be a single component instead of a board.
    virtual bool canBeComponent();

    // Changes the import's defaults where the format needs others.
    virtual void updateGeometryConversionOptions(GeometryConversionOptions &options);

    // The board that every read fills. It lives as long as the reader and is never replaced.
    EDABoard &getBoard() { return board_; }
    const EDABoard &getBoard() const { return board_; }

    // The message of the last failure; empty after a read without one.
    const std::string &getError() const { return error_; }

protected:
    EDABoard board_;
    std::string error_;
};

} // namespace EDA
