// The apertures of a canonical layer file.
#pragma once

#include "fabrication/layers/CanonicalText.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace EDA::Fabrication {

// Defines apertures when they are first used and keeps their codes.
class ApertureTable {
public:
    explicit ApertureTable(CanonicalText &text) : text_(text) {}

    // How a shape is flashed: each of the codes, then each of the rings as a region. Both may be empty.
    struct Form {
        bool isMade = false;
        std::vector<int> codes;
        std::vector<Ring> regions;
    };

    // Holes of clear shapes must be regions: an aperture with an erased part would be taken as a whole.
    Form const &formOf(Shape const &shape, bool dark);

    // Whether a chord for every ten degrees draws the disc well: pads and strokes, but no board-sized area.
    // Such a disc stays one, so that its roundness can be told from its aperture.
    static bool isFineDisc(Shape const &shape);

    // The shape's own point inside.
    Point const &insideOf(Shape const &shape);

    // Edges of the shape's solids.
    std::size_t edgesOf(Shape const &shape);

private:
    struct Entry {
        Form forms[2];
        bool hasInside = false;
        Point inside;
        std::size_t edges = 0;
    };

    Entry &entryOf(Shape const &shape);
    void make(Shape const &shape, bool dark, Form &form);
    void makeFromPieces(Shape const &shape, std::vector<Piece> const &pieces, bool dark, Form &form);
    int defineStandard(Shape const &shape, std::string_view letter);
    int defineMacro(Shape const &shape, Piece const &piece);
    int startDefinition();
    void announceFunction(Shape const &shape);
    void writeOutline(Ring const &ring, bool dark);
    std::string uniqueName(Shape const &shape);

    CanonicalText &text_;
    std::unordered_map<std::size_t, Entry> entries_;
    std::size_t lastId_ = 0;
    Entry *last_ = nullptr;
    std::unordered_set<std::string> names_;
    std::unordered_map<std::string, std::size_t> repeats_; // of names that were wanted again
    std::string function_;                                 // in force; empty before the first
    int numCodes_ = 0;
};

} // namespace EDA::Fabrication
