// Draws a board: edge, keepouts, holes, components with their designators.
#include "BoardScene.h"

#include "Failure.h"
#include "LabelPlace.h"
#include "Printable.h"
#include "SceneFrame.h"

#include <algorithm>
#include <cmath>

namespace EDATool {

namespace {

constexpr Colour paper{250, 251, 252, 255};
constexpr Colour boardFill{47, 110, 84, 255};
constexpr Colour boardEdge{21, 58, 43, 255};
constexpr Colour copper{222, 184, 92, 255};
constexpr Colour bareRim{16, 44, 33, 255};
constexpr Colour partFill{38, 44, 52, 228};
constexpr Colour partEdge{176, 187, 198, 255};
constexpr Colour partText{240, 243, 246, 255};
constexpr Colour mechanicalFill{171, 181, 191, 215};
constexpr Colour mechanicalEdge{238, 241, 244, 255};
constexpr Colour mechanicalText{24, 30, 37, 255};
constexpr Colour unknownMark{255, 255, 255, 255};

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

Style keepoutStyle(const KeepoutLook &look, double u) {
    Style style = filled(faded(look.colour, 34), faded(look.colour, 230), 1.5 * u);
    style.dashed = true;
    style.hatch = faded(look.colour, 150);
    style.hatchSpacing = 9 * u;
    style.hatchAngle = look.hatchAngle;
    return style;
}

Style partStyle(bool isMechanical, double u) {
    return isMechanical ? filled(mechanicalFill, mechanicalEdge, 1.2 * u)
                        : filled(partFill, partEdge, 1.0 * u);
}

Style markStyle(double u) {
    Style style;
    style.stroke = unknownMark;
    style.strokeWidth = 1.6 * u;
    return style;
}

// Copper stands around a plated hole; how wide, no design says.
Style holeStyle(bool isPlated, double diameter, double u) {
    const double ring = isPlated ? std::clamp(0.25 * diameter, 0.9 * u, 3.2 * u) : 1.2 * u;
    return filled(paper, isPlated ? copper : bareRim, ring);
}

template <class Items, class Test> bool anyOf(const Items &items, Test test) {
    return std::any_of(items.begin(), items.end(), test);
}

std::vector<LegendEntry> makeLegend(const BoardView &view, double u) {
    using Swatch = LegendEntry::Swatch;
    std::vector<LegendEntry> legend;
    const auto isMechanical = [](const PartView &part) { return part.isMechanical && !part.body.empty(); };
    const auto isElectrical = [](const PartView &part) { return !part.isMechanical && !part.body.empty(); };
    if (anyOf(view.parts, isElectrical)) legend.push_back({"Component", partStyle(false, u), Swatch::Box});
    if (anyOf(view.parts, isMechanical))
        legend.push_back({"Mechanical part", partStyle(true, u), Swatch::Box});
    if (anyOf(view.parts, [](const PartView &part) { return part.body.empty(); })) {
        Style style = markStyle(u);
        style.stroke = boardEdge;
        legend.push_back({"Part without a shape", style, Swatch::Cross});
    }
    if (anyOf(view.holes, [](const HoleView &hole) { return hole.isPlated; })) {
        legend.push_back({"Plated hole", holeStyle(true, 13 * u, u), Swatch::Circle});
    }
    if (anyOf(view.holes, [](const HoleView &hole) { return !hole.isPlated; })) {
        legend.push_back({"Unplated hole", holeStyle(false, 13 * u, u), Swatch::Circle});
    }
    for (const KeepoutLook &look : keepoutLooks) {
        if (!anyOf(view.keepouts, [&look](const KeepoutView &keepout) { return keepout.kind == look.kind; }))
            continue;
        Style style = keepoutStyle(look, u);
        style.fill = boardFill; // as it looks on the board
        style.hatchSpacing = 6 * u;
        legend.push_back({look.label, style, Swatch::Box});
    }
    return legend;
}

// The part of a box within a limit.
Box common(const Box &box, const Box &limit) {
    Box result;
    if (box.isEmpty()) return result;
    result.low = {std::max(box.low.x, limit.low.x), std::max(box.low.y, limit.low.y)};
    result.high = {std::min(box.high.x, limit.high.x), std::min(box.high.y, limit.high.y)};
    return result;
}

// What lies far from the board is left out, so that one stray part does not shrink the board to a dot.
Box shownBox(const BoardView &view) {
    Box limit = view.edgeBound;
    const double reach = 0.5 * std::max(limit.width(), limit.height());
    if (limit.isEmpty() || reach == 0.0) return boundOf(view);
    limit.low = {limit.low.x - reach, limit.low.y - reach};
    limit.high = {limit.high.x + reach, limit.high.y + reach};
    Box shown = view.edgeBound;
    for (const HoleView &hole : view.holes)
        shown.add(common(boundOf(hole.path), limit));
    for (const KeepoutView &keepout : view.keepouts)
        shown.add(common(boundOf(keepout.path), limit));
    for (const PartView &part : view.parts) {
        Box box = boundOf(part.body);
        box.add(part.at);
        shown.add(common(box, limit));
    }
    return shown;
}

// The largest letters that fit into the body along its longer side.
void drawDesignator(Picture &picture, const std::string &text, const Box &box, const Colour &colour,
                    double u) {
    constexpr double leastSize = 3.0; // pixels; smaller ones are specks
    const bool isUpward = box.height() > 1.25 * box.width();
    const double along = isUpward ? box.height() : box.width();
    const double across = isUpward ? box.width() : box.height();
    TextStyle style;
    style.colour = colour;
    style.anchor = TextStyle::Anchor::Middle;
    style.upward = isUpward;
    style.size = std::min({17 * u, 0.72 * across, 0.92 * along / estimatedTextWidth(text, 1.0)});
    if (style.size < leastSize) return;
    const double drop = 0.36 * style.size; // from the middle of capitals to their base line
    const Point centre = box.centre();
    picture.addText(text, isUpward ? Point{centre.x + drop, centre.y} : Point{centre.x, centre.y + drop},
                    style);
}

void drawMark(Picture &picture, const Point &at, const std::string &text, double u) {
    picture.add(crossPath(at, 6 * u), markStyle(u));
    if (text.empty()) return;
    TextStyle style;
    style.colour = unknownMark;
    style.size = 12 * u;
    picture.addText(text, {at.x + 9 * u, at.y + 4.5 * u}, style);
}

class Painter {
public:
    Painter(Picture &picture, const SceneFrame &frame) : picture_(picture), frame_(frame) {}

