// One piece of conductor on a layer.
#pragma once

#include "model/EDAOutline.h"

#include <string>

namespace EDA {

// A trace: either a shape with an area, or a route, whose outline is the centre line of a
// stroke of the route width. Lengths are in the board's units.
class EDATrace {
public:
    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }

    void setThickness(double thickness) { thickness_ = thickness; }
    double getThickness() const { return thickness_; }

    // Makes the trace a route for good, whatever the width.
    void setRouteWidth(double width) {
        routeWidth_ = width;
        definedAsRoute_ = true;
    }
    double getRouteWidth() const { return routeWidth_; }
    bool isDefinedAsRoute() const { return definedAsRoute_; }

    EDAOutline &getOutline() { return outline_; }
    EDAOutline const &getOutline() const { return outline_; }

    // `EDAOutline::addPoint` on the outline.
    void addPoint(int outline, double x, double y, double angle) { outline_.addPoint(outline, x, y, angle); }

private:
    std::string name_;
    double thickness_ = 0.0;
    double routeWidth_ = 0.0;
    bool definedAsRoute_ = false;
    EDAOutline outline_;
};

} // namespace EDA
