// Coordinates, and the numbers of a step and repeat.
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberNumbers.h"
#include "readers/gerber/GerberReader.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace EDA {

namespace {

constexpr std::size_t exactDigits = 15; // so many digits make a whole number that double holds

constexpr std::array<double, 23> powersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                             1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The digits as a number with this many decimals: one division of two exact numbers, so it is rounded as the
// decimal text would be. False for anything but a few digits.
bool readDigits(std::string_view digits, std::size_t decimals, double &value) {
    if (digits.empty() || digits.size() > exactDigits || decimals >= powersOfTen.size()) return false;
    std::uint64_t number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return false;
        number = number * 10 + static_cast<std::uint64_t>(c - '0');
    }
    value = static_cast<double>(number) / powersOfTen[decimals];
    return true;
}

// The place of a coordinate's letter among X, Y, I and J; 4 for any other character.
std::size_t letterOf(char c) {
    switch (c) {
    case 'X':
        return 0;
    case 'Y':
        return 1;
    case 'I':
        return 2;
    case 'J':
        return 3;
    default:
        return 4;
    }
}

bool endsCoordinates(char c) { return c == '\n' || c == '*' || c == 'D'; }

// The texts behind the letters of a statement. What follows a letter that comes again is joined to its text.
struct CoordinateTexts {
    std::array<std::string_view, 4> texts; // X, Y, I, J
    std::array<std::string, 4> joined;

    explicit CoordinateTexts(std::string_view statement) {
        for (std::size_t i = 0; i < statement.size() && !endsCoordinates(statement[i]);) {
            const std::size_t letter = letterOf(statement[i++]);
            const std::size_t begin = i;
            if (letter == texts.size()) continue;
            while (i < statement.size() && !endsCoordinates(statement[i]) &&
                   letterOf(statement[i]) == texts.size())
                ++i;
            add(letter, statement.substr(begin, i - begin));
        }
    }
    CoordinateTexts(const CoordinateTexts &) = delete; // the texts may lie within
    CoordinateTexts &operator=(const CoordinateTexts &) = delete;

private:
    void add(std::size_t letter, std::string_view text) {
        if (texts[letter].empty()) {
            texts[letter] = text;
            return;
        }
        if (joined[letter].empty()) joined[letter] = texts[letter];
        joined[letter].append(text);
        texts[letter] = joined[letter];
    }
};

} // namespace

void GerberReader::extractCoordinates(Statement statement, double &x, double &y) const {
    double i = 0.0, j = 0.0;
    extractCoordinates(statement, x, y, i, j);
}

void GerberReader::extractCoordinates(Statement statement, double &x, double &y, double &i, double &j) const {
    const CoordinateTexts coordinates(statement);
    extractCoordinate(coordinates.texts[0], x, true);
    extractCoordinate(coordinates.texts[1], y, false);
    extractCoordinate(coordinates.texts[2], i, true);
    extractCoordinate(coordinates.texts[3], j, false);
}

// Digits without a point, filled up with zeros at the end that the file leaves out. Intended: a plus sign and
// a point, which the format has no place for, make the number 0.
void GerberReader::extractCoordinate(Statement digits, double &value, bool isX) const {
    if (digits.empty()) return;
    const NumberFormat &format = state_.drillMode ? viaFormat_ : isX ? state_.formatX : state_.formatY;
    const auto decimals = static_cast<std::size_t>(format.decimalDigits);
    const std::size_t length = static_cast<std::size_t>(format.integerDigits) + decimals;
    const bool isNegative = digits.front() == '-';
    if (isNegative) digits.remove_prefix(1);

    double size = 0.0;
    const bool isPadded = digits.size() >= length || state_.leadingZerosOmitted;
    if (!isPadded || !readDigits(digits, decimals, size)) {
        std::string text(digits);
        const std::size_t missing = length - std::min(length, text.size());
        text.insert(state_.leadingZerosOmitted ? 0 : text.size(), missing, '0');
        text.insert(text.size() - decimals, 1, '.');
        size = text.find('+') == std::string::npos ? gerberDouble((isNegative ? "-" : "") + text) : 0.0;
        value = size;
        return;
    }
    value = isNegative ? -size : size;
}

// A letter's number runs to the next letter that is there, or to the end.
void GerberReader::definePattern(Statement statement) {
    const std::size_t end = std::min(statement.find_first_of("*\n"), statement.size());
    const auto textOf = [&](char letter) {
        const std::size_t begin = statement.find(letter);
        if (begin >= end) return Statement();
        std::size_t stop = end;
        for (const char other : {'X', 'Y', 'I', 'J'}) {
            const std::size_t place = statement.find(other);
            if (place > begin) stop = std::min(stop, place);
        }
        return statement.substr(begin + 1, stop - begin - 1);
    };
    StepAndRepeat repeat;
    repeat.countX = gerberInt(textOf('X'));
    repeat.countY = gerberInt(textOf('Y'));
    repeat.stepX = gerberDouble(textOf('I'));
    repeat.stepY = gerberDouble(textOf('J'));
    const double copies = static_cast<double>(std::max(repeat.countX, 0)) * std::max(repeat.countY, 1);
    if (copies > limits_.repeats) {
        addUnhandled(statement);
        repeat = StepAndRepeat();
    }
    state_.repeat = repeat;
}

} // namespace EDA
