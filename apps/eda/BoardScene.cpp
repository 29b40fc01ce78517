// Draws a board: edge, keepouts, holes, components with their designators.
#include "BoardScene.h"

#include "Failure.h"
#include "LabelPlace.h"
#include "Printable.h"
#include "SceneFrame.h"
#include "SceneStyles.h"

#include <algorithm>
#include <cmath>

namespace EDATool {

namespace {

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
    for (const Path &bump : view.bumps)
        shown.add(common(boundOf(bump), limit));
    for (const WireView &wire : view.wires)
        shown.add(common(boundOf(wire.path), limit));
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

void drawMark(Picture &picture, const Point &at, const std::string &text, const Style &style, double u) {
    picture.add(crossPath(at, 6 * u), style);
    if (text.empty()) return;
    TextStyle label;
    label.colour = style.stroke;
    label.size = 12 * u;
    picture.addText(text, {at.x + 9 * u, at.y + 4.5 * u}, label);
}

class Painter {
public:
    Painter(Picture &picture, const SceneFrame &frame, const SceneStyles &styles)
        : picture_(picture), frame_(frame), styles_(styles) {}

    void drawEdge(const BoardView &view) { picture_.add(frame_.toPixels.apply(view.edge), styles_.board()); }

    void drawCopper(const BoardView &view) {
        for (const Path &path : view.copper)
            picture_.add(frame_.toPixels.apply(path), styles_.copperOf(view.layerNumber));
    }

    void drawKeepouts(const BoardView &view) {
        if (!styles_.showsKeepouts()) return;
        for (const KeepoutView &keepout : view.keepouts)
            picture_.add(frame_.toPixels.apply(keepout.path), styles_.keepout(keepout.kind));
    }

    // Once more above the keepouts: what is kept out of a cut-out is nobody's question.
    void drawCutOuts(const BoardView &view) {
        for (const Path &cutOut : view.cutOuts)
            picture_.add(frame_.toPixels.apply(cutOut), styles_.cutOut());
    }

    void drawHoles(const BoardView &view) {
        for (const HoleView &hole : view.holes) {
            Path path = frame_.toPixels.apply(hole.path);
            const Box box = boundOf(path);
            picture_.add(std::move(path), styles_.hole(hole.isPlated, std::min(box.width(), box.height())));
        }
    }

    // Large parts first, so that what stands on or in them is seen.
    void drawParts(const BoardView &view) {
        struct Placed {
            const PartView *part;
            Path body;
            Box box;
            double size;
        };
        std::vector<Placed> placed;
        placed.reserve(view.parts.size());
        for (const PartView &part : view.parts) {
            Path body = frame_.toPixels.apply(part.body);
            const Box box = boundOf(body);
            placed.push_back({&part, std::move(body), box, box.width() * box.height()});
        }
        std::stable_sort(placed.begin(), placed.end(),
                         [](const Placed &a, const Placed &b) { return a.size > b.size; });
        for (Placed &item : placed)
            drawPart(*item.part, std::move(item.body), item.box);
    }

    void drawBumpsAndWires(const BoardView &view) {
        for (const Path &bump : view.bumps)
            picture_.add(frame_.toPixels.apply(bump), styles_.bump());
        for (const WireView &wire : view.wires)
            picture_.add(frame_.toPixels.apply(wire.path), styles_.wire(wire.diameter * frame_.scale));
    }

private:
    void drawPart(const PartView &part, Path body, const Box &box) {
        const std::string text = shortened(part.designator, 24);
        if (body.empty()) {
            const Point at = frame_.toPixels.apply(part.at);
            if (std::isfinite(at.x) && std::isfinite(at.y))
                drawMark(picture_, at, text, styles_.mark(), frame_.unit);
            return;
        }
        const bool isInside = !text.empty() && part.labelPlace == LabelPlace::Inside;
        const Box room = isInside ? roomForLabel(body) : box;
        picture_.add(std::move(body), styles_.part(part));
        if (isInside) drawDesignator(picture_, text, room, styles_.label(part), frame_.unit);
        if (!text.empty() && part.labelPlace == LabelPlace::Above) drawAbove(text, box);
    }

    void drawAbove(const std::string &text, const Box &box) {
        TextStyle style;
        style.colour = styles_.mark().stroke;
        style.anchor = TextStyle::Anchor::Middle;
        style.size = 14 * frame_.unit;
        picture_.addText(text, {box.centre().x, box.low.y - 4 * frame_.unit}, style);
    }

    Picture &picture_;
    const SceneFrame &frame_;
    const SceneStyles &styles_;
};

} // namespace

Picture drawBoard(const BoardView &view, int width, Colouring colouring) {
    const Box shown = shownBox(view);
    if (shown.isEmpty() || !std::isfinite(shown.width()) || !std::isfinite(shown.height())) {
        throw DesignFailure("the design has nothing to draw");
    }
    const SceneStyles styles(view, colouring, sceneUnit(width));
    const std::vector<LegendEntry> legend = styles.legend(view);
    const SceneFrame frame = makeFrame(shown, view.side, width, legend, styles.showsPower());
    Picture picture(frame.width, frame.height, SceneStyles::paper());
    Painter painter(picture, frame, styles);
    painter.drawEdge(view);
    painter.drawCopper(view);
    painter.drawKeepouts(view);
    painter.drawCutOuts(view);
    painter.drawHoles(view);
    painter.drawParts(view);
    painter.drawBumpsAndWires(view);
    Box clip = frame.drawing; // with room for lines that lie on its border
    clip.low = {clip.low.x - 4 * frame.unit, clip.low.y - 4 * frame.unit};
    clip.high = {clip.high.x + 4 * frame.unit, clip.high.y + 4 * frame.unit};
    picture.clipUntilHere(clip);
    drawFrame(picture, frame, view, legend, styles);
    return picture;
}

} // namespace EDATool
