// Counting what IDX documents cannot hold.
#pragma once

#include "LossLines.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// Each is one line for the user.
enum class IdxLoss {
    Layers,
    Bumps,
    Wirebonds,
    RouteOutlines,
    PlacementOutlines,
    Arcs,
    InnerCutOuts,
    KeepoutCutOuts,
    ComponentCutOuts,
    KeepoutsWithoutSide,
    HoleShapes,
    HoleTypes,
    HoleSpans,
    PlatingStyles,
    WithoutComponent,
    WithoutPlacement,
    MechanicalComponents,
    Offsets,
    Statuses,
    Heatsinks,
    Molds,
    Manufacturers,
    Materials,
    Properties,
    ComponentUnits,
    RoundedPlaces,
    Characters,
    NumbersNotFinite,
    Count
};

class IdxNotices {
public:
    void add(IdxLoss loss, std::size_t number = 1) { numbers_[static_cast<std::size_t>(loss)] += number; }

    // One line for each kind that has been counted, such as "3 bumps are left out".
    std::vector<std::string> lines() const;

private:
    std::array<std::size_t, static_cast<std::size_t>(IdxLoss::Count)> numbers_ = {};
};

} // namespace EDATool
