// Giving the layers of a design their places in a stack-up.
#include "Stackup.h"

#include "Failure.h"
#include "host/FileSystem/Path.h"
#include "Printable.h"
#include "readers/BoardUnits.h"
#include "text/Text.h"

#include <cmath>
#include <numeric>

namespace EDATool {

namespace {

using EDA::EDABoardLayer;

// A conductor layer of the design with the file that it came from, where it has one.
struct DesignLayer {
    std::string name;
    std::string file;
    bool isTaken = false;
};

std::string listed(const std::vector<DesignLayer> &layers) {
    constexpr std::size_t limit = 32;
    std::string list;
    std::size_t number = 0;
    for (const DesignLayer &each : layers) {
        if (++number > limit) return list + ", ...";
        list += (list.empty() ? "" : ", ") + inQuotes(shortened(each.name, 60));
    }
    return list;
}

[[noreturn]] void fail(const Stackup &stackup, const std::string &reason) {
    throw DesignFailure(inQuotes(stackup.file) + ": " + reason);
}

bool hasFileName(const DesignLayer &layer, const std::string &name) {
    return !layer.file.empty() && EDA::equalsIgnoreCase(FileSystem::Path::getLastToken(layer.file), name);
}

// By the name of its file, which is one layer's alone, or else by its own.
std::size_t findNamed(const Stackup &stackup, const std::vector<DesignLayer> &layers, std::size_t number) {
    const std::string &name = stackup.layers[number].name;
    const std::string place =
        "layer " + std::to_string(number + 1) + ", " + inQuotes(shortened(name, 60)) + ", ";
    std::vector<std::size_t> named;
    for (std::size_t index = 0; index < layers.size(); ++index) {
        if (hasFileName(layers[index], name)) return index;
        if (EDA::equalsIgnoreCase(layers[index].name, name)) named.push_back(index);
    }
    if (named.empty())
        fail(stackup, place + "is none of the design's conductor layers, which are: " + listed(layers));
    if (named.size() > 1)
        fail(stackup, place + "is the name of " + std::to_string(named.size()) +
                          " layers of the design; the names of their files tell them apart");
    return named.front();
}

// The layer of the design for each conductor of the stack-up, in its order.
std::vector<std::size_t> matchByName(const Stackup &stackup, std::vector<DesignLayer> &layers) {
    std::vector<std::size_t> matches;
    for (std::size_t number = 0; number < stackup.layers.size(); ++number) {
        if (!stackup.layers[number].isConductor) continue;
        const std::size_t found = findNamed(stackup, layers, number);
        if (layers[found].isTaken)
            fail(stackup, "layer " + std::to_string(number + 1) + ", " +
                              inQuotes(shortened(stackup.layers[number].name, 60)) +
                              ", is a layer of the design that one above it stands for already");
        layers[found].isTaken = true;
        matches.push_back(found);
    }
    for (const DesignLayer &each : layers) {
        if (!each.isTaken)
            fail(stackup, "the design's conductor layer " + inQuotes(shortened(each.name, 60)) +
                              " is missing; the design has: " + listed(layers));
    }
    return matches;
}

std::vector<std::size_t> matchByOrder(const Stackup &stackup, const std::vector<DesignLayer> &layers) {
    if (layers.size() != stackup.numConductors())
        fail(stackup, "has " + std::to_string(stackup.numConductors()) + " conductors, but the design has " +
                          std::to_string(layers.size()) + " conductor layers: " + listed(layers));
    std::vector<std::size_t> matches(layers.size());
    std::iota(matches.begin(), matches.end(), std::size_t{0});
    return matches;
}

bool hasNames(const Stackup &stackup) {
    for (const StackupLayer &layer : stackup.layers) {
        if (layer.isConductor) return !layer.name.empty();
    }
    return false;
}

std::string defaultName(const StackupLayer &layer, std::size_t number) {
    if (!layer.name.empty()) return layer.name;
    return (layer.isConductor ? "conductor " : "dielectric ") + std::to_string(number);
}

// `offset` is the distance from the board's top to the layer's lower face. That is what the import takes from
// the board's thickness to place a layer, which then stands on that face.
void fillLayer(const StackupLayer &from, double scale, double offset, EDABoardLayer &layer) {
    layer.setThickness(scale * from.thickness);
    layer.setTopOffset(scale * offset);
    if (!from.isConductor) {
        layer.setDielectricMaterial(from.material);
        return;
    }
    if (!from.material.empty()) layer.setConductorMaterial(from.material);
    if (!from.filling.empty()) layer.setDielectricMaterial(from.filling);
    if (from.coverage >= 0.0) layer.setUniformConductivity(from.coverage);
}

std::vector<DesignLayer> layersOf(const Stackup &stackup, const Design &design) {
    const EDA::EDABoard &board = design.board();
    std::vector<DesignLayer> layers;
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        if (!layer->isConductor())
            fail(stackup, "cannot be applied, since the design has a stack-up with dielectrics of its own");
        const bool hasFile = layers.size() < design.layerFiles.size();
        layers.push_back({layer->getName(), hasFile ? design.layerFiles[layers.size()] : "", false});
    }
    return layers;
}

// There are at least as many as the board has.
void putLayers(std::vector<EDABoardLayer> layers, EDA::EDABoard &board) {
    for (std::size_t index = 0; index < layers.size(); ++index) {
        if (index < board.numLayers())
            board.getNthLayer(static_cast<int>(index)) = std::move(layers[index]);
        else
            board.addLayer(std::move(layers[index]));
    }
}

void tellThickness(const Stackup &stackup, double sum, Design &design) {
    constexpr double leastDifference = 1e-3; // of the thickness: less is rounding
    EDA::EDABoard &board = design.board();
    const std::string units = " " + printable(board.getUnits());
    const std::string head = inQuotes(stackup.file) + ": the stack-up has " +
                             std::to_string(stackup.layers.size()) + " layers, " +
                             std::to_string(stackup.numConductors()) + " of them conductors, and is " +
                             shortNumber(sum) + units + " thick";
    const double thickness = board.getThickness();
    if (!(thickness > 1e-9)) {
        board.setThickness(sum);
        design.notices.push_back(head + ", which the board takes as its thickness");
    } else if (std::fabs(thickness - sum) <= leastDifference * thickness) {
        design.notices.push_back(head + ", as the board is");
    } else {
        const double difference = sum - thickness;
        design.warnings.push_back(
            head + ", but the board is " + shortNumber(thickness) + units +
            " thick; the layers are placed from its top" +
            (difference > 0 ? ", so that they end " + shortNumber(difference) + units + " below it"
                            : ", which leaves " + shortNumber(-difference) + units + " at its bottom"));
    }
}

// Lengths of the board in one of the stack-up's.
double boardLengths(const Stackup &stackup, const EDA::EDABoard &board) {
    using namespace EntityModel;
    if (!EDA::isKnownLengthUnit(board.getUnits()))
        fail(stackup, "cannot be applied, since the board names no known units");
    return Units::convert(1.0, *stackup.unit, *Units::find(*Units::findQuantity("Length"), board.getUnits()));
}

// All layers in the order of the stack-up. `matches` names the board's for each conductor, or is empty.
std::vector<EDABoardLayer> arrange(const Stackup &stackup, double scale,
                                   const std::vector<std::size_t> &matches, EDA::EDABoard &board) {
    std::vector<EDABoardLayer> arranged;
    std::size_t numConductors = 0;
    double offset = 0.0;
    for (const StackupLayer &from : stackup.layers) {
        EDABoardLayer layer(from.isConductor);
        layer.setName(defaultName(from, arranged.size() + 1));
        if (from.isConductor && !matches.empty())
            layer = std::move(board.getNthLayer(static_cast<int>(matches[numConductors++])));
        offset += from.thickness;
        fillLayer(from, scale, offset, layer);
        arranged.push_back(std::move(layer));
    }
    return arranged;
}

} // namespace

void applyStackup(const Stackup &stackup, Design &design) {
    EDA::EDABoard &board = design.board();
    const double scale = boardLengths(stackup, board);
    std::vector<DesignLayer> layers = layersOf(stackup, design);
    std::vector<std::size_t> matches;
    if (!layers.empty())
        matches = hasNames(stackup) ? matchByName(stackup, layers) : matchByOrder(stackup, layers);
    putLayers(arrange(stackup, scale, matches, board), board);
    std::vector<std::string> files;
    for (const std::size_t match : matches)
        files.push_back(layers[match].file);
    if (!design.layerFiles.empty()) design.layerFiles = std::move(files);
    double sum = 0.0;
    for (const StackupLayer &layer : stackup.layers)
        sum += scale * layer.thickness;
    if (!stackup.conductorMaterial.empty()) board.setConductorMaterial(stackup.conductorMaterial);
    if (!stackup.dielectricMaterial.empty()) board.setDielectricMaterial(stackup.dielectricMaterial);
    tellThickness(stackup, sum, design);
}

} // namespace EDATool
