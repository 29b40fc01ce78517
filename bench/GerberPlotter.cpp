// Statements of a Gerber layer.
#include "GerberPlotter.h"

#include <cmath>

namespace EDABench {

namespace {

constexpr double unitsOfMillimetre = 1e6;

} // namespace

GerberPlotter::Place GerberPlotter::placeOf(double x, double y) {
    return {std::llround(x * unitsOfMillimetre), std::llround(y * unitsOfMillimetre)};
}

bool GerberPlotter::takeObject() {
    if (left_ == 0) return false;
    --left_;
    return true;
}

void GerberPlotter::startNet() {
    ++net_;
    if (attributes_ && !isFull()) text_ += "%TO.N,NET" + std::to_string(net_) + "*%\n";
}

// What follows names its aperture anew, as some readers drop it here.
void GerberPlotter::changePolarity(const char *statement) {
    text_ += statement;
    aperture_ = -1;
}

void GerberPlotter::select(int aperture) {
    if (aperture != aperture_) text_ += "D" + std::to_string(aperture) + "*\n";
    aperture_ = aperture;
}

void GerberPlotter::interpolate(int mode) {
    if (loneCodes_ && mode != mode_) text_ += "G0" + std::to_string(mode) + "*\n";
    mode_ = mode;
}

void GerberPlotter::startStroke() {
    if (!loneCodes_) text_ += "G0" + std::to_string(mode_);
}

void GerberPlotter::addPlace(const Place &place, const char *operation) {
    text_ += 'X';
    text_ += std::to_string(place.x);
    text_ += 'Y';
    text_ += std::to_string(place.y);
    text_ += operation;
    place_ = place;
    isPlaceKnown_ = true;
}

void GerberPlotter::moveTo(const Place &place) {
    if (!isPlaceKnown_ || !(place == place_)) addPlace(place, "D02*\n");
}

void GerberPlotter::draw(int aperture, double x0, double y0, double x1, double y1) {
    if (!takeObject()) return;
    select(aperture);
    interpolate(1);
    moveTo(placeOf(x0, y0));
    startStroke();
    addPlace(placeOf(x1, y1), "D01*\n");
}

void GerberPlotter::addArc(const Place &from, const Place &to, const Place &centre) {
    startStroke();
    addPlace(to, "I");
    text_ += std::to_string(centre.x - from.x);
    text_ += 'J';
    text_ += std::to_string(centre.y - from.y);
    text_ += "D01*\n";
}

void GerberPlotter::drawArc(int aperture, const Arc &arc) {
    if (!takeObject()) return;
    select(aperture);
    interpolate(arc.anticlockwise ? 3 : 2);
    const Place from = placeOf(arc.x0, arc.y0);
    moveTo(from);
    addArc(from, placeOf(arc.x1, arc.y1), placeOf(arc.centreX, arc.centreY));
}

void GerberPlotter::flash(int aperture, double x, double y) {
    if (!takeObject()) return;
    select(aperture);
    addPlace(placeOf(x, y), "D03*\n");
}

void GerberPlotter::fill(double x, double y, const std::vector<Step> &steps) {
    if (!takeObject()) return;
    text_ += "G36*\n";
    addPlace(placeOf(x, y), "D02*\n");
    for (const Step &step : steps) {
        const Place from = place_, to = placeOf(step.x, step.y);
        interpolate(!step.isArc ? 1 : step.anticlockwise ? 3 : 2);
        if (step.isArc) {
            addArc(from, to, placeOf(step.centreX, step.centreY));
        } else {
            startStroke();
            addPlace(to, "D01*\n");
        }
    }
    text_ += "G37*\n";
    isPlaceKnown_ = false;
}

} // namespace EDABench
