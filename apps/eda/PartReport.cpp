// The summary of the parts, as a table and as JSON.
#include "PartSummary.h"

#include "Printable.h"

namespace EDATool {

namespace {

struct NamedRow {
    const char *label;
    const char *member; // of the JSON object
    const NamedCount PartSummary::*value;
};

constexpr NamedRow outcomes[] = {
    {"  Filtered, kept and marked", "filteredKept", &PartSummary::filteredKept},
    {"  Filtered out", "filteredOut", &PartSummary::filteredOut},
    {"  Not placed", "notPlaced", &PartSummary::notPlaced},
    {"  Without definition", "withoutDefinition", &PartSummary::withoutDefinition},
    {"  Without shape", "withoutShape", &PartSummary::withoutShape},
    {"  Left out by the library", "leftOutByLibrary", &PartSummary::leftOutByLibrary},
    {"  Could not be made", "notMade", &PartSummary::notMade},
    {"  Not reached", "notReached", &PartSummary::notReached},
};

constexpr NamedRow gaps[] = {
    {"  Without height", "withoutHeight", &PartSummary::withoutHeight},
    {"  Without material", "withoutMaterial", &PartSummary::withoutMaterial},
    {"  Without power", "withoutPower", &PartSummary::withoutPower},
    {"  Power unlike POWER_OPR", "otherPower", &PartSummary::otherPower},
};

constexpr NamedRow duplicates = {"  Designators used twice", "duplicateDesignators",
                                 &PartSummary::duplicates};

std::string namedText(const NamedCount &named) {
    std::string text = std::to_string(named.count);
    const char *separator = ": ";
    for (const std::string &name : named.names) {
        text += separator + inQuotes(name);
        separator = ", ";
    }
    return named.count > named.names.size() ? text + ", ..." : text;
}

void addRow(const NamedRow &row, const PartSummary &summary, std::vector<TableRow> &rows) {
    const NamedCount &named = summary.*row.value;
    if (named.count > 0) rows.push_back({row.label, namedText(named)});
}

void addLibraryRows(const PartSummary &summary, std::vector<TableRow> &rows) {
    if (summary.fromLibrary > 0) {
        rows.push_back({"  From the library", std::to_string(summary.fromLibrary) + ", of these " +
                                                  std::to_string(summary.approximated) + " approximated"});
    }
    if (summary.inSockets > 0) rows.push_back({"  In chip sockets", std::to_string(summary.inSockets)});
}

std::string watts(double value) { return shortNumber(value) + " W"; }

void addPowerRows(const PowerSums &power, std::vector<TableRow> &rows) {
    rows.push_back({"  Power in the model", watts(power.inModel)});
    if (power.filtered != 0.0) rows.push_back({"  Power marked as filtered", watts(power.filtered)});
    if (power.leftOut != 0.0) rows.push_back({"  Power of parts left out", watts(power.leftOut)});
    rows.push_back({"  Power in the design", watts(power.inDesign) + ", POWER_OPR of the placed parts"});
}

void addNamed(const NamedRow &row, const PartSummary &summary, JsonReport &report) {
    const NamedCount &named = summary.*row.value;
    report.beginObject(row.member);
    report.addCount("count", named.count);
    report.addTexts("first", named.names);
    report.endObject();
}

} // namespace

std::string partTable(const PartSummary &summary) {
    std::vector<TableRow> rows{{"  Placements", std::to_string(summary.placements)},
                               {"  Imported", std::to_string(summary.numImported())}};
    for (const auto &[type, count] : summary.imported)
        rows.push_back({"    " + printable(type), std::to_string(count)});
    for (const NamedRow &row : outcomes)
        addRow(row, summary, rows);
    for (const NamedRow &row : gaps)
        addRow(row, summary, rows);
    if (summary.withDefaultMaterial > 0) {
        rows.push_back({"  With a default material", std::to_string(summary.withDefaultMaterial)});
    }
    addLibraryRows(summary, rows);
    addRow(duplicates, summary, rows);
    addPowerRows(summary.power, rows);
    return tableText(rows);
}

void addParts(const PartSummary &summary, JsonReport &report) {
    report.beginObject("parts");
    report.addCount("placements", summary.placements);
    report.addCounts("imported", summary.imported);
    for (const NamedRow &row : outcomes)
        addNamed(row, summary, report);
    for (const NamedRow &row : gaps)
        addNamed(row, summary, report);
    addNamed(duplicates, summary, report);
    report.addCount("withDefaultMaterial", summary.withDefaultMaterial);
    report.addCount("fromLibrary", summary.fromLibrary);
    report.addCount("approximated", summary.approximated);
    report.addCount("inSockets", summary.inSockets);
    report.beginObject("powerInWatts");
    report.addNumber("inModel", summary.power.inModel);
    report.addNumber("filtered", summary.power.filtered);
    report.addNumber("leftOut", summary.power.leftOut);
    report.addNumber("inDesign", summary.power.inDesign);
    report.endObject();
    report.endObject();
}

} // namespace EDATool
