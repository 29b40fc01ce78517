// Bumps: their setters, when they are equal, their bound.
#include "model/EDABump.h"

#include <cmath>

namespace EDA {

namespace {

// The group that a bump's name spells, or an empty text.
std::string groupInName(std::string const &name) {
    auto const marker = name.find("!!");
    if (marker == std::string::npos) return {};
    auto const start = marker + 2;
    auto const dash = name.find('-', start);
    // A dash right behind the marker leaves no group.
    if (dash == std::string::npos || dash == start) return {};
    return name.substr(start, dash - start - 1);
}

} // namespace

EDABump::EDABump() = default;
EDABump::EDABump(EDABump const &) = default;
EDABump::EDABump(EDABump &&) noexcept = default;
EDABump &EDABump::operator=(EDABump const &) = default;
EDABump &EDABump::operator=(EDABump &&) noexcept = default;
EDABump::~EDABump() = default;

void EDABump::setName(std::string const &name) {
    name_ = name;
    if (group_.empty()) setGroup(groupInName(name));
}

void EDABump::setSize(double &size, double value) {
    if (!(value > 0.0)) return;
    size = value;
    keyWatch_.keyChanged();
}

void EDABump::setCentre(double x, double y) {
    xCentre_ = x;
    yCentre_ = y;
}

void EDABump::setGroup(std::string const &group) {
    group_ = group;
    keyWatch_.keyChanged();
}

void EDABump::setLayer(std::string const &layer) {
    layer_ = layer;
    keyWatch_.keyChanged();
}

void EDABump::setMaterial(std::string const &material) {
    if (material.empty()) return;
    material_ = material;
    keyWatch_.keyChanged();
}

bool EDABump::isInstanceOf(EDABump const &definition) const {
    auto const same = [](double a, double b) { return std::fabs(a - b) < sizeTolerance; };
    return same(maxDiameter_, definition.maxDiameter_) && same(topDiameter_, definition.topDiameter_) &&
           same(bottomDiameter_, definition.bottomDiameter_) && same(height_, definition.height_) &&
           material_ == definition.material_ && group_ == definition.group_ && layer_ == definition.layer_;
}

void EDABump::getBound(Geometry::Bound2D &bound) const {
    double const xLow = xCentre_ - maxDiameter_ / 2.0;
    double const yLow = yCentre_ - maxDiameter_ / 2.0;
    bound = Geometry::Bound2D(xLow, yLow, xLow + maxDiameter_, yLow + maxDiameter_);
    instances_.unite(maxDiameter_, bound);
}

} // namespace EDA
