// The text of drill files: lines, statements as words, numbers as written.
#include "fabrication/drills/DrillText.h"

#include "text/Encoding.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace EDA::Fabrication::DrillText {

namespace {

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\0' || character == '\f' ||
           character == '\v';
}

bool isOfNumber(char character) {
    return isDigit(character) || character == '.' || character == '+' || character == '-';
}

// Statements that look like words of one letter but are none.
bool isHeaderStatement(std::string_view line) {
    if (!isLetter(line[0])) return false;
    const std::size_t second = line.find_first_not_of(' ', 1);
    if (second == std::string_view::npos) return true;
    return isLetter(line[second]) || line[second] == ',';
}

// A text of the operator's: "M47,Insert board".
bool isMessage(std::string_view line) {
    return line.size() >= 3 && upper(line[0]) == 'M' &&
           (line.substr(1, 2) == "47" || line.substr(1, 2) == "97" || line.substr(1, 2) == "98");
}

bool isZeroRemark(std::string_view line) {
    return line.size() > 3 && upper(line[0]) == 'G' && (line.substr(1, 2) == "04") && !isDigit(line[3]) &&
           upper(line[3]) != 'X';
}

bool isCommentLine(std::string_view line, std::string_view &text) {
    if (line[0] == ';') {
        text = line.substr(1);
    } else if (line[0] == '(') {
        text = line.substr(1, line.back() == ')' ? line.size() - 2 : std::string_view::npos);
    } else if (isZeroRemark(line)) {
        text = line.substr(3);
    } else {
        return false;
    }
    return true;
}

void readWords(std::string_view line, std::vector<Word> &words) {
    std::size_t i = 0;
    while (i < line.size()) {
        if (!isLetter(line[i])) {
            ++i;
            continue;
        }
        const char letter = upper(line[i++]);
        while (i < line.size() && isBlank(line[i]))
            ++i;
        const std::size_t start = i;
        while (i < line.size() && isOfNumber(line[i]))
            ++i;
        words.push_back({letter, line.substr(start, i - start)});
    }
}

} // namespace

std::string_view decoded(std::string_view bytes, std::string &storage) {
    const bool isWide = bytes.size() >= 2 && ((bytes[0] == '\xff' && bytes[1] == '\xfe') ||
                                              (bytes[0] == '\xfe' && bytes[1] == '\xff'));
    if (isWide) {
        storage = decodedToUtf8(std::string(bytes));
        return storage;
    }
    return startsWith(bytes, "\xef\xbb\xbf") ? bytes.substr(3) : bytes;
}

bool Lines::next() {
    if (position_ >= text_.size()) return false;
    std::size_t end = position_;
    while (end < text_.size() && text_[end] != '\n' && text_[end] != '\r')
        ++end;
    line_ = trimmed(text_.substr(position_, end - position_));
    position_ = end + 1;
    if (end + 1 < text_.size() && text_[end] == '\r' && text_[end + 1] == '\n') ++position_;
    ++number_;
    return true;
}

std::string uppered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), upper);
    return result;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        const std::string_view part = trimmed(text.substr(start, end - start));
        if (!part.empty()) parts.push_back(part);
        start = end + 1;
    }
    return parts;
}

Word const *Statement::find(char letter) const {
    for (Word const &word : words)
        if (word.letter == letter) return &word;
    return nullptr;
}

void parse(std::string_view line, Statement &statement) {
    using Kind = Statement::Kind;
    statement.kind = Kind::Empty;
    statement.text.clear();
    statement.words.clear();
    statement.isDeletable = false;
    if (line.empty()) return;
    std::string_view comment;
    if (isCommentLine(line, comment)) {
        statement.kind = Kind::Comment;
        statement.text = trimmed(comment);
        return;
    }
    for (std::size_t i = 1; i < line.size(); ++i)
        if (line[i] == ';') line = trimmed(line.substr(0, i));
    if (line[0] == '/') {
        statement.isDeletable = true;
        line = trimmed(line.substr(1));
    }
    while (!line.empty() && (line.back() == '*' || line.back() == '$'))
        line = trimmed(line.substr(0, line.size() - 1));
    if (line.empty()) return;
    if (line[0] == '%') {
        statement.kind = Kind::Percent;
        statement.text = line;
    } else if (isMessage(line) || isHeaderStatement(line)) {
        statement.kind = Kind::Header;
        statement.text = uppered(line.substr(0, 200));
    } else {
        statement.kind = Kind::Words;
        readWords(line, statement.words);
    }
}

int integerOf(std::string_view number) {
    if (startsWith(number, "+")) number.remove_prefix(1);
    int value = -1;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    const bool isGood = result.ec == std::errc() && value >= 0 && value <= 1'000'000;
    return isGood ? value : -1;
}

bool readDecimal(std::string_view text, double &value) {
    const Digits digits = digitsOf(text);
    if (!digits.isValid) return false;
    value = digits.value;
    return true;
}

Digits digitsOf(std::string_view number) {
    constexpr int mostDigits = 300; // so that the value stays finite
    constexpr int wholeDigits = 18; // that fit an integer
    Digits digits;
    if (number.empty()) return digits;
    const bool isNegative = number[0] == '-';
    if (isNegative || number[0] == '+') number.remove_prefix(1);
    std::uint64_t whole = 0; // faster than doing it all in floating point
    int decimals = 0;
    for (char const character : number) {
        if (character == '.' && !digits.hasPoint) {
            digits.hasPoint = true;
        } else if (isDigit(character) && digits.count < mostDigits) {
            if (digits.count < wholeDigits) {
                whole = whole * 10 + static_cast<std::uint64_t>(character - '0');
            } else {
                if (digits.count == wholeDigits) digits.value = static_cast<double>(whole);
                digits.value = digits.value * 10.0 + (character - '0');
            }
            if (digits.hasPoint) ++decimals;
            ++digits.count;
        } else {
            return Digits();
        }
    }
    if (digits.count == 0) return digits;
    if (digits.count <= wholeDigits) digits.value = static_cast<double>(whole);
    digits.isValid = true;
    digits.hasLeadingZero = digits.count > 1 && number.front() == '0';
    digits.hasTrailingZero = number.back() == '0';
    if (isNegative) digits.value = -digits.value;
    if (decimals > 0) digits.value /= powerOfTen(decimals);
    return digits;
}

double powerOfTen(int exponent) {
    constexpr double powers[] = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    return exponent >= 0 && exponent < 10 ? powers[exponent] : std::pow(10.0, exponent);
}

double millimetresOf(Unit unit) { return unit == Unit::Inch ? 25.4 : 1.0; }

} // namespace EDA::Fabrication::DrillText
