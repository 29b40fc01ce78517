// Reads the elements of an IPC-2581 document that draw something.
#include "host/QvDbWrap/IpcShapeReader.h"

#include "host/QvDbWrap/IpcShapes.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace QvDbWrap {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

enum class Kind { None, StandardReference, UserReference, Line, Arc, Polyline, Polygon, Framed, Group };

// The shapes that are no primitives of attributes alone. A framed one holds a Polygon, perhaps with Cutouts.
Kind kindOf(const std::string &element) {
    static const std::unordered_map<std::string, Kind> kinds = {
        {"StandardPrimitiveRef", Kind::StandardReference},
        {"UserPrimitiveRef", Kind::UserReference},
        {"Line", Kind::Line},
        {"Arc", Kind::Arc},
        {"Polyline", Kind::Polyline},
        {"Polygon", Kind::Polygon},
        {"Contour", Kind::Framed},
        {"Outline", Kind::Framed},
        {"UserSpecial", Kind::Group},
    };
    const auto found = kinds.find(element);
    return found == kinds.end() ? Kind::None : found->second;
}

// Children of shapes that say nothing about where something is drawn.
bool drawsNothing(const IpcXml &xml) {
    for (const char *element : {"NonstandardAttribute", "Color", "ColorRef", "ColorTerm", "Spec", "SpecRef"})
        if (xml.is(element)) return true;
    return false;
}

bool fits(double number) { return std::fabs(number) <= IpcGeometry::maxCoordinate; } // false for no number

bool fits(const _mFPOINT &point) { return fits(point.x) && fits(point.y); }

} // namespace

bool isInRange(const Path &path) {
    return std::all_of(path.begin(), path.end(), [](const PathPoint &point) {
        return fits(point.at) && (!point.isCurve || fits(point.centre));
    });
}

bool isInRange(const Ring &ring) {
    return std::all_of(ring.begin(), ring.end(), [](const _mFPOINT &point) { return fits(point); });
}

bool isInRange(const Areas &areas) {
    return std::all_of(areas.begin(), areas.end(), [](const Area &area) {
        return isInRange(area.outer) && std::all_of(area.holes.begin(), area.holes.end(),
                                                    [](const Ring &hole) { return isInRange(hole); });
    });
}

bool isShapeElement(const std::string &element) {
    return kindOf(element) != Kind::None || findPrimitive(element) != nullptr;
}

void readLocationInto(const IpcXml &xml, double metresPerUnit, IpcPlacement &placement) {
    placement.x = xml.number("x") * metresPerUnit;
    placement.y = xml.number("y") * metresPerUnit;
}

void readXformInto(const IpcXml &xml, double metresPerUnit, IpcPlacement &placement) {
    placement.xOffset = xml.number("xOffset") * metresPerUnit;
    placement.yOffset = xml.number("yOffset") * metresPerUnit;
    placement.rotation = xml.number("rotation");
    placement.isMirrored = xml.flag("mirror");
    placement.scale = xml.number("scale", 1);
}

Drawing IpcShapeReader::readShape() { return readNamed(xml_.name()); }

Drawing IpcShapeReader::readNamed(const std::string &element) {
    Drawing drawing;
    drawing.element = element;
    switch (kindOf(element)) {
    case Kind::StandardReference:
        readReference(drawing, false);
        break;
    case Kind::UserReference:
        readReference(drawing, true);
        break;
    case Kind::Line:
    case Kind::Arc:
        readStroke(element, drawing);
        break;
    case Kind::Polyline:
        readPolyline(drawing);
        break;
    case Kind::Polygon:
        readPolygon(drawing);
        break;
    case Kind::Framed:
        readFramed(drawing);
        break;
    case Kind::Group:
        return readParts();
    default:
        readPrimitive(element, drawing);
    }
    return drawing;
}

Drawing IpcShapeReader::readParts(ShapeDrill *drill) {
    Drawing drawing;
    xml_.eachChild([&] {
        const std::string child = xml_.name();
        if (isShapeElement(child))
            drawing.parts.push_back(readNamed(child));
        else if (drill && child == "Drill")
            readDrill(*drill);
        else if (!readCommon(drawing))
            passOver();
    });
    return drawing;
}

void IpcShapeReader::readDrill(ShapeDrill &drill) {
    drill.diameter = xml_.number("diameter") * metresPerUnit_;
    if (xml_.has("plated")) drill.isPlated = xml_.flag("plated");
    if (drill.diameter > 0 && fits(drill.diameter)) return;
    drill.diameter = 0;
    leaveOut("Drill");
}

void IpcShapeReader::readPrimitive(const std::string &element, Drawing &drawing) {
    const PrimitiveMaker maker = findPrimitive(element);
    if (!maker) return passOver();
    Areas areas = maker(ShapeAttributes(xml_, metresPerUnit_));
    readCommonOnly(drawing);
    if (!isInRange(areas)) return leaveOut(element);
    normalise(areas);
    drawing.filled = std::move(areas);
}

void IpcShapeReader::readReference(Drawing &drawing, bool isUser) {
    drawing.references.push_back({xml_.text("id"), isUser});
    readCommonOnly(drawing);
}

void IpcShapeReader::readStroke(const std::string &element, Drawing &drawing) {
    Path path{{point("startX", "startY"), false, false, {}}, {point("endX", "endY"), false, false, {}}};
    if (element == "Arc") {
        path.back().isCurve = true;
        path.back().centre = point("centerX", "centerY");
        path.back().isClockwise = xml_.flag("clockwise");
    }
    if (xml_.has("lineWidth")) { // in documents that depart from the schema
        drawing.line.isGiven = true;
        drawing.line.style = readLine();
    }
    readCommonOnly(drawing);
    if (!isInRange(path)) return leaveOut(element);
    drawing.path = std::move(path);
}

