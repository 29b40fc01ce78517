// The token rules: separators, quotes, comments.
#include "host/FileSystem/CSVTokens.h"

#include <algorithm>

namespace FileSystem {

namespace {

constexpr char quote = '"';

bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

// Walks over the tokens of a line.
class Cutter {
public:
    Cutter(std::string_view line, const CSVRules &rules) : rest_(line), rules_(rules) {}

    // Whether another token follows. To be called once before each cut.
    bool more() {
        if (rules_.mergeSeparators) skipSeparators();
        const bool lastEmpty = afterSeparator_ && rules_.keepLastEmpty;
        return (!rest_.empty() || lastEmpty) && !startsComment();
    }

    // Takes the next token off the line: its text within quotes, if it has any, and the text after that,
    // which mostly is all of the token.
    void cut(std::string_view &quoted, std::string_view &plain) {
        if (rules_.trimTokens) skipBlanks();
        quoted = takeQuoted();
        std::size_t size = 0;
        while (size < rest_.size() && !isSeparator(rest_[size]))
            ++size;
        plain = rest_.substr(0, size);
        if (rules_.trimTokens) plain = trimmed(plain);
        afterSeparator_ = size < rest_.size() && !rules_.mergeSeparators;
        rest_.remove_prefix(std::min(size + 1, rest_.size()));
    }

private:
    bool isSeparator(char c) const { return rules_.isSeparator[static_cast<unsigned char>(c)]; }

    bool startsComment() const {
        return rules_.comment != '\0' && !rest_.empty() && rest_.front() == rules_.comment;
    }

    void skipSeparators() {
        while (!rest_.empty() && isSeparator(rest_.front()))
            rest_.remove_prefix(1);
    }

    void skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front()) && !isSeparator(rest_.front()))
            rest_.remove_prefix(1);
    }

    // An unclosed quote ends with its line.
    std::string_view takeQuoted() {
        if (!rules_.quotes || rest_.empty() || rest_.front() != quote) return {};
        rest_.remove_prefix(1);
        const std::size_t close = std::min(rest_.find(quote), rest_.size());
        const std::string_view text = rest_.substr(0, close);
        rest_.remove_prefix(std::min(close + 1, rest_.size()));
        return text;
    }

    std::string_view rest_;
    const CSVRules &rules_;
    bool afterSeparator_ = false; // a separator stood last, so that even nothing is a token
};

} // namespace

LineKind lineKind(std::string_view line, const CSVRules &rules) {
    if (rules.mergeSeparators)
        while (!line.empty() && rules.isSeparator[static_cast<unsigned char>(line.front())])
            line.remove_prefix(1);
    if (line.empty()) return LineKind::Blank;
    return rules.comment != '\0' && line.front() == rules.comment ? LineKind::Comment : LineKind::Row;
}

void splitLine(std::string_view line, const CSVRules &rules, std::vector<std::string> &row) {
    Cutter cutter(line, rules);
    std::string_view quoted, plain;
    std::size_t count = 0;
    while (cutter.more()) {
        cutter.cut(quoted, plain);
        if (count == row.size()) row.emplace_back();
        row[count].assign(quoted);
        row[count].append(plain);
        ++count;
    }
    row.resize(count);
}

std::size_t countTokens(std::string_view line, const CSVRules &rules) {
    Cutter cutter(line, rules);
    std::string_view quoted, plain;
    std::size_t count = 0;
    while (cutter.more()) {
        cutter.cut(quoted, plain);
        ++count;
    }
    return count;
}

} // namespace FileSystem
