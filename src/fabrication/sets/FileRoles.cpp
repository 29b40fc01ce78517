// What one file of a layer's form is.
#include "fabrication/sets/FileRoles.h"

#include "host/FileSystem/Path.h"
#include "text/Text.h"

#include <algorithm>
#include <map>

namespace EDA::Fabrication {

namespace {

using Text = std::string_view;

constexpr std::size_t longestShown = 80;
constexpr Text byName = "by its name";

struct FunctionRule {
    Text text;
    FileUse use;
    Text meaning;
};

// Values of the file function, by the published standard, with spellings that are met.
constexpr FunctionRule functionRules[] = {
    {"Copper", FileUse::Copper, ""},
    {"Profile", FileUse::Profile, "board outline"},
    {"Plated", FileUse::Drill, ""},
    {"NonPlated", FileUse::Drill, ""},
    {"MixedPlating", FileUse::Drill, ""},
    {"Soldermask", FileUse::Other, "solder mask"},
    {"Paste", FileUse::Other, "solder paste"},
    {"Legend", FileUse::Other, "legend"},
    {"Component", FileUse::Other, "components"},
    {"Glue", FileUse::Other, "adhesive"},
    {"Drillmap", FileUse::Other, "drill drawing"},
    {"FabricationDrawing", FileUse::Other, "fabrication drawing"},
    {"AssemblyDrawing", FileUse::Other, "assembly drawing"},
    {"ArrayDrawing", FileUse::Other, "drawing of a panel"},
    {"Keepout", FileUse::Other, "keepouts"},
    {"Keep-out", FileUse::Other, "keepouts"},
    {"Pads", FileUse::Other, "pad master"},
    {"JobInfo", FileUse::Helper, "job file"},
};

bool startsWith(Text text, Text start) { return text.substr(0, start.size()) == start; }

Text trimmed(Text text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '*'))
        text.remove_suffix(1);
    return text;
}

void placeAt(SetFile &file, double place) {
    file.place = place;
    file.hasPlace = true;
}

// "Copper", "L2", "Inr", "Signal".
void placeByFunction(std::vector<std::string> const &values, SetFile &file) {
    for (std::size_t index = 1; index < values.size(); ++index) {
        std::string const &value = values[index];
        const int number = index == 1 && startsWith(value, "L") ? parseInt(Text(value).substr(1), 0, 0) : 0;
        file.mayEnd = file.mayEnd || number > 0;
        if (number > 0) return placeAt(file, number);
        if (value == "Top") return placeAt(file, 1.0);
        if (value == "Bot") return placeAt(file, bottomPlace);
    }
}

bool settleByFunction(SetFile &file) {
    std::vector<std::string> const &values = file.layer.attribute(".FileFunction");
    if (values.empty() || values.front().empty()) return false;
    file.isByForm = file.mayEnd = false;
    file.use = FileUse::Other;
    file.meaning = lowerCase(values.front());
    for (FunctionRule const &rule : functionRules) {
        if (!equalsIgnoreCase(rule.text, values.front())) continue;
        file.use = rule.use;
        file.meaning = rule.meaning;
    }
    file.reason = "its FileFunction is " + listed(values);
    if (file.use == FileUse::Copper) placeByFunction(values, file);
    if (file.use == FileUse::Drill) file.meaning = "drills of a layer's form";
    return true;
}

// What stands behind a mark in a comment, or nothing: "Layer : EtchLayerTop.gdo".
Text behind(Text comment, Text mark) {
    const std::size_t at = comment.find(mark);
    if (at == Text::npos) return {};
    Text rest = comment.substr(at + mark.size());
    rest = trimmed(rest);
    if (!startsWith(rest, ":") && !startsWith(rest, "=")) return {};
    return trimmed(rest.substr(1));
}

bool settleByPhysicalOrder(SetFile &file) {
    for (std::string const &comment : file.layer.comments) {
        const int order = parseInt(behind(comment, "Layer_Physical_Order"), 0, 0);
        if (order < 1) continue;
        file.use = FileUse::Copper;
        file.reason = "its Layer_Physical_Order is " + std::to_string(order);
        placeAt(file, order);
        file.mayEnd = true;
        return true;
    }
    return false;
}

