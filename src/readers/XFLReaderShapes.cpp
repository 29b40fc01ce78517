// From a shape of an XFL file to the points of an outline.
#include "readers/XFLReader.h"

#include <algorithm>
#include <iterator>

namespace EDA {

namespace {

// A corner about the middle of a shape of the half widths u along X and v along Y: at u * uSign + v * inset
// along X and v * vSign along Y. With an angle a half circle arrives at it.
struct Corner {
    double uSign, inset, vSign, angle;
};

struct Corners {
    int count;
    Corner corners[5];
};

constexpr double half = 180.0;
constexpr Corners box = {4, {{-1, 0, -1, 0}, {1, 0, -1, 0}, {1, 0, 1, 0}, {-1, 0, 1, 0}}};
// Two halves between opposite corners of the square around the circle, so that its radius is that of the
// circle times the square root of 2. This is intended: designs are drawn with it.
constexpr Corners disc = {3, {{-1, 0, -1, 0}, {1, 0, 1, half}, {-1, 0, -1, half}}};
constexpr Corners bullet = {4, {{-1, 0, -1, 0}, {1, -1, -1, 0}, {1, -1, 1, half}, {-1, 0, 1, 0}}};
constexpr Corners finger = {
    5, {{-1, 1, -1, 0}, {1, -1, -1, 0}, {1, -1, 1, half}, {-1, 1, 1, 0}, {-1, 1, -1, half}}};

// A shape of corners: how many parameters it must have, also where it uses only one, and which of them are
// its widths along X and Y.
struct CornerShape {
    std::string_view kind;
    std::size_t needs, u, v;
    const Corners &corners;
};

constexpr CornerShape cornerShapes[] = {
    {"rectangle", 2, 0, 1, box}, {"square", 2, 0, 0, box},    {"circle", 1, 0, 0, disc},
    {"oblong", 2, 1, 0, box},    {"bullet", 2, 1, 0, bullet}, {"finger", 2, 1, 0, finger},
};

// What a word in a curve says about the four numbers behind it: a place, and the centre of the arc to it. One
// without a centre is a straight edge, and the other two numbers play no part.
struct CurveWord {
    std::string_view word;
    bool isArc, clockwise;
};

constexpr CurveWord curveWords[] = {{"arc", true, true}, {"rarc", true, false}, {"arc3", false, false}};

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

std::string_view withoutVoid(std::string_view type) {
    constexpr std::string_view prefix = "void_";
    return startsWith(type, prefix) ? type.substr(prefix.size()) : type;
}

// How many points an edge becomes at the finest step of an outline.
constexpr std::size_t pointsOfHalfCircle = 19, pointsOfArc = 37;

// Calls `add` with the place and the angle of each corner of a shape about (x, y).
template <typename Add>
void eachCorner(const Corners &corners, double u, double v, double x, double y, Add add) {
    for (int i = 0; i < corners.count; ++i) {
        const Corner &corner = corners.corners[i];
        const double inset = corner.inset == 0.0 ? 0.0 : corner.inset * v;
        add(x + corner.uSign * u + inset, y + corner.vSign * v, corner.angle);
    }
}

} // namespace

// Which outline the points go to, itself or one of the inner ones, and where the shape is placed.
struct XFLReader::Target {
    EDAOutline &outline;
    int index;
    double x, y;
};

const XFLReader::Shape &XFLReader::findShape(int id) const {
    static const Shape none;
    const auto found = shapes_.find(id);
    return found == shapes_.end() ? none : found->second;
}

double XFLReader::parameter(const Shape &shape, std::size_t index) const {
    return getScaledDimension(field(shape.parameters, index));
}

XFLReader::Place XFLReader::placeOf(const Shape &shape) const {
    const std::size_t count = shape.parameters.size();
    if (count < 2) return {0.0, 0.0};
    return {parameter(shape, count - 2), parameter(shape, count - 1)};
}

// A void in an outline that has points becomes an inner outline of it, which is never turned: this is
// intended. Any other shape goes to the outline itself.
void XFLReader::generateOutline(EDAOutline &outline, const Shape &shape, double x, double y,
                                double rotation) {
    const bool isInner = startsWith(shape.type, "void") && !outline.empty();
    const Target target{outline, isInner ? outline.numInternalOutlines() + 1 : 0, x, y};
    addShapePoints(target, shape);
    // An edge is drawn about the origin, perhaps in many pieces: turning all of them each time by nothing
    // would take long.
    const bool staysPut = rotation == 0.0 && x == 0.0 && y == 0.0;
    if (!isInner && !staysPut) outline.rotate(rotation, x, y);
}

// Any other type, and one that lacks parameters, has no points.
void XFLReader::addShapePoints(const Target &target, const Shape &shape) {
    const std::string_view kind = withoutVoid(shape.type);
    if (kind == "polygon") return addPolygon(target, shape);
    if (kind == "composite" || shape.type == "path") return addCurve(target, shape);
    for (const CornerShape &rule : cornerShapes) {
        if (kind != rule.kind) continue;
        if (shape.parameters.size() < rule.needs) return;
        const double u = parameter(shape, rule.u) / 2.0, v = parameter(shape, rule.v) / 2.0;
        eachCorner(rule.corners, u, v, target.x, target.y, [&](double x, double y, double angle) {
            addPoint(target.outline, target.index, x, y, angle);
        });
    }
}

void XFLReader::addCircle(EDAOutline &outline, double x, double y, double diameter) {
    const double radius = diameter / 2.0;
    eachCorner(disc, radius, radius, x, y, [&](double cornerX, double cornerY, double angle) {
        addPoint(outline, 0, cornerX, cornerY, angle);
    });
}

// An X at the end without its Y is left out.
void XFLReader::addPolygon(const Target &target, const Shape &shape) {
    const std::size_t numPoints = shape.parameters.size() / 2;
    if (target.index == 0 && !state_.points.isFull) target.outline.reservePoints(numPoints);
    for (std::size_t i = 0; i < numPoints; ++i) {
        const double x = target.x + parameter(shape, 2 * i), y = target.y + parameter(shape, 2 * i + 1);
        if (!addPoint(target.outline, target.index, x, y, 0.0)) return;
    }
}

// Words with four numbers, and places. What is no known word begins a place. One at the end that is not
// complete is left out.
void XFLReader::addCurve(const Target &target, const Shape &shape) {
    const std::size_t count = shape.parameters.size();
    for (std::size_t at = 0; at < count;) {
        const auto word =
            std::find_if(std::begin(curveWords), std::end(curveWords),
                         [&](const CurveWord &rule) { return shape.parameters[at] == rule.word; });
        const bool isWord = word != std::end(curveWords);
        const std::size_t place = isWord ? at + 1 : at;
        at = place + (isWord ? 4 : 2);
        if (at > count) return;
        const double x = target.x + parameter(shape, place), y = target.y + parameter(shape, place + 1);
        const bool hasRoom = isWord && word->isArc
                                 ? addArc(target, x, y, target.x + parameter(shape, place + 2),
                                          target.y + parameter(shape, place + 3), word->clockwise)
                                 : addPoint(target.outline, target.index, x, y, 0.0);
        if (!hasRoom) return;
    }
}

bool XFLReader::addPoint(EDAOutline &outline, int index, double x, double y, double angle) {
    if (!takePoints(angle == 0.0 ? 1 : pointsOfHalfCircle)) return false;
    outline.addPoint(index, x, y, angle);
    return true;
}

bool XFLReader::addArc(const Target &target, double x, double y, double centreX, double centreY,
                       bool clockwise) {
    if (!takePoints(pointsOfArc)) return false;
    target.outline.addPoint(target.index, x, y, centreX, centreY, clockwise);
    return true;
}

} // namespace EDA
