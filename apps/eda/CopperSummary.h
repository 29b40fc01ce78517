// What an import makes of layers, conductors and holes.
#pragma once

#include "host/EntityModel/Entity.h"
#include "model/EDABoard.h"
#include "Report.h"

#include <cstddef>
#include <vector>

namespace EDATool {

// Numbers of the design. Each of the "left out" is part of the one before it.
struct CopperSummary {
    std::size_t conductorLayers = 0;
    std::size_t dielectricLayers = 0;
    std::size_t dielectricsLeftOut = 0; // by an option
    std::size_t conductors = 0;         // outlines and routes, those of nets included
    std::size_t conductorsLeftOut = 0;  // by an option
    std::size_t conductorsInvalid = 0;  // without points, or with a hole beside them
    std::size_t nets = 0;
    std::size_t holes = 0;             // at all locations
    std::size_t viasLeftOut = 0;       // vias and pins, by an option
    std::size_t unplatedLeftOut = 0;   // the same that are not plated, by another
    std::size_t otherKindsLeftOut = 0; // neither vias nor pins, nor mounting or tool holes

    bool isEmpty() const { return conductorLayers + dielectricLayers + holes == 0; }
};

// By the options of the import.
CopperSummary summarizeCopper(const EDA::EDABoard &board, const EntityModel::Entity &options);

std::string copperTable(const CopperSummary &summary);
void addCopper(const CopperSummary &summary, JsonReport &report);

} // namespace EDATool
