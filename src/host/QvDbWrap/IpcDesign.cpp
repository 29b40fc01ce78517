// What the parts of a document's reading share.
#include "host/QvDbWrap/IpcDesign.h"

#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

namespace QvDbWrap {

namespace {

// Elements that hold no geometry and nothing else that a layout has a place for.
constexpr const char *meaningless[] = {
    "NonstandardAttribute",
    "ColorRef",
    "Color",
    "PinRef",
    "LineDesc",
    "LineDescRef",
    "FillDesc",
    "FillDescRef",
    "ColorGroup",
    "Datum",
    "PickupPoint",
    "Pin",
    "LandPattern",
    "SilkScreen",
    "LogicalNet",
    "PhyNetGroup",
    "LogisticHeader",
    "HistoryRecord",
    "Bom",
    "Avl",
    "FunctionMode",
    "LayerRef",
    "BomRef",
    "AvlRef",
    "DfxMeasurementList",
    "DfxMeasurement",
    "DfxDetails",
    "NetClass",
    "SlotCavityRef",
    "ChangeRec",
    "SurfaceFinish",
    "FirmwareRef",
    "Attribute",
    "Identification",
    "RefDes",
    "SpecRef",
};

} // namespace

void IpcContext::passOver() {
    for (const char *name : meaningless)
        if (xml.is(name)) return;
    log.warn("element " + xml.name() + " is not read");
}

bool IpcContext::takePoints(std::size_t count) {
    if (points + count <= IpcGeometry::maxPoints) {
        points += count;
        return true;
    }
    isFull = true;
    log.warn("more than " + std::to_string(IpcGeometry::maxPoints) + " points: what comes after is left out");
    return false;
}

bool IpcContext::takeCopies(std::size_t count, std::size_t numAreas, IpcGeometry::Copy copy) {
    if (geometry.takeCopies(count, numAreas, copy)) return takePoints(count);
    isFull = true;
    return false;
}

std::uint32_t IpcNames::add(const std::string &name) {
    if (name.empty()) return 0;
    const auto [place, isNew] = numbers_.try_emplace(name, static_cast<std::uint32_t>(names_.size()));
    if (isNew) names_.push_back(name);
    return place->second;
}

std::string plainName(const std::string &name) {
    std::string plain;
    for (const char c : name) {
        if (c == ' ' || c == '-' || c == '_') continue;
        plain += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return plain;
}

IpcPlating platingOf(const std::string &status) {
    const std::string plain = plainName(status);
    if (plain == "PLATED" || plain == "VIA") return IpcPlating::Plated;
    return plain == "NONPLATED" ? IpcPlating::NonPlated : IpcPlating::Unknown;
}

} // namespace QvDbWrap
