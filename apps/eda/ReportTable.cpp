// What is in a design or a model, as a table.
#include "Report.h"

#include "Printable.h"

#include <algorithm>

namespace EDATool {

namespace {

constexpr std::size_t nameLimit = 100;
constexpr std::size_t layerLimit = 100;

std::string orDash(const std::string &text) { return text.empty() ? "-" : shortened(text, nameLimit); }

std::string count(std::size_t value) { return std::to_string(value); }

std::string rangeText(double low, double high) { return shortNumber(low) + " to " + shortNumber(high); }

std::string boundText(double xLow, double yLow, double xHigh, double yHigh) {
    return "x " + rangeText(xLow, xHigh) + ", y " + rangeText(yLow, yHigh);
}

std::string outlineText(const EDA::EDAOutline &outline) {
    if (outline.empty()) return "none";
    const Geometry::Bound2D &bound = outline.getBound();
    return count(outline.numPoints()) + " points, " + std::to_string(outline.numInternalOutlines()) +
           " cut-outs, " + boundText(bound.getXLow(), bound.getYLow(), bound.getXHigh(), bound.getYHigh());
}

std::string withInstances(std::size_t definitions, std::size_t all) {
    if (all == definitions) return count(definitions);
    return count(definitions) + " kinds, " + count(all) + " in all";
}

void addLayers(const EDA::EDABoard &board, std::vector<TableRow> &rows) {
    std::size_t number = 0;
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        if (number++ == layerLimit) {
            rows.push_back({"...", "and " + count(board.numLayers() - layerLimit) + " more"});
            return;
        }
        rows.push_back({"Layer " + orDash(layer->getName()),
                        std::string(layer->isConductor() ? "conductor" : "dielectric") + ", thickness " +
                            shortNumber(layer->getThickness()) + ", " +
                            count(static_cast<std::size_t>(layer->numTraces())) + " traces, " +
                            count(static_cast<std::size_t>(layer->numNets())) + " nets"});
    }
}

// Of a package.
void addSolids(const Design &design, std::vector<TableRow> &rows) {
    const EDA::EDABoard &board = design.board();
    if (!design.isPackage || board.numComponents() == 0) return;
    const int number = board.beginComponents()->getOutline().numInternalOutlines();
    rows.push_back({"Solids", count(static_cast<std::size_t>(number))});
}

// Of a set, what each file was taken for.
void addFiles(const Design &design, std::vector<TableRow> &rows) {
    if (design.sources.empty()) {
        for (const std::string &file : design.files)
            rows.push_back({"File", shortened(file, 300)});
    }
    for (const SourceFile &source : design.sources)
        rows.push_back(
            {"File", shortened(source.file, 300) + ": " + source.use + " (" + source.reason + ")"});
}

} // namespace

std::string tableText(const std::vector<TableRow> &rows) {
    std::size_t column = 0;
    for (const TableRow &row : rows)
        column = std::max(column, countCharacters(row.label) + 2);
    std::string text;
    for (const TableRow &row : rows) {
        text += row.label + std::string(column - countCharacters(row.label), ' ') + row.value + "\n";
    }
    return text;
}

std::string designTable(const Design &design) {
    const EDA::EDABoard &board = design.board();
    double xLow = 0.0;
    double yLow = 0.0;
    double xHigh = 0.0;
    double yHigh = 0.0;
    board.getOverallBound(xLow, yLow, xHigh, yHigh);
    std::vector<TableRow> rows;
    addFiles(design, rows);
    rows.insert(rows.end(), {{"Format", design.format},
                             {"Name", orDash(board.getName())},
                             {"Units", orDash(board.getUnits())},
                             {"Thickness", shortNumber(board.getThickness())},
                             {"Outline", outlineText(board.getOutline())},
                             {"Overall", boundText(xLow, yLow, xHigh, yHigh)},
                             {"Components", count(board.numComponents())},
                             {"Placements", count(board.numComponentPlacements())},
                             {"Keepouts", count(board.numKeepouts())},
                             {"Holes and vias", withInstances(board.numVias(0), board.numVias(1))},
                             {"Bumps", withInstances(board.numBumps(0), board.numBumps(1))},
                             {"Wirebonds", count(board.numWirebonds())},
                             {"Route outlines", count(board.numRouteOutlines())},
                             {"Placement outlines", count(board.numPlacementOutlines())},
                             {"Layers", count(board.numLayers())}});
    addSolids(design, rows);
    addLayers(board, rows);
    return tableText(rows);
}

std::string entityTable(const EntityCounts &counts) {
    std::vector<TableRow> rows;
    for (const auto &[type, number] : counts)
        rows.push_back({"  " + printable(type), count(number)});
    return tableText(rows);
}

} // namespace EDATool
