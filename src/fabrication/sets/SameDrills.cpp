// Comparing the holes of drill files.
#include "fabrication/sets/SameDrills.h"

#include "fabrication/sets/FileReading.h"
#include "fabrication/sets/FileRoles.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <tuple>
#include <unordered_map>

namespace EDA::Fabrication {

namespace {

constexpr double cellSize = 0.002;     // mm; places match within two of them
constexpr double diameterCell = 0.01;  // mm
constexpr double middleCell = 0.01;    // mm
constexpr std::size_t mostMatches = 8; // looked at in one cell
constexpr std::size_t mostTried = 50;  // files compared with one

struct Hole {
    Point at;
    double diameter = 0.0; // below zero for the ends of slots, which no hole matches
    std::optional<bool> plated;
};

std::int64_t cellOf(double value, double size) {
    return static_cast<std::int64_t>(std::floor(std::clamp(value, -1e9, 1e9) / size));
}

std::uint64_t mixed(std::uint64_t key, std::int64_t value) {
    key = (key ^ static_cast<std::uint64_t>(value)) * 0x9E3779B97F4A7C15u;
    return key ^ (key >> 29);
}

bool isSame(Hole const &a, Hole const &b) {
    return std::hypot(a.at.x - b.at.x, a.at.y - b.at.y) <= 2.0 * cellSize &&
           std::abs(a.diameter - b.diameter) <= diameterCell &&
           !(a.plated && b.plated && *a.plated != *b.plated);
}

// Finds holes like a given one.
class HoleGrid {
public:
    explicit HoleGrid(std::vector<Hole> const &holes) {
        cells_.reserve(holes.size());
        for (Hole const &hole : holes)
            if (!has(hole)) cells_.emplace(keyOf(hole, 0, 0, 0), hole);
    }

    bool has(Hole const &hole) const {
        // The ends of the neighbourhood last: most holes match in their own cell.
        for (const int x : {0, -1, 1, -2, 2})
            for (const int y : {0, -1, 1, -2, 2})
                for (const int diameter : {0, -1, 1})
                    if (hasIn(keyOf(hole, x, y, diameter), hole)) return true;
        return false;
    }

private:
    static std::uint64_t keyOf(Hole const &hole, int x, int y, int diameter) {
        const std::uint64_t column = mixed(1, cellOf(hole.at.x, cellSize) + x);
        return mixed(mixed(column, cellOf(hole.at.y, cellSize) + y),
                     cellOf(hole.diameter, diameterCell) + diameter);
    }

    bool hasIn(std::uint64_t key, Hole const &hole) const {
        const auto range = cells_.equal_range(key);
        std::size_t tried = 0;
        for (auto found = range.first; found != range.second && tried < mostMatches; ++found, ++tried)
            if (isSame(found->second, hole)) return true;
        return false;
    }

