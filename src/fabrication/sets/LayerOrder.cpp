// The order of the copper layers by their places.
#include "fabrication/sets/LayerOrder.h"

#include "fabrication/sets/FileRoles.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

// Where no layer is named the bottom, it is the one with the highest number, if that counts all layers: what
// has no place stands before it.
void settleBottom(std::vector<SetFile> &copper) {
    double highest = 1.0;
    bool mayEnd = false;
    for (SetFile const &layer : copper) {
        if (!layer.hasPlace || (layer.place >= groupPlace && layer.place < bottomPlace)) continue;
        if (layer.place > highest) mayEnd = false;
        highest = std::max(highest, layer.place);
        mayEnd = mayEnd || (layer.place == highest && (layer.mayEnd || layer.isCounted));
    }
    if (highest <= 1.0 || highest >= bottomPlace || !mayEnd) return;
    for (SetFile &layer : copper)
        if (layer.hasPlace && layer.place == highest) layer.place = bottomPlace;
}

// "LAYER_1" beside "TOP" is the first inner layer.
void settlePlaces(std::vector<SetFile> &copper, FabricationSet &set) {
    const auto isAny = [&copper](bool isCounted) {
        return std::any_of(copper.begin(), copper.end(), [isCounted](SetFile const &layer) {
            return layer.hasPlace && layer.place == 1.0 && layer.isCounted == isCounted;
        });
    };
    const bool countsInner = isAny(false) && isAny(true);
    for (SetFile &layer : copper) {
        layer.number = layer.hasPlace && layer.place < groupPlace ? static_cast<int>(layer.place) : 0;
        if (!layer.hasPlace) layer.place = unknownPlace;
        if (countsInner && layer.isCounted) layer.place += 1.0;
    }
    if (countsInner)
        set.guesses.push_back(
            "the numbers in the names count the inner layers, as there is a top layer beside "
            "the first");
    else
        settleBottom(copper);
}

std::string namesOf(std::vector<SetFile const *> const &files) {
    std::string text;
    constexpr std::size_t shown = 8;
    for (std::size_t index = 0; index < std::min(files.size(), shown); ++index)
        text += (index == 0 ? "" : ", ") + inQuotes(files[index]->shown);
    return text + (files.size() > shown ? ", ..." : "");
}

void tellUnknown(std::vector<SetFile> const &copper, FabricationSet &set) {
    std::vector<SetFile const *> unknown;
    for (SetFile const &layer : copper)
        if (!layer.hasPlace) unknown.push_back(&layer);
    if (unknown.empty()) return;
    set.guesses.push_back("nothing says where " + namesOf(unknown) +
                          (unknown.size() == 1 ? " stands" : " stand") +
                          " among the copper layers: between top and bottom, in the order given");
}

// A number of a group, or of a plane beside numbers of signal layers, orders those of its kind alone.
void tellMixed(std::vector<SetFile> const &copper, FabricationSet &set) {
    const auto isLate = [](SetFile const &layer) {
        return layer.hasPlace && layer.place >= groupPlace && layer.place < unknownPlace;
    };
    const auto isEarly = [](SetFile const &layer) {
        return layer.hasPlace && layer.place > 1.0 && layer.place < groupPlace;
    };
    if (std::any_of(copper.begin(), copper.end(), isLate) &&
        std::any_of(copper.begin(), copper.end(), isEarly))
        set.guesses.push_back(
            "planes and groups stand behind the numbered inner layers, as nothing says more");
}

// "group3" says that it is a layer of its own, not which.
void tellGroups(std::vector<SetFile> const &copper, FabricationSet &set) {
    for (SetFile const &layer : copper)
        if (layer.hasPlace && layer.isGuess && layer.place >= groupPlace && layer.place < unknownPlace)
            set.guesses.push_back(inQuotes(layer.shown) + " stands between top and bottom: " + layer.reason);
}

void tellTwice(std::vector<SetFile> const &copper, FabricationSet &set) {
    for (std::size_t index = 1; index < copper.size(); ++index) {
        SetFile const &before = copper[index - 1];
        SetFile const &layer = copper[index];
        if (before.hasPlace && layer.hasPlace && before.place == layer.place)
            set.warnings.push_back(inQuotes(before.shown) + " and " + inQuotes(layer.shown) +
                                   " are the same layer of the board; are they of two boards?");
    }
}

} // namespace

void orderLayers(std::vector<SetFile> &copper, FabricationSet &set) {
    settlePlaces(copper, set);
    std::stable_sort(copper.begin(), copper.end(),
                     [](SetFile const &a, SetFile const &b) { return a.place < b.place; });
    tellUnknown(copper, set);
    tellMixed(copper, set);
    tellGroups(copper, set);
    tellTwice(copper, set);
    for (std::size_t index = 0; index < copper.size(); ++index)
        copper[index].place = static_cast<double>(index) + 1.0;
}

} // namespace EDA::Fabrication
