// The elements that an IDX document is made of.
#include "host/Geometry/Transform.h"
#include "writers/IDXTextDetail.h"
#include "writers/IDXWriter.h"

#include <QDomDocument>

#include <cmath>

namespace EDA {

namespace {

// Fewer points are no circle. A point may be half the tolerance away from the circle, in lengths of the
// board: the same outline can be a circle in one unit and none in another.
constexpr int circlePoints = 12;
constexpr double circleTolerance = 1e-4;

// XML knows no other control characters, and none of the two at the end of the plane.
bool isXmlCharacter(QChar c) {
    ushort const code = c.unicode();
    return code >= 0x20 ? code < 0xFFFE : code == '\t' || code == '\n' || code == '\r';
}

QString number(double value, int digits) {
    // The sum makes 0 of -0.
    return QString::number(std::isfinite(value) ? value + 0.0 : 0.0, 'g', digits);
}

// A circle comes out of three points with an error in its last digits, which a centre at the origin would
// show, and which would grow from one generation of a document to the next.
double withoutError(double place, double diameter) {
    double const step = std::pow(10.0, std::floor(std::log10(diameter)) - 12.0);
    double const steps = std::round(place / step);
    return std::isfinite(steps) ? steps * step : place;
}

} // namespace

QString idxText(std::string const &text) {
    QString result = QString::fromStdString(text);
    int kept = 0;
    for (int i = 0; i < result.size(); ++i)
        if (isXmlCharacter(qAsConst(result)[i])) result[kept++] = qAsConst(result)[i];
    result.truncate(kept);
    return result;
}

QString idxNumber(double value) { return number(value, 15); }
QString idxShortNumber(double value) { return number(value, 6); }

QDomElement IDXWriter::addElement(QDomElement &parent, char const *tag) {
    QDomElement element = document_->createElement(QLatin1String(tag));
    parent.appendChild(element);
    return element;
}

QDomElement IDXWriter::addIdentified(QDomElement &parent, char const *tag, QString const &id) {
    QDomElement element = addElement(parent, tag);
    element.setAttribute(QStringLiteral("id"), id);
    return element;
}

void IDXWriter::addText(QDomElement &parent, char const *tag, QString const &text) {
    addElement(parent, tag).appendChild(document_->createTextNode(text));
}

void IDXWriter::addValue(QDomElement &parent, char const *tag, QString const &value) {
    QDomElement element = addElement(parent, tag);
    addText(element, "property:Value", value);
}

void IDXWriter::addScopedName(QDomElement &parent, char const *nameTag, QString const &name) {
    addText(parent, "foundation:SystemScope", systemScope_);
    addText(parent, nameTag, name);
}

void IDXWriter::addProperty(QDomElement &parent, QString const &key, QString const &value) {
    QDomElement property = addElement(parent, "foundation:UserProperty");
    property.setAttribute(QStringLiteral("xsi:type"), QStringLiteral("property:EDMDUserSimpleProperty"));
    QDomElement keyElement = addElement(property, "property:Key");
    keyElement.setAttribute(QStringLiteral("Persistant"), QStringLiteral("false"));
    addScopedName(keyElement, "foundation:ObjectName", key);
    addText(property, "property:Value", value);
}

void IDXWriter::addIdentifier(QDomElement &parent, QString const &number) {
    QDomElement identifier = addElement(parent, "pdm:Identifier");
    addScopedName(identifier, "foundation:Number", number);
}

void IDXWriter::addBasline(QDomElement &item) { addValue(item, "pdm:BaseLine", QStringLiteral("true")); }

QDomElement IDXWriter::addItem(QDomElement &parent, QString const &id, QString const &shape) {
    QDomElement item = addIdentified(parent, "foundation:Item", id);
    addText(item, "pdm:ItemType", QStringLiteral("single"));
    addIdentifier(item, id);
    addText(item, "pdm:Shape", shape);
    return item;
}

QDomElement IDXWriter::addAssemblyItem(QDomElement &parent, QString const &id) {
    QDomElement item = addIdentified(parent, "foundation:Item", id);
    addText(item, "pdm:ItemType", QStringLiteral("assembly"));
    addIdentifier(item, id);
    return item;
}

QDomElement IDXWriter::addAssemblyInstance(QDomElement &assembly, QString const &id, QString const &name,
                                           QString const &item) {
    QDomElement instance = addIdentified(assembly, "pdm:ItemInstance", id);
    addText(instance, "foundation:Name", name);
    QDomElement instanceName = addElement(instance, "pdm:InstanceName");
    addScopedName(instanceName, "foundation:ObjectName", name);
    addText(instance, "pdm:Item", item);
    return instance;
}

// The board lies in the X-Z plane of a space whose Y axis is its normal: there the angles turn the other way,
// and the other side of the board is half a turn about Z away.
void IDXWriter::addTransform(QDomElement &instance, double x, double y, double angle, bool bottom) {
    using Geometry::Transform;
    Transform turn = Transform::createRotation(angle, Transform::YAxis);
    if (bottom) turn = Transform::multiply(Transform::createRotation(180.0, Transform::ZAxis), turn);
    QDomElement transformation = addElement(instance, "pdm:Transformation");
    addText(transformation, "pdm:TransformationType", QStringLiteral("d2"));
    addText(transformation, "pdm:xx", idxShortNumber(turn.orientation(0, 0)));
    addText(transformation, "pdm:xy", idxShortNumber(turn.orientation(0, 2)));
    addText(transformation, "pdm:yx", idxShortNumber(turn.orientation(2, 0)));
    addText(transformation, "pdm:yy", idxShortNumber(turn.orientation(2, 2)));
    addValue(transformation, "pdm:tx", idxShortNumber(x));
    addValue(transformation, "pdm:ty", idxShortNumber(y));
}

void IDXWriter::addPoint(QDomElement &parent, QString const &id, double x, double y) {
    QDomElement point = addIdentified(parent, "foundation:CartesianPoint", id);
    addValue(point, "d2:X", idxNumber(x));
    addValue(point, "d2:Y", idxNumber(y));
}

QString IDXWriter::addShapeElement(QDomElement &parent, QString const &name, QString const &type,
                                   EDAOutline const &outline, double height, bool inverted) {
    return addShapeElementOf(parent, name, type, addCurve(parent, name, outline), height, inverted);
}

QString IDXWriter::addShapeElementOf(QDomElement &parent, QString const &name, QString const &type,
                                     QString const &curve, double height, bool inverted) {
    QString const curveSetId = name + QLatin1String("_CURVESET");
    QDomElement curveSet = addIdentified(parent, "foundation:CurveSet2d", curveSetId);
    addText(curveSet, "pdm:ShapeDescriptionType", QStringLiteral("GeometricModel"));
    addValue(curveSet, "d2:LowerBound", QStringLiteral("0"));
    addValue(curveSet, "d2:UpperBound", idxNumber(height));
    addText(curveSet, "d2:DetailedGeometricModelElement", curve);
    QString const id = name + QLatin1String("_SHAPE_ELEMENT");
    QDomElement element = addIdentified(parent, "foundation:ShapeElement", id);
    addText(element, "pdm:ShapeElementType", type);
    addText(element, "pdm:Inverted", inverted ? QStringLiteral("true") : QStringLiteral("false"));
    addText(element, "pdm:DefiningShape", curveSetId);
    return id;
}

// The outline is looked at without its inner outlines and in the default steps, so that neither holes nor
// a small size hide a circle.
QString IDXWriter::addCurve(QDomElement &parent, QString const &name, EDAOutline const &outline) {
    EDAOutline fresh;
    fresh.resetOutline(outline, false);
    double x = 0.0, y = 0.0, diameter = 0.0;
    bool const isCircle = fresh.isCylinder(x, y, diameter, circlePoints, circleTolerance) &&
                          std::isfinite(x) && std::isfinite(y) && std::isfinite(diameter);
    return isCircle ? addCircle(parent, name, withoutError(x, diameter), withoutError(y, diameter),
                                withoutError(diameter, diameter))
                    : addPolyLine(parent, name, fresh, outline.isClosed());
}

QString IDXWriter::addCircle(QDomElement &parent, QString const &name, double x, double y, double diameter) {
    QString const centre = name + QLatin1String("_CENTER"), id = name + QLatin1String("_CIRCLE");
    addPoint(parent, centre, x, y);
    QDomElement circle = addIdentified(parent, "foundation:CircleCenter", id);
    addText(circle, "d2:Center", centre);
    addValue(circle, "d2:Diameter", idxNumber(diameter));
    return id;
}

// A closed one comes back to its first place by a point of its own.
QString IDXWriter::addPolyLine(QDomElement &parent, QString const &name, EDAOutline const &outline,
                               bool closed) {
    EDAOutline::PointList points = outline.getPoints(true);
    if (closed && !points.empty()) points.push_back(points.front());
    QString const pointId = name + QLatin1String("_POINT_"), id = name + QLatin1String("_POLYLINE");
    for (std::size_t i = 0; i < points.size(); ++i)
        addPoint(parent, pointId + QString::number(i + 1), points[i].first, points[i].second);
    QDomElement polyLine = addIdentified(parent, "foundation:PolyLine", id);
    for (std::size_t i = 0; i < points.size(); ++i)
        addText(polyLine, "d2:Point", pointId + QString::number(i + 1));
    return id;
}

} // namespace EDA
