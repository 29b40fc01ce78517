// Outlines united with others by polygon clipping.
#include "host/Geometry/PolygonPainter.h"
#include "host/Tools/ToolProgress.h"
#include "model/EDAOutline.h"
#include "model/Enclosure.h"

#include <algorithm>
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

// The material of the outline: painted and punched in the order of its internal outlines, so that a hole
// across the edge adds nothing outside, and two holes that overlap leave nothing between them.
Contours materialOf(EDAOutline const &outline) {
    if (outline.numInternalOutlines() == 0) return contourOf(outline);
    Geometry::PolygonPainter painter;
    painter.paint(contourOf(outline));
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        if (internal->isHole()) {
            painter.erase(contourOf(*internal));
        } else {
            painter.paint(contourOf(*internal));
        }
    }
    return painter.finish();
}

// False for an outline that cannot be clipped: one with a coordinate that is not finite, or that crosses
// itself beyond all measure.
bool paint(Geometry::PolygonPainter &painter, EDAOutline const &outline) {
    try {
        painter.paint(materialOf(outline));
        return true;
    } catch (std::logic_error const &) {
        return false;
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
    if (!paint(painter, *this) || !paint(painter, other)) return false;
    rebuild(painter.finish(), extraOutlines);
    return true;
}

bool EDAOutline::mergeOutlines(std::vector<EDAOutline *> const &others,
                               std::vector<EDAOutline> &extraOutlines, Tools::ToolProgress *progress,
                               std::size_t &count) {
    Geometry::PolygonPainter painter;
    if (!paint(painter, *this)) return false;
    for (EDAOutline const *other : others) {
        paint(painter, *other);
        if (!progress) continue;
        progress->setValue(static_cast<int>(++count));
        if (progress->isCancelled()) break;
    }
    rebuild(painter.finish(), extraOutlines);
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
// Most tests are of boxes alone, so that all holes may be held against all pieces.
void EDAOutline::giveHoles(std::vector<EDAOutline> &holes, std::vector<EDAOutline> &extraOutlines) {
    Enclosure whole(*this);
    std::vector<Enclosure> extras(extraOutlines.begin(), extraOutlines.end());
    for (EDAOutline &hole : holes) {
        if (extraOutlines.empty() || whole.encloses(hole)) {
            internalOutlines_.push_back(std::move(hole));
            continue;
        }
        auto const owner = std::find_if(extras.begin(), extras.end(),
                                        [&hole](Enclosure &extra) { return extra.encloses(hole); });
        if (owner == extras.end()) continue;
        extraOutlines[static_cast<std::size_t>(owner - extras.begin())].internalOutlines_.push_back(
            std::move(hole));
    }
}

} // namespace EDA
