// IDX documents in short words, and a fixture that reads them.
#pragma once

#include "readers/IDXReader.h"
#include "support/Outlines.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

namespace IDXTest {

// An element with a prefix, as documents have it.
inline std::string element(const std::string &tag, const std::string &content,
                           const std::string &attributes = "") {
    const std::string blank = attributes.empty() ? "" : " ";
    return "<foundation:" + tag + blank + attributes + ">" + content + "</foundation:" + tag + ">\n";
}

inline std::string withId(const std::string &tag, const std::string &id, const std::string &content) {
    return element(tag, content, "id=\"" + id + "\"");
}

inline std::string value(const std::string &tag, const std::string &number) {
    return element(tag, element("Value", number));
}

inline std::string text(double number) {
    std::ostringstream stream;
    stream.precision(17);
    stream << number;
    return stream.str();
}

inline std::string document(const std::string &body, const std::string &header = "") {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<foundation:EDMDDataSet "
           "xmlns:foundation=\"urn:test:foundation\">\n" +
           element("Header", header) + element("Body", body) + "</foundation:EDMDDataSet>\n";
}

inline std::string property(const std::string &name, const std::string &content) {
    return element("UserProperty",
                   element("Key", element("SystemScope", "TESTS") + element("ObjectName", name)) +
                       element("Value", content));
}

inline std::string creator(const std::string &system) { return element("CreatorSystem", system); }

inline std::string point(const std::string &id, double x, double y) {
    return withId("CartesianPoint", id, value("X", text(x)) + value("Y", text(y)));
}

inline std::string references(const std::string &tag, const std::vector<std::string> &ids) {
    std::string all;
    for (const std::string &id : ids)
        all += element(tag, id);
    return all;
}

inline std::string curveSet(const std::string &id, const std::vector<std::string> &curves, double low = 0.0,
                            double high = 0.0) {
    return withId("CurveSet2d", id,
                  value("LowerBound", text(low)) + value("UpperBound", text(high)) +
                      references("DetailedGeometricModelElement", curves));
}

inline std::string matrix(const std::string &tag, double xx, double xy, double yx, double yy, double tx,
                          double ty) {
    return element(tag, element("TransformationType", "d2") + element("xx", text(xx)) +
                            element("xy", text(xy)) + element("yx", text(yx)) + element("yy", text(yy)) +
                            value("tx", text(tx)) + value("ty", text(ty)));
}

inline std::string placed(double xx, double xy, double yx, double yy, double tx, double ty) {
    return matrix("Transformation", xx, xy, yx, yy, tx, ty);
}

inline std::string turned(double xx, double xy, double yx, double yy, double tx, double ty) {
    return matrix("ShapeDescriptionTransformation", xx, xy, yx, yy, tx, ty);
}

inline std::string shapeElement(const std::string &id, const std::string &curveSetId,
                                const std::string &more = "") {
    return withId("ShapeElement", id, element("DefiningShape", curveSetId) + more);
}

// The points of a text as "0,0 4,0 4,2", and their polyline NAME.
inline std::string polyLine(const std::string &name, const char *points, const std::string &thickness = "") {
    std::string all, line;
    int number = 0;
    for (EDA::test::PointText rest(points); !rest.atEnd();) {
        const auto [x, y] = rest.pair();
        const std::string id = name + "_P" + std::to_string(++number);
        all += point(id, x, y);
        line += element("Point", id);
    }
    if (!thickness.empty()) line += value("Thickness", thickness);
    return all + withId("PolyLine", name, line);
}

inline std::string circle(const std::string &name, double x, double y, double diameter,
                          const std::string &centreTag = "Center") {
    return point(name + "_C", x, y) +
           withId("CircleCenter", name, element(centreTag, name + "_C") + value("Diameter", text(diameter)));
}

// A shape element NAME of a polygon, with its polyline NAME_L and curve set NAME_S.
inline std::string polygon(const std::string &name, const char *points, double low = 0.0, double high = 0.0,
                           const std::string &more = "") {
    return polyLine(name + "_L", points) + curveSet(name + "_S", {name + "_L"}, low, high) +
           shapeElement(name, name + "_S", more);
}

// The same of a circle.
inline std::string disc(const std::string &name, double x, double y, double diameter, double low = 0.0,
                        double high = 0.0, const std::string &more = "") {
    return circle(name + "_L", x, y, diameter) + curveSet(name + "_S", {name + "_L"}, low, high) +
           shapeElement(name, name + "_S", more);
}

inline std::string shape(const std::string &tag, const std::string &id,
                         const std::vector<std::string> &elements, const std::string &more = "") {
    return withId(tag, id, references("ShapeElement", elements) + more);
}

inline std::string item(const std::string &id, const std::string &shapeId, const std::string &more = "") {
    return withId("Item", id, element("ItemType", "single") + element("Shape", shapeId) + more);
}

inline std::string package(const std::string &name) {
    return element("PackageName", element("SystemScope", "TESTS") + element("ObjectName", name));
}

// An assembly item with one instance; its name is the instance name as well.
inline std::string instance(const std::string &itemId, const std::string &name,
                            const std::string &more = "") {
    return withId("Item", itemId + "_" + name + "_A",
                  element("ItemType", "assembly") +
                      withId("ItemInstance", itemId + "_" + name + "_I",
                             element("Name", name) +
                                 element("InstanceName",
                                         element("SystemScope", "TESTS") + element("ObjectName", name)) +
                                 element("Item", itemId) + more));
}

// A part whose shape is the elements, placed once.
inline std::string part(const std::string &name, const std::string &tag,
                        const std::vector<std::string> &elements, const std::string &more = "",
                        const std::string &shapeMore = "") {
    return shape(tag, name + "_SHAPE", elements, shapeMore) +
           item(name + "_ITEM", name + "_SHAPE", package(name)) + instance(name + "_ITEM", name + "_1", more);
}

inline std::string technology(const std::string &id, const std::string &purpose = "Signal") {
    return withId("StratumTechnology", id,
                  element("TechnologyType", "Design") + element("LayerPurpose", purpose) +
                      element("LayerPositionType", "Inner"));
}

class IDXReaderTest : public testing::Test {
protected:
    bool readText(const std::string &bytes) { return reader.readFile(folder.write("text.idx", bytes)); }
    bool read(const std::string &body, const std::string &header = "") {
        return readText(document(body, header));
    }

