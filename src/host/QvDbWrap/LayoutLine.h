// The lines of the wrapper's own text files: a keyword and, behind it, words, numbers and quoted texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace QvDbWrap {

// Hands out a text line by line, without the line ends and without lines that are blank or start with '#'.
class LineWalk {
public:
    static constexpr std::size_t maxLineLength = std::size_t{64} << 20;

    explicit LineWalk(std::string_view text) : rest_(text) {}

    // False at the end. Throws std::runtime_error when a line is longer than maxLineLength.
    bool next(std::string_view &line);

    // The number of the line that next gave, from 1 on; 0 before the first.
    std::size_t number() const { return number_; }

    // Throws std::runtime_error with "line N: reason".
    [[noreturn]] void fail(const std::string &reason) const;

private:
    std::string_view rest_;
    std::size_t number_ = 0;
};

// Takes the fields of one line, from left to right, with blanks or tabs between them. What is not there or is
// of another kind throws std::runtime_error with the number of the line.
class FieldWalk {
public:
    FieldWalk(const LineWalk &lines, std::string_view line) : lines_(lines), rest_(line) { skipBlanks(); }

    bool isAtEnd() const { return rest_.empty(); }

    // Up to the next blank.
    std::string_view word(const char *what);

    // A finite number in decimal digits.
    double number(const char *what);

    // A text in double quotes with the escapes that appendQuoted writes.
    std::string text(const char *what);

    // Nothing may be left.
    void end() const;

    [[noreturn]] void fail(const std::string &reason) const { lines_.fail(reason); }

private:
    void skipBlanks();
    char escaped(const char *what);

    const LineWalk &lines_;
    std::string_view rest_;
};

// The text in double quotes. A quote and a backslash get a backslash in front, control characters are written
// as \n, \t, \r or \x and two hexadecimal digits; all other bytes stand as they are.
void appendQuoted(std::string &line, std::string_view text);

// The shortest digits that read back as the same number.
void appendNumber(std::string &line, double value);

} // namespace QvDbWrap
