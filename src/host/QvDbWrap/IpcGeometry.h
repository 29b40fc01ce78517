// The shapes of an IPC-2581 document as polygons in metres.
#pragma once

#include "host/QvDbWrap/Records.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace QvDbWrap {

class IpcXml;
class WrapperLog;

using Ring = std::vector<_mFPOINT>;

// A piece of the plane: the inside of a ring less that of its holes. Shapes that are read have outer rings
// that run anticlockwise and holes that run clockwise.
struct Area {
    Ring outer;
    std::vector<Ring> holes;
};

using Areas = std::vector<Area>;

// The document's Xform and Location in one: the offsets of the Xform and the scale first, then the turn, then
// the mirror (x to -x), then the shift. A mirrored item is so drawn as it would stand unmirrored, and flipped
// over as a whole: its anticlockwise turn goes clockwise as seen from the top.
struct IpcPlacement {
    double xOffset = 0; // metres
    double yOffset = 0;
    double rotation = 0; // degrees anticlockwise
    bool isMirrored = false;
    double scale = 1;
    double x = 0; // metres
    double y = 0;

    _mFPOINT apply(const _mFPOINT &point) const;
    Areas apply(const Areas &areas) const;
};

// The hole that a dictionary's entry has beside its shape, about 0, 0.
struct ShapeDrill {
    double diameter = 0;
    std::optional<bool> isPlated; // where it says so
};

// Reads the elements that draw something. Curves are cut into chords with their vertices on the curve,
// chordsPerTurn to a full circle. A shape with a number that is not finite or beyond maxCoordinate is left
// out and told to the log, as is every element that draws and is not read.
class IpcGeometry {
public:
    static constexpr int chordsPerTurn = 36;
    static constexpr int maxReferenceDepth = 16;       // user shapes that refer to user shapes
    static constexpr double maxCoordinate = 1e3;       // metres
    static constexpr std::size_t maxPoints = 50000000; // of one document, drawn
    static constexpr std::size_t maxCopied = 10000000; // of those, drawn by references and at further places

    explicit IpcGeometry(WrapperLog &log);
    ~IpcGeometry();

    // The factor to metres of a units text (MILLIMETER, MM, MICRON, INCH, MIL, METER...; in any case). An
    // unknown text is told to the log and counts as millimetres.
    double metresPerUnit(const std::string &units);

    // The factor of all lengths read from now on, outside dictionaries.
    void setMetresPerUnit(double metresPerUnit);
    double getMetresPerUnit() const;

    // The open element is a Dictionary...: takes its entries (Standard, User, LineDesc, FillDesc; others hold
    // no shapes and are passed over in silence). Dictionaries may name entries of each other in any order,
    // but all are to be read before the first shape. One without units counts in those set. False when the
    // element is no dictionary.
    bool readDictionary(IpcXml &xml);

    // Whether readShape takes the open element: the standard primitives, the references to dictionaries,
    // Line, Arc, Polyline, Polygon, Contour, Outline, UserSpecial.
    static bool isShape(const IpcXml &xml);

    // The open element's shape, placed by the Xform and Location that it holds itself and by no other.
    // Strokes (Line, Arc, Polyline) become an area a segment, with ends as their LineDesc says; so do
    // outlines of shapes that are hollow or have a LineDesc, and an Outline always: for what it encloses read
    // its Polygon as a ring. Areas of one shape may overlap. Empty when nothing is drawn. Beyond maxPoints of
    // all that was made so far nothing is, which is told once.
    Areas readShape(IpcXml &xml);

    // The shape that a dictionary holds under an id, Standard first. Empty and told to the log when there is
    // none.
    const Areas &findShape(const std::string &id);

    // The hole of the entry; null without one.
    const ShapeDrill *findDrill(const std::string &id) const;

    // The open element is a Polygon, Cutout or anything else that holds PolyBegin, PolyStepSegment and
    // PolyStepCurve: its ring, the closing point not repeated; in the direction of the document. Empty and
    // told to the log when a number of it can't be used.
    Ring readRing(IpcXml &xml);

    // Location, Xform and the attributes of them. The open element is the Location or Xform itself.
    void readLocation(const IpcXml &xml, IpcPlacement &placement) const;
    void readXform(const IpcXml &xml, IpcPlacement &placement) const;

    // A length attribute of the open element in metres.
    double length(const IpcXml &xml, const char *attribute, double fallback = 0) const;

    // A circle about 0, 0 as a ring.
    static Ring circle(double diameter);

    // Whether so many more points in so many areas may be drawn once more, as something else has them
    // already; tells it where not. References count by themselves. An area counts as 12 points at least; a
    // small copy that an element of the document asks for is free, since each takes its own bytes there.
    enum class Copy { OfElement, OfPanel };
    bool takeCopies(std::size_t numPoints, std::size_t numAreas, Copy copy);

    // True when all is finite and within maxCoordinate; else it is told to the log.
    bool isUsable(const Areas &areas);

private:
    class Tables;
    std::unique_ptr<Tables> tables_;
};

// What is left of the areas without the others, in the order of the areas. Areas that nothing is taken from
// stay as they are; so do those that can't be clipped since they or the others are no numbers or cross
// themselves too often.
Areas subtract(const Areas &areas, const Areas &others);

} // namespace QvDbWrap
