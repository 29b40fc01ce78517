// What comments and attributes of drill files tell.
#include "fabrication/drills/DrillComments.h"

#include "fabrication/drills/DrillText.h"

#include <algorithm>

namespace EDA::Fabrication {

using namespace DrillText;

namespace {

struct PlatingWord {
    std::string_view word;
    bool plated;
};

constexpr PlatingWord platingWords[] = {
    {"PLATED", true}, {"PTH", true},       {"NON_PLATED", false}, {"NON-PLATED", false}, {"NONPLATED", false},
    {"NPTH", false},  {"UNPLATED", false}, {"NPLATED", false},    {"NOT_PLATED", false}, {"NOTPLATED", false},
};

struct UnitWord {
    std::string_view word;
    Unit unit;
    double scale;
};

constexpr UnitWord unitWords[] = {
    {"MM", Unit::Millimetre, 1.0},
    {"METRIC", Unit::Millimetre, 1.0},
    {"MILLIMETER", Unit::Millimetre, 1.0},
    {"MILLIMETERS", Unit::Millimetre, 1.0},
    {"MILLIMETRES", Unit::Millimetre, 1.0},
    {"UM", Unit::Millimetre, 0.001},
    {"INCH", Unit::Inch, 1.0},
    {"INCHES", Unit::Inch, 1.0},
    {"IN", Unit::Inch, 1.0},
    {"ENGLISH", Unit::Inch, 1.0},
    {"\"", Unit::Inch, 1.0},
    {"MIL", Unit::Inch, 0.001},
    {"MILS", Unit::Inch, 0.001},
    {"THOU", Unit::Inch, 0.001},
};

// "3:3" or "2.4" with nothing but digits.
bool readDigits(std::string_view text, int &integerDigits, int &decimalDigits) {
    if (text.size() < 3 || !isDigit(text[0]) || !isDigit(text[2])) return false;
    if (text[1] != ':' && text[1] != '.') return false;
    if (text.size() > 3 && (isDigit(text[3]) || text[3] == ':')) return false;
    integerDigits = text[0] - '0';
    decimalDigits = text[2] - '0';
    return integerDigits + decimalDigits > 0;
}

int layerNumber(std::vector<std::string_view> const &values, std::size_t index) {
    return index < values.size() ? std::max(0, integerOf(values[index])) : 0;
}

} // namespace

std::optional<bool> platedByWord(std::string_view word) {
    for (PlatingWord const &known : platingWords)
        if (word == known.word) return known.plated;
    return std::nullopt;
}

bool readUnitWord(std::string_view word, Unit &unit, double &scale) {
    for (UnitWord const &known : unitWords) {
        if (word != known.word) continue;
        unit = known.unit;
        scale = known.scale;
        return true;
    }
    return false;
}

void DrillComments::read(std::string_view comment) {
    comment = trimmed(comment.substr(0, 1000));
    if (readAttribute(comment)) return;
    const std::string text = uppered(comment);
    if (readHoleSize(text) || readFormat(text) || readType(text)) return;
    readContents(text);
}

// "#@! TF.FileFunction,Plated,1,4,PTH"; also without the sign in front.
bool DrillComments::readAttribute(std::string_view comment) {
    if (startsWith(comment, "#@!")) comment = trimmed(comment.substr(3));
    while (!comment.empty() && (comment.back() == '*' || comment.back() == '%'))
        comment.remove_suffix(1);
    const bool isAttribute = startsWith(comment, "TF") || startsWith(comment, "TA") ||
                             startsWith(comment, "TO") || startsWith(comment, "TD");
    if (!isAttribute || (comment.size() > 2 && comment[2] != '.' && comment[2] != ',')) return false;
    std::vector<std::string_view> values = split(comment, ",");
    const std::string_view name = values.empty() ? comment : values.front();
    if (!values.empty()) values.erase(values.begin());
    if (name == "TF.FileFunction") {
        readFileFunction(values);
    } else if (name == "TA.AperFunction") {
        readAperFunction(values);
    } else if (name == "TD" || name == "TD.AperFunction") {
        nextPlated_.reset();
        nextFunction_.clear();
    }
    return true;
}

void DrillComments::readFileFunction(std::vector<std::string_view> const &values) {
    fileFunction_.assign(values.begin(), values.end());
    if (values.empty()) return;
    const std::string kind = uppered(values[0]);
    filePlated_ = platedByWord(kind);
    isMixed_ = kind == "MIXEDPLATING";
    fromLayer_ = layerNumber(values, 1);
    toLayer_ = layerNumber(values, 2);
}

void DrillComments::readAperFunction(std::vector<std::string_view> const &values) {
    nextPlated_.reset();
    nextFunction_.clear();
    for (std::string_view value : values) {
        const std::optional<bool> plated = platedByWord(uppered(value));
        if (plated) {
            nextPlated_ = plated;
        } else {
            if (nextFunction_.empty()) nextFunction_ = value;
        }
    }
}

// The words say which zeros are left out, while those of a header say which are kept.
void DrillComments::readFormatWord(std::string_view word) {
    double scale = 1.0;
    if (contains(word, "LEADING")) {
        numbers_.zeros = Zeros::LeadingOmitted;
    } else if (contains(word, "TRAILING")) {
        numbers_.zeros = Zeros::TrailingOmitted;
    } else if (word == "KEEP ZEROS" || word == "NONE" || word == "NO ZERO SUPPRESSION") {
        numbers_.zeros = Zeros::AllKept;
    } else {
        readUnitWord(word, numbers_.unit, scale);
    }
}

// "FILE_FORMAT=2:4", "FORMAT={3:3/ absolute / metric / suppress trailing zeros}",
// "Format  : 3.3 / Absolute / MM / Leading".
bool DrillComments::readFormat(std::string const &text) {
    std::string_view rest = text;
    if (startsWith(rest, "FILE_")) rest.remove_prefix(5);
    if (!startsWith(rest, "FORMAT")) return false;
    rest.remove_prefix(6);
    const std::size_t start = rest.find_first_not_of(" \t=:{");
    if (start == std::string_view::npos || start == 0) return false;
    rest = rest.substr(start);
    if (!rest.empty() && rest.back() == '}') rest.remove_suffix(1);
    const std::vector<std::string_view> words = split(rest, "/");
    if (words.empty()) return false;
    readDigits(words[0], numbers_.integerDigits, numbers_.decimalDigits);
    for (std::string_view word : words)
        readFormatWord(word);
    return true;
}

// "TYPE=PLATED", for the tools after it.
bool DrillComments::readType(std::string const &text) {
    if (!startsWith(text, "TYPE=") && !startsWith(text, "TYPE =")) return false;
    const std::optional<bool> plated =
        platedByWord(trimmed(std::string_view(text).substr(text.find('=') + 1)));
    if (!plated) return false;
    nextPlated_ = plated;
    (*plated ? hasPlatedType_ : hasNonPlatedType_) = true;
    return true;
}

// "T01 Holesize 1. = 0.330200 Tolerance = +0.000000/-0.000000 PLATED MM Quantity = 668",
// "Holesize 2 = 0.0360 inch".
bool DrillComments::readHoleSize(std::string const &text) {
    const std::size_t found = text.find("HOLESIZE");
    const std::size_t equals = found == std::string::npos ? found : text.find('=', found);
    if (equals == std::string::npos) return false;
    double number = 0.0;
    int tool = text[0] == 'T' ? integerOf(std::string_view(text).substr(1, text.find(' ') - 1)) : -1;
    if (tool < 0 &&
        readDecimal(trimmed(std::string_view(text).substr(found + 8, equals - found - 8)), number))
        tool = number >= 0.0 && number < 1e6 ? static_cast<int>(number) : -1;
    const std::vector<std::string_view> words = split(std::string_view(text).substr(equals + 1), " \t");
    Tool made;
    if (tool < 0 || words.empty() || !readDecimal(words[0], made.size) || !(made.size > 0.0)) return false;
    double scale = 1.0;
    for (std::string_view word : words) {
        readUnitWord(word, made.unit, scale);
        if (const std::optional<bool> plated = platedByWord(word)) made.plated = plated;
    }
    made.size *= scale;
    tools_[tool] = made;
    return true;
}

// "Contents: Thru / Drill / Non-Plated", "Layer: Drill NPTH".
bool DrillComments::readContents(std::string const &text) {
    if (!startsWith(text, "CONTENTS") && !startsWith(text, "LAYER:")) return false;
    for (std::string_view word : split(text, " /:\t"))
        if (const std::optional<bool> plated = platedByWord(word)) filePlated_ = plated;
    return true;
}

std::optional<bool> DrillComments::plated() const {
    if (filePlated_ || isMixed_) return filePlated_;
    if (hasPlatedType_ != hasNonPlatedType_) return hasPlatedType_;
    return std::nullopt;
}

} // namespace EDA::Fabrication
