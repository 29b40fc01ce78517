// Tokens and extensions of file names.
#include "host/FileSystem/Path.h"

#include <cstddef>

namespace FileSystem {

namespace {

constexpr const char *separators = "/\\";

// Where the last token begins and ends; begin == end when there is none.
struct TokenRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

TokenRange lastToken(const std::string &path) {
    const std::size_t last = path.find_last_not_of(separators);
    if (last == std::string::npos) return {};
    const std::size_t separator = path.find_last_of(separators, last);
    return {separator == std::string::npos ? 0 : separator + 1, last + 1};
}

// Where the dot of the extension stands, or the end of the path. A path that ends in a separator names a
// folder's content and has no extension, so that nothing behind the dot is lost.
std::size_t extensionDot(const std::string &path) {
    const TokenRange token = lastToken(path);
    const std::size_t dot = path.rfind('.');
    const bool inToken = token.end == path.size() && dot != std::string::npos && dot > token.begin;
    const bool isDotDot = path.compare(token.begin, std::string::npos, "..") == 0;
    return inToken && !isDotDot ? dot : path.size();
}

// Length of "/", "\\", "C:" or "C:/" at the start.
std::size_t rootSize(const std::string &path) {
    const std::size_t drive = path.size() > 1 && path[1] == ':' ? 2 : 0;
    const std::size_t end = path.find_first_not_of(separators, drive);
    return end == std::string::npos ? path.size() : end;
}

} // namespace

std::string Path::getLastToken(const std::string &path) {
    const TokenRange token = lastToken(path);
    return path.substr(token.begin, token.end - token.begin);
}

std::string Path::stripLastToken(const std::string &path) {
    const std::size_t root = rootSize(path);
    const std::size_t begin = lastToken(path).begin;
    if (begin <= root) return path.substr(0, root);
    const std::size_t last = path.find_last_not_of(separators, begin - 1);
    return path.substr(0, last + 1);
}

std::vector<std::string> Path::getTokens(const std::string &path) {
    std::vector<std::string> tokens;
    std::size_t begin = path.find_first_not_of(separators);
    while (begin != std::string::npos) {
        const std::size_t end = path.find_first_of(separators, begin);
        tokens.push_back(path.substr(begin, end - begin));
        begin = path.find_first_not_of(separators, end);
    }
    return tokens;
}

std::string Path::getExtension(const std::string &path, bool withDot) {
    const std::size_t dot = extensionDot(path);
    if (dot == path.size()) return {};
    return path.substr(withDot ? dot : dot + 1);
}

std::string Path::getFormatExtension(const std::string &path, bool lowerCase) {
    std::string extension = getExtension(path, false);
    if (!lowerCase) return extension;
    for (char &c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return extension;
}

std::string Path::stripExtension(const std::string &path) { return path.substr(0, extensionDot(path)); }

} // namespace FileSystem