    std::unordered_multimap<std::uint64_t, Hole> cells_;
};

std::vector<Hole> holesOf(DrillData const &data, std::optional<bool> plated) {
    const auto toolOf = [&](int number) {
        const auto found = data.tools.find(number);
        DrillTool tool = found == data.tools.end() ? DrillTool() : found->second;
        if (!tool.plated) tool.plated = plated;
        return tool;
    };
    std::vector<Hole> holes;
    holes.reserve(data.holes.size() + 2 * data.slotHoles.size());
    for (DrillHole const &hole : data.holes) {
        const DrillTool tool = toolOf(hole.tool);
        holes.push_back({hole.at, tool.diameter, tool.plated});
    }
    for (DrillSlot const &slot : data.slotHoles) {
        const DrillTool tool = toolOf(slot.tool);
        const Point end = slot.path.segments.empty() ? slot.path.start : slot.path.segments.back().end;
        for (Point const &at : {slot.path.start, end})
            holes.push_back({at, -1.0 - tool.diameter, tool.plated});
    }
    return holes;
}

// What files with the same holes have in common: numbers, layers, and the middle of all holes.
using Bucket = std::tuple<std::size_t, std::size_t, std::size_t, std::size_t, std::int64_t, std::int64_t>;

Bucket bucketOf(DrillData const &data, SetDrill const &drill, std::vector<Hole> const &holes) {
    double x = 0.0, y = 0.0;
    for (Hole const &hole : holes) {
        x += hole.at.x;
        y += hole.at.y;
    }
    const auto number = static_cast<double>(std::max<std::size_t>(holes.size(), 1));
    return {data.holes.size(), data.slotHoles.size(),          drill.from,
            drill.to,          cellOf(x / number, middleCell), cellOf(y / number, middleCell)};
}

struct Kept {
    std::size_t index = 0;
    std::vector<Hole> holes;
    std::optional<HoleGrid> grid; // once it is compared
};

class SameFinder {
public:
    // The kept file with the same holes, or the file itself, which is kept then.
    std::size_t find(std::size_t index, DrillData const &data, SetDrill const &drill) {
        std::vector<Hole> holes = holesOf(data, drill.plated);
        if (holes.empty()) return index;
        const Bucket bucket = bucketOf(data, drill, holes);
        for (const int x : {0, -1, 1}) {
            for (const int y : {0, -1, 1}) {
                Bucket near = bucket;
                std::get<4>(near) += x;
                std::get<5>(near) += y;
                const auto found = kept_.find(near);
                if (found == kept_.end()) continue;
                for (std::size_t at = 0; at < std::min(found->second.size(), mostTried); ++at)
                    if (hasSame(found->second[at], holes)) return found->second[at].index;
            }
        }
        kept_[bucket].push_back({index, std::move(holes), {}});
        return index;
    }

private:
    static bool hasSame(Kept &kept, std::vector<Hole> const &holes) {
        if (!kept.grid) kept.grid.emplace(kept.holes);
        return std::all_of(holes.begin(), holes.end(),
                           [&kept](Hole const &hole) { return kept.grid->has(hole); });
    }

    std::map<Bucket, std::vector<Kept>> kept_;
};

bool mayHaveSame(FabricationSet const &set) {
    std::map<std::size_t, int> counts;
    bool hasLayerForm = false;
    for (SetDrill const &drill : set.drills) {
        hasLayerForm = hasLayerForm || drill.file.isLayerForm;
        if (!drill.file.isLayerForm && ++counts[drill.file.drill.numHoles] > 1) return true;
    }
    return hasLayerForm && set.drills.size() > 1;
}

// For each drill file the one that it is the same as; itself where it is kept.
std::vector<std::size_t> findSame(FabricationSet const &set, DrillSurroundings const &around) {
    std::vector<std::size_t> same(set.drills.size());
    SameFinder finder;
    // Drill files say more than layers of holes.
    for (const bool isLayerForm : {false, true}) {
        for (std::size_t index = 0; index < same.size(); ++index) {
            SetDrill const &drill = set.drills[index];
            if (drill.file.isLayerForm != isLayerForm) continue;
            DrillData data;
            Notes notes;
            std::string error;
            readDrills(drill.file, around, data, notes, error);
            same[index] = finder.find(index, data, drill);
        }
    }
    return same;
}

} // namespace

void dropSameDrills(FabricationSet &set, SetSettings const &settings, Geometry::Bound2D const &copper) {
    if (!mayHaveSame(set)) return;
    DrillSurroundings around = surroundingsOf(set, settings);
    around.layers = copper;
    const std::vector<std::size_t> same = findSame(set, around);
    std::vector<SetDrill> kept;
    std::vector<std::string> names;
    for (SetDrill const &drill : set.drills)
        names.push_back(drill.file.shown);
    for (std::size_t index = 0; index < same.size(); ++index) {
        SetDrill &drill = set.drills[index];
        if (same[index] == index) {
            kept.push_back(std::move(drill));
            continue;
        }
        drill.file.reason = "it has the same holes as " + inQuotes(names[same[index]]);
        set.warnings.push_back(inQuotes(drill.file.shown) + " is left out: " + drill.file.reason);
        set.leftOut.push_back(std::move(drill.file));
    }
    set.drills = std::move(kept);
}

} // namespace EDA::Fabrication
