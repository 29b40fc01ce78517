// Format, units and attributes of a file.
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberNumbers.h"
#include "readers/gerber/GerberReader.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace EDA {

namespace {

// "%TF.Name,value,value*%" without what surrounds name and values.
struct AttributeText {
    std::string_view name;
    std::vector<std::string_view> values;

    explicit AttributeText(std::string_view statement) {
        const std::string_view text = statement.substr(std::min<std::size_t>(4, statement.size()));
        const std::size_t end = std::min(text.find('*'), text.size());
        const std::size_t comma = text.find(',');
        name = text.substr(0, std::min(comma, end));
        if (comma < end) values = splitText(text.substr(comma + 1, end - comma - 1), ',');
    }
    std::string firstValue() const { return values.empty() ? std::string() : std::string(values.front()); }
};

int digitBehind(std::string_view text, char letter, std::size_t offset) {
    const std::size_t index = text.find(letter);
    if (index == std::string_view::npos || index + offset >= text.size()) return 0;
    return gerberInt(text.substr(index + offset, 1));
}

} // namespace

void GerberReader::extractFormatSpecification(Statement statement) {
    state_.leadingZerosOmitted = statement.size() > 3 && statement[3] == 'L';
    state_.formatX = {digitBehind(statement, 'X', 1), digitBehind(statement, 'X', 2)};
    state_.formatY = {digitBehind(statement, 'Y', 1), digitBehind(statement, 'Y', 2)};
}

void GerberReader::extractUnitsSpecification(Statement statement) {
    const Statement text = statement.substr(std::min<std::size_t>(3, statement.size()));
    board_.setUnits(std::string(text.substr(0, std::min(text.find('*'), text.size()))));
}

void GerberReader::extractFileAttribute(Statement statement) {
    static constexpr std::array<std::string_view, 6> ignored{
        "Part", "MD5", "GerberVersion", "GenerationSoftware", "SameCoordinates", "FilePolarity"};
    const AttributeText attribute(statement);
    if (attribute.name == "FileFunction") {
        if (attribute.firstValue() == "Copper") return;
        // In place of what was said of the file before: nothing of it will be added.
        error_ =
            "This file does not represent a Copper layer; FileFunction = " + attribute.firstValue() + ".\n";
        numMessages_ = 1;
        throw std::runtime_error("Aborting read");
    }
    if (std::find(ignored.begin(), ignored.end(), attribute.name) != ignored.end()) return;
    addMessage("Unhandled file attribute: " + std::string(statement));
}

void GerberReader::extractApertureAttribute(Statement statement) {
    const AttributeText attribute(statement);
    if (attribute.name != "AperFunction") {
        addMessage("Unhandled aperture attribute: " + std::string(statement));
    } else if (!attribute.values.empty()) {
        apertureFunction_ = attribute.firstValue();
    }
}

} // namespace EDA
