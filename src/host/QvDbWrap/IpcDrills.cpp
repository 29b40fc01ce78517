// Padstacks, holes and slots of a step of an IPC-2581 document.
#include "host/QvDbWrap/IpcStepReader.h"

#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace QvDbWrap {

namespace {

_mFPOINT middleOf(const Ring &ring) {
    double low[2] = {ring[0].x, ring[0].y};
    double high[2] = {ring[0].x, ring[0].y};
    for (const _mFPOINT &point : ring) {
        low[0] = std::min(low[0], point.x);
        low[1] = std::min(low[1], point.y);
        high[0] = std::max(high[0], point.x);
        high[1] = std::max(high[1], point.y);
    }
    return {(low[0] + high[0]) / 2, (low[1] + high[1]) / 2};
}

Ring square(double width) {
    const double half = width / 2;
    return {{-half, -half}, {half, -half}, {half, half}, {-half, half}};
}

bool isUsable(const IpcHole &hole) {
    const double most = IpcGeometry::maxCoordinate;
    return std::abs(hole.at.x) <= most && std::abs(hole.at.y) <= most && hole.diameter <= most;
}

} // namespace

void IpcStepReader::readPadstackDef() {
    const std::string name = xml_.text("name");
    IpcPadstack padstack;
    xml_.eachChild([&] {
        if (xml_.is("PadstackHoleDef")) {
            if (padstack.hasHole)
                return context_.log.warn("a padstack has more than one hole: the first is taken");
            padstack.hasHole = true;
            padstack.diameter = context_.geometry.length(xml_, "diameter");
            padstack.plating = platingOf(xml_.text("platingStatus"));
            padstack.holeAt = {context_.geometry.length(xml_, "x"), context_.geometry.length(xml_, "y")};
        } else if (xml_.is("PadstackPadDef")) {
            readPadstackPad(padstack);
        } else {
            context_.passOver();
        }
    });
    if (!step_.padstacks.emplace(name, std::move(padstack)).second)
        context_.log.warn("padstack " + name + " is there more than once");
}

// Clearances and thermal reliefs are drawn by the planes themselves.
void IpcStepReader::readPadstackPad(IpcPadstack &padstack) {
    const std::string layer = xml_.text("layerRef");
    const std::string use = plainName(xml_.text("padUse"));
    if (!use.empty() && use != "REGULAR") return;
    const Placed placed = readPlaced();
    Areas areas;
    for (const IpcPlacement &placement : placed.placements()) {
        const Areas more = apply(placement, placed.areas);
        areas.insert(areas.end(), more.begin(), more.end());
    }
    if (!areas.empty() && context_.geometry.isUsable(areas)) padstack.pads.emplace(layer, std::move(areas));
}

// The older form, where each stack stands at a place of its own.
void IpcStepReader::readPadstackInstance() {
    Set set;
    set.net = names_.add(xml_.text("net"));
    set.readsHoles = true;
    xml_.eachChild([&] {
        if (xml_.is("LayerHole"))
            readHole(set);
        else if (xml_.is("LayerPad"))
            readLayerPad(set.net);
        else
            context_.passOver();
    });
}

void IpcStepReader::readLayerPad(std::uint32_t net) {
    Set set;
    set.layerName = xml_.text("layerRef");
    set.layer = layers_.find(set.layerName);
    set.net = net;
    const Placed placed = readPlaced();
    const bool isCopper = !set.layer || set.layer->kind == IpcLayerKind::Conductor;
    if (!isCopper)
        return context_.log.warn("features on layers of function " + set.layer->function + " are not read");
    set.copper = &step_.copper[set.layerName];
    draw(set, placed);
}

void IpcStepReader::readHole(const Set &set) {
    IpcHole hole;
    hole.name = xml_.text("name");
    hole.plating = platingOf(xml_.text("platingStatus"));
    hole.diameter = context_.geometry.length(xml_, "diameter");
    hole.at = {context_.geometry.length(xml_, "x"), context_.geometry.length(xml_, "y")};
    const bool isSquare = plainName(xml_.text("type")) == "SQUARE";
    Set own = set;
    IpcPlacement placement;
    xml_.eachChild([&] {
        if (xml_.is("SpecRef")) {
            takeSpec(own.spec);
        } else if (xml_.is("Span")) {
            hole.fromLayer = names_.add(xml_.text("fromLayer"));
            hole.toLayer = names_.add(xml_.text("toLayer"));
        } else if (xml_.is("Xform")) {
            context_.geometry.readXform(xml_, placement);
        } else {
            context_.passOver();
        }
    });
    if (isSquare && hole.diameter > 0) {
        Areas areas = placement.apply(Areas{{square(hole.diameter), {}}});
        if (context_.geometry.isUsable(areas)) hole.slot = std::move(areas[0].outer);
    }
    addHole(std::move(hole), own);
}

// An outline as what it encloses.
void IpcStepReader::readEnclosed(Placed &placed) {
    xml_.eachChild([&] {
        if (xml_.is("Polygon"))
            placed.areas.push_back({context_.geometry.readRing(xml_), {}});
        else
            context_.passOver();
    });
}

void IpcStepReader::readSlot(const Set &set) {
    IpcHole slot;
    slot.name = xml_.text("name");
    slot.plating = platingOf(xml_.text("platingStatus"));
    Set own = set;
    Placed placed;
    if (xml_.has("x") || xml_.has("y"))
        placed.places.push_back({context_.geometry.length(xml_, "x"), context_.geometry.length(xml_, "y")});
    xml_.eachChild([&] {
        if (xml_.is("Span")) {
            slot.fromLayer = names_.add(xml_.text("fromLayer"));
            slot.toLayer = names_.add(xml_.text("toLayer"));
        } else if (xml_.is("Outline")) {
            readEnclosed(placed);
        } else if (!readPlacedPart(placed)) {
            context_.passOver();
        }
    });
    takeFirst(own.spec, placed.spec);
    if (placed.areas.empty()) context_.log.warn("a slot has no shape");
    for (const IpcPlacement &placement : placed.placements())
        for (Area &area : apply(placement, placed.areas)) {
            if (area.outer.size() < 3 || !context_.geometry.isUsable({area})) continue;
            slot.at = middleOf(area.outer);
            for (_mFPOINT &point : area.outer)
                point = {point.x - slot.at.x, point.y - slot.at.y};
            slot.slot = std::move(area.outer);
            addHole(slot, own);
        }
}

// What the hole does not say is that of its layer, its set and its padstack.
void IpcStepReader::addHole(IpcHole hole, const Set &set) {
    if (!set.readsHoles) {
        const std::string &material = set.layerSpec.material;
        return addFill(hole.at, material.empty() ? set.layerName : material);
    }
    IpcSpec spec = set.spec;
    takeFirst(spec, set.layerSpec);
    hole.platingThickness = spec.platingThickness;
    hole.fillMaterial = names_.add(spec.fillMaterial);
    hole.padstack = names_.add(set.padstack);
    if (hole.fromLayer == 0 && hole.toLayer == 0 && set.layer) {
        hole.fromLayer = names_.add(set.layer->fromLayer);
        hole.toLayer = names_.add(set.layer->toLayer);
    }
    if (!isUsable(hole)) return context_.log.warn("a hole is out of all bounds");
    if (context_.takePoints(hole.slot.size() + 1 + IpcContext::costOf(hole.name)))
        step_.holes.push_back(std::move(hole));
}

} // namespace QvDbWrap
