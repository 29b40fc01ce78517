// The table of formats, and reading a design through it.
#include "Formats.h"

#include "Console.h"
#include "Failure.h"
#include "Files.h"
#include "Printable.h"
#include "text/Text.h"

#include <algorithm>

namespace EDATool {

namespace {

bool looksLikeJson(std::string_view head) {
    const std::size_t start = head.find_first_not_of(" \t\r\n");
    return start != std::string_view::npos && head[start] == '{';
}

const FormatDef &formatOf(const std::string &file) {
    const std::string head = readHead(file);
    for (const FormatDef &format : formats()) {
        if (format.recognise(head)) return format;
    }
    const std::string extension = lowerExtension(file);
    for (const FormatDef &format : formats()) {
        if (std::count(format.extensions.begin(), format.extensions.end(), extension) > 0) return format;
    }
    throw DesignFailure(inQuotes(file) + ": is in no format that eda reads (see: eda --help)");
}

} // namespace

const std::vector<FormatDef> &formats() {
    static const std::vector<FormatDef> table = {
        {"IDF",
         {".emn", ".emp", ".brd", ".lib", ".bdf", ".ldf", ".idf"},
         looksLikeIdf,
         readIdfDesign,
         makeIdfReader},
        {nullptr, {".json"}, looksLikeJson, nullptr, nullptr},
    };
    return table;
}

const FormatDef &findFormat(const std::string &name) {
    for (const FormatDef &format : formats()) {
        if (format.name != nullptr && EDA::equalsIgnoreCase(format.name, name)) return format;
    }
    throw UsageFailure("there is no format " + inQuotes(name) + "; the formats are: " + formatNames());
}

std::string formatNames() {
    std::string names;
    for (const FormatDef &format : formats()) {
        if (format.name != nullptr) names += (names.empty() ? "" : ", ") + std::string(format.name);
    }
    return names;
}

bool isModelFile(const std::string &file) { return formatOf(file).name == nullptr; }

Design readDesign(const std::vector<std::string> &files) {
    const FormatDef *format = nullptr;
    for (const std::string &file : files) {
        const FormatDef &found = formatOf(file);
        if (found.name == nullptr) throw UsageFailure(inQuotes(file) + " is a model file, not a design");
        if (format != nullptr && format != &found) {
            throw UsageFailure(inQuotes(files.front()) + " and " + inQuotes(file) + " are not of one format");
        }
        format = &found;
    }
    Design design;
    design.format = format->name;
    format->read(files, design);
    return design;
}

void printWarnings(const Design &design) {
    for (const std::string &warning : design.warnings)
        printWarning(warning);
}

} // namespace EDATool
