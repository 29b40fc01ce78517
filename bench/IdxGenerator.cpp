// IDX documents as exchange programs write them: one element a line, namespaces, types, ids.
#include "IdxGenerator.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <random>
#include <utility>
#include <vector>

namespace EDABench {

namespace {

constexpr double pi = 3.14159265358979323846;
using Points = std::vector<std::pair<double, double>>;

class Writer {
public:
    Writer(int instances, unsigned seed) : engine_(seed), size_(std::max(50.0, std::sqrt(instances) * 4)) {}

    std::string make(int instances, int definitions);

private:
    double uniform(double low, double high) { return low + (high - low) * (engine_() / 4294967296.0); }
    unsigned below(unsigned limit) { return engine_() % limit; }

    void line(const char *format, ...) {
        char buffer[2048];
        va_list arguments;
        va_start(arguments, format);
        text_.append(buffer,
                     static_cast<std::size_t>(std::vsnprintf(buffer, sizeof buffer, format, arguments)));
        va_end(arguments);
        text_ += '\n';
    }
    std::string newId(const char *kind) {
        char id[32];
        std::snprintf(id, sizeof id, "%s%07d", kind, ++ids_);
        return id;
    }

    std::string point(double x, double y);
    std::string shape(const Points &points, double high, const char *kind);
    std::string part(const std::string &name, const std::string &element);
    void identifier(const std::string &number);
    void property(const char *name, const std::string &value);
    void hole();
    void placement(int number, const std::pair<std::string, std::string> &definition);

