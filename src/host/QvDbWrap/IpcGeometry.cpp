// The shapes of an IPC-2581 document as polygons in metres.
#include "host/QvDbWrap/IpcGeometry.h"

#include "host/QvDbWrap/IpcDictionaries.h"
#include "host/QvDbWrap/IpcShapeReader.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <cmath>
#include <unordered_map>

namespace QvDbWrap {

namespace {

constexpr double metresPerMillimetre = 1e-3;

std::string inCapitals(std::string text) {
    for (char &letter : text)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return text;
}

// 0 when the text names no unit.
double unitOf(const std::string &units) {
    static const std::unordered_map<std::string, double> factors = {
        {"MILLIMETER", 1e-3}, {"MILLIMETRE", 1e-3}, {"MM", 1e-3},     {"MICRON", 1e-6},
        {"MICROMETER", 1e-6}, {"UM", 1e-6},         {"INCH", 0.0254}, {"IN", 0.0254},
        {"MIL", 2.54e-5},     {"MILS", 2.54e-5},    {"METER", 1.0},   {"METRE", 1.0},
        {"M", 1.0},           {"CENTIMETER", 1e-2}, {"CM", 1e-2},     {"MILLIMETERS", 1e-3},
        {"MICRONS", 1e-6},    {"INCHES", 0.0254},   {"METERS", 1.0},  {"NANOMETER", 1e-9},
    };
    const auto found = factors.find(inCapitals(units));
    return found == factors.end() ? 0 : found->second;
}

} // namespace

class IpcGeometry::Tables {
public:
    explicit Tables(WrapperLog &toldTo) : log(toldTo), dictionaries(toldTo) {}

    void readShapes(IpcXml &xml, const char *entry, bool isUser, double unit);
    void readLines(IpcXml &xml, double unit);
    void readFills(IpcXml &xml, double unit);

    WrapperLog &log;
    IpcDictionaries dictionaries;
    std::unordered_map<std::string, ShapeDrill> drills[2]; // of standard and of user shapes
    double metresPerUnit = metresPerMillimetre;
};

void IpcGeometry::Tables::readShapes(IpcXml &xml, const char *entry, bool isUser, double unit) {
    xml.eachChild([&] {
        if (!xml.is(entry)) return;
        const std::string id = xml.text("id");
        ShapeDrill drill;
        dictionaries.addShape(id, isUser, IpcShapeReader(xml, unit, log).readParts(&drill));
        if (drill.diameter > 0) drills[isUser ? 1 : 0].emplace(id, drill);
    });
}

void IpcGeometry::Tables::readLines(IpcXml &xml, double unit) {
    xml.eachChild([&] {
        if (!xml.is("EntryLineDesc")) return;
        const std::string id = xml.text("id");
        xml.eachChild([&] {
            if (xml.is("LineDesc")) dictionaries.addLine(id, IpcShapeReader(xml, unit, log).readLine());
        });
    });
}

void IpcGeometry::Tables::readFills(IpcXml &xml, double unit) {
    xml.eachChild([&] {
        if (!xml.is("EntryFillDesc")) return;
        const std::string id = xml.text("id");
        xml.eachChild([&] {
            if (xml.is("FillDesc")) dictionaries.addFill(id, IpcShapeReader(xml, unit, log).readFill());
        });
    });
}

IpcGeometry::IpcGeometry(WrapperLog &log) : tables_(std::make_unique<Tables>(log)) {}

IpcGeometry::~IpcGeometry() = default;

double IpcGeometry::metresPerUnit(const std::string &units) {
    if (const double factor = unitOf(units); factor > 0) return factor;
    tables_->log.warn("unit " + units + " is not known: millimetres are taken");
    return metresPerMillimetre;
}

void IpcGeometry::setMetresPerUnit(double metresPerUnit) { tables_->metresPerUnit = metresPerUnit; }

double IpcGeometry::getMetresPerUnit() const { return tables_->metresPerUnit; }

bool IpcGeometry::readDictionary(IpcXml &xml) {
    const std::string name = xml.name();
    if (name.rfind("Dictionary", 0) != 0) return false;
    const double unit = xml.has("units") ? metresPerUnit(xml.text("units")) : tables_->metresPerUnit;
    if (name == "DictionaryStandard") tables_->readShapes(xml, "EntryStandard", false, unit);
    if (name == "DictionaryUser") tables_->readShapes(xml, "EntryUser", true, unit);
    if (name == "DictionaryLineDesc") tables_->readLines(xml, unit);
    if (name == "DictionaryFillDesc") tables_->readFills(xml, unit);
    return true;
}

bool IpcGeometry::isShape(const IpcXml &xml) { return isShapeElement(xml.name()); }

Areas IpcGeometry::readShape(IpcXml &xml) {
    return tables_->dictionaries.make(IpcShapeReader(xml, tables_->metresPerUnit, tables_->log).readShape());
}

const Areas &IpcGeometry::findShape(const std::string &id) { return tables_->dictionaries.find({id, false}); }

const ShapeDrill *IpcGeometry::findDrill(const std::string &id) const {
    for (const auto &drills : tables_->drills)
        if (const auto found = drills.find(id); found != drills.end()) return &found->second;
    return nullptr;
}

Ring IpcGeometry::readRing(IpcXml &xml) {
    return IpcShapeReader(xml, tables_->metresPerUnit, tables_->log).readRing();
}

void IpcGeometry::readLocation(const IpcXml &xml, IpcPlacement &placement) const {
    readLocationInto(xml, tables_->metresPerUnit, placement);
}

void IpcGeometry::readXform(const IpcXml &xml, IpcPlacement &placement) const {
    readXformInto(xml, tables_->metresPerUnit, placement);
}

double IpcGeometry::length(const IpcXml &xml, const char *attribute, double fallback) const {
    return xml.has(attribute)
               ? xml.number(attribute, fallback / tables_->metresPerUnit) * tables_->metresPerUnit
               : fallback;
}

Ring IpcGeometry::circle(double diameter) {
    Ring ring;
    ring.reserve(chordsPerTurn);
    for (int step = 0; step < chordsPerTurn; ++step) {
        const _mFPOINT unit = unitVector(step);
        ring.push_back({diameter / 2 * unit.x, diameter / 2 * unit.y});
    }
    return ring;
}

bool IpcGeometry::takeCopies(std::size_t numPoints, std::size_t numAreas, Copy copy) {
    return tables_->dictionaries.takeCopies(numPoints, numAreas, copy);
}

bool IpcGeometry::isUsable(const Areas &areas) {
    if (isInRange(areas)) return true;
    tables_->log.warn("a shape that reaches beyond 1000 m is left out");
    return false;
}

} // namespace QvDbWrap
