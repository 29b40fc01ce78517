// Tables of tools in reports.
#include "fabrication/drills/DrillComments.h"
#include "fabrication/drills/DrillFile.h"
#include "fabrication/drills/DrillText.h"

#include <algorithm>

namespace EDA::Fabrication {

using namespace DrillText;

namespace {

struct Row {
    int tool = 0;
    double size = 0.0;
    Unit unit = Unit::Unknown;
    std::optional<bool> plated;
};

// "12MIL" or "0.3048MM)": a number with its unit behind it.
bool readSize(std::string_view word, double &size, Unit &unit) {
    while (!word.empty() && !isDigit(word[0]) && word[0] != '.')
        word.remove_prefix(1);
    std::size_t end = 0;
    while (end < word.size() && (isDigit(word[end]) || word[end] == '.'))
        ++end;
    if (!readDecimal(word.substr(0, end), size)) return false;
    std::string_view rest = word.substr(end);
    while (!rest.empty() && !isLetter(rest.back()) && rest.back() != '"')
        rest.remove_suffix(1);
    double scale = 1.0;
    if (readUnitWord(rest, unit, scale)) {
        size *= scale;
        return true;
    }
    return rest.empty();
}

// "T1", "T01C0.3" gives 1; -1: no tool.
int readTool(std::string_view word) {
    if (word.size() < 2 || word[0] != 'T' || !isDigit(word[1])) return -1;
    const std::string_view rest = word.substr(1);
    const std::size_t end = std::min(rest.find_first_not_of("0123456789"), rest.size());
    const char next = end < rest.size() ? rest[end] : ' ';
    if (next != ' ' && next != 'C' && next != 'F' && next != ':' && next != '.') return -1;
    return integerOf(rest);
}

class TableReader {
public:
    void take(std::string_view line);
    std::map<int, DrillTool> finished() const;

private:
    bool takeHeading(std::string_view line);
    void takeRow(std::vector<std::string_view> const &words);
    bool takeDefinition(std::string_view word, Row &row) const;
    bool takeSize(std::vector<std::string_view> const &words, Row &row) const;

    std::vector<Row> rows_;
    Unit tableUnit_ = Unit::Unknown;
    double tableScale_ = 1.0;
    bool inTable_ = false;
    DrillComments comments_;
};

// A line that names the columns: "Tool  Size (mm)  Count". Also a line that names a unit: "Units: inch".
bool TableReader::takeHeading(std::string_view line) {
    const bool isHeading = contains(line, "TOOL") && (contains(line, "SIZE") || contains(line, "DIA"));
    const bool isUnit = contains(line, "UNIT") || startsWith(line, "METRIC") || startsWith(line, "INCH");
    if (!isHeading && !isUnit) return false;
    for (std::string_view word : split(line, " \t,:;|()[]="))
        readUnitWord(word, tableUnit_, tableScale_);
    inTable_ = inTable_ || isHeading;
    return true;
}

// "T01F00S00C0.3" in a drill file or a copy of its header.
bool TableReader::takeDefinition(std::string_view word, Row &row) const {
    const std::size_t found = word.find('C');
    if (found == std::string_view::npos) return false;
    std::string_view size = word.substr(found + 1);
    size = size.substr(0, size.find_first_not_of("0123456789."));
    return readDecimal(size, row.size);
}

// The first number with a unit, else the first with a decimal point.
bool TableReader::takeSize(std::vector<std::string_view> const &words, Row &row) const {
    for (std::size_t i = 1; i < words.size(); ++i) {
        Unit unit = Unit::Unknown;
        double size = 0.0, scale = 1.0;
        if (!readSize(words[i], size, unit) || !(size > 0.0)) continue;
        if (unit == Unit::Unknown && i + 1 < words.size() && readUnitWord(words[i + 1], unit, scale))
            size *= scale;
        const bool hasUnit = unit != Unit::Unknown;
        if (!hasUnit && !contains(words[i], ".")) {
            // A whole number is a size in a table in mils, or directly behind the tool of one in a known
            // unit.
            if (!inTable_ || i != 1 || tableUnit_ == Unit::Unknown) continue;
        }
        row.unit = hasUnit ? unit : tableUnit_;
        row.size = hasUnit ? size : size * tableScale_;
        return true;
    }
    return false;
}

void TableReader::takeRow(std::vector<std::string_view> const &words) {
    Row row;
    row.tool = readTool(words[0]);
    if (row.tool < 0 && inTable_ && words[0].find_first_not_of("0123456789") == std::string_view::npos)
        row.tool = integerOf(words[0]);
    if (row.tool <= 0) return;
    if (takeDefinition(words[0], row)) {
        row.unit = tableUnit_;
        row.size *= tableScale_;
    } else if (!takeSize(words, row)) {
        return;
    }
    for (std::string_view word : words)
        if (const std::optional<bool> plated = platedByWord(word)) row.plated = plated;
    constexpr std::size_t mostRows = 10'000;
    if (row.size > 0.0 && row.size < 1e4 && rows_.size() < mostRows) rows_.push_back(row);
}

void TableReader::take(std::string_view line) {
    constexpr std::size_t longestLine = 1000;
    if (line.empty() || line.size() > longestLine) return;
    if (line[0] == ';') line = trimmed(line.substr(1));
    const std::string text = uppered(line);
    if (contains(text, "HOLESIZE") && contains(text, "=")) return comments_.read(text);
    if (takeHeading(text)) return;
    const std::vector<std::string_view> words = split(text, " \t|,;");
    if (!words.empty()) takeRow(words);
}

// A size without a unit is in inches where drills would be thinner than a hair otherwise.
Unit unitOf(std::vector<Row> const &rows) {
    double thickest = 0.0;
    for (Row const &row : rows)
        if (row.unit == Unit::Unknown) thickest = std::max(thickest, row.size);
    return thickest < 0.25 ? Unit::Inch : Unit::Millimetre;
}

std::map<int, DrillTool> TableReader::finished() const {
    std::map<int, DrillTool> result;
    const Unit fallback = unitOf(rows_);
    for (Row const &row : rows_) {
        DrillTool &tool = result[row.tool];
        tool.diameter = row.size * millimetresOf(row.unit == Unit::Unknown ? fallback : row.unit);
        tool.plated = row.plated;
    }
    for (auto const &[number, told] : comments_.tools()) {
        if (number <= 0) continue;
        DrillTool &tool = result[number];
        const Unit unit = told.unit != Unit::Unknown    ? told.unit
                          : tableUnit_ != Unit::Unknown ? tableUnit_
                          : told.size < 0.25            ? Unit::Inch
                                                        : Unit::Millimetre;
        if (!(tool.diameter > 0.0)) tool.diameter = told.size * millimetresOf(unit);
        if (!tool.plated) tool.plated = told.plated;
    }
    return result;
}

} // namespace

std::map<int, DrillTool> readToolTable(std::string_view bytes) {
    std::string storage;
    TableReader reader;
    Lines lines(decoded(bytes, storage));
    while (lines.next())
        reader.take(lines.line());
    return reader.finished();
}

} // namespace EDA::Fabrication
