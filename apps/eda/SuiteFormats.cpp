// How designs of the families of the layout suite are known.
#include "FabricationDesign.h"
#include "Files.h"
#include "Formats.h"
#include "host/QvDbWrap/IpcDocument.h"
#include "host/QvDbWrap/LayoutFile.h"

#include <algorithm>
#include <iterator>

namespace EDATool {

namespace {

template <std::size_t size> bool isAmong(const char *const (&texts)[size], const std::string &text) {
    return std::find(std::begin(texts), std::end(texts), text) != std::end(texts);
}

// Text has line ends, tabs, form feeds and, at the end of some old files, 0x1a; nothing else below the blank.
bool isBinary(std::string_view head) {
    return std::any_of(head.begin(), head.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 && (byte < '\t' || byte > '\r') && byte != 0x1a;
    });
}

bool startsWith(std::string_view head, std::string_view mark) { return head.substr(0, mark.size()) == mark; }

} // namespace

// The head saves most files from being opened as XML.
bool looksLikeIpc(const std::string &file, std::string_view head) {
    const std::size_t start = head.find_first_not_of(" \t\r\n");
    return start != std::string_view::npos && head[start] == '<' && QvDbWrap::isIpcDocument(file);
}

bool looksLikeLayout(const std::string &file, std::string_view) { return QvDbWrap::isLayoutFile(file); }

// IDF has .brd for its boards, too, but is text.
bool looksLikeBrisko(const std::string &file, std::string_view head) {
    static const char *const extensions[] = {".brd", ".mcm", ".sip"};
    return isAmong(extensions, lowerExtension(file)) && isBinary(head);
}

// By their first bytes; a .tar has none of its own. One with layers and drills is a set of these.
bool looksLikeArchive(const std::string &file, std::string_view head) {
    static const char *const extensions[] = {".zip", ".tgz", ".gz", ".z", ".7z"};
    static constexpr std::string_view marks[] = {"PK", "\x1f\x8b", "\x1f\x9d", "7z\xbc\xaf\x27\x1c"};
    const std::string extension = lowerExtension(file);
    const bool isPacked =
        isAmong(extensions, extension) &&
        std::any_of(std::begin(marks), std::end(marks), [head](auto mark) { return startsWith(head, mark); });
    return (isPacked || extension == ".tar") && !isFabricationArchive(file);
}

} // namespace EDATool
