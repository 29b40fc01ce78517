// What the fuzzers of Gerber and drill files ask of a board.
#pragma once

#include "readers/gerber/GerberReader.h"
#include "ScratchFile.h"

#include <cmath>
#include <cstdlib>

namespace Fuzz {

// What a broken promise of the reader looks like to the fuzzer.
inline void require(bool promise) {
    if (!promise) std::abort();
}

// So that the limits are met by small files, and no input takes long by what it lawfully asks for.
inline EDA::GerberLimits smallLimits() {
    EDA::GerberLimits limits;
    limits.points = 20'000;
    limits.objects = 300;
    limits.repeats = 100;
    limits.drillRepeats = 100;
    limits.vertices = 100;
    limits.rings = 10;
    limits.macroText = 1'000;
    limits.messages = 20;
    return limits;
}

inline void requireFinite(const EDA::EDAOutline &outline) {
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        require(std::isfinite(point->x) && std::isfinite(point->y) && std::isfinite(point->centreX));
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        requireFinite(*inner);
}

inline void requireFinite(const EDA::EDABoard &board) {
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        for (auto trace = layer->beginTraces(); trace != layer->endTraces(); ++trace) {
            require(!trace->getOutline().empty());
            requireFinite(trace->getOutline());
        }
    }
    for (auto via = board.beginVias(); via != board.endVias(); ++via) {
        require(std::isfinite(via->getDiameter()) && std::isfinite(via->getXCentre()));
        for (int i = 0; i < static_cast<int>(via->numInstances()); ++i)
            require(std::isfinite(via->getInstanceXCentre(i)) && std::isfinite(via->getInstanceYCentre(i)));
    }
}

} // namespace Fuzz
