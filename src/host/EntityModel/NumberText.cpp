// Numbers to and from text.
#include "host/EntityModel/NumberText.h"

#include <charconv>
#include <cmath>

namespace EntityModel {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

} // namespace

void appendNumber(std::string &text, double value) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value == 0.0 ? 0.0 : value).ptr;
    text.append(buffer, end);
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool takeNumber(std::string_view &text, double &value) {
    std::string_view rest = trimmed(text);
    // std::from_chars takes a minus sign but no plus sign.
    if (rest.size() > 1 && rest[0] == '+' && rest[1] != '-') rest.remove_prefix(1);
    double number = 0.0;
    const auto read = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (read.ec != std::errc() || !std::isfinite(number)) return false;
    value = number;
    text = trimmed(rest.substr(static_cast<size_t>(read.ptr - rest.data())));
    return true;
}

} // namespace EntityModel
