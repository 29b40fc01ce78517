// Text of designs made fit for terminals and pictures.
#include "Printable.h"

#include "text/Encoding.h"

#include <charconv>
#include <cstdint>

namespace EDATool {

namespace {

struct CodePointRange {
    std::uint32_t first;
    std::uint32_t last;
};

// Controls, direction marks and overrides, line separators, byte order mark and what XML forbids.
constexpr CodePointRange unsafeRanges[] = {
    {0x00, 0x1f},     {0x7f, 0x9f},     {0xad, 0xad},     {0x61c, 0x61c},
    {0x180e, 0x180e}, {0x200b, 0x200f}, {0x2028, 0x202e}, {0x2060, 0x206f},
    {0xfeff, 0xfeff}, {0xfff0, 0xfffb}, {0xfffe, 0xffff}, {0xe0000, 0xe0fff},
};

bool isUnsafe(std::uint32_t codePoint) {
    for (const CodePointRange &range : unsafeRanges) {
        if (codePoint >= range.first && codePoint <= range.last) return true;
    }
    return false;
}

std::string hexText(std::uint32_t value, std::size_t width) {
    char digits[8];
    const char *const end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
    std::string text(digits, static_cast<std::size_t>(end - digits));
    for (char &digit : text) {
        if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
    }
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

} // namespace

std::string printable(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const EDA::Utf8Character character = EDA::firstCharacter(text);
        if (character.size == 0) {
            result += "\\x" + hexText(static_cast<unsigned char>(text.front()), 2);
            text.remove_prefix(1);
            continue;
        }
        if (isUnsafe(character.codePoint)) {
            result += "\\u{" + hexText(character.codePoint, 2) + "}";
        } else {
            result += text.substr(0, character.size);
        }
        text.remove_prefix(character.size);
    }
    return result;
}

std::size_t countCharacters(std::string_view text) {
    std::size_t count = 0;
    for (const char byte : text) {
        if ((static_cast<unsigned char>(byte) & 0xc0u) != 0x80u) ++count;
    }
    return count;
}

std::string shortened(std::string_view text, std::size_t limit) {
    // One character takes at most four bytes, so the rest of a huge text need not be looked at.
    std::string result = printable(text.substr(0, 4 * (limit + 1)));
    if (countCharacters(result) <= limit) return result;
    std::size_t end = 0;
    for (std::size_t kept = 0; kept + 1 < limit; ++kept) {
        end += EDA::firstCharacter(std::string_view(result).substr(end)).size;
    }
    return result.substr(0, end) + "\u2026";
}

std::string inQuotes(std::string_view text) { return "'" + shortened(text, 300) + "'"; }

std::string xmlEscaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char byte : text) {
        switch (byte) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += byte;
        }
    }
    return result;
}

std::string shortNumber(double value, int digits) {
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, value == 0.0 ? 0.0 : value,
                                      std::chars_format::general, digits);
    return std::string(text, static_cast<std::size_t>(result.ptr - text));
}

} // namespace EDATool
