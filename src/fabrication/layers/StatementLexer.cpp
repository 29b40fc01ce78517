// Statements end with '*'; '%' stands around blocks of extended commands.
#include "fabrication/layers/StatementLexer.h"

#include "fabrication/Limits.h"

#include <algorithm>
#include <array>

namespace EDA::Fabrication {

namespace {

constexpr std::array<bool, 256> makeStops() {
    std::array<bool, 256> stops{};
    for (const unsigned char c : {'*', '%', '\n', '\r'})
        stops[c] = true;
    return stops;
}

constexpr std::array<bool, 256> stops = makeStops();

bool isBreak(char c) { return c == '\n' || c == '\r'; }

bool isFill(char c) { return static_cast<unsigned char>(c) <= ' ' || c == '*'; }

std::string_view withoutMark(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return bytes.substr(0, mark.size()) == mark ? bytes.substr(mark.size()) : bytes;
}

} // namespace

StatementLexer::StatementLexer(std::string_view bytes)
    : begin_(withoutMark(bytes).data()), at_(begin_), end_(bytes.data() + bytes.size()) {}

// A line ends with LF, CRLF or CR.
void StatementLexer::breakLine(const char *at) {
    if (*at == '\n' || at + 1 == end_ || at[1] != '\n') ++line_;
}

void StatementLexer::skipFill(bool stopAtEdge) {
    for (; at_ != end_ && (isFill(*at_) || *at_ == '%'); ++at_) {
        if (*at_ == '%' && stopAtEdge) return;
        if (isBreak(*at_)) breakLine(at_);
    }
}

bool StatementLexer::isAtBlockEdge() {
    skipFill(true);
    return at_ == end_ || *at_ == '%';
}

const char *StatementLexer::findEnd(bool &isBroken) {
    for (const char *at = at_;; ++at) {
        while (at != end_ && !stops[static_cast<unsigned char>(*at)])
            ++at;
        if (at == end_ || !isBreak(*at)) return at;
        isBroken = true;
        breakLine(at);
    }
}

// A percent sign is a part of the comment, except at the start of a line: there the end was forgotten.
const char *StatementLexer::findCommentEnd(bool &isBroken) {
    bool isLineStart = false;
    for (const char *at = at_; at != end_; ++at) {
        if (*at == '*' || (*at == '%' && isLineStart)) return at;
        if (isBreak(*at)) {
            isBroken = isLineStart = true;
            breakLine(at);
        } else if (static_cast<unsigned char>(*at) > ' ') {
            isLineStart = false;
        }
    }
    return end_;
}

bool StatementLexer::next(Word &word) {
    for (;;) {
        skipFill(false);
        if (at_ == end_) return false;
        if (take(word)) return true;
        ++numTooLong_;
    }
}

bool StatementLexer::take(Word &word) {
    word.line = line_;
    bool isBroken = false;
    std::string_view comment;
    const std::string_view head(at_, std::min<std::size_t>(static_cast<std::size_t>(end_ - at_), 16));
    const char *end = isComment(head, comment) ? findCommentEnd(isBroken) : findEnd(isBroken);
    word.text = std::string_view(at_, static_cast<std::size_t>(end - at_));
    word.isCut = end == end_;
    if (!word.isCut && *end == '%' && numWithoutEnd_++ == 0) lineWithoutEnd_ = word.line;
    at_ = end;
    if (word.text.size() > Limits::statement) return false;
    if (isBroken) {
        joined_.assign(word.text);
        joined_.erase(std::remove_if(joined_.begin(), joined_.end(), isBreak), joined_.end());
        word.text = joined_;
    }
    return true;
}

bool isComment(std::string_view statement, std::string_view &text) {
    if (statement.empty() || (statement[0] != 'G' && statement[0] != 'g')) return false;
    std::size_t at = 1;
    while (at < statement.size() && statement[at] == '0')
        ++at;
    if (at >= statement.size() || statement[at] != '4') return false;
    ++at;
    if (at < statement.size() && statement[at] >= '0' && statement[at] <= '9') return false;
    text = statement.substr(at);
    return true;
}

} // namespace EDA::Fabrication
