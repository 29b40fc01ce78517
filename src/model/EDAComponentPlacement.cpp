// Placements: location, angle, side, heatsink and bumps.
#include "model/EDAComponentPlacement.h"

#include "host/Geometry/Transform.h"
#include "model/Definitions.h"
#include "text/Text.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace EDA {

namespace {

double finiteOrZero(double value) { return std::isinf(value) ? 0.0 : value; }

// Below this, turns are taken off at once: adding them one by one would not end.
constexpr double stepwiseLimit = -3600.0;

double notNegative(double angle) {
    if (std::isinf(angle) && angle < 0.0) return 0.0;
    if (angle < stepwiseLimit) angle = std::fmod(angle, 360.0) + 0.0;
    while (angle < 0.0)
        angle += 360.0;
    return angle;
}

// Digits and a point, as nearly every file writes an offset: no need for a stream.
bool isShortDecimal(std::string const &text) {
    bool const isShort = text.size() < 16 && text.find_first_not_of("0123456789.") == std::string::npos;
    return isShort && text.find_first_not_of('.') != std::string::npos && text.find('.') == text.rfind('.');
}

} // namespace

EDAComponentPlacement::EDAComponentPlacement() = default;
EDAComponentPlacement::EDAComponentPlacement(EDAComponentPlacement const &) = default;
EDAComponentPlacement::EDAComponentPlacement(EDAComponentPlacement &&) noexcept = default;
EDAComponentPlacement &EDAComponentPlacement::operator=(EDAComponentPlacement const &) = default;
EDAComponentPlacement &EDAComponentPlacement::operator=(EDAComponentPlacement &&) noexcept = default;
EDAComponentPlacement::~EDAComponentPlacement() = default;

void EDAComponentPlacement::setName(std::string const &name) {
    name_ = name;
    keyWatch_.keyChanged();
}

void EDAComponentPlacement::setPartNumber(std::string const &partNumber) {
    partNumber_ = partNumber;
    keyWatch_.keyChanged();
}

void EDAComponentPlacement::setLocation(double x, double y) {
    xLocation_ = finiteOrZero(x);
    yLocation_ = finiteOrZero(y);
}

void EDAComponentPlacement::setOffset(std::string const &text) {
    if (isShortDecimal(text)) {
        offset_ = parseDouble(text, 0.0, 0.0);
        return;
    }
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double value = 0.0;
    in >> value;
    if (!in.fail() && in.peek() == std::istringstream::traits_type::eof()) offset_ = value;
}

void EDAComponentPlacement::setAngle(double angle) { angle_ = notNegative(angle); }

double EDAComponentPlacement::getAngle(bool mirrorOnBottom) const {
    if (hasOrientation_) return orientationAngle();
    if (mirrorOnBottom && !isOnBoardTop()) return angle_ > 1e-6 ? 360.0 - angle_ : 0.0;
    return angle_;
}

double EDAComponentPlacement::orientationAngle() const {
    double angle = std::atan2(yx_, yy_) * 180.0 / Geometry::Transform::pi;
    if (yy_ * xx_ - yx_ * xy_ < -1e-9) angle = -angle;
    if (angle < -1e-6) angle += 360.0;
    return angle;
}

bool EDAComponentPlacement::isOnBoardTop() const {
    return boardSide_.empty() || equalsIgnoreCase(boardSide_, "TOP");
}

bool EDAComponentPlacement::isPlaced() const { return !equalsIgnoreCase(status_, "UNPLACED"); }

void EDAComponentPlacement::setOrientation(double xx, double xy, double yx, double yy) {
    hasOrientation_ = true;
    xx_ = xx;
    xy_ = xy;
    yx_ = yx;
    yy_ = yy;
}

bool EDAComponentPlacement::getOrientation(double &xx, double &xy, double &yx, double &yy) const {
    xx = xx_;
    xy = xy_;
    yx = yx_;
    yy = yy_;
    return hasOrientation_;
}

void EDAComponentPlacement::setHeatsink(EDAHeatsink const &heatsink) {
    heatsink_ = std::make_shared<std::optional<EDAHeatsink> const>(heatsink);
}

std::optional<EDAHeatsink> const &EDAComponentPlacement::getHeatsink() const {
    static std::optional<EDAHeatsink> const none;
    return heatsink_ ? *heatsink_ : none;
}

void EDAComponentPlacement::addBump(EDABump const &bump, bool merge) {
    addDefinition(bumps_, bumpTable_, bump, merge);
}

EDABump *EDAComponentPlacement::findBumpDefinition(EDABump const &bump) {
    return findDefinition(bumps_, bumpTable_, bump);
}

std::size_t EDAComponentPlacement::numBumps(int withInstances) const {
    return numDefinitions(bumps_, withInstances);
}

bool EDAComponentPlacement::hasBumps() const {
    return std::any_of(bumps_.begin(), bumps_.end(),
                       [](EDABump const &bump) { return bump.getBumpType() != 0; });
}

void EDAComponentPlacement::checkBump(std::size_t index) const {
    if (index >= bumps_.size())
        throw std::out_of_range("Index out of range in EDAComponentPlacement::getBump");
}

EDABump &EDAComponentPlacement::getBump(std::size_t index) {
    checkBump(index);
    return bumps_[index];
}

EDABump const &EDAComponentPlacement::getBump(std::size_t index) const {
    checkBump(index);
    return bumps_[index];
}

} // namespace EDA
