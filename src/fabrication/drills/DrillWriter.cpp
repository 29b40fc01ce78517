// Writing holes in the one dialect that the reader of drill files takes.
#include "fabrication/drills/DrillWriter.h"

#include <algorithm>
#include <vector>

namespace EDA::Fabrication {

namespace {

// Numbers as they are, unless one of them could not be written.
std::map<int, int> numbersOf(DrillData const &data) {
    const bool isFine = data.tools.empty() || data.tools.begin()->first > 0;
    std::map<int, int> result;
    int next = 1;
    for (auto const &tool : data.tools)
        result[tool.first] = isFine ? tool.first : next++;
    return result;
}

void writeTool(TextBuffer &text, int number, DrillTool const &tool) {
    if (tool.plated) {
        text.add(";Holesize ");
        text.addInteger(number);
        text.add(" = ");
        text.addNumber(tool.diameter);
        text.add(*tool.plated ? " PLATED\n" : " NON_PLATED\n");
    }
    text.add("T");
    text.addInteger(number);
    text.add("C");
    text.addNumber(tool.diameter);
    text.add("\n");
}

// The holes' places by tool, each in the order of the file.
std::map<int, std::vector<Point>> holesByTool(DrillData const &data) {
    std::map<int, std::vector<Point>> result;
    for (DrillHole const &hole : data.holes) {
        const auto tool = data.tools.find(hole.tool);
        if (tool != data.tools.end() && tool->second.diameter > 0.0) result[hole.tool].push_back(hole.at);
    }
    return result;
}

} // namespace

void writeDrillFile(DrillData const &data, TextSink &sink) {
    TextBuffer text(sink);
    const std::map<int, int> numbers = numbersOf(data);
    text.add("M48\nMETRIC,TZ\n");
    for (auto const &[number, tool] : data.tools)
        if (tool.diameter > 0.0) writeTool(text, numbers.at(number), tool);
    text.add("%\n");
    for (auto const &[number, places] : holesByTool(data)) {
        text.add("T");
        text.addInteger(numbers.at(number));
        text.add("\n");
        for (Point const &place : places) {
            text.add("X");
            text.addCoordinate(place.x);
            text.add("Y");
            text.addCoordinate(place.y);
            text.add("\n");
        }
    }
    text.add("M30\n");
}

} // namespace EDA::Fabrication
