// Spans of drill files, by numbers in attributes, by comments, by names; else through.
#include "fabrication/sets/DrillSpans.h"

#include "fabrication/sets/FileForm.h"
#include "fabrication/sets/FileRoles.h"
#include "fabrication/sets/LayerLists.h"
#include "host/FileSystem/Path.h"
#include "text/Text.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Reads a number backwards from the end of the text, which it cuts off.
int takeNumber(std::string_view &text) {
    std::size_t digits = 0;
    while (digits < text.size() && isDigit(text[text.size() - 1 - digits]))
        ++digits;
    if (digits == 0 || digits > 3) return 0;
    const int number = parseInt(text.substr(text.size() - digits), 0, 0);
    text.remove_suffix(digits);
    return number;
}

bool takeLetter(std::string_view &text) {
    if (text.empty() || (text.back() != 'L' && text.back() != 'l')) return false;
    text.remove_suffix(1);
    return true;
}

bool takeSeparator(std::string_view &text) {
    for (const std::string_view separator : {"_to_", "-to-", "-", "_"}) {
        if (text.size() < separator.size() || text.substr(text.size() - separator.size()) != separator)
            continue;
        text.remove_suffix(separator.size());
        return true;
    }
    return false;
}

// A span that ends where the text ends.
std::optional<NamedSpan> spanAtEnd(std::string_view text) {
    NamedSpan span;
    span.to = takeNumber(text);
    const bool hasLetter = takeLetter(text);
    if (span.to < 1 || !takeSeparator(text)) return std::nullopt;
    span.from = takeNumber(text);
    if (span.from < 1 || takeLetter(text) != hasLetter || span.from >= span.to) return std::nullopt;
    if (!text.empty() && isDigit(text.back())) return std::nullopt;
    span.hasLetters = hasLetter;
    span.start = text;
    return span;
}

bool fits(FabricationSet const &set, int from, int to) {
    return from >= 1 && to > from && static_cast<std::size_t>(to) <= set.copper.size();
}

void setSpan(SetDrill &drill, int from, int to, std::string const &reason) {
    drill.from = static_cast<std::size_t>(from - 1);
    drill.to = static_cast<std::size_t>(to - 1);
    drill.spanReason = reason;
}

bool spanByAttributes(FabricationSet const &set, SetDrill &drill) {
    std::vector<std::string> const &function =
        drill.file.isLayerForm ? drill.file.layer.attribute(".FileFunction") : drill.file.drill.fileFunction;
    if (function.size() < 3) return false;
    const int from = parseInt(function[1], 0, 0), to = parseInt(function[2], 0, 0);
    if (!fits(set, from, to)) return false;
    const std::string &list = drill.file.functionList;
    setSpan(drill, from, to,
            (list.empty() ? "its FileFunction is " : inQuotes(list) + " gives it the FileFunction ") +
                listed(function));
    return true;
}

// The layer that a comment names: "TOP", "Top Layer".
std::size_t findNamed(FabricationSet const &set, std::string_view name) {
    for (std::size_t index = 0; index < set.copper.size(); ++index)
        if (equalsIgnoreCase(stemOf(set.copper[index].file), name)) return index;
    const NameFinding finding = findByWords(name);
    if (finding.hasPlace && finding.place == 1.0) return 0;
    if (finding.hasPlace && finding.place == bottomPlace) return set.copper.size() - 1;
    return set.copper.size();
}

// "layers TOP and BOTTOM".
bool spanByComments(FabricationSet const &set, SetDrill &drill) {
    if (set.copper.empty()) return false;
    constexpr std::string_view mark = "layers ", link = " and ";
    for (std::string const &comment : drill.file.drill.comments) {
        const std::size_t at = comment.find(mark);
        const std::size_t between = at == std::string::npos ? at : comment.find(link, at);
        if (between == std::string::npos) continue;
        const std::string_view text = comment;
        const std::size_t from = findNamed(set, text.substr(at + mark.size(), between - at - mark.size()));
        std::string_view last = text.substr(between + link.size());
        while (!last.empty() && last.back() == ' ')
            last.remove_suffix(1);
        const std::size_t to = findNamed(set, last);
        if (from >= to || to >= set.copper.size()) continue;
        setSpan(drill, static_cast<int>(from) + 1, static_cast<int>(to) + 1, "a comment names the layers");
        return true;
    }
    return false;
}

