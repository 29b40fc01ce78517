// What several topics of the importer share; not for others.
#pragma once

#include "host/Geometry/Bound2D.h"
#include "import/EDAImporter.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace EDA {

// A point in the way outline texts write it: "%lf,%lf" in the C locale. A zero may be written "-0.000000".
void appendOutlinePoint(std::string &text, double x, double z);

// The number that the text of a point's coordinate reads back as: the nearest of six decimals.
double outlineNumber(double value);

// Sets an outline attribute to points, x and z in turns, each an outlineNumber. No points leave it as it is.
void setOutlinePoints(EntityModel::Entity *entity, const EntityModel::AttributePath &path,
                      std::vector<double> numbers, const std::string &units);

// A number as a default output stream of the C locale writes it: six significant digits.
std::string streamNumber(double value);

// The value of an outline attribute: the points' text and the units it is in.
std::string outlineValue(const std::string &points, const std::string &units);

// Has the component anything to be shaped by? A package may have inner outlines alone.
bool hasOutline(const EDAComponent &component);

// Is the outline a circle by the rules of EDAOutline::isCylinder, and one that has a place and a size? Only
// then are centre and diameter written.
bool isRound(const EDAOutline &outline, double &centreX, double &centreY, double &diameter, int minPoints,
             double tolerance);

// What a component library knows a component by: its name, and its part number if it has one.
std::string libraryKey(const EDAComponent &component);

// Does the layer say where in the stack it is?
bool hasTopOffset(const EDABoardLayer &layer);

// One call of importBoard.
struct EDAImporter::Run {
    EDABoard &board;
    Entity *boardEntity;
    Tools::ToolProgress *progress;
    int count = 0;                // Items visited so far, shared by all loops.
    Geometry::Bound2D bound = {}; // Of the board outline as last determined; reads as 0 while there is none.
    double locationX = 0.0;       // Where a new board entity goes: minus its X, and its Z.
    double locationZ = 0.0;

    // Shows that an item was visited; false when the user cancelled.
    bool step();
    void setText(const char *text) const;
};

struct EDAImporter::Shape {
    enum Kind { Rectangle, Cylinder, Polygon };
    Kind kind = Polygon;
    double width = 0.0;
    double depth = 0.0;
    double diameter = 0.0;
    double x =
        0.0; // The point that gives the location: a rectangle's low-x high-y corner, a circle's centre.
    double y = 0.0;
};

// The points of an outline in entity space before the sign of y is flipped.
struct EDAImporter::MappedPoints {
    std::vector<std::pair<double, double>> points;
    Geometry::Bound2D bound; // Reads as 0 when there are no points.

    double centreX() const { return (bound.getXLow() + bound.getXHigh()) * 0.5; }
    double centreY() const { return (bound.getYLow() + bound.getYHigh()) * 0.5; }

    // As an outline's text has them, relative to an origin, with the sign of y flipped.
    std::vector<double> numbers(double originX, double originY) const;
};

} // namespace EDA
