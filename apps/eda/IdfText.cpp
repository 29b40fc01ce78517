// Texts as the rows of IDF files can hold them.
#include "IdfText.h"

#include "text/Encoding.h"

#include <algorithm>
#include <string_view>

namespace EDATool {

namespace {

constexpr char comment = '#';                     // at the start of a word, up to the end of the row
constexpr const char *unfitInQuotes = "\"\t\r\n"; // the writer replaces these
constexpr const char *unfitInWord = " \"\t\r\n";

bool hasWideCharacter(std::string_view text) {
    for (;;) {
        text.remove_prefix(EDA::asciiPrefix(text));
        if (text.empty()) return false;
        const EDA::Utf8Character character = EDA::firstCharacter(text);
        if (character.size > 0 && character.codePoint > 0xFF) return true;
        text.remove_prefix(std::max<std::size_t>(character.size, 1));
    }
}

} // namespace

const std::string &checkedText(const std::string &text, IdfNotices &notices) {
    if (hasWideCharacter(text)) notices.add(IdfLoss::Characters);
    if (text.find_first_of(unfitInQuotes) != std::string::npos) notices.add(IdfLoss::Quotes);
    return text;
}

std::string encodedText(const std::string &text, IdfNotices &notices) {
    return EDA::utf8ToLatin1(checkedText(text, notices));
}

bool isWord(const std::string &text) {
    return !text.empty() && text.front() != comment && text.find_first_of(unfitInWord) == std::string::npos;
}

std::string propertyKey(const std::string &key, IdfNotices &notices) {
    if (hasWideCharacter(key)) notices.add(IdfLoss::Characters);
    if (key.empty() || isWord(key)) return key;
    notices.add(IdfLoss::PropertyKeys);
    std::string word = key;
    for (std::size_t i = word.find_first_of(unfitInWord); i != std::string::npos;
         i = word.find_first_of(unfitInWord, i))
        word[i] = '_';
    if (word.front() == comment) word.front() = '_';
    return word;
}

std::string propertyValue(const std::string &value, IdfNotices &notices) {
    std::string text = checkedText(value, notices);
    // Without a blank the value stands bare, where a quote in front would be taken for an opening one.
    std::replace(text.begin(), text.end(), '"', '\'');
    const bool isBare = text.find_first_of(" \t\r\n") == std::string::npos;
    return isBare && !isWord(text) ? std::string() : text;
}

} // namespace EDATool
