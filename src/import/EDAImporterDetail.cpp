// What all topics of the import share: texts of numbers, lengths, locations, locks, progress.
#include "import/EDAImporterDetail.h"

#include "host/EntityCore/EntityManager.h"
#include "host/Tools/EntityModelConstantTr.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace EDA {

using namespace EntityModel;

namespace {

template <typename... Format> void appendFormatted(std::string &text, double value, Format... format) {
    char buffer[400]; // The longest fixed form has 309 digits before the point.
    text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, format...).ptr);
}

// A circle that is wider than its outline by more is a line but for rounding.
constexpr double largestDiameter = 1e6;

// What is not finite stays so, for the attribute to refuse.
double throughText(double value) {
    std::string text;
    appendFormatted(text, value, std::chars_format::fixed, 6);
    double number = value;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

void appendOutlinePoint(std::string &text, double x, double z) {
    if (!text.empty()) text += ',';
    appendFormatted(text, x, std::chars_format::fixed, 6);
    text += ',';
    appendFormatted(text, z, std::chars_format::fixed, 6);
}

// Without a text wherever the scaled value has a place for halves, since outlines are most of a large import.
double outlineNumber(double value) {
    constexpr double scale = 1e6;
    constexpr double largest = 1e15;
    const double scaled = value * scale;
    if (!(std::fabs(scaled) < largest)) return throughText(value);
    double whole = std::nearbyint(scaled);
    if (std::fabs(scaled - whole) == 0.5) {
        // The product was rounded: what it lost tells on which side of the half the value is. A true half
        // goes to the even neighbour, as in the text.
        const double lost = std::fma(value, scale, -scaled);
        if (lost != 0.0) whole = lost > 0.0 ? std::ceil(scaled) : std::floor(scaled);
    }
    // Both are exact, so this is the double nearest to the decimal fraction.
    return whole / scale;
}

void setOutlinePoints(Entity *entity, const AttributePath &path, std::vector<double> numbers,
                      const std::string &units) {
    if (!numbers.empty()) EntityEditor::setValue(entity, path, std::move(numbers), units, true);
}

std::string streamNumber(double value) {
    std::string text;
    appendFormatted(text, value, std::chars_format::general, 6);
    return text;
}

std::string outlineValue(const std::string &points, const std::string &units) {
    return points + " <" + units + ">";
}

bool hasOutline(const EDAComponent &component) {
    return component.hasGeometry() || component.getOutline().numInternalOutlines() > 0;
}

bool isRound(const EDAOutline &outline, double &centreX, double &centreY, double &diameter, int minPoints,
             double tolerance) {
    double x = 0.0, y = 0.0, across = 0.0;
    if (!outline.isCylinder(x, y, across, minPoints, tolerance)) return false;
    // The circle goes through three of the points. Where these lie on a line, as they may in a plate with
    // notches, it has no end, or with their rounding none that means anything.
    const Geometry::Bound2D &bound = outline.getBound();
    const double limit = largestDiameter * (bound.getXSize() + bound.getYSize());
    if (!std::isfinite(x) || !std::isfinite(y) || !(across <= limit)) return false;
    centreX = x;
    centreY = y;
    diameter = across;
    return true;
}

std::string libraryKey(const EDAComponent &component) {
    const std::string &partNumber = component.getPartNumber();
    return partNumber.empty() ? component.getName() : component.getName() + ' ' + partNumber;
}

bool hasTopOffset(const EDABoardLayer &layer) { return layer.getTopOffset() > -1000.0; }

bool EDAImporter::Run::step() {
    if (!progress) return true;
    progress->setValue(count++);
    return !progress->isCancelled();
}

void EDAImporter::Run::setText(const char *text) const {
    if (progress) progress->setText(EntityModelConstantTr::tr(text, nullptr, -1).toStdString());
}

std::vector<double> EDAImporter::MappedPoints::numbers(double originX, double originY) const {
    std::vector<double> numbers;
    numbers.reserve(points.size() * 2);
    for (const auto &[x, y] : points) {
        numbers.push_back(outlineNumber(x - originX));
        numbers.push_back(outlineNumber(mapZCoord(y - originY)));
    }
    return numbers;
}

EDAImporter::MappedPoints EDAImporter::mapPoints(const EDAOutline &outline) const {
    MappedPoints mapped;
    const auto &points = outline.getPoints(true);
    mapped.points.reserve(points.size());
    for (const auto &[x, y] : points) {
        mapped.points.emplace_back(mapX(x), mapY(y));
        mapped.bound.unite(mapped.points.back().first, mapped.points.back().second);
    }
    return mapped;
}

void EDAImporter::setNumber(Entity *entity, const AttributePath &path, double value,
                            const std::string &units) {
    try {
        EntityEditor::setValueWithUnits(entity, path, value, units, true);
    } catch (const std::out_of_range &) {
        // Intended: a number that the entity cannot take stays unset, and the import goes on.
    }
}

void EDAImporter::setLength(Entity *entity, const AttributePath &path, double value, const EDABoard &board) {
    setNumber(entity, path, value, board.getUnits());
}

void EDAImporter::setLocation(Entity *entity, double x, double z, const EDABoard &board) {
    setLength(entity, X_Location_t, x, board);
    setLength(entity, Z_Location_t, z, board);
}

std::string EDAImporter::outlineText(const EDAOutline &outline, const std::string &units) {
    std::string points;
    for (const auto &[x, y] : outline.getPoints(true))
        appendOutlinePoint(points, x, mapZCoord(y));
    return outlineValue(points, units);
}

void EDAImporter::lockData(Entity *entity, const std::vector<TypeRef> &attributes) {
    if (!entity) return;
    for (const TypeRef &type : attributes) {
        if (Attribute *attribute = entity->findAttribute(type, false)) attribute->setLocked(true);
    }
    entity->protect("");
}

void EDAImporter::tellGeometryEditor(Entity *entity) {
    EntityGUI::GeometryEditor *const editor = EntityGUI::EntityManager::getGeometryEditor();
    if (editor && entity) editor->entityCreated(entity, true);
}

} // namespace EDA
