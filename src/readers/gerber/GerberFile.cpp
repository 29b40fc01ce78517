// One file: its statements, and the layer or the vias that they make.
#include "host/FileSystem/File.h"
#include "host/FileSystem/Path.h"
#include "host/Tools/EntityModelConstantTr.h"
#include "host/Tools/ToolProgress.h"
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberReader.h"
#include "text/Encoding.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr std::size_t charactersOfStep = 1000; // of the progress within a file

const std::string conductorName = "Conductor";

constexpr int viaMinPoints = 8;
// Of the sum of width and height: what is greater is no circle.
constexpr double viaMaxDiameter = 1e6;
constexpr double viaTolerance = 1e-4;

// The most frequent shape has nothing to clean up.
bool isCircle(const EDAOutline &outline) {
    return outline.numPoints() == 2 && outline.numInternalOutlines() == 0 &&
           (outline.endPoints() - 1)->isArc();
}

// Progress by the characters that were read.
class CharacterCount {
public:
    CharacterCount(Tools::ToolProgress *progress, std::size_t size) : progress_(progress) {
        if (progress_) progress_->setMaximum(static_cast<int>(size / charactersOfStep));
    }
    void add(std::string_view line) { count_ += line.size() + 1; }
    bool step() const {
        if (!progress_) return true;
        progress_->setValue(static_cast<int>(count_ / charactersOfStep));
        return !progress_->isCancelled();
    }

private:
    Tools::ToolProgress *progress_;
    std::size_t count_ = 0;
};

} // namespace

bool GerberReader::addFileData(const std::string &path, bool isLayer, Tools::ToolProgress *progress) {
    if (!FileSystem::File::exists(path)) return false;
    std::string text, reason;
    if (!FileSystem::File::readAll(path, text, reason, limits_.fileSize)) {
        addMessage("Failed to open file. " + path);
        return false;
    }
    if (progress) {
        progress->setText(EntityModelConstantTr::tr("Parsing file", nullptr, -1).toStdString() + " (" +
                          FileSystem::Path::getLastToken(path) + ")...");
    }
    try {
        readStatements(decodedToUtf8(std::move(text)), progress);
        if (isLayer) {
            addLayer(path, progress);
        } else {
            addConductorsAsVias();
        }
    } catch (const std::runtime_error &) {
        // Thrown for a file that is not of copper, which has told why. Intended: nothing of it is added, and
        // the parser is left as it stood.
        return false;
    }
    resetParser();
    return true;
}

void GerberReader::readStatements(std::string text, Tools::ToolProgress *progress) {
    CharacterCount count(progress, text.size());
    GerberLines lines(std::move(text), limits_.textSize);
    std::string joined;
    for (std::string_view line; lines.next(line);) {
        count.add(line);
        if (line.empty()) continue;
        if (!state_.drillMode && line.front() == '%' && std::count(line.begin(), line.end(), '%') == 1) {
            // A block over several lines. A lone "%" before "M48" begins a drill file.
            joined = line;
            for (bool isOpen = true; isOpen && joined.size() < limits_.textSize && lines.next(line);) {
                count.add(line);
                joined += line;
                isOpen = std::count(line.begin(), line.end(), '%') == 0;
                if (joined.compare(0, 4, "%M48") == 0) {
                    joined.erase(0, 1);
                    isOpen = false;
                }
            }
            line = joined;
        }
        handleText(line);
        if (!count.step()) break;
    }
    if (lines.numTooLong() > 0) {
        addMessage("Lines of more than " + std::to_string(limits_.textSize) +
                   " bytes are left out: " + std::to_string(lines.numTooLong()));
    }
}

void GerberReader::handleText(Statement text) {
    if (state_.drillMode) {
        handleStatement(trimmed(text));
        return;
    }
    GerberStatements statements(text);
    for (Statement statement; statements.next(statement);)
        handleStatement(statement);
}

void GerberReader::addLayer(const std::string &path, Tools::ToolProgress *progress) {
    EDABoardLayer layer(true);
    layer.setName(FileSystem::Path::stripExtension(FileSystem::Path::getLastToken(path)));
    if (mergeConductors_) {
        for (EDAOutline &outline : flashedAndStroked_)
            regions_.addOutline(std::move(outline));
        flashedAndStroked_.clear();
        regions_.mergeConductors(progress);
    }
    const auto isAmbiguous = [](const EDAOutline &outline) {
        return startsWith(outline.getName(), conductorName);
    };
    const bool isNumbered = std::none_of(flashedAndStroked_.begin(), flashedAndStroked_.end(), isAmbiguous) &&
                            std::none_of(regions_.begin(), regions_.end(), isAmbiguous);
    layer.reserveTraces(flashedAndStroked_.size() + regions_.size());
    UniqueIDSet names;
    for (EDAOutlineMerge *list : {&flashedAndStroked_, &regions_}) {
        for (EDAOutline &outline : *list) {
            if (!isCircle(outline)) outline.removeDegeneratePoints();
            if (outline.empty()) continue;
            // The numbers alone are unique, where no other name looks like them.
            std::string name =
                isNumbered && outline.getName().empty()
                    ? conductorName + std::to_string(layer.numTraces())
                    : generateUniqueName(outline.getName(), conductorName, layer.numTraces(), names);
            addConductorToLayer(layer, std::move(outline), name);
            outline = EDAOutline(); // frees its lists of points for the next one's
        }
    }
    board_.addLayer(std::move(layer));
}

void GerberReader::addConductorsAsVias() {
    for (EDAOutlineMerge *list : {&flashedAndStroked_, &regions_}) {
        for (const EDAOutline &outline : *list)
            addConductorAsVia(board_, outline, viaNames_);
    }
}

void GerberReader::addConductorToLayer(EDABoardLayer &layer, EDAOutline &&outline, const std::string &name) {
    EDATrace trace;
    trace.setName(name);
    // By way of a new outline, which has no caches: the clean-up left those of the points before it.
    EDAOutline fresh(std::move(outline));
    trace.getOutline() = std::move(fresh);
    layer.addTrace(std::move(trace));
}

void GerberReader::addConductorAsVia(EDABoard &board, const EDAOutline &outline, UniqueIDSet &names) {
    double x = 0.0, y = 0.0, diameter = 0.0;
    if (!outline.isCylinder(x, y, diameter, viaMinPoints, viaTolerance)) return;
    // Three of the points make the circle; where they lie on a line it has no end, or with their rounding
    // none that means anything.
    const Geometry::Bound2D &bound = outline.getBound();
    const double limit = viaMaxDiameter * (bound.getXSize() + bound.getYSize());
    if (!std::isfinite(x) || !std::isfinite(y) || !(diameter <= limit)) return;
    EDAVia via;
    via.setHoleType("VIA");
    via.setDiameter(diameter);
    via.setCentre(x, y);
    via.setName(generateUniqueName("", "Via", board.numVias(0), names));
    addViaToBoard(board, via);
}

void GerberReader::addViaToBoard(EDABoard &board, const EDAVia &via) {
    if (EDAVia *const definition = board.findViaDefinition(via)) {
        definition->addInstance(via.getName(), via.getXCentre(), via.getYCentre());
    } else {
        board.addVia(via, false);
    }
}

std::string GerberReader::generateUniqueName(const std::string &name, const std::string &prefix,
                                             std::size_t index, UniqueIDSet &names) {
    const std::string candidate = name.empty() ? prefix + std::to_string(index) : name;
    std::string result;
    names.addUnique(result, candidate);
    return result.empty() ? candidate : result;
}

} // namespace EDA