// Films list the classes and subclasses that are on them: "Layer:  ETCH/GND2".
struct Film {
    std::string copper;             // subclass of copper
    std::vector<std::string> stack; // the copper layers of the board, where the film lists them in order
    bool hasClasses = false;
    bool hasOutline = false;
    bool hasMore = false; // anything but outlines
    std::string name;
};

void addSubclass(Film &film, Text name, Text subclass) {
    film.hasClasses = true;
    if (name == "ETCH" || name == "CONDUCTOR") film.copper = subclass;
    if (name == "VIA KEEPOUT" && subclass != "ALL") film.stack.emplace_back(subclass);
    const bool isOutline = subclass.find("OUTLINE") != Text::npos;
    const bool isBoard = startsWith(name, "BOARD GEOMETRY") || startsWith(name, "SUBSTRATE GEOMETRY");
    film.hasOutline = film.hasOutline || (isBoard && isOutline);
    film.hasMore = film.hasMore || !isOutline;
}

Film filmOf(LayerFacts const &facts) {
    Film film;
    for (std::string const &comment : facts.comments) {
        const Text name = behind(comment, "Film Name");
        if (!name.empty()) film.name = name;
        const Text layer = behind(comment, "Layer");
        const std::size_t slash = layer.find('/');
        if (slash != Text::npos && slash > 0)
            addSubclass(film, layer.substr(0, slash), layer.substr(slash + 1));
    }
    // From top to bottom, or the other way round.
    if (!film.stack.empty() && findByWords(film.stack.front()).place == bottomPlace)
        std::reverse(film.stack.begin(), film.stack.end());
    const bool isStack = film.stack.size() > 2 && findByWords(film.stack.front()).place == 1.0 &&
                         findByWords(film.stack.back()).place == bottomPlace;
    if (!isStack) film.stack.clear();
    return film;
}

bool settleByFilm(SetFile &file) {
    const Film film = filmOf(file.layer);
    if (!film.hasClasses) return false;
    if (film.copper.empty()) {
        const NameFinding finding = findByWords(film.name.empty() ? stemOf(file.file) : film.name);
        const bool isOutline = film.hasOutline && !film.hasMore;
        file.use = isOutline ? FileUse::Profile : FileUse::Other;
        file.meaning = isOutline ? "board outline" : finding.meaning.empty() ? "drawing" : finding.meaning;
        file.reason = "its comments list no layer of copper";
        return true;
    }
    take(file, findByWords(film.copper), "its comments list the copper " + inQuotes(film.copper));
    file.use = FileUse::Copper;
    file.isGuess = false;
    const auto found = std::find(film.stack.begin(), film.stack.end(), film.copper);
    if (found == film.stack.end()) return true;
    placeAt(file, static_cast<double>(found - film.stack.begin()) + 1.0);
    file.isCounted = false;
    file.mayEnd = true;
    file.reason += ", which is number " + std::to_string(found - film.stack.begin() + 1) + " of " +
                   std::to_string(film.stack.size()) + " by their order there";
    return true;
}

// The name of a layer in a comment or a statement may be that of a file.
std::string layerNameOf(Text text) {
    const std::string name(trimmed(text.substr(0, 1000)));
    const std::string extension = FileSystem::Path::getExtension(name, true);
    constexpr std::size_t longest = 5;
    return extension.empty() || extension.size() > longest ? name : stemOf(name);
}

// Names of layers in the file. Only those that hold nothing but words for layers tell: others may be the
// name of the board, whatever is in it.
bool settleByContentName(SetFile &file, bool pureOnly) {
    std::vector<std::string> names;
    for (std::string const &comment : file.layer.comments) {
        for (const Text mark : {"Layer", "LAYER", "layer"}) {
            const Text name = behind(comment, mark);
            if (!name.empty()) names.push_back(layerNameOf(name));
        }
    }
    for (std::string const &name : file.layer.names)
        names.push_back(layerNameOf(name));
    for (std::string const &name : names) {
        const NameFinding finding = findByWords(name);
        if (finding.use == FileUse::None || (pureOnly && !finding.isPure)) continue;
        // The net of a plane alone is no more than the file's name tells.
        if (finding.isWeak && pureOnly && !finding.hasPlace) continue;
        take(file, finding, "its layer name is " + inQuotes(name));
        file.isGuess = !finding.isPure || finding.isWeak;
        return true;
    }
    return false;
}

