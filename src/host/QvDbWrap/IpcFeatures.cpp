// What a step of an IPC-2581 document draws on its layers.
#include "host/QvDbWrap/IpcStepReader.h"

#include "host/QvDbWrap/IpcCurves.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <cmath>
#include <utility>

namespace QvDbWrap {

namespace {

bool isFiducial(const IpcXml &xml) {
    for (const char *name : {"GlobalFiducial", "LocalFiducial", "BadBoardMark", "GoodPanelMark"})
        if (xml.is(name)) return true;
    return false;
}

bool staysInPlace(const IpcPlacement &placement) {
    return placement.xOffset == 0 && placement.yOffset == 0 && placement.rotation == 0 &&
           placement.scale == 1 && !placement.isMirrored && placement.x == 0 && placement.y == 0;
}

} // namespace

std::vector<IpcPlacement> IpcStepReader::Placed::placements() const {
    if (places.empty()) return {xform};
    std::vector<IpcPlacement> all;
    for (const _mFPOINT &place : places)
        all.push_back(placedAt(xform, place));
    return all;
}

// A layer that is not declared, or not yet, may turn out to be of copper.
void IpcStepReader::readLayerFeature() {
    Set set;
    set.layerName = xml_.text("layerRef");
    set.layer = layers_.find(set.layerName);
    const IpcLayerKind kind = set.layer ? set.layer->kind : IpcLayerKind::Unknown;
    if (kind == IpcLayerKind::Other || kind == IpcLayerKind::Dielectric)
        return context_.log.warn("features on layers of function " + set.layer->function + " are not read");
    if (kind == IpcLayerKind::Conductor || kind == IpcLayerKind::Unknown)
        set.copper = &step_.copper[set.layerName];
    set.readsHoles = kind != IpcLayerKind::Fill;
    if (set.layer) set.layerSpec = layers_.specOf(set.layer->specs);
    xml_.eachChild([&] {
        if (xml_.is("Set"))
            readSet(set);
        else
            context_.passOver();
    });
}

void IpcStepReader::readSet(const Set &layer) {
    Set set = layer;
    set.net = names_.add(xml_.text("net"));
    set.isNegative = plainName(xml_.text("polarity")) == "NEGATIVE";
    set.padstack = xml_.text("geometry");
    xml_.eachChild([&] { readFeature(set); });
}

void IpcStepReader::readFeature(Set &set) {
    const bool drawsShapes = set.copper || !set.readsHoles;
    if (xml_.is("Features")) {
        if (!drawsShapes) return context_.log.warn("shapes on drill layers are not read");
        const Placed placed = readPlaced();
        set.copper ? draw(set, placed) : addFills(set, placed);
    } else if (xml_.is("Pad") || isFiducial(xml_)) {
        if (!drawsShapes) return context_.log.warn("pads on drill layers are not read");
        readPad(set);
    } else if (xml_.is("Hole")) {
        readHole(set);
    } else if (xml_.is("SlotCavity") || xml_.is("Slot")) {
        readSlot(set);
    } else if (xml_.is("SpecRef")) {
        takeSpec(set.spec);
    } else if (set.copper && IpcGeometry::isShape(xml_)) {
        draw(set, apply(IpcPlacement(), context_.geometry.readShape(xml_)));
    } else {
        context_.passOver();
    }
}

void IpcStepReader::takeSpec(IpcSpec &spec) { takeFirst(spec, layers_.specOf({xml_.text("id")})); }

// Nothing once there are too many points, so that a large shape at many places does not take all time.
Areas IpcStepReader::apply(const IpcPlacement &placement, const Areas &areas, bool isCopy) {
    const std::size_t count = numPoints(areas);
    if (isCopy ? !context_.takeCopies(count, areas.size(), IpcGeometry::Copy::OfElement)
               : !context_.takePoints(count))
        return {};
    return staysInPlace(placement) ? areas : placement.apply(areas);
}

// Places come in any number and before or after the shape; all shapes stand at all of them.
IpcStepReader::Placed IpcStepReader::readPlaced() {
    Placed placed;
    xml_.eachChild([&] {
        if (!readPlacedPart(placed)) context_.passOver();
    });
    return placed;
}

bool IpcStepReader::readPlacedPart(Placed &placed) {
    if (xml_.is("Location")) {
        IpcPlacement place;
        context_.geometry.readLocation(xml_, place);
        placed.places.push_back({place.x, place.y});
    } else if (xml_.is("Xform")) {
        context_.geometry.readXform(xml_, placed.xform);
    } else if (xml_.is("SpecRef")) {
        takeSpec(placed.spec);
    } else if (IpcGeometry::isShape(xml_)) {
        Areas areas = context_.geometry.readShape(xml_);
        placed.hasShape = true;
        if (placed.areas.empty()) {
            placed.areas = std::move(areas);
        } else {
            for (Area &area : areas)
                placed.areas.push_back(std::move(area));
        }
    } else {
        return false;
    }
    return true;
}

// A pad of its own shape comes before the one that its stack has on the layer.
void IpcStepReader::readPad(const Set &set) {
    std::string padstack = xml_.text("padstackDefRef");
    if (padstack.empty()) padstack = xml_.text("padstackRef");
    Placed placed;
    if (xml_.has("x") && xml_.has("y")) {
        IpcPlacement place;
        context_.geometry.readLocation(xml_, place);
        placed.places.push_back({place.x, place.y});
    }
    xml_.eachChild([&] {
        if (!readPlacedPart(placed)) context_.passOver();
    });
    if (!set.copper) return addFills(set, placed);
    if (padstack.empty() && !placed.hasShape)
        return context_.log.warn("a pad has neither a shape nor a stack");
    if (placed.hasShape) draw(set, placed);
    if (padstack.empty()) return;
    const std::uint32_t number = names_.add(padstack);
    for (const IpcPlacement &placement : placed.placements()) {
        if (!placed.hasShape) drawPad(set, padstack, placement);
        step_.stackPlaces.push_back({number, placement});
    }
}

void IpcStepReader::drawPad(const Set &set, const std::string &padstack, const IpcPlacement &placement) {
    if (step_.padstacks.count(padstack) == 0) {
        if (set.copper->pending.size() < IpcCopper::maxObjects &&
            context_.takePoints(1 + IpcContext::costOf(padstack)))
            set.copper->pending.push_back({padstack, placement, set.net, step_.numDrawn++, set.isNegative});
    } else if (const Areas *const pad = findPad(step_, padstack, set.layerName)) {
        draw(set, apply(placement, *pad, true));
    } else {
        context_.log.warn("a pad has no shape of its own, and its stack none on its layer");
    }
}

const Areas *findPad(const IpcStep &step, const std::string &padstack, const std::string &layer) {
    const auto stack = step.padstacks.find(padstack);
    if (stack == step.padstacks.end()) return nullptr;
    const auto pad = stack->second.pads.find(layer);
    return pad != stack->second.pads.end() ? &pad->second : nullptr;
}

void IpcStepReader::draw(const Set &set, const Placed &placed) {
    bool isCopy = false;
    for (const IpcPlacement &placement : placed.placements()) {
        Areas areas = apply(placement, placed.areas, isCopy);
        if (areas.empty()) return; // there is nothing, or no room for it at any place
        draw(set, std::move(areas));
        isCopy = true;
    }
}

void IpcStepReader::draw(const Set &set, Areas areas) {
    if (areas.empty() || !context_.geometry.isUsable(areas)) return;
    std::vector<IpcDrawn> &drawn = set.copper->drawn;
    const std::uint32_t order = step_.numDrawn++;
    for (Area &area : areas) {
        if (area.outer.size() < 3) continue;
        if (drawn.size() >= IpcCopper::maxObjects)
            return context_.log.warn("more than " + std::to_string(IpcCopper::maxObjects) +
                                     " shapes on a layer");
        drawn.push_back({std::move(area), set.net, order, set.isNegative});
    }
}

void IpcStepReader::addFill(const _mFPOINT &at, const std::string &material) {
    const double most = IpcGeometry::maxCoordinate;
    const bool isUsable = std::abs(at.x) <= most && std::abs(at.y) <= most;
    if (isUsable && context_.takePoints(1)) step_.fills.push_back({at, names_.add(material)});
}

// What is drawn on a fill layer says where holes are filled.
void IpcStepReader::addFills(const Set &set, const Placed &placed) {
    IpcSpec spec = placed.spec;
    takeFirst(spec, set.spec);
    takeFirst(spec, set.layerSpec);
    const std::string &material = spec.fillMaterial.empty() ? spec.material : spec.fillMaterial;
    for (const IpcPlacement &placement : placed.placements())
        addFill(placement.apply({0, 0}), material.empty() ? set.layerName : material);
}

} // namespace QvDbWrap
