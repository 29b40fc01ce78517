// Reads documents of the IDX format, the XML exchange format between board and mechanical design.
#pragma once

#include "readers/EDAReader.h"
#include "readers/IDXReaderLimits.h"
#include "readers/ShorterFirst.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Geometry {
class Transform;
}

namespace EDA {

class XmlElement;

// One file is one design. A document is a pool of elements that name each other by their ids: points, curves
// of points, shapes of curves, items with shapes, and instances of items. The reader first fills a table for
// each kind of element, then makes of each item instance what the board needs: the board's edge, a layer with
// traces, a component with its placement, a hole or a keepout. Shapes of layers need no instance.
//
// What a caller should know:
// - Elements are known by their local names; prefixes, namespaces and all other elements play no part.
// - Lengths stay as they are, in the units that the document names. A number that can't be read is 0.
// - Two elements of one kind with one id: the later one counts. An id that names nothing gives an empty
// record.
// - Regions to keep in are passed over without a message.
// - Only the documents of two systems are treated in a way of their own, and only their layers.
class IDXReader : public EDAReader {
public:
    IDXReader() = default;
    explicit IDXReader(const IDXReaderLimits &limits) : limits_(limits) {}

    // False, without a message, when the file is unreadable, larger than 1 GB, not well-formed or beyond a
    // limit of the XML. Otherwise true, and the error text has a line, each with its line end, for
    //   "Unhandled Object Type KIND"            an instance of another kind, or a cut-out that is not round;
    //                                           without a kind where the item or its shape is not in the file
    //   "Failed to find curve element ID"       a curve that is not in the file, or that contains itself
    //   "More than N ...: the others are left out."  a limit that was reached
    //   "There were N further messages."        behind the first thousand
    bool readFile(const std::string &path) override;

    // The "IDX" preferences.
    EntityModel::Entity *getOptions() override;

    // True when the file's first element is that of an IDX document, whatever follows it. It is looked for in
    // the first 16 MiB.
    static bool isDocument(const std::string &path);

    // Number of items in the file last read that tell their kind by a "geometryType" attribute. Documents of
    // that newer style may give their items no shape that this reader can resolve.
    std::size_t numTypedItems() const { return numTypedItems_; }

    // What they tell, with the numbers of items; of different texts the first thousand.
    const std::map<std::string, std::size_t> &geometryTypes() const { return geometryTypes_; }

    // What the last read passed over without a message.
    struct PassedOver {
        std::size_t keepIns = 0;       // instances of regions to keep in
        std::size_t genericLayers = 0; // of this purpose, but not from the system that means its layers by it
        std::size_t bareStrata = 0;    // strata without a technology, beside the board's
    };
    const PassedOver &passedOver() const { return passedOver_; }

private:
    struct Transform {
        bool present = false;
        double xx = 1.0, xy = 0.0, yx = 0.0, yy = 1.0, tx = 0.0, ty = 0.0;

        // Negative for a mirror.
        double determinant() const { return yy * xx - yx * xy; }
        bool isMirror() const { return determinant() < -1e-9; }
    };
    struct PolyLine {
        double thickness = 0.0;
        QVector<QString> points;
    };
    struct Arc {
        QString start, end;
        double angle = 0.0;
    };
    struct Circle {
        QString centre;
        double diameter = 0.0;
    };
    struct CompositeCurve {
        QVector<QString> curves;
    };
    struct CurveSet {
        QVector<QString> curves;
        double low = 0.0, high = 0.0;
    };
    struct ShapeElement {
        QString type, description;
        bool inverted = false;
        QString definingShape;
        Transform transform;
    };
    struct Shape {
        QString kind, purpose;
        QVector<QString> elements;
        QString technology, name;
    };
    struct StratumTechnology {
        QString id, type, purpose, position;
    };
    struct Item {
        QString type, packageName, shape;
        QMap<QString, QString> properties;
    };
    struct ItemInstance {
        QString item, name, instanceName;
        Transform transform;
        QMap<QString, QString> properties;
    };

    template <typename Record> using Table = std::map<QString, Record, ShorterFirst>;

    // The elements of one document by their ids.
    struct Tables {
        Table<std::pair<double, double>> points;
        Table<PolyLine> polyLines;
        Table<Arc> arcs;
        Table<Circle> circles;
        Table<CurveSet> curveSets;
        Table<CompositeCurve> compositeCurves;
        Table<ShapeElement> shapeElements;
        std::map<QString, Shape> shapes; // layers without an instance come in this order
        Table<StratumTechnology> technologies;
        Table<Item> items;
        QVector<ItemInstance> instances;
        bool fromDesignForce = false;
        bool fromExpedition = false;
    };

    // A component shape that has been made once: boards place a few parts many times.
    struct MadeShape {
        EDAOutline outline;
        bool hasHeight = false;
        double low = 0.0, high = 0.0;
        std::size_t points = 0;
        std::size_t outlines = 0;
    };

    // What lasts while the parts of one document are made.
    struct Making {
        bool boardTaken = false;
        std::set<QString, ShorterFirst> usedShapes;
        Table<MadeShape> madeShapes;
        std::map<std::string, int> layersByName;
        std::map<double, int> layersByTop;
        std::vector<const QString *> curvePath; // composite curves around the one that is looked at
        std::size_t elementCurves = 0;
        std::size_t points = 0;
        std::size_t outlines = 0;
        std::size_t lookUps = 0;
        bool pointsDropped = false;
        bool outlinesDropped = false;
        std::size_t textBytes = 0;
        bool lookUpsDropped = false;
        bool textsDropped = false;
        std::size_t messages = 0;
        std::size_t messagesDropped = 0;
    };

