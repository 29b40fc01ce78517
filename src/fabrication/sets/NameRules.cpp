// Words of names, and what they say.
#include "fabrication/sets/NameRules.h"

#include "fabrication/sets/NameTables.h"
#include "host/FileSystem/Path.h"
#include "text/Text.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

constexpr std::size_t longestJoined = 48; // longer words are no names of layers
constexpr std::size_t longestName = 1000;

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool isLetter(char c) { return isUpper(c) || (c >= 'a' && c <= 'z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

WordRule const *findWord(std::string_view text) {
    WordRule const *start = nullptr;
    for (WordRule const &rule : wordRules()) {
        if (rule.text == text) return &rule;
        if (rule.isStart && startsWith(text, rule.text)) start = &rule;
    }
    return start;
}

// A word made of several known ones, such as "topsoldermask"; empty where it is not. Longer words first, so
// that "soldermask" is not "solder" and "mask".
bool splitJoined(std::string_view text, std::vector<WordRule const *> &parts) {
    if (text.empty()) return true;
    if (text.size() > longestJoined) return false;
    std::vector<WordRule const *> fits;
    for (WordRule const &rule : wordRules())
        if (rule.joins && startsWith(text, rule.text)) fits.push_back(&rule);
    std::sort(fits.begin(), fits.end(),
              [](WordRule const *a, WordRule const *b) { return a->text.size() > b->text.size(); });
    for (WordRule const *const rule : fits) {
        parts.push_back(rule);
        if (splitJoined(text.substr(rule->text.size()), parts)) return true;
        parts.pop_back();
    }
    return false;
}

// A word of a name: its rule, or a number.
struct Part {
    WordRule const *rule = nullptr;
    int number = -1;
};

// False where there are words in it that say nothing of layers.
bool partsOf(std::string_view name, std::vector<Part> &parts) {
    bool isPure = true;
    const std::vector<std::string> words = wordsOf(name);
    for (std::size_t index = 0; index < words.size(); ++index) {
        std::string const &word = words[index];
        const bool hasNumber = index + 1 < words.size() && isDigit(words[index + 1].front());
        if (isDigit(word.front())) {
            parts.push_back({nullptr, parseInt(word, 0, 0)});
            continue;
        }
        std::vector<WordRule const *> joined;
        WordRule const *const rule = findWord(word);
        if (rule && (hasNumber || !rule->needsNumber)) {
            parts.push_back({rule, -1});
        } else if (splitJoined(word, joined)) {
            for (WordRule const *const part : joined)
                parts.push_back({part, -1});
        } else {
            parts.push_back({});
            isPure = false;
        }
    }
    return isPure;
}

bool has(std::vector<Part> const &parts, Word word) {
    return std::any_of(parts.begin(), parts.end(),
                       [word](Part const &part) { return part.rule && part.rule->word == word; });
}

// The number right behind such a word, or -1.
int numberBehind(std::vector<Part> const &parts, Word word) {
    for (std::size_t index = 0; index + 1 < parts.size(); ++index) {
        if (parts[index].rule && parts[index].rule->word == word && parts[index + 1].number >= 0)
            return parts[index + 1].number;
    }
    return -1;
}

// "Inner layer 1" and "internal plane 2", which count inner layers, unlike "inner L2".
int innerNumber(std::vector<Part> const &parts) {
    for (std::size_t index = 0; index + 2 < parts.size(); ++index) {
        WordRule const *const rule = parts[index].rule;
        WordRule const *const next = parts[index + 1].rule;
        const bool isKind =
            next && (next->text == "layer" || next->word == Word::Power || next->word == Word::Copper);
        if (rule && rule->word == Word::Inner && isKind && parts[index + 2].number >= 0)
            return parts[index + 2].number;
    }
    return numberBehind(parts, Word::Inner);
}

// "Top Copper (Resist)", but not "mask_rom-F_Cu": what stands behind the copper is of the layer.
bool isOnCopper(std::vector<Part> const &parts) {
    bool wasCopper = false;
    for (Part const &part : parts) {
        const Word word = part.rule ? part.rule->word : Word::None;
        if (wasCopper && (word == Word::Mask || word == Word::Paste)) return true;
        wasCopper = wasCopper || word == Word::Copper;
    }
    return false;
}

bool isSideOfCopper(std::vector<Part> const &parts, std::string_view letter) {
    for (std::size_t index = 0; index + 1 < parts.size(); ++index) {
        WordRule const *const rule = parts[index].rule;
        WordRule const *const next = parts[index + 1].rule;
        if (rule && next && rule->text == letter && next->word == Word::Copper) return true;
    }
    return false;
}

void place(NameFinding &finding, double at) {
    finding.use = FileUse::Copper;
    finding.place = at;
    finding.hasPlace = true;
}

// Places of copper. Numbers say more than sides: "EtchLayer2Bottom", but not "bottom layer 1".
void findPlace(std::vector<Part> const &parts, NameFinding &finding) {
    const bool isTop = has(parts, Word::Top), isBottom = has(parts, Word::Bottom);
    // In "b_Copper_Layer_15" the letter is the board's name.
    const bool isLayerNumber = numberBehind(parts, Word::Numbered) > 0;
    if (!isLayerNumber && isSideOfCopper(parts, "f")) return place(finding, 1.0);
    if (!isLayerNumber && isSideOfCopper(parts, "b")) return place(finding, bottomPlace);
    const int inner = innerNumber(parts);
    if (inner > 0) return place(finding, inner + 1.0);
    // Words that mean copper may count as well: "Copper Layer 2", "Cu2", "Signal 3".
    const int number = std::max(numberBehind(parts, Word::Numbered), numberBehind(parts, Word::Copper));
    if (number > 0 && !(isBottom && number == 1)) {
        finding.isCounted = !isTop && !isBottom;
        finding.mayEnd = isBottom;
        return place(finding, number);
    }
    if (isTop && !isBottom) return place(finding, 1.0);
    if (isBottom && !isTop) return place(finding, bottomPlace);
    if (has(parts, Word::Solder) && has(parts, Word::Side)) return place(finding, bottomPlace);
    const int group = numberBehind(parts, Word::Group);
    if (group >= 0) {
        finding.isWeak = true;
        return place(finding, groupPlace + group);
    }
    if (has(parts, Word::Copper) || has(parts, Word::Inner)) finding.use = FileUse::Copper;
    if (has(parts, Word::Power) && finding.use == FileUse::None) {
        finding.use = FileUse::Copper;
        finding.isWeak = true;
    }
}

// What is no copper; paste before mask, as "paste mask" is paste.
bool findOther(std::vector<Part> const &parts, NameFinding &finding) {
    const bool isSolderSide = has(parts, Word::Side);
    for (Word const word : {Word::Paste, Word::Mask, Word::Legend, Word::Drill, Word::Outline, Word::Other,
                            Word::Mechanical, Word::Solder}) {
        if (word == Word::Solder && isSolderSide) continue;
        for (Part const &part : parts) {
            if (!part.rule || part.rule->word != word) continue;
            finding.use = word == Word::Outline ? FileUse::Profile : FileUse::Other;
            finding.meaning = part.rule->meaning;
            finding.isMechanical = word == Word::Mechanical;
            return true;
        }
    }
    return false;
}

// The number at the mark in a rule's text where the extension has that form; -1 where it has not.
int numberOf(std::string_view extension, std::string_view rule, std::size_t mark) {
    const std::string_view start = rule.substr(0, mark), end = rule.substr(mark + 1);
    if (!startsWith(extension, start) || extension.size() < rule.size()) return -1;
    const std::size_t numDigits = extension.size() - start.size() - end.size();
    if (extension.substr(start.size() + numDigits) != end) return -1;
    const std::string_view digits = extension.substr(start.size(), numDigits);
    return std::all_of(digits.begin(), digits.end(), isDigit) ? parseInt(digits, -1, -1) : -1;
}

NameFinding findingOf(ExtensionRule const &rule, int number) {
    NameFinding finding;
    finding.isPure = true;
    finding.meaning = rule.meaning;
    finding.isMechanical = rule.word == Word::Mechanical;
    if (rule.word == Word::Top) place(finding, 1.0);
    if (rule.word == Word::Bottom) place(finding, bottomPlace);
    if (rule.word == Word::Inner) place(finding, number + rule.shift);
    // Those that count from the top may count inner layers as well.
    finding.isCounted = rule.word == Word::Inner && rule.shift == 0.0;
    finding.isWeak = rule.word == Word::Power;
    if (finding.isWeak) finding.use = FileUse::Copper;
    if (rule.word == Word::Outline) finding.use = FileUse::Profile;
    if (rule.word == Word::Drill) finding.use = FileUse::Drill;
    if (finding.use == FileUse::None) finding.use = FileUse::Other;
    return finding;
}

// Whether a part of a name between separators names a layer; `wasLayer` tells it of the part before.
bool isLayerToken(std::string_view token, bool wasLayer) {
    std::vector<Part> parts;
    if (!partsOf(token, parts)) return false;
    const bool isNumber = std::all_of(parts.begin(), parts.end(), [](Part const &p) { return !p.rule; });
    return !isNumber || wasLayer;
}

} // namespace

std::vector<std::string> wordsOf(std::string_view name) {
    std::vector<std::string> words;
    char before = 0;
    name = name.substr(0, longestName);
    for (std::size_t at = 0; at < name.size(); ++at) {
        const char c = name[at];
        // "GNDPlane" is gnd and plane: the last of several capitals begins the word behind them.
        const bool endsCapitals = isUpper(c) && isUpper(before) && at + 1 < name.size() &&
                                  isLetter(name[at + 1]) && !isUpper(name[at + 1]);
        const bool joins =
            (isLetter(c) && isLetter(before) && !endsCapitals && !(isUpper(c) && !isUpper(before))) ||
            (isDigit(c) && isDigit(before));
        if (isLetter(c) || isDigit(c)) {
            if (!joins) words.emplace_back();
            words.back() += lower(c);
        }
        before = c;
    }
    return words;
}

NameFinding findByWords(std::string_view name) {
    NameFinding finding;
    std::vector<Part> parts;
    finding.isPure = partsOf(name, parts) && !parts.empty();
    // Copper settles it, whatever else a name holds: the name of the board stands in it too.
    if ((!has(parts, Word::Copper) || isOnCopper(parts)) && findOther(parts, finding)) return finding;
    findPlace(parts, finding);
    return finding;
}

NameFinding findByExtension(std::string_view extension) {
    const std::string text = lowerCase(extension);
    for (ExtensionRule const &rule : extensionRules()) {
        if (rule.text == text) return findingOf(rule, 0);
        const std::size_t mark = rule.text.find('#');
        if (mark == std::string_view::npos) continue;
        const int number = numberOf(text, rule.text, mark);
        if (number >= 0) return findingOf(rule, number);
    }
    // Whole words: ".toplayer", ".bottomsilkscreen".
    constexpr std::size_t shortest = 5;
    NameFinding finding;
    if (text.size() > shortest) finding = findByWords(std::string_view(text).substr(1));
    return finding.isPure ? finding : NameFinding();
}

std::string boardStem(std::string_view fileName) {
    const std::string name = stemOf(std::string(fileName.substr(0, longestName)));
    constexpr std::string_view separators = "-_. ";
    std::string stem;
    bool wasLayer = false;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t end = std::min(name.find_first_of(separators, at), name.size());
        const std::string_view token = std::string_view(name).substr(at, end - at);
        wasLayer = !token.empty() && isLayerToken(token, wasLayer);
        if (!token.empty() && !wasLayer) stem += (stem.empty() ? "" : "-") + lowerCase(token);
        at = end + 1;
    }
    return stem;
}

std::optional<bool> platingByName(std::string_view name) {
    const std::string text = lowerCase(name);
    for (PlatingRule const &rule : platingRules())
        if (text.find(rule.text) != std::string::npos) return rule.plated;
    return std::nullopt;
}

std::string stemOf(std::string const &file) {
    return FileSystem::Path::stripExtension(FileSystem::Path::getLastToken(file));
}

std::string lowerCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower);
    return result;
}

} // namespace EDA::Fabrication