bool settleByOwnName(SetFile &file) {
    const std::string extension = FileSystem::Path::getExtension(file.file, true);
    const NameFinding byExtension = findByExtension(extension);
    const NameFinding byWords = findByWords(stemOf(file.file));
    // The words know better than an extension for mechanical layers, and what the edge is.
    const bool wordsFirst =
        byExtension.use == FileUse::None || (byExtension.isMechanical && byWords.use == FileUse::Profile);
    NameFinding const &finding = wordsFirst ? byWords : byExtension;
    if (finding.use == FileUse::None) return false;
    take(file, finding, wordsFirst ? std::string(byName) : "by its extension " + lowerCase(extension));
    file.isGuess = true;
    if (file.use == FileUse::Drill) file.meaning = "drills of a layer's form";
    return true;
}

// A layer of which the file says no more than that it is mechanical may be what its name says.
void refineMechanical(SetFile &file) {
    if (!file.isMechanical) return;
    SetFile named = file;
    if (!settleByOwnName(named) || named.use != FileUse::Profile) return;
    named.isMechanical = false;
    file = named;
}

// Holes in the form of a layer: its extension is one of drills, and nothing says that it draws them.
void refineDrills(SetFile &file) {
    const bool isDrill =
        findByExtension(FileSystem::Path::getExtension(file.file, true)).use == FileUse::Drill;
    const NameFinding name = findByWords(stemOf(file.file));
    if (file.meaning != "drill drawing" || !isDrill || name.use == FileUse::Other) return;
    file.use = FileUse::Drill;
    file.meaning = "drills of a layer's form";
}

// Up to the last mark between words that all have in common.
std::size_t commonStart(std::vector<SetFile *> const &files) {
    std::string start = stemOf(files.front()->file);
    for (SetFile const *const file : files) {
        const std::string stem = stemOf(file->file);
        const auto differs = std::mismatch(start.begin(), start.end(), stem.begin(), stem.end()).first;
        start.erase(differs, start.end());
    }
    const std::size_t mark = start.find_last_of("-_. ");
    return mark == std::string::npos ? 0 : mark + 1;
}

} // namespace

void settleByRestOfNames(std::vector<SetFile> &files) {
    constexpr std::size_t fewest = 3; // files with a common start
    std::map<std::string, std::vector<SetFile *>> folders;
    for (SetFile &file : files)
        if (file.isLayerForm) folders[FileSystem::Path::stripLastToken(file.file)].push_back(&file);
    for (auto const &[folder, group] : folders) {
        const std::size_t start = group.size() < fewest ? 0 : commonStart(group);
        for (SetFile *const file : group) {
            if (start == 0 || !startsWith(file->reason, byName)) continue;
            const NameFinding finding = findByWords(stemOf(file->file).substr(start));
            if (finding.use != FileUse::None) take(*file, finding, std::string(byName));
        }
    }
}

void take(SetFile &file, NameFinding const &finding, std::string const &reason) {
    file.use = finding.use;
    file.meaning = finding.meaning;
    file.isMechanical = finding.isMechanical;
    file.hasPlace = finding.hasPlace;
    file.place = finding.place;
    file.isCounted = finding.isCounted;
    file.mayEnd = finding.mayEnd;
    file.isByForm = false;
    file.reason = reason;
    if (!finding.meaning.empty()) file.reason += " it is " + finding.meaning;
    if (startsWith(reason, "its")) file.reason = reason;
}

void settleLayer(SetFile &file) {
    if (settleByFunction(file) || settleByPhysicalOrder(file) || settleByFilm(file)) return;
    if (settleByContentName(file, true) || settleByOwnName(file) || settleByContentName(file, false)) {
        refineMechanical(file);
        refineDrills(file);
    }
}

std::string listed(std::vector<std::string> const &values) {
    std::string text;
    for (std::string const &value : values)
        text += (text.empty() ? "" : ",") + value;
    return text.size() > longestShown ? text.substr(0, longestShown) + "..." : text;
}

std::string inQuotes(std::string_view text) {
    std::string shown(text.substr(0, longestShown));
    for (char &c : shown)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    return "\"" + shown + "\"";
}

} // namespace EDA::Fabrication
