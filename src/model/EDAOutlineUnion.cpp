// Outlines united with others by polygon clipping.
#include "host/Geometry/PolygonPainter.h"
#include "host/Tools/ToolProgress.h"
#include "model/BoundTree.h"
#include "model/EDAOutline.h"
#include "model/Enclosure.h"
#include "model/GrowingBoundTree.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace EDA {

namespace {

using Contour = Geometry::PolygonPainter::Contour;
using Contours = std::vector<Contour>;

// Pieces and holes of no more than this area, in square units of the file, are the crumbs of rounding.
constexpr double crumbArea = 1e-9;

Contours contourOf(EDAOutline const &outline) {
    Contours contours(1);
    EDAOutline::PointList const &points = outline.getPoints(true);
    contours.front().points.reserve(points.size());
    for (auto const &[x, y] : points)
        contours.front().points.emplace_back(x, y);
    return contours;
}

// Of the points, whatever box the outline remembers.
Geometry::Bound2D boundOf(Contours const &contours) {
    Geometry::Bound2D bound;
    for (Contour const &contour : contours)
        for (auto const &point : contour.points)
            bound.unite(point.x, point.y);
    return bound;
}

// Paints and punches in order. Holes wait until a solid comes that may reach into one of them: each time that
// something is erased all that is painted is clipped, and a shape may be thousands of rings side by side.
class Material {
public:
    void paint(Contours const &contours) {
        Geometry::Bound2D const bound = boundOf(contours);
        bool const reachesIntoHole =
            bounds_.any([&bound](Geometry::Bound2D const &box) { return box.overlaps(bound); },
                        [](std::size_t) { return true; });
        if (reachesIntoHole) eraseHoles();
        painter_.paint(contours);
    }
    void punch(Contours &&contours) {
        bounds_.add(boundOf(contours));
        holes_.push_back(std::move(contours));
    }
    Contours finish() {
        eraseHoles();
        return painter_.finish();
    }

private:
    void eraseHoles() {
        for (Contours const &hole : holes_)
            painter_.erase(hole);
        holes_.clear();
        bounds_ = GrowingBoundTree();
    }

    Geometry::PolygonPainter painter_;
    std::vector<Contours> holes_;
    GrowingBoundTree bounds_; // of the holes
};

// The material of the outline: painted and punched in the order of its internal outlines, so that a hole
// across the edge adds nothing outside, and two holes that overlap leave nothing between them.
Contours materialOf(EDAOutline const &outline) {
    if (outline.numInternalOutlines() == 0) return contourOf(outline);
    Material material;
    material.paint(contourOf(outline));
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        if (internal->isHole()) {
            material.punch(contourOf(*internal));
        } else {
            material.paint(contourOf(*internal));
        }
    }
    return material.finish();
}

// An outline that crosses itself too often for the painter is a conductor all the same.
enum class Painted { Yes, NotFinite, TooManyCrossings };

Painted paint(Geometry::PolygonPainter &painter, EDAOutline const &outline) {
    try {
        painter.paint(materialOf(outline));
        return Painted::Yes;
    } catch (std::length_error const &) {
        return Painted::TooManyCrossings;
    } catch (std::logic_error const &) {
        return Painted::NotFinite;
    }
}

EDAOutline outlineOf(Contour const &contour) {
    EDAOutline outline(contour.hole);
    outline.reservePoints(contour.points.size());
    for (auto const &point : contour.points)
        outline.addPoint(0, point.x, point.y, 0.0);
    return outline;
}

} // namespace

bool EDAOutline::mergeOutline(EDAOutline const &other, std::vector<EDAOutline> &extraOutlines) {
    Geometry::PolygonPainter painter;
    if (paint(painter, *this) != Painted::Yes || paint(painter, other) != Painted::Yes) return false;
    rebuild(painter.finish(), extraOutlines);
    return true;
}

bool EDAOutline::mergeOutlines(std::vector<EDAOutline *> const &others,
                               std::vector<EDAOutline> &extraOutlines, Tools::ToolProgress *progress,
                               std::size_t &count) {
    Geometry::PolygonPainter painter;
    if (paint(painter, *this) != Painted::Yes) return false;
    std::vector<EDAOutline> refused;
    for (EDAOutline const *other : others) {
        if (paint(painter, *other) == Painted::TooManyCrossings) refused.push_back(*other);
        if (!progress) continue;
        progress->setValue(static_cast<int>(++count));
        if (progress->isCancelled()) break;
    }
    rebuild(painter.finish(), extraOutlines);
    extraOutlines.insert(extraOutlines.end(), std::make_move_iterator(refused.begin()),
                         std::make_move_iterator(refused.end()));
    return true;
}

void EDAOutline::rebuild(std::vector<Geometry::Clip::Contour> const &contours,
                         std::vector<EDAOutline> &extraOutlines) {
    clear();
    std::vector<EDAOutline> holes;
    for (Contour const &contour : contours) {
        if (!contour.hole && empty()) {
            // However small: this outline stands for the whole.
            reservePoints(contour.points.size());
            for (auto const &point : contour.points)
                addPoint(0, point.x, point.y, 0.0);
            continue;
        }
        EDAOutline outline = outlineOf(contour);
        if (!(outline.getArea() > crumbArea)) continue;
        (contour.hole ? holes : extraOutlines).push_back(std::move(outline));
    }
    giveHoles(holes, extraOutlines);
}

// Intended: this outline comes first, even where the hole lies in another piece that stands in a hole of it.
// Of further pieces, the first.
void EDAOutline::giveHoles(std::vector<EDAOutline> &holes, std::vector<EDAOutline> &extraOutlines) {
    Enclosure whole(*this);
    std::vector<Enclosure> extras(extraOutlines.begin(), extraOutlines.end());
    std::vector<Geometry::Bound2D> bounds;
    for (EDAOutline const &extra : extraOutlines)
        bounds.push_back(extra.getBound());
    BoundTree const tree(bounds);
    for (EDAOutline &hole : holes) {
        if (extraOutlines.empty() || whole.encloses(hole)) {
            internalOutlines_.push_back(std::move(hole));
            continue;
        }
        Geometry::Bound2D const &inner = hole.getBound();
        std::vector<std::size_t> around;
        tree.any([&inner](Geometry::Bound2D const &box) { return box.contains(inner); },
                 [&around](std::size_t number) {
                     around.push_back(number);
                     return false;
                 });
        std::sort(around.begin(), around.end());
        auto const owner = std::find_if(around.begin(), around.end(),
                                        [&](std::size_t number) { return extras[number].encloses(hole); });
        if (owner != around.end()) extraOutlines[*owner].internalOutlines_.push_back(std::move(hole));
    }
}

} // namespace EDA
