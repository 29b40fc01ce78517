// Writing a layout in text form.
#include "host/FileSystem/AtomicFile.h"
#include "host/QvDbWrap/LayoutFile.h"
#include "host/QvDbWrap/LayoutForm.h"
#include "host/QvDbWrap/LayoutLine.h"

#include <cmath>
#include <ostream>
#include <stdexcept>

namespace QvDbWrap {

namespace {

constexpr std::size_t pointsALine = 200;

// One record: the keyword first, then its fields.
class Line {
public:
    explicit Line(const char *keyword) : text_(keyword) {}

    Line &text(const std::string &value) {
        text_ += ' ';
        appendQuoted(text_, value);
        return *this;
    }
    Line &number(double value) {
        if (!std::isfinite(value)) throw std::runtime_error("the layout has a number that is not finite");
        text_ += ' ';
        appendNumber(text_, value);
        return *this;
    }
    Line &word(const std::string &value) {
        text_ += ' ' + value;
        return *this;
    }
    Line &point(const _mFPOINT &point) { return number(point.x).number(point.y); }
    Line &point(const _mFPOINT3D &point) { return number(point.x).number(point.y).number(point.z); }

    void writeTo(std::ostream &stream) {
        text_ += '\n';
        stream << text_;
    }

private:
    std::string text_;
};

// The points behind a record's fields, in as many lines as they need.
template <typename Point>
void writeWithPoints(Line line, const std::vector<Point> &points, std::ostream &stream) {
    std::size_t numOnLine = 0;
    for (const Point &point : points) {
        if (numOnLine == pointsALine) {
            line.writeTo(stream);
            line = Line("more");
            numOnLine = 0;
        }
        line.point(point);
        ++numOnLine;
    }
    line.writeTo(stream);
}

void write(const geomElem &element, std::ostream &stream) {
    Line line("element");
    line.word(wordOf(kindWords, element.kind)).word(wordOf(roleWords, element.role));
    line.number(element.radius).text(element.name).text(element.netName);
    writeWithPoints(line, element.points, stream);
}

void write(const Shape &shape, std::ostream &stream) {
    for (const ShapeElem &piece : shape.gShapeElemCont()) {
        for (const GeomObj &object : piece.gGeomCont()) {
            geomElem element;
            object.GetVertexes(element.points, 0.0, _mFPOINT());
            write(element, stream);
        }
    }
}

void write(const outlineData &outline, std::ostream &stream) {
    Line("outline").writeTo(stream);
    if (outline.shape != nullptr) {
        write(*outline.shape, stream);
        return;
    }
    for (const geomElem &element : outline.elements)
        write(element, stream);
}

void write(const layerData &layer, std::ostream &stream) {
    Line line("layer");
    line.word(wordOf(layerWords, layer.layerType)).text(layer.name).number(layer.zLow).number(layer.zHigh);
    line.text(layer.conductorMaterial).text(layer.dielectricMaterial).writeTo(stream);
    for (const geomElem &element : layer.elements)
        write(element, stream);
}

void write(const viaModelData &model, std::ostream &stream) {
    Line line("viamodel");
    line.text(model.name).text(model.fillMaterial);
    line.number(model.platingThickness).number(model.secondPlatingThickness).writeTo(stream);
    write(model.shape, stream);
}

void write(const viaData &via, std::ostream &stream) {
    Line line("via");
    line.text(via.name).text(via.modelName).text(via.fromLayer).text(via.toLayer);
    line.number(via.x).number(via.y).number(via.angle).writeTo(stream);
}

void write(const componentModelData &package, std::ostream &stream) {
    Line line("package");
    line.text(package.name).text(package.manufacturer).text(package.partNumber).number(package.height);
    line.word(wordOf(flagWords, package.isMoldEnabled ? 1 : 0)).text(package.moldMaterial);
    line.number(package.moldLength).number(package.moldWidth).number(package.moldHeight).writeTo(stream);
    write(package.shape, stream);
}

void write(const bumpData &bump, std::ostream &stream) {
    Line line("bump");
    line.text(bump.name).word(wordOf(bumpWords, bump.type)).point(bump.coord).number(bump.height);
    line.number(bump.maxDiameter).number(bump.topDiameter).number(bump.bottomDiameter);
    line.text(bump.materialName).text(bump.layerName).writeTo(stream);
}

void write(const componentData &component, std::ostream &stream) {
    Line line("component");
    line.text(component.compName).text(component.modelName).text(component.startLayerName);
    line.point(component.coord).number(component.rotation).writeTo(stream);
    for (const bumpData &bump : component.bumps)
        write(bump, stream);
}

void write(const wirebondData &wirebond, std::ostream &stream) {
    Line line("wirebond");
    line.text(wirebond.name).text(wirebond.modelName).text(wirebond.groupName);
    line.text(wirebond.startLayer).text(wirebond.endLayer).text(wirebond.material).writeTo(stream);
    for (const wirebondPath &path : wirebond.paths)
        writeWithPoints(Line("path").number(path.diameter), path.points, stream);
}

template <typename Record> void writeAll(const std::vector<Record> &records, std::ostream &stream) {
    for (const Record &record : records)
        write(record, stream);
}

} // namespace

void writeLayoutFile(const Layout &layout, const std::string &file) {
    FileSystem::AtomicFile output(file);
    std::ostream &stream = output.stream();
    stream << layoutMark << ' ' << layoutVersion << '\n';
    writeAll(layout.outlines, stream);
    writeAll(layout.layers, stream);
    writeAll(layout.viaModels, stream);
    writeAll(layout.vias, stream);
    writeAll(layout.componentModels, stream);
    writeAll(layout.components, stream);
    writeAll(layout.wirebonds, stream);
    stream << "end\n";
    if (!output.commit()) throw std::runtime_error(output.error());
}

} // namespace QvDbWrap
