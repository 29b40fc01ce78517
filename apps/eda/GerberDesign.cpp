// Reading a set of Gerber layer files and drill files as they are, and knowing such files.
#include "Console.h"
#include "FabricationDesign.h"
#include "Failure.h"
#include "Formats.h"
#include "GerberSet.h"
#include "ImportOptions.h"
#include "Printable.h"
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberReader.h"
#include "SuiteSteps.h"
#include "text/Text.h"

#include <algorithm>
#include <map>

namespace EDATool {

namespace {

using Text = std::string_view;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }

bool hasDigit(Text line, std::size_t index) { return index < line.size() && isDigit(line[index]); }

// "%FSLAX24Y24*%", "G04 ...", "G75*", "D10*", "X0Y0D02*".
bool isLayerLine(Text line) {
    if (line[0] == '%') return line.size() > 3 && isUpper(line[1]) && isUpper(line[2]);
    const bool hasEnd = line.find('*') != Text::npos;
    if (line[0] == 'G') return EDA::startsWith(line, "G04") || (hasEnd && hasDigit(line, 1));
    if (line[0] == 'D') return hasEnd && hasDigit(line, 1);
    return (line[0] == 'X' || line[0] == 'Y') && hasEnd && (hasDigit(line, 1) || hasDigit(line, 2));
}

// "M48", "T01C0.5", "T1", and what files of early machines begin with.
bool isDrillLine(Text line) {
    for (const char *start : {"M48", "M71", "M72", "METRIC", "INCH", "FMAT,", "ICI,"}) {
        if (EDA::startsWith(line, start)) return true;
    }
    if (line[0] != 'T' || !hasDigit(line, 1)) return false;
    const std::size_t end = std::min(line.find_first_not_of("0123456789", 1), line.size());
    return end == line.size() || line[end] == 'C' || line[end] == 'F' || line[end] == 'S';
}

// Lines that may stand before the first that tells: comments of drill files and lone marks.
bool isNeutral(Text line) {
    return line.empty() || line[0] == ';' || line == "%" || line == "*" || line == "/";
}

void addLosses(const GerberFile &file, Design &design) {
    for (const GerberLoss &loss : file.facts.losses) {
        design.warnings.push_back(inQuotes(file.file) + ": line " + std::to_string(loss.line) + ": " +
                                  loss.what + ", " + std::to_string(loss.count) +
                                  (loss.count == 1 ? " place" : " places") + ": " + loss.meaning);
    }
}

// Attributes of nets alone make thousands of lines that differ in little: those of statements that start
// alike become one, with their number.
std::vector<std::string> grouped(const std::vector<std::string> &lines) {
    constexpr Text mark = "Unhandled statement: ";
    constexpr std::size_t codeSize = 3; // "%TO", "G05"
    struct Group {
        std::string line;
        std::size_t count;
    };
    std::vector<Group> groups;
    std::map<std::string, std::size_t> places;
    for (const std::string &line : lines) {
        const bool isStatement = EDA::startsWith(line, mark);
        const std::string key = isStatement ? line.substr(0, mark.size() + codeSize) : line;
        const auto [place, isNew] = places.emplace(key, groups.size());
        if (isNew) groups.push_back({line, 0});
        ++groups[place->second].count;
    }
    std::vector<std::string> result;
    for (const Group &group : groups) {
        const std::string more = std::to_string(group.count - 1);
        result.push_back(group.line + (group.count > 1 ? ", and " + more + " more like it" : ""));
    }
    return result;
}

QString toQt(const std::string &text) { return QString::fromStdString(text); }

// One file at a time, so that what the reader says has a file's name.
class SetReader {
public:
    SetReader(EDA::GerberReader &reader, Design &design) : reader_(reader), design_(design) {}

    void readLayer(const GerberFile &file) {
        const std::size_t before = reader_.getBoard().numLayers();
        reader_.setLayerArrangement({toQt(file.file)}, {}, {}, {});
        read(file);
        if (reader_.getBoard().numLayers() != before + 1)
            throw DesignFailure(inQuotes(file.file) + ": " + reason());
    }

    void readDrills(const DrillFile &file, const std::string &from, const std::string &to) {
        // The reader takes names of files, without their extension.
        const auto fileName = [](const std::string &layer) {
            return toQt(layer.empty() ? layer : layer + ".gbr");
        };
        reader_.setLayerArrangement({}, {toQt(file.drill.file)}, {{0, fileName(from)}}, {{0, fileName(to)}});
        read(file.drill);
    }

private:
    void read(const GerberFile &file) {
        reader_.readFiles(&progress_);
        stopIfInterrupted();
        for (const std::string &line : grouped(messageLines(reader_.getError())))
            design_.warnings.push_back(inQuotes(file.file) + ": " + line);
        addLosses(file, design_);
        checkUnits(file);
        design_.files.push_back(file.file);
    }

    std::string reason() {
        const std::vector<std::string> lines = messageLines(reader_.getError());
        return lines.empty() ? "cannot be read" : lines.back();
    }

    // A board has one unit, that of the file read last.
    void checkUnits(const GerberFile &file) {
        const std::string &units = file.facts.units;
        if (units.empty()) return;
        if (!units_.empty() && units != units_) {
            design_.warnings.push_back(inQuotes(file.file) + ": is in " + units +
                                       ", but files before it are in " + units_ +
                                       "; the board takes the units of the last, without conversion");
        }
        units_ = units;
    }

    EDA::GerberReader &reader_;
    Design &design_;
    ConsoleProgress progress_;
    std::string units_;
};

} // namespace

void uniteUnlessTold(EDA::GerberReader &reader, const DesignSettings &settings) {
    EntityModel::Entity &options = storedImportOptions(reader);
    changeImportOption(options, "--option", "Merge Conductors=Yes");
    for (const std::string &change : settings.options)
        changeImportOption(options, "--option", change);
}

bool looksLikeGerber(const std::string &file, std::string_view head) {
    if (isArchive(file) && isFabricationArchive(file)) return true;
    while (!head.empty()) {
        const std::size_t end = std::min(head.find_first_of("\r\n"), head.size());
        const Text line = EDA::trimmed(head.substr(0, end));
        if (!isNeutral(line)) return isLayerLine(line) || isDrillLine(line);
        head.remove_prefix(std::min(end + 1, head.size()));
    }
    return false;
}

std::unique_ptr<EDA::EDAReader> makeGerberReader() { return std::make_unique<EDA::GerberReader>(); }

void readGerberDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design) {
    for (const std::string &file : files) {
        if (isArchive(file))
            throw UsageFailure("--as-is takes files and folders, but " + inQuotes(file) + " is an archive");
    }
    auto reader = std::make_unique<EDA::GerberReader>();
    uniteUnlessTold(*reader, settings);
    const GerberSet set = sortGerberFiles(files, settings, design);
    const DrillFormat format = drillFormatOf(set, settings, design);
    reader->setViaNumberFormat(format.integerDigits, format.decimalDigits);
    SetReader setReader(*reader, design);
    for (const GerberFile &layer : set.layers)
        setReader.readLayer(layer);
    design.layerFiles = set.layerFiles();
    const std::vector<std::string> names = set.layerNames();
    for (const DrillFile &drill : set.drills) {
        setReader.readDrills(drill, names.empty() ? "" : names[drill.from],
                             names.empty() ? "" : names[drill.to]);
    }
    design.hasBoard = true;
    design.reader = std::move(reader);
}

} // namespace EDATool
