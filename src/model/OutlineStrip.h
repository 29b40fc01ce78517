// The strip in which an outline lies.
#pragma once

#include "model/EDAOutline.h"

namespace EDA {

// The room between two parallel lines, along the longest edge of an outline, that holds all of it. So of two
// diagonal bars side by side, whose boxes meet, it can be told that they are apart.
class OutlineStrip {
public:
    // Of nothing: not known.
    OutlineStrip() = default;
    // Of an outline whose points are finite.
    explicit OutlineStrip(EDAOutline const &outline);

    bool isKnown() const { return isKnown_; }
    // Whether it says much more than the box of the outline.
    bool isNarrow() const { return isNarrow_; }
    // Whether all points of the other outline lie on one side of the strip, beyond any rounding. So neither
    // has a point inside the other.
    bool isBeside(EDAOutline const &other) const;

private:
    double across(std::pair<double, double> const &point) const {
        return point.first * normalX_ + point.second * normalY_;
    }

    bool isKnown_ = false;
    bool isNarrow_ = false;
    double normalX_ = 0.0; // across the strip, of length 1
    double normalY_ = 0.0;
    double low_ = 0.0; // of the outline, across
    double high_ = 0.0;
};

} // namespace EDA
