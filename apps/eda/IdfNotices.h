// Counting what IDF files cannot hold.
#pragma once

#include "LossLines.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// Each is one line for the user.
enum class IdfLoss {
    Layers,
    Bumps,
    Wirebonds,
    RouteOutlines,
    PlacementOutlines,
    RoutingKeepouts,
    OtherKeepouts,
    KeepoutsWithoutSide,
    ViaKeepoutsOfOneSide,
    CentredArcs,
    InnerCutOuts,
    Islands,
    ComponentCutOuts,
    HoleShapes,
    HoleSpans,
    Heatsinks,
    Molds,
    Manufacturers,
    Materials,
    ItemNames,
    ComponentTypes,
    ComponentUnits,
    Statuses,
    PropertyKeys,
    PropertyValues,
    Characters,
    Quotes,
    NumbersNotFinite,
    Count
};

class IdfNotices {
public:
    void add(IdfLoss loss, std::size_t number = 1) { numbers_[static_cast<std::size_t>(loss)] += number; }

    // One line for each kind that has been counted, such as "3 routing keepouts are left out".
    std::vector<std::string> lines() const;

private:
    std::array<std::size_t, static_cast<std::size_t>(IdfLoss::Count)> numbers_ = {};
};

} // namespace EDATool