    // Expects the read to work, without any message.
    void readWell(const std::string &body, const std::string &header = "") {
        EXPECT_TRUE(read(body, header));
        EXPECT_EQ(reader.getError(), "");
    }

    const EDA::EDABoard &board() const { return reader.getBoard(); }
    const EDA::EDAComponent &component(int index = 0) const { return board().beginComponents()[index]; }
    const EDA::EDAComponentPlacement &placement(int index = 0) const {
        return board().beginPlacements()[index];
    }

    TestSupport::TempFolder folder;
    EDA::IDXReader reader;
};

struct StoredPoint {
    double x, y, angle;
};

inline void PrintTo(const StoredPoint &point, std::ostream *stream) {
    *stream << "(" << point.x << ", " << point.y << ", " << point.angle << ")";
}

inline std::vector<StoredPoint> stored(const EDA::EDAOutline &outline) {
    std::vector<StoredPoint> points;
    for (auto at = outline.beginPoints(); at != outline.endPoints(); ++at)
        points.push_back({at->x, at->y, at->angle});
    return points;
}

MATCHER_P3(At, x, y, angle, "is (" + text(x) + ", " + text(y) + ", " + text(angle) + ")") {
    return std::abs(arg.x - x) < 1e-9 && std::abs(arg.y - y) < 1e-9 && arg.angle == angle;
}

inline auto At(double x, double y) { return At(x, y, 0.0); }

} // namespace IDXTest
