// Tools and holes of drill files.
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberNumbers.h"
#include "readers/gerber/GerberReader.h"
#include "text/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace EDA {

namespace {

constexpr double defaultDiameter = 0.35; // before the first tool, whatever the units

bool contains(const std::vector<std::string_view> &parts, std::string_view word) {
    return std::any_of(parts.begin(), parts.end(),
                       [word](std::string_view part) { return equalsIgnoreCase(part, word); });
}

} // namespace

// "T3" selects a tool, "T3C0.5" gives it a size and does not select it.
void GerberReader::setDrillTool(Statement statement) {
    state_.drillMode = true;
    const std::size_t size = statement.find('C');
    if (size == Statement::npos || size == 0) {
        state_.currentTool = leadingInt(statement.substr(1));
        return;
    }
    const int tool = leadingInt(statement.substr(1, size - 1));
    const std::size_t end = statement.find('F', size);
    const Statement text = statement.substr(size + 1, end == Statement::npos ? end : end - size - 1);
    state_.drillTools[tool].setSize(leadingDouble(text));
}

// The comments in which some systems list their tools: "T1 Holesize ..." or "Holesize 1. = 0.5 ...". "PLATED"
// counts as a word of its own alone.
void GerberReader::parseDrillHeaderData(Statement text) {
    const std::vector<Statement> parts = splitText(text, ' ');
    if (!contains(parts, "Holesize")) return;
    int number = 0;
    double size = 0.0;
    if (startsWith(parts[0], "T")) {
        number = leadingInt(parts[0].substr(1));
    } else if (equalsIgnoreCase(parts[0], "Holesize")) {
        if (parts.size() > 1) number = toInt(leadingDouble(parts[1]));
        if (parts.size() > 3) size = leadingDouble(parts[3]);
    }
    DrillTool &tool = state_.drillTools[number];
    if (size > 0.0) tool.setSize(size);
    tool.setPlated(contains(parts, "PLATED"));
    // Such a file uses its tools in order, without selecting the first.
    state_.currentTool = 1;
}

void GerberReader::addVia(Statement statement) {
    extractCoordinates(statement, currentX_, currentY_);
    addViaAt(currentX_, currentY_);
}

// Holes of one size and span are one definition, over all files.
void GerberReader::addViaAt(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) {
        tellOnce(infinityTold_, infinityText);
        return;
    }
    if (++numHoles_ > limits_.objects) {
        tellOnce(holeLimitTold_, "Holes beyond " + std::to_string(limits_.objects) + " are left out.");
        return;
    }
    EDAVia via;
    via.setHoleType("VIA");
    via.setCentre(x, y);
    const DrillTool *const tool = state_.currentTool < 0 ? nullptr : &state_.drillTools[state_.currentTool];
    via.setDiameter(tool ? tool->getSize() : defaultDiameter);
    via.setName(generateUniqueName("", "Via", board_.numVias(0), viaNames_));
    via.setPlated(tool && tool->isPlated());
    via.setLayers(startLayer_, endLayer_);
    addViaToBoard(board_, via);
}

// Intended: the current point stays where the repeat began.
void GerberReader::repeatVia(Statement statement) {
    const std::size_t offset = std::min({statement.find('X'), statement.find('Y'), statement.size()});
    const std::size_t end = statement.find('X') != Statement::npos ? statement.find('X') : offset;
    const int count = gerberInt(statement.substr(1, end - 1));
    if (count > limits_.drillRepeats || numHoles_ > limits_.objects) {
        addUnhandled(statement);
        return;
    }
    double dx = 0.0, dy = 0.0;
    extractCoordinates(statement, dx, dy);
    for (int i = 1; i <= count; ++i)
        addViaAt(currentX_ + i * dx, currentY_ + i * dy);
}

void GerberReader::selectNextTool() {
    if (state_.currentTool < std::numeric_limits<int>::max()) ++state_.currentTool;
}

} // namespace EDA
