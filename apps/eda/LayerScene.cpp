// Pictures of one layer of a design.
#include "LayerScene.h"

#include "BoardScene.h"
#include "Failure.h"
#include "host/EntityModel/Units.h"
#include "host/Geometry/PolygonPainter.h"
#include "LayerNames.h"
#include "ModelCopper.h"
#include "OutlinePath.h"
#include "Printable.h"

#include <cmath>
#include <stdexcept>

namespace EDATool {

namespace {

using Contour = Geometry::PolygonPainter::Contour;

Contour contourOf(const EDA::EDAOutline &outline) {
    Contour contour;
    for (const auto &[x, y] : outline.getPoints(true))
        contour.points.emplace_back(x, y);
    return contour;
}

double areaOf(const Contour &contour) {
    double area = 0.0;
    const std::size_t count = contour.points.size();
    for (std::size_t index = 0; index < count; ++index) { // small numbers keep their digits
        const auto &origin = contour.points.front();
        const auto &a = contour.points[index];
        const auto &b = contour.points[(index + 1) % count];
        area += 0.5 * ((a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y));
    }
    return std::fabs(area);
}

Path pathOf(const std::vector<Contour> &contours) {
    Path path;
    for (const Contour &contour : contours) {
        for (std::size_t index = 0; index < contour.points.size(); ++index) {
            const Point to{contour.points[index].x, contour.points[index].y};
            path.push_back({index == 0 ? PathStep::Kind::Move : PathStep::Kind::Line, to, {}, 0.0});
        }
        const Point start{contour.points.front().x, contour.points.front().y};
        path.push_back({PathStep::Kind::Close, start, {}, 0.0});
    }
    return path;
}

// In their order, so that what is painted later wins. `plain` becomes the area that is left where no hole
// meets another or the edge.
std::vector<Contour> painted(const EDA::EDAOutline &outline, double &plain) {
    Geometry::PolygonPainter painter;
    painter.paint({contourOf(outline)});
    plain = areaOf(contourOf(outline));
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner) {
        const Contour contour = contourOf(*inner);
        plain -= areaOf(contour);
        if (inner->isHole())
            painter.erase({contour});
        else
            painter.paint({contour});
    }
    return painter.finish();
}

double areaOf(const std::vector<Contour> &contours) {
    double area = 0.0;
    for (const Contour &contour : contours)
        area += contour.hole ? -areaOf(contour) : areaOf(contour);
    return area;
}

double inchesPer(const std::string &unit) {
    using namespace EntityModel;
    const Quantity &length = *Units::findQuantity("Length");
    const Unit *const found = unit.empty() ? nullptr : Units::find(length, unit);
    if (found == nullptr) throw DesignFailure("the design names no units, so --dpi says nothing");
    return Units::convert(1.0, *found, *Units::find(length, "in"));
}

int pixels(double length, double perLength) {
    const double count = std::ceil(length * perLength - 1e-6);
    if (!(count >= 1.0) || count > PictureLimits::greatestBare) {
        throw UsageFailure("--window and --dpi make a picture of " + shortNumber(count) +
                           " pixels along one side; from 1 to " +
                           std::to_string(PictureLimits::greatestBare) + " can be drawn");
    }
    return static_cast<int>(count);
}

std::vector<const EDA::EDABoardLayer *> conductorsOf(const EDA::EDABoard &board) {
    std::vector<const EDA::EDABoardLayer *> layers;
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        if (layer->isConductor()) layers.push_back(&*layer);
    }
    return layers;
}

// On an outer layer the parts of its side show what the copper is for. All is seen from the top.
void showPartsOf(BoardView sideView, BoardView &view) {
    view.parts = std::move(sideView.parts);
    view.power = sideView.power;
}

bool isOuter(std::size_t index, std::size_t count) { return index == 0 || index + 1 == count; }

Side sideOfOuter(std::size_t index) { return index == 0 ? Side::Top : Side::Bottom; }

