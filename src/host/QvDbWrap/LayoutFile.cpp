// Reading a layout in text form.
#include "host/QvDbWrap/LayoutFile.h"

#include "host/FileSystem/File.h"
#include "host/QvDbWrap/LayoutForm.h"
#include "host/QvDbWrap/LayoutLine.h"
#include "host/QvDbWrap/SideFile.h"

#include <array>
#include <stdexcept>
#include <utility>

namespace QvDbWrap {

namespace {

// Fills a layout line by line. Elements, points, bumps and paths belong to the record before them.
class LayoutReader {
public:
    LayoutReader(std::string_view text, const LayoutLimits &limits) : lines_(text), limits_(limits) {}

    Layout read() {
        checkMark();
        std::string_view line;
        while (!isEnded_) {
            if (!lines_.next(line)) lines_.fail("the file breaks off: its last line is not \"end\"");
            readRecord(line);
        }
        if (lines_.next(line)) lines_.fail("there is more behind \"end\"");
        return std::move(layout_);
    }

private:
    using Read = void (LayoutReader::*)(FieldWalk &fields);
    struct Keyword {
        std::string_view word;
        Read read;
    };

    void checkMark();
    void readRecord(std::string_view line);
    void countRecord();
    void countPoint();
    template <typename Record> Record &beginRecord(std::vector<Record> &records) {
        countRecord();
        owners_ = {};
        element_ = nullptr;
        path_ = nullptr;
        return records.emplace_back();
    }

    template <std::size_t size>
    int choice(FieldWalk &fields, const LayoutWord (&words)[size], const char *what) {
        const std::string_view word = fields.word(what);
        int value = 0;
        if (!valueOf(words, word, value)) fields.fail(std::string(what) + " is an unknown word");
        return value;
    }

    void readOutline(FieldWalk &fields);
    void readLayer(FieldWalk &fields);
    void readViaModel(FieldWalk &fields);
    void readVia(FieldWalk &fields);
    void readPackage(FieldWalk &fields);
    void readComponent(FieldWalk &fields);
    void readBump(FieldWalk &fields);
    void readWirebond(FieldWalk &fields);
    void readElement(FieldWalk &fields);
    void readPath(FieldWalk &fields);
    void readMore(FieldWalk &fields);
    void readEnd(FieldWalk &fields);

    geomElem &newElement(FieldWalk &fields);
    void readPoints(FieldWalk &fields);
    void readPathPoints(FieldWalk &fields);

    // What elements, bumps and paths that come next belong to. Set by the record that is begun, and cleared
    // by the next one, before it can move what these point to.
    struct Owners {
        std::vector<geomElem> *elements = nullptr; // of an outline or a layer
        geomElem *single = nullptr;                // of a via model or a package, which have one
        std::vector<bumpData> *bumps = nullptr;
        std::vector<wirebondPath> *paths = nullptr;
    };

