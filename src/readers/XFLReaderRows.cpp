// What the sections of an XFL file share: stepping, fields, shapes as text, blocks, limits.
#include "readers/XFLReader.h"

#include "text/Text.h"

#include <algorithm>

namespace EDA {

namespace {

constexpr std::string_view blockBegin = "{";
constexpr std::string_view blockEnd = "}";

} // namespace

bool XFLReader::nextRow(RowIterator &row, const RowIterator &end) {
    const auto isComment = [](const Row &fields) {
        return !fields.empty() && !fields[0].empty() && fields[0].front() == '#';
    };
    do
        ++row;
    while (row != end && isComment(*row));
    return row != end;
}

bool XFLReader::nextRowOfSection(RowIterator &row, const RowIterator &end) {
    return nextRow(row, end) && field(*row, 0) != ".end";
}

const std::string &XFLReader::field(const Row &row, std::size_t index) {
    static const std::string empty;
    return index < row.size() ? row[index] : empty;
}

int XFLReader::intField(const Row &row, std::size_t index) { return parseInt(field(row, index), 0, 0); }

double XFLReader::lengthField(const Row &row, std::size_t index) const {
    return getScaledDimension(field(row, index));
}

double XFLReader::getScaledDimension(const std::string &field) const {
    return parseDouble(field, 0.0, 0.0) / scale_;
}

void XFLReader::readShape(Shape &shape, RowIterator &row, const RowIterator &end, std::size_t typeIndex,
                          std::size_t skip) {
    shape.type = field(*row, typeIndex);
    shape.parameters.clear();
    bool blockOpen = false;
    addParameters(shape, *row, typeIndex + skip + 1, blockOpen);
    while (blockOpen && nextRow(row, end))
        addParameters(shape, *row, 0, blockOpen);
}

// A flag and no depth: the first "}" closes, whatever opened within the block.
void XFLReader::addParameters(Shape &shape, const Row &row, std::size_t from, bool &blockOpen) {
    for (std::size_t i = from; i < row.size(); ++i) {
        if (row[i] == blockBegin)
            blockOpen = true;
        else if (row[i] == blockEnd)
            blockOpen = false;
        else if (take(state_.parameters, 1, limits_.parameters, "shape parameters"))
            shape.parameters.push_back(row[i]);
    }
}

void XFLReader::skipBlock(RowIterator &row, const RowIterator &end, std::size_t from) {
    bool blockOpen = false;
    for (std::size_t i = from; i < row->size(); ++i) {
        if ((*row)[i] == blockBegin) blockOpen = true;
        if ((*row)[i] == blockEnd) blockOpen = false;
    }
    while (blockOpen && nextRow(row, end))
        blockOpen = std::find(row->begin(), row->end(), blockEnd) == row->end();
}

bool XFLReader::take(Counter &counter, std::size_t count, std::size_t limit, const char *things) {
    if (counter.isFull) return false;
    if (count > limit - counter.used) {
        // Faults of the file have no message, but what is left out of a lawful one must not go unnoticed.
        counter.isFull = true;
        if (!error_.empty()) error_ += '\n';
        error_ += "More than " + std::to_string(limit) + ' ' + things + ": the others are left out.";
        return false;
    }
    counter.used += count;
    return true;
}

bool XFLReader::takePoints(std::size_t count) {
    return take(state_.points, count, limits_.points, "outline points");
}

bool XFLReader::takeItem() { return take(state_.items, 1, limits_.items, "items"); }

const std::string &XFLReader::takeText(const std::string &text) {
    static const std::string none;
    if (text.size() <= XFLReaderLimits::sharedTextStart) return text;
    const std::size_t size = text.size() - XFLReaderLimits::sharedTextStart;
    return take(state_.sharedText, size, limits_.sharedText, "bytes of shared names") ? text : none;
}

} // namespace EDA
