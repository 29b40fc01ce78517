// Curves cut into chords.
#pragma once

#include "host/QvDbWrap/IpcGeometry.h"

#include <vector>

namespace QvDbWrap {

// A point and the way to it from the point before. The first of a path has no way to it.
struct PathPoint {
    _mFPOINT at;
    bool isCurve = false;
    bool isClockwise = false;
    _mFPOINT centre; // of the curve
};

using Path = std::vector<PathPoint>;

// The unit vector at `step` of a full turn's chords, exact at right angles. Any step.
_mFPOINT unitVector(int step);

// The way along a circle. Its radius is that of the start; where the end has another one, which rounding in a
// document makes common, the end still stands as it is given.
class IpcCurve {
public:
    // From `start` to the point. Where both are the same point the curve is a full turn.
    IpcCurve(const _mFPOINT &start, const PathPoint &end);
    // A part of a curve by the count of its chords: from the end of chord `first` to that of `last`.
    IpcCurve(const IpcCurve &whole, int first, int last);

    // Whether there is a circle: a centre away from the start.
    bool isRound() const { return radius_ > 0; }
    bool isFullTurn() const { return isFullTurn_; }
    double radius() const { return radius_; }
    bool isClockwise() const { return step_ < 0; }
    const _mFPOINT &centre() const { return centre_; }

    int numChords() const { return numChords_; }
    // The end of a chord; 0 is the start of all.
    _mFPOINT point(int chord) const;
    // The point at the same angle on a circle of another radius.
    _mFPOINT point(int chord, double radius) const;
    // The way of travel there.
    _mFPOINT direction(int chord) const;

private:
    _mFPOINT radial(int chord) const;

    _mFPOINT centre_;
    _mFPOINT arm_; // from the centre to the start, of length 1
    _mFPOINT end_;
    double radius_ = 0;
    double step_ = 0; // radians, anticlockwise
    int numChords_ = 1;
    bool isFullTurn_ = false;
};

// The path's points with its curves cut into chords; a path that ends where it began ends before that.
Ring flatten(const Path &path);

// The ring without points that repeat the one before.
void dropRepeated(Ring &ring);

// Area, positive for an anticlockwise ring.
double signedArea(const Ring &ring);

// Outer rings anticlockwise, holes clockwise. Areas without extent are dropped.
void normalise(Areas &areas);

std::size_t numPoints(const Area &area);
std::size_t numPoints(const Areas &areas);

} // namespace QvDbWrap
