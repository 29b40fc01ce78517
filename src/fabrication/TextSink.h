// Where canonical text goes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace EDA::Fabrication {

// Takes text piece by piece: a file of the host, or a string in tests.
class TextSink {
public:
    virtual ~TextSink();
    virtual void write(std::string_view text) = 0;
};

// Gathers pieces and hands them on in large ones. Lengths are in millimetres.
class TextBuffer {
public:
    explicit TextBuffer(TextSink &sink) : sink_(sink) { text_.reserve(capacity); }
    // Hands on what is left.
    ~TextBuffer() { flush(); }
    TextBuffer(TextBuffer const &) = delete;
    TextBuffer &operator=(TextBuffer const &) = delete;

    void add(std::string_view text) {
        text_ += text;
        if (text_.size() >= capacity) flush();
    }
    void addInteger(std::int64_t value);
    // A coordinate in the one format of canonical files: millimetres with six decimals, no leading zeros, no
    // point. One that is not finite or beyond a hundred metres is cut to that.
    void addCoordinate(double millimetres);
    // A plain decimal number with up to six decimals: "0.3".
    void addNumber(double millimetres);
    void flush();

private:
    static constexpr std::size_t capacity = 1 << 16;

    TextSink &sink_;
    std::string text_;
};

} // namespace EDA::Fabrication
