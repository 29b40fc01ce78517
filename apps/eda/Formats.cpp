// The table of formats, and reading a design through it.
#include "Formats.h"

#include "Console.h"
#include "FabricationDesign.h"
#include "Failure.h"
#include "Files.h"
#include "Printable.h"
#include "SuiteSteps.h"
#include "text/Text.h"

#include <algorithm>
#include <set>

namespace EDATool {

namespace {

bool looksLikeJson(const std::string &, std::string_view head) {
    const std::size_t start = head.find_first_not_of(" \t\r\n");
    return start != std::string_view::npos && head[start] == '{';
}

// Null where no row fits.
const FormatDef *formatOf(const std::string &file) {
    const std::string head = readHead(file);
    for (const FormatDef &format : formats()) {
        if (format.recognise(file, head)) return &format;
    }
    const std::string extension = lowerExtension(file);
    for (const FormatDef &format : formats()) {
        if (std::count(format.extensions.begin(), format.extensions.end(), extension) > 0) return &format;
    }
    return nullptr;
}

struct Candidate {
    std::string file;
    const FormatDef *format; // null: none
};

void leaveOut(const std::string &file, const std::string &reason, Design &design) {
    design.sources.push_back({file, "left out", reason});
    design.warnings.push_back(inQuotes(file) + ": is left out: " + reason);
}

// What lies in a folder beside a design is no reason not to read the design. False when there is no design.
bool addFilesOf(const std::string &folder, std::vector<Candidate> &candidates, Design &design) {
    const std::size_t numBefore = candidates.size();
    std::vector<Candidate> others;
    for (const std::string &file : filesInFolder(folder)) {
        try {
            const FormatDef *const format = formatOf(file);
            if (format == nullptr || format->name == nullptr) {
                leaveOut(file, "it is in no format of designs that eda reads", design);
            } else if (format->liesBesideOthers || isArchive(file)) {
                others.push_back({file, format});
            } else {
                candidates.push_back({file, format});
            }
        } catch (const DesignFailure &failure) {
            design.warnings.push_back(failure.what());
        }
    }
    if (candidates.size() == numBefore && others.size() == 1) {
        candidates.push_back(others.front());
        others.clear();
    }
    for (const Candidate &other : others)
        leaveOut(other.file, "it is a design of its own, which is read when it is named", design);
    return candidates.size() > numBefore;
}

constexpr int deepestFolder = 16;

// Some systems put layers and drills into a folder each. One that has a design itself stands for that alone.
bool addFilesBelow(const std::string &folder, int depth, std::vector<Candidate> &candidates, Design &design) {
    bool isFound = addFilesOf(folder, candidates, design);
    if (isFound || depth == deepestFolder) return isFound;
    for (const std::string &inner : foldersInFolder(folder))
        isFound |= addFilesBelow(inner, depth + 1, candidates, design);
    return isFound;
}

void addFolder(const std::string &folder, std::vector<Candidate> &candidates, Design &design) {
    if (!addFilesBelow(folder, 0, candidates, design))
        throw DesignFailure(inQuotes(folder) + ": is a folder without files that eda reads");
}

std::vector<Candidate> findCandidates(const std::vector<std::string> &files, Design &design) {
    std::vector<Candidate> candidates;
    for (const std::string &file : files) {
        if (isFolder(file)) {
            addFolder(file, candidates, design);
        } else {
            candidates.push_back({file, formatOf(file)});
        }
    }
    return candidates;
}

// The front end looks at all files itself, also those that are in no format. Archives in a folder it passes
// over, so one that is all that a folder holds is named.
Design readFabricationSet(const std::vector<std::string> &operands, const std::vector<Candidate> &candidates,
                          const DesignSettings &settings) {
    std::vector<std::string> files = operands;
    const bool isOneArchive = candidates.size() == 1 && isArchive(candidates.front().file);
    if (isOneArchive) files = {candidates.front().file};
    Design design;
    design.format = gerberFormat;
    readFabricationDesign(files, settings, design);
    return design;
}

const FormatDef &commonFormat(const std::vector<Candidate> &candidates) {
    const Candidate *first = nullptr;
    for (const Candidate &candidate : candidates) {
        if (candidate.format == nullptr) continue;
        if (candidate.format->name == nullptr)
            throw UsageFailure(inQuotes(candidate.file) + " is a model file, not a design");
        if (first != nullptr && first->format != candidate.format) {
            throw UsageFailure(inQuotes(first->file) + " and " + inQuotes(candidate.file) +
                               " are not of one format");
        }
        if (first == nullptr) first = &candidate;
    }
    for (const Candidate &candidate : candidates) {
        if (candidate.format != nullptr || (first != nullptr && first->format->isSetOfLayers)) continue;
        throw DesignFailure(inQuotes(candidate.file) + ": is in no format that eda reads (see: eda --help)");
    }
    return *first->format;
}

} // namespace

const std::vector<FormatDef> &formats() {
    static const std::vector<FormatDef> table = {
        {"IDX", {".idx"}, looksLikeIdx, readIdxDesign, makeIdxReader},
        {"IPC-2581", {".cvg"}, looksLikeIpc, readSuiteDesign, makeSuiteReader, false, true, true},
        {"QVD", {".qvd"}, looksLikeLayout, readSuiteDesign, makeSuiteReader, false, false, true},
        {"IDF",
         {".emn", ".emp", ".brd", ".lib", ".bdf", ".ldf", ".idf"},
         looksLikeIdf,
         readIdfDesign,
         makeIdfReader},
        {"Brisko", {".mcm", ".sip"}, looksLikeBrisko, readSuiteDesign, makeSuiteReader, false, false, true},
        {archiveFormat,
         {".zip", ".tgz", ".gz", ".z", ".tar", ".7z"},
         looksLikeArchive,
         readSuiteDesign,
         makeSuiteReader,
         false,
         true,
         true},
        {"XFL", {".xfl"}, looksLikeXfl, readXflDesign, makeXflReader},
        {gerberFormat,
         {".gbr", ".gtl", ".gbl", ".g1", ".g2", ".g3", ".g4", ".art", ".gdo", ".ger", ".pho", ".drl", ".xln",
          ".ncd", ".cnc", ".exc"},
         looksLikeGerber,
         readGerberDesign,
         makeGerberReader,
         true},
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

bool isModelFile(const std::string &file) {
    if (isFolder(file)) return false;
    const FormatDef *const format = formatOf(file);
    if (format == nullptr)
        throw DesignFailure(inQuotes(file) + ": is in no format that eda reads (see: eda --help)");
    return format->name == nullptr;
}

Design readDesign(const std::vector<std::string> &files, const DesignSettings &settings) {
    Design design;
    const std::vector<Candidate> candidates = findCandidates(files, design);
    const FormatDef &format = commonFormat(candidates);
    if (!settings.board.empty() && settings.copper.empty() && !format.isSetOfLayers) {
        throw UsageFailure("--board is for sets of Gerber files and, with --into, for the model, but " +
                           inQuotes(candidates.front().file) + " is " + format.name);
    }
    if (settings.areOfGerber() && settings.copper.empty() && !format.isSetOfLayers) {
        throw UsageFailure("--layer-order, --span, --drill-format, --profile and --as-is are for "
                           "Gerber files, but " +
                           inQuotes(candidates.front().file) + " is " + format.name);
    }
    if (!settings.step.empty() && !format.hasSteps) {
        throw UsageFailure("--step is for IPC-2581 documents and archives, but " +
                           inQuotes(candidates.front().file) + " is " + format.name);
    }
    if (format.isSetOfLayers && !settings.asIs) return readFabricationSet(files, candidates, settings);
    std::vector<std::string> taken;
    for (const Candidate &candidate : candidates) {
        if (candidate.format != nullptr) {
            taken.push_back(candidate.file);
        } else {
            leaveOut(candidate.file, "it is in no format of designs that eda reads", design);
        }
    }
    design.format = format.name;
    format.read(taken, settings, design);
    return design;
}

std::vector<std::string> filesOf(const Design &design) {
    std::vector<std::string> files = design.files;
    // What went through the front end is told by short names, and stands among the files by its path.
    std::set<std::string> shown;
    if (design.fabrication) {
        for (const FabricationReport::File &file : design.fabrication->files)
            shown.insert(file.file);
    }
    for (const SourceFile &source : design.sources) {
        if (shown.count(source.file) == 0) files.push_back(source.file);
    }
    return files;
}

void printWarnings(const Design &design) {
    for (const std::string &notice : design.notices)
        printNotice(notice);
    for (const std::string &warning : design.warnings)
        printWarning(warning);
}

} // namespace EDATool
