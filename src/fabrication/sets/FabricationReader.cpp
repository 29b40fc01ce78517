// Reading a set: each file written anew, read by the reader of layers and drills, and what joins afterwards.
#include "fabrication/sets/FabricationReader.h"

#include "fabrication/board/BoardEdge.h"
#include "fabrication/board/NetAssigner.h"
#include "fabrication/drills/DrillWriter.h"
#include "fabrication/layers/ClearResolver.h"
#include "fabrication/layers/LayerWriter.h"
#include "fabrication/sets/CanonicalFiles.h"
#include "fabrication/sets/FileForm.h"
#include "fabrication/sets/FileReading.h"
#include "fabrication/sets/FileRoles.h"
#include "fabrication/sets/PlatingGuess.h"
#include "fabrication/sets/SetInputs.h"
#include "host/FileSystem/Path.h"
#include "host/Tools/ToolProgress.h"

#include <algorithm>
#include <set>

namespace EDA {

using namespace Fabrication;

namespace {

constexpr int partsOfFile = 1000; // of the progress
constexpr int partsOfFrontEnd = 300;
constexpr double scale = 1.0; // canonical files and the board are in millimetres
constexpr int integerDigits = 4, decimalDigits = 6;

std::string useOf(SetFile const &file) {
    switch (file.use) {
    case FileUse::Helper:
        return "says something of the others";
    case FileUse::Profile:
        return "board outline";
    default:
        return "left out";
    }
}

std::string reasonOf(SetFile const &file) {
    return file.meaning.empty() || file.reason.find(file.meaning) != std::string::npos
               ? file.reason
               : file.meaning + ": " + file.reason;
}

std::string functionOf(std::size_t index, std::size_t numLayers) {
    const std::string side = index == 0 ? "Top" : index + 1 == numLayers ? "Bot" : "Inr";
    return "Copper,L" + std::to_string(index + 1) + "," + side;
}

// What was found, for a set that holds nothing to read.
std::string foundText(FabricationSet const &set) {
    std::string text = "none of the files is a copper layer or a drill file:";
    constexpr std::size_t shown = 20;
    for (std::size_t index = 0; index < std::min(set.leftOut.size(), shown); ++index)
        text += "\n" + inQuotes(set.leftOut[index].shown) + ": " + reasonOf(set.leftOut[index]);
    if (set.leftOut.size() > shown) text += "\n...";
    if (set.leftOut.empty()) text = "there are no files";
    return text;
}

bool isCancelled(Tools::ToolProgress *progress) { return progress && progress->isCancelled(); }

// The lines of an error text, those that start alike once, with their number.
std::vector<std::string> linesOf(std::string const &text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        if (end > at) lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

} // namespace

// One reading of a set; keeps to the reader's own lists and board.
struct FabricationReader::Run {
    FabricationReader &reader;
    Tools::ToolProgress *progress;
    CanonicalNames names;
    Geometry::Bound2D copperBound;
    std::vector<std::string> layerNames;
    std::string error;
    int done = 0;

    FileReport &reportOf(std::size_t index) { return reader.report_.files[index]; }

    void warn(SetFile const &file, std::string const &text) {
        reader.report_.warnings.push_back(inQuotes(file.shown) + ": " + text);
    }
    void fail(SetFile const &file, std::string const &text) {
        error += file.shown + ": " + text + "\n";
        warn(file, text);
    }

