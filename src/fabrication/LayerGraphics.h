// What a layer file draws, freed of the way in which it says it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// All lengths are in millimetres, angles in degrees, counter-clockwise. All numbers are finite.
namespace EDA::Fabrication {

// How far straight edges may lie off the curve that they stand for.
constexpr double chordTolerance = 0.005;

struct Point {
    double x = 0.0;
    double y = 0.0;
};

inline bool operator==(Point const &a, Point const &b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(Point const &a, Point const &b) { return !(a == b); }

enum class Motion { Line, Clockwise, CounterClockwise };

// From wherever the former one ended. An arc that ends where it starts is a full turn.
struct Segment {
    Point end;
    Point centre; // of an arc
    Motion motion = Motion::Line;
};

// A line, or the contour of a region, which is closed whether or not its last end is its start.
struct Path {
    Point start;
    std::vector<Segment> segments;
};

using Ring = std::vector<Point>; // closed without repeating the first point

// A solid with straight edges. The outer ring runs counter-clockwise, holes clockwise; none crosses itself or
// another.
struct Piece {
    Ring outer;
    std::vector<Ring> holes;
};

// The shape of an aperture around its origin, with mirroring, rotation and scaling already in it.
struct Shape {
    enum class Kind {
        Nothing,   // draws nothing
        Circle,    // a full disc: width is the diameter
        Rectangle, // along the axes, centred: width, height
        Obround,   // along the axes, centred: width, height
        Pieces,    // anything else: polygons, regular ones, holes, macros, turned shapes
    };

    Kind kind = Kind::Nothing;
    double width = 0.0;
    double height = 0.0;
    std::vector<Piece> pieces; // of Kind::Pieces: solids that do not overlap each other

    std::string function; // value of the aperture function: "SMDPad"; empty: none
    std::string name;     // of the macro; empty: none
    std::size_t id = 0;   // tells shapes of one file apart; equal ids are equal shapes

    bool isNothing() const { return kind == Kind::Nothing; }
};

// Who takes the objects of a layer, in the order in which they are drawn. Step and repeat, blocks, image and
// object transforms and units are all resolved. Dark objects add material; clear ones remove what stands
// there already.
class LayerSink {
public:
    virtual ~LayerSink();

    virtual void flash(Shape const &shape, Point const &at, bool dark) = 0;
    virtual void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) = 0;
    // One contour.
    virtual void region(Path const &contour, bool dark) = 0;
    // The net and the pin ("U1,3") of the objects that follow; empty: none.
    virtual void setNet(std::string_view net, std::string_view pin);
    // True once there is no use in more objects.
    virtual bool isFull() const;
};

} // namespace EDA::Fabrication
