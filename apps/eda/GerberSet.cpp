// The files of a Gerber set, told apart and put in order.
#include "GerberSet.h"

#include "Failure.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/Path.h"
#include "LayerNames.h"
#include "Printable.h"
#include "readers/gerber/GerberReader.h"
#include "text/Encoding.h"
#include "text/Text.h"

#include <algorithm>

namespace EDATool {

namespace {

std::string stemOf(const std::string &file) {
    return FileSystem::Path::stripExtension(FileSystem::Path::getLastToken(file));
}

GerberFile lookAt(const std::string &file, const EDA::GerberReader &reader) {
    std::string text, error;
    if (!FileSystem::File::readAll(file, text, error)) throw DesignFailure(printable(error));
    GerberFile found;
    found.file = file;
    found.facts = lookThroughGerber(EDA::decodedToUtf8(std::move(text)));
    found.role = roleOfGerber(file, found.facts, reader.isDrillFile(file));
    return found;
}

void leaveOut(const GerberFile &file, const std::string &reason, Design &design) {
    design.sources.push_back({file.file, "left out", reason});
    design.warnings.push_back(inQuotes(file.file) + ": is left out: " + reason);
}

// "LAYER_1" beside "TOP" is the first inner layer.
void settlePlaces(std::vector<GerberFile> &layers) {
    const auto isAny = [&layers](bool isTop, bool isNumbered) {
        return std::any_of(layers.begin(), layers.end(), [=](const GerberFile &layer) {
            const GerberRole &role = layer.role;
            return role.place == 1.0 && role.isTop == isTop && role.isNumberedByName == isNumbered;
        });
    };
    const bool countsInner = isAny(true, false) && isAny(false, true);
    for (GerberFile &layer : layers) {
        if (!layer.role.hasPlace) layer.role.place = unknownPlace;
        if (countsInner && layer.role.isNumberedByName) layer.role.place += 1.0;
    }
}

// Layers whose place is not known stand between those that are, in the order given; without any known place
// the order given stands.
void orderByPlace(std::vector<GerberFile> &layers, Design &design) {
    settlePlaces(layers);
    std::stable_sort(layers.begin(), layers.end(),
                     [](const GerberFile &a, const GerberFile &b) { return a.role.place < b.role.place; });
    const auto numUnknown = std::count_if(layers.begin(), layers.end(),
                                          [](const GerberFile &layer) { return !layer.role.hasPlace; });
    if (numUnknown > 1) {
        design.warnings.push_back("the order of " + std::to_string(numUnknown) +
                                  " copper layers is not known; they stand in the order given, "
                                  "--layer-order can say another");
    }
    for (std::size_t index = 1; index < layers.size(); ++index) {
        const GerberRole &before = layers[index - 1].role;
        const GerberRole &role = layers[index].role;
        if (!before.hasPlace || !role.hasPlace || before.place != role.place) continue;
        design.warnings.push_back(inQuotes(layers[index - 1].file) + " and " + inQuotes(layers[index].file) +
                                  " are the same layer of the board; are they of two boards? "
                                  "--layer-order can say which layers there are");
    }
}

// The layers that the list names, and no others. What it names is copper, whatever its name says.
std::vector<GerberFile> orderByList(std::vector<GerberFile> files, const std::vector<std::string> &order,
                                    Design &design) {
    std::vector<GerberFile> layers;
    for (const std::string &text : order) {
        const auto found = std::find_if(files.begin(), files.end(), [&text](const GerberFile &file) {
            return !file.file.empty() && meansFile(text, file.file);
        });
        if (found == files.end())
            throw UsageFailure("--layer-order names " + inQuotes(text) +
                               ", which is none of the layer files");
        found->role.reason = "by --layer-order";
        layers.push_back(std::move(*found));
        found->file.clear();
    }
    for (const GerberFile &file : files) {
        if (file.file.empty()) continue;
        leaveOut(file,
                 file.role.use == GerberUse::Copper ? "--layer-order does not name it" : file.role.reason,
                 design);
    }
    return layers;
}

bool canBeLayer(const GerberFile &file) {
    const std::vector<std::string> &function = file.facts.fileFunction;
    return file.facts.isGerberText && (function.empty() || function.front() == "Copper");
}

struct Span : SpanOption {
    bool isUsed = false;
};

// "Plated,1,4,PTH": the layers by number, where so many there are.
bool spanByFunction(const std::vector<std::string> &function, std::size_t numLayers, DrillFile &drill) {
    if (function.size() < 3) return false;
    const int from = EDA::parseInt(function[1], 0, 0);
    const int to = EDA::parseInt(function[2], 0, 0);
    if (from < 1 || to <= from || static_cast<std::size_t>(to) > numLayers) return false;
    drill.from = static_cast<std::size_t>(from - 1);
    drill.to = static_cast<std::size_t>(to - 1);
    return true;
}

void setSpans(GerberSet &set, const DesignSettings &settings) {
    std::vector<Span> spans;
    for (const std::string &text : settings.spans)
        spans.push_back({parseSpan(text)});
    const std::vector<std::string> names = set.layerNames();
    const std::vector<std::string> files = set.layerFiles();
    for (DrillFile &drill : set.drills) {
        drill.to = names.empty() ? 0 : names.size() - 1;
        if (spanByFunction(drill.drill.facts.fileFunction, names.size(), drill))
            drill.drill.role.reason += "; its FileFunction names the layers";
        for (Span &span : spans) {
            if (!meansFile(span.file, drill.drill.file)) continue;
            drill.from = findLayer(names, files, span.from, "--span");
            drill.to = findLayer(names, files, span.to, "--span");
            drill.drill.role.reason += "; --span names the layers";
            span.isUsed = true;
        }
    }
    for (const Span &span : spans) {
        if (!span.isUsed)
            throw UsageFailure("--span names " + inQuotes(span.file) + ", which is none of the drill files");
    }
}

void tellSources(const GerberSet &set, Design &design) {
    const auto nameOf = [&set](std::size_t layer) {
        return shortened(FileSystem::Path::getLastToken(set.layers[layer].file), 60);
    };
    std::vector<SourceFile> sources;
    for (std::size_t index = 0; index < set.layers.size(); ++index) {
        sources.push_back({set.layers[index].file, "copper layer " + std::to_string(index + 1),
                           set.layers[index].role.reason});
    }
    for (const DrillFile &drill : set.drills) {
        std::string use = "drills";
        if (!set.layers.empty()) use += " from " + nameOf(drill.from) + " to " + nameOf(drill.to);
        sources.push_back({drill.drill.file, use, drill.drill.role.reason});
    }
    design.sources.insert(design.sources.begin(), sources.begin(), sources.end());
}

std::string formatText(int integerDigits, int decimalDigits) {
    return std::to_string(integerDigits) + "." + std::to_string(decimalDigits);
}

// A drill file can't hand its format to the reader, but where it names one, a difference is worth a word.
void tellOtherFormats(const GerberSet &set, const DrillFormat &format, Design &design) {
    for (const DrillFile &drill : set.drills) {
        const GerberFacts &facts = drill.drill.facts;
        if (!facts.isDrill || !facts.hasFormat) continue;
        if (facts.integerDigits == format.integerDigits && facts.decimalDigits == format.decimalDigits)
            continue;
        const std::string own = formatText(facts.integerDigits, facts.decimalDigits);
        design.warnings.push_back(inQuotes(drill.drill.file) + ": names the number format " + own + ", but " +
                                  formatText(format.integerDigits, format.decimalDigits) +
                                  " is used, so its holes may lie wrong; --drill-format " + own +
                                  " takes the file's own");
    }
}

} // namespace

std::vector<std::string> GerberSet::layerFiles() const {
    std::vector<std::string> files;
    for (const GerberFile &layer : layers)
        files.push_back(layer.file);
    return files;
}

std::vector<std::string> GerberSet::layerNames() const {
    std::vector<std::string> names;
    for (const GerberFile &layer : layers)
        names.push_back(stemOf(layer.file));
    return names;
}

GerberSet sortGerberFiles(const std::vector<std::string> &files, const DesignSettings &settings,
                          Design &design) {
    const EDA::GerberReader reader;
    const bool hasOrder = !settings.layerOrder.empty();
    GerberSet set;
    for (const std::string &file : files) {
        GerberFile found = lookAt(file, reader);
        if (found.role.use == GerberUse::Drill) {
            set.drills.push_back({std::move(found), 0, 0});
        } else if (found.role.use == GerberUse::Copper || (hasOrder && canBeLayer(found))) {
            set.layers.push_back(std::move(found));
        } else {
            leaveOut(found, found.role.reason, design);
        }
    }
    if (hasOrder) {
        set.layers = orderByList(std::move(set.layers), settings.layerOrder, design);
    } else {
        orderByPlace(set.layers, design);
    }
    if (set.layers.empty() && set.drills.empty())
        throw DesignFailure("none of the files is a copper layer or a drill file; " +
                            (design.warnings.empty() ? std::string() : design.warnings.front()));
    setSpans(set, settings);
    tellSources(set, design);
    return set;
}

DrillFormat drillFormatOf(const GerberSet &set, const DesignSettings &settings, Design &design) {
    DrillFormat format;
    std::string source = "the default, as no layer file names one";
    const std::string &given = settings.drillFormat;
    if (!given.empty()) {
        format = parseDrillFormat(given);
        source = "as --drill-format says";
    } else if (!set.layers.empty()) {
        const std::string &first = set.layers.front().file;
        const EDA::GerberReader reader;
        if (reader.extractNumberFormat(QString::fromStdString(first), format.integerDigits,
                                       format.decimalDigits))
            source = "as in " + inQuotes(first);
    }
    if (set.drills.empty()) return format;
    design.notices.push_back("drill files are read with the number format " +
                             formatText(format.integerDigits, format.decimalDigits) + ", " + source);
    tellOtherFormats(set, format, design);
    return format;
}

} // namespace EDATool
