// Which traces have copper at a place: by their bounds, then by their edges.
#include "fabrication/board/CopperPlaces.h"

#include "model/RayCrossing.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

// From so many points or internal outlines on an index pays.
constexpr std::size_t manyPoints = 64;
constexpr std::size_t manyInner = 8;

bool isLarge(EDATrace const &trace) {
    EDAOutline const &outline = trace.getOutline();
    return outline.numPoints() >= manyPoints || outline.numInternalOutlines() > 0;
}

bool isWithinStroke(EDATrace const &trace, double x, double y) {
    EDAOutline::PointList const &points = trace.getOutline().getPoints(true);
    double const reach = trace.getRouteWidth() / 2.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        double const dx = points[i].first - points[i - 1].first;
        double const dy = points[i].second - points[i - 1].second;
        double const px = x - points[i - 1].first;
        double const py = y - points[i - 1].second;
        double const length = dx * dx + dy * dy;
        double const along = length > 0.0 ? std::clamp((px * dx + py * dy) / length, 0.0, 1.0) : 0.0;
        if (std::hypot(px - along * dx, py - along * dy) <= reach) return true;
    }
    return false;
}

std::vector<Geometry::Bound2D> boundsOf(std::vector<EDATrace const *> const &traces) {
    std::vector<Geometry::Bound2D> bounds;
    bounds.reserve(traces.size());
    for (EDATrace const *const pointer : traces) {
        EDATrace const &trace = *pointer;
        Geometry::Bound2D bound = trace.getOutline().getBound();
        double const reach = trace.isDefinedAsRoute() ? trace.getRouteWidth() / 2.0 : 0.0;
        if (reach > 0.0 && bound.isValid()) {
            bound = Geometry::Bound2D(bound.getXLow() - reach, bound.getYLow() - reach,
                                      bound.getXHigh() + reach, bound.getYHigh() + reach);
        }
        bounds.push_back(bound);
    }
    return bounds;
}

} // namespace

TraceCopper::Ring::Ring(EDAOutline const &outlineOf) : outline(&outlineOf) {
    for (auto const &[x, y] : outline->getPoints(true))
        isFinite &= std::isfinite(x) && std::isfinite(y);
}

bool TraceCopper::Ring::contains(double x, double y) {
    EDAOutline::PointList const &points = outline->getPoints(true);
    if (!isFinite) return false;
    if (points.size() >= manyPoints) {
        if (!edges) edges.emplace(points);
        return edges->contains(x, y);
    }
    bool isInside = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (rayCrosses(points[i], points[i + 1 < points.size() ? i + 1 : 0], x, y)) isInside = !isInside;
    }
    return isInside;
}

TraceCopper::TraceCopper(EDATrace const &trace) : trace_(&trace), outer_(trace.getOutline()) {
    EDAOutline const &outline = trace.getOutline();
    std::vector<Geometry::Bound2D> bounds;
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner) {
        inner_.emplace_back(*inner);
        bounds.push_back(inner->getBound());
    }
    if (inner_.size() >= manyInner) innerBounds_.emplace(bounds);
}

bool TraceCopper::contains(double x, double y) {
    if (trace_->isDefinedAsRoute()) return isWithinStroke(*trace_, x, y);
    std::size_t last = 0; // of the internal outlines around the place, from 1
    auto const look = [&](std::size_t number) {
        if (number >= last && inner_[number].contains(x, y)) last = number + 1;
    };
    if (innerBounds_) {
        Geometry::Bound2D place;
        place.unite(x, y);
        innerBounds_->search(place, Geometry::Bound2D::defaultTolerance, look);
    } else {
        for (std::size_t number = 0; number < inner_.size(); ++number)
            look(number);
    }
    return last > 0 ? !inner_[last - 1].outline->isHole() : outer_.contains(x, y);
}

CopperPlaces::CopperPlaces(std::vector<EDATrace const *> traces)
    : traces_(std::move(traces)), bounds_(boundsOf(traces_)) {}

// Small ones are looked at as they are: an index would cost more than they do.
TraceCopper &CopperPlaces::copperOf(std::size_t number) {
    if (!isLarge(*traces_[number])) return small_.emplace(*traces_[number]);
    return large_.try_emplace(number, *traces_[number]).first->second;
}

} // namespace EDA::Fabrication
