// Outlines become conductors: repeats, polarity, self-touching outlines.
#include "host/Geometry/Polygon2D.h"
#include "host/Geometry/PolygonClipper.h"
#include "model/Enclosure.h"
#include "readers/gerber/GerberReader.h"
#include "readers/gerber/OutlineSize.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace EDA {

namespace {

Geometry::Polygon2D polygonOf(const EDAOutline &outline) {
    Geometry::Polygon2D polygon;
    for (const auto &[x, y] : outline.getPoints(true))
        polygon.addPoint(x, y, false);
    return polygon;
}

// An outline that touches itself, as regions spell holes, as clean ones with holes. Nothing where it encloses
// nothing. Each copy of a hole is asked for: where contours stand in contours, all of them get those within.
std::vector<EDAOutline> cleanedOutlines(const EDAOutline &outline,
                                        const std::function<bool(const EDAOutline &)> &takeHole) {
    std::vector<Geometry::Polygon2D> holes, polygons, resultHoles;
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        if (internal->isHole()) holes.push_back(polygonOf(*internal));
    }
    const Geometry::Polygon2D polygon = polygonOf(outline);
    // One that crosses itself beyond all measure stays as it is.
    if (!Geometry::PolygonClipper::clipPolygon(polygon, holes, polygon, holes,
                                               Geometry::PolygonClipper::Union, polygons, resultHoles)) {
        return {outline};
    }
    std::vector<EDAOutline> holeOutlines, cleaned;
    for (const Geometry::Polygon2D &hole : resultHoles)
        holeOutlines.emplace_back(hole, true);
    for (const Geometry::Polygon2D &each : polygons) {
        cleaned.emplace_back(each, false);
        cleaned.back().setName(outline.getName());
    }
    giveEnclosedHoles(cleaned, holeOutlines, takeHole);
    return cleaned;
}

bool hasCentre(const EDAOutline::EDAPoint &point) {
    return point.centered || point.isArc() || point.centreX != 0.0 || point.centreY != 0.0;
}

// As if it had been made there: its straight points get no centres that move with them.
EDAOutline movedCopy(const EDAOutline &outline, double dx, double dy) {
    if (std::any_of(outline.beginPoints(), outline.endPoints(), hasCentre)) {
        EDAOutline copy(outline);
        copy.moveBy(dx, dy);
        return copy;
    }
    Geometry::Polygon2D polygon;
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        polygon.addPoint(point->x + dx, point->y + dy, false);
    EDAOutline copy(polygon, outline.isHole());
    copy.setName(outline.getName());
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        copy.addInternalOutline(movedCopy(*internal, dx, dy));
    }
    return copy;
}

std::vector<EDAOutline> movedCopies(const std::vector<EDAOutline> &outlines, double dx, double dy) {
    std::vector<EDAOutline> copies;
    copies.reserve(outlines.size());
    for (const EDAOutline &outline : outlines)
        copies.push_back(movedCopy(outline, dx, dy));
    return copies;
}

// Whether it takes no more than a look to see that the edge that arrives at the point is finite: it is
// straight or a circle or has a centre, and its numbers are far from any overflow.
bool isPlain(const EDAOutline::EDAPoint &point) {
    constexpr double large = 1e100;
    const bool isKnown = point.centered || !point.isArc() || point.angle == 360.0;
    return isKnown && std::abs(point.x) < large && std::abs(point.y) < large &&
           std::abs(point.centreX) < large && std::abs(point.centreY) < large;
}

bool isFinite(const EDAOutline &outline) {
    // Without the list of points, which would be made for this alone.
    if (outline.numInternalOutlines() == 0 &&
        std::all_of(outline.beginPoints(), outline.endPoints(), isPlain)) {
        return true;
    }
    const auto &points = outline.getPoints(true);
    const bool isOwnFinite = std::all_of(points.begin(), points.end(), [](const auto &point) {
        return std::isfinite(point.first) && std::isfinite(point.second);
    });
    return isOwnFinite &&
           std::all_of(outline.beginInternalOutlines(), outline.endInternalOutlines(), isFinite);
}

} // namespace

// Files draw one shape many times, and to resolve its cut-ins is far dearer than to copy what comes of it.
void GerberReader::addShape(const EDAOutline &shape, CleanShape &clean) {
    EDAOutline copy(shape);
    copy.moveBy(currentX_, currentY_);
    if (!state_.darkPolarity || limitReached_ || !resolveCutIns(shape, clean)) {
        addOutline(copy, true);
        return;
    }
    std::vector<EDAOutline> pieces = movedCopies(clean.pieces, currentX_, currentY_);
    addOutline(copy, true, &pieces);
}

// The pieces count as points of the file do, as they are kept. False where there are no cut-ins.
bool GerberReader::resolveCutIns(const EDAOutline &shape, CleanShape &clean) {
    if (clean.isKnown) return clean.hasCutIns;
    clean.isKnown = true;
    shape.setModelDimension(board_.getModelDimension());
    clean.hasCutIns = shape.hasCutIns() && isFinite(shape);
    if (!clean.hasCutIns) return false;
    const auto takeHole = [this](const EDAOutline &hole) { return takePoints(hole.numPoints()); };
    clean.pieces = cleanedOutlines(shape, takeHole);
    for (const EDAOutline &piece : clean.pieces)
        takePoints(piece.numPoints());
    return true;
}

