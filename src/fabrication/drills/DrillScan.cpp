// A first pass over a drill file: what it says of itself and what its statements look like.
#include "fabrication/drills/DrillScan.h"

#include <algorithm>
#include <iterator>

namespace EDA::Fabrication {

using namespace DrillText;

namespace {

// Beginnings of statements that set up the machine, or nothing that has a place.
constexpr std::string_view machineStatements[] = {
    "FMAT", "VER", "ATC",     "AFS",      "CCW",    "CP",     "DETECT", "DN",       "DTMDIST",
    "EXDA", "FSB", "HPCK",    "NCSL",     "OM48",   "OSTOP",  "OTCLMP", "PCKPARAM", "PF",
    "PPR",  "PVS", "R,",      "RSB",      "SBK",    "SG",     "SIXM",   "TCST",     "UP",
    "ZA",   "ZC",  "ZS",      "Z,",       "LEADER", "HEADER", "FORMAT", "TOOLS",    "ENGLISH",
    "MM",   "BHD", "OPTIONS", "AUTOSAVE", "M47",    "S,",     "F,",     "B,",       "H,",
};

// Statements of layer files.
constexpr std::string_view layerStatements[] = {"%FS", "%AD", "%MO", "%LP", "%AM",
                                                "%SR", "%TF", "%IP", "%AS"};

bool isMask(std::string_view text, int &integerDigits, int &decimalDigits) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos || text.size() > 12) return false;
    if (text.find_first_not_of("0.") != std::string_view::npos) return false;
    integerDigits = static_cast<int>(point);
    decimalDigits = static_cast<int>(text.size() - point - 1);
    return integerDigits + decimalDigits > 0;
}

void readZeros(std::string_view part, DrillNumbers &numbers) {
    // A header names the zeros that stay.
    if (part == "LZ") numbers.zeros = Zeros::TrailingOmitted;
    if (part == "TZ") numbers.zeros = Zeros::LeadingOmitted;
}

bool hasLetter(std::vector<Word> const &words, char letter) {
    return std::any_of(words.begin(), words.end(), [=](Word const &word) { return word.letter == letter; });
}

class Scanner {
public:
    explicit Scanner(DrillScan &scan) : scan_(scan) {}
    void take(std::string_view line);

private:
    void takeWords();
    void takeCodes();
    void takeUnit();
    void takeTool(Word const &word);
    void takePlace();
    void addSample(Digits const &x, Digits const &y);
    bool isForeign() const;

    DrillScan &scan_;
    Statement statement_;
    bool inHeader_ = false;
    bool isIncremental_ = false;
    bool isFinished_ = false;
    bool isRouting_ = false;
    int tool_ = -1;
    Digits x_;
    Digits y_;
};

// A line whose statements the layer format has.
bool isOfLayer(std::string_view line) {
    if (line.empty()) return false;
    if (line[0] == '%') {
        return std::any_of(std::begin(layerStatements), std::end(layerStatements),
                           [line](std::string_view start) { return startsWith(line, start); });
    }
    const std::size_t size = line.size();
    return size >= 4 && line[size - 1] == '*' && (line[size - 4] == 'D' || line[size - 3] == 'D') &&
           (line[0] == 'X' || line[0] == 'Y' || line[0] == 'D' || line[0] == 'G');
}

void Scanner::take(std::string_view line) {
    if (line.size() > 4000) line = line.substr(0, 4000);
    if (isOfLayer(line)) scan_.hasLayerStatements = true;
    parse(line, statement_);
    using Kind = Statement::Kind;
    switch (statement_.kind) {
    case Kind::Empty:
        return;
    case Kind::Comment:
        if (scan_.firstComments.size() < 50) scan_.firstComments.push_back(statement_.text.substr(0, 1000));
        scan_.comments.read(statement_.text);
        return;
    case Kind::Percent:
        inHeader_ = false;
        return;
    case Kind::Header:
        ++scan_.numStatements;
        if (startsWith(statement_.text, "ICI")) isIncremental_ = contains(statement_.text, "ON");
        takeUnit();
        if (isForeign()) ++scan_.numForeign;
        return;
    case Kind::Words:
        ++scan_.numStatements;
        if (isForeign()) ++scan_.numForeign;
        if (!isFinished_) takeWords();
        return;
    }
}

