// The one 2-D shape type of the board model: board edges, traces, pads, bodies, keepouts.
#pragma once

#include "Export.h"
#include "host/Geometry/Bound2D.h"
#include "model/OutlinePoints.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Geometry {
class Polygon2D;
namespace Clip {
struct Contour;
}
} // namespace Geometry

namespace Tools {
class ToolProgress;
}

namespace EDA {

// A closed or open outline with straight and arc edges, and the outlines inside it.
//
// An outline stores what the design file said: vertices in drawing order, each of which may
// say that the edge arriving at it is an arc. Everything downstream works on a second form,
// the list of `getPoints(true)`, in which the arcs are cut into straight segments.
//
//     EDAOutline pad;
//     pad.addPoint(0, 5.0, 5.0, 0.0);   // centre
//     pad.addPoint(0, 6.0, 5.0, 360.0); // a full circle of radius 1
//     pad.getPoints(true).size();       // 36
//
// Guarantees and caveats:
// - Coordinates are in board units, angles in degrees, anticlockwise positive.
// - Points and internal outlines are owned by value; a copy is a deep copy.
// - Nothing here fails or throws on bad geometry: bad coordinates give bad numbers. Points
//   that are not finite take no part in bounds, and never equal another point.
// - Two caches (discretised and raw points) and the bound are computed on demand behind
//   `const`; a cache is valid exactly when it is not empty. So two threads must not use one
//   outline at once, not even for reading.
// - An operation that changes points clears both caches and resets the bound, except the
//   following, on whose lasting caches callers rely: `makeClosed`, `removeDegeneratePoints`
//   and `removeCutIns` leave them as they are, and so does a point that goes to an internal
//   outline (for this outline's caches).
// - All comparisons with a tolerance are strict: a difference equal to it is a difference.
class EDAOutline {
public:
    // A list of plain (x, y) points.
    using PointList = std::vector<std::pair<double, double>>;

    // Equality of coordinates, in board units, and of angles, in degrees.
    static EDA_DATA double ptTol;
    // Collinearity: a point counts as on a line up to a distance of this times the square root of
    // the length of the outline's diagonal.
    static EDA_DATA double lineTol;

    using EDAPoint = OutlinePoint;
    using PointIterator = OutlinePoints::Iterator; // gives vertices by value
    using OutlineIterator = std::vector<EDAOutline>::iterator;
    using ConstOutlineIterator = std::vector<EDAOutline>::const_iterator;

    // An empty outline of material.
    EDAOutline() : EDAOutline(false) {}
    // An empty outline; `hole` tells whether it cuts material out of the outline around it.
    explicit EDAOutline(bool hole);
    // One straight point a vertex of the polygon. Repeated vertices are kept.
    EDAOutline(Geometry::Polygon2D const &polygon, bool hole);
    // Copies all but the caches: the copy's are empty and its bound is reset, so that it
    // shows its points as they are even where the original's caches had become outdated.
    EDAOutline(EDAOutline const &other);
    // As the copy: caches empty, bound reset. The source is left without points and internals.
    EDAOutline(EDAOutline &&other) noexcept;
    // Copies everything, the caches and the bound included (of this outline; copied internal
    // outlines start with empty caches). `other` may be one of this outline's internals.
    EDAOutline &operator=(EDAOutline const &other);
    // As the copying assignment, caches included. The source is left without points and internals.
    EDAOutline &operator=(EDAOutline &&other) noexcept;
    virtual ~EDAOutline() = default;

    // Same number of stored points, each pair equal by `EDAPoint::isEqual` at `ptTol`. Internal
    // outlines, name, material, hole flag and z values are not compared.
    bool operator==(EDAOutline const &other) const;
    bool operator!=(EDAOutline const &other) const { return !(*this == other); }

    // Building.

    // Makes room for so many points of this outline.
    void reservePoints(std::size_t count) { points_.reserve(count); }