    bool readCopper(std::size_t index);
    bool writeLayer(std::size_t index, std::string const &path, NetPoints &nets, Notes &notes);
    void settlePlating(SetDrill const &drill, DrillData &data, Notes &notes) const;
    bool readDrillFile(std::size_t index, DrillSurroundings const &around);
    void readProfile();
    bool readCanonical(SetFile const &file, QStringList const &layers, QStringList const &drills,
                       SetDrill const *span);
    std::string spanName(std::size_t layer) const;
};

FabricationReader::FabricationReader() = default;
FabricationReader::~FabricationReader() = default;

std::string FabricationReader::getCanonicalFolder() const { return canonical_ ? canonical_->path() : ""; }

bool FabricationReader::setFiles(std::vector<std::string> const &files) {
    error_.clear();
    board_ = EDABoard();
    board_.setUnits("mm");
    report_ = Report();
    set_ = FabricationSet();
    canonical_.reset();
    unpacked_.reset();
    SetInputs inputs;
    for (std::string const &file : files)
        if (!inputs.add(file, error_)) return false;
    unpacked_ = inputs.takeUnpacked();
    std::vector<SetFile> looked;
    std::set<std::string> seen;
    for (InputFile const &input : inputs.files())
        if (seen.insert(input.file).second) looked.push_back(lookAtFile(input.file, input.shown));
    if (!sortSet(std::move(looked), settings_, set_, error_)) {
        set_ = FabricationSet();
        return false;
    }
    set_.warnings.insert(set_.warnings.end(), inputs.warnings().begin(), inputs.warnings().end());
    // Files that were picked one by one need no edge.
    if (inputs.hasWholeSet() && !set_.copper.empty() && set_.profiles.empty())
        set_.warnings.push_back("no file is the board's outline; the board has no edge");
    makeReport();
    if (set_.copper.empty() && set_.drills.empty()) error_ = foundText(set_);
    return error_.empty();
}

void FabricationReader::makeReport() {
    report_ = Report();
    report_.guesses = set_.guesses;
    report_.warnings = set_.warnings;
    for (std::size_t index = 0; index < set_.copper.size(); ++index)
        report_.files.push_back({set_.copper[index].shown,
                                 "copper layer " + std::to_string(index + 1),
                                 set_.copper[index].reason,
                                 {},
                                 ""});
    for (SetDrill const &drill : set_.drills) {
        std::string use = drill.plated ? (*drill.plated ? "plated drills" : "unplated drills") : "drills";
        if (!set_.copper.empty())
            use += " from " + FileSystem::Path::getLastToken(set_.copper[drill.from].shown) + " to " +
                   FileSystem::Path::getLastToken(set_.copper[drill.to].shown);
        report_.files.push_back({drill.file.shown, use, drill.file.reason + "; " + drill.spanReason, {}, ""});
    }
    for (std::vector<SetFile> const *const files : {&set_.profiles, &set_.leftOut})
        for (SetFile const &file : *files)
            report_.files.push_back(
                {file.shown,
                 files == &set_.leftOut && file.use != FileUse::Helper ? "left out" : useOf(file),
                 reasonOf(file),
                 {},
                 ""});
}

bool FabricationReader::readFile(std::string const &path) {
    if (!setFiles({path})) {
        // A layer of another kind stands alone as well as copper does.
        std::vector<SetFile> &all = set_.profiles.empty() ? set_.leftOut : set_.profiles;
        if (!set_.copper.empty() || !set_.drills.empty() || all.size() != 1 || !all.front().isLayerForm)
            return false;
        error_.clear();
        SetFile file = std::move(all.front());
        set_ = FabricationSet();
        set_.leftOut.clear();
        file.reason = "it was asked for alone; " + file.reason;
        file.use = FileUse::Copper;
        set_.copper.push_back(std::move(file));
        makeReport();
    }
    return readFiles(nullptr);
}

bool FabricationReader::readFiles(Tools::ToolProgress *progress) {
    error_.clear();
    if (set_.copper.empty() && set_.drills.empty()) {
        error_ = "there is no copper layer and no drill file to read";
        return false;
    }
    canonical_ = std::make_unique<FileSystem::TemporaryFolder>();
    if (!canonical_->error().empty()) {
        error_ = canonical_->error();
        return false;
    }
    board_ = EDABoard();
    board_.setUnits("mm");
    makeReport();
    const std::size_t numFiles = set_.copper.size() + set_.drills.size() + set_.profiles.size();
    if (progress) progress->setMaximum(partsOfFile * static_cast<int>(numFiles));
    Run run{*this, progress, CanonicalNames(canonical_->path(), set_), {}, {}, {}};
    bool goOn = true;
    for (std::size_t index = 0; goOn && index < set_.copper.size(); ++index)
        goOn = run.readCopper(index);
    DrillSurroundings around = surroundingsOf(set_, settings_);
    around.layers = run.copperBound;
    for (std::size_t index = 0; goOn && index < set_.drills.size(); ++index)
        goOn = run.readDrillFile(index, around);
    if (goOn && !set_.profiles.empty()) run.readProfile();
    board_.setUnits("mm");
    error_ = run.error;
    return error_.empty() && board_.numLayers() == set_.copper.size();
}

// Reads what was written; messages of the reader get the file's name.
bool FabricationReader::Run::readCanonical(SetFile const &file, QStringList const &layers,
                                           QStringList const &drills, SetDrill const *span) {
    QMap<int, QString> from, to;
    if (span && !layerNames.empty()) {
        // The reader takes names of files, without their extension.
        from[0] = QString::fromStdString(spanName(span->from) + ".gbr");
        to[0] = QString::fromStdString(spanName(span->to) + ".gbr");
    }
    reader.setLayerArrangement(layers, drills, from, to);
    reader.setViaNumberFormat(integerDigits, decimalDigits);
    const std::size_t before = reader.board_.numLayers();
    {
        const Tools::ToolProgressRange range(progress, partsOfFrontEnd, partsOfFile, partsOfFile);
        reader.GerberReader::readFiles(progress);
    }
    const std::vector<std::string> lines = linesOf(reader.error_);
    for (std::string const &line : lines)
        warn(file, line);
    reader.error_.clear();
    const bool isRead = reader.board_.numLayers() == before + static_cast<std::size_t>(layers.size());
    if (!isRead && !isCancelled(progress))
        error += file.shown + ": " + (lines.empty() ? "cannot be read" : lines.back()) + "\n";
    return isRead;
}

std::string FabricationReader::Run::spanName(std::size_t layer) const {
    return layer < layerNames.size() ? layerNames[layer] : std::string();
}

bool FabricationReader::Run::writeLayer(std::size_t index, std::string const &path, NetPoints &nets,
                                        Notes &notes) {
    SetFile const &file = reader.set_.copper[index];
    std::string text, reason;
    if (!readText(file.file, text, reason)) {
        fail(file, "cannot be read: " + reason);
        return false;
    }
    FileSink sink(path);
    LayerWriter writer(sink, functionOf(index, reader.set_.copper.size()), &nets);
    const Tools::ToolProgressRange range(progress, 0, partsOfFrontEnd, partsOfFrontEnd);
    LayerFacts facts;
    if (mayHoldClear(text)) {
        ClearResolver resolver(writer, notes);
        facts = readLayerFile(text, LayerRules(), resolver, notes, progress);
        resolver.finish(progress);
    } else {
        facts = readLayerFile(text, LayerRules(), writer, notes, progress);
    }
    if (writer.isFull()) notes.add(NoteKind::LeftOut, "objects beyond what a layer may hold");
    writer.finish();
    copperBound.unite(facts.bound);
    if (sink.close()) return true;
    fail(file, "its private copy cannot be written");
    return false;
}

bool FabricationReader::Run::readCopper(std::size_t index) {
    SetFile const &file = reader.set_.copper[index];
    const Tools::ToolProgressRange range(progress, done, done + partsOfFile, partsOfFile);
    done += partsOfFile;
    const std::string path = names.pathFor(file);
    layerNames.push_back(stemOf(path));
    NetPoints nets;
    Notes notes;
    const bool isWritten = writeLayer(index, path, nets, notes);
    if (isWritten && !isCancelled(progress) &&
        readCanonical(file, {QString::fromStdString(path)}, {}, nullptr)) {
        reportOf(index).layerName = layerNames.back();
        assignNets(reader.board_.getNthLayer(static_cast<int>(reader.board_.numLayers()) - 1), nets, scale,
                   notes);
    }
    reportOf(index).notes = notes.list();
    return !isCancelled(progress);
}

// The copper stands on the board already.
void FabricationReader::Run::settlePlating(SetDrill const &drill, DrillData &data, Notes &notes) const {
    if (drill.plated) setPlating(data, *drill.plated);
    const auto numLayers = static_cast<std::size_t>(reader.board_.numLayers());
    if (drill.from < numLayers && drill.to < numLayers && numLayers == layerNames.size()) {
        guessPlating(data, reader.board_.getNthLayer(static_cast<int>(drill.from)),
                     reader.board_.getNthLayer(static_cast<int>(drill.to)), scale, notes);
    }
    tellUnknownPlating(data, notes);
}

bool FabricationReader::Run::readDrillFile(std::size_t index, DrillSurroundings const &around) {
    SetDrill const &drill = reader.set_.drills[index];
    const Tools::ToolProgressRange range(progress, done, done + partsOfFile, partsOfFile);
    done += partsOfFile;
    FileReport &report = reportOf(reader.set_.copper.size() + index);
    DrillData data;
    Notes notes;
    std::string reason;
    const std::string path = names.pathFor(drill.file);
    bool isRead = false;
    {
        const Tools::ToolProgressRange front(progress, 0, partsOfFrontEnd, partsOfFrontEnd);
        isRead = readDrills(drill.file, around, data, notes, reason, progress);
    }
    if (!isRead) {
        fail(drill.file, "cannot be read: " + reason);
    } else {
        settlePlating(drill, data, notes);
        FileSink sink(path);
        writeDrillFile(data, sink);
        if (!sink.close())
            fail(drill.file, "its private copy cannot be written");
        else if (!isCancelled(progress))
            readCanonical(drill.file, {}, {QString::fromStdString(path)}, &drill);
        if (!isCancelled(progress)) {
            const std::string from = spanName(drill.from), to = spanName(drill.to);
            for (EDAVia const &via :
                 slotVias(data, from, to, reader.board_.numVias(1), scale, copperBound, notes))
                reader.board_.addVia(via, false);
        }
    }
    report.notes = notes.list();
    return !isCancelled(progress);
}

void FabricationReader::Run::readProfile() {
    SetFile const &file = reader.set_.profiles.front();
    const Tools::ToolProgressRange range(progress, done, done + partsOfFile, partsOfFile);
    std::string text, reason;
    if (!readText(file.file, text, reason)) return fail(file, "cannot be read: " + reason);
    ProfileSink profile;
    Notes notes;
    readLayerFile(text, LayerRules(), profile, notes, progress);
    if (!findBoardEdge(profile, scale, copperBound, reader.board_.getOutline(), notes))
        warn(file, "is the board outline, but nothing in it closes, so the board has no edge from it");
    reportOf(reader.set_.copper.size() + reader.set_.drills.size()).notes = notes.list();
}

} // namespace EDA
