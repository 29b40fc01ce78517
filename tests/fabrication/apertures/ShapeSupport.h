// Looks at shapes: their area and what they cover.
#pragma once

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/apertures/Rings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace ShapeTests {

using namespace EDA::Fabrication;

constexpr double pi = 3.14159265358979323846;

inline double areaOf(std::vector<Piece> const &pieces) {
    double area = 0.0;
    for (Piece const &piece : pieces) {
        area += signedArea(piece.outer);
        for (Ring const &hole : piece.holes)
            area += signedArea(hole); // clockwise, so negative
    }
    return area;
}

inline bool encloses(Ring const &ring, Point const &p) {
    bool inside = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Point const &a = ring[i], &b = ring[(i + 1) % ring.size()];
        if ((a.y <= p.y) != (b.y <= p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x))
            inside = !inside;
    }
    return inside;
}

inline int timesCovered(std::vector<Piece> const &pieces, double x, double y) {
    int count = 0;
    for (Piece const &piece : pieces) {
        bool inside = encloses(piece.outer, {x, y});
        for (Ring const &hole : piece.holes)
            inside = inside && !encloses(hole, {x, y});
        count += inside ? 1 : 0;
    }
    return count;
}

inline bool covers(Shape const &shape, double x, double y) {
    return timesCovered(piecesOf(shape), x, y) == 1;
}

inline Shape standard(std::string_view letter, std::vector<double> const &modifiers) {
    Notes notes;
    return ApertureMaker(1.0, notes).standard(letter, modifiers, 1);
}

inline Shape macro(std::vector<std::string> const &statements, std::vector<double> const &parameters = {}) {
    Notes notes;
    Shape const shape = ApertureMaker(1.0, notes).fromMacro({"M", statements}, parameters, 1);
    EXPECT_TRUE(notes.list().empty()) << notes.list().front().what;
    return shape;
}

inline double areaOf(Shape const &shape) { return areaOf(piecesOf(shape)); }

inline Segment line(double x, double y) { return {{x, y}, {}, Motion::Line}; }
inline Segment arc(Motion motion, Point end, Point centre) { return {end, centre, motion}; }

} // namespace ShapeTests
