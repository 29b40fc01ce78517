// Texts as the rows of IDF files can hold them.
#pragma once

#include "IdfNotices.h"

#include <string>

namespace EDATool {

// Text that goes between quotes: counts what the writer has to replace, and gives the text as it is. For the
// texts that the writer encodes itself.
const std::string &checkedText(const std::string &text, IdfNotices &notices);

// The same for texts that the writer takes as they are: gives them in the encoding of the others, since a
// file has one encoding.
std::string encodedText(const std::string &text, IdfNotices &notices);

// True for text that is one word of a row without quotes around it.
bool isWord(const std::string &text);

// The name of a property as one word: "_" stands for what would divide it.
std::string propertyKey(const std::string &key, IdfNotices &notices);

// The value of a property; empty where a row cannot hold it.
std::string propertyValue(const std::string &value, IdfNotices &notices);

} // namespace EDATool