struct PairList {
    std::string shown;
    std::string stem;
    std::vector<LayerPair> pairs;
};

std::vector<PairList> pairListsOf(FabricationSet const &set) {
    std::vector<PairList> lists;
    for (SetFile const &file : set.leftOut) {
        std::string text, error;
        if (file.use != FileUse::Helper || !readText(file.file, text, error)) continue;
        PairList list{file.shown, lowerCase(stemOf(file.file)), readLayerPairs(text)};
        if (!list.pairs.empty()) lists.push_back(std::move(list));
    }
    return lists;
}

std::size_t findByEnding(FabricationSet const &set, std::string const &stem, std::string const &extension) {
    std::size_t index = 0;
    while (index < set.copper.size() &&
           lowerCase(FileSystem::Path::getLastToken(set.copper[index].file)) != stem + extension)
        ++index;
    return index;
}

bool spanByPairs(FabricationSet const &set, std::vector<PairList> const &lists, SetDrill &drill) {
    const std::string name = lowerCase(FileSystem::Path::getLastToken(drill.file.file));
    for (PairList const &list : lists) {
        for (LayerPair const &pair : list.pairs) {
            const std::size_t from = findByEnding(set, list.stem, pair.from);
            const std::size_t to = findByEnding(set, list.stem, pair.to);
            if (name != list.stem + pair.drills || from >= to || to >= set.copper.size()) continue;
            setSpan(drill, static_cast<int>(from) + 1, static_cast<int>(to) + 1,
                    inQuotes(list.shown) + " names the layers");
            return true;
        }
    }
    return false;
}

// The layer whose own name has the number, whatever its place is: 15 of the four layers 1, 2, 15 and 16.
std::size_t findNumbered(FabricationSet const &set, int number) {
    std::size_t index = 0;
    while (index < set.copper.size() && set.copper[index].number != number)
        ++index;
    return index;
}

// "drill_2_15" beside layers with these numbers, where they count others that are not there.
bool spanByOwnNumbers(FabricationSet const &set, NamedSpan const &span, SetDrill &drill) {
    const std::size_t from = findNumbered(set, span.from), to = findNumbered(set, span.to);
    if (from >= to || to >= set.copper.size()) return false;
    const bool hasOwn = std::any_of(set.copper.begin(), set.copper.end(), [&set](SetFile const &layer) {
        return static_cast<std::size_t>(layer.number) > set.copper.size();
    });
    if (!hasOwn) return false;
    setSpan(drill, static_cast<int>(from) + 1, static_cast<int>(to) + 1, "by the layers in its name");
    return true;
}

// The layer that one word of a name means: "front", "in1"; the number of layers where it means none.
std::size_t findByToken(FabricationSet const &set, std::string_view token) {
    const std::size_t none = set.copper.size();
    const NameFinding finding = findByWords(token);
    if (!finding.isPure || !finding.hasPlace || finding.isCounted || finding.isWeak) return none;
    if (finding.place == 1.0) return 0;
    if (finding.place == bottomPlace) return none - 1;
    const auto number = static_cast<int>(finding.place);
    const std::size_t index = findNumbered(set, number);
    if (index < none) return index;
    return number >= 1 && static_cast<std::size_t>(number) <= none ? static_cast<std::size_t>(number) - 1
                                                                   : none;
}

// "b-front-in1", "b-in1-to-in2".
bool spanByWords(FabricationSet const &set, std::string const &stem, SetDrill &drill) {
    constexpr std::string_view separators = "-_. ";
    const std::size_t none = set.copper.size();
    std::size_t before = none;
    bool isFound = false;
    for (std::size_t at = 0; none > 0 && at < stem.size();) {
        const std::size_t end = std::min(stem.find_first_of(separators, at), stem.size());
        const std::string_view token = std::string_view(stem).substr(at, end - at);
        at = end + 1;
        if (token.empty() || equalsIgnoreCase(token, "to")) continue;
        const std::size_t layer = findByToken(set, token);
        if (before < layer && layer < none) {
            setSpan(drill, static_cast<int>(before) + 1, static_cast<int>(layer) + 1,
                    "by the layers in its name");
            isFound = true;
        }
        before = layer;
    }
    return isFound;
}

