// The text of drill files: lines, statements as words, numbers as written.
#pragma once

#include "fabrication/layers/LayerFile.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace EDA::Fabrication::DrillText {

// The bytes as text: UTF-16 is turned into UTF-8, byte order marks are dropped. `storage` keeps what had to
// be made anew; most files are taken as they are.
std::string_view decoded(std::string_view bytes, std::string &storage);

// Hands out the lines one by one, without their ends and blanks around them.
class Lines {
public:
    explicit Lines(std::string_view text) : text_(text) {}
    // False after the last line.
    bool next();
    std::string_view line() const { return line_; }
    std::size_t number() const { return number_; } // from 1

private:
    std::string_view text_;
    std::string_view line_;
    std::size_t position_ = 0;
    std::size_t number_ = 0;
};

inline bool isDigit(char character) { return character >= '0' && character <= '9'; }
inline char upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}
inline bool isLetter(char character) {
    const char big = upper(character);
    return big >= 'A' && big <= 'Z';
}
std::string uppered(std::string_view text);
std::string_view trimmed(std::string_view text);
inline bool startsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && text.compare(0, start.size(), start) == 0;
}
bool contains(std::string_view text, std::string_view part);
std::vector<std::string_view> split(std::string_view text, std::string_view separators);

// A letter and the number after it, which may be empty: X and "-0012".
struct Word {
    char letter = 0; // upper case
    std::string_view number;
};

// A line taken apart. Comments behind a statement are cut off.
struct Statement {
    enum class Kind {
        Empty,
        Comment, // text: without its sign
        Header,  // a statement of names and values, "INCH,TZ", or a text: `text` is the line in upper case
        Percent, // the sign that ends a header
        Words,
    };

    Kind kind = Kind::Empty;
    std::string text;
    std::vector<Word> words;

    Word const *find(char letter) const;
    bool isDeletable = false; // marked by the sign of blocks that a switch of the machine skips
};

// The statement is made anew in place, so that a file costs few allocations.
void parse(std::string_view line, Statement &statement);

// The whole number of a word; -1 where there is none or it is beyond a million.
int integerOf(std::string_view number);

// A plain decimal number with a sign ("+.30"); false where it is none or not finite.
bool readDecimal(std::string_view text, double &value);

// A coordinate as written.
struct Digits {
    double value = 0.0; // of its digits without the point; with the point where it has one
    int count = 0;      // of its digits
    bool hasPoint = false;
    bool hasLeadingZero = false; // more digits follow it
    bool hasTrailingZero = false;
    bool isValid = false;
};
Digits digitsOf(std::string_view number);

double powerOfTen(int exponent);

// Millimetres of one unit; 1 for an unknown one.
double millimetresOf(Unit unit);

} // namespace EDA::Fabrication::DrillText
