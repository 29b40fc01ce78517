// The rows of a text table, made one at a time from the file's text.
#pragma once

#include "host/FileSystem/CSVRules.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace FileSystem {

// Keeps the text of one file and the place of every 64th row, nothing for a token: a row becomes strings when
// an iterator stands on it and is looked at. So the memory is that of the text, and a walk over all rows is
// linear.
class CSVParserBase {
public:
    using Row = std::vector<std::string>;

    // Stands on a row. May be copied and walked on as often as wanted (a copy is the way to look ahead), but
    // forward only. Formally an input iterator, since the row that * and -> give lives in the iterator: it
    // is valid until that iterator is moved, assigned to or destroyed, and a copy makes its own.
    // Every iterator ends with the parser and with its next parseFile.
    class RowIterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Row;
        using difference_type = std::ptrdiff_t;
        using pointer = const Row *;
        using reference = const Row &;

        RowIterator() = default;
        RowIterator(const RowIterator &other) { *this = other; }
        RowIterator &operator=(const RowIterator &other);
        ~RowIterator() = default;

        reference operator*() const;
        pointer operator->() const { return &**this; }

        // At the end nothing happens.
        RowIterator &operator++();

        friend bool operator==(const RowIterator &a, const RowIterator &b) { return a.begin_ == b.begin_; }
        friend bool operator!=(const RowIterator &a, const RowIterator &b) { return !(a == b); }

    private:
        friend class CSVParserBase;
        static constexpr std::size_t atEnd = static_cast<std::size_t>(-1);

        RowIterator(const CSVParserBase *parser, std::size_t from);
        void findRow(std::size_t from);

        const CSVParserBase *parser_ = nullptr;
        std::size_t begin_ = atEnd; // of the row's line in the text
        std::size_t end_ = 0;       // of the line, without its line end
        mutable bool filled_ = false;
        mutable Row row_;
    };

    std::size_t getNumberOfRows() const { return numRows_; }

    // The token of that row and column, both from 0; empty when there is none. Near enough to constant time,
    // but a walk over all rows is faster with iterators.
    std::string getValue(std::size_t row, std::size_t column) const;

    RowIterator beginRows() const;
    RowIterator endRows() const { return {}; }

protected:
    CSVParserBase() = default;
    CSVParserBase(const CSVParserBase &) = delete;
    CSVParserBase &operator=(const CSVParserBase &) = delete;
    ~CSVParserBase() = default;

    // Takes the text over and finds its rows. False, without rows, when a line is beyond the limits.
    bool setText(std::string text);

    CSVRules rules_;

private:
    std::string_view line(std::size_t begin, std::size_t end) const;
    bool isWithinLimits(std::string_view line) const;
    bool isRow(std::string_view line) const;
    std::size_t lineEndFrom(std::size_t begin) const;
    void clearRows();

    std::string text_;
    std::size_t first_ = 0; // where the first line that may be a row begins
    std::size_t numRows_ = 0;
    std::vector<std::size_t> marks_; // where rows 0, 64, 128, ... begin
};

} // namespace FileSystem