    LineWalk lines_;
    const LayoutLimits limits_;
    Layout layout_;
    Owners owners_;
    geomElem *element_ = nullptr;  // that more points belong to
    wirebondPath *path_ = nullptr; // the same
    std::size_t numRecords_ = 0;
    std::size_t numPoints_ = 0;
    bool isEnded_ = false;
};

void LayoutReader::checkMark() {
    std::string_view line;
    if (!lines_.next(line)) throw std::runtime_error("line 1: the file is empty");
    FieldWalk fields(lines_, line);
    if (lines_.number() != 1 || fields.word("the mark") != layoutMark)
        throw std::runtime_error("line 1: this is no layout in text form, which begins with " +
                                 std::string(layoutMark));
    const double version = fields.number("the version");
    fields.end();
    if (version != layoutVersion)
        fields.fail("the version is unknown; version " + std::to_string(layoutVersion) + " can be read");
}

void LayoutReader::readRecord(std::string_view line) {
    static constexpr std::array<Keyword, 12> keywords = {{
        {"element", &LayoutReader::readElement},
        {"more", &LayoutReader::readMore},
        {"via", &LayoutReader::readVia},
        {"component", &LayoutReader::readComponent},
        {"bump", &LayoutReader::readBump},
        {"path", &LayoutReader::readPath},
        {"outline", &LayoutReader::readOutline},
        {"layer", &LayoutReader::readLayer},
        {"viamodel", &LayoutReader::readViaModel},
        {"package", &LayoutReader::readPackage},
        {"wirebond", &LayoutReader::readWirebond},
        {"end", &LayoutReader::readEnd},
    }};
    FieldWalk fields(lines_, line);
    const std::string_view word = fields.word("the keyword");
    for (const Keyword &keyword : keywords) {
        if (keyword.word != word) continue;
        (this->*keyword.read)(fields);
        fields.end();
        return;
    }
    fields.fail("there is no record of this kind");
}

void LayoutReader::countRecord() {
    if (++numRecords_ > limits_.records)
        lines_.fail("the file has more than " + std::to_string(limits_.records) + " records");
}

void LayoutReader::countPoint() {
    if (++numPoints_ > limits_.points)
        lines_.fail("the file has more than " + std::to_string(limits_.points) + " points");
}

void LayoutReader::readOutline(FieldWalk &) {
    outlineData &outline = beginRecord(layout_.outlines);
    owners_.elements = &outline.elements;
}

void LayoutReader::readLayer(FieldWalk &fields) {
    layerData &layer = beginRecord(layout_.layers);
    layer.layerType = choice(fields, layerWords, "the type of the layer");
    layer.name = fields.text("the name");
    layer.zLow = fields.number("the lower height");
    layer.zHigh = fields.number("the upper height");
    layer.conductorMaterial = fields.text("the conductor material");
    layer.dielectricMaterial = fields.text("the dielectric material");
    owners_.elements = &layer.elements;
}

void LayoutReader::readViaModel(FieldWalk &fields) {
    viaModelData &model = beginRecord(layout_.viaModels);
    model.name = fields.text("the name");
    model.fillMaterial = fields.text("the fill material");
    model.platingThickness = fields.number("the plating thickness");
    model.secondPlatingThickness = fields.number("the second plating thickness");
    owners_.single = &model.shape;
}

void LayoutReader::readVia(FieldWalk &fields) {
    viaData &via = beginRecord(layout_.vias);
    via.name = fields.text("the name");
    via.modelName = fields.text("the model");
    via.fromLayer = fields.text("the first layer");
    via.toLayer = fields.text("the last layer");
    via.x = fields.number("x");
    via.y = fields.number("y");
    via.angle = fields.number("the angle");
}

void LayoutReader::readPackage(FieldWalk &fields) {
    componentModelData &package = beginRecord(layout_.componentModels);
    package.name = fields.text("the name");
    package.manufacturer = fields.text("the manufacturer");
    package.partNumber = fields.text("the part number");
    package.height = fields.number("the height");
    package.isMoldEnabled = choice(fields, flagWords, "whether there is a mold") != 0;
    package.moldMaterial = fields.text("the mold material");
    package.moldLength = fields.number("the length of the mold");
    package.moldWidth = fields.number("the width of the mold");
    package.moldHeight = fields.number("the height of the mold");
    owners_.single = &package.shape;
}

void LayoutReader::readComponent(FieldWalk &fields) {
    componentData &component = beginRecord(layout_.components);
    component.compName = fields.text("the designator");
    component.modelName = fields.text("the package");
    component.startLayerName = fields.text("the layer");
    component.coord.x = fields.number("x");
    component.coord.y = fields.number("y");
    component.rotation = fields.number("the rotation");
    owners_.bumps = &component.bumps;
}

void LayoutReader::readBump(FieldWalk &fields) {
    if (owners_.bumps == nullptr) fields.fail("a bump belongs behind a component");
    countRecord();
    bumpData &bump = owners_.bumps->emplace_back();
    bump.name = fields.text("the name");
    bump.type = choice(fields, bumpWords, "the type");
    bump.coord.x = fields.number("x");
    bump.coord.y = fields.number("y");
    bump.height = fields.number("the height");
    bump.maxDiameter = fields.number("the largest diameter");
    bump.topDiameter = fields.number("the diameter at the top");
    bump.bottomDiameter = fields.number("the diameter at the bottom");
    bump.materialName = fields.text("the material");
    bump.layerName = fields.text("the layer");
}

void LayoutReader::readWirebond(FieldWalk &fields) {
    wirebondData &wirebond = beginRecord(layout_.wirebonds);
    wirebond.name = fields.text("the name");
    wirebond.modelName = fields.text("the model");
    wirebond.groupName = fields.text("the group");
    wirebond.startLayer = fields.text("the first layer");
    wirebond.endLayer = fields.text("the last layer");
    wirebond.material = fields.text("the material");
    owners_.paths = &wirebond.paths;
}

geomElem &LayoutReader::newElement(FieldWalk &fields) {
    if (owners_.elements != nullptr) return owners_.elements->emplace_back();
    if (owners_.single == nullptr)
        fields.fail(
            "an element belongs behind an outline or layer, or as the only one behind a viamodel or package");
    geomElem &element = *owners_.single;
    owners_.single = nullptr;
    return element;
}

void LayoutReader::readElement(FieldWalk &fields) {
    countRecord();
    geomElem &element = newElement(fields);
    element.kind = choice(fields, kindWords, "the kind");
    element.role = choice(fields, roleWords, "the role");
    element.radius = fields.number("the radius");
    element.name = fields.text("the name");
    element.netName = fields.text("the net");
    element_ = &element;
    readPoints(fields);
}

void LayoutReader::readPoints(FieldWalk &fields) {
    while (!fields.isAtEnd()) {
        countPoint();
        const double x = fields.number("x");
        element_->points.push_back({x, fields.number("y")});
    }
}

void LayoutReader::readPath(FieldWalk &fields) {
    if (owners_.paths == nullptr) fields.fail("a path belongs behind a wirebond");
    countRecord();
    path_ = &owners_.paths->emplace_back();
    path_->diameter = fields.number("the diameter");
    readPathPoints(fields);
}

void LayoutReader::readPathPoints(FieldWalk &fields) {
    while (!fields.isAtEnd()) {
        countPoint();
        const double x = fields.number("x");
        const double y = fields.number("y");
        path_->points.push_back({x, y, fields.number("z")});
    }
}

void LayoutReader::readMore(FieldWalk &fields) {
    if (element_ != nullptr) {
        readPoints(fields);
    } else if (path_ != nullptr) {
        readPathPoints(fields);
    } else {
        fields.fail("more points belong behind an element or a path");
    }
}

void LayoutReader::readEnd(FieldWalk &) { isEnded_ = true; }

} // namespace

bool isLayoutFile(const std::string &file) { return startsWithMark(file, layoutMark); }

Layout readLayoutFile(const std::string &file, const LayoutLimits &limits) {
    std::string text;
    std::string error;
    if (!FileSystem::File::readAll(file, text, error)) throw std::runtime_error(error);
    return parseLayout(text, limits);
}

Layout parseLayout(std::string_view text, const LayoutLimits &limits) {
    return LayoutReader(text, limits).read();
}

} // namespace QvDbWrap
