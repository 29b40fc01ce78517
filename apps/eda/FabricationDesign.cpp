// Reading a fabrication set through the front end.
#include "FabricationDesign.h"

#include "Console.h"
#include "fabrication/sets/FabricationReader.h"
#include "Failure.h"
#include "Files.h"
#include "GerberSet.h"
#include "Printable.h"
#include "Report.h"
#include "SetOptions.h"
#include "SuiteSteps.h"

#include <algorithm>
#include <map>
#include <set>

namespace EDATool {

namespace {

using EDA::FabricationReader;
using EDA::Fabrication::FabricationSet;
using EDA::Fabrication::FileUse;
using EDA::Fabrication::Note;
using EDA::Fabrication::NoteKind;
using EDA::Fabrication::SetSettings;
using EDA::Fabrication::Unit;

SetSettings setSettings(const DesignSettings &settings) {
    SetSettings result;
    result.layerOrder = settings.layerOrder;
    for (const std::string &text : settings.spans) {
        const SpanOption span = parseSpan(text);
        result.spans.push_back({span.file, span.from, span.to});
    }
    if (!settings.drillFormat.empty()) {
        const DrillFormat format = parseDrillFormat(settings.drillFormat);
        result.drillNumbers.integerDigits = format.integerDigits;
        result.drillNumbers.decimalDigits = format.decimalDigits;
    }
    result.profile = settings.profile;
    result.board = settings.board;
    return result;
}

// The library quotes names in its own way.
bool names(const std::string &line, const std::string &name) {
    return line.find("\"" + name + "\"") != std::string::npos ||
           line.find(inQuotes(name)) != std::string::npos;
}

// A name that the command line gave and that is not in the set makes the command wrong, not the set.
bool isAboutSettings(const std::string &error, const SetSettings &settings) {
    std::vector<std::string> given = settings.layerOrder;
    for (const SetSettings::Span &span : settings.spans)
        given.insert(given.end(), {span.file, span.from, span.to});
    given.insert(given.end(), {settings.profile, settings.board});
    return std::any_of(given.begin(), given.end(),
                       [&error](const std::string &name) { return !name.empty() && names(error, name); });
}

std::string places(std::size_t count) { return std::to_string(count) + (count == 1 ? " place" : " places"); }

// One line a kind over all files, since real sets have the same in each.
void tellNormalised(const FabricationReport &report, Design &design) {
    struct Kind {
        std::string what;
        std::size_t count = 0;
        std::set<std::string> files;
    };
    std::vector<Kind> kinds;
    std::map<std::string, std::size_t> places;
    for (const FabricationReport::File &file : report.files) {
        for (const Note &note : file.notes) {
            if (note.kind != NoteKind::Normalised) continue;
            const auto [place, isNew] = places.emplace(note.what, kinds.size());
            if (isNew) kinds.push_back({note.what, 0, {}});
            kinds[place->second].count += note.count;
            kinds[place->second].files.insert(file.file);
        }
    }
    for (const Kind &kind : kinds) {
        const std::size_t number = kind.files.size();
        design.notices.push_back(
            "normalised: " + printable(kind.what) + ": " + std::to_string(kind.count) + " in " +
            (number == 1 ? inQuotes(*kind.files.begin()) : std::to_string(number) + " files"));
    }
}

void tellFile(const FabricationReport::File &file, Design &design) {
    for (const Note &note : file.notes) {
        if (note.kind == NoteKind::Normalised) continue;
        const std::string line = note.line > 0 ? "line " + std::to_string(note.line) + ": " : "";
        const char *const verb = note.kind == NoteKind::Guessed ? "guessed: " : "left out: ";
        design.warnings.push_back(inQuotes(file.file) + ": " + line + verb + printable(note.what) +
                                  (note.count > 1 ? ", " + places(note.count) : ""));
    }
}

// Files with a note of their own in the set's warnings need no second one.
bool isTold(const std::string &file, const std::vector<std::string> &warnings) {
    return std::any_of(warnings.begin(), warnings.end(), [&file](const std::string &line) {
        return names(line, file) && line.find("left out") != std::string::npos;
    });
}

constexpr const char *leftOut = "left out";

// Masks, legends and drawings lie in every set and are no loss, and a warning names another board as a whole;
// the list of the files has them all.
std::set<std::string> filesLeftOutByRight(const FabricationSet &set) {
    std::set<std::string> files;
    for (const auto &file : set.leftOut) {
        if (file.use == FileUse::Other || file.reason.find("it belongs to the board") == 0)
            files.insert(file.shown);
    }
    return files;
}

void tellReport(const FabricationReport &report, const FabricationSet &set, Design &design) {
    const std::set<std::string> byRight = filesLeftOutByRight(set);
    for (const std::string &guess : report.guesses)
        design.warnings.push_back("guessed: " + printable(guess));
    for (const std::string &warning : report.warnings)
        design.warnings.push_back(printable(warning));
    for (const FabricationReport::File &file : report.files) {
        design.sources.push_back(file);
        tellFile(file, design);
        if (file.use == leftOut && byRight.count(file.file) == 0 && !isTold(file.file, report.warnings))
            design.warnings.push_back(inQuotes(file.file) + ": is left out: " + printable(file.reason));
    }
    tellNormalised(report, design);
    if (set.boards.size() > 1) design.notices.push_back("--board takes another of the boards");
}

FabricationReport reportOf(const FabricationReader::Report &report) {
    FabricationReport result{{}, report.guesses, report.warnings};
    for (const FabricationReader::FileReport &file : report.files)
        result.files.push_back({{file.file, file.use, file.reason}, file.notes});
    return result;
}

// The files of the layers that there are; copper stands first in the report.
std::vector<std::string> layerFilesOf(const FabricationReader &reader) {
    const auto &copper = reader.getSet().copper;
    const auto &reports = reader.getReport().files;
    std::vector<std::string> files;
    for (std::size_t index = 0; index < std::min(copper.size(), reports.size()); ++index) {
        if (!reports[index].layerName.empty()) files.push_back(copper[index].file);
    }
    return files;
}

// All that the set holds, taken or not.
void addFilesOf(const FabricationSet &set, std::vector<std::string> &files) {
    for (const auto *const list : {&set.copper, &set.profiles, &set.leftOut}) {
        for (const auto &file : *list)
            files.push_back(file.file);
    }
    for (const auto &drill : set.drills)
        files.push_back(drill.file.file);
}

// What the reader says and the report does not.
void tellRest(const FabricationReader &reader, Design &design) {
    for (const std::string &line : messageLines(reader.getError())) {
        const std::size_t colon = line.find(": ");
        const std::string tail = colon == std::string::npos ? line : line.substr(colon + 2);
        const bool isTold =
            std::any_of(design.warnings.begin(), design.warnings.end(), [&tail](const std::string &warning) {
                return warning.find(tail) != std::string::npos;
            });
        if (!isTold) design.warnings.push_back(line);
    }
}

// What the files' numbers are in, for those who know better.
std::string unitOf(const FabricationSet &set) {
    Unit unit = Unit::Unknown;
    if (!set.copper.empty()) {
        unit = set.copper.front().layer.unit;
    } else if (!set.drills.empty()) {
        const auto &file = set.drills.front().file;
        unit = file.isLayerForm ? file.layer.unit : file.drill.numbers.unit;
    }
    return unit == Unit::Inch ? "in" : "mm";
}

std::string reasonOf(const FabricationReader &reader) {
    const std::string lines = joinedLines(messageLines(reader.getError()));
    return lines.empty() ? "the files cannot be read" : lines;
}

std::string whyEmpty(const FabricationReader &reader) {
    if (!reader.getError().empty()) return reasonOf(reader);
    std::string list;
    for (const auto &file : reader.getReport().files) {
        if (file.use != leftOut) list += (list.empty() ? "" : ", ") + inQuotes(file.file);
    }
    return "there are no holes and no copper in " + list;
}

// A picture of a mask is welcome; a model with one for its copper may not be what is meant.
void tellLone(const std::vector<std::string> &files, const FabricationReader &reader, Design &design) {
    const auto &copper = reader.getSet().copper;
    if (files.size() != 1 || copper.size() != 1 || copper.front().meaning.empty()) return;
    design.warnings.push_back(inQuotes(files.front()) + ": is " + printable(copper.front().meaning) +
                              ", but is read as copper, since it is named alone");
}

bool isLone(const std::vector<std::string> &files, const DesignSettings &settings) {
    return files.size() == 1 && !isArchive(files.front()) && !isFolder(files.front()) &&
           settings.layerOrder.empty();
}

// Throws unless files were found.
void findFiles(const std::vector<std::string> &files, FabricationReader &reader,
               const SetSettings &settings) {
    if (reader.setFiles(files)) return;
    const std::string reason = reasonOf(reader);
    if (isAboutSettings(reason, settings)) throw UsageFailure(reason);
    throw DesignFailure(files.size() == 1 ? inQuotes(files.front()) + ": " + reason : reason);
}

} // namespace

void readFabricationDesign(const std::vector<std::string> &files, const DesignSettings &settings,
                           Design &design) {
    auto reader = std::make_unique<FabricationReader>();
    uniteUnlessTold(*reader, settings);
    const SetSettings own = setSettings(settings);
    reader->setSettings(own);
    ConsoleProgress progress;
    if (isLone(files, settings)) {
        if (!reader->readFile(files.front()))
            throw DesignFailure(inQuotes(files.front()) + ": " + reasonOf(*reader));
    } else {
        findFiles(files, *reader, own);
        reader->readFiles(&progress);
    }
    stopIfInterrupted();
    design.fabrication = reportOf(reader->getReport());
    tellReport(*design.fabrication, reader->getSet(), design);
    const EDA::EDABoard &board = reader->getBoard();
    if (board.numLayers() == 0 && board.numVias(1) == 0) throw DesignFailure(whyEmpty(*reader));
    tellRest(*reader, design);
    tellLone(files, *reader, design);
    design.files = files;
    addFilesOf(reader->getSet(), design.files);
    design.layerFiles = layerFilesOf(*reader);
    design.fileUnits = unitOf(reader->getSet());
    design.hasBoard = true;
    design.reader = std::move(reader);
}

} // namespace EDATool
