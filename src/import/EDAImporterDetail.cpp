// What all topics of the import share: texts of numbers, lengths, locations, locks, progress.
#include "import/EDAImporterDetail.h"

#include "host/EntityCore/EntityManager.h"
#include "host/Tools/EntityModelConstantTr.h"

#include <charconv>
#include <stdexcept>

namespace EDA {

using namespace EntityModel;

namespace {

template <typename... Format> void appendFormatted(std::string &text, double value, Format... format) {
    char buffer[400]; // The longest fixed form has 309 digits before the point.
    text.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, format...).ptr);
}

} // namespace

void appendOutlinePoint(std::string &text, double x, double z) {
    if (!text.empty()) text += ',';
    appendFormatted(text, x, std::chars_format::fixed, 6);
    text += ',';
    appendFormatted(text, z, std::chars_format::fixed, 6);
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

std::string libraryKey(const EDAComponent &component) {
    const std::string &partNumber = component.getPartNumber();
    return partNumber.empty() ? component.getName() : component.getName() + ' ' + partNumber;
}

bool EDAImporter::Run::step() {
    if (!progress) return true;
    progress->setValue(count++);
    return !progress->isCancelled();
}

void EDAImporter::Run::setText(const char *text) const {
    if (progress) progress->setText(EntityModelConstantTr::tr(text, nullptr, -1).toStdString());
}

std::string EDAImporter::MappedPoints::text(double originX, double originY) const {
    std::string text;
    text.reserve(points.size() * 24);
    for (const auto &[x, y] : points)
        appendOutlinePoint(text, x - originX, mapZCoord(y - originY));
    return text;
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
