// Reads a text file as rows of tokens.
#pragma once

#include "host/FileSystem/CSVParserBase.h"

#include <string>

namespace FileSystem {

// A file with blanks between its tokens, runs of blanks counting once, quoted texts and comments:
//     CSVParser parser(' ', true, false, '\n', false);
//     parser.addSeparator('\t');
//     parser.setCommentCharacter('#');
//     if (!parser.parseFile(name, true, true, false)) ...
//     for (auto row = parser.beginRows(); row != parser.endRows(); ++row) use((*row)[0]);
//
// A file with a comma between its tokens, which are taken as they stand, quotes, blanks and all:
//     CSVParser parser(',', false, false, '\n', true);
//     parser.parseFile(name, false, true);
//
// Text. The tokens are UTF-8. A byte order mark is dropped; UTF-16 is known by its mark; a file that is not
// valid UTF-8 is taken as Latin-1. NUL characters are text like any other.
//
// Lines. With '\n' as line end, CR LF and a lone CR end a line too. With another line end, only that
// character does. A line end at the end of the file begins no further row.
//
// Comments. The comment character begins a comment only where a token begins, outside quotes: "A#1" is a
// token. The rest of the line is dropped. A line that is nothing but a comment never makes a row.
//
// Quotes. A token that begins with a double quote reaches to the next one, separators and all; what stands
// between that and the next separator belongs to it as it stands. "" is a token without text, and is kept.
// A quote that isn't closed ends with its line. Within a token a quote is text.
class CSVParser : public CSVParserBase {
public:
    //   separator        stands between tokens; an ASCII character
    //   mergeSeparators  true: a run of separators counts as one, and those at the start and the end of a
    //                    line don't count. false: there is a token, perhaps empty, between any two
    //   trimTokens       true: blanks and tabs around a token are dropped, but not those in its quotes
    //   lineEnd          ends a line; an ASCII character
    //   keepLastEmpty    true: a separator at the end of a line has an empty token after it. Without meaning
    //                    when separators are merged
    CSVParser(char separator, bool mergeSeparators, bool trimTokens, char lineEnd, bool keepLastEmpty);

    // Another character that separates tokens as the first does.
    void addSeparator(char separator);

    // There is no comment character until one is set; '\0' takes it away.
    void setCommentCharacter(char comment);

    // Replaces the rows by those of a file.
    //   quotes         true: quotes have a meaning; false: they are text
    //   dropBlankRows  true: a line without anything, or of merged separators alone, makes no row;
    //                  false: it makes a row without tokens
    //   skipTitleRow   true: the first row is left out
    // False, without rows, when the file can't be read, is larger than maxFileSize, has a line longer than
    // maxLineLength or a row of more than maxRowTokens tokens. A file without rows is no failure.
    bool parseFile(const std::string &filename, bool quotes = true, bool dropBlankRows = true,
                   bool skipTitleRow = false);

    // Why the last parseFile gave false: "name: reason". Else empty.
    const std::string &getError() const { return error_; }

private:
    std::string error_;
};

} // namespace FileSystem
