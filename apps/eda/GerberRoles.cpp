// What each file of a Gerber set is.
#include "GerberRoles.h"

#include "Files.h"
#include "host/FileSystem/Path.h"
#include "Printable.h"
#include "readers/gerber/GerberNumbers.h"
#include "text/Text.h"

#include <algorithm>
#include <vector>

namespace EDATool {

namespace {

using Words = std::vector<std::string>;

struct NameRule {
    const char *text;
    const char *meaning;
};

// Extensions of files that are not of copper.
constexpr NameRule otherExtensions[] = {
    {".gts", "solder mask"},   {".gbs", "solder mask"},
    {".gtp", "solder paste"},  {".gbp", "solder paste"},
    {".gto", "legend"},        {".gbo", "legend"},
    {".gko", "board outline"}, {".gml", "board outline"},
    {".gm", "mechanical"},     {".fab", "fabrication"},
    {".ast", "assembly"},      {".asb", "assembly"},
    {".gdd", "drill drawing"}, {".gd1", "drill drawing"},
    {".gg1", "drill guide"},   {".gpt", "pad master"},
    {".gpb", "pad master"},    {".oln", "board outline"},
    {".stc", "solder mask"},   {".sts", "solder mask"},
    {".plc", "legend"},        {".pls", "legend"},
    {".crc", "solder paste"},  {".crs", "solder paste"},
    {".dim", "board outline"}, {".mil", "board outline"},
    {".gbrjob", "job file"},   {".gpi", "photoplotter data"},
};

// Extensions that stand for copper.
constexpr NameRule topExtensions[] = {{".gtl", ""}, {".cmp", ""}, {".top", ""}};
constexpr NameRule bottomExtensions[] = {{".gbl", ""}, {".sol", ""}, {".bot", ""}};

// Extensions of drill files. One in the form of a layer file has a flash for each hole.
constexpr NameRule drillExtensions[] = {{".drl", ""}, {".xln", ""}, {".ncd", ""}, {".cnc", ""},
                                        {".exc", ""}, {".drd", ""}, {".nc", ""}};

// Words in names: whole words, or starts of words where they end in "-".
constexpr NameRule otherWords[] = {
    {"mask-", "solder mask"},
    {"soldermask-", "solder mask"},
    {"smask-", "solder mask"},
    {"smt", "solder mask"},
    {"smb", "solder mask"},
    {"paste-", "solder paste"},
    {"solderpaste-", "solder paste"},
    {"pastemask-", "solder paste"},
    {"pmt", "solder paste"},
    {"pmb", "solder paste"},
    {"stencil-", "solder paste"},
    {"silk-", "legend"},
    {"legend-", "legend"},
    {"topsilk-", "legend"},
    {"bottomsilk-", "legend"},
    {"sst", "legend"},
    {"ssb", "legend"},
    {"topmask-", "solder mask"},
    {"bottommask-", "solder mask"},
    {"toppaste-", "solder paste"},
    {"bottompaste-", "solder paste"},
    {"outl-", "board outline"},
    {"profile-", "board outline"},
    {"edge", "board outline"},
    {"cuts", "board outline"},
    {"contour-", "board outline"},
    {"dimension-", "board outline"},
    {"keepout-", "keepouts"},
    {"fab", "fabrication"},
    {"fabrication-", "fabrication"},
    {"assembly-", "assembly"},
    {"assy-", "assembly"},
    {"courtyard-", "courtyard"},
    {"crtyd-", "courtyard"},
    {"placement-", "placement"},
    {"drawing-", "drawing"},
    {"notes-", "notes"},
    {"drill-", "drill drawing"},
    {"mechanical-", "mechanical"},
    {"adhes-", "adhesive"},
    {"glue-", "adhesive"},
    {"margin", "margin"},
};

// Words that settle it, whatever else a name holds: the name of the board stands in it too.
constexpr NameRule copperWords[] = {{"cu", ""}, {"copper", ""}, {"etch", ""}, {"signal", ""}};

constexpr NameRule topWords[] = {{"top", ""}, {"front", ""}, {"toplayer", ""}};
constexpr NameRule bottomWords[] = {{"bottom", ""}, {"bot", ""}, {"back", ""}, {"bottomlayer", ""}};
constexpr NameRule numberWords[] = {{"l", ""}, {"layer", ""}}; // "L2" is the second layer
constexpr NameRule innerWords[] = {{"in", ""}, {"inner", ""}, {"int", ""}, {"mid", ""}}; // "In1" as well

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool isLetter(char c) { return isUpper(c) || (c >= 'a' && c <= 'z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

// "EtchLayer2Bottom" as etch, layer, 2, bottom: words and numbers, in lower case.
Words wordsOf(const std::string &name) {
    Words words;
    char before = 0;
    for (const char c : name) {
        const bool joins = (isLetter(c) && isLetter(before) && !(isUpper(c) && !isUpper(before))) ||
                           (isDigit(c) && isDigit(before));
        if (isLetter(c) || isDigit(c)) {
            if (!joins) words.emplace_back();
            words.back() += lower(c);
        }
        before = c;
    }
    return words;
}

template <std::size_t n> const NameRule *findRule(const NameRule (&rules)[n], const std::string &text) {
    for (const NameRule &rule : rules) {
        const std::string wanted = rule.text;
        const bool isStart = wanted.back() == '-';
        const std::size_t length = isStart ? wanted.size() - 1 : wanted.size();
        if (text.compare(0, length, wanted, 0, length) == 0 && (isStart || text.size() == length))
            return &rule;
    }
    return nullptr;
}

template <std::size_t n> const NameRule *findWord(const NameRule (&rules)[n], const Words &words) {
    for (const std::string &word : words) {
        if (const NameRule *const rule = findRule(rules, word)) return rule;
    }
    return nullptr;
}

// The number right behind one of the words, or 0.
template <std::size_t n> int numberBehind(const NameRule (&rules)[n], const Words &words) {
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        if (findRule(rules, words[index]) != nullptr && isDigit(words[index + 1].front()))
            return EDA::leadingInt(words[index + 1]);
    }
    return 0;
}

bool hasPair(const Words &words, const char *first, const char *second) {
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        if (words[index] == first && words[index + 1] == second) return true;
    }
    return false;
}

std::string listed(const std::vector<std::string> &values) {
    std::string text;
    for (const std::string &value : values)
        text += (text.empty() ? "" : ",") + value;
    return shortened(text, 100);
}

void setPlace(GerberRole &role, double place) {
    role.place = place;
    role.hasPlace = true;
}

void setTop(GerberRole &role) {
    role.isTop = true;
    setPlace(role, 1.0);
}

void setBottom(GerberRole &role) { setPlace(role, bottomPlace); }

// "Copper", "L2", "Inr", "Signal".
void placeByFunction(const std::vector<std::string> &values, GerberRole &role) {
    for (std::size_t index = 1; index < values.size(); ++index) {
        const std::string &value = values[index];
        if (value == "Top" && !role.hasPlace) setTop(role);
        if (value == "Bot" && !role.hasPlace) setBottom(role);
        if (index == 1 && value.size() > 1 && value[0] == 'L' && isDigit(value[1])) {
            setPlace(role, EDA::leadingInt(value.substr(1)));
        }
    }
}

bool placeByExtension(const std::string &extension, GerberRole &role) {
    const bool isInner =
        extension.size() > 2 && extension[1] == 'g' &&
        (isDigit(extension[2]) || (extension.size() > 3 && extension[2] == 'p' && isDigit(extension[3])));
    if (findRule(topExtensions, extension) != nullptr) setTop(role);
    if (findRule(bottomExtensions, extension) != nullptr) setBottom(role);
    // ".g1" is the first inner layer, ".gp1" the first plane; planes come behind, as nothing tells more.
    if (isInner) {
        const bool isPlane = extension[2] == 'p';
        const int number = EDA::leadingInt(extension.substr(isPlane ? 3 : 2));
        setPlace(role, number + (isPlane ? 1000.0 : 1.0));
    }
    return role.hasPlace;
}

void placeByWords(const Words &words, GerberRole &role) {
    if (const int number = numberBehind(numberWords, words)) {
        role.isNumberedByName = true;
        return setPlace(role, number);
    }
    if (const int number = numberBehind(innerWords, words)) return setPlace(role, number + 1.0);
    if (hasPair(words, "f", "cu")) return setTop(role);
    if (hasPair(words, "b", "cu")) return setBottom(role);
    if (findWord(topWords, words) != nullptr) return setTop(role);
    if (findWord(bottomWords, words) != nullptr) return setBottom(role);
}

// Names that tell what is not copper. ".gm1" to ".gm99" are mechanical layers.
std::string otherByName(const std::string &extension, const Words &words) {
    if (const NameRule *const rule = findRule(otherExtensions, extension))
        return std::string("by its extension ") + extension + " it is " + rule->meaning;
    if (extension.size() > 3 && extension.compare(0, 3, ".gm") == 0 && isDigit(extension[3]))
        return "by its extension " + extension + " it is mechanical";
    if (findWord(copperWords, words) != nullptr) return std::string();
    if (const NameRule *const rule = findWord(otherWords, words))
        return std::string("by its name it is ") + rule->meaning;
    return std::string();
}

GerberRole copper(const std::string &reason) {
    GerberRole role;
    role.use = GerberUse::Copper;
    role.reason = reason;
    return role;
}

GerberRole roleByFunction(const GerberFacts &facts) {
    const std::string reason = "its FileFunction is " + listed(facts.fileFunction);
    if (facts.fileFunction.front() != "Copper") return {GerberUse::Other, reason, 0.0, false, false, false};
    GerberRole role = copper(reason);
    placeByFunction(facts.fileFunction, role);
    return role;
}

GerberRole roleByName(const std::string &file, const GerberFacts &facts) {
    const std::string extension = lowerExtension(file);
    const std::string stem = FileSystem::Path::stripExtension(FileSystem::Path::getLastToken(file));
    const Words words = wordsOf(stem);
    std::string other = otherByName(extension, words);
    GerberRole role = copper("by its extension " + extension);
    if (other.empty() && placeByExtension(extension, role)) return role;
    for (const std::string &name : facts.names) {
        const NameRule *const rule = other.empty() ? findWord(otherWords, wordsOf(name)) : nullptr;
        if (rule != nullptr)
            other = "by its layer name " + inQuotes(shortened(name, 60)) + " it is " + rule->meaning;
    }
    if (!other.empty()) return {GerberUse::Other, other, 0.0, false, false, false};
    placeByWords(words, role);
    role.reason = role.hasPlace ? "by its name" : "nothing says that it is anything else";
    if (!role.hasPlace && facts.physicalOrder > 0) {
        setPlace(role, facts.physicalOrder);
        role.reason = "by its physical order";
    }
    for (const std::string &name : facts.names) {
        if (role.hasPlace) break;
        placeByWords(wordsOf(name), role);
        if (role.hasPlace) role.reason = "by its layer name " + inQuotes(shortened(name, 60));
    }
    return role;
}

} // namespace

GerberRole roleOfGerber(const std::string &file, const GerberFacts &facts, bool isDrillFile) {
    const auto drill = [](const char *reason) {
        return GerberRole{GerberUse::Drill, reason, 0.0, false, false, false};
    };
    if (isDrillFile) return drill("it is a drill file by its content");
    if (!facts.isGerberText) {
        return {GerberUse::Other, "it is neither text of a layer nor of drills", 0.0, false, false, false};
    }
    if (facts.isDrill) return drill("it selects tools as drill files do");
    if (!facts.fileFunction.empty()) return roleByFunction(facts);
    if (findRule(drillExtensions, lowerExtension(file)) != nullptr)
        return drill("by its extension; it has the form of a layer, so its round flashes are holes");
    return roleByName(file, facts);
}

} // namespace EDATool