    struct BodyRule;
    struct ShapeRule;
    struct PartRule;

    // First stage: the tables.
    bool readTables(const std::string &path);
    void parseXML(const XmlElement &element);
    void parseHeader(const XmlElement &element);
    void parseBody(const XmlElement &element);
    bool parseDefinition(const XmlElement &element, const QString &tag);
    bool parseShape(const XmlElement &element, const QString &tag);

    void noteGeometryType(const XmlElement &item);

    static void getProperty(const XmlElement &element, QString &scope, QString &name, QString &value);
    static void addProperty(const XmlElement &element, QMap<QString, QString> &properties);
    static void getPoint(const XmlElement &element, double &x, double &y);
    static void getPolyLine(const XmlElement &element, PolyLine &polyLine);
    static void getArc(const XmlElement &element, Arc &arc);
    static void getCircle(const XmlElement &element, Circle &circle);
    static void getCompositeCurve(const XmlElement &element, CompositeCurve &curve);
    static void getCurveSet(const XmlElement &element, CurveSet &curveSet);
    static void getShapeElement(const XmlElement &element, ShapeElement &shapeElement);
    static void getShape(const XmlElement &element, Shape &shape);
    static void getStratumTechnology(const XmlElement &element, StratumTechnology &technology);
    void getItem(const XmlElement &element, Item &item);
    static void getItemInstance(const XmlElement &element, ItemInstance &instance);
    static void getTransform(const XmlElement &element, Transform &transform);

    // Second stage: the parts.
    void createParts();
    void createPart(const ItemInstance &instance);
    void createStratum(const ItemInstance &instance, const Item &item, const Shape &shape);
    void createComponent(const ItemInstance &instance, const Item &item, const Shape &shape);
    void createPlacement(const ItemInstance &instance, const EDAComponent &component, const MadeShape &made);
    void createKeepout(const ItemInstance &instance, const Item &item, const Shape &shape);
    void createCutout(const ItemInstance &instance, const Item &item, const Shape &shape);
    MadeShape makeShape(const Shape &shape);
    MadeShape componentShape(const QString &id, const Shape &shape);

    void addLayer(const Shape &shape);
    int layerFor(const std::string &name, bool hasHeight, double low, double high);
    int findLayer(const std::string &name, bool hasHeight, double high) const;
    void noteLayer(const EDABoardLayer &layer, int index);
    void addTrace(const ShapeElement &element, int layer);

    void generateOutline(EDAOutline &outline, const Shape &shape, double &width);
    void generateOutline(EDAOutline &outline, const ShapeElement &element, int outlineIndex, double &width);
    void addCurves(const CurveSet &curves, EDAOutline &outline, const Geometry::Transform &transform,
                   double &width);
    void addCurve(const QString &id, EDAOutline &outline, const Geometry::Transform &transform,
                  double &width);
    bool processAsPolyline(const QString &id, EDAOutline &outline, const Geometry::Transform &transform,
                           double &width);
    bool processAsArc(const QString &id, EDAOutline &outline, const Geometry::Transform &transform);
    bool processAsCircle(const QString &id, EDAOutline &outline, const Geometry::Transform &transform);
    bool processAsCompositeCurve(const QString &id, EDAOutline &outline, const Geometry::Transform &transform,
                                 double &width);
    void addPoint(EDAOutline &outline, const Geometry::Transform &transform, double x, double y,
                  double angle);

    bool getZDimensions(const Shape &shape, double &low, double &high);
    bool getZDimensions(const ShapeElement &element, double &low, double &high) const;
    QString getShapeElementType(const Shape &shape);
    bool getCircleShape(const Shape &shape, Circle &circle, QString &elementType);
    const Circle *findCircle(const CurveSet &curves);

    // Count towards a limit. False, once with a message, beyond it.
    bool takePoints(std::size_t count);
    bool takeOutlines(std::size_t count);
    bool takeLookUps(std::size_t count);
    bool takeLookUp(const QString &id);
    bool takeLength(const QString &id); // of an id that the look-ups before do not count
    bool takeCurve(const QString &id);

    // The shape element of an id; null beyond the limit.
    const ShapeElement *takeElement(const QString &id);

    // A text of an element that any number of parts may share, as each of them keeps it; empty beyond the
    // limit.
    std::string takeText(const QString &text);

    void reportKind(const QString &kind);
    void reportCurve(const QString &id);
    void reportLimit(std::size_t limit, const char *things);
    void report(const char *text, const QString &name);

    // The record of an id, or an empty one.
    template <typename Records>
    static const typename Records::mapped_type &lookUp(const Records &records, const QString &id) {
        static const typename Records::mapped_type empty{};
        const auto found = records.find(id);
        return found == records.end() ? empty : found->second;
    }

    QString fileType_;
    QString version_;
    Tables tables_;
    Making making_;
    IDXReaderLimits limits_;
    std::size_t numTypedItems_ = 0;
    std::map<std::string, std::size_t> geometryTypes_;
    PassedOver passedOver_;
};

} // namespace EDA
