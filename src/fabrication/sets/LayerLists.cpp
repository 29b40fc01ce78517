// Job files and tables of layer names.
#include "fabrication/sets/LayerLists.h"

#include "fabrication/sets/FileForm.h"
#include "fabrication/sets/FileRoles.h"
#include "host/FileSystem/Path.h"
#include "text/Text.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <map>

namespace EDA::Fabrication {

namespace {

constexpr std::size_t longestList = 1 << 20;
constexpr std::size_t longestLine = 1000;

using Json = rapidjson::Value;

std::string textOf(Json const &object, char const *key) {
    const auto found = object.FindMember(key);
    if (found == object.MemberEnd() || !found->value.IsString()) return {};
    return {found->value.GetString(), found->value.GetStringLength()};
}

std::vector<ListEntry> readJobFile(std::string const &text) {
    std::vector<ListEntry> entries;
    rapidjson::Document document;
    // Not by recursion: the text may be nested as deep as it likes.
    document.Parse<rapidjson::kParseIterativeFlag>(text.c_str(), text.size());
    if (document.HasParseError() || !document.IsObject()) return entries;
    const auto files = document.FindMember("FilesAttributes");
    if (files == document.MemberEnd() || !files->value.IsArray()) return entries;
    for (Json const &file : files->value.GetArray()) {
        if (!file.IsObject()) continue;
        const std::string path = textOf(file, "Path");
        const std::string function = textOf(file, "FileFunction");
        if (!path.empty() && !function.empty())
            entries.push_back({FileSystem::Path::getLastToken(path), function, ""});
    }
    return entries;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ')
        text.remove_prefix(1);
    while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ')
        text.remove_suffix(1);
    return text;
}

// "top copper, board.gtl".
bool readLine(std::string_view line, ListEntry &entry) {
    const std::size_t comma = line.find(',');
    if (comma == std::string_view::npos || line.size() > longestLine) return false;
    entry.name = trimmed(line.substr(0, comma));
    entry.file = trimmed(line.substr(comma + 1));
    return !entry.name.empty() && entry.file.find(',') == std::string::npos &&
           !FileSystem::Path::getExtension(entry.file, true).empty();
}

std::vector<ListEntry> readLines(std::string_view text) {
    std::vector<ListEntry> entries;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        ListEntry entry;
        if (!line.empty() && !readLine(line, entry)) return {};
        if (!line.empty()) entries.push_back(entry);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return entries;
}

void settleByFunction(SetFile &file, ListEntry const &entry, std::string const &list) {
    std::vector<std::string> values;
    for (std::size_t at = 0; at <= entry.function.size();) {
        const std::size_t end = std::min(entry.function.find(',', at), entry.function.size());
        values.push_back(entry.function.substr(at, end - at));
        at = end + 1;
    }
    if (file.use == FileUse::Drill && !file.isLayerForm) {
        file.drill.fileFunction = values;
        file.functionList = list;
        if (!file.drill.plated) file.drill.plated = platingByName(values.front());
        return;
    }
    file.layer.attributes[".FileFunction"] = values;
    settleLayer(file);
    file.reason = inQuotes(list) + " gives it the FileFunction " + listed(values);
}

void settleByWords(SetFile &file, ListEntry const &entry, std::string const &list) {
    if (!file.isLayerForm) return;
    NameFinding finding = findByWords(entry.name);
    if (finding.use == FileUse::None) return;
    // A list that says no more than "mechanical" leaves it to the name which of these holds the edge.
    if (finding.isMechanical && file.use == FileUse::Profile) return;
    const bool isDrills = finding.meaning == "drill drawing" &&
                          (file.use == FileUse::Drill || findByWords(entry.name).isPure) &&
                          wordsOf(entry.name).size() == 1;
    if (isDrills) finding.use = FileUse::Drill;
    take(file, finding, inQuotes(list) + " calls it " + inQuotes(entry.name));
    if (isDrills) file.meaning = "drills of a layer's form";
    file.isGuess = false;
}

} // namespace

std::vector<ListEntry> readLayerList(std::string_view text) {
    if (text.size() > longestList) return {};
    const std::string_view start = trimmed(text);
    if (!start.empty() && start.front() == '{') return readJobFile(std::string(text));
    return readLines(text);
}

std::vector<LayerPair> readLayerPairs(std::string_view text) {
    constexpr std::string_view drills = "|DrillFile=", layers = "|LayerPairs=";
    std::vector<LayerPair> pairs;
    if (text.size() > longestList) return pairs;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        const std::size_t file = line.find(drills), pair = line.find(layers);
        const std::size_t comma = pair == std::string_view::npos ? pair : line.find(',', pair);
        if (file < pair && comma != std::string_view::npos) {
            const auto part = [line](std::size_t from, std::size_t to) {
                return "." + lowerCase(trimmed(line.substr(from, to - from)));
            };
            pairs.push_back({part(file + drills.size(), pair), part(pair + layers.size(), comma),
                             part(comma + 1, line.size())});
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pairs;
}

void applyLists(std::vector<SetFile> &files) {
    std::multimap<std::string, std::size_t> names;
    for (std::size_t index = 0; index < files.size(); ++index)
        names.emplace(lowerCase(FileSystem::Path::getLastToken(files[index].file)), index);
    for (std::size_t helper = 0; helper < files.size(); ++helper) {
        if (files[helper].use != FileUse::Helper || files[helper].size > longestList) continue;
        std::string text, error;
        if (!readText(files[helper].file, text, error)) continue;
        const std::string list = files[helper].shown;
        for (ListEntry const &entry : readLayerList(text)) {
            const auto range = names.equal_range(lowerCase(entry.file));
            for (auto found = range.first; found != range.second; ++found) {
                SetFile &file = files[found->second];
                // What a file says itself counts more; a drill file may leave its layers open.
                const bool isOpenDrill = file.use == FileUse::Drill && file.drill.fileFunction.empty();
                const bool isDrawing = file.meaning == "drill drawing";
                if (!file.isGuess && file.use != FileUse::None && !isOpenDrill && !isDrawing) continue;
                if (!file.isLayerForm && file.use != FileUse::Drill) continue;
                entry.function.empty() ? settleByWords(file, entry, list)
                                       : settleByFunction(file, entry, list);
            }
        }
    }
}

} // namespace EDA::Fabrication