void IpcShapeReader::readPolyline(Drawing &drawing) {
    Path path;
    xml_.eachChild([&] {
        if (!readStep(path) && !readCommon(drawing)) passOver();
    });
    if (!isInRange(path)) return leaveOut("Polyline");
    drawing.path = std::move(path);
}

// The ring of the open element, without the element's own placement.
Ring IpcShapeReader::readSteps(Drawing &drawing, bool &isUsable) {
    Path path;
    xml_.eachChild([&] {
        if (!readStep(path) && !readCommon(drawing)) passOver();
    });
    isUsable = isUsable && isInRange(path);
    return isUsable ? flatten(path) : Ring();
}

Ring IpcShapeReader::readRing() {
    const std::string element = xml_.name();
    Drawing drawing;
    bool isUsable = true;
    Ring ring = readSteps(drawing, isUsable);
    if (drawing.isPlaced)
        for (_mFPOINT &point : ring)
            point = drawing.placement.apply(point);
    if (isUsable && isInRange(ring)) return ring;
    leaveOut(element);
    return {};
}

void IpcShapeReader::readPolygon(Drawing &drawing) {
    bool isUsable = true;
    Areas areas(1);
    areas.front().outer = readSteps(drawing, isUsable);
    if (!isUsable) return leaveOut("Polygon");
    normalise(areas);
    drawing.filled = std::move(areas);
}

void IpcShapeReader::readFramed(Drawing &drawing) {
    bool isUsable = true;
    Areas areas(1);
    xml_.eachChild([&] { readFramedChild(drawing, areas.front(), isUsable); });
    if (!isUsable || !isInRange(areas)) return leaveOut(drawing.element);
    normalise(areas);
    drawing.filled = std::move(areas);
}

// Line and fill of the polygon are those of the whole; its placement and those of cut-outs are their own.
void IpcShapeReader::readFramedChild(Drawing &drawing, Area &area, bool &isUsable) {
    const bool isPolygon = xml_.is("Polygon");
    if (!isPolygon && !xml_.is("Cutout")) {
        if (!readCommon(drawing)) passOver();
        return;
    }
    Drawing own;
    Ring ring = readSteps(own, isUsable);
    if (own.isPlaced)
        for (_mFPOINT &point : ring)
            point = own.placement.apply(point);
    if (isPolygon) {
        if (own.line.isGiven) drawing.line = own.line;
        if (own.fill.isGiven) drawing.fill = own.fill;
        area.outer = std::move(ring);
    } else {
        area.holes.push_back(std::move(ring));
    }
}

bool IpcShapeReader::readStep(Path &path) {
    const bool isStraight = xml_.is("PolyStepSegment") || xml_.is("PolyBegin");
    const bool isCurve = !isStraight && xml_.is("PolyStepCurve");
    if (!isStraight && !isCurve) return false;
    path.push_back({point("x", "y"), isCurve, false, {}});
    if (isCurve) {
        path.back().centre = point("centerX", "centerY");
        path.back().isClockwise = xml_.flag("clockwise");
    }
    return true;
}

bool IpcShapeReader::readCommon(Drawing &drawing) {
    if (xml_.is("LineDescRef")) {
        drawing.line.isGiven = true;
        drawing.line.id = xml_.text("id");
    } else if (xml_.is("LineDesc")) {
        drawing.line = {true, readLine(), {}};
    } else if (xml_.is("FillDescRef")) {
        drawing.fill.isGiven = true;
        drawing.fill.id = xml_.text("id");
    } else if (xml_.is("FillDesc")) {
        drawing.fill = {true, readFill(), {}};
    } else if (xml_.is("Xform") || xml_.is("Location")) {
        drawing.isPlaced = true;
        if (xml_.is("Xform"))
            readXformInto(xml_, metresPerUnit_, drawing.placement);
        else
            readLocationInto(xml_, metresPerUnit_, drawing.placement);
    } else {
        return false;
    }
    return true;
}

void IpcShapeReader::readCommonOnly(Drawing &drawing) {
    xml_.eachChild([&] {
        if (!readCommon(drawing)) passOver();
    });
}

LineStyle IpcShapeReader::readLine() {
    LineStyle style;
    style.width = xml_.number("lineWidth") * metresPerUnit_;
    const std::string end = xml_.text("lineEnd");
    if (end == "SQUARE") style.end = LineStyle::Square;
    if (end == "NONE") style.end = LineStyle::None;
    if (std::fabs(style.width) <= IpcGeometry::maxCoordinate && style.width >= 0) return style;
    log_.warn("line width " + xml_.text("lineWidth") + " is out of range: what uses it is not drawn");
    style.width = 0;
    return style;
}

FillStyle IpcShapeReader::readFill() {
    const std::string property = xml_.text("fillProperty");
    if (property == "HOLLOW") return FillStyle::Hollow;
    if (property == "VOID") return FillStyle::Void;
    if (property != "FILL" && !property.empty()) log_.warn("fill " + property + " is drawn solid");
    return FillStyle::Solid;
}

void IpcShapeReader::passOver() {
    if (!drawsNothing(xml_)) log_.warn("element " + xml_.name() + " in a shape is not read");
}

void IpcShapeReader::leaveOut(const std::string &element) {
    log_.warn(element + " with a number that is missing or out of range is left out");
}

_mFPOINT IpcShapeReader::point(const char *x, const char *y) const {
    return {xml_.number(x, noNumber) * metresPerUnit_, xml_.number(y, noNumber) * metresPerUnit_};
}

} // namespace QvDbWrap
