// Resolving the shapes of an IDX document: elements, curves, heights; and the limits of doing so.
#include "readers/IDXReader.h"

#include "host/Geometry/Transform.h"

#include <algorithm>
#include <cmath>

namespace EDA {

namespace {

constexpr double smallest = 1e-9; // of a diameter, and of a height

// A look-up goes through all of an id, so a long one costs more. An id of a real document counts once.
constexpr int idLength = 64;

double finiteOrZero(double value) { return std::isfinite(value) ? value : 0.0; }

// How many points an edge becomes at the finest step of an outline; no arc becomes more than maxSteps.
std::size_t pointsOfEdge(double angle) {
    constexpr double step = 10.0;
    constexpr double maxSteps = 360.0;
    return 1 + static_cast<std::size_t>(std::min(std::fabs(angle) / step, maxSteps));
}

// Where an element's own transform takes its points. A mirroring one mirrors once more, in X and about the
// origin of its points: such elements are drawn as seen from below.
template <typename Place> Geometry::Transform transformOf(const Place &place) {
    const double rows[9] = {place.xx, place.yx, 0.0, place.xy, place.yy, 0.0, 0.0, 0.0, 1.0};
    const double mirror[9] = {-1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};
    Geometry::Transform result = Geometry::Transform::createRotation(rows);
    if (place.isMirror())
        result = Geometry::Transform::multiply(Geometry::Transform::createRotation(mirror), result);
    result.setTranslation(place.tx, place.ty, 0.0);
    return result;
}

} // namespace

void IDXReader::generateOutline(EDAOutline &outline, const Shape &shape, double &width) {
    int index = 0;
    for (const QString &id : shape.elements) {
        const ShapeElement *const element = takeElement(id);
        if (!element) return;
        generateOutline(outline, *element, index++, width);
    }
}

// The first element is the outline itself, whatever it says about being inverted; the others lie inside it.
void IDXReader::generateOutline(EDAOutline &outline, const ShapeElement &element, int outlineIndex,
                                double &width) {
    width = 0.0;
    const CurveSet &curves = lookUp(tables_.curveSets, element.definingShape);
    const Geometry::Transform transform = transformOf(element.transform);
    if (outlineIndex < 1) return addCurves(curves, outline, transform, width);
    if (!takeOutlines(1)) return;
    EDAOutline inner(element.inverted);
    addCurves(curves, inner, transform, width);
    outline.addInternalOutline(inner);
}

void IDXReader::addCurves(const CurveSet &curves, EDAOutline &outline, const Geometry::Transform &transform,
                          double &width) {
    outline.setZDimensions(curves.low, curves.high);
    making_.elementCurves = 0;
    for (const QString &id : curves.curves)
        addCurve(id, outline, transform, width);
}

void IDXReader::addCurve(const QString &id, EDAOutline &outline, const Geometry::Transform &transform,
                         double &width) {
    if (!takeCurve(id)) return;
    if (!processAsPolyline(id, outline, transform, width) && !processAsArc(id, outline, transform) &&
        !processAsCircle(id, outline, transform) && !processAsCompositeCurve(id, outline, transform, width))
        reportCurve(id);
}

bool IDXReader::processAsPolyline(const QString &id, EDAOutline &outline,
                                  const Geometry::Transform &transform, double &width) {
    const auto found = tables_.polyLines.find(id);
    if (found == tables_.polyLines.end()) return false;
    const PolyLine &polyLine = found->second;
    width = polyLine.thickness;
    for (const QString &point : polyLine.points) {
        if (!takeLength(point)) return true;
        const auto &[x, y] = lookUp(tables_.points, point);
        addPoint(outline, transform, x, y, 0.0);
        if (making_.pointsDropped) return true;
    }
    return true;
}

// A mirror leaves the angle as it is: this is intended.
bool IDXReader::processAsArc(const QString &id, EDAOutline &outline, const Geometry::Transform &transform) {
    const auto found = tables_.arcs.find(id);
    if (found == tables_.arcs.end()) return false;
    const Arc &arc = found->second;
    if (!takeLength(arc.start) || !takeLength(arc.end)) return true;
    const std::pair<double, double> &start = lookUp(tables_.points, arc.start);
    const std::pair<double, double> &end = lookUp(tables_.points, arc.end);
    addPoint(outline, transform, start.first, start.second, 0.0);
    addPoint(outline, transform, end.first, end.second, arc.angle);
    return true;
}

bool IDXReader::processAsCircle(const QString &id, EDAOutline &outline,
                                const Geometry::Transform &transform) {
    const auto found = tables_.circles.find(id);
    if (found == tables_.circles.end()) return false;
    const Circle &circle = found->second;
    if (!(circle.diameter > smallest) || !takeLength(circle.centre)) return true;
    const auto &[x, y] = lookUp(tables_.points, circle.centre);
    const double radius = 0.5 * circle.diameter;
    addPoint(outline, transform, x - radius, y, 0.0);
    addPoint(outline, transform, x + radius, y, 180.0);
    addPoint(outline, transform, x - radius, y, 180.0);
    return true;
}

// A curve that is already on the way to here, or lies too deep, counts as not found.
bool IDXReader::processAsCompositeCurve(const QString &id, EDAOutline &outline,
                                        const Geometry::Transform &transform, double &width) {
    const auto composite = tables_.compositeCurves.find(id);
    if (composite == tables_.compositeCurves.end()) return false;
    std::vector<const QString *> &path = making_.curvePath;
    const bool isInside = std::any_of(path.begin(), path.end(), [&](const QString *on) { return *on == id; });
    if (isInside || path.size() >= limits_.curveDepth) return false;
    path.push_back(&id);
    for (const QString &curve : composite->second.curves)
        addCurve(curve, outline, transform, width);
    path.pop_back();
    return true;
}

void IDXReader::addPoint(EDAOutline &outline, const Geometry::Transform &transform, double x, double y,
                         double angle) {
    if (!takePoints(pointsOfEdge(angle))) return;
    double z = 0.0;
    transform.transform(x, y, z);
    outline.addPoint(0, finiteOrZero(x), finiteOrZero(y), angle);
}

// Those of the first element that has a height; without one the last element's.
bool IDXReader::getZDimensions(const Shape &shape, double &low, double &high) {
    low = high = 0.0;
    for (const QString &id : shape.elements) {
        const ShapeElement *const element = takeElement(id);
        if (!element) return false;
        if (getZDimensions(*element, low, high)) return true;
    }
    return false;
}

bool IDXReader::getZDimensions(const ShapeElement &element, double &low, double &high) const {
    const CurveSet &curves = lookUp(tables_.curveSets, element.definingShape);
    low = curves.low;
    high = curves.high;
    return high - low > smallest;
}

QString IDXReader::getShapeElementType(const Shape &shape) {
    for (const QString &id : shape.elements) {
        const ShapeElement *const element = takeElement(id);
        if (!element) break;
        if (!element->type.isEmpty()) return element->type;
    }
    return QString();
}

bool IDXReader::getCircleShape(const Shape &shape, Circle &circle, QString &elementType) {
    for (const QString &id : shape.elements) {
        const ShapeElement *const element = takeElement(id);
        if (!element) return false;
        const Circle *found = findCircle(lookUp(tables_.curveSets, element->definingShape));
        if (!found) continue;
        circle = *found;
        elementType = element->type;
        return true;
    }
    return false;
}

const IDXReader::Circle *IDXReader::findCircle(const CurveSet &curves) {
    for (const QString &id : curves.curves) {
        if (!takeLookUp(id)) return nullptr;
        const auto circle = tables_.circles.find(id);
        if (circle != tables_.circles.end()) return &circle->second;
    }
    return nullptr;
}

bool IDXReader::takePoints(std::size_t count) {
    if (making_.pointsDropped) return false;
    if (count > limits_.points - making_.points) {
        making_.pointsDropped = true;
        reportLimit(limits_.points, "outline points");
        return false;
    }
    making_.points += count;
    return true;
}

bool IDXReader::takeOutlines(std::size_t count) {
    if (making_.outlinesDropped) return false;
    if (count > limits_.outlines - making_.outlines) {
        making_.outlinesDropped = true;
        reportLimit(limits_.outlines, "outlines");
        return false;
    }
    making_.outlines += count;
    return true;
}

bool IDXReader::takeLookUp(const QString &id) {
    return takeLookUps(1u + static_cast<std::size_t>(id.size() / idLength));
}

bool IDXReader::takeLength(const QString &id) {
    return takeLookUps(static_cast<std::size_t>(id.size() / idLength));
}

bool IDXReader::takeLookUps(std::size_t count) {
    if (count == 0) return true;
    if (making_.lookUpsDropped) return false;
    if (count <= limits_.lookUps - making_.lookUps) {
        making_.lookUps += count;
        return true;
    }
    making_.lookUpsDropped = true;
    reportLimit(limits_.lookUps, "references between shapes and curves");
    return false;
}

const IDXReader::ShapeElement *IDXReader::takeElement(const QString &id) {
    if (!takeLookUp(id)) return nullptr;
    const ShapeElement &element = lookUp(tables_.shapeElements, id);
    return takeLength(element.definingShape) ? &element : nullptr;
}

bool IDXReader::takeCurve(const QString &id) {
    if (++making_.elementCurves <= limits_.curvesPerElement) return takeLookUp(id);
    if (making_.elementCurves == limits_.curvesPerElement + 1) reportCurve(id);
    return false;
}

std::string IDXReader::takeText(const QString &text) {
    if (text.isEmpty() || making_.textsDropped) return {};
    std::string bytes = text.toStdString();
    if (bytes.size() > limits_.textBytes - making_.textBytes) {
        making_.textsDropped = true;
        reportLimit(limits_.textBytes, "bytes of names");
        return {};
    }
    making_.textBytes += bytes.size();
    return bytes;
}

} // namespace EDA
