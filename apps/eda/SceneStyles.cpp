// How what is on a board is drawn, and the legend that says so.
#include "SceneStyles.h"

#include <algorithm>
#include <iterator>

namespace EDATool {

namespace {

// What lies under and around the parts. The colours of power stand on grey, which changes none of them.
struct Ground {
    Colour fill;
    Colour edge;
    Colour bareRim;
    Colour mark;
    Colour bump;
    Colour wire;
};

constexpr Ground greenGround{{47, 110, 84, 255},   {21, 58, 43, 255},    {16, 44, 33, 255},
                             {255, 255, 255, 255}, {201, 207, 214, 255}, {240, 206, 112, 255}};
constexpr Ground greyGround{{226, 229, 232, 255}, {96, 106, 117, 255},  {120, 129, 139, 255},
                            {60, 70, 82, 255},    {150, 158, 167, 255}, {150, 116, 40, 255}};

constexpr Colour paperColour{250, 251, 252, 255};
constexpr Colour copper{222, 184, 92, 255};
constexpr Colour none{0, 0, 0, 0};
constexpr Colour dark{24, 30, 37, 255};
constexpr Colour light{240, 243, 246, 255};
constexpr Colour shapeEdge{60, 70, 82, 255}; // on grey

// Of copper, from the top layer down, so that pictures of layers are told apart; each against the green too.
constexpr Colour layerColours[] = {{196, 58, 49, 255},  {41, 98, 196, 255},  {170, 216, 84, 255},
                                   {200, 128, 32, 255}, {126, 74, 176, 255}, {70, 194, 214, 255},
                                   {178, 60, 120, 255}, {226, 214, 150, 255}};

struct PartLook {
    PartKind kind;
    const char *label;
    Colour fill;
    Colour edge;
    Colour text;
};

constexpr PartLook partLooks[] = {
    {PartKind::Component, "Component", {38, 44, 52, 228}, {176, 187, 198, 255}, light},
    {PartKind::Mechanical, "Mechanical part", {171, 181, 191, 215}, {238, 241, 244, 255}, dark},
    {PartKind::Socket, "Socket", {104, 117, 131, 228}, {214, 221, 228, 255}, light},
    {PartKind::Container, "Component made of solids", none, {214, 221, 228, 255}, light},
    {PartKind::Solid, "Solid", {58, 62, 78, 215}, {176, 187, 198, 255}, light},
};

struct KeepoutLook {
    KeepoutKind kind;
    const char *label;
    Colour colour;
    double hatchAngle;
};

constexpr KeepoutLook keepoutLooks[] = {
    {KeepoutKind::Components, "Component keepout", {255, 112, 96, 255}, 45.0},
    {KeepoutKind::Vias, "Via keepout", {122, 205, 255, 255}, -45.0},
    {KeepoutKind::Routing, "Routing keepout", {255, 214, 102, 255}, 90.0},
    {KeepoutKind::Other, "Other keepout", {235, 235, 235, 255}, 0.0},
};

template <class Looks, class Kind> const auto &lookOf(const Looks &looks, Kind kind) {
    return *std::find_if(std::begin(looks), std::end(looks),
                         [kind](const auto &look) { return look.kind == kind; });
}

Colour faded(Colour colour, int alpha) {
    colour.alpha = static_cast<std::uint8_t>(alpha);
    return colour;
}

Style filled(const Colour &fill, const Colour &stroke, double strokeWidth) {
    Style style;
    style.fill = fill;
    style.stroke = stroke;
    style.strokeWidth = strokeWidth;
    return style;
}

const Ground &groundOf(Colouring colouring) {
    return colouring == Colouring::Kind ? greenGround : greyGround;
}

bool isLight(const Colour &colour) {
    return 0.2126 * colour.red + 0.7152 * colour.green + 0.0722 * colour.blue > 120.0;
}

template <class Items, class Test> bool anyOf(const Items &items, Test test) {
    return std::any_of(items.begin(), items.end(), test);
}

} // namespace

SceneStyles::SceneStyles(const BoardView &view, Colouring colouring, double unit)
    : colouring_(colouring), unit_(unit), isLayer_(view.layerNumber > 0) {
    if (showsPower()) scale_ = PowerScale(view.power, colouring);
}

Colour SceneStyles::paper() { return paperColour; }

Style SceneStyles::board() const {
    const Ground &ground = groundOf(colouring_);
    return filled(ground.fill, ground.edge, 2.0 * unit_);
}

Style SceneStyles::cutOut() const { return filled(paperColour, groundOf(colouring_).edge, 2.0 * unit_); }

Style SceneStyles::copperOf(std::size_t layerNumber) const {
    Style style;
    style.fill = layerColours[(layerNumber + std::size(layerColours) - 1) % std::size(layerColours)];
    return style;
}

Style SceneStyles::keepout(KeepoutKind kind) const {
    const KeepoutLook &look = lookOf(keepoutLooks, kind);
    Style style = filled(faded(look.colour, 34), faded(look.colour, 230), 1.5 * unit_);
    style.dashed = true;
    style.hatch = faded(look.colour, 150);
    style.hatchSpacing = 9 * unit_;
    style.hatchAngle = look.hatchAngle;
    return style;
}

Style SceneStyles::hole(bool isPlated, double diameter) const {
    const double ring = isPlated ? std::clamp(0.25 * diameter, 0.9 * unit_, 3.2 * unit_) : 1.2 * unit_;
    return filled(paperColour, isPlated ? copper : groundOf(colouring_).bareRim, ring);
}

bool SceneStyles::isColoured(const PartView &part) const {
    return showsPower() && !part.isFiltered && scale_.valueOf(part) > 0.0;
}

Style SceneStyles::part(const PartView &part) const {
    Style style;
    if (isColoured(part)) {
        style = filled(scale_.colourOf(scale_.valueOf(part)), shapeEdge, 1.0 * unit_);
    } else if (showsPower()) {
        style = filled(none, faded(shapeEdge, 170), 1.0 * unit_);
    } else {
        const PartLook &look = lookOf(partLooks, part.kind);
        const double width = part.kind == PartKind::Mechanical ? 1.2 * unit_ : 1.0 * unit_;
        const bool isHollow = part.isFiltered || isLayer_;
        style = filled(isHollow ? none : look.fill, isLayer_ ? light : look.edge, width);
    }
    style.dashed = part.isFiltered;
    if (part.isFiltered) style.strokeWidth = 1.4 * unit_;
    return style;
}

Colour SceneStyles::label(const PartView &part) const {
    if (isColoured(part)) return isLight(scale_.colourOf(scale_.valueOf(part))) ? dark : light;
    if (showsPower()) return shapeEdge;
    return part.isFiltered || isLayer_ ? light : lookOf(partLooks, part.kind).text;
}

Style SceneStyles::mark() const {
    Style style;
    style.stroke = groundOf(colouring_).mark;
    style.strokeWidth = 1.6 * unit_;
    return style;
}

Style SceneStyles::bump() const { return filled(groundOf(colouring_).bump, shapeEdge, 0.6 * unit_); }

Style SceneStyles::wire(double width) const {
    Style style;
    style.stroke = groundOf(colouring_).wire;
    style.strokeWidth = std::clamp(width, 1.0 * unit_, 6.0 * unit_);
    return style;
}

void SceneStyles::addParts(const BoardView &view, std::vector<LegendEntry> &legend) const {
    const auto addIf = [&](const char *label, const PartView &sample, const auto &test) {
        const auto isOne = [&test](const PartView &each) { return !each.body.empty() && test(each); };
        if (!anyOf(view.parts, isOne)) return;
        Style style = part(sample);
        if (style.fill.alpha == 0) style.fill = board().fill; // as it looks on the board
        legend.push_back({label, style, LegendEntry::Swatch::Box});
    };
    PartView sample;
    if (isLayer_) return addIf("Part outline", sample, [](const PartView &) { return true; });
    if (showsPower())
        addIf("No power", sample,
              [this](const PartView &each) { return !each.isFiltered && !isColoured(each); });
    for (const PartLook &look : partLooks) {
        if (showsPower()) break;
        sample.kind = look.kind;
        addIf(look.label, sample,
              [&look](const PartView &each) { return each.kind == look.kind && !each.isFiltered; });
    }
    sample.isFiltered = true;
    addIf("Filtered part", sample, [](const PartView &each) { return each.isFiltered; });
}

void SceneStyles::addKeepouts(const BoardView &view, std::vector<LegendEntry> &legend) const {
    for (const KeepoutLook &look : keepoutLooks) {
        if (!anyOf(view.keepouts, [&look](const KeepoutView &each) { return each.kind == look.kind; }))
            continue;
        Style style = keepout(look.kind);
        style.fill = board().fill;
        style.hatchSpacing = 6 * unit_;
        legend.push_back({look.label, style, LegendEntry::Swatch::Box});
    }
}

std::vector<LegendEntry> SceneStyles::legend(const BoardView &view) const {
    using Swatch = LegendEntry::Swatch;
    std::vector<LegendEntry> legend;
    if (!view.copper.empty()) legend.push_back({"Conductor", copperOf(view.layerNumber), Swatch::Box});
    addParts(view, legend);
    if (anyOf(view.parts, [](const PartView &each) { return each.body.empty(); })) {
        Style style = mark();
        style.stroke = groundOf(colouring_).edge;
        legend.push_back({"Part without a shape", style, Swatch::Cross});
    }
    for (const bool isPlated : {true, false}) {
        if (anyOf(view.holes, [=](const HoleView &each) { return each.isPlated == isPlated; }))
            legend.push_back(
                {isPlated ? "Plated hole" : "Unplated hole", hole(isPlated, 13 * unit_), Swatch::Circle});
    }
    if (!view.bumps.empty()) legend.push_back({"Bump", bump(), Swatch::Circle});
    if (!view.wires.empty()) legend.push_back({"Wirebond", wire(2 * unit_), Swatch::Line});
    if (showsKeepouts()) addKeepouts(view, legend);
    return legend;
}

} // namespace EDATool
