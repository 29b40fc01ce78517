// The statements of a layer file, one by one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace EDA::Fabrication {

// One statement, without its end. Line ends inside of it are gone, blanks are kept: names may hold them.
struct Word {
    std::string_view text; // good until the next one is taken
    std::size_t line = 0;  // of its first character, from 1
    bool isCut = false;    // the file ended before the statement did
};

// Where statements start and end does not depend on whether blocks of extended commands are opened and closed
// as they should be: what a statement is can be told by its first two characters.
class StatementLexer {
public:
    explicit StatementLexer(std::string_view bytes);

    // False at the end of the file. Statements longer than the limit are skipped and counted.
    bool next(Word &word);

    // Whether a block of extended commands ends or starts before the next statement.
    bool isAtBlockEdge();

    // The first character of the next statement; NUL at the end of the file.
    char peek() {
        skipFill(false);
        return at_ == end_ ? '\0' : *at_;
    }

    std::size_t position() const { return static_cast<std::size_t>(at_ - begin_); }
    // How many statements ended with their block rather than with an end of their own; the line of the first.
    std::size_t numWithoutEnd() const { return numWithoutEnd_; }
    std::size_t lineWithoutEnd() const { return lineWithoutEnd_; }
    std::size_t numTooLong() const { return numTooLong_; }

private:
    void skipFill(bool stopAtEdge);
    bool take(Word &word);
    const char *findEnd(bool &isBroken);
    const char *findCommentEnd(bool &isBroken);
    void breakLine(const char *at);

    const char *begin_;
    const char *at_;
    const char *end_;
    std::size_t line_ = 1;
    std::size_t numWithoutEnd_ = 0;
    std::size_t lineWithoutEnd_ = 0;
    std::size_t numTooLong_ = 0;
    std::string joined_; // the statement, where it is spread over lines
};

// Whether the statement is a comment: "G04 text", also as G4 or G004. `text` is set to what follows the code.
bool isComment(std::string_view statement, std::string_view &text);

// Whether the statement is an extended command, which starts with two letters. None starts with the letter of
// a code that stands first in statements, so that a code without its number is not taken for one.
inline bool isExtended(std::string_view statement) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    constexpr std::string_view codes = "XYGDNxygdn";
    return statement.size() >= 2 && isLetter(statement[0]) && isLetter(statement[1]) &&
           codes.find(statement[0]) == std::string_view::npos;
}

} // namespace EDA::Fabrication
