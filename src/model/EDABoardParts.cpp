// Components and placements of a board, and how they find each other.
#include "model/EDABoard.h"

#include <utility>

namespace EDA {

void EDABoard::addComponent(EDAComponent &component, bool checkDuplicates) {
    if (checkDuplicates) {
        if (auto const *stored = findPart(component.getName(), component.getPartNumber())) {
            if (stored->getHeight() == component.getHeight() &&
                stored->getOutline() == component.getOutline())
                return;
            auto const count = ++componentNameCounts_[component.getName()];
            component.setName(component.getName() + "-" + std::to_string(count));
        }
    }
    components_.push_back(component);
}

void EDABoard::addComponentPlacement(EDAComponentPlacement &&placement) {
    placements_.push_back(std::move(placement));
}

EDAComponent const *EDABoard::findPart(std::string const &name, std::string const &partNumber) const {
    EDAComponent const *found = nullptr;
    componentTable_.get().eachPart(components_, name, partNumber, [&](EDAComponent const &component) {
        found = &component;
        return false;
    });
    return found;
}

EDAComponent const *EDABoard::findComponent(EDAComponentPlacement const &placement) const {
    if (auto const *found = findPart(placement.getName(), placement.getPartNumber())) return found;
    EDAComponent const *found = nullptr;
    componentTable_.get().eachName(components_, placement.getName(), [&](EDAComponent const &component) {
        found = &component;
        return false;
    });
    return found;
}

void EDABoard::findComponentPlacements(EDAComponent const &component,
                                       std::vector<EDAComponentPlacement> &found) const {
    auto const take = [&](EDAComponentPlacement const &placement) {
        found.push_back(placement);
        return true;
    };
    auto &table = placementTable_.get();
    table.eachPart(placements_, component.getName(), component.getPartNumber(), take);
    if (found.empty()) table.eachName(placements_, component.getName(), take);
}

void EDABoard::visitComponentPlacements(EDAComponent const &component,
                                        std::function<bool(EDAComponentPlacement const &)> const &use) const {
    bool isFound = false;
    auto const take = [&](EDAComponentPlacement const &placement) {
        isFound = true;
        return use(placement);
    };
    auto &table = placementTable_.get();
    table.eachPart(placements_, component.getName(), component.getPartNumber(), take);
    if (!isFound) table.eachName(placements_, component.getName(), take);
}

} // namespace EDA