    // Adds a straight point (angle 0) or the end of an arc of `angle` degrees.
    //
    // `outline` 0 is this outline, n the n-th internal one. Any greater index makes exactly one
    // new internal outline (hole flag set, model dimension unknown) whatever its value, as files
    // number holes from their own count. A negative index drops the point. A point that repeats
    // the target's last one (`EDAPoint::isEqual` at `ptTol`) is dropped. Otherwise the target's
    // caches are cleared; this outline's caches stay when the target is an internal one.
    void addPoint(int outline, double x, double y, double angle);
    // Adds the end of an arc about (`centreX`, `centreY`); otherwise as above.
    void addPoint(int outline, double x, double y, double centreX, double centreY, bool clockwise);
    // Appends a copy, which keeps its own hole flag. Clears no cache.
    void addInternalOutline(EDAOutline const &outline);
    // Removes all points and internal outlines; clears the caches. Hole flag, name, material,
    // z values and model dimension stay.
    void clear();
    // Replaces the points, and `withInternal` also the internal outlines, by those of `other`;
    // clears the caches. Everything else stays. Resetting an outline from itself empties it:
    // this is intended.
    void resetOutline(EDAOutline const &other, bool withInternal);
    // Repeats the first point, with its arc fields, at the end of an open outline of more than
    // two points. Clears no cache: whoever has read `getPoints` keeps seeing the earlier list.
    void makeClosed();

    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }
    void setMaterial(std::string const &material) { material_ = material; }
    std::string const &getMaterial() const { return material_; }
    bool isHole() const { return hole_; }
    void setHole(bool hole) { hole_ = hole; }
    // Stores two heights in board units, in this order.
    void setZDimensions(double zLow, double zHigh);
    void getZDimensions(double &zLow, double &zHigh) const;
    // Size of the whole model in board units, which sets the arc step; 0 or less: unknown, as
    // at first. A change of at most 1e-6 does nothing. Otherwise clears the discretised cache
    // alone (raw cache and bound stay) and passes on to the internal outlines, at any depth.
    void setModelDimension(double dimension) const;
    // Exists for callers that mirror every item; an outline is mirrored by its placement.
    void mirror(double x, double y);

    // Reading.

    // Number of stored points.
    std::size_t numPoints() const { return points_.size(); }
    bool empty() const { return points_.empty(); }
    PointIterator beginPoints() const { return points_.begin(); }
    PointIterator endPoints() const { return points_.end(); }
    int numInternalOutlines() const { return static_cast<int>(internalOutlines_.size()); }
    OutlineIterator beginInternalOutlines() { return internalOutlines_.begin(); }
    OutlineIterator endInternalOutlines() { return internalOutlines_.end(); }
    ConstOutlineIterator beginInternalOutlines() const { return internalOutlines_.begin(); }
    ConstOutlineIterator endInternalOutlines() const { return internalOutlines_.end(); }
    // `discretise`: the outline with its arcs cut into segments, never repeating its first point
    // at its end; once it has an arc, collinear points are gone as well. Otherwise the stored
    // vertices. Both without consecutive repetitions. The reference stays valid until the
    // outline changes; calling again costs nothing.
    PointList const &getPoints(bool discretise) const;
    // Appends `getPoints(true)` to the polygon, then sets its box, and its orientation:
    // anticlockwise, or clockwise for a hole. Internal outlines are left out.
    void convertToPolygon(Geometry::Polygon2D &polygon) const;
    // True when the first and the last of at least two stored points are the same place.
    bool isClosed() const;
    // Bound of `getPoints(true)`, in the reset state when there is no finite point.
    Geometry::Bound2D const &getBound() const;
    // Unites into `bound` this outline's bound and its internal outlines' bounds, one level
    // down, whether holes or not.
    void getOverallBound(Geometry::Bound2D &bound) const;
    // As above, then moves `bound`, with all that it held before.
    void getOverallBound(double dx, double dy, Geometry::Bound2D &bound) const;

    // Queries. All work on `getPoints(true)`; internal outlines count only where stated.

    // Area in square board units, never negative; internal outlines are not subtracted. Fewer
    // than three points give 0.
    double getArea() const;
    // True when at least four stored points fill the bound to within one part in 100,000. The
    // outputs get the bound's limits, also when false, unless there is no bound at all.
    bool isRectangle(double &xLow, double &yLow, double &xHigh, double &yHigh) const;
    // True when there are at least `minPoints` (and 3) points, all close to the circle through
    // three of them, and no internal outlines. `tolerance`, times the radius, bounds the
    // difference of the squared distances. The centre is written once the points are many
    // enough, the diameter when true. Points on a line may give true with an infinite
    // diameter: callers check what they get.
    bool isCylinder(double &centreX, double &centreY, double &diameter, int minPoints,
                    double tolerance) const;
    // True without stored points, or when the first internal outline that is a hole lies apart
    // from this outline, by their bounds. Further holes are not looked at.
    bool isBadOutline() const;
    // True when a vertex of `other` lies in this outline's material: inside it, unless one of its
    // holes encloses all of `other`. Vertices only: two bars that cross as a plus do not meet.
    bool intersectsHole(EDAOutline const &other) const;
    // `intersectsHole` either way round, so symmetric.
    bool overlaps(EDAOutline const &other) const;
    // True when an internal outline that is a hole `intersectsHole(other)`.
    bool overlapsHoles(EDAOutline const &other) const;
    // True when `other` has at least three points and all lie inside this outline's edge. A point on
    // the edge counts as inside on a left or lower edge, as outside on a right or upper one. Holes
    // of this outline play no part.
    bool enclosesOutline(EDAOutline const &other) const;
    // True when an internal outline is a hole.
    bool hasHoles() const;
    // True when a hole sticks out of this outline, or two holes meet (`intersectsHole` of the
    // later with the earlier).
    bool needsHolesCutting() const;
    // True when, the first stored point aside, the outline comes back to a place within `ptTol`.
    // False with fewer than four stored points.
    bool hasCutIns() const;

