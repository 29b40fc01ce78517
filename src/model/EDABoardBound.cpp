// How large a board is.
#include "model/EDABoard.h"

#include <algorithm>

namespace EDA {

double EDABoard::getModelDimension() const {
    Geometry::Bound2D bound;
    outline_.getOverallBound(bound);
    return bound.isValid(1e-9) ? std::max(bound.getXSize(), bound.getYSize()) : 0.0;
}

void EDABoard::getOverallBound(double &xLow, double &yLow, double &xHigh, double &yHigh) const {
    Geometry::Bound2D bound;
    uniteOutlines(bound);
    unitePlacements(bound);
    uniteTraces(bound);
    if (!bound.isValid(1e-9)) uniteVias(bound);
    bool const valid = bound.isValid(1e-9);
    xLow = valid ? bound.getXLow() : 0.0;
    yLow = valid ? bound.getYLow() : 0.0;
    xHigh = valid ? bound.getXHigh() : 0.0;
    yHigh = valid ? bound.getYHigh() : 0.0;
}

void EDABoard::uniteOutlines(Geometry::Bound2D &bound) const {
    outline_.getOverallBound(bound);
    for (auto const &keepout : keepouts_)
        keepout.getOutline().getOverallBound(bound);
    for (auto const &outline : routeOutlines_)
        outline.getOverallBound(bound);
    for (auto const &outline : placementOutlines_)
        outline.getOverallBound(bound);
}

void EDABoard::unitePlacements(Geometry::Bound2D &bound) const {
    for (auto const &placement : placements_) {
        if (!placement.isOnBoardTop()) continue;
        auto const *component = findComponent(placement);
        if (!component) continue;
        // A bound of its own, since the shift moves all that a bound holds.
        Geometry::Bound2D placed;
        component->getOutline().getOverallBound(placement.getXLocation(), placement.getYLocation(), placed);
        bound.unite(placed);
    }
}

void EDABoard::uniteTraces(Geometry::Bound2D &bound) const {
    for (auto const &layer : layers_)
        std::for_each(layer.beginTraces(), layer.endTraces(),
                      [&](EDATrace const &trace) { trace.getOutline().getOverallBound(bound); });
}

void EDABoard::uniteVias(Geometry::Bound2D &bound) const {
    for (auto const &via : vias_) {
        Geometry::Bound2D holes;
        via.getBound(holes);
        bound.unite(holes);
    }
}

} // namespace EDA