// Each copy of a step and repeat is made at once: there is no block to repeat later.
void GerberReader::addOutline(EDAOutline &outline, bool flashed, std::vector<EDAOutline> *pieces) {
    if (outline.empty()) return;
    const StepAndRepeat &repeat = state_.repeat;
    if (repeat.countX < 2 && repeat.countY < 2) {
        addOutlineInstance(outline, flashed, pieces);
        return;
    }
    if (repeat.countX < 1 || repeat.countY < 1 || limitReached_) return;
    CleanShape clean;
    if (!pieces && state_.darkPolarity && resolveCutIns(outline, clean)) pieces = &clean.pieces;
    for (int ix = 0; ix < repeat.countX && !limitReached_; ++ix) {
        for (int iy = 0; iy < repeat.countY && !limitReached_; ++iy) {
            const double dx = ix * repeat.stepX, dy = iy * repeat.stepY;
            EDAOutline copy(outline);
            copy.moveBy(dx, dy);
            std::vector<EDAOutline> copies;
            if (pieces) copies = movedCopies(*pieces, dx, dy);
            addOutlineInstance(copy, flashed, pieces ? &copies : nullptr);
        }
    }
}

void GerberReader::addOutlineInstance(EDAOutline &outline, bool flashed, std::vector<EDAOutline> *pieces) {
    // Counted before anything is done with it, so that what is clear or vanishes costs no more than the rest.
    if (++numObjects_ > limits_.objects) tellLimit();
    if (limitReached_ || !takePoints(countPoints(outline))) return;
    outline.setModelDimension(board_.getModelDimension());
    if (!isFinite(outline)) {
        tellOnce(infinityTold_, infinityText);
        return;
    }
    if (!state_.darkPolarity) {
        outline.setHole(true);
        punch(flashedAndStroked_, flashedIndex_, outline);
        punch(regions_, regionIndex_, outline);
    } else if (pieces) {
        addPieces(*pieces, countPoints(outline), flashed);
    } else if (!outline.hasCutIns()) {
        // A region stays: its end may come twice.
        addConductor(flashed ? std::move(outline) : EDAOutline(outline), flashed);
    } else {
        std::size_t paid = countPoints(outline);
        const auto takeHole = [&](const EDAOutline &hole) {
            paid += hole.numPoints();
            return takePoints(hole.numPoints());
        };
        std::vector<EDAOutline> cleaned = cleanedOutlines(outline, takeHole);
        addPieces(cleaned, paid, flashed);
    }
}

// So many points were counted for the object already, and the object for its first piece. An outline that
// crosses itself often has far more of both.
void GerberReader::addPieces(std::vector<EDAOutline> &pieces, std::size_t paid, bool flashed) {
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0 && ++numObjects_ > limits_.objects) tellLimit();
        const std::size_t count = countPoints(pieces[i]), free = std::min(count, paid);
        paid -= free;
        if (limitReached_ || !takePoints(count - free)) return;
        addConductor(std::move(pieces[i]), flashed);
    }
}

// Intended: nothing is cut here. What is clear becomes a hole in all that was drawn before and touches it,
// and who uses the outlines resolves the holes.
void GerberReader::punch(EDAOutlineMerge &list, ConductorIndex &index, const EDAOutline &hole) {
    if (flashedIndex_.numTests() + regionIndex_.numTests() > limits_.clearTests) {
        tellOnce(clearLimitTold_, "Clear objects beyond " + std::to_string(limits_.clearTests) +
                                      " tests of what they touch are left out.");
        return;
    }
    // Only now: most layers have nothing that is clear.
    for (std::size_t i = index.size(); i < list.size(); ++i)
        index.add(*(list.begin() + static_cast<std::ptrdiff_t>(i)));
    for (const std::size_t number : index.findTouched(list, hole)) {
        if (!takePoints(countPoints(hole))) return;
        (list.begin() + static_cast<std::ptrdiff_t>(number))->addInternalOutline(hole);
    }
}

void GerberReader::addConductor(EDAOutline &&outline, bool flashed) {
    (flashed ? flashedAndStroked_ : regions_).addOutline(std::move(outline));
}

bool GerberReader::takePoints(std::size_t count) {
    if (count > limits_.points - std::min(numPoints_, limits_.points)) {
        tellLimit();
        return false;
    }
    numPoints_ += count;
    return true;
}

void GerberReader::tellLimit() {
    tellOnce(limitReached_, "This file has more than " + std::to_string(limits_.objects) + " objects or " +
                                std::to_string(limits_.points) + " points; the rest is left out.");
}

void GerberReader::tellOnce(bool &told, const std::string &text) {
    if (!told) addMessage(text);
    told = true;
}

} // namespace EDA
