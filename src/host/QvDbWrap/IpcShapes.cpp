// The standard primitives of an IPC-2581 document.
#include "host/QvDbWrap/IpcShapes.h"

#include "host/QvDbWrap/IpcCurves.h"
#include "host/QvDbWrap/IpcXml.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace QvDbWrap {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int turn = IpcGeometry::chordsPerTurn;
constexpr int maxRings = 1000;
constexpr int maxSpokes = 36;

Ring box(double xLow, double yLow, double xHigh, double yHigh) {
    return {{xLow, yLow}, {xHigh, yLow}, {xHigh, yHigh}, {xLow, yHigh}};
}

Ring centredBox(double width, double height) { return box(-width / 2, -height / 2, width / 2, height / 2); }

Ring ellipse(double width, double height) {
    Ring ring;
    for (int step = 0; step < turn; ++step) {
        const _mFPOINT unit = unitVector(step);
        ring.push_back({width / 2 * unit.x, height / 2 * unit.y});
    }
    return ring;
}

// With corners at the ends of a diagonal of this length.
Ring regular(int corners, double diagonal, double firstDegrees) {
    Ring ring;
    for (int corner = 0; corner < corners; ++corner) {
        const double angle = (firstDegrees + 360.0 * corner / corners) * pi / 180;
        ring.push_back({diagonal / 2 * std::cos(angle), diagonal / 2 * std::sin(angle)});
    }
    return ring;
}

Ring hexagon(double length) { return regular(6, length, 0); }
Ring octagon(double length) { return regular(8, length, 22.5); }

Ring turned(Ring ring, double degrees) {
    IpcPlacement placement;
    placement.rotation = degrees;
    for (_mFPOINT &point : ring)
        point = placement.apply(point);
    return ring;
}

Areas single(Ring ring) {
    dropRepeated(ring);
    Areas areas(1);
    areas.front().outer = std::move(ring);
    return areas;
}

struct Corner {
    const char *flag;
    int xSide;
    int ySide;
    int firstStep; // of the turn that rounds it
};

constexpr Corner corners[] = {{"upperRight", 1, 1, 0},
                              {"upperLeft", -1, 1, turn / 4},
                              {"lowerLeft", -1, -1, turn / 2},
                              {"lowerRight", 1, -1, turn * 3 / 4}};

// A box whose flagged corners are cut off; those of an element without any flag all are.
Ring cutBox(const ShapeAttributes &attributes, double width, double height, double cut, bool isRound) {
    const bool hasFlags = std::any_of(std::begin(corners), std::end(corners),
                                      [&](const Corner &corner) { return attributes.has(corner.flag); });
    cut = std::isnan(cut) ? cut : std::min({cut, width / 2, height / 2});
    Ring ring;
    for (const Corner &corner : corners) {
        const _mFPOINT tip{corner.xSide * width / 2, corner.ySide * height / 2};
        if (hasFlags && !attributes.flag(corner.flag)) {
            ring.push_back(tip);
            continue;
        }
        const _mFPOINT centre{tip.x - corner.xSide * cut, tip.y - corner.ySide * cut};
        for (int step = 0; step <= turn / 4; step += isRound ? 1 : turn / 4) {
            const _mFPOINT unit = unitVector(corner.firstStep + step);
            ring.push_back({centre.x + cut * unit.x, centre.y + cut * unit.y});
        }
    }
    return ring;
}

// The outline that a donut or thermal has outside and inside.
Ring frame(const std::string &shape, double diameter) {
    if (shape == "SQUARE") return centredBox(diameter, diameter);
    if (shape == "HEXAGON") return hexagon(diameter);
    if (shape == "OCTAGON") return octagon(diameter);
    return ellipse(diameter, diameter);
}

Areas framed(const ShapeAttributes &attributes) {
    const double outer = attributes.size("outerDiameter"), inner = attributes.size("innerDiameter");
    if (inner >= outer) return {};
    const std::string shape = attributes.text("shape");
    Areas areas = single(frame(shape, outer));
    if (inner != 0) areas.front().holes.push_back(frame(shape, inner));
    return areas;
}

Areas makeButterfly(const ShapeAttributes &attributes) {
    Ring upper = {{0, 0}};
    if (attributes.text("shape") == "SQUARE") {
        const double half = attributes.size("side") / 2;
        upper = box(0, 0, half, half);
    } else {
        const double radius = attributes.size("diameter") / 2;
        for (int step = 0; step <= turn / 4; ++step) {
            const _mFPOINT unit = unitVector(step);
            upper.push_back({radius * unit.x, radius * unit.y});
        }
    }
    Areas areas = single(upper);
    areas.push_back(single(turned(std::move(upper), 180)).front());
    return areas;
}

Areas makeCircle(const ShapeAttributes &attributes) {
    return single(IpcGeometry::circle(attributes.size("diameter")));
}

Areas makeDiamond(const ShapeAttributes &attributes) {
    const double x = attributes.size("width") / 2, y = attributes.size("height") / 2;
    return single({{x, 0}, {0, y}, {-x, 0}, {0, -y}});
}

Areas makeEllipse(const ShapeAttributes &attributes) {
    return single(ellipse(attributes.size("width"), attributes.size("height")));
}

Areas makeHexagon(const ShapeAttributes &attributes) { return single(hexagon(attributes.size("length"))); }

Areas makeOctagon(const ShapeAttributes &attributes) { return single(octagon(attributes.size("length"))); }

