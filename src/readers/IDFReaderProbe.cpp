// Recognising files in the form of IDF 4.0 before they are read.
#include "readers/IDFReader.h"

#include "host/FileSystem/NativePath.h"
#include "text/Text.h"

#include <cctype>
#include <cstdio>
#include <memory>

namespace EDA {

namespace {

// The first word stands behind no more than a few lines of comment.
constexpr std::size_t headSize = std::size_t{64} * 1024;
constexpr std::string_view firstWord = "IDF_Header";

std::string readHead(const std::string &filename) {
    std::error_code error;
    const std::filesystem::path path = FileSystem::toNative(filename);
    if (!std::filesystem::is_regular_file(path, error)) return {};
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(FileSystem::openFile(path, "rb"),
                                                                std::fclose);
    if (!file) return {};
    std::string head(headSize, '\0');
    head.resize(std::fread(head.data(), 1, head.size(), file.get()));
    return head;
}

void skipBlanks(std::string_view &text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())) != 0)
        text.remove_prefix(1);
}

bool skipPrefix(std::string_view &text, std::string_view prefix) {
    if (text.substr(0, prefix.size()) != prefix) return false;
    text.remove_prefix(prefix.size());
    return true;
}

// Comments in that format stand between "/*" and "*/".
void skipComments(std::string_view &text) {
    for (skipBlanks(text); skipPrefix(text, "/*"); skipBlanks(text)) {
        const std::size_t close = text.find("*/");
        text.remove_prefix(close == std::string_view::npos ? text.size() : close + 2);
    }
}

} // namespace

std::string IDFReader::describeUnsupported(const std::string &filename) {
    const std::string head = readHead(filename);
    std::string_view text = head;
    skipPrefix(text, "\xEF\xBB\xBF");
    skipComments(text);
    if (!equalsIgnoreCase(text.substr(0, firstWord.size()), firstWord)) return {};
    text.remove_prefix(firstWord.size());
    skipComments(text);
    if (text.empty() || text.front() != '(') return {};
    return filename + ": IDF 4.0 can't be read, only IDF 2.0 and 3.0";
}

} // namespace EDA
