// What the sections of an IDF file share: stepping, record sizes, outline points, the error text.
#include "readers/IDFReader.h"

#include "text/Text.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace EDA {

namespace {

std::string joined(const std::vector<std::string> &tokens) {
    std::string text;
    const char *blank = "";
    for (const std::string &token : tokens) {
        text.append(blank).append(token);
        blank = " ";
    }
    return text;
}

// How many points an edge becomes at the finest step of an outline; no arc becomes more than maxSteps.
std::size_t pointsOfEdge(double angle) {
    constexpr double step = 10.0;
    constexpr double maxSteps = 360.0;
    return 1 + static_cast<std::size_t>(std::min(std::fabs(angle) / step, maxSteps));
}

} // namespace

bool IDFReader::nextRow(RowIterator &row, const RowIterator &end) {
    if (row != end) ++row;
    return row != end;
}

void IDFReader::checkRecordSize(const RowIterator &row, const std::string &recordName, std::size_t size,
                                bool atLeast) {
    const Row &tokens = *row;
    if (tokens.size() == size || (atLeast && tokens.size() > size)) return;
    throw std::runtime_error(recordName + " has incorrect number of entries: <" + joined(tokens) + ">");
}

void IDFReader::readOutlineRows(RowIterator &row, const RowIterator &end, std::string_view endToken,
                                EDAOutline &outline) {
    for (; row != end; ++row) {
        const Row &tokens = *row;
        if (equalsIgnoreCase(tokens.front(), endToken)) return;
        if (tokens.size() == pointEntries) addPoint(outline, parseInt(tokens[0], 0, 0), tokens);
    }
}

void IDFReader::addPoint(EDAOutline &outline, int index, const Row &row) {
    if (state_.pointsDropped) return;
    const double angle = numberAt(row, 3);
    const std::size_t count = pointsOfEdge(angle);
    if (count > limits_.points - state_.points) {
        state_.pointsDropped = true;
        addError("More than " + std::to_string(limits_.points) + " outline points: the others are left out.");
        return;
    }
    state_.points += count;
    outline.addPoint(index, numberAt(row, 1), numberAt(row, 2), angle);
}

std::string IDFReader::textAt(const Row &row, std::size_t index) {
    return index < row.size() ? row[index] : std::string();
}

double IDFReader::numberAt(const Row &row, std::size_t index) {
    return index < row.size() ? parseDouble(row[index], 0, 0) : 0.0;
}

void IDFReader::addError(const std::string &text) {
    if (!error_.empty()) error_ += '\n';
    error_ += text;
}

} // namespace EDA
