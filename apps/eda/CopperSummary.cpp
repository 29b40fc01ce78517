// What an import makes of layers, conductors and holes.
#include "CopperSummary.h"

#include "host/EntityModel/Types.h"

#include <iterator>

namespace EDATool {

using namespace EntityModel;

namespace {

bool isOn(const Entity &options, const AttributePath &option) {
    const Attribute *const attribute = options.readAttribute(option);
    return attribute != nullptr && attribute->getBool();
}

template <class Owner> void countConductors(const Owner &owner, CopperSummary &summary) {
    for (auto trace = owner.beginTraces(); trace != owner.endTraces(); ++trace) {
        ++summary.conductors;
        if (trace->getOutline().isBadOutline()) ++summary.conductorsInvalid;
    }
}

void countLayer(const EDA::EDABoardLayer &layer, CopperSummary &summary) {
    ++(layer.isConductor() ? summary.conductorLayers : summary.dielectricLayers);
    countConductors(layer, summary);
    summary.nets += layer.numNets();
    for (auto net = layer.beginNets(); net != layer.endNets(); ++net)
        countConductors(*net, summary);
}

void countVia(const EDA::EDAVia &via, const Entity &options, CopperSummary &summary) {
    const std::size_t count = 1 + via.numInstances();
    const bool isConnection = via.isThermalVia() || via.isPin();
    summary.holes += count;
    if (isConnection && isOn(options, Import_Vias_t)) {
        if (!via.isPlated() && !isOn(options, Import_Non_Plated_Vias_t)) summary.unplatedLeftOut += count;
    } else if (!via.isMountingHole() && !via.isToolHole()) {
        (isConnection ? summary.viasLeftOut : summary.otherKindsLeftOut) += count;
    }
}

struct Row {
    const char *label;
    const char *member; // of the JSON object
    std::size_t CopperSummary::*count;
    bool isAlways; // also when it is 0
};

// Those that are not always there tell what is not in the model, and why.
constexpr Row rows[] = {
    {"  Conductor layers", "conductorLayers", &CopperSummary::conductorLayers, true},
    {"  Dielectric layers", "dielectricLayers", &CopperSummary::dielectricLayers, true},
    {"    left out: \"Import Dielectric Layers\" is No", "dielectricLayersLeftOut",
     &CopperSummary::dielectricsLeftOut, false},
    {"  Conductors", "conductors", &CopperSummary::conductors, true},
    {"    left out: \"Import Detailed Layers\" is No", "conductorsLeftOut", &CopperSummary::conductorsLeftOut,
     false},
    {"    left out: no points, or a hole beside them", "conductorsInvalid", &CopperSummary::conductorsInvalid,
     false},
    {"  Nets", "nets", &CopperSummary::nets, true},
    {"  Holes and vias", "holes", &CopperSummary::holes, true},
    {"    left out: \"Import Vias\" is No", "viasLeftOut", &CopperSummary::viasLeftOut, false},
    {"    left out: \"Import Non Plated Vias\" is No", "unplatedLeftOut", &CopperSummary::unplatedLeftOut,
     false},
    {"    left out: neither via, pin, mounting nor tool hole", "otherKindsLeftOut",
     &CopperSummary::otherKindsLeftOut, false},
};

} // namespace

CopperSummary summarizeCopper(const EDA::EDABoard &board, const Entity &options) {
    CopperSummary summary;
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer)
        countLayer(*layer, summary);
    if (!isOn(options, Import_Dielectric_Layers_t)) summary.dielectricsLeftOut = summary.dielectricLayers;
    if (!isOn(options, Import_Detailed_Layers_t)) {
        summary.conductorsLeftOut = summary.conductors;
        summary.conductorsInvalid = 0;
    }
    for (auto via = board.beginVias(); via != board.endVias(); ++via)
        countVia(*via, options, summary);
    return summary;
}

std::string copperTable(const CopperSummary &summary) {
    std::vector<TableRow> table;
    for (const Row &row : rows) {
        if (row.isAlways || summary.*row.count > 0)
            table.push_back({row.label, std::to_string(summary.*row.count)});
    }
    return tableText(table);
}

void addCopper(const CopperSummary &summary, JsonReport &report) {
    report.beginObject("copper");
    for (const Row &row : rows)
        report.addCount(row.member, summary.*row.count);
    report.endObject();
}

} // namespace EDATool