    // Clean-up and moves.

    // Removes a closing point, repeated points, spikes and collinear points, but no point where an
    // arc arrives or leaves; then does the same for all internal outlines, at any depth. May leave
    // nothing. Clears no cache, and fills the discretised one and the bound from the points before
    // the removal: `getPoints(true)` keeps giving the earlier list. This is intended.
    void removeDegeneratePoints();
    // Cuts out each stretch between two visits of a place and appends it to `cutIns` as a hole,
    // cleaned by `removeDegeneratePoints`; equal neighbours give an empty one. True when `cutIns`
    // is not empty afterwards, whoever filled it; false with fewer than four stored points.
    // Clears no cache.
    bool removeCutIns(std::vector<EDAOutline> &cutIns);
    // Moves points, arc centres and internal outlines, at any depth. Clears the caches.
    void moveBy(double dx, double dy);
    // Turns the stored points about (`x`, `y`) by `angle` degrees, anticlockwise. Arc centres and
    // internal outlines stay where they are: this is intended. Clears the caches.
    void rotate(double angle, double x, double y);
    // `rotate` of one internal outline, counted from 0. Any other index does nothing.
    void rotateInternalOutline(int index, double angle, double x, double y);

    // Merging, by polygon clipping on `getPoints(true)`: what comes out has straight edges only.
    //
    // Material is what the outline's points enclose (even-odd), with its internal outlines punched out or
    // added in their order. Name, material, hole flag, z values and model dimension of this outline stay.

    // Unites this outline with another. The first piece of the result becomes this outline; further pieces of
    // more than 1e-9 square units are appended to `extraOutlines`. A hole of more than that goes to this
    // outline if it encloses it by its vertices, or there are no extra outlines, otherwise to the first extra
    // outline that does, earlier ones of the caller's included, and to none if none does. False, and nothing
    // has changed, when a coordinate is not finite or an outline crosses itself too often.
    bool mergeOutline(EDAOutline const &other, std::vector<EDAOutline> &extraOutlines);
    // The same with many at once. One that is not finite is left out; one that crosses itself too often is
    // an extra outline. After each, when `progress` is given, counts one up in `count`, shows it and asks
    // whether to go on; a cancel leaves the rest out. False, with no change, if this itself can't be clipped.
    bool mergeOutlines(std::vector<EDAOutline *> const &others, std::vector<EDAOutline> &extraOutlines,
                       Tools::ToolProgress *progress, std::size_t &count);

private:
    // Tolerance of every test between bounds, in board units.
    static constexpr double boundTolerance = 1e-9;

    void addPoint(int outline, EDAPoint const &point);
    static void addPoint(PointList &points, std::pair<double, double> const &point);
    void clearCache();
    static void getBound(PointList const &points, Geometry::Bound2D &bound);

    bool expandPoints(PointList &points) const;
    bool discretiseArc(EDAPoint const &from, EDAPoint const &to, PointList &out) const;
    bool discretiseAngledArc(EDAPoint const &from, EDAPoint const &to, PointList &out) const;
    bool discretiseCenteredArc(EDAPoint const &from, EDAPoint const &to, PointList &out) const;
    double getDiscretiseAngle(double radius) const;
    static void cleanupPoints(PointList &points, bool hadArcs);

    static bool pointOnLine(std::pair<double, double> const &point,
                            std::pair<double, double> const &lineStart,
                            std::pair<double, double> const &lineEnd, double scale);
    static bool isDegenerate(OutlinePoints::Place const &previous, OutlinePoints::Place const &current,
                             OutlinePoints::Place const &next, double scale);
    void removeDegeneratePlaces(double scale);
    void removeDegenerateArcs(double scale);
    void rebuild(std::vector<Geometry::Clip::Contour> const &contours, std::vector<EDAOutline> &extraOutlines);
    void giveHoles(std::vector<EDAOutline> &holes, std::vector<EDAOutline> &extraOutlines);
    bool contains(double x, double y) const;
    static bool contains(PointList const &points, double x, double y);

    OutlinePoints points_;
    double zLow_ = 0.0;
    double zHigh_ = 0.0;
    std::vector<EDAOutline> internalOutlines_;
    bool hole_ = false;
    std::string name_;
    std::string material_;
    mutable PointList discretised_;
    mutable PointList raw_;
    mutable Geometry::Bound2D bound_;
    mutable double modelDimension_ = -1.0;
};

} // namespace EDA
