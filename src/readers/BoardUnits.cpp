// Looking for units of a board that are no known lengths.
#include "readers/BoardUnits.h"

#include "host/EntityModel/Units.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace EDA {

namespace {

constexpr std::size_t maxNamedUnits = 5;
constexpr std::size_t longestName = 40; // bytes

// Whether anything in the board is in the board's own units.
bool needsUnits(const EDABoard &board) {
    const bool hasBareComponent =
        std::any_of(board.beginComponents(), board.endComponents(),
                    [](const EDAComponent &part) { return part.getUnits().empty(); });
    return hasBareComponent || !board.getOutline().empty() || board.numComponentPlacements() > 0 ||
           board.numKeepouts() > 0 || board.numVias(0) > 0 || board.numLayers() > 0;
}

std::set<std::string> unknownUnits(const EDABoard &board) {
    std::set<std::string> units;
    if (needsUnits(board)) units.insert(board.getUnits());
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component)
        if (!component->getUnits().empty()) units.insert(component->getUnits());
    for (auto unit = units.begin(); unit != units.end();)
        unit = isKnownLengthUnit(*unit) ? units.erase(unit) : std::next(unit);
    return units;
}

// A file may have a text of any length as its unit. No character is cut in two.
std::string shortened(const std::string &text) {
    if (text.size() <= longestName) return text;
    std::size_t size = longestName;
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0u) == 0x80u)
        --size;
    return text.substr(0, size) + "...";
}

std::string quotedList(const std::set<std::string> &texts) {
    std::string list;
    std::size_t count = 0;
    for (const std::string &text : texts) {
        if (count == maxNamedUnits) return list + ", ...";
        list += (count++ == 0 ? "\"" : ", \"") + shortened(text) + '"';
    }
    return list;
}

} // namespace

bool isKnownLengthUnit(const std::string &units) {
    const EntityModel::Quantity *length = EntityModel::Units::findQuantity("Length");
    return length != nullptr && EntityModel::Units::find(*length, units) != nullptr;
}

std::string describeUnknownUnits(const EDABoard &board) {
    const std::set<std::string> unknown = unknownUnits(board);
    if (unknown.empty()) return {};
    return "unknown units " + quotedList(unknown) +
           ", every length in them would be lost; known are mm, cm, m, um, in, mil, thou and other spellings "
           "of these";
}

} // namespace EDA
