// Outlines become conductors: repeats, polarity, self-touching outlines.
#include "host/Geometry/Polygon2D.h"
#include "host/Geometry/PolygonClipper.h"
#include "model/Enclosure.h"
#include "readers/gerber/GerberReader.h"

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

std::size_t countPoints(const EDAOutline &outline) {
    std::size_t count = outline.numPoints();
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal) {
        count += countPoints(*internal);
    }
    return count;
}

// Whether it takes no more than a look to see that the edge that arrives at the point is finite: it is straight
// or a circle or has a centre, and its numbers are far from any overflow.
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
        tellOnce(infinityTold_, infinityText);
        return;
    }
    if (!state_.darkPolarity) {
        outline.setHole(true);
        punch(flashedAndStroked_, flashedIndex_, outline);
        punch(regions_, regionIndex_, outline);
    } else if (!outline.hasCutIns()) {
        // A region stays: its end may come twice.
        addConductor(flashed ? std::move(outline) : EDAOutline(outline), flashed);
    } else {
        const auto takeHole = [this](const EDAOutline &hole) { return takePoints(hole.numPoints()); };
        for (EDAOutline &cleaned : cleanedOutlines(outline, takeHole))
            addConductor(std::move(cleaned), flashed);
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
