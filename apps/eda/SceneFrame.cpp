// Title, scale bar and legend of a picture.
#include "SceneFrame.h"

#include "host/EntityModel/Units.h"
#include "PowerBar.h"
#include "Printable.h"

#include <algorithm>
#include <cmath>

namespace EDATool {

namespace {

constexpr Colour titleColour{29, 39, 51, 255};
constexpr Colour textColour{84, 97, 112, 255};
constexpr Colour ruleColour{207, 213, 220, 255};

// All in multiples of SceneFrame::unit.
constexpr double margin = 44;
constexpr double titleBase = 62;
constexpr double titleSize = 32;
constexpr double subtitleBase = 94;
constexpr double textSize = 17;
constexpr double drawingTop = 128;
constexpr double footerGap = 34;
constexpr double scaleBarShare = 0.16; // of the width of the drawing, at most
constexpr double footerTextX = 330;    // where the legend starts, right of the scale bar
constexpr double legendLine = 30;
constexpr double swatchWidth = 26;
constexpr double swatchHeight = 15;
constexpr double legendGap = 28;
constexpr double powerBarWidth = 900;
constexpr double referenceWidth = 1600; // pixels at which the unit is one pixel
constexpr double tallest = 1.25;        // height of the drawing by the width of the picture

struct LegendPlace {
    double x;
    int line;
};

double entryWidth(const LegendEntry &entry, double unit) {
    return (swatchWidth + 9 + legendGap) * unit + estimatedTextWidth(entry.label, textSize * unit);
}

std::vector<LegendPlace> placeLegend(const std::vector<LegendEntry> &legend, int width, double unit) {
    std::vector<LegendPlace> places;
    LegendPlace next{footerTextX * unit, 0};
    for (const LegendEntry &entry : legend) {
        const double advance = entryWidth(entry, unit);
        if (next.x + advance > width - (margin - legendGap) * unit && next.x > footerTextX * unit) {
            next = {footerTextX * unit, next.line + 1};
        }
        places.push_back(next);
        next.x += advance;
    }
    return places;
}

int numLines(const std::vector<LegendPlace> &places) { return places.empty() ? 1 : places.back().line + 1; }

// Lengths are shown in the design's unit where people use it, else in millimetres.
struct Shown {
    double factor = 1.0;
    std::string unit;
};

Shown shownUnit(const std::string &unit) {
    using namespace EntityModel;
    constexpr const char *usual[] = {"mm", "cm", "in", "mil", "thou"};
    if (unit.empty()) return {1.0, "units"};
    if (std::count(std::begin(usual), std::end(usual), unit) > 0) return {1.0, unit};
    const Quantity &length = *Units::findQuantity("Length");
    return {Units::convert(1.0, *Units::find(length, unit), *Units::find(length, "mm")), "mm"};
}

// The longest of 1, 2 or 5 times a power of ten that is not above `limit`.
double roundLength(double limit) {
    const double power = std::pow(10.0, std::floor(std::log10(limit)));
    for (const double step : {5.0, 2.0}) {
        if (step * power <= limit) return step * power;
    }
    return power;
}

void drawScaleBar(Picture &picture, const SceneFrame &frame, const Shown &shown, double y) {
    const double u = frame.unit;
    const double perLength = frame.scale / shown.factor; // pixels
    const double limit = std::min(scaleBarShare * frame.width, (footerTextX - margin - 110) * u);
    const double length = roundLength(limit / perLength);
    if (!std::isfinite(length) || length <= 0) return;
    const double x = margin * u;
    const double end = x + length * perLength;
    const Path bar = {
        {PathStep::Kind::Move, {x, y - 6 * u}, {}, 0},   {PathStep::Kind::Line, {x, y + 6 * u}, {}, 0},
        {PathStep::Kind::Move, {x, y}, {}, 0},           {PathStep::Kind::Line, {end, y}, {}, 0},
        {PathStep::Kind::Move, {end, y - 6 * u}, {}, 0}, {PathStep::Kind::Line, {end, y + 6 * u}, {}, 0}};
    Style style;
    style.stroke = titleColour;
    style.strokeWidth = 2 * u;
    picture.add(bar, style);
    TextStyle text;
    text.colour = titleColour;
    text.size = textSize * u;
    picture.addText(shortNumber(length) + " " + shown.unit, {end + 12 * u, y + 6 * u}, text);
}

void drawSwatch(Picture &picture, const LegendEntry &entry, double x, double y, double u) {
    Box box;
    box.add(Point{x, y - swatchHeight * u / 2});
    box.add(Point{x + swatchWidth * u, y + swatchHeight * u / 2});
    switch (entry.swatch) {
    case LegendEntry::Swatch::Box:
        picture.add(boxPath(box), entry.style);
        break;
    case LegendEntry::Swatch::Circle:
        picture.add(circlePath(box.centre(), 6.5 * u), entry.style);
        break;
    case LegendEntry::Swatch::Cross:
        picture.add(crossPath(box.centre(), 7 * u), entry.style);
        break;
    case LegendEntry::Swatch::Line:
        picture.add(
            {{PathStep::Kind::Move, {box.low.x, y}, {}, 0}, {PathStep::Kind::Line, {box.high.x, y}, {}, 0}},
            entry.style);
        break;
    }
}

void drawLegend(Picture &picture, const SceneFrame &frame, const std::vector<LegendEntry> &legend, double y) {
    const double u = frame.unit;
    const std::vector<LegendPlace> places = placeLegend(legend, frame.width, u);
    TextStyle style;
    style.colour = textColour;
    style.size = textSize * u;
    for (std::size_t index = 0; index < legend.size(); ++index) {
        const double lineY = y + places[index].line * legendLine * u;
        drawSwatch(picture, legend[index], places[index].x, lineY, u);
        picture.addText(legend[index].label, {places[index].x + (swatchWidth + 9) * u, lineY + 6 * u}, style);
    }
}

std::string counted(std::size_t count, const std::string &one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

// A socket and the part in it are two; the solids of a part are none.
std::string countsOf(const BoardView &view, const std::string &gap) {
    const auto isSolid = [](const PartView &part) { return part.kind == PartKind::Solid; };
    const auto numSolids =
        static_cast<std::size_t>(std::count_if(view.parts.begin(), view.parts.end(), isSolid));
    std::string text;
    if (view.parts.size() > numSolids) text += gap + counted(view.parts.size() - numSolids, "component");
    if (numSolids > 0) text += gap + counted(numSolids, "solid");
    if (!view.holes.empty()) text += gap + counted(view.holes.size(), "drilled hole");
    if (view.numUnplaced > 0) text += gap + std::to_string(view.numUnplaced) + " not placed";
    return text;
}

std::string subtitleOf(const BoardView &view, const Shown &shown, bool showsPower) {
    const auto length = [&shown](double value) { return shortNumber(value * shown.factor, 5); };
    const std::string gap = "\u2002\u00b7\u2002"; // blanks that no format folds
    std::string text = view.layerNumber > 0
                           ? "Layer " + std::to_string(view.layerNumber) + ", seen from the top"
                       : view.side == Side::Top ? "Top side"
                                                : "Bottom side, seen from below";
    if (!view.edgeBound.isEmpty()) {
        text += gap + length(view.edgeBound.width()) + " \u00d7 " + length(view.edgeBound.height()) + " " +
                shown.unit;
    }
    if (view.thickness > 0) text += gap + length(view.thickness) + " " + shown.unit + " thick";
    text += countsOf(view, gap);
    if (showsPower) {
        text += gap + powerText(view.power.shownSide) + " on this side" + gap + powerText(view.power.board) +
                " on the board";
    }
    return text;
}

void drawTitle(Picture &picture, const SceneFrame &frame, const BoardView &view,
               const std::string &subtitle) {
    const double u = frame.unit;
    const double room = frame.width - 2 * margin * u;
    const std::string &given = view.layerNumber > 0 ? view.layer : view.name;
    const std::string name = given.empty() ? "Board without a name" : shortened(given, 80);
    TextStyle style;
    style.colour = titleColour;
    style.bold = true;
    style.size =
        std::min(titleSize * u, titleSize * u * room / estimatedTextWidth(name, titleSize * u, true));
    picture.addText(name, {margin * u, titleBase * u}, style);
    style.colour = textColour;
    style.bold = false;
    style.size = std::min(textSize * u, textSize * u * room / estimatedTextWidth(subtitle, textSize * u));
    picture.addText(subtitle, {margin * u, subtitleBase * u}, style);
    picture.title = name;
    if (view.layerNumber == 0) picture.title += view.side == Side::Top ? ", top side" : ", bottom side";
}

} // namespace

double sceneUnit(int width) { return width / referenceWidth; }

SceneFrame makeFrame(const Box &shown, Side side, int width, const std::vector<LegendEntry> &legend,
                     bool hasPowerBar) {
    SceneFrame frame;
    frame.width = width;
    frame.unit = sceneUnit(width);
    const double u = frame.unit;
    const double roomX = width - 2 * margin * u;
    const double scaleX = shown.width() > 0 ? roomX / shown.width() : HUGE_VAL;
    const double scaleY = shown.height() > 0 ? tallest * width / shown.height() : HUGE_VAL;
    frame.scale = std::min(scaleX, scaleY);
    if (!std::isfinite(frame.scale)) frame.scale = 1.0;
    const double drawingHeight = std::max(shown.height() * frame.scale, 40 * u);
    frame.drawing.add(Point{margin * u, drawingTop * u});
    frame.drawing.add(Point{margin * u + roomX, drawingTop * u + drawingHeight});
    const int lines = numLines(placeLegend(legend, width, u));
    frame.height = static_cast<int>(
        std::ceil(frame.drawing.high.y +
                  (footerGap + margin + (lines - 1) * legendLine + (hasPowerBar ? powerBarHeight : 0)) * u));

    const Point centre = shown.centre();
    const Point target = frame.drawing.centre();
    const double sx = side == Side::Top ? frame.scale : -frame.scale;
    frame.toPixels = {
        sx, 0.0, 0.0, -frame.scale, target.x - sx * centre.x, target.y + frame.scale * centre.y};
    return frame;
}

void drawFrame(Picture &picture, const SceneFrame &frame, const BoardView &view,
               const std::vector<LegendEntry> &legend, const SceneStyles &styles) {
    const double u = frame.unit;
    const Shown shown = shownUnit(view.unit);
    drawTitle(picture, frame, view, subtitleOf(view, shown, styles.showsPower()));
    const double footer = frame.drawing.high.y + (footerGap + 4) * u;
    drawScaleBar(picture, frame, shown, footer);
    if (styles.showsPower()) {
        drawPowerBar(picture, styles.scale(), {footerTextX * u, footer - 8 * u}, powerBarWidth * u, u);
        drawLegend(picture, frame, legend, footer + powerBarHeight * u);
    } else {
        drawLegend(picture, frame, legend, footer);
    }
    Style rule;
    rule.stroke = ruleColour;
    rule.strokeWidth = u;
    const double ruleY = (subtitleBase + 16) * u;
    picture.add({{PathStep::Kind::Move, {margin * u, ruleY}, {}, 0},
                 {PathStep::Kind::Line, {frame.width - margin * u, ruleY}, {}, 0}},
                rule);
}

} // namespace EDATool