bool Scanner::isForeign() const {
    if (statement_.kind == Statement::Kind::Header) {
        DrillNumbers ignored;
        return !isMachineStatement(statement_.text) && !readUnitStatement(statement_, ignored);
    }
    if (statement_.words.empty()) return true;
    for (Word const &word : statement_.words) {
        if (word.letter == 'D' || word.letter == 'E' || word.letter == 'K' || word.letter == 'O' ||
            word.letter == 'U' || word.letter == 'V' || word.letter == 'W' || word.letter == 'Q')
            return true;
    }
    return false;
}

void Scanner::takeUnit() {
    DrillNumbers said;
    if (!readUnitStatement(statement_, said)) return;
    if (inHeader_) scan_.headerUnit = said.unit;
    if (scan_.numCoordinates == 0) scan_.numbers.unit = said.unit;
    if (said.zeros != Zeros::Unknown && scan_.numCoordinates == 0) scan_.numbers.zeros = said.zeros;
    if (said.integerDigits >= 0 && scan_.numCoordinates == 0) {
        scan_.numbers.integerDigits = said.integerDigits;
        scan_.numbers.decimalDigits = said.decimalDigits;
    }
    if (scan_.numCoordinates > 0 && scan_.places.size() < DrillScan::mostPlaces &&
        scan_.unitChanges.size() < DrillScan::mostPlaces)
        scan_.unitChanges.push_back({scan_.places.size(), said});
}

void Scanner::takeCodes() {
    for (Word const &word : statement_.words) {
        const int code = word.letter == 'G' || word.letter == 'M' ? integerOf(word.number) : -1;
        if (word.letter == 'G') {
            if (code == 5 || code == 81) isRouting_ = false;
            if (code >= 0 && code <= 3) isRouting_ = true;
            if (code >= 1 && code <= 3) scan_.hasCuts = true;
            if (code == 90) isIncremental_ = false;
            if (code == 91) isIncremental_ = true;
        } else if (word.letter == 'M') {
            if (code == 48) scan_.hasHeader = inHeader_ = true;
            if (code == 95) inHeader_ = false;
            if (code == 15) scan_.hasPlunges = true;
            if (code == 30) scan_.hasEnd = isFinished_ = true;
        } else if (word.letter == 'T') {
            takeTool(word);
        }
    }
}

void Scanner::takeTool(Word const &word) {
    if (word.number.empty()) return;
    ++scan_.numTools;
    const int number = toolNumber(word.number, scan_.definedTools);
    Word const *size = statement_.find('C');
    double value = 0.0;
    if (size && readDecimal(size->number, value) && value > 0.0) {
        if (scan_.sizes.size() < 1000) scan_.sizes.push_back(value);
        scan_.sizedTools.insert(number);
    }
    if (inHeader_ || size) scan_.definedTools.insert(number);
    if (inHeader_) return;
    scan_.hasToolSelects = true;
    tool_ = number;
}

void Scanner::takeWords() {
    takeUnit();
    takeCodes();
    if (hasLetter(statement_.words, 'X') || hasLetter(statement_.words, 'Y')) takePlace();
}

// Places of the zero point, offsets of repeats and the like say nothing of the holes' places.
void Scanner::takePlace() {
    int repeats = 1;
    for (Word const &word : statement_.words) {
        const int code = word.letter == 'G' || word.letter == 'M' ? integerOf(word.number) : -1;
        if (word.letter == 'G' && (code == 93 || code == 92 || code == 4)) return;
        if (word.letter == 'R') repeats = std::max(1, integerOf(word.number));
    }
    ++scan_.numCoordinates;
    if (!isRouting_) {
        scan_.numHoles += static_cast<std::size_t>(repeats);
        if (tool_ >= 0) scan_.usedTools.insert(tool_);
    }
    Digits x = x_, y = y_;
    for (Word const &word : statement_.words) {
        if (word.letter != 'X' && word.letter != 'Y') continue;
        const Digits digits = digitsOf(word.number);
        if (!digits.isValid) continue;
        if (digits.hasPoint) scan_.hasDecimals = true;
        (word.letter == 'X' ? x : y) = digits;
    }
    if (statement_.find('R') || (statement_.find('M') && !isRouting_)) return;
    addSample(x, y);
}

void Scanner::addSample(Digits const &x, Digits const &y) {
    x_ = x;
    y_ = y;
    if (scan_.places.size() >= DrillScan::mostPlaces) return;
    scan_.places.push_back({x, y, isIncremental_});
}

} // namespace

