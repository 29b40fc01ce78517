// Vias: what they are, when they are equal, their bound.
#include "model/EDAVia.h"

#include "text/Text.h"

#include <cmath>

namespace EDA {

EDAVia::EDAVia() = default;
EDAVia::EDAVia(EDAVia const &) = default;
EDAVia::EDAVia(EDAVia &&) noexcept = default;
EDAVia &EDAVia::operator=(EDAVia const &) = default;
EDAVia &EDAVia::operator=(EDAVia &&) noexcept = default;
EDAVia::~EDAVia() = default;

void EDAVia::setPlatingStyle(std::string const &style) {
    platingStyle_ = style;
    keyWatch_.keyChanged();
}

bool EDAVia::isPlated() const {
    return equalsIgnoreCase(platingStyle_, "PTH") || equalsIgnoreCase(platingStyle_, "Plated");
}

void EDAVia::setDiameter(double diameter) {
    diameter_ = diameter;
    keyWatch_.keyChanged();
}

void EDAVia::setCentre(double x, double y) {
    xCentre_ = x;
    yCentre_ = y;
}

void EDAVia::setPlatingThickness(double thickness) {
    platingThickness_ = thickness;
    keyWatch_.keyChanged();
}

void EDAVia::setZDimensions(double zLow, double zHigh) {
    zLow_ = zLow;
    zHigh_ = zHigh;
}

void EDAVia::getZDimensions(double &zLow, double &zHigh) const {
    zLow = zLow_;
    zHigh = zHigh_;
}

void EDAVia::setAssociatedPart(std::string const &part) {
    associatedPart_ = part;
    keyWatch_.keyChanged();
}

void EDAVia::setHoleType(std::string const &type) {
    holeType_ = type;
    keyWatch_.keyChanged();
}

void EDAVia::setLayers(std::string const &startLayer, std::string const &endLayer) {
    startLayer_ = startLayer;
    endLayer_ = endLayer;
    keyWatch_.keyChanged();
}

void EDAVia::getLayers(std::string &startLayer, std::string &endLayer) const {
    startLayer = startLayer_;
    endLayer = endLayer_;
}

void EDAVia::setFillMaterial(std::string const &material) {
    fillMaterial_ = material;
    keyWatch_.keyChanged();
}

EDAOutline &EDAVia::getOutline() {
    keyWatch_.keyChanged();
    return outline_;
}

bool EDAVia::isThermalVia() const {
    return equalsIgnoreCase(holeType_, "VIA") || equalsIgnoreCase(holeType_, "ViaTerminal");
}

bool EDAVia::isMountingHole() const {
    return holeType_.empty() || equalsIgnoreCase(holeType_, "MTG") ||
           equalsIgnoreCase(holeType_, "PartMountingFeature");
}

bool EDAVia::isToolHole() const { return equalsIgnoreCase(holeType_, "TOOL"); }

bool EDAVia::isPin() const {
    return equalsIgnoreCase(holeType_, "PIN") || equalsIgnoreCase(holeType_, "ComponentTerminal");
}

bool EDAVia::hasAssociatedPart() const { return !associatedPart_.empty() && associatedPart_ != "BOARD"; }

bool EDAVia::isInstanceOf(EDAVia const &definition) const {
    if (!outline_.empty() || !definition.outline_.empty()) return false;
    if (hasAssociatedPart() || definition.hasAssociatedPart()) return false;
    return std::fabs(diameter_ - definition.diameter_) < sizeTolerance &&
           std::fabs(platingThickness_ - definition.platingThickness_) < sizeTolerance &&
           platingStyle_ == definition.platingStyle_ && holeType_ == definition.holeType_ &&
           startLayer_ == definition.startLayer_ && endLayer_ == definition.endLayer_ &&
           fillMaterial_ == definition.fillMaterial_;
}

void EDAVia::getBound(Geometry::Bound2D &bound) const {
    double const xLow = xCentre_ - diameter_ / 2.0;
    double const yLow = yCentre_ - diameter_ / 2.0;
    bound = Geometry::Bound2D(xLow, yLow, xLow + diameter_, yLow + diameter_);
    instances_.unite(diameter_, bound);
}

} // namespace EDA
