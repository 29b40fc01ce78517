// Any bytes as a drill file of a fabrication set, and as a report with its tools.
#include "fabrication/drills/DrillWriter.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace EDA::Fabrication;

struct CountingSink : TextSink {
    std::size_t size = 0;
    void write(std::string_view text) override { size += text.size(); }
};

void requireFinite(Point const &point) {
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) std::abort();
}

void requireFinite(DrillData const &data) {
    for (DrillHole const &hole : data.holes) {
        requireFinite(hole.at);
        if (!(data.tools.at(hole.tool).diameter > 0.0)) std::abort();
    }
    for (DrillSlot const &slot : data.slotHoles) {
        requireFinite(slot.path.start);
        for (Segment const &segment : slot.path.segments) {
            requireFinite(segment.end);
            requireFinite(segment.centre);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const Geometry::Bound2D layers(-10.0, -10.0, 110.0, 90.0);
    Notes notes;
    const DrillFacts facts = lookAtDrillFile(bytes);
    settleNumbers(bytes, facts, {}, {}, notes);
    const DrillNumbers numbers = settleNumbers(bytes, facts, {}, layers, notes);
    const std::map<int, DrillTool> tools = readToolTable(bytes);
    DrillData drills = readDrillFile(bytes, numbers, tools, notes);
    requireFinite(drills);
    setPlating(drills, true);
    CountingSink sink;
    writeDrillFile(drills, sink);
    constexpr std::size_t mostSlots = 100; // a via each, which takes its time
    if (drills.slotHoles.size() > mostSlots) drills.slotHoles.resize(mostSlots);
    slotVias(drills, "Top", "Bottom", 1, 1.0, drills.bound, notes);
    if (sink.size == 0) std::abort(); // there is always a header
    return 0;
}
