// Rows of an IDF file on their way to its stream.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace EDA {

// Collects rows and writes them to the stream when they are many, at `flush` and at the end. Nothing that a
// text holds ends its row: line ends become blanks.
class IDFRows {
public:
    explicit IDFRows(std::ostream &stream) : stream_(stream) {}
    ~IDFRows() { flush(); }
    IDFRows(IDFRows const &) = delete;
    IDFRows &operator=(IDFRows const &) = delete;

    // Text of the writer itself.
    IDFRows &add(std::string_view text);
    IDFRows &add(char c) {
        *room(1) = c;
        ++size_;
        return *this;
    }

    // A number in the six digits of a stream's default format.
    IDFRows &add(double value);
    IDFRows &add(int value);

    // Text without quotes; a tab, which divides it like a blank, becomes one.
    IDFRows &addBare(std::string_view text);

    // Text between quotes. A quote in it would end it early and becomes an apostrophe.
    IDFRows &addQuoted(std::string_view text);

    void endRow();

    // To be called before others write to the stream.
    void flush();

private:
    // At least this many characters behind the rows.
    char *room(std::size_t size) {
        if (buffer_.size() - size_ < size) grow(size);
        return buffer_.data() + size_;
    }
    void grow(std::size_t size);
    void addClean(std::string_view text, bool isQuoted);

    static constexpr std::size_t startSize = 256; // enough for most outlines
    static constexpr std::size_t flushSize = 16 * 1024;

    std::ostream &stream_;
    std::string buffer_ = std::string(startSize, '\0');
    std::size_t size_ = 0; // of the rows in the buffer
};

} // namespace EDA
