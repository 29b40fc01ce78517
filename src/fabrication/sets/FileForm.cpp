// Telling layer files, drill files and other text apart.
#include "fabrication/sets/FileForm.h"

#include "host/FileSystem/File.h"
#include "text/Encoding.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

using Text = std::string_view;

constexpr std::size_t looked = 1 << 16; // bytes
constexpr int maxUnknownLines = 60;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool startsWith(Text text, Text start) { return text.substr(0, start.size()) == start; }
bool digitAt(Text text, std::size_t at) { return at < text.size() && isDigit(text[at]); }

bool isCoordinates(Text line) {
    if (line.empty() || (line[0] != 'X' && line[0] != 'Y')) return false;
    const std::size_t sign = line.size() > 1 && (line[1] == '-' || line[1] == '+' || line[1] == '.') ? 2 : 1;
    return digitAt(line, sign);
}

bool isLayerLine(Text line) {
    const bool hasEnd = line.find('*') != Text::npos;
    if (line[0] == '%') return line.size() > 3 && isUpper(line[1]) && isUpper(line[2]) && line != "%M48";
    if (startsWith(line, "G04") || startsWith(line, "G4 ")) return true;
    if (!hasEnd) return false;
    if (line[0] == 'G' || line[0] == 'D' || line[0] == 'M') return digitAt(line, 1);
    return isCoordinates(line);
}

// "T1", "T01C0.5", "T1F00S00C0.2500", but not "T1  12mil" of a report.
bool isToolLine(Text line) {
    if (line[0] != 'T' || !digitAt(line, 1)) return false;
    const std::size_t end = std::min(line.find_first_not_of("0123456789", 1), line.size());
    if (end == line.size()) return true;
    return Text("CFSHBZ").find(line[end]) != Text::npos &&
           (digitAt(line, end + 1) || startsWith(line.substr(end + 1), "."));
}

bool isDrillLine(Text line) {
    if (line.find('*') != Text::npos) return false;
    if (startsWith(line, "M48") || startsWith(line, "%M48") || startsWith(line, "M47")) return true;
    for (const Text word : {"INCH", "METRIC", "M71", "M72", "FMAT", "ICI,", "DETECT,", "G90", "G05", "G81"})
        if (startsWith(line, word) && line.size() < word.size() + 20) return true;
    return isToolLine(line) || isCoordinates(line);
}

// Lines that may stand before the first that tells.
bool isNeutral(Text line) {
    return line.empty() || line[0] == ';' || line[0] == '(' || line == "%" || line == "*" || line == "/";
}

Text trimmed(Text line) {
    while (!line.empty() && static_cast<unsigned char>(line.front()) <= ' ')
        line.remove_prefix(1);
    while (!line.empty() && static_cast<unsigned char>(line.back()) <= ' ')
        line.remove_suffix(1);
    return line;
}

bool isArchive(Text bytes) {
    constexpr std::size_t tarMark = 257;
    for (const Text mark :
         {Text("PK\x03\x04"), Text("PK\x05\x06"), Text("\x1f\x8b\x08"), Text("\x1f\x9d"), Text("BZh"),
          Text("\xfd"
               "7zXZ"),
          Text("7z\xbc\xaf\x27\x1c")})
        if (startsWith(bytes, mark)) return true;
    return bytes.size() > tarMark && startsWith(bytes.substr(tarMark), "ustar");
}

bool isBinary(Text head) {
    const auto isStrange = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < ' ' && c != '\t' && c != '\n' && c != '\r' && c != '\f' && c != '\x1a' && c != '\0';
    };
    constexpr std::size_t most = 20; // one of so many
    const auto number = static_cast<std::size_t>(std::count_if(head.begin(), head.end(), isStrange));
    return number * most > head.size();
}

} // namespace

FileForm formOf(std::string_view bytes) {
    if (isArchive(bytes)) return FileForm::Archive;
    Text head = bytes.substr(0, looked);
    if (startsWith(head, "\xEF\xBB\xBF")) head.remove_prefix(3);
    if (startsWith(head, "%PDF-") || isBinary(head)) return FileForm::Binary;
    int numUnknown = 0;
    while (!head.empty() && numUnknown < maxUnknownLines) {
        const std::size_t end = std::min(head.find_first_of("\r\n"), head.size());
        const Text line = trimmed(head.substr(0, end));
        if (!isNeutral(line)) {
            if (isLayerLine(line)) return FileForm::Layer;
            if (isDrillLine(line)) return FileForm::Drill;
            ++numUnknown;
        }
        head.remove_prefix(std::min(end + 1, head.size()));
    }
    return FileForm::Text;
}

bool readText(std::string const &file, std::string &text, std::string &error) {
    if (!FileSystem::File::readAll(file, text, error)) return false;
    // Archives and the like stay as they are.
    if (formOf(text) != FileForm::Archive) text = decodedToUtf8(std::move(text));
    return true;
}

} // namespace EDA::Fabrication
