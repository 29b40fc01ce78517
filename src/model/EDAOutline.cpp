// Outline points: adding, copying, the caches and the bound.
#include "model/EDAOutline.h"

#include "host/Geometry/Polygon2D.h"

#include <cmath>

namespace EDA {

double EDAOutline::ptTol = 1e-12;
double EDAOutline::lineTol = 1e-5;

namespace {

constexpr double modelDimensionTolerance = 1e-6;

bool near(double a, double b, double tolerance) { return std::abs(a - b) < tolerance; }

} // namespace

EDAOutline::EDAOutline(bool hole) : hole_(hole) {}

EDAOutline::EDAOutline(Geometry::Polygon2D const &polygon, bool hole) : hole_(hole) {
    points_.reserve(polygon.numPoints());
    for (auto vertex = polygon.beginPoints(); vertex != polygon.endPoints(); ++vertex)
        points_.push_back(EDAPoint(vertex->x, vertex->y, 0.0));
}

EDAOutline::EDAOutline(EDAOutline const &other)
    : points_(other.points_), zLow_(other.zLow_), zHigh_(other.zHigh_),
      internalOutlines_(other.internalOutlines_), hole_(other.hole_), name_(other.name_),
      material_(other.material_), modelDimension_(other.modelDimension_) {}

EDAOutline::EDAOutline(EDAOutline &&other) noexcept
    : points_(std::move(other.points_)), zLow_(other.zLow_), zHigh_(other.zHigh_),
      internalOutlines_(std::move(other.internalOutlines_)), hole_(other.hole_),
      name_(std::move(other.name_)), material_(std::move(other.material_)),
      modelDimension_(other.modelDimension_) {
    other.clear();
    // A copy's internal outlines have no caches either, at any depth.
    auto const clearCaches = [](auto const &self, std::vector<EDAOutline> &outlines) -> void {
        for (EDAOutline &each : outlines) {
            each.clearCache();
            self(self, each.internalOutlines_);
        }
    };
    clearCaches(clearCaches, internalOutlines_);
}

EDAOutline &EDAOutline::operator=(EDAOutline const &other) {
    if (this == &other) return *this;
    // `other` may be one of the internal outlines: they are replaced last.
    std::vector<EDAOutline> internalOutlines(other.internalOutlines_);
    points_ = other.points_;
    zLow_ = other.zLow_;
    zHigh_ = other.zHigh_;
    hole_ = other.hole_;
    name_ = other.name_;
    material_ = other.material_;
    discretised_ = other.discretised_;
    raw_ = other.raw_;
    bound_ = other.bound_;
    modelDimension_ = other.modelDimension_;
    internalOutlines_.swap(internalOutlines);
    return *this;
}

EDAOutline &EDAOutline::operator=(EDAOutline &&other) noexcept {
    if (this == &other) return *this;
    // As above: the old internal outlines live until `other` is no longer needed. The new ones are moved by
    // construction, which leaves their caches behind.
    EDAOutline internals;
    internals.internalOutlines_.swap(other.internalOutlines_);
    EDAOutline fresh(std::move(internals));
    points_ = std::move(other.points_);
    zLow_ = other.zLow_;
    zHigh_ = other.zHigh_;
    hole_ = other.hole_;
    name_ = std::move(other.name_);
    material_ = std::move(other.material_);
    discretised_ = std::move(other.discretised_);
    raw_ = std::move(other.raw_);
    bound_ = other.bound_;
    modelDimension_ = other.modelDimension_;
    other.clear();
    internalOutlines_.swap(fresh.internalOutlines_);
    return *this;
}

bool EDAOutline::operator==(EDAOutline const &other) const {
    if (points_.size() != other.points_.size()) return false;
    for (std::size_t i = 0; i < points_.size(); ++i)
        if (!points_[i].isEqual(other.points_[i], ptTol)) return false;
    return true;
}

void EDAOutline::addPoint(int outline, double x, double y, double angle) {
    addPoint(outline, EDAPoint(x, y, angle));
}

void EDAOutline::addPoint(int outline, double x, double y, double centreX, double centreY, bool clockwise) {
    addPoint(outline, EDAPoint(x, y, centreX, centreY, clockwise));
}

void EDAOutline::addPoint(int outline, EDAPoint const &point) {
    if (outline < 0) return;
    if (outline > numInternalOutlines()) {
        EDAOutline added(true);
        added.addPoint(0, point);
        internalOutlines_.push_back(std::move(added));
        return;
    }
    EDAOutline &target = outline == 0 ? *this : internalOutlines_[static_cast<std::size_t>(outline) - 1];
    if (!target.points_.empty() && point.isEqual(target.points_.back(), ptTol)) return;
    target.points_.push_back(point);
    target.clearCache();
}

void EDAOutline::addPoint(PointList &points, std::pair<double, double> const &point) {
    if (!points.empty() && near(points.back().first, point.first, ptTol) &&
        near(points.back().second, point.second, ptTol))
        return;
    points.push_back(point);
}

void EDAOutline::addInternalOutline(EDAOutline const &outline) {
    EDAOutline copy(outline); // `outline` may be this one or one of its internals
    internalOutlines_.push_back(std::move(copy));
}

void EDAOutline::clear() {
    clearCache();
    points_.clear();
    internalOutlines_.clear();
}

void EDAOutline::clearCache() {
    discretised_.clear();
    raw_.clear();
    bound_.reset();
}

void EDAOutline::resetOutline(EDAOutline const &other, bool withInternal) {
    clearCache();
    if (&other == this) {
        points_.clear();
        if (withInternal) internalOutlines_.clear();
        return;
    }
    points_ = other.points_;
    if (!withInternal) return;
    std::vector<EDAOutline> internalOutlines(other.internalOutlines_); // `other` may be one of the old ones
    internalOutlines_.swap(internalOutlines);
}

bool EDAOutline::isClosed() const { return points_.size() >= 2 && points_.front() == points_.back(); }

void EDAOutline::makeClosed() {
    if (points_.size() <= 2 || isClosed()) return;
    EDAPoint const first = points_.front();
    points_.push_back(first);
}

void EDAOutline::setZDimensions(double zLow, double zHigh) {
    zLow_ = zLow;
    zHigh_ = zHigh;
}

void EDAOutline::getZDimensions(double &zLow, double &zHigh) const {
    zLow = zLow_;
    zHigh = zHigh_;
}

void EDAOutline::setModelDimension(double dimension) const {
    if (!(std::abs(modelDimension_ - dimension) > modelDimensionTolerance)) return;
    modelDimension_ = dimension;
    discretised_.clear();
    for (EDAOutline const &internal : internalOutlines_)
        internal.setModelDimension(dimension);
}

void EDAOutline::mirror(double, double) {}

void EDAOutline::convertToPolygon(Geometry::Polygon2D &polygon) const {
    for (auto const &point : getPoints(true))
        polygon.addPoint(point.first, point.second, false);
    polygon.setBoundingBox();
    polygon.setOrientation(!isHole());
}

Geometry::Bound2D const &EDAOutline::getBound() const {
    if (!bound_.isValid(boundTolerance)) getBound(getPoints(true), bound_);
    return bound_;
}

void EDAOutline::getBound(PointList const &points, Geometry::Bound2D &bound) {
    for (auto const &point : points)
        bound.unite(point.first, point.second);
}

void EDAOutline::getOverallBound(Geometry::Bound2D &bound) const {
    bound.unite(getBound());
    for (EDAOutline const &internal : internalOutlines_)
        bound.unite(internal.getBound());
}

void EDAOutline::getOverallBound(double dx, double dy, Geometry::Bound2D &bound) const {
    getOverallBound(bound);
    bound.moveBy(dx, dy);
}

} // namespace EDA
