// Shapes put together from solid and clear parts.
#include "readers/gerber/Aperture.h"

#include "host/Geometry/Polygon2D.h"
#include "host/Geometry/PolygonClipper.h"

#include <algorithm>
#include <utility>

namespace EDA {

namespace {

Geometry::Polygon2D polygonOf(const EDAOutline &outline) {
    Geometry::Polygon2D polygon;
    for (const auto &[x, y] : outline.getPoints(true))
        polygon.addPoint(x, y, false);
    return polygon;
}

// A solid of the same points without internal outlines.
EDAOutline pointsOf(const EDAOutline &outline) {
    EDAOutline points(false);
    points.resetOutline(outline, false);
    return points;
}

} // namespace

void Aperture::addOutline(const EDAOutline &outline) {
    if (outline.isHole()) {
        cutOutline(outline);
        return;
    }
    if (outline.numInternalOutlines() == 0) {
        addSolid(outline);
        return;
    }
    EDAOutline solid = pointsOf(outline);
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        if (internal->isHole()) solid.addInternalOutline(*internal);
    }
    addSolid(solid);
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        if (!internal->isHole()) addSolid(*internal);
    }
}

void Aperture::addSolid(const EDAOutline &outline) {
    const auto touched = std::find_if(pieces_.begin(), pieces_.end(), [&outline](const EDAOutline &piece) {
        return piece.overlaps(outline);
    });
    std::vector<EDAOutline> lost;
    if (touched != pieces_.end() && touched->mergeOutline(outline, lost)) {
        joinWith(static_cast<std::size_t>(touched - pieces_.begin()));
    } else {
        pieces_.push_back(outline);
    }
}

// Of two pieces that meet, the one that stands first takes the other up.
void Aperture::joinWith(std::size_t grown) {
    std::vector<EDAOutline> lost;
    const auto erase = [this](std::size_t index) {
        pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(index));
    };
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        if (i == grown || !pieces_[i].overlaps(pieces_[grown])) continue;
        if (i < grown) {
            if (!pieces_[i].mergeOutline(pieces_[grown], lost)) continue;
            erase(grown);
            grown = i;
        } else if (pieces_[grown].mergeOutline(pieces_[i], lost)) {
            erase(i--);
        }
    }
}

void Aperture::cutOutline(const EDAOutline &hole) {
    std::vector<EDAOutline> pieces, further;
    for (EDAOutline &piece : pieces_) {
        if (!piece.intersectsHole(hole)) {
            pieces.push_back(std::move(piece));
            continue;
        }
        std::vector<Geometry::Polygon2D> pieceHoles, polygons, resultHoles;
        for (auto internal = piece.beginInternalOutlines(); internal != piece.endInternalOutlines();
             ++internal) {
            if (internal->isHole()) pieceHoles.push_back(polygonOf(*internal));
        }
        if (!Geometry::PolygonClipper::clipPolygon(polygonOf(piece), pieceHoles, polygonOf(hole), {},
                                                   Geometry::PolygonClipper::Difference, polygons,
                                                   resultHoles)) {
            pieces.push_back(std::move(piece)); // cannot be cut
            continue;
        }
        if (polygons.empty()) continue;
        std::vector<EDAOutline> holes;
        for (const Geometry::Polygon2D &polygon : resultHoles)
            holes.emplace_back(polygon, true);
        piece.clear();
        for (std::size_t i = 0; i < polygons.size(); ++i) {
            const EDAOutline shape(polygons[i], false);
            EDAOutline cut = i == 0 ? std::move(piece) : shape;
            if (i == 0) cut.resetOutline(shape, true);
            for (const EDAOutline &each : holes) {
                if (cut.enclosesOutline(each)) cut.addInternalOutline(each);
            }
            (i == 0 ? pieces : further).push_back(std::move(cut));
        }
    }
    pieces_ = std::move(pieces);
    pieces_.insert(pieces_.end(), std::make_move_iterator(further.begin()),
                   std::make_move_iterator(further.end()));
}

void Aperture::combineInto(EDAOutline &result) const {
    if (pieces_.empty()) return;
    result.resetOutline(pieces_.front(), true);
    for (std::size_t i = 1; i < pieces_.size(); ++i) {
        result.addInternalOutline(pointsOf(pieces_[i]));
        for (auto internal = pieces_[i].beginInternalOutlines(); internal != pieces_[i].endInternalOutlines();
             ++internal) {
            result.addInternalOutline(*internal);
        }
    }
}

} // namespace EDA
