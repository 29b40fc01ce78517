// Characters of UTF-8 text, and text in other encodings turned into UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace EDA {

// One character at the start of a text. `size` is 0 where no valid UTF-8 character starts: an invalid or
// overlong sequence, a surrogate, a code point above U+10FFFF, a cut-off sequence, or an empty text.
struct Utf8Character {
    std::uint32_t codePoint = 0;
    std::size_t size = 0;
};
Utf8Character firstCharacter(std::string_view text);

// Number of bytes at the start of the text that are ASCII.
std::size_t asciiPrefix(std::string_view text);

bool isValidUtf8(std::string_view text);

// Appends a character; a surrogate or a code point above U+10FFFF becomes U+FFFD.
void appendUtf8(std::string &text, std::uint32_t codePoint);

// Each byte is one character of U+0000 to U+00FF. Never fails.
std::string latin1ToUtf8(std::string_view bytes);

// Bytes of UTF-16 without a byte order mark. A surrogate without its other half becomes U+FFFD and an odd
// last byte is dropped.
std::string utf16ToUtf8(std::string_view bytes, bool bigEndian);

// The bytes of a text file as UTF-8. UTF-16 is known by its byte order mark, which is dropped, as is that of
// UTF-8. Other bytes are taken as UTF-8 where they are valid, and as Latin-1 where they are not.
std::string decodedToUtf8(std::string bytes);

// UTF-8 as 8-bit text: a character above U+00FF becomes '?', an invalid byte is copied.
std::string utf8ToLatin1(std::string_view text);

} // namespace EDA
