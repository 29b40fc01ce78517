// Reading and writing single UTF-8 characters, and turning other encodings into UTF-8.
#include "text/Encoding.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace EDA {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;

unsigned byteAt(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

bool isSurrogate(std::uint32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

// Bytes of the sequence that a first byte announces, and the smallest code point that may use so many.
struct SequenceStart {
    std::size_t size;
    std::uint32_t bits;
    std::uint32_t smallest;
};

SequenceStart sequenceStart(unsigned byte) {
    if (byte < 0x80) return {1, byte, 0};
    if (byte >= 0xC2 && byte <= 0xDF) return {2, byte & 0x1F, 0x80};
    if (byte >= 0xE0 && byte <= 0xEF) return {3, byte & 0x0F, 0x800};
    if (byte >= 0xF0 && byte <= 0xF4) return {4, byte & 0x07, 0x10000};
    return {0, 0, 0};
}

std::uint32_t utf16Unit(std::string_view bytes, std::size_t i, bool bigEndian) {
    const unsigned a = byteAt(bytes, i);
    const unsigned b = byteAt(bytes, i + 1);
    return bigEndian ? a << 8 | b : b << 8 | a;
}

} // namespace

Utf8Character firstCharacter(std::string_view text) {
    if (text.empty()) return {};
    const SequenceStart start = sequenceStart(byteAt(text, 0));
    if (start.size == 0 || start.size > text.size()) return {};
    std::uint32_t codePoint = start.bits;
    for (std::size_t i = 1; i < start.size; ++i) {
        const unsigned byte = byteAt(text, i);
        if ((byte & 0xC0) != 0x80) return {};
        codePoint = codePoint << 6 | (byte & 0x3F);
    }
    if (codePoint < start.smallest || codePoint > 0x10FFFF || isSurrogate(codePoint)) return {};
    return {codePoint, start.size};
}

std::size_t asciiPrefix(std::string_view text) {
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, 8);
        if ((word & 0x8080808080808080u) != 0) break;
    }
    while (i < text.size() && byteAt(text, i) < 0x80)
        ++i;
    return i;
}

bool isValidUtf8(std::string_view text) {
    for (;;) {
        text.remove_prefix(asciiPrefix(text));
        if (text.empty()) return true;
        const Utf8Character character = firstCharacter(text);
        if (character.size == 0) return false;
        text.remove_prefix(character.size);
    }
}

void appendUtf8(std::string &text, std::uint32_t codePoint) {
    if (codePoint > 0x10FFFF || isSurrogate(codePoint)) codePoint = replacement;
    const auto put = [&text](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | codePoint >> 6);
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | codePoint >> 12);
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | codePoint >> 18);
        put(0x80 | (codePoint >> 12 & 0x3F));
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

std::string latin1ToUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    while (!bytes.empty()) {
        const std::size_t plain = asciiPrefix(bytes);
        text.append(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        if (bytes.empty()) break;
        appendUtf8(text, byteAt(bytes, 0));
        bytes.remove_prefix(1);
    }
    return text;
}

std::string utf16ToUtf8(std::string_view bytes, bool bigEndian) {
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::uint32_t codePoint = utf16Unit(bytes, i, bigEndian);
        if (codePoint >= 0xD800 && codePoint <= 0xDBFF && i + 3 < bytes.size()) {
            const std::uint32_t low = utf16Unit(bytes, i + 2, bigEndian);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        appendUtf8(text, codePoint);
    }
    return text;
}

std::string decodedToUtf8(std::string bytes) {
    const std::string_view start = std::string_view(bytes).substr(0, 3);
    const std::string_view afterTwo = std::string_view(bytes).substr(std::min<std::size_t>(2, bytes.size()));
    if (start.substr(0, 2) == "\xFE\xFF") return utf16ToUtf8(afterTwo, true);
    if (start.substr(0, 2) == "\xFF\xFE") return utf16ToUtf8(afterTwo, false);
    if (start == "\xEF\xBB\xBF") bytes.erase(0, 3);
    return isValidUtf8(bytes) ? std::move(bytes) : latin1ToUtf8(bytes);
}

std::string utf8ToLatin1(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (;;) {
        const std::size_t plain = asciiPrefix(text);
        bytes.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        const Utf8Character character = firstCharacter(text);
        if (character.size == 0) {
            bytes.push_back(text.front());
            text.remove_prefix(1);
            continue;
        }
        bytes.push_back(character.codePoint <= 0xFF ? static_cast<char>(character.codePoint) : '?');
        text.remove_prefix(character.size);
    }
    return bytes;
}

} // namespace EDA
