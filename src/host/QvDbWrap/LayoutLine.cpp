// Walking over the lines and fields of the wrapper's own text files, and writing fields.
#include "host/QvDbWrap/LayoutLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <stdexcept>

namespace QvDbWrap {

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::size_t shownLength = 40; // of a field in a message

struct Escape {
    char letter;
    char meaning;
};
constexpr Escape escapes[] = {{'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'"', '"'}, {'\\', '\\'}};

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// A field for a message: one line, not long.
std::string shown(std::string_view field) {
    std::string text(field.substr(0, shownLength));
    std::replace_if(text.begin(), text.end(), isControl, '?');
    return "\"" + text + (field.size() > shownLength ? "...\"" : "\"");
}

} // namespace

bool LineWalk::next(std::string_view &line) {
    while (!rest_.empty()) {
        ++number_;
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        line = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        if (line.size() > maxLineLength) fail("the line is longer than 64 MiB");
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        const std::size_t start = line.find_first_not_of(blanks);
        if (start != std::string_view::npos && line[start] != '#') return true;
    }
    return false;
}

void LineWalk::fail(const std::string &reason) const {
    throw std::runtime_error("line " + std::to_string(number_) + ": " + reason);
}

void FieldWalk::skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size())); }

std::string_view FieldWalk::word(const char *what) {
    const std::string_view field = rest_.substr(0, rest_.find_first_of(blanks));
    if (field.empty()) fail(std::string(what) + " is missing");
    rest_.remove_prefix(field.size());
    skipBlanks();
    return field;
}

double FieldWalk::number(const char *what) {
    const std::string_view field = word(what);
    double value = 0;
    const auto read = std::from_chars(field.data(), field.data() + field.size(), value);
    if (read.ec == std::errc::result_out_of_range)
        fail(std::string(what) + " is a number out of range: " + shown(field));
    if (read.ec != std::errc() || read.ptr != field.data() + field.size() || !std::isfinite(value))
        fail(std::string(what) + " is no number: " + shown(field));
    return value;
}

// The backslash is taken already.
char FieldWalk::escaped(const char *what) {
    const char letter = rest_.empty() ? '\0' : rest_.front();
    for (const Escape &escape : escapes) {
        if (escape.letter != letter) continue;
        rest_.remove_prefix(1);
        return escape.meaning;
    }
    const int high = rest_.size() < 3 ? -1 : hexDigit(rest_[1]);
    const int low = rest_.size() < 3 ? -1 : hexDigit(rest_[2]);
    if (letter != 'x' || high < 0 || low < 0)
        fail(std::string(what) + " has an unknown escape: " + shown(rest_.substr(0, 3)));
    rest_.remove_prefix(3);
    return static_cast<char>(high * 16 + low);
}

std::string FieldWalk::text(const char *what) {
    if (rest_.empty()) fail(std::string(what) + " is missing");
    if (rest_.front() != '"') fail(std::string(what) + " is not in double quotes: " + shown(rest_));
    rest_.remove_prefix(1);
    std::string text;
    for (;;) {
        const std::size_t plain = rest_.find_first_of("\"\\");
        if (plain == std::string_view::npos) fail(std::string(what) + " has no closing quote");
        text += rest_.substr(0, plain);
        const bool isEscape = rest_[plain] == '\\';
        rest_.remove_prefix(plain + 1);
        if (!isEscape) break;
        text += escaped(what);
    }
    if (!rest_.empty() && blanks.find(rest_.front()) == std::string_view::npos)
        fail("a blank is missing behind " + std::string(what));
    skipBlanks();
    return text;
}

void FieldWalk::end() const {
    if (!rest_.empty()) fail("there is more than the record takes: " + shown(rest_));
}

void appendQuoted(std::string &line, std::string_view text) {
    static constexpr char digits[] = "0123456789abcdef";
    line += '"';
    for (const char c : text) {
        const auto escape = std::find_if(std::begin(escapes), std::end(escapes),
                                         [c](const Escape &e) { return e.meaning == c; });
        if (escape != std::end(escapes)) {
            line += '\\';
            line += escape->letter;
        } else if (isControl(c)) {
            const auto byte = static_cast<unsigned char>(c);
            line += "\\x";
            line += digits[byte >> 4];
            line += digits[byte & 15];
        } else {
            line += c;
        }
    }
    line += '"';
}

void appendNumber(std::string &line, double value) {
    char buffer[32];
    line.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

} // namespace QvDbWrap
