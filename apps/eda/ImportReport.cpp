// The summary that an import ends with.
#include "ImportReport.h"

#include "Printable.h"
#include "Report.h"

#include <utility>
#include <vector>

namespace EDATool {

namespace {

using Kinds = std::vector<std::pair<std::size_t, const char *>>;

std::string listOf(const Kinds &kinds) {
    std::string list;
    for (const auto &[count, name] : kinds) {
        if (count > 0) list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + name;
    }
    return list;
}

// What was read and has no entities, so that nobody takes the model for more than it is.
std::string leftOutText(const EDA::EDABoard &board, bool isComponent) {
    std::string text;
    const std::string package = listOf({{board.numBumps(1), "bumps"}, {board.numWirebonds(), "wirebonds"}});
    if (!package.empty() && !isComponent)
        text += "\nNot in the model, since only a component has them (--as Component): " + package + "\n";
    return text;
}

} // namespace

std::string importText(const Design &design, const EntityCounts &counts, const ImportOutcome &outcome,
                       const std::string &output) {
    std::string text = "Read:\n" + designTable(design) + "\nEntities by type:\n" + entityTable(counts);
    if (outcome.parts.placements > 0) text += "\nParts:\n" + partTable(outcome.parts);
    if (!outcome.copper.isEmpty())
        text += "\nLayers and holes of the design:\n" + copperTable(outcome.copper);
    text += leftOutText(design.board(), outcome.isComponent);
    if (outcome.isSaved) {
        text += "\nModel saved as " + shortened(output, 300) + " after " + shortNumber(outcome.seconds, 3) +
                " s\n";
    }
    return text;
}

std::string importJson(const Design &design, const EntityCounts &counts, const ImportOutcome &outcome) {
    JsonReport report;
    report.addDesign(design);
    report.addText("messages", joinedLines(design.warnings));
    report.addEntities(counts);
    report.addText("importMessages", outcome.messages);
    addParts(outcome.parts, report);
    addCopper(outcome.copper, report);
    return report.finish();
}

} // namespace EDATool
