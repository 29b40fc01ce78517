// The bar that tells what the colours of power mean.
#include "PowerBar.h"

namespace EDATool {

namespace {

constexpr Colour textColour{84, 97, 112, 255};
constexpr double textSize = 17;
constexpr double barHeight = 16;
constexpr int numShades = 128;

Path boxAt(double xLow, double yLow, double xHigh, double yHigh) {
    Box box;
    box.add(Point{xLow, yLow});
    box.add(Point{xHigh, yHigh});
    return boxPath(box);
}

// Each shade reaches to the end under those to come, so that no seams shine through.
void drawShades(Picture &picture, const Point &at, double width, double height) {
    for (int shade = 0; shade < numShades; ++shade) {
        Style style;
        style.fill = PowerScale::colourAt((shade + 0.5) / numShades);
        picture.add(boxAt(at.x + width * shade / numShades, at.y, at.x + width, at.y + height), style);
    }
}

} // namespace

void drawPowerBar(Picture &picture, const PowerScale &scale, const Point &at, double width, double unit) {
    TextStyle text;
    text.colour = textColour;
    text.size = textSize * unit;
    if (scale.isEmpty()) {
        picture.addText("No part of this board has a power", {at.x, at.y + textSize * unit}, text);
        return;
    }
    drawShades(picture, at, width, barHeight * unit);
    Style frame;
    frame.stroke = textColour;
    frame.strokeWidth = unit;
    picture.add(boxAt(at.x, at.y, at.x + width, at.y + barHeight * unit), frame);
    text.anchor = TextStyle::Anchor::Middle;
    for (int step = 0; step <= scale.numSteps(); ++step) {
        const double x = at.x + width * step / scale.numSteps();
        picture.add({{PathStep::Kind::Move, {x, at.y + barHeight * unit}, {}, 0},
                     {PathStep::Kind::Line, {x, at.y + (barHeight + 6) * unit}, {}, 0}},
                    frame);
        picture.addText(scale.stepText(step), {x, at.y + (barHeight + 25) * unit}, text);
    }
    text.anchor = TextStyle::Anchor::Start;
    picture.addText("Power, " + scale.unit(), {at.x + width + 34 * unit, at.y + (barHeight - 2) * unit},
                    text);
}

} // namespace EDATool
