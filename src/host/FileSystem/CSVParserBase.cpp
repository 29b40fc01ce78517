// Finding the rows of a text.
#include "host/FileSystem/CSVParserBase.h"

#include "host/FileSystem/CSVTokens.h"
#include "host/FileSystem/Limits.h"

#include <cstring>
#include <utility>

namespace FileSystem {

namespace {

constexpr std::size_t rowsPerMark = 64;

} // namespace

CSVParserBase::RowIterator::RowIterator(const CSVParserBase *parser, std::size_t from) : parser_(parser) {
    findRow(from);
}

// The row is not copied: a copy that only looks at where it is, or walks on, needs none.
CSVParserBase::RowIterator &CSVParserBase::RowIterator::operator=(const RowIterator &other) {
    if (this == &other) return *this;
    parser_ = other.parser_;
    begin_ = other.begin_;
    end_ = other.end_;
    filled_ = false;
    return *this;
}

CSVParserBase::RowIterator::reference CSVParserBase::RowIterator::operator*() const {
    if (!filled_ && begin_ != atEnd) {
        splitLine(parser_->line(begin_, end_), parser_->rules_, row_);
        filled_ = true;
    } else if (begin_ == atEnd) {
        row_.clear();
    }
    return row_;
}

CSVParserBase::RowIterator &CSVParserBase::RowIterator::operator++() {
    if (begin_ != atEnd) findRow(end_ + 1);
    return *this;
}

void CSVParserBase::RowIterator::findRow(std::size_t from) {
    filled_ = false;
    begin_ = atEnd;
    const std::size_t size = parser_->text_.size();
    while (from < size) {
        const std::size_t end = parser_->lineEndFrom(from);
        if (parser_->isRow(parser_->line(from, end))) {
            begin_ = from;
            end_ = end;
            return;
        }
        from = end + 1;
    }
}

std::string CSVParserBase::getValue(std::size_t row, std::size_t column) const {
    if (row >= numRows_) return {};
    RowIterator iterator(this, marks_[row / rowsPerMark]);
    for (std::size_t i = row % rowsPerMark; i > 0; --i)
        ++iterator;
    return column < iterator->size() ? (*iterator)[column] : std::string();
}

CSVParserBase::RowIterator CSVParserBase::beginRows() const { return {this, first_}; }

bool CSVParserBase::setText(std::string text) {
    clearRows();
    text_ = std::move(text);
    RowIterator row(this, 0);
    if (rules_.skipTitleRow) {
        ++row;
        first_ = row == endRows() ? text_.size() : row.begin_;
    }
    for (; row != endRows(); ++row, ++numRows_) {
        if (numRows_ % rowsPerMark == 0) marks_.push_back(row.begin_);
        if (isWithinLimits(line(row.begin_, row.end_))) continue;
        clearRows();
        return false;
    }
    return true;
}

void CSVParserBase::clearRows() {
    text_.clear();
    text_.shrink_to_fit();
    marks_.clear();
    first_ = 0;
    numRows_ = 0;
}

std::string_view CSVParserBase::line(std::size_t begin, std::size_t end) const {
    return std::string_view(text_).substr(begin, end - begin);
}

std::size_t CSVParserBase::lineEndFrom(std::size_t begin) const {
    const void *found = std::memchr(text_.data() + begin, rules_.lineEnd, text_.size() - begin);
    if (found == nullptr) return text_.size();
    return static_cast<std::size_t>(static_cast<const char *>(found) - text_.data());
}

bool CSVParserBase::isWithinLimits(std::string_view line) const {
    if (line.size() > maxLineLength) return false;
    return line.size() < maxRowTokens || countTokens(line, rules_) <= maxRowTokens;
}

bool CSVParserBase::isRow(std::string_view line) const {
    const LineKind kind = lineKind(line, rules_);
    return kind == LineKind::Row || (kind == LineKind::Blank && !rules_.dropBlankRows);
}

} // namespace FileSystem
