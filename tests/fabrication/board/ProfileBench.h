// Profiles drawn for tests.
#pragma once

#include "fabrication/board/BoardEdge.h"

#include <string>

namespace EDA::Fabrication {

struct ProfileBench {
    ProfileSink sink;
    Notes notes;
    EDAOutline edge;
    Geometry::Bound2D copper;

    ProfileBench &line(double x1, double y1, double x2, double y2) {
        sink.stroke(Shape(), {x1, y1}, {{x2, y2}, {}, Motion::Line}, true);
        return *this;
    }
    ProfileBench &arc(Point from, Point to, Point centre, Motion motion = Motion::CounterClockwise) {
        sink.stroke(Shape(), from, {to, centre, motion}, true);
        return *this;
    }
    ProfileBench &box(double x1, double y1, double x2, double y2) {
        return line(x1, y1, x2, y1).line(x2, y1, x2, y2).line(x2, y2, x1, y2).line(x1, y2, x1, y1);
    }
    ProfileBench &region(std::vector<Point> const &points) {
        Path path{points.front(), {}};
        for (std::size_t i = 1; i < points.size(); ++i)
            path.segments.push_back({points[i], {}, Motion::Line});
        sink.region(path, true);
        return *this;
    }
    ProfileBench &circle(double x, double y, double radius) {
        return arc({x + radius, y}, {x + radius, y}, {x, y});
    }

    bool find(double scale = 1.0) { return findBoardEdge(sink, scale, copper, edge, notes); }
    double area() const { return edge.getArea(); }
    EDAOutline const &cutOut(int number) const { return *std::next(edge.beginInternalOutlines(), number); }
    // How many the note of this text counts; 0 where there is none.
    std::size_t told(std::string const &what) const {
        for (Note const &note : notes.list())
            if (note.what.find(what) != std::string::npos) return note.count;
        return 0;
    }
};

} // namespace EDA::Fabrication
