// Shapes of the standard templates.
#include "fabrication/apertures/ApertureMaker.h"

#include "fabrication/apertures/Rings.h"
#include "fabrication/Limits.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

struct Template {
    std::string_view letter;
    std::size_t numNeeded;
    std::size_t numLengths; // of its own that come first
    std::size_t holeAt;     // index of the first modifier of the hole
};

constexpr Template templates[] = {
    {"C", 1, 1, 1},
    {"R", 2, 2, 2},
    {"O", 2, 2, 2},
    {"P", 2, 1, 3},
};

bool isLength(double value) { return value >= 0.0 && value <= farthestPoint; }

Ring polygonRing(double diameter, double vertices, double rotation) {
    Ring ring;
    double const count = std::floor(vertices + 0.5);
    if (!(count >= 3.0 && count <= static_cast<double>(Limits::macroVertices)) || !std::isfinite(rotation)) {
        return ring;
    }
    for (double i = 0.0; i < count; ++i) {
        Turn const turn = turnOf(rotation + 360.0 * i / count);
        ring.push_back({0.5 * diameter * turn.cosine, 0.5 * diameter * turn.sine});
    }
    return ring;
}

Shape plainShape(Shape::Kind kind, double width, double height) {
    Shape shape;
    shape.kind = kind;
    shape.width = width;
    shape.height = height;
    return shape;
}

Shape solidShape(Template const &kind, std::vector<double> const &values) {
    if (kind.letter == "C") return plainShape(Shape::Kind::Circle, values[0], values[0]);
    if (kind.letter == "R") return plainShape(Shape::Kind::Rectangle, values[0], values[1]);
    if (kind.letter == "O") {
        auto const round = values[0] == values[1] ? Shape::Kind::Circle : Shape::Kind::Obround;
        return plainShape(round, values[0], values[1]);
    }
    Shape shape;
    Ring const ring = polygonRing(values[0], values[1], values.size() > 2 ? values[2] : 0.0);
    if (!ring.empty()) {
        shape.kind = Shape::Kind::Pieces;
        if (values[0] > 0.0) shape.pieces.push_back({ring, {}});
    }
    return shape;
}

// One modifier is a round hole, two are a rectangular one, as older files have it.
Ring holeRing(std::vector<double> const &values, std::size_t at) {
    if (values.size() <= at || !(values[at] > 0.0)) return {};
    double const x = 0.5 * values[at];
    if (values.size() == at + 1) return ellipseRing({}, x, x);
    double const y = 0.5 * values[at + 1];
    return y > 0.0 ? rectangleRing(-x, -y, x, y) : ellipseRing({}, x, x);
}

bool drill(Shape &shape, Ring const &hole) {
    Canvas canvas;
    for (Piece const &piece : piecesOf(shape))
        canvas.paint(piece);
    canvas.erase(hole);
    shape = plainShape(Shape::Kind::Pieces, 0.0, 0.0);
    return canvas.finish(shape.pieces) && !shape.pieces.empty();
}

bool areLengthsGood(Template const &kind, std::vector<double> const &values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        bool const isAnyLength = i < kind.numLengths || i >= kind.holeAt;
        if (isAnyLength && !isLength(values[i])) return false;
    }
    return true;
}

} // namespace

Shape ApertureMaker::standard(std::string_view letter, std::vector<double> const &modifiers,
                              std::size_t line) {
    auto const kind = std::find_if(std::begin(templates), std::end(templates),
                                   [&](Template const &each) { return each.letter == letter; });
    if (kind == std::end(templates)) {
        notes_.add(NoteKind::LeftOut, "apertures of an unknown template", line);
        return {};
    }
    std::vector<double> values = modifiers;
    values.resize(std::min(values.size(), kind->holeAt + 2));
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i < kind->numLengths || i >= kind->holeAt) values[i] *= millimetres_;
    }
    if (values.size() < kind->numNeeded || !areLengthsGood(*kind, values)) {
        notes_.add(NoteKind::LeftOut, "apertures with missing or impossible modifiers", line);
        return {};
    }
    Shape shape = solidShape(*kind, values);
    if (shape.isNothing()) {
        notes_.add(NoteKind::LeftOut, "polygon apertures with an impossible number of vertices", line);
        return shape;
    }
    Ring const hole = holeRing(values, kind->holeAt);
    if (!hole.empty() && !drill(shape, hole)) {
        notes_.add(NoteKind::LeftOut, "apertures of which their hole leaves nothing", line);
        return {};
    }
    return shape;
}

} // namespace EDA::Fabrication
