// Lines and statements of Gerber and drill files.
#include "readers/gerber/GerberLines.h"

#include <QString>

#include <algorithm>

namespace EDA {

namespace {

constexpr auto npos = std::string_view::npos;

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Blanks beyond ASCII are rare enough to leave them to Qt.
QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

bool isSimple(std::string_view line) {
    if (line.empty()) return true;
    if (isBlank(line.front()) || isBlank(line.back())) return false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (static_cast<unsigned char>(line[i]) >= 0x80) return false;
        if (isBlank(line[i]) && (line[i] != ' ' || line[i + 1] == ' ')) return false;
    }
    return true;
}

std::string simplified(std::string_view line) {
    if (!isAscii(line)) return toQString(line).simplified().toStdString();
    std::string text;
    for (char const c : line) {
        if (!isBlank(c)) {
            text += c;
        } else if (!text.empty() && text.back() != ' ') {
            text += ' ';
        }
    }
    if (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

// Where a block that starts at the text's start ends: behind its closing "%", or with the text.
std::size_t blockEnd(std::string_view text) {
    for (std::size_t end = text.find('%', 1); end != npos; end = text.find('%', end + 1)) {
        std::size_t const before = text.find_last_not_of(' ', end - 1);
        if (before != npos && text[before] == '*') return end + 1;
    }
    return text.size();
}

// Where the next block starts in a text that begins with none.
std::size_t blockStart(std::string_view text) {
    for (std::size_t start = text.find('%', 1); start != npos; start = text.find('%', start + 1)) {
        std::size_t const before = text.find_last_not_of(' ', start - 1);
        if (before != npos && text[before] == '*') return start;
    }
    return text.size();
}

} // namespace

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> splitText(std::string_view text, char separator, bool keepEmpty) {
    std::vector<std::string_view> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        std::size_t const end = std::min(text.find(separator, begin), text.size());
        if (keepEmpty || end > begin) parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

bool GerberLines::nextRaw(std::string_view &line) {
    std::string_view const text = text_;
    while (position_ < text.size()) {
        std::size_t const found =
            hasReturns_ ? text.find_first_of("\r\n", position_) : text.find('\n', position_);
        std::size_t const end = std::min(found, text.size());
        line = text.substr(position_, end - position_);
        position_ = end + 1;
        if (line.size() > maxSize_) ++numTooLong_;
        if (!line.empty() && line.size() <= maxSize_) return true;
    }
    return false;
}

bool GerberLines::next(std::string_view &line) {
    if (!nextRaw(line)) return false;
    if (!isSimple(line)) line = simplified_ = simplified(line);
    return true;
}

bool GerberStatements::next(std::string_view &statement) {
    for (;;) {
        if (!block_.empty()) {
            std::size_t const end = std::min(block_.find('*'), block_.size());
            std::string_view const part = block_.substr(0, end);
            block_.remove_prefix(std::min(end + 1, block_.size()));
            if (part.size() < 2) continue; // nothing, or the closing "%"
            extended_.assign(part.front() == '%' ? "" : "%").append(part).append("*%");
            statement = trimmed(extended_);
            return true;
        }
        if (!plain_.empty()) {
            std::size_t const end = std::min(plain_.find('*'), plain_.size());
            statement = trimmed(plain_.substr(0, end));
            plain_.remove_prefix(std::min(end + 1, plain_.size()));
            if (!statement.empty()) return true;
            continue;
        }
        if (rest_.empty()) return false;
        if (rest_.front() != '%') {
            std::size_t const end = blockStart(rest_);
            plain_ = rest_.substr(0, end);
            rest_.remove_prefix(end);
            continue;
        }
        std::string_view const block = takeBlock();
        bool const isMacro = startsWith(block, "%AM");
        if (!isMacro && std::count(block.begin(), block.end(), '*') >= 2) {
            block_ = block;
            continue;
        }
        statement = trimmed(block);
        return true;
    }
}

std::string_view GerberStatements::takeBlock() {
    std::size_t const end = blockEnd(rest_);
    std::string_view const block = rest_.substr(0, end);
    rest_.remove_prefix(end);
    while (!rest_.empty() && isBlank(rest_.front()))
        rest_.remove_prefix(1);
    return block;
}

} // namespace EDA
