// The elements of an IDX document and the records that they become.
#include "readers/IDXReader.h"

#include "readers/XmlDetail.h"

#include <cmath>
#include <utility>

namespace EDA {

namespace {

constexpr std::size_t maxGeometryTypes = 1'000; // the format has a few dozen

bool is(const QString &name, const char *tag) { return name == QLatin1String(tag); }

// In the C locale whatever the user's is. What is no number, or none that is finite, is 0.
double numberOf(const QString &text) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? value : 0.0;
}

// Most numbers stand in a "Value" of their own.
double valueOf(const XmlElement &element) { return numberOf(childText(element, QLatin1String("Value"))); }

QString idOf(const XmlElement &element) { return element.attribute(QLatin1String("id")); }

} // namespace

// An element of the body and what is done with it.
struct IDXReader::BodyRule {
    const char *tag;
    void (*read)(IDXReader &reader, const XmlElement &element);
};

// An element that is a shape, the kind that it stands for, and where it tells another kind and its purpose.
struct IDXReader::ShapeRule {
    const char *tag;
    const char *kind;
    const char *kindTag;
    const char *purposeTag;
};

void IDXReader::parseBody(const XmlElement &element) {
    const QString &tag = element.localName();
    if (parseDefinition(element, tag) || parseShape(element, tag)) return;
    eachChild(element, [this](const XmlElement &child, const QString &) { parseBody(child); });
}

bool IDXReader::parseDefinition(const XmlElement &element, const QString &tag) {
    using Self = IDXReader &;
    using From = const XmlElement &;
    static constexpr BodyRule rules[] = {
        {"UserProperty",
         [](Self self, From from) {
             QString scope, name, value;
             getProperty(from, scope, name, value);
             if (is(name, "IDX_DESIGN_FILE")) self.board_.setName(value.toStdString());
         }},
        {"UnitLength",
         [](Self self, From from) {
             const XmlElement unit = childOf(from, QLatin1String("Fundamental"));
             if (!unit.isNull()) self.board_.setUnits(unit.text().toStdString());
         }},
        {"CartesianPoint",
         [](Self self, From from) {
             std::pair<double, double> point;
             getPoint(from, point.first, point.second);
             self.tables_.points[idOf(from)] = point;
         }},
        {"PolyLine",
         [](Self self, From from) { getPolyLine(from, self.tables_.polyLines[idOf(from)] = {}); }},
        {"CircleCenter",
         [](Self self, From from) { getCircle(from, self.tables_.circles[idOf(from)] = {}); }},
        {"Arc", [](Self self, From from) { getArc(from, self.tables_.arcs[idOf(from)] = {}); }},
        {"CompositeCurve",
         [](Self self, From from) {
             getCompositeCurve(from, self.tables_.compositeCurves[idOf(from)] = {});
         }},
        {"CurveSet2d",
         [](Self self, From from) { getCurveSet(from, self.tables_.curveSets[idOf(from)] = {}); }},
        {"ShapeElement",
         [](Self self, From from) { getShapeElement(from, self.tables_.shapeElements[idOf(from)] = {}); }},
        {"StratumTechnology",
         [](Self self, From from) {
             getStratumTechnology(from, self.tables_.technologies[idOf(from)] = {});
         }},
        {"Item", [](Self self, From from) { self.getItem(from, self.tables_.items[idOf(from)] = {}); }},
    };
    for (const BodyRule &rule : rules)
        if (is(tag, rule.tag)) {
            rule.read(*this, element);
            return true;
        }
    return false;
}

bool IDXReader::parseShape(const XmlElement &element, const QString &tag) {
    static constexpr ShapeRule rules[] = {
        {"Stratum", "Stratum", nullptr, nullptr},
        {"AssemblyComponent", "Component", nullptr, nullptr},
        {"FunctionalItemShape", "FunctionalItem", "FunctionalItemShapeType", nullptr},
        {"KeepOut", "KeepOut", nullptr, "Purpose"},
        {"KeepIn", "KeepIn", nullptr, "Purpose"},
        {"InterStratumFeature", "Hole", "InterStratumFeatureType", nullptr},
    };
    for (const ShapeRule &rule : rules) {
        if (!is(tag, rule.tag)) continue;
        Shape shape;
        shape.kind = QLatin1String(rule.kind);
        const XmlElement kind = rule.kindTag ? childOf(element, QLatin1String(rule.kindTag)) : XmlElement();
        if (!kind.isNull()) shape.kind = kind.text();
        if (rule.purposeTag) shape.purpose = childText(element, QLatin1String(rule.purposeTag));
        getShape(element, shape);
        tables_.shapes[idOf(element)] = std::move(shape);
        return true;
    }
    return false;
}

void IDXReader::getProperty(const XmlElement &element, QString &scope, QString &name, QString &value) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "SystemScope"))
            scope = child.text();
        else if (is(tag, "ObjectName"))
            name = child.text();
        else if (is(tag, "Value"))
            value = child.text();
        else
            getProperty(child, scope, name, value);
    });
}