// Numbers without letters at the end of a name may be of a version. They are layers where they go through,
// or where another file has the same name with others.
bool spanByName(FabricationSet const &set, SetDrill &drill) {
    const std::string stem = stemOf(drill.file.file);
    const std::optional<NamedSpan> span = spanInName(stem);
    if (!span) return spanByWords(set, stem, drill);
    if (spanByOwnNumbers(set, *span, drill)) return true;
    if (!fits(set, span->from, span->to)) return false;
    const bool isThrough = span->from == 1 && static_cast<std::size_t>(span->to) == set.copper.size();
    const bool hasLike = std::any_of(set.drills.begin(), set.drills.end(), [&](SetDrill const &other) {
        const std::optional<NamedSpan> named = spanInName(stemOf(other.file.file));
        return named && named->start == span->start && (named->from != span->from || named->to != span->to);
    });
    if (!span->hasLetters && !isThrough && !hasLike) return false;
    setSpan(drill, span->from, span->to, "by the layers in its name");
    return true;
}

bool spanBySettings(FabricationSet &set, SetSettings::Span const &span, std::string &error) {
    const auto layer = [&](std::string const &name, std::size_t &index) {
        for (index = 0; index < set.copper.size(); ++index)
            if (meansFile(name, set.copper[index])) return true;
        index = static_cast<std::size_t>(std::max(parseInt(name, 0, 0), 0));
        const bool isNumber = std::all_of(name.begin(), name.end(), isDigit);
        if (isNumber && index >= 1 && index <= set.copper.size()) {
            --index;
            return true;
        }
        error =
            "the span of " + inQuotes(span.file) + " names " + inQuotes(name) + ", which is no copper layer";
        return false;
    };
    std::size_t from = 0, to = 0;
    if (!layer(span.from, from) || !layer(span.to, to)) return false;
    bool isUsed = false;
    for (SetDrill &drill : set.drills) {
        if (!meansFile(span.file, drill.file)) continue;
        drill.from = std::min(from, to);
        drill.to = std::max(from, to);
        drill.spanReason = "as the settings say";
        isUsed = true;
    }
    if (!isUsed) error = "a span names " + inQuotes(span.file) + ", which is none of the drill files";
    return isUsed;
}

} // namespace

std::optional<NamedSpan> spanInName(std::string const &stem) {
    // "L1-L6" may stand anywhere; the last one counts.
    for (std::size_t end = stem.size(); end > 0; --end) {
        if (!isDigit(stem[end - 1]) || (end < stem.size() && isDigit(stem[end]))) continue;
        const std::optional<NamedSpan> span = spanAtEnd(std::string_view(stem).substr(0, end));
        if (span && (span->hasLetters || end == stem.size())) return span;
    }
    return std::nullopt;
}

bool setSpans(FabricationSet &set, SetSettings const &settings, std::string &error) {
    const std::vector<PairList> lists = pairListsOf(set);
    for (SetDrill &drill : set.drills) {
        drill.from = 0;
        drill.to = set.copper.empty() ? 0 : set.copper.size() - 1;
        drill.spanReason = "nothing says that its holes do not go through";
        DrillFacts const &facts = drill.file.drill;
        if (spanByAttributes(set, drill)) continue;
        if (fits(set, facts.fromLayer, facts.toLayer)) {
            setSpan(drill, facts.fromLayer, facts.toLayer, "it says so");
            continue;
        }
        if (!spanByPairs(set, lists, drill) && !spanByComments(set, drill)) spanByName(set, drill);
    }
    return std::all_of(settings.spans.begin(), settings.spans.end(),
                       [&](SetSettings::Span const &span) { return spanBySettings(set, span, error); });
}

bool meansFile(std::string const &text, SetFile const &file) {
    const std::string name = FileSystem::Path::getLastToken(file.shown);
    return text == file.file || text == file.shown || equalsIgnoreCase(text, name) ||
           equalsIgnoreCase(text, FileSystem::Path::stripExtension(name));
}

} // namespace EDA::Fabrication
