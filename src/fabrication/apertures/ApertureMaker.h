// Shapes of apertures from their definitions.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "fabrication/Notes.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

// How an aperture is turned and sized when it is used: first mirrored, then scaled, then turned, about its
// origin. The object transforms of a layer and what its image transforms add.
struct ApertureTransform {
    bool mirrorX = false; // x becomes -x
    bool mirrorY = false;
    double scaleX = 1.0;
    double scaleY = 1.0;
    double rotation = 0.0; // degrees, counter-clockwise

    bool isPlain() const;
};

// One aperture macro as the file writes it: its statements, without line ends.
struct Macro {
    std::string name;
    std::vector<std::string> statements; // "1,1,$1,0,0", "$4=$1x0.5", "0 a comment"
};

// Makes shapes as the published layer format defines them: standard templates, and macros with all their
// primitives (1 circle with rotation, 2 and 20 vector line, 21 centre line, 22 lower left line, 4 outline,
// 5 polygon, 6 moire, 7 thermal), variables, expressions, exposure (also as an expression, and 2: toggled)
// and rotation about the macro's origin. Curves become edges within chordTolerance. The primitives of a macro
// are painted in their order: exposure off erases what the macro painted before it, not what lies below.
class ApertureMaker {
public:
    // Lengths in the definitions are this many millimetres each.
    ApertureMaker(double millimetres, Notes &notes) : millimetres_(millimetres), notes_(notes) {}

    // A standard template ("C", "R", "O", "P") with its modifiers as written. What cannot be made (no such
    // template, missing or hopeless modifiers) is a shape of Kind::Nothing and a note.
    Shape standard(std::string_view letter, std::vector<double> const &modifiers, std::size_t line);

    // A macro with its parameters ($1 is the first). Missing parameters are 0.
    Shape fromMacro(Macro const &macro, std::vector<double> const &parameters, std::size_t line);

private:
    double millimetres_;
    Notes &notes_;
    // What all macros of a file may still cost: far more than any real file, and seconds at most.
    std::size_t macroTextLeft_ = 64 * 1024 * 1024;
    std::size_t macroVerticesLeft_ = 2'000'000;
};

// The shape with the transform in it. Its id is that of the original; the caller gives it another.
Shape transformed(Shape const &shape, ApertureTransform const &transform);

// The solids that the shape covers, for every kind but Nothing, which has none.
std::vector<Piece> piecesOf(Shape const &shape);

// Exactly what the shape passes over when its origin goes from `from` along the segment, as solids with
// straight edges within chordTolerance; holes of the shape that stay uncovered remain. A segment without
// length gives the shape itself.
std::vector<Piece> swept(Shape const &shape, Point const &from, Segment const &segment);

// A point of the shape's material, as far from doubt as is cheap to find: the origin of a disc. A shape of
// Kind::Nothing gives the origin.
Point pointInside(Shape const &shape);

// A point inside a closed contour, off its edge; false where it has no area.
bool findPointInside(Path const &contour, Point &inside);

// The contour with its arcs as edges within `tolerance`.
Ring toRing(Path const &contour, double tolerance = chordTolerance);

} // namespace EDA::Fabrication
