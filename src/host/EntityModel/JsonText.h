// Puts JSON text together, fast.
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>

namespace EntityModel {

// Collects text in one block, which goes to a stream or to a text when it is full and at flush().
class JsonText {
public:
    explicit JsonText(std::ostream &target) : stream_(&target) {}
    explicit JsonText(std::string &target) : text_(&target) {}
    JsonText(const JsonText &) = delete;
    JsonText &operator=(const JsonText &) = delete;

    void raw(char c) { *room(1) = c, ++size_; }

    void raw(std::string_view text) {
        if (text.size() > block_.size()) {
            flush();
            handOn(text);
            return;
        }
        std::memcpy(room(text.size()), text.data(), text.size());
        size_ += text.size();
    }

    void newLine(int indent) {
        raw('\n');
        for (int i = 0; i < indent; ++i)
            raw(' ');
    }

    // A string of valid UTF-8.
    void string(std::string_view text) {
        raw('"');
        size_t done = 0;
        for (size_t i = 0; i < text.size(); ++i) {
            if (!needsEscape(text[i])) continue;
            raw(text.substr(done, i - done));
            escape(text[i]);
            done = i + 1;
        }
        raw(done == 0 ? text : text.substr(done));
        raw('"');
    }

    template <typename Integer> void integer(Integer value) {
        char *const from = room(numberSize);
        size_ += static_cast<size_t>(std::to_chars(from, from + numberSize, value).ptr - from);
    }

    // The shortest digits that read back as the same number.
    void number(double value) {
        if (value == 0.0) {
            // As a whole number, -0 would lose its sign with many readers.
            raw(std::signbit(value) ? std::string_view("-0.0") : std::string_view("0"));
            return;
        }
        char *const from = room(numberSize);
        size_ += static_cast<size_t>(std::to_chars(from, from + numberSize, value).ptr - from);
    }

    void flush() {
        handOn(std::string_view(block_.data(), size_));
        size_ = 0;
    }

private:
    static constexpr size_t numberSize = 32;

    static bool needsEscape(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\'; }

    char *room(size_t bytes) {
        if (block_.size() - size_ < bytes) flush();
        return block_.data() + size_;
    }

    void handOn(std::string_view text) {
        if (stream_) {
            stream_->write(text.data(), static_cast<std::streamsize>(text.size()));
        } else {
            text_->append(text);
        }
    }

    void escape(char c) {
        static constexpr std::string_view hex = "0123456789abcdef";
        switch (c) {
        case '"':
            return raw(std::string_view("\\\""));
        case '\\':
            return raw(std::string_view("\\\\"));
        case '\n':
            return raw(std::string_view("\\n"));
        case '\r':
            return raw(std::string_view("\\r"));
        case '\t':
            return raw(std::string_view("\\t"));
        default:
            raw(std::string_view("\\u00"));
            raw(hex[static_cast<unsigned char>(c) >> 4]);
            raw(hex[static_cast<unsigned char>(c) & 15]);
        }
    }

    std::ostream *stream_ = nullptr;
    std::string *text_ = nullptr;
    size_t size_ = 0;
    std::array<char, size_t{1} << 16> block_;
};

} // namespace EntityModel