void addRings(const ShapeAttributes &attributes, Areas &areas) {
    double diameter = attributes.size("diameter");
    const double width = attributes.size("ringWidth"), gap = attributes.size("ringGap");
    int count = attributes.count("ringNumber");
    if (count < 0 || count > maxRings) diameter = noNumber, count = 1;
    for (; count > 0 && !(diameter <= 0); --count, diameter -= 2 * (width + gap)) {
        areas.push_back(single(ellipse(diameter, diameter)).front());
        const double inner = diameter - 2 * width;
        if (inner > 0) areas.back().holes.push_back(ellipse(inner, inner));
    }
}

Areas makeMoire(const ShapeAttributes &attributes) {
    Areas areas;
    addRings(attributes, areas);
    if (!attributes.has("lineWidth") && !attributes.has("lineLength")) return areas;
    const double angle = attributes.degrees("lineAngle");
    const Ring line = centredBox(attributes.size("lineLength"), attributes.size("lineWidth"));
    areas.push_back(single(turned(line, angle)).front());
    areas.push_back(single(turned(line, angle + 90)).front());
    return areas;
}

Areas makeOval(const ShapeAttributes &attributes) {
    const double width = attributes.size("width"), height = attributes.size("height");
    const double radius = std::min(width, height) / 2;
    Ring ring;
    for (const Corner &corner : corners) {
        const _mFPOINT centre{corner.xSide * (width / 2 - radius), corner.ySide * (height / 2 - radius)};
        for (int step = 0; step <= turn / 4; ++step) {
            const _mFPOINT unit = unitVector(corner.firstStep + step);
            ring.push_back({centre.x + radius * unit.x, centre.y + radius * unit.y});
        }
    }
    return single(std::move(ring));
}

Areas makeRectCenter(const ShapeAttributes &attributes) {
    return single(centredBox(attributes.size("width"), attributes.size("height")));
}

Areas makeRectCham(const ShapeAttributes &attributes) {
    return single(cutBox(attributes, attributes.size("width"), attributes.size("height"),
                         attributes.size("chamfer"), false));
}

Areas makeRectCorner(const ShapeAttributes &attributes) {
    return single(box(attributes.coordinate("lowerLeftX"), attributes.coordinate("lowerLeftY"),
                      attributes.coordinate("upperRightX"), attributes.coordinate("upperRightY")));
}

Areas makeRectRound(const ShapeAttributes &attributes) {
    return single(cutBox(attributes, attributes.size("width"), attributes.size("height"),
                         attributes.size("radius"), true));
}

// Where a spoke starts: well within the hole, so that the spokes don't all cross each other in the middle.
double spokeStart(double innerDiameter, double gap) {
    const double inside = 0.8 * innerDiameter / 2; // holds for hexagons, too
    return gap / 2 < inside ? std::sqrt(inside * inside - gap * gap / 4) : 0;
}

// A donut that is cut through along its spokes: in copper the spokes are gaps, taken away from a plane they
// leave the bridges to it.
Areas makeThermal(const ShapeAttributes &attributes) {
    const Areas whole = framed(attributes);
    const double gap = attributes.has("gap") ? attributes.size("gap") : 0,
                 length = attributes.size("outerDiameter");
    const int count = attributes.count("spokeCount");
    if (whole.empty() || count == 0 || gap == 0) return whole;
    if (std::isnan(gap + length) || count < 0 || count > maxSpokes) return single({{noNumber, noNumber}});
    const double firstAngle = attributes.degrees("spokeStartAngle");
    const double start = spokeStart(attributes.size("innerDiameter"), gap);
    Areas spokes;
    for (int spoke = 0; spoke < count; ++spoke)
        spokes.push_back(
            single(turned(box(start, -gap / 2, length, gap / 2), firstAngle + 360.0 * spoke / count))
                .front());
    return subtract(whole, spokes);
}

// The box around it is centred.
Areas makeTriangle(const ShapeAttributes &attributes) {
    const double x = attributes.size("base") / 2, y = attributes.size("height") / 2;
    return single({{-x, -y}, {x, -y}, {0, y}});
}

} // namespace

double ShapeAttributes::coordinate(const char *name) const {
    return xml_.number(name, noNumber) * metresPerUnit_;
}

double ShapeAttributes::size(const char *name) const {
    const double size = coordinate(name);
    return size < 0 ? noNumber : size;
}

double ShapeAttributes::degrees(const char *name) const { return xml_.number(name, 0); }

int ShapeAttributes::count(const char *name) const {
    constexpr double most = 1e6;
    return static_cast<int>(std::clamp(xml_.number(name, 0), -most, most));
}

std::string ShapeAttributes::text(const char *name) const {
    std::string text = xml_.text(name);
    for (char &letter : text)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return text;
}

bool ShapeAttributes::has(const char *name) const { return xml_.has(name); }

bool ShapeAttributes::flag(const char *name) const { return xml_.flag(name); }

PrimitiveMaker findPrimitive(const std::string &element) {
    static const std::unordered_map<std::string, PrimitiveMaker> makers = {
        {"Butterfly", makeButterfly}, {"Circle", makeCircle},
        {"Diamond", makeDiamond},     {"Donut", framed},
        {"Ellipse", makeEllipse},     {"Hexagon", makeHexagon},
        {"Moire", makeMoire},         {"Octagon", makeOctagon},
        {"Oval", makeOval},           {"RectCenter", makeRectCenter},
        {"RectCham", makeRectCham},   {"RectCorner", makeRectCorner},
        {"RectRound", makeRectRound}, {"Thermal", makeThermal},
        {"Triangle", makeTriangle},
    };
    const auto found = makers.find(element);
    return found == makers.end() ? nullptr : found->second;
}

} // namespace QvDbWrap
