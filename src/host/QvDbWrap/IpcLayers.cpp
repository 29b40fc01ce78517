// Reading of the layers, materials and stack-ups of an IPC-2581 document.
#include "host/QvDbWrap/IpcStackup.h"

#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>

namespace QvDbWrap {

namespace {

constexpr std::size_t maxSpecs = 100; // of a layer

// Functions of layers, without blanks, hyphens and underscores. All that start with DIEL are dielectrics.
struct Function {
    const char *name;
    IpcLayerKind kind;
};

constexpr Function functions[] = {
    {"CONDUCTOR", IpcLayerKind::Conductor},
    {"SIGNAL", IpcLayerKind::Conductor},
    {"PLANE", IpcLayerKind::Conductor},
    {"MIXED", IpcLayerKind::Conductor},
    {"CONDFILM", IpcLayerKind::Conductor},
    {"CONDFOIL", IpcLayerKind::Conductor},
    {"POWERGROUND", IpcLayerKind::Conductor},
    {"POWER", IpcLayerKind::Conductor},
    {"GROUND", IpcLayerKind::Conductor},
    {"DRILL", IpcLayerKind::Drill},
    {"ROUT", IpcLayerKind::Drill},
    {"HOLEFILL", IpcLayerKind::Fill},
};

IpcLayerKind kindOf(const std::string &function) {
    if (function.compare(0, 4, "DIEL") == 0) return IpcLayerKind::Dielectric;
    for (const Function &known : functions)
        if (function == known.name) return known.kind;
    return IpcLayerKind::Other;
}

IpcSide sideOf(const std::string &side) {
    const std::string plain = plainName(side);
    if (plain == "TOP") return IpcSide::Top;
    return plain == "BOTTOM" ? IpcSide::Bottom : IpcSide::Inside;
}

bool contains(const std::string &text, const char *part) { return text.find(part) != std::string::npos; }

void takeFirst(std::string &text, const std::string &other) {
    if (text.empty()) text = other;
}

} // namespace

void takeFirst(IpcSpec &spec, const IpcSpec &other) {
    takeFirst(spec.material, other.material);
    takeFirst(spec.fillMaterial, other.fillMaterial);
    if (!(spec.platingThickness > 0)) spec.platingThickness = other.platingThickness;
}

void IpcLayers::readSpec() {
    const std::string name = context_.xml.text("name");
    IpcSpec spec;
    context_.xml.eachChild([&] { readSpecPart(spec); });
    if (!specs_.emplace(name, spec).second) context_.log.warn("spec " + name + " is there more than once");
}

// A part says what it is about by its type, or by a comment where the type is OTHER.
void IpcLayers::readSpecPart(IpcSpec &spec) {
    IpcXml &xml = context_.xml;
    const std::string about = plainName(xml.text("type")) + ' ' + plainName(xml.text("comment"));
    const bool isMaterial = contains(about, "MATERIAL");
    const bool isPlating = contains(about, "PLATING");
    const bool isFill = contains(about, "FILL");
    takeFirst(spec.material, xml.text("material"));
    if (!isMaterial && !isPlating && !isFill) return;
    xml.eachChild([&] {
        if (!xml.is("Property")) return;
        if (isFill)
            takeFirst(spec.fillMaterial, xml.text("text"));
        else if (isPlating)
            spec.platingThickness = readThickness();
        else if (isMaterial)
            takeFirst(spec.material, xml.text("text"));
    });
}

// In a unit of its own or else that of the document.
double IpcLayers::readThickness() const {
    const std::string unit = context_.xml.text("unit");
    const double factor =
        unit.empty() ? context_.geometry.getMetresPerUnit() : context_.geometry.metresPerUnit(unit);
    const double thickness = context_.xml.number("value") * factor;
    return thickness <= IpcGeometry::maxCoordinate ? thickness : 0;
}

IpcSpec IpcLayers::specOf(const std::vector<std::string> &ids) const {
    IpcSpec all;
    for (const std::string &id : ids) {
        const auto found = specs_.find(id);
        if (found != specs_.end())
            takeFirst(all, found->second);
        else
            context_.log.warn("spec " + id + " is missing");
    }
    return all;
}

void IpcLayers::readLayer() {
    IpcXml &xml = context_.xml;
    IpcLayer layer;
    layer.name = xml.text("name");
    layer.function = xml.text("layerFunction");
    layer.kind = kindOf(plainName(layer.function));
    layer.side = sideOf(xml.text("side"));
    layer.isNegative = plainName(xml.text("polarity")) == "NEGATIVE";
    xml.eachChild([&] {
        if (xml.is("Span")) {
            layer.fromLayer = xml.text("fromLayer");
            layer.toLayer = xml.text("toLayer");
        } else if (xml.is("SpecRef")) {
            if (layer.specs.size() < maxSpecs) layer.specs.push_back(xml.text("id"));
        } else if (xml.is("Profile")) {
            context_.log.warn("the profile of a layer is not read: each layer goes over the whole board");
        } else {
            context_.passOver();
        }
    });
    if (!indices_.emplace(layer.name, layers_.size()).second)
        context_.log.warn("layer " + layer.name + " is there more than once");
    else
        layers_.push_back(layer);
}

const IpcLayer *IpcLayers::find(const std::string &name) const {
    const auto found = indices_.find(name);
    return found != indices_.end() ? &layers_[found->second] : nullptr;
}

void IpcLayers::readStackup() {
    Stackup stackup;
    stackup.name = context_.xml.text("name");
    stackup.thickness = context_.geometry.length(context_.xml, "overallThickness");
    context_.xml.eachChild([&] {
        if (context_.xml.is("StackupGroup"))
            readGroup(stackup);
        else
            context_.passOver();
    });
    stackups_.push_back(std::move(stackup));
}

void IpcLayers::readGroup(Stackup &stackup) {
    Group group;
    group.name = context_.xml.text("name");
    context_.xml.eachChild([&] {
        if (context_.xml.is("StackupLayer"))
            group.entries.push_back(readEntry());
        else
            context_.passOver();
    });
    // Where all have a place in the sequence it counts, elsewhere the order in the document.
    const auto hasSequence = [](const Entry &entry) { return entry.hasSequence; };
    if (std::all_of(group.entries.begin(), group.entries.end(), hasSequence))
        std::stable_sort(group.entries.begin(), group.entries.end(),
                         [](const Entry &a, const Entry &b) { return a.sequence < b.sequence; });
    stackup.groups.push_back(std::move(group));
}

IpcLayers::Entry IpcLayers::readEntry() {
    IpcXml &xml = context_.xml;
    Entry entry;
    entry.ref = xml.text("layerOrGroupRef");
    entry.thickness = context_.geometry.length(xml, "thickness");
    if (entry.thickness > IpcGeometry::maxCoordinate) entry.thickness = 0;
    entry.hasSequence = xml.has("sequence");
    entry.sequence = xml.number("sequence");
    std::vector<std::string> specs;
    xml.eachChild([&] {
        takeFirst(entry.material, xml.text("material"));
        if (xml.is("SpecRef"))
            specs.push_back(xml.text("id"));
        else if (!xml.has("material"))
            context_.passOver();
    });
    takeFirst(entry.material, specOf(specs).material);
    return entry;
}

} // namespace QvDbWrap
