// Reading layouts from text.
#include "LayoutText.h"

#include <cstdlib>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace VelkinTest {

using namespace QvDbWrap;

namespace {

std::vector<double> numbersOf(const std::string &text) {
    std::vector<double> numbers;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ',');) {
        char *end = nullptr;
        numbers.push_back(std::strtod(part.c_str(), &end));
        if (end == part.c_str() || *end != '\0') throw std::invalid_argument("no number: " + part);
    }
    return numbers;
}

class Line {
public:
    explicit Line(const std::string &text) {
        std::istringstream stream(text);
        stream >> kind;
        for (std::string word; stream >> word;) {
            const std::size_t sign = word.find('=');
            if (sign != std::string::npos)
                values_[word.substr(0, sign)] = word.substr(sign + 1);
            else if (word.find(',') != std::string::npos)
                points.push_back(numbersOf(word));
            else
                name = word;
        }
    }

    std::string text(const char *key) const {
        const auto found = values_.find(key);
        return found == values_.end() ? std::string() : found->second;
    }
    double number(const char *key, double fallback = 0) const { return part(key, 0, fallback); }
    int whole(const char *key, int fallback) const { return static_cast<int>(number(key, fallback)); }
    double part(const char *key, std::size_t index, double fallback = 0) const {
        const auto found = values_.find(key);
        return found == values_.end() ? fallback : numbersOf(found->second).at(index);
    }
    bool has(const char *key) const { return values_.count(key) > 0; }

    geomElem element(int role = geomElem::Solid) const {
        geomElem result;
        result.name = name;
        result.netName = text("net");
        result.kind = whole("kind", geomElem::Polygon);
        result.role = whole("role", role);
        result.radius = number("radius");
        for (const std::vector<double> &point : points)
            result.points.push_back({point.at(0), point.at(1)});
        return result;
    }

    std::string kind, name;
    std::vector<std::vector<double>> points;

private:
    std::map<std::string, std::string> values_;
};

layerData layerOf(const Line &line) {
    layerData layer;
    layer.name = line.name;
    layer.layerType = line.whole("type", layerData::Conductor);
    layer.zLow = line.part("z", 0);
    layer.zHigh = line.part("z", 1);
    layer.conductorMaterial = line.text("cu");
    layer.dielectricMaterial = line.text("di");
    return layer;
}

viaModelData viaModelOf(const Line &line) {
    return {line.element(), line.name, line.text("fill"), line.part("plating", 0), line.part("plating", 1)};
}

viaData viaOf(const Line &line) {
    return {line.name,          line.text("model"), line.text("from"),   line.text("to"),
            line.part("at", 0), line.part("at", 1), line.number("angle")};
}

componentModelData packageOf(const Line &line) {
    componentModelData package;
    package.shape = line.element();
    package.name = line.name;
    package.manufacturer = line.text("maker");
    package.partNumber = line.text("part");
    package.height = line.number("height");
    package.isMoldEnabled = line.has("mold");
    package.moldMaterial = line.text("material");
    package.moldLength = line.part("mold", 0);
    package.moldWidth = line.part("mold", 1);
    package.moldHeight = line.part("mold", 2);
    return package;
}

componentData componentOf(const Line &line) {
    componentData component;
    component.compName = line.name;
    component.modelName = line.text("model");
    component.startLayerName = line.text("layer");
    component.coord = {line.part("at", 0), line.part("at", 1)};
    component.rotation = line.number("turn");
    return component;
}

bumpData bumpOf(const Line &line) {
    bumpData bump;
    bump.name = line.name;
    bump.coord = {line.part("at", 0), line.part("at", 1)};
    bump.type = line.whole("type", 0);
    bump.height = line.number("height");
    bump.maxDiameter = line.number("max");
    bump.topDiameter = line.number("top");
    bump.bottomDiameter = line.number("bottom");
    bump.materialName = line.text("material");
    bump.layerName = line.text("layer");
    return bump;
}

wirebondData wireOf(const Line &line) {
    return {line.name,
            line.text("model"),
            line.text("group"),
            line.text("from"),
            line.text("to"),
            line.text("material"),
            {}};
}

wirebondPath pathOf(const Line &line) {
    wirebondPath path;
    path.diameter = line.number("d");
    for (const std::vector<double> &point : line.points)
        path.points.push_back({point.at(0), point.at(1), point.at(2)});
    return path;
}

void add(const Line &line, Layout &layout) {
    if (line.kind == "edge") return void(layout.outlines.push_back({nullptr, {line.element()}}));
    if (line.kind == "layer") return layout.layers.push_back(layerOf(line));
    if (line.kind == "solid")
        return layout.layers.at(layout.layers.size() - 1).elements.push_back(line.element());
    if (line.kind == "hole")
        return layout.layers.at(layout.layers.size() - 1).elements.push_back(line.element(geomElem::Hole));
    if (line.kind == "viamodel") return layout.viaModels.push_back(viaModelOf(line));
    if (line.kind == "via") return layout.vias.push_back(viaOf(line));
    if (line.kind == "package") return layout.componentModels.push_back(packageOf(line));
    if (line.kind == "component") return layout.components.push_back(componentOf(line));
    if (line.kind == "bump")
        return layout.components.at(layout.components.size() - 1).bumps.push_back(bumpOf(line));
    if (line.kind == "wire") return layout.wirebonds.push_back(wireOf(line));
    if (line.kind == "path")
        return layout.wirebonds.at(layout.wirebonds.size() - 1).paths.push_back(pathOf(line));
    throw std::invalid_argument("no such record: " + line.kind);
}

} // namespace

Layout layoutOf(const char *text) {
    Layout layout;
    std::istringstream stream(text);
    for (std::string text_line; std::getline(stream, text_line);) {
        const Line line(text_line);
        if (!line.kind.empty()) add(line, layout);
    }
    return layout;
}

} // namespace VelkinTest