    void drawEdge(const BoardView &view) {
        picture_.add(frame_.toPixels.apply(view.edge), filled(boardFill, boardEdge, 2.0 * frame_.unit));
    }

    void drawKeepouts(const BoardView &view) {
        for (const KeepoutView &keepout : view.keepouts) {
            for (const KeepoutLook &look : keepoutLooks) {
                if (look.kind != keepout.kind) continue;
                picture_.add(frame_.toPixels.apply(keepout.path), keepoutStyle(look, frame_.unit));
            }
        }
    }

    // Once more above the keepouts: what is kept out of a cut-out is nobody's question.
    void drawCutOuts(const BoardView &view) {
        for (const Path &cutOut : view.cutOuts) {
            picture_.add(frame_.toPixels.apply(cutOut), filled(paper, boardEdge, 2.0 * frame_.unit));
        }
    }

    void drawHoles(const BoardView &view) {
        for (const HoleView &hole : view.holes) {
            Path path = frame_.toPixels.apply(hole.path);
            const Box box = boundOf(path);
            picture_.add(std::move(path),
                         holeStyle(hole.isPlated, std::min(box.width(), box.height()), frame_.unit));
        }
    }

    // Large parts first, so that what stands on or in them is seen.
    void drawParts(const BoardView &view) {
        struct Placed {
            const PartView *part;
            Path body;
            Box box;
        };
        std::vector<Placed> placed;
        for (const PartView &part : view.parts) {
            Path body = frame_.toPixels.apply(part.body);
            const Box box = boundOf(body);
            placed.push_back({&part, std::move(body), box});
        }
        std::stable_sort(placed.begin(), placed.end(), [](const Placed &a, const Placed &b) {
            return a.box.width() * a.box.height() > b.box.width() * b.box.height();
        });
        for (Placed &item : placed)
            drawPart(*item.part, std::move(item.body), item.box);
    }

private:
    void drawPart(const PartView &part, Path body, const Box &box) {
        const std::string text = shortened(part.designator, 24);
        if (body.empty()) {
            const Point at = frame_.toPixels.apply(part.at);
            if (std::isfinite(at.x) && std::isfinite(at.y)) drawMark(picture_, at, text, frame_.unit);
            return;
        }
        const Box room = text.empty() ? box : roomForLabel(body);
        picture_.add(std::move(body), partStyle(part.isMechanical, frame_.unit));
        if (text.empty()) return;
        drawDesignator(picture_, text, room, part.isMechanical ? mechanicalText : partText, frame_.unit);
    }

    Picture &picture_;
    const SceneFrame &frame_;
};

} // namespace

Picture drawBoard(const BoardView &view, int width) {
    const Box shown = shownBox(view);
    if (shown.isEmpty() || !std::isfinite(shown.width()) || !std::isfinite(shown.height())) {
        throw DesignFailure("the design has nothing to draw");
    }
    const std::vector<LegendEntry> legend = makeLegend(view, makeFrame(shown, view.side, width, {}).unit);
    const SceneFrame frame = makeFrame(shown, view.side, width, legend);
    Picture picture(frame.width, frame.height, paper);
    Painter painter(picture, frame);
    painter.drawEdge(view);
    painter.drawKeepouts(view);
    painter.drawCutOuts(view);
    painter.drawHoles(view);
    painter.drawParts(view);
    Box clip = frame.drawing; // with room for lines that lie on its border
    clip.low = {clip.low.x - 4 * frame.unit, clip.low.y - 4 * frame.unit};
    clip.high = {clip.high.x + 4 * frame.unit, clip.high.y + 4 * frame.unit};
    picture.clipUntilHere(clip);
    drawFrame(picture, frame, view, legend);
    return picture;
}

} // namespace EDATool