bool isMachineStatement(std::string_view text) {
    for (std::string_view start : machineStatements)
        if (startsWith(text, start)) return true;
    return startsWith(text, "ICI") || startsWith(text, "M97") || startsWith(text, "M98");
}

bool readUnitStatement(Statement const &statement, DrillNumbers &numbers) {
    if (statement.kind == Statement::Kind::Words) {
        const auto code = std::find_if(statement.words.begin(), statement.words.end(), [](Word const &word) {
            return word.letter == 'M' && (word.number == "71" || word.number == "72");
        });
        if (code == statement.words.end()) return false;
        numbers.unit = code->number == "71" ? Unit::Millimetre : Unit::Inch;
        if (statement.find('Z'))
            readZeros(statement.find('L') ? "LZ" : statement.find('T') ? "TZ" : "", numbers);
        return true;
    }
    if (statement.kind != Statement::Kind::Header) return false;
    const std::vector<std::string_view> parts = split(statement.text, ",");
    if (parts.empty() || (parts[0] != "INCH" && parts[0] != "METRIC")) return false;
    numbers.unit = parts[0] == "INCH" ? Unit::Inch : Unit::Millimetre;
    for (std::string_view part : parts) {
        readZeros(part, numbers);
        isMask(part, numbers.integerDigits, numbers.decimalDigits);
    }
    return true;
}

void changeUnit(DrillNumbers &numbers, DrillNumbers const &said) {
    const bool isUsual = numbers.unit == Unit::Inch
                             ? numbers.integerDigits == 2 && numbers.decimalDigits == 4
                             : numbers.integerDigits == 3 && numbers.decimalDigits == 3;
    if (said.unit != numbers.unit && isUsual) {
        numbers.integerDigits = said.unit == Unit::Inch ? 2 : 3;
        numbers.decimalDigits = said.unit == Unit::Inch ? 4 : 3;
    }
    numbers.unit = said.unit;
    if (said.zeros != Zeros::Unknown) numbers.zeros = said.zeros;
    if (said.integerDigits >= 0) {
        numbers.integerDigits = said.integerDigits;
        numbers.decimalDigits = said.decimalDigits;
    }
}

int toolNumber(std::string_view number, std::set<int> const &defined) {
    const int whole = integerOf(number);
    if (number.size() != 4 || defined.count(whole) != 0) return whole;
    const int index = integerOf(number.substr(0, 2)), compensation = integerOf(number.substr(2));
    const bool isPair = index == compensation || defined.count(index) != 0;
    return isPair && index > 0 ? index : whole;
}

double millimetres(Digits const &digits, DrillNumbers const &numbers) {
    const double unit = millimetresOf(numbers.unit);
    if (digits.hasPoint) return digits.value * unit;
    const bool isInch = numbers.unit == Unit::Inch;
    if (numbers.zeros == Zeros::TrailingOmitted) {
        const int integers = numbers.integerDigits >= 0 ? numbers.integerDigits : isInch ? 2 : 3;
        const int shift = digits.count - integers;
        return (shift >= 0 ? digits.value / powerOfTen(shift) : digits.value * powerOfTen(-shift)) * unit;
    }
    const int decimals = numbers.decimalDigits >= 0 ? numbers.decimalDigits : isInch ? 4 : 3;
    return digits.value / powerOfTen(decimals) * unit;
}

DrillNumbers DrillScan::allNumbers() const {
    DrillNumbers result = numbers;
    DrillNumbers const &told = comments.numbers();
    if (result.unit == Unit::Unknown) result.unit = told.unit;
    if (result.zeros == Zeros::Unknown) result.zeros = told.zeros;
    if (result.integerDigits < 0) {
        result.integerDigits = told.integerDigits;
        result.decimalDigits = told.decimalDigits;
    }
    return result;
}

bool DrillScan::isDrill() const {
    if (hasHeader) return true;
    if (hasLayerStatements || numForeign * 10 > numStatements) return false;
    if (numCoordinates == 0) return numTools > 0 && hasEnd;
    return numTools > 0 || !comments.tools().empty() || (hasEnd && numForeign == 0);
}

DrillScan scanDrillFile(std::string_view text) {
    DrillScan scan;
    Scanner scanner(scan);
    Lines lines(text);
    while (lines.next())
        scanner.take(lines.line());
    return scan;
}

} // namespace EDA::Fabrication
