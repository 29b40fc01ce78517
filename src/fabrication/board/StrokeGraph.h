// Closed walks in strokes that meet at their ends.
#pragma once

#include "fabrication/board/BoardEdge.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace EDA::Fabrication {

// Strokes as edges between the places where they end, in any order and direction. Each edge is two
// half-edges, one from either end; those that leave one place are kept in a ring, counter-clockwise by their
// direction.
class StrokeGraph {
public:
    explicit StrokeGraph(std::vector<ProfileSink::Stroke> const &strokes);

    // Joins ends that meet no other, nearest first, no farther than this apart.
    void joinEnds(double gap);

    // The paths around all that hangs together, then those within, until nothing closes. Ends the graph.
    std::vector<Path> takeCycles();

    std::size_t numRepeated() const { return numRepeated_; }
    std::size_t numJoined() const { return numJoined_; }
    // Of the joined ends: the widest gap between two.
    double widestGap() const { return widestGap_; }
    // After the cycles were taken: strokes that are part of none.
    std::size_t numOpen() const { return numOpen_; }

private:
    using Half = std::uint32_t; // twice the edge; and one more from its end
    using Node = std::uint32_t;

    struct Edge {
        Point ends[2];
        Point centre;
        Motion motion;
        Node nodes[2];
        bool isLeft = true; // still part of the graph
        bool isUsed = false;
    };

    struct Start {
        double x; // the least of the edge
        Half half;
        bool isAtNode;
    };

    Node origin(Half half) const { return edges_[half / 2].nodes[half % 2]; }
    void addStroke(ProfileSink::Stroke const &stroke);
    void makeNodes();
    void closeTurns();
    void dropRepeated();
    void countDegrees();
    void makeRings();
    void removeHalf(Half half);
    void removeEdge(std::size_t edge);
    void prune();
    Start startOf(std::size_t edge) const;
    void takeWalk(Half start);
    void splitWalk(std::vector<Half> const &walk);
    bool isStillArc(Edge const &edge) const;
    void addCycle(std::vector<Half> const &walk, std::size_t begin);

    std::vector<Edge> edges_;
    std::vector<Point> places_;        // of the nodes
    std::vector<std::size_t> degrees_; // of the nodes
    std::vector<Half> firsts_;         // of the nodes: the half-edge of the least angle
    std::vector<Half> after_, before_; // in the rings
    std::vector<Half> lonely_;         // to be pruned
    std::vector<std::size_t> visits_;  // of the nodes: where on the walk, from 1
    std::vector<Path> cycles_;
    std::size_t numRepeated_ = 0;
    std::size_t numJoined_ = 0;
    std::size_t numOpen_ = 0;
    double widestGap_ = 0.0;
};

// How far an arc turns from one place to another, in degrees: more than 0 up to 360 counter-clockwise, less
// than 0 down to -360 clockwise, 0 for a line.
double signedSweep(Point const &from, Segment const &segment);

} // namespace EDA::Fabrication
