// Writes boards as IDX documents, and the elements that they are expected to have in short forms.
#pragma once

#include "support/Outlines.h"
#include "support/Patterns.h"
#include "support/TempFolder.h"
#include "writers/IDXWriter.h"

#include <gmock/gmock.h>

#include <string>

namespace IDXTest {

class IDXWriterTest : public testing::Test {
protected:
    // The bytes of the file.
    std::string written() {
        EXPECT_TRUE(EDA::IDXWriter().writeFile(folder.path("out.idx"), board));
        return folder.read("out.idx");
    }
    // The body without line ends, indents and line-end-free blanks between elements.
    std::string body() {
        const std::string text = EDA::test::replaced(written(), ">\\s+<", "><");
        const std::size_t begin = text.find("<foundation:Body>"), end = text.find("</foundation:Body>");
        return begin == std::string::npos || end == std::string::npos ? "<missing>"
                                                                      : text.substr(begin, end - begin);
    }
    // The first element that starts with this text, up to the end of its line of elements.
    std::string elementWithId(const std::string &id) {
        const std::string text = body();
        const std::size_t at = text.find(" id=\"" + id + "\"");
        if (at == std::string::npos) return "<missing>";
        const std::size_t begin = text.rfind('<', at);
        const std::string tag = text.substr(begin + 1, at - begin - 1);
        return text.substr(begin, text.find("</" + tag + ">", at) - begin);
    }

    EDA::EDAComponent &addComponent(const std::string &name, const std::string &partNumber,
                                    const EDA::EDAOutline &shape, double height) {
        EDA::EDAComponent component("ELECTRICAL");
        component.setName(name);
        component.setPartNumber(partNumber);
        component.getOutline() = shape;
        component.setHeight(height);
        board.addComponent(component, false);
        return *(board.endComponents() - 1);
    }
    EDA::EDAComponentPlacement &place(const std::string &name, const std::string &partNumber, double x,
                                      double y, double angle, const std::string &side) {
        EDA::EDAComponentPlacement placement;
        placement.setName(name);
        placement.setPartNumber(partNumber);
        placement.setReferenceDesignator("C1");
        placement.setLocation(x, y);
        placement.setAngle(angle);
        placement.setBoardSide(side);
        board.addComponentPlacement(placement);
        return *(board.endPlacements() - 1);
    }
    std::string transform() {
        const std::string text = body();
        const std::size_t begin = text.find("<pdm:xx>"), end = text.find("</pdm:Transformation>");
        return begin == std::string::npos ? "<missing>" : text.substr(begin, end - begin);
    }

    TestSupport::TempFolder folder;
    EDA::EDABoard board;
};

inline EDA::EDAOutline round(double x, double y, double diameter) {
    EDA::EDAOutline result;
    result.addPoint(0, x - diameter / 2, y, 0);
    result.addPoint(0, x + diameter / 2, y, 180);
    result.addPoint(0, x - diameter / 2, y, 180);
    return result;
}

// The short forms of the expected document.

inline std::string V(const std::string &x) { return "<property:Value>" + x + "</property:Value>"; }
inline const std::string S = "<foundation:SystemScope>THERMAL_SYSTEM</foundation:SystemScope>";
inline std::string U(const std::string &key, const std::string &value) {
    return "<foundation:UserProperty xsi:type=\"property:EDMDUserSimpleProperty\"><property:Key "
           "Persistant=\"false\">" +
           S + "<foundation:ObjectName>" + key + "</foundation:ObjectName></property:Key>" + V(value) +
           "</foundation:UserProperty>";
}
inline std::string I(const std::string &n) {
    return "<pdm:Identifier>" + S + "<foundation:Number>" + n + "</foundation:Number></pdm:Identifier>";
}
inline std::string P(const std::string &id, const std::string &x, const std::string &y) {
    return "<foundation:CartesianPoint id=\"" + id + "\"><d2:X>" + V(x) + "</d2:X><d2:Y>" + V(y) +
           "</d2:Y></foundation:CartesianPoint>";
}
inline std::string O(const std::string &s, const std::string &d) {
    return "<foundation:CircleCenter id=\"" + s + "_CIRCLE\"><d2:Center>" + s +
           "_CENTER</d2:Center><d2:Diameter>" + V(d) + "</d2:Diameter></foundation:CircleCenter>";
}
inline std::string C(const std::string &s, const std::string &c, const std::string &h, const std::string &t,
                     const std::string &v) {
    return "<foundation:CurveSet2d id=\"" + s +
           "_CURVESET\"><pdm:ShapeDescriptionType>GeometricModel</pdm:ShapeDescriptionType><d2:LowerBound>" +
           V("0") + "</d2:LowerBound><d2:UpperBound>" + V(h) +
           "</d2:UpperBound><d2:DetailedGeometricModelElement>" + c +
           "</d2:DetailedGeometricModelElement></foundation:CurveSet2d><foundation:ShapeElement id=\"" + s +
           "_SHAPE_ELEMENT\"><pdm:ShapeElementType>" + t + "</pdm:ShapeElementType><pdm:Inverted>" + v +
           "</pdm:Inverted><pdm:DefiningShape>" + s +
           "_CURVESET</pdm:DefiningShape></foundation:ShapeElement>";
}
inline std::string A(const std::string &b, const std::string &n, const std::string &i) {
    return "<foundation:Item id=\"" + b + "_ASSEMBLY\"><pdm:ItemType>assembly</pdm:ItemType>" +
           I(b + "_ASSEMBLY") + "<pdm:ItemInstance id=\"" + b + "_INSTANCE\"><foundation:Name>" + n +
           "</foundation:Name><pdm:InstanceName>" + S + "<foundation:ObjectName>" + n +
           "</foundation:ObjectName></pdm:InstanceName><pdm:Item>" + i + "</pdm:Item>";
}
inline const std::string Z =
    "</pdm:ItemInstance><pdm:BaseLine>" + V("true") + "</pdm:BaseLine></foundation:Item>";
inline std::string item(const std::string &b, const std::string &shape, const std::string &more = "") {
    return "<foundation:Item id=\"" + b + "_ITEM\"><pdm:ItemType>single</pdm:ItemType>" + I(b + "_ITEM") +
           "<pdm:Shape>" + shape + "</pdm:Shape>" + more + "</foundation:Item>";
}
inline std::string X(const std::string &xx, const std::string &xy, const std::string &yx,
                     const std::string &yy, const std::string &x, const std::string &y) {
    return "<pdm:xx>" + xx + "</pdm:xx><pdm:xy>" + xy + "</pdm:xy><pdm:yx>" + yx + "</pdm:yx><pdm:yy>" + yy +
           "</pdm:yy><pdm:tx>" + V(x) + "</pdm:tx><pdm:ty>" + V(y) + "</pdm:ty>";
}

} // namespace IDXTest