void IDXReader::addProperty(const XmlElement &element, QMap<QString, QString> &properties) {
    QString scope, name, value;
    getProperty(element, scope, name, value);
    properties.insert(name, value);
}

void IDXReader::getPoint(const XmlElement &element, double &x, double &y) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "X")) x = valueOf(child);
        if (is(tag, "Y")) y = valueOf(child);
    });
}

void IDXReader::getPolyLine(const XmlElement &element, PolyLine &polyLine) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "Point")) polyLine.points.append(child.text());
        if (is(tag, "Thickness")) polyLine.thickness = valueOf(child);
    });
}

void IDXReader::getArc(const XmlElement &element, Arc &arc) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "StartPoint")) arc.start = child.text();
        if (is(tag, "EndPoint")) arc.end = child.text();
        if (is(tag, "IncludeAngle")) arc.angle = valueOf(child);
    });
}

// Newer documents call the centre "CenterPoint".
void IDXReader::getCircle(const XmlElement &element, Circle &circle) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "Center") || is(tag, "CenterPoint")) circle.centre = child.text();
        if (is(tag, "Diameter")) circle.diameter = valueOf(child);
    });
}

void IDXReader::getCompositeCurve(const XmlElement &element, CompositeCurve &curve) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "Curve")) curve.curves.append(child.text());
    });
}

void IDXReader::getCurveSet(const XmlElement &element, CurveSet &curveSet) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "DetailedGeometricModelElement")) curveSet.curves.append(child.text());
        if (is(tag, "LowerBound")) curveSet.low = valueOf(child);
        if (is(tag, "UpperBound")) curveSet.high = valueOf(child);
    });
}

void IDXReader::getShapeElement(const XmlElement &element, ShapeElement &shapeElement) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "Inverted")) shapeElement.inverted = is(child.text(), "true");
        if (is(tag, "Description")) shapeElement.description = child.text();
        if (is(tag, "ShapeElementType")) shapeElement.type = child.text();
        if (is(tag, "DefiningShape")) shapeElement.definingShape = child.text();
        if (is(tag, "ShapeDescriptionTransformation")) getTransform(child, shapeElement.transform);
    });
}

void IDXReader::getShape(const XmlElement &element, Shape &shape) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "ShapeElement")) shape.elements.append(child.text());
        if (is(tag, "StratumTechnology")) shape.technology = child.text();
        if (is(tag, "Name")) shape.name = child.text();
    });
}

void IDXReader::getStratumTechnology(const XmlElement &element, StratumTechnology &technology) {
    technology.id = idOf(element);
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "TechnologyType")) technology.type = child.text();
        if (is(tag, "LayerPurpose")) technology.purpose = child.text();
        if (is(tag, "LayerPositionType")) technology.position = child.text();
    });
}

void IDXReader::noteGeometryType(const XmlElement &item) {
    if (!item.hasAttribute(QLatin1String("geometryType"))) return;
    ++numTypedItems_;
    const std::string type = item.attribute(QLatin1String("geometryType")).toStdString();
    if (geometryTypes_.size() < maxGeometryTypes || geometryTypes_.count(type) > 0) ++geometryTypes_[type];
}

void IDXReader::getItem(const XmlElement &element, Item &item) {
    noteGeometryType(element);
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "UserProperty")) addProperty(child, item.properties);
        if (is(tag, "ItemType")) item.type = child.text();
        if (is(tag, "Shape")) item.shape = child.text();
        if (is(tag, "PackageName")) item.packageName = childText(child, QLatin1String("ObjectName"));
        if (!is(tag, "ItemInstance")) return;
        ItemInstance instance;
        getItemInstance(child, instance);
        tables_.instances.append(instance);
    });
}

void IDXReader::getItemInstance(const XmlElement &element, ItemInstance &instance) {
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "UserProperty")) addProperty(child, instance.properties);
        if (is(tag, "Name")) instance.name = child.text();
        if (is(tag, "InstanceName")) instance.instanceName = childText(child, QLatin1String("ObjectName"));
        if (is(tag, "Item")) instance.item = child.text();
        if (is(tag, "Transformation")) getTransform(child, instance.transform);
    });
}

void IDXReader::getTransform(const XmlElement &element, Transform &transform) {
    transform.present = true;
    eachChild(element, [&](const XmlElement &child, const QString &tag) {
        if (is(tag, "xx")) transform.xx = numberOf(child.text());
        if (is(tag, "xy")) transform.xy = numberOf(child.text());
        if (is(tag, "yx")) transform.yx = numberOf(child.text());
        if (is(tag, "yy")) transform.yy = numberOf(child.text());
        if (is(tag, "tx")) transform.tx = valueOf(child);
        if (is(tag, "ty")) transform.ty = valueOf(child);
    });
}

} // namespace EDA
