// Outlines become conductors: repeats, polarity, self-touching outlines.
#include "host/Geometry/Polygon2D.h"
#include "host/Geometry/PolygonClipper.h"
#include "model/Enclosure.h"
#include "readers/gerber/GerberReader.h"

#include <algorithm>
#include <cmath>

namespace EDA {

namespace {

constexpr double boundTolerance = Geometry::Bound2D::defaultTolerance;

Geometry::Polygon2D polygonOf(const EDAOutline &outline) {
    Geometry::Polygon2D polygon;
    for (const auto &[x, y] : outline.getPoints(true))
        polygon.addPoint(x, y, false);
    return polygon;
}

// An outline that touches itself, as regions spell holes, as clean ones with holes. Nothing where it encloses
// nothing.
std::vector<EDAOutline> cleanedOutlines(const EDAOutline &outline) {
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
        EDAOutline piece(each, false);
        piece.setName(outline.getName());
        Enclosure enclosure(piece);
        std::vector<const EDAOutline *> enclosed;
        for (const EDAOutline &hole : holeOutlines) {
            if (enclosure.encloses(hole)) enclosed.push_back(&hole);
        }
        for (const EDAOutline *hole : enclosed)
            piece.addInternalOutline(*hole);
        cleaned.push_back(std::move(piece));
    }
    return cleaned;
}

std::size_t countPoints(const EDAOutline &outline) {
    std::size_t count = outline.numPoints();
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        count += countPoints(*internal);
    }
    return count;
}

bool isFinite(const EDAOutline &outline) {
    const auto &points = outline.getPoints(true);
    const bool isOwnFinite = std::all_of(points.begin(), points.end(), [](const auto &point) {
        return std::isfinite(point.first) && std::isfinite(point.second);
    });
    return isOwnFinite &&
           std::all_of(outline.beginInternalOutlines(), outline.endInternalOutlines(), isFinite);
}

} // namespace

// Each copy of a step and repeat is made at once: there is no block to repeat later.
void GerberReader::addOutline(EDAOutline &outline, bool flashed) {
    if (outline.empty()) return;
    const StepAndRepeat &repeat = state_.repeat;
    if (repeat.countX < 2 && repeat.countY < 2) {
        addOutlineInstance(outline, flashed);
        return;
    }
    for (int ix = 0; ix < repeat.countX; ++ix) {
        for (int iy = 0; iy < repeat.countY && !limitReached_; ++iy) {
            EDAOutline copy(outline);
            copy.moveBy(ix * repeat.stepX, iy * repeat.stepY);
            addOutlineInstance(copy, flashed);
        }
    }
}

void GerberReader::addOutlineInstance(EDAOutline &outline, bool flashed) {
    // Counted before anything is done with it, so that what is clear or vanishes costs no more than the rest.
    if (++numObjects_ > limits_.objects) tellLimit();
    if (limitReached_ || !takePoints(countPoints(outline))) return;
    outline.setModelDimension(board_.getModelDimension());
    if (!isFinite(outline)) {
        tellOnce(infinityTold_, "Objects with coordinates beyond all numbers are left out.");
        return;
    }
    if (!state_.darkPolarity) {
        outline.setHole(true);
        punch(flashedAndStroked_, flashedIndex_, outline);
        punch(regions_, regionIndex_, outline);
    } else if (!outline.hasCutIns()) {
        addConductor(outline, flashed);
    } else {
        for (const EDAOutline &cleaned : cleanedOutlines(outline))
            addConductor(cleaned, flashed);
    }
}

// Intended: nothing is cut here. What is clear becomes a hole in all that was drawn before and touches it,
// and who uses the outlines resolves the holes.
void GerberReader::punch(EDAOutlineMerge &list, const ConductorIndex &index, const EDAOutline &hole) {
    index.search(hole.getBound(), boundTolerance, [&](std::size_t number) {
        EDAOutline &outline = *(list.begin() + static_cast<std::ptrdiff_t>(number));
        if (outline.intersectsHole(hole) && takePoints(countPoints(hole))) outline.addInternalOutline(hole);
    });
}

void GerberReader::addConductor(const EDAOutline &outline, bool flashed) {
    (flashed ? flashedAndStroked_ : regions_).addOutline(outline);
    (flashed ? flashedIndex_ : regionIndex_).add(outline.getBound());
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
