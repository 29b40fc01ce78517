// Looking at one file: its form, and what it is.
#include "fabrication/sets/FabricationSet.h"
#include "fabrication/sets/FileForm.h"
#include "fabrication/sets/FileReading.h"
#include "fabrication/sets/FileRoles.h"
#include "fabrication/sets/LayerLists.h"

#include "fabrication/board/BoardEdge.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/Path.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

constexpr std::size_t mostStrokesOfEdge = 20'000;
constexpr std::size_t longestTable = 1 << 20;
constexpr double edgeGap = 0.05; // mm between the ends of strokes that meet

// A sink that looks whether there is anything but strokes, and stops once it can be no edge.
class EdgeSink : public ProfileSink {
public:
    void flash(Shape const &, Point const &, bool) override { hasFlashes_ = true; }
    void region(Path const &, bool) override { hasRegions_ = true; }
    bool isEdge() const {
        return !hasFlashes_ && !hasRegions_ && !strokes().empty() && strokes().size() <= mostStrokesOfEdge;
    }

private:
    bool hasFlashes_ = false;
    bool hasRegions_ = false;
};

// A layer of which nothing says what it is: a single closed path is the edge of a board, anything else may
// be copper, since a layer too much is seen and a missing one is not.
void settleByForm(SetFile &file, std::string const &text) {
    EdgeSink sink;
    Notes notes;
    file.layer = readLayerFile(text, LayerRules(), sink, notes);
    file.isGuess = file.isByForm = true;
    if (file.layer.numObjects() == 0) {
        file.use = FileUse::Other;
        file.meaning = "a layer that draws nothing";
        file.reason = "nothing says what it is, and it draws nothing";
    } else if (sink.isEdge() && closedPaths(sink, edgeGap, notes).size() == 1) {
        file.use = FileUse::Profile;
        file.meaning = "board outline";
        file.reason = "nothing says what it is, and its strokes make one closed path";
    } else {
        file.use = FileUse::Copper;
        file.reason = "nothing says that it is anything else";
    }
}

void lookAtLayer(SetFile &file, std::string const &text) {
    NullSink sink;
    Notes notes;
    LayerRules rules;
    rules.isProbe = true;
    file.isLayerForm = true;
    file.layer = readLayerFile(text, rules, sink, notes);
    settleLayer(file);
    if (file.use == FileUse::None) settleByForm(file, text);
}

void lookAtDrills(SetFile &file, std::string const &text) {
    file.drill = lookAtDrillFile(text);
    if (!file.drill.isDrill) {
        file.reason = "its text is neither of a layer nor of drills";
        return;
    }
    file.use = FileUse::Drill;
    file.meaning = "drills";
    file.reason = "it is a drill file by its content";
    if (file.drill.hasCoordinates) return;
    file.reason += ", without holes";
}

void lookAtText(SetFile &file, std::string const &text) {
    file.reason = "its text is neither of a layer nor of drills";
    if (text.size() > longestTable) return;
    const bool isTable = !readToolTable(text).empty();
    const bool isList = !readLayerList(text).empty() || !readLayerPairs(text).empty();
    if (!isTable && !isList) return;
    file.use = FileUse::Helper;
    file.meaning = isList ? "list of layers" : "table of drill tools";
    file.reason = isList ? "it names files with what they are" : "it names drill tools with their sizes";
}

} // namespace

SetFile lookAtFile(std::string const &path, std::string const &shown) {
    SetFile file;
    file.file = path;
    file.shown = shown;
    file.size = static_cast<std::size_t>(FileSystem::File::size(path));
    file.reason = "it is no text";
    std::string text, error;
    if (!readText(path, text, error)) {
        file.reason = "it cannot be read: " + error.substr(std::min(error.size(), path.size() + 2));
        file.isReadable = false;
        return file;
    }
    switch (formOf(text)) {
    case FileForm::Layer:
        lookAtLayer(file, text);
        break;
    case FileForm::Drill:
        lookAtDrills(file, text);
        break;
    case FileForm::Text:
        lookAtText(file, text);
        break;
    case FileForm::Archive:
        file.reason = "it is an archive in an archive or a folder, which is not opened";
        break;
    case FileForm::Binary:
        break;
    }
    if (text.empty()) file.reason = "it is empty";
    return file;
}

} // namespace EDA::Fabrication
