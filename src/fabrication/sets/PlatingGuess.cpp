// Whether holes are plated, from the copper around them.
#include "fabrication/sets/PlatingGuess.h"

#include "fabrication/board/CopperPlaces.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

constexpr std::size_t mostLookedAt = 1'000; // of one tool
constexpr double ringWidth = 0.05;          // millimetres of copper beside the hole

std::vector<EDATrace const *> tracesOf(EDABoardLayer const &layer) {
    std::vector<EDATrace const *> traces;
    for (auto trace = layer.beginTraces(); trace != layer.endTraces(); ++trace)
        traces.push_back(&*trace);
    for (auto net = layer.beginNets(); net != layer.endNets(); ++net) {
        for (auto trace = net->beginTraces(); trace != net->endTraces(); ++trace)
            traces.push_back(&*trace);
    }
    return traces;
}

// The copper of one layer around holes. Pads may be drawn with or without their hole, and a hole may lie at
// the edge of its pad, so three of four places beside it are enough.
class Surroundings {
public:
    Surroundings(EDABoardLayer const &layer, double scale) : places_(tracesOf(layer)), scale_(scale) {}

    bool haveCopper(Point const &at, double radius) {
        int number = 0;
        for (Point const &side : {Point{1, 0}, Point{0, 1}, Point{-1, 0}, Point{0, -1}})
            number += isCopper({at.x + radius * side.x, at.y + radius * side.y}) ? 1 : 0;
        return number >= 3;
    }

private:
    bool isCopper(Point const &at) {
        bool found = false;
        places_.forEachAt(scale_ * at.x, scale_ * at.y, [&found](std::size_t) { found = true; });
        return found;
    }

    CopperPlaces places_;
    double scale_;
};

// Where the holes of each tool of unknown plating lie.
std::map<int, std::vector<Point>> unknownHoles(DrillData const &data) {
    std::map<int, std::vector<Point>> holes;
    const auto add = [&](int number, Point const &at) {
        const auto tool = data.tools.find(number);
        if (tool != data.tools.end() && !tool->second.plated) holes[number].push_back(at);
    };
    for (DrillHole const &hole : data.holes)
        add(hole.tool, hole.at);
    for (DrillSlot const &slot : data.slotHoles)
        add(slot.tool, slot.path.start);
    return holes;
}

} // namespace

void guessPlating(DrillData &data, EDABoardLayer const &from, EDABoardLayer const &to, double scale,
                  Notes &notes) {
    const std::map<int, std::vector<Point>> unknown = unknownHoles(data);
    if (unknown.empty()) return;
    Surroundings above(from, scale), below(to, scale);
    std::size_t numPlated = 0, numBare = 0;
    for (auto const &[number, holes] : unknown) {
        DrillTool &tool = data.tools[number];
        const double radius = 0.5 * tool.diameter + ringWidth;
        const std::size_t step = (holes.size() + mostLookedAt - 1) / mostLookedAt;
        std::size_t numLookedAt = 0, numWithCopper = 0;
        for (std::size_t i = 0; i < holes.size(); i += step) {
            ++numLookedAt;
            if (above.haveCopper(holes[i], radius) && below.haveCopper(holes[i], radius)) ++numWithCopper;
        }
        tool.plated = 2 * numWithCopper > numLookedAt;
        (*tool.plated ? numPlated : numBare) += holes.size();
    }
    notes.add(NoteKind::Guessed, "holes taken as plated, as most of their tool have copper around them", 0,
              numPlated);
    notes.add(NoteKind::Guessed,
              "holes taken as not plated, as most of their tool have no copper around them", 0, numBare);
}

} // namespace EDA::Fabrication
