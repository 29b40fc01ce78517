// Reading drill and rout files: what they say of themselves, and all of them.
#include "fabrication/drills/DrillFile.h"

#include "fabrication/drills/DrillProgram.h"
#include "fabrication/drills/DrillScan.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

// Whether most of the first bytes are text. Binary drill files are not.
bool isText(std::string_view bytes) {
    constexpr std::size_t tried = 4096;
    bytes = bytes.substr(0, tried);
    const auto strange = std::count_if(bytes.begin(), bytes.end(), [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code < 0x20 && code != '\t' && code != '\n' && code != '\r' && code != '\f' && code != 0x1a;
    });
    return static_cast<std::size_t>(strange) * 20 <= bytes.size();
}

void uniteSegment(Geometry::Bound2D &bound, Point const &start, Segment const &segment) {
    bound.unite(segment.end.x, segment.end.y);
    if (segment.motion == Motion::Line || segment.end != start) return;
    const double dx = start.x - segment.centre.x, dy = start.y - segment.centre.y;
    const double radius = std::sqrt(dx * dx + dy * dy);
    bound.unite(segment.centre.x - radius, segment.centre.y - radius);
    bound.unite(segment.centre.x + radius, segment.centre.y + radius);
}

Geometry::Bound2D boundOf(DrillData const &data) {
    Geometry::Bound2D bound;
    for (DrillHole const &hole : data.holes)
        bound.unite(hole.at.x, hole.at.y);
    for (DrillSlot const &slot : data.slotHoles) {
        Point at = slot.path.start;
        bound.unite(at.x, at.y);
        for (Segment const &segment : slot.path.segments) {
            uniteSegment(bound, at, segment);
            at = segment.end;
        }
    }
    return bound;
}

// What has no size cannot be drilled. Tells the tool with the number of its holes.
void dropSizeless(DrillData &data, Notes &notes) {
    std::map<int, std::size_t> counts;
    const auto isSizeless = [&](auto const &object) {
        if (data.tools[object.tool].diameter > 0.0) return false;
        ++counts[object.tool];
        return true;
    };
    data.holes.erase(std::remove_if(data.holes.begin(), data.holes.end(), isSizeless), data.holes.end());
    data.slotHoles.erase(std::remove_if(data.slotHoles.begin(), data.slotHoles.end(), isSizeless),
                         data.slotHoles.end());
    for (auto const &[tool, count] : counts)
        notes.add(NoteKind::LeftOut, "holes of tool " + std::to_string(tool) + ", whose size is not known", 0,
                  count);
}

// Tools of places that no hole needs and that have no size tell nothing.
void dropEmptyTools(DrillData &data) {
    for (auto tool = data.tools.begin(); tool != data.tools.end();)
        tool = tool->second.diameter > 0.0 ? std::next(tool) : data.tools.erase(tool);
}

} // namespace

DrillFacts lookAtDrillFile(std::string_view bytes) {
    std::string storage;
    const std::string_view text = DrillText::decoded(bytes, storage);
    DrillFacts facts;
    if (!isText(text)) return facts;
    const DrillScan scan = scanDrillFile(text);
    facts.isDrill = scan.isDrill();
    facts.numbers = scan.allNumbers();
    facts.hasDecimals = scan.hasDecimals;
    facts.hasCoordinates = scan.numCoordinates > 0;
    facts.numHoles = scan.numHoles;
    facts.plated = scan.comments.plated();
    facts.fromLayer = scan.comments.fromLayer();
    facts.toLayer = scan.comments.toLayer();
    facts.fileFunction = scan.comments.fileFunction();
    facts.comments = scan.firstComments;
    for (int tool : scan.usedTools)
        if (tool > 0 && scan.sizedTools.count(tool) == 0 && scan.comments.tools().count(tool) == 0)
            facts.toolsWithoutSize.push_back(tool);
    return facts;
}

DrillData readDrillFile(std::string_view bytes, DrillNumbers const &numbers,
                        std::map<int, DrillTool> const &beside, Notes &notes, Tools::ToolProgress *progress) {
    std::string storage;
    const std::string_view text = DrillText::decoded(bytes, storage);
    const DrillScan scan = scanDrillFile(text);
    DrillData data = DrillProgram(text, scan, numbers, beside, notes).run(progress);
    dropSizeless(data, notes);
    dropEmptyTools(data);
    data.bound = boundOf(data);
    return data;
}

void setPlating(DrillData &data, bool plated) {
    for (auto &tool : data.tools)
        if (!tool.second.plated) tool.second.plated = plated;
}

void tellUnknownPlating(DrillData const &data, Notes &notes) {
    const auto isUnknown = [&data](auto const &hole) {
        const auto tool = data.tools.find(hole.tool);
        return tool != data.tools.end() && !tool->second.plated;
    };
    const auto count = std::count_if(data.holes.begin(), data.holes.end(), isUnknown) +
                       std::count_if(data.slotHoles.begin(), data.slotHoles.end(), isUnknown);
    notes.add(NoteKind::Guessed, "holes of which nothing says whether they are plated: taken as not plated",
              0, static_cast<std::size_t>(count));
}

} // namespace EDA::Fabrication
