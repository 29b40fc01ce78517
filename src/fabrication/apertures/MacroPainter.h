// The primitives of macros.
#pragma once

#include "fabrication/apertures/Rings.h"

#include <cstddef>
#include <vector>

namespace EDA::Fabrication {

// Paints the primitives of one macro, one over the other.
class MacroPainter {
public:
    enum class Result { Painted, Unknown, Impossible };

    // Lengths are this many millimetres. At most so many vertices are painted.
    MacroPainter(double millimetres, std::size_t maxVertices)
        : millimetres_(millimetres), verticesLeft_(maxVertices) {}

    // A primitive with its code first. Missing values at the end are 0.
    Result paint(std::vector<double> const &values);

    // False where the whole is beyond reason.
    bool finish(std::vector<Piece> &pieces) { return canvas_.finish(pieces); }

    std::size_t verticesLeft() const { return verticesLeft_; }

private:
    // Each paints one primitive and gives whether that could be done.
    bool circle();
    bool vectorLine();
    bool centreLine();
    bool lowerLeftLine();
    bool outline();
    bool polygon();
    bool moire();
    bool thermal();

    bool moireRings();

    double value(std::size_t index) const { return index < values_.size() ? values_[index] : 0.0; }
    double length(std::size_t index) const { return value(index) * millimetres_; }
    Point point(std::size_t index) const { return {length(index), length(index + 1)}; }

    // Turns the ring about the origin by the value at this index and paints or erases it.
    bool place(Ring ring, std::size_t rotationAt);
    bool placePiece(Piece piece, std::size_t rotationAt);
    bool isPaintable(Ring const &ring);
    void readExposure();

    struct Primitive {
        int code;
        bool (MacroPainter::*paint)();
        bool hasExposure;
    };
    static Primitive const primitives[];

    double millimetres_;
    std::size_t verticesLeft_;
    std::vector<double> values_;
    bool isDark_ = false;
    Canvas canvas_;
};

} // namespace EDA::Fabrication
