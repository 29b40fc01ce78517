// Counting what XFL files say and boards and packages lack.
#pragma once

#include "host/FileSystem/CSVParserBase.h"
#include "LossLines.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// Each is one line for the user.
enum class XflLoss {
    Scales,
    StrayRows,
    Sections,
    ShortRows,
    OpenBlocks,
    LayerOrder,
    Edges,
    Bodies,
    Pins,
    Bondwires,
    Keywords,
    Layers,
    ViaKinds,
    ViaShapes,
    ShapeIds,
    Pieces,
    ShortPieces,
    Lines,
    Voids,
    ShortVoids,
    LoneVoids,
    FirstVoids,
    EmptyVoids,
    MovedVoids,
    Count
};

class XflNotices {
public:
    void add(XflLoss loss, std::size_t number = 1) { numbers_[static_cast<std::size_t>(loss)] += number; }
    // The line names the first of all words.
    void add(XflLoss loss, const std::string &word);

    // So many solids of a package have no points, for a reason that one of the lines tells.
    void addEmptySolids(std::size_t number) { numEmptySolids_ += number; }
    std::size_t numEmptySolids() const { return numEmptySolids_; }

    // One line for each kind that has been counted, such as "3 bond wires are left out".
    std::vector<std::string> lines() const;

private:
    static constexpr std::size_t kinds = static_cast<std::size_t>(XflLoss::Count);
    std::array<std::size_t, kinds> numbers_ = {};
    std::array<std::string, kinds> words_ = {}; // quoted; empty where no word is known
    std::size_t numEmptySolids_ = 0;
};

// What the reader passes over in silence, found by a walk over the rows of a file. Of a package, which is
// read as a component, layers count by their rows, else by the conductors among them.
XflNotices findXflLosses(const FileSystem::CSVParserBase &rows, bool isPackage);

} // namespace EDATool
