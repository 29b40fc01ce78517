// Rows of an IDF file on their way to its stream.
#include "writers/IDFRowsDetail.h"

#include "text/SixDigits.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

namespace EDA {

namespace {

bool endsToken(char c) { return c == '\n' || c == '\r' || c == '\t'; }

// Which characters of a text want a second look.
struct Suspects {
    bool isOne[256] = {};
    constexpr Suspects() {
        for (const char c : {'\n', '\r', '\t', '"'})
            isOne[static_cast<unsigned char>(c)] = true;
    }
};
constexpr Suspects suspects;

} // namespace

void IDFRows::grow(std::size_t size) { buffer_.resize(std::max(2 * buffer_.size(), size_ + size)); }

IDFRows &IDFRows::add(std::string_view text) {
    std::memcpy(room(text.size()), text.data(), text.size());
    size_ += text.size();
    return *this;
}

IDFRows &IDFRows::add(double value) {
    char *const start = room(sixDigitsRoom);
    size_ += static_cast<std::size_t>(putSixDigits(start, value) - start);
    return *this;
}

IDFRows &IDFRows::add(int value) {
    constexpr std::size_t longest = std::numeric_limits<int>::digits10 + 2;
    char *const start = room(longest);
    size_ += static_cast<std::size_t>(std::to_chars(start, start + longest, value).ptr - start);
    return *this;
}

IDFRows &IDFRows::addBare(std::string_view text) {
    addClean(text, false);
    return *this;
}

IDFRows &IDFRows::addQuoted(std::string_view text) {
    add('"');
    addClean(text, true);
    return add('"');
}

// Most texts need nothing, which one look without a branch a character tells.
void IDFRows::addClean(std::string_view text, bool isQuoted) {
    bool isSuspect = false;
    for (const char c : text)
        isSuspect |= suspects.isOne[static_cast<unsigned char>(c)];
    char *const start = room(text.size());
    add(text);
    if (!isSuspect) return;
    std::replace_if(start, start + text.size(), endsToken, ' ');
    if (isQuoted) std::replace(start, start + text.size(), '"', '\'');
}

void IDFRows::endRow() {
    add('\n');
    if (size_ >= flushSize) flush();
}

void IDFRows::flush() {
    if (size_ > 0) stream_.write(buffer_.data(), static_cast<std::streamsize>(size_));
    size_ = 0;
}

} // namespace EDA
