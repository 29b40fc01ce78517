// Loading a file, and the parser's settings.
#include "host/FileSystem/CSVParser.h"

#include "host/FileSystem/File.h"
#include "host/FileSystem/Limits.h"
#include "host/FileSystem/NativePath.h"
#include "text/Encoding.h"

#include <string>
#include <utility>

namespace FileSystem {

namespace {

// Makes CR LF and a lone CR into a line feed, in place.
void unifyLineEnds(std::string &text) {
    std::size_t read = text.find('\r');
    if (read == std::string::npos) return;
    std::size_t written = read;
    for (; read < text.size(); ++read) {
        if (text[read] == '\r') {
            text[written++] = '\n';
            if (read + 1 < text.size() && text[read + 1] == '\n') ++read;
        } else {
            text[written++] = text[read];
        }
    }
    text.resize(written);
}

} // namespace

CSVParser::CSVParser(char separator, bool mergeSeparators, bool trimTokens, char lineEnd,
                     bool keepLastEmpty) {
    rules_.mergeSeparators = mergeSeparators;
    rules_.trimTokens = trimTokens;
    rules_.lineEnd = lineEnd;
    rules_.keepLastEmpty = keepLastEmpty;
    addSeparator(separator);
}

void CSVParser::addSeparator(char separator) {
    rules_.isSeparator[static_cast<unsigned char>(separator)] = true;
}

void CSVParser::setCommentCharacter(char comment) { rules_.comment = comment; }

bool CSVParser::parseFile(const std::string &filename, bool quotes, bool dropBlankRows, bool skipTitleRow) {
    rules_.quotes = quotes;
    rules_.dropBlankRows = dropBlankRows;
    rules_.skipTitleRow = skipTitleRow;
    error_.clear();
    std::string text;
    if (!File::readAll(filename, text, error_)) {
        setText({});
        return false;
    }
    text = EDA::decodedToUtf8(std::move(text));
    if (rules_.lineEnd == '\n') unifyLineEnds(text);
    if (setText(std::move(text))) return true;
    error_ = fileError(filename, "has a row of more than " + std::to_string(maxLineLength) + " bytes or " +
                                     std::to_string(maxRowTokens) + " fields");
    return false;
}

} // namespace FileSystem
