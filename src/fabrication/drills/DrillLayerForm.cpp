// Holes from a file in the form of a layer.
#include "fabrication/drills/DrillComments.h"
#include "fabrication/drills/DrillFile.h"
#include "fabrication/drills/DrillProgram.h"
#include "fabrication/drills/DrillText.h"
#include "fabrication/Limits.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace EDA::Fabrication {

namespace {

class HoleSink : public LayerSink {
public:
    explicit HoleSink(DrillData &data) : data_(data) {}

    void flash(Shape const &shape, Point const &at, bool dark) override;
    void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) override;
    void region(Path const &, bool) override { ++numRegions_; }
    bool isFull() const override { return numObjects_ >= Limits::objects; }

    void tell(Notes &notes) const;

private:
    int toolOf(Shape const &shape);
    bool isHole(Shape const &shape, bool dark);
    void addSlot(int tool, Point const &from, Segment const &segment);

    using Key = std::pair<std::int64_t, std::string>; // nanometres and function
    DrillData &data_;
    std::map<Key, int> tools_;
    std::size_t lastId_ = 0;
    int lastTool_ = 0;
    std::size_t numObjects_ = 0;
    std::size_t numRegions_ = 0;
    std::size_t numClear_ = 0;
    std::size_t numOthers_ = 0;
    std::size_t numMoves_ = 0; // of slots
    std::size_t numLost_ = 0;
};

int HoleSink::toolOf(Shape const &shape) {
    if (lastTool_ != 0 && shape.id == lastId_) return lastTool_;
    const Key key(std::llround(std::min(shape.width, 1e6) * 1e6), shape.function);
    int &tool = tools_[key];
    if (tool == 0) {
        tool = static_cast<int>(tools_.size());
        data_.tools[tool].diameter = shape.width;
        data_.tools[tool].function = shape.function;
    }
    lastId_ = shape.id;
    return lastTool_ = tool;
}

bool HoleSink::isHole(Shape const &shape, bool dark) {
    if (shape.isNothing()) return false;
    if (!dark) {
        ++numClear_;
        return false;
    }
    if (shape.kind == Shape::Kind::Circle && shape.width > 0.0) return true;
    ++numOthers_;
    return false;
}

void HoleSink::flash(Shape const &shape, Point const &at, bool dark) {
    if (!isHole(shape, dark) || isFull()) return;
    ++numObjects_;
    const int tool = toolOf(shape);
    data_.holes.push_back({at, tool});
    data_.bound.unite(at.x, at.y);
}

// A stroke that goes on where the one before it ended is of the same slot.
void HoleSink::addSlot(int tool, Point const &from, Segment const &segment) {
    const bool goesOn = !data_.slotHoles.empty() && data_.slotHoles.back().tool == tool &&
                        data_.slotHoles.back().path.segments.back().end == from;
    const bool isFullPath =
        goesOn && data_.slotHoles.back().path.segments.size() >= DrillProgram::mostMovesOfPath;
    if (isFullPath || numMoves_ >= DrillProgram::mostMoves) {
        ++numLost_;
        return;
    }
    ++numMoves_;
    if (!goesOn) {
        data_.slotHoles.push_back({Path(), tool});
        data_.slotHoles.back().path.start = from;
    }
    data_.slotHoles.back().path.segments.push_back(segment);
}

void HoleSink::stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) {
    if (!isHole(shape, dark) || isFull()) return;
    ++numObjects_;
    const int tool = toolOf(shape);
    data_.bound.unite(from.x, from.y);
    data_.bound.unite(segment.end.x, segment.end.y);
    if (segment.motion == Motion::Line && segment.end == from) {
        data_.holes.push_back({from, tool});
    } else {
        addSlot(tool, from, segment);
    }
}

void HoleSink::tell(Notes &notes) const {
    notes.add(NoteKind::LeftOut, "regions in a file of holes", 0, numRegions_);
    notes.add(NoteKind::LeftOut, "clear objects in a file of holes", 0, numClear_);
    notes.add(NoteKind::LeftOut, "shapes in a file of holes that are not round", 0, numOthers_);
    notes.add(NoteKind::LeftOut, "slots beyond the most that are read of one file", 0, numLost_);
    notes.add(NoteKind::LeftOut, "holes beyond the most that are read of one file", 0, isFull() ? 1 : 0);
}

} // namespace

DrillData readDrillsOfLayerFile(std::string_view bytes, LayerRules const &rules, Notes &notes,
                                LayerFacts &facts, Tools::ToolProgress *progress) {
    DrillData data;
    HoleSink sink(data);
    facts = readLayerFile(bytes, rules, sink, notes, progress);
    sink.tell(notes);
    std::vector<std::string> const &function = facts.attribute(".FileFunction");
    const std::optional<bool> plated =
        function.empty() ? std::nullopt : platedByWord(DrillText::uppered(function[0]));
    if (plated) setPlating(data, *plated);
    return data;
}

} // namespace EDA::Fabrication
