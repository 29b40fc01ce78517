// Layers as the command line names them.
#include "LayerNames.h"

#include "Failure.h"
#include "Files.h"
#include "host/FileSystem/Path.h"
#include "Printable.h"
#include "text/Text.h"

#include <algorithm>

namespace EDATool {

namespace {

using FileSystem::Path;

constexpr std::size_t notFound = static_cast<std::size_t>(-1);

std::size_t numberedLayer(const std::string &text, std::size_t count) {
    const bool isNumber = text.find_first_not_of("0123456789") == std::string::npos && text.size() < 7;
    const std::size_t number = isNumber ? static_cast<std::size_t>(EDA::parseInt(text, 0, 0)) : 0;
    return number >= 1 && number <= count ? number - 1 : notFound;
}

[[noreturn]] void refuse(const std::vector<std::string> &names, const std::string &text,
                         const std::string &option) {
    constexpr std::size_t limit = 64;
    std::string list;
    for (std::size_t index = 0; index < std::min(names.size(), limit); ++index)
        list += "\n  " + std::to_string(index + 1) + "  " + shortened(names[index], 100);
    throw UsageFailure(option + " " + inQuotes(text) + " is none of the layers, which are:" + list);
}

} // namespace

std::size_t findLayer(const std::vector<std::string> &names, const std::vector<std::string> &files,
                      const std::string &text, const std::string &option) {
    if (names.empty()) throw DesignFailure("the design has no layers, so there is none for " + option);
    for (std::size_t index = 0; index < files.size(); ++index) {
        if (text == files[index] || EDA::equalsIgnoreCase(text, Path::getLastToken(files[index])))
            return index;
    }
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (names[index] == text) return index;
    }
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (EDA::equalsIgnoreCase(names[index], text)) return index;
    }
    if (EDA::equalsIgnoreCase(text, "top")) return 0;
    if (EDA::equalsIgnoreCase(text, "bottom")) return names.size() - 1;
    const std::size_t index = numberedLayer(text, names.size());
    if (index == notFound) refuse(files.empty() ? names : files, text, option);
    return index;
}

bool reachesLayer(const std::string &from, const std::string &to, const std::vector<std::string> &names,
                  std::size_t number) {
    const auto start = std::find(names.begin(), names.end(), from);
    const auto end = std::find(names.begin(), names.end(), to);
    if (start == names.end() || end == names.end()) return true;
    // Layers of files that differ in their extensions alone share a name.
    if (std::count(names.begin(), names.end(), from) > 1 || std::count(names.begin(), names.end(), to) > 1)
        return true;
    const auto at = names.begin() + static_cast<std::ptrdiff_t>(number - 1);
    return std::min(start, end) <= at && at <= std::max(start, end);
}

bool touches(const HeightRange &hole, const HeightRange &layer) {
    const double low = std::min(hole.low, hole.high), high = std::max(hole.low, hole.high);
    const double margin = 1e-6 * (high - low);
    return low <= std::max(layer.low, layer.high) + margin &&
           high >= std::min(layer.low, layer.high) - margin;
}

bool meansFile(const std::string &text, const std::string &file) {
    const std::string name = Path::getLastToken(file);
    return text == file || EDA::equalsIgnoreCase(text, name) ||
           EDA::equalsIgnoreCase(text, Path::stripExtension(name)) || isSameFile(text, file);
}

} // namespace EDATool