// Routes segment by segment with round ends.
void addTrace(const EDA::EDATrace &trace, BoardView &view) {
    if (!trace.isDefinedAsRoute()) return view.copper.push_back(copperPath(trace.getOutline()));
    const EDA::EDAOutline::PointList &points = trace.getOutline().getPoints(true);
    for (std::size_t index = 1; index < points.size(); ++index) {
        const Point from{points[index - 1].first, points[index - 1].second};
        const Point to{points[index].first, points[index].second};
        Path path = segmentPath(from, to, trace.getRouteWidth());
        if (!path.empty()) view.copper.push_back(std::move(path));
    }
}

void boundByCopper(BoardView &view) {
    if (!view.edgeBound.isEmpty()) return;
    for (const Path &path : view.copper)
        view.edgeBound.add(boundOf(path));
}

} // namespace

std::vector<std::string> layerNamesOf(const EDA::EDABoard &board) {
    std::vector<std::string> names;
    for (const EDA::EDABoardLayer *layer : conductorsOf(board))
        names.push_back(layer->getName());
    return names;
}

Path copperPath(const EDA::EDAOutline &outline) {
    if (outline.numInternalOutlines() == 0) return pathOf(outline);
    try {
        double plain = 0.0;
        const std::vector<Contour> contours = painted(outline, plain);
        const double area = areaOf(contours);
        // Apart from each other and inside, the holes can keep their arcs.
        if (std::fabs(area - plain) <= 1e-9 * std::fabs(plain)) return pathWithHoles(outline);
        return pathOf(contours);
    } catch (const std::logic_error &) { // too many crossings, or numbers that are not finite
        return pathWithHoles(outline);
    }
}

BoardView viewOfLayer(const Design &design, const std::string &layer) {
    const EDA::EDABoard &board = design.board();
    const std::vector<const EDA::EDABoardLayer *> layers = conductorsOf(board);
    const std::size_t index = findLayer(layerNamesOf(board), design.layerFiles, layer, "--layer");
    BoardView view = viewOfBoard(board, Side::Top, index + 1);
    const EDA::EDABoardLayer &shown = *layers[index];
    view.layer = shown.getName();
    view.copper.reserve(shown.numTraces());
    for (auto trace = shown.beginTraces(); trace != shown.endTraces(); ++trace)
        addTrace(*trace, view);
    for (auto net = shown.beginNets(); net != shown.endNets(); ++net) {
        for (auto trace = net->beginTraces(); trace != net->endTraces(); ++trace)
            addTrace(*trace, view);
    }
    if (isOuter(index, layers.size())) showPartsOf(viewOfBoard(board, sideOfOuter(index)), view);
    boundByCopper(view);
    return view;
}

BoardView viewOfModelLayer(const EntityModel::Entity &board, const std::string &layer) {
    const std::vector<std::string> names = namesOf(conductorLayers(board));
    const std::size_t index = findLayer(names, {}, layer, "--layer");
    BoardView view = viewOfModel(board, Side::Top, index + 1);
    view.layer = names[index];
    if (isOuter(index, names.size())) showPartsOf(viewOfModel(board, sideOfOuter(index)), view);
    boundByCopper(view);
    return view;
}

Picture drawBare(const BoardView &view, const BareWindow &window) {
    Box box = window.box;
    if (box.isEmpty()) {
        for (const Path &path : view.copper)
            box.add(boundOf(path));
    }
    if (box.isEmpty()) throw DesignFailure("the layer " + inQuotes(view.layer) + " is empty");
    const double scale = window.dpi * inchesPer(view.unit);
    Picture picture(pixels(box.width(), scale), pixels(box.height(), scale), {255, 255, 255, 255});
    picture.isSharp = true;
    Style black;
    black.fill = {0, 0, 0, 255};
    const Similarity toPixels{scale, 0.0, 0.0, -scale, -scale * box.low.x, scale * box.high.y};
    for (const Path &path : view.copper)
        picture.add(toPixels.apply(path), black);
    return picture;
}

} // namespace EDATool
