// Cuts the text of a Gerber or drill file into lines and statements.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace EDA {

// The lines of a text that are not empty, one after the other. "\r\n", "\n" and "\r" end a line; a text
// without any is one line.
class GerberLines {
public:
    // A line of more than `maxSize` bytes is left out.
    explicit GerberLines(std::string text, std::size_t maxSize = static_cast<std::size_t>(-1))
        : text_(std::move(text)), maxSize_(maxSize), hasReturns_(text_.find('\r') != std::string::npos) {}

    // The next line without blanks at its ends and with single ones within. False at the end. The line is
    // valid until the next call.
    bool next(std::string_view &line);

    // The same as it stands in the text.
    bool nextRaw(std::string_view &line);

    std::size_t numTooLong() const { return numTooLong_; }

private:
    std::string text_;
    std::size_t maxSize_;
    bool hasReturns_; // most texts have none, and one character is found faster than two
    std::size_t numTooLong_ = 0;
    std::size_t position_ = 0;
    std::string simplified_;
};

// Cuts a text into statements as Gerber has them: plain ones end at "*"; extended ones stand between "%" and
// "%", and where a block holds several, each becomes a "%...*%" of its own, but for a macro, which stays
// whole. Each statement is trimmed; those that are empty are left out.
//
// A block that shares its text with others or with plain statements is known by its "%", which stands at the
// start of the text or right behind a "*" or a "%", and it goes on to the next "%" behind a "*".
class GerberStatements {
public:
    // The text must stay as it is while the statements are used.
    explicit GerberStatements(std::string_view text) : rest_(text) {}

    bool next(std::string_view &statement);

private:
    std::string_view takeBlock();

    std::string_view rest_;  // of the text
    std::string_view plain_; // rest of a run of plain statements
    std::string_view block_; // rest of a block of several extended statements
    std::string extended_;
};

std::string_view trimmed(std::string_view text);

// The parts of a text between separators, empty ones left out, or kept if asked for.
std::vector<std::string_view> splitText(std::string_view text, char separator, bool keepEmpty = false);

inline bool startsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}
inline bool endsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

} // namespace EDA