    std::mt19937 engine_;
    double size_;
    std::string text_;
    int ids_ = 0;
};

std::string Writer::point(double x, double y) {
    const std::string id = newId("PT");
    line("<foundation:CartesianPoint id=\"%s\" xsi:type=\"d2:EDMDCartesianPoint\"><d2:X "
         "xsi:type=\"property:EDMDLengthProperty\"><property:Value>%.6f</property:Value></d2:X><d2:Y "
         "xsi:type=\"property:EDMDLengthProperty\"><property:Value>%.6f</property:Value></d2:Y>"
         "</foundation:CartesianPoint>",
         id.c_str(), x, y);
    return id;
}

std::string Writer::shape(const Points &points, double high, const char *kind) {
    std::vector<std::string> ids;
    for (const auto &[x, y] : points)
        ids.push_back(point(x, y));
    const std::string curve = newId("PL"), set = newId("CS"), element = newId("SE");
    line("<foundation:PolyLine id=\"%s\" xsi:type=\"d2:EDMDPolyLine\"><d2:Thickness "
         "xsi:type=\"property:EDMDLengthProperty\"><property:Value>0</property:Value></d2:Thickness>",
         curve.c_str());
    for (const std::string &id : ids)
        line("<d2:Point>%s</d2:Point>", id.c_str());
    line("</foundation:PolyLine>");
    line("<foundation:CurveSet2d id=\"%s\" "
         "xsi:type=\"d2:EDMDCurveSet2d\"><pdm:ShapeDescriptionType>GeometricModel"
         "</pdm:ShapeDescriptionType><d2:LowerBound "
         "xsi:type=\"property:EDMDLengthProperty\"><property:Value>0.0000"
         "</property:Value></d2:LowerBound><d2:UpperBound "
         "xsi:type=\"property:EDMDLengthProperty\"><property:Value>"
         "%.4f</property:Value></d2:UpperBound><d2:DetailedGeometricModelElement>%s"
         "</d2:DetailedGeometricModelElement></foundation:CurveSet2d>",
         set.c_str(), high, curve.c_str());
    line("<foundation:ShapeElement id=\"%s\" xsi:type=\"pdm:EDMDShapeElement\"><pdm:ShapeElementType>%s"
         "</pdm:ShapeElementType><pdm:Inverted>false</pdm:Inverted><pdm:DefiningShape>%s</pdm:DefiningShape>"
         "</foundation:ShapeElement>",
         element.c_str(), kind, set.c_str());
    return element;
}

void Writer::identifier(const std::string &number) {
    line("<foundation:Identifier xsi:type=\"foundation:EDMDIdentifier\"><foundation:SystemScope>SYN"
         "</foundation:SystemScope><foundation:Number>%s</foundation:Number><foundation:Version>1"
         "</foundation:Version><foundation:Revision>0</foundation:Revision><foundation:Sequence>0"
         "</foundation:Sequence></foundation:Identifier>",
         number.c_str());
}

std::string Writer::part(const std::string &name, const std::string &element) {
    const std::string shapeId = newId("SH"), id = newId("IT");
    line("<foundation:%s id=\"%s\"><pdm:ShapeElement>%s</pdm:ShapeElement></foundation:%s>",
         name == "BOARD" ? "Stratum" : "AssemblyComponent", shapeId.c_str(), element.c_str(),
         name == "BOARD" ? "Stratum" : "AssemblyComponent");
    line("<foundation:Item id=\"%s\" xsi:type=\"pdm:EDMDItem\"><foundation:Name>%s</foundation:Name>"
         "<pdm:ItemType>single</pdm:ItemType>",
         id.c_str(), name.c_str());
    identifier(name);
    line("<pdm:PackageName><foundation:SystemScope>SYN</foundation:SystemScope><foundation:ObjectName>%s"
         "</foundation:ObjectName></pdm:PackageName><pdm:Shape>%s</pdm:Shape></foundation:Item>",
         name.c_str(), shapeId.c_str());
    return id;
}

void Writer::property(const char *name, const std::string &value) {
    line("<foundation:UserProperty xsi:type=\"property:EDMDUserSimpleProperty\"><property:Key>"
         "<foundation:SystemScope>SYN</foundation:SystemScope><foundation:ObjectName>%s</"
         "foundation:ObjectName>"
         "</property:Key><property:Value>%s</property:Value></foundation:UserProperty>",
         name, value.c_str());
}

void Writer::hole() {
    const double sizes[] = {0.3, 0.4, 0.8, 1.0};
    const double x = uniform(1, size_ - 1), y = uniform(1, size_ - 1), diameter = sizes[below(4)];
    const std::string centre = point(x, y), id = newId("CC");
    line("<foundation:CircleCenter id=\"%s\" "
         "xsi:type=\"d2:EDMDCircleCenter\"><d2:CenterPoint>%s</d2:CenterPoint>"
         "<d2:Diameter "
         "xsi:type=\"property:EDMDLengthProperty\"><property:Value>%.4f</property:Value></d2:Diameter>"
         "</foundation:CircleCenter>",
         id.c_str(), centre.c_str(), diameter);
}

void Writer::placement(int number, const std::pair<std::string, std::string> &definition) {
    const double angle = below(2) ? pi / 2 * below(4) : uniform(0, 2 * pi);
    const std::string name = std::string(1, "RCUQ"[below(4)]) + std::to_string(number + 1);
    const std::string id = newId("IA"), instance = newId("II");
    line("<foundation:Item id=\"%s\" geometryType=\"COMPONENT\" xsi:type=\"pdm:EDMDItem\">", id.c_str());
    line("<foundation:Name>%s</foundation:Name>", name.c_str());
    property("REFDES", "X" + std::to_string(number));
    property("PARTNUM", definition.second);
    property("VALUE", "100n");
    line("<pdm:ItemType>assembly</pdm:ItemType>");
    identifier(name);
    line("<pdm:ItemInstance id=\"%s\" xsi:type=\"pdm:EDMDItemInstance\"><foundation:Name>%s</foundation:Name>"
         "<pdm:Item>%s</pdm:Item><pdm:InstanceName><foundation:SystemScope>SYN</foundation:SystemScope>"
         "<foundation:ObjectName>%s</foundation:ObjectName></pdm:InstanceName>",
         instance.c_str(), name.c_str(), definition.first.c_str(), name.c_str());
    const double c = std::cos(angle), s = std::sin(angle);
    line(
        "<pdm:Transformation xsi:type=\"pdm:EDMDTransformation\"><pdm:TransformationType>d2"
        "</pdm:TransformationType><pdm:xx>%.9f</pdm:xx><pdm:xy>%.9f</pdm:xy><pdm:yx>%.9f</pdm:yx><pdm:yy>%.9f"
        "</pdm:yy><pdm:tx "
        "xsi:type=\"property:EDMDLengthProperty\"><property:Value>%.6f</property:Value></pdm:tx>"
        "<pdm:ty xsi:type=\"property:EDMDLengthProperty\"><property:Value>%.6f</property:Value></pdm:ty>"
        "</pdm:Transformation>",
        c, -s, s, c, uniform(1, size_ - 1), uniform(1, size_ - 1));
    line("</pdm:ItemInstance>");
    line("<pdm:AssembleToName>%s</pdm:AssembleToName>", below(10) < 7 ? "TOP" : "BOTTOM");
    line("<pdm:BaseLine xsi:type=\"property:EDMDLogicalProperty\"><property:Value>true</property:Value>"
         "</pdm:BaseLine>");
    line("</foundation:Item>");
}

std::string Writer::make(int instances, int definitions) {
    line("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    line("<foundation:EDMDDataSet xmlns:foundation=\"urn:x-syn:foundation\" xmlns:pdm=\"urn:x-syn:pdm\" "
         "xmlns:d2=\"urn:x-syn:geometry.d2\" xmlns:property=\"urn:x-syn:property\" "
         "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">");
    line("<foundation:Header><foundation:CreatorSystem>SYN</foundation:CreatorSystem></foundation:Header>");
    line("<foundation:Body xsi:type=\"foundation:EDMDDataSetBody\">");
    part("BOARD", shape({{0, 0}, {size_, 0}, {size_, size_}, {0, size_}, {0, 0}}, 1.6, "PartFeature"));
    std::vector<std::pair<std::string, std::string>> library;
    for (int i = 0; i < definitions; ++i) {
        const unsigned counts[] = {4, 4, 4, 8, 16};
        const double width = uniform(0.3, 12), height = uniform(0.3, 12);
        const unsigned count = counts[below(5)];
        Points points;
        for (unsigned k = 0; k <= count; ++k) {
            const double angle = 2 * pi * (k % count) / count + 0.3;
            points.emplace_back(width / 2 * std::cos(angle), height / 2 * std::sin(angle));
        }
        const std::string name = "PKG" + std::to_string(i);
        library.emplace_back(part(name, shape(points, uniform(0.2, 5), "PartMountingFeature")), name);
    }
    for (int i = 0; i < instances / 5; ++i)
        hole();
    for (int i = 0; i < instances; ++i)
        placement(i, library[below(static_cast<unsigned>(definitions))]);
    line("</foundation:Body>\n</foundation:EDMDDataSet>");
    return std::move(text_);
}

} // namespace

std::string generateIdx(int instances, int definitions, unsigned seed) {
    return Writer(instances, seed).make(instances, definitions);
}

} // namespace EDABench
