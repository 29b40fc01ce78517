// Filter texts of file kinds.
#include "host/FileSystem/FileFormats.h"

#include <algorithm>

namespace FileSystem {

namespace {

void appendJoined(std::string &text, const std::string &more, const char *joint) {
    if (!text.empty()) text += joint;
    text += more;
}

} // namespace

void FileFormats::addFormats(const std::string &description, const std::vector<std::string> &patterns) {
    auto kind = std::find_if(kinds_.begin(), kinds_.end(),
                             [&](const Kind &k) { return k.description == description; });
    if (kind == kinds_.end()) kind = kinds_.insert(kinds_.end(), Kind{description, {}});
    for (const std::string &pattern : patterns) {
        auto &known = kind->patterns;
        if (std::find(known.begin(), known.end(), pattern) == known.end()) known.push_back(pattern);
    }
}

std::string FileFormats::getFormats(bool withPatterns, const std::set<std::string> &leaveOut) const {
    std::string text;
    for (const Kind &kind : kinds_) {
        std::string patterns;
        for (const std::string &pattern : kind.patterns)
            if (leaveOut.count(pattern) == 0) appendJoined(patterns, pattern, " ");
        if (patterns.empty()) continue;
        appendJoined(text, withPatterns ? kind.description + " (" + patterns + ")" : kind.description, ";;");
    }
    return text;
}

void FileFormats::getAllFormats(std::set<std::string> &patterns) const {
    for (const Kind &kind : kinds_)
        patterns.insert(kind.patterns.begin(), kind.patterns.end());
}

} // namespace FileSystem
