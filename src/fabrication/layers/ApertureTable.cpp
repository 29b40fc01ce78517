// Definitions of apertures: discs, rectangles, obrounds and outlines.
#include "fabrication/layers/ApertureTable.h"

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/apertures/Rings.h"
#include "fabrication/layers/CutIns.h"
#include "fabrication/Limits.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

constexpr int firstCode = 10;
constexpr double smallest = 0.5e-6;  // rounds to nothing
constexpr double largestDisc = 10.0; // an edge of ten degrees lies 0.02 off its arc there

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isNameCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '_' || c == '.' || c == '$' || c == '-';
}

// A name must start with a letter: digits would join the code before it. A single letter could be taken for a
// standard template.
std::string sanitised(std::string_view text) {
    std::string name;
    for (char const c : text)
        name += isNameCharacter(c) ? c : '_';
    if (!isLetter(name[0])) name.insert(0, "M");
    if (name.size() == 1) name += '_';
    return name;
}

// Readers draw the ends of obrounds with sixteen edges each, which is too coarse for large ones.
bool isFineObround(Shape const &shape) {
    double const radius = 0.5 * std::min(shape.width, shape.height);
    return radius * (1.0 - std::cos(fullTurn / 64.0)) <= chordTolerance;
}

// The ring on the grid of the file, without points that fall together.
std::vector<GridPoint> onGrid(Ring const &ring) {
    std::vector<GridPoint> points;
    points.reserve(ring.size() + 1);
    for (Point const &p : ring) {
        GridPoint const q = gridPoint(p);
        if (points.empty() || points.back() != q) points.push_back(q);
    }
    while (points.size() > 1 && points.back() == points.front())
        points.pop_back();
    return points;
}

bool fitsPrimitive(Ring const &ring) { return ring.size() <= Limits::macroVertices; }

bool isAperture(Piece const &piece, bool dark) {
    if (!dark && !piece.holes.empty()) return false;
    return fitsPrimitive(piece.outer) && std::all_of(piece.holes.begin(), piece.holes.end(), fitsPrimitive);
}

} // namespace

bool ApertureTable::isFineDisc(Shape const &shape) {
    return shape.kind == Shape::Kind::Circle && shape.width <= largestDisc;
}

ApertureTable::Entry &ApertureTable::entryOf(Shape const &shape) {
    if (last_ != nullptr && shape.id == lastId_) return *last_;
    last_ = &entries_[shape.id];
    lastId_ = shape.id;
    return *last_;
}

ApertureTable::Form const &ApertureTable::formOf(Shape const &shape, bool dark) {
    bool const hasHoles = std::any_of(shape.pieces.begin(), shape.pieces.end(),
                                      [](Piece const &piece) { return !piece.holes.empty(); });
    bool const likeDark = dark || !hasHoles;
    Form &form = entryOf(shape).forms[likeDark ? 0 : 1];
    if (!form.isMade) make(shape, likeDark, form);
    return form;
}

Point const &ApertureTable::insideOf(Shape const &shape) {
    Entry &entry = entryOf(shape);
    if (!entry.hasInside) entry.inside = pointInside(shape);
    entry.hasInside = true;
    return entry.inside;
}

std::size_t ApertureTable::edgesOf(Shape const &shape) {
    Entry &entry = entryOf(shape);
    if (entry.edges > 0) return entry.edges;
    entry.edges = 1;
    for (Piece const &piece : piecesOf(shape)) {
        entry.edges += piece.outer.size();
        for (Ring const &hole : piece.holes)
            entry.edges += hole.size();
    }
    return entry.edges;
}

void ApertureTable::make(Shape const &shape, bool dark, Form &form) {
    form.isMade = true;
    if (shape.kind == Shape::Kind::Pieces) return makeFromPieces(shape, shape.pieces, dark, form);
    bool const isCircle = shape.kind == Shape::Kind::Circle;
    if (shape.isNothing() || shape.width < smallest || (!isCircle && shape.height < smallest)) return;
    if (isFineDisc(shape)) {
        form.codes.push_back(defineStandard(shape, "C"));
    } else if (shape.kind == Shape::Kind::Rectangle) {
        form.codes.push_back(defineStandard(shape, "R"));
    } else if (isFineObround(shape)) {
        form.codes.push_back(defineStandard(shape, "O"));
    } else {
        makeFromPieces(shape, piecesOf(shape), dark, form);
    }
}

void ApertureTable::makeFromPieces(Shape const &shape, std::vector<Piece> const &pieces, bool dark,
                                   Form &form) {
    for (Piece const &piece : pieces) {
        if (onGrid(piece.outer).size() < 3) continue;
        if (isAperture(piece, dark)) {
            form.codes.push_back(defineMacro(shape, piece));
        } else {
            form.regions.push_back(withCutIns(piece));
        }
    }
}

int ApertureTable::startDefinition() {
    text_.buffer().add("%ADD");
    text_.buffer().addInteger(firstCode + numCodes_);
    return firstCode + numCodes_++;
}

// A function stays in force until another one comes, even into the next file of a set, so the first aperture
// of a file always has one.
void ApertureTable::announceFunction(Shape const &shape) {
    std::string const function = attributeText(shape.function.empty() ? "Conductor" : shape.function, true);
    if (function == function_) return;
    function_ = function;
    text_.line("%TA.AperFunction," + function + "*%");
}

int ApertureTable::defineStandard(Shape const &shape, std::string_view letter) {
    announceFunction(shape);
    int const code = startDefinition();
    TextBuffer &buffer = text_.buffer();
    buffer.add(letter);
    buffer.add(",");
    buffer.addNumber(shape.width);
    if (letter != "C") {
        buffer.add("X");
        buffer.addNumber(shape.height);
    }
    text_.line("*%");
    return code;
}

int ApertureTable::defineMacro(Shape const &shape, Piece const &piece) {
    std::string const name = uniqueName(shape);
    text_.buffer().add("%AM");
    text_.buffer().add(name);
    text_.buffer().add("*");
    writeOutline(piece.outer, true);
    for (Ring const &hole : piece.holes)
        writeOutline(hole, false);
    text_.line("%");
    announceFunction(shape);
    int const code = startDefinition();
    text_.buffer().add(name);
    text_.line("*%");
    return code;
}

// All of it plain numbers: expressions would be rounded to six digits.
void ApertureTable::writeOutline(Ring const &ring, bool dark) {
    std::vector<GridPoint> points = onGrid(ring);
    if (points.size() < 3) return;
    TextBuffer &buffer = text_.buffer();
    buffer.add(dark ? "4,1," : "4,0,");
    buffer.addInteger(static_cast<std::int64_t>(points.size()));
    points.push_back(points.front());
    for (GridPoint const &p : points) {
        buffer.add(",");
        buffer.addNumber(static_cast<double>(p.x) * 1e-6);
        buffer.add(",");
        buffer.addNumber(static_cast<double>(p.y) * 1e-6);
    }
    buffer.add(",0*");
}

std::string ApertureTable::uniqueName(Shape const &shape) {
    std::string_view base = shape.name;
    if (base.empty()) base = std::string_view(shape.function).substr(0, shape.function.find(','));
    std::string const wanted = sanitised(base.empty() ? "Shape" : base);
    std::string name = wanted;
    while (!names_.insert(name).second)
        name = wanted + '_' + std::to_string(++repeats_[wanted] + 1);
    return name;
}

} // namespace EDA::Fabrication
