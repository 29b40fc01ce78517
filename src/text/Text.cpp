// Upper-casing by a fixed table, and comparisons built on it.
#include "text/Text.h"

#include "text/Encoding.h"
#include "text/UpperCaseTable.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace EDA {

namespace {

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

std::uint32_t upperCharacter(std::uint32_t c) {
    const auto *run = std::lower_bound(std::begin(upperCaseRuns), std::end(upperCaseRuns), c,
                                       [](const UpperCaseRun &r, std::uint32_t x) { return r.last < x; });
    if (run == std::end(upperCaseRuns) || c < run->first || (c - run->first) % run->step != 0) return c;
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(c) + run->offset);
}

// Drops the ASCII that both texts start with and that is equal in upper case.
void skipEqualAscii(std::string_view &a, std::string_view &b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t i = 0;
    while (i < shorter && isAscii(a[i]) && isAscii(b[i]) && upperAscii(a[i]) == upperAscii(b[i]))
        ++i;
    a.remove_prefix(i);
    b.remove_prefix(i);
}

// After skipEqualAscii: whether the order of the texts shows without upper-casing the rest.
bool differInAscii(std::string_view a, std::string_view b) {
    return !a.empty() && !b.empty() && isAscii(a.front()) && isAscii(b.front());
}

} // namespace

std::string upperCase(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const char c = text.front();
        if (isAscii(c)) {
            result.push_back(upperAscii(c));
            text.remove_prefix(1);
            continue;
        }
        const Utf8Character character = firstCharacter(text);
        const std::size_t size = std::max<std::size_t>(character.size, 1);
        if (character.size == 2 || character.size == 3)
            appendUtf8(result, upperCharacter(character.codePoint));
        else
            result.append(text.substr(0, size));
        text.remove_prefix(size);
    }
    return result;
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
    skipEqualAscii(a, b);
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    if (differInAscii(a, b)) return false;
    return upperCase(a) == upperCase(b);
}

bool lessIgnoreCase(std::string_view a, std::string_view b) {
    skipEqualAscii(a, b);
    if (a.empty() || b.empty()) return a.empty() && !b.empty();
    if (differInAscii(a, b)) return upperAscii(a.front()) < upperAscii(b.front());
    return upperCase(a) < upperCase(b);
}

} // namespace EDA
