// Shapes put together from solid and clear parts.
#include "readers/gerber/Aperture.h"

#include "host/Geometry/Polygon2D.h"
#include "host/Geometry/PolygonClipper.h"
#include "model/Enclosure.h"
#include "model/OutlineIndex.h"
#include "readers/gerber/OutlineSize.h"

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

constexpr std::size_t manyPoints = 128; // from here on indexes pay

// What takes about as long as taking up one vertex in a union.
constexpr std::size_t piecesOfStep = 64; // boxes looked at
constexpr std::size_t pointsOfStep = 4;  // points put into an index
constexpr std::size_t testsOfStep = 512; // points held against edges

bool areBothLarge(const EDAOutline &a, const EDAOutline &b) {
    return std::min(a.getPoints(true).size(), b.getPoints(true).size()) >= manyPoints;
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
    if (!spend(1 + pieces_.size() / piecesOfStep)) return;
    const auto touched =
        std::find_if(pieces_.begin(), pieces_.end(),
                     [this, &outline](const EDAOutline &piece) { return overlap(piece, outline); });
    if (touched != pieces_.end() && merge(*touched, outline)) {
        joinWith(static_cast<std::size_t>(touched - pieces_.begin()));
    } else if (spend(countPoints(outline))) {
        pieces_.push_back(outline);
    }
}

// Whether the boxes of two outlines meet and there is time left to look closer.
bool Aperture::mayMeet(const EDAOutline &piece, const EDAOutline &outline) {
    if (!piece.getBound().overlaps(outline.getBound())) return false;
    const std::size_t size = piece.getPoints(true).size(), otherSize = outline.getPoints(true).size();
    const auto numHoles = static_cast<std::size_t>(piece.numInternalOutlines());
    const std::size_t steps =
        areBothLarge(piece, outline) ? (size + otherSize) / pointsOfStep : size * otherSize / testsOfStep;
    return spend(1 + steps + numHoles / piecesOfStep);
}

bool Aperture::overlap(const EDAOutline &piece, const EDAOutline &outline) {
    if (!mayMeet(piece, outline)) return false;
    if (!areBothLarge(piece, outline)) return piece.overlaps(outline);
    OutlineIndex index, otherIndex;
    return OutlineIndex::overlap(piece, index, outline, otherIndex);
}

bool Aperture::touchesHole(const EDAOutline &piece, const EDAOutline &hole) {
    if (!mayMeet(piece, hole)) return false;
    if (!areBothLarge(piece, hole)) return piece.intersectsHole(hole);
    OutlineIndex index, holeIndex;
    return OutlineIndex::intersectsHole(piece, index, hole, holeIndex);
}

bool Aperture::merge(EDAOutline &piece, const EDAOutline &outline) {
    std::vector<EDAOutline> lost;
    const std::size_t count = countEdges(piece) + countEdges(outline);
    if (!spend(count) || !piece.mergeOutline(outline, lost)) return false;
    std::size_t grown = countPoints(piece);
    for (const EDAOutline &part : lost)
        grown += countPoints(part);
    spendOnGrowth(count, grown);
    return true;
}

// What comes out may have far more points than what went in, where edges cross.
void Aperture::spendOnGrowth(std::size_t before, std::size_t after) {
    if (after > before) spend(after - before);
}

// Of two pieces that meet, the one that stands first takes the other up.
void Aperture::joinWith(std::size_t grown) {
    const auto erase = [this](std::size_t index) {
        pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(index));
    };
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        if (i == grown || !overlap(pieces_[i], pieces_[grown])) continue;
        if (i < grown) {
            if (!merge(pieces_[i], pieces_[grown])) continue;
            erase(grown);
            grown = i;
        } else if (merge(pieces_[grown], pieces_[i])) {
            erase(i--);
        }
    }
}

void Aperture::cutOutline(const EDAOutline &hole) {
    if (!spend(1 + pieces_.size() / piecesOfStep)) return;
    std::vector<EDAOutline> pieces, further;
    for (EDAOutline &piece : pieces_) {
        std::vector<EDAOutline> parts;
        if (!touchesHole(piece, hole) || !cut(piece, hole, parts)) {
            pieces.push_back(std::move(piece));
            continue;
        }
        for (std::size_t i = 0; i < parts.size(); ++i)
            (i == 0 ? pieces : further).push_back(std::move(parts[i]));
    }
    pieces_ = std::move(pieces);
    pieces_.insert(pieces_.end(), std::make_move_iterator(further.begin()),
                   std::make_move_iterator(further.end()));
}

// False, and nothing has changed, for a piece that cannot be cut.
bool Aperture::cut(EDAOutline &piece, const EDAOutline &hole, std::vector<EDAOutline> &parts) {
    const std::size_t count = countEdges(piece) + countEdges(hole);
    if (!spend(count)) return false;
    std::vector<Geometry::Polygon2D> pieceHoles, polygons, resultHoles;
    for (auto internal = piece.beginInternalOutlines(); internal != piece.endInternalOutlines(); ++internal) {
        if (internal->isHole()) pieceHoles.push_back(polygonOf(*internal));
    }
    if (!Geometry::PolygonClipper::clipPolygon(polygonOf(piece), pieceHoles, polygonOf(hole), {},
                                               Geometry::PolygonClipper::Difference, polygons, resultHoles)) {
        return false;
    }
    std::size_t numPoints = 0;
    for (const Geometry::Polygon2D &polygon : polygons) {
        numPoints += polygon.numPoints();
        const EDAOutline shape(polygon, false);
        if (!parts.empty()) {
            parts.push_back(shape);
            continue;
        }
        parts.push_back(std::move(piece)); // keeps its name and all that is not its shape
        parts.front().resetOutline(shape, true);
    }
    spendOnGrowth(count, numPoints);
    std::vector<EDAOutline> holes;
    for (const Geometry::Polygon2D &polygon : resultHoles)
        holes.emplace_back(polygon, true);
    giveEnclosedHoles(parts, holes, [this](const EDAOutline &each) { return spend(each.numPoints()); });
    return true;
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
