// Attributes and their text.
#include "fabrication/layers/AttributeDictionary.h"

#include "fabrication/layers/CoordinateFormat.h"
#include "text/Encoding.h"

#include <charconv>
#include <cstdint>

namespace EDA::Fabrication {

namespace {

// Characters that stand for something in statements are written as \u and four, or \U and eight, hexadecimal
// digits. Appends one and gives how many bytes it took, or 0.
std::size_t appendEscaped(std::string_view text, std::string &into) {
    if (text.size() < 2 || text[0] != '\\' || (text[1] != 'u' && text[1] != 'U')) return 0;
    const std::size_t count = text[1] == 'u' ? 4 : 8;
    if (text.size() < count + 2) return 0;
    std::uint32_t code = 0;
    const char *end = text.data() + count + 2;
    const auto result = std::from_chars(text.data() + 2, end, code, 16);
    if (result.ec != std::errc() || result.ptr != end) return 0;
    appendUtf8(into, code);
    return count + 2;
}

std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t taken = appendEscaped(text.substr(at), plain);
        if (taken == 0) plain += text[at];
        at += taken == 0 ? 1 : taken;
    }
    return isValidUtf8(plain) ? plain : latin1ToUtf8(plain);
}

std::string firstOf(std::map<std::string, std::vector<std::string>> const &values, std::string const &name) {
    const auto found = values.find(name);
    return found == values.end() || found->second.empty() ? std::string() : found->second.front();
}

} // namespace

Attribute parseAttribute(std::string_view text) {
    Attribute attribute;
    text = trimmed(text);
    std::size_t comma = text.find(',');
    attribute.name = unescaped(trimmed(text.substr(0, comma)));
    while (comma != std::string_view::npos) {
        text.remove_prefix(comma + 1);
        comma = text.find(',');
        attribute.values.push_back(unescaped(trimmed(text.substr(0, comma))));
    }
    return attribute;
}

void AttributeDictionary::setFile(std::string_view text) {
    Attribute attribute = parseAttribute(text);
    file_[std::move(attribute.name)] = std::move(attribute.values);
}

void AttributeDictionary::setAperture(std::string_view text) {
    Attribute attribute = parseAttribute(text);
    aperture_[std::move(attribute.name)] = std::move(attribute.values);
}

void AttributeDictionary::setObject(std::string_view text) {
    Attribute attribute = parseAttribute(text);
    object_[std::move(attribute.name)] = std::move(attribute.values);
}

void AttributeDictionary::remove(std::string_view text) {
    const Attribute attribute = parseAttribute(text);
    if (attribute.name.empty()) {
        aperture_.clear();
        object_.clear();
    } else {
        aperture_.erase(attribute.name);
        object_.erase(attribute.name);
    }
}

std::string AttributeDictionary::apertureFunction() const { return firstOf(aperture_, ".AperFunction"); }

std::string AttributeDictionary::net() const {
    std::string net = firstOf(object_, ".N");
    return net == "N/C" ? std::string() : net;
}

std::string AttributeDictionary::pin() const {
    const auto found = object_.find(".P");
    if (found == object_.end() || found->second.empty()) return {};
    std::vector<std::string> const &values = found->second;
    return values.size() == 1 ? values[0] : values[0] + "," + values[1];
}

} // namespace EDA::Fabrication
