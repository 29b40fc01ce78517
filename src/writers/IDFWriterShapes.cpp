// The outlines of an IDF file: board edge, keepouts, and the rows of any outline.
#include "writers/IDFWriter.h"

#include "writers/IDFRowsDetail.h"
#include "writers/IDFWriterDetail.h"

#include <cmath>

namespace EDA {

namespace {

using Point = EDAOutline::EDAPoint;

// A point stays one, whatever the edge that arrives at it: an arc about a centre has the angle 0 here.
void addPoint(int loop, Point const &point, IDFRows &rows) {
    rows.add(loop).add(' ').add(point.x).add(' ').add(point.y).add(' ').add(point.angle).endRow();
}

bool isOpen(Point const &first, Point const &last) {
    return std::fabs(first.x - last.x) >= EDAOutline::ptTol ||
           std::fabs(first.y - last.y) >= EDAOutline::ptTol;
}

// The stored points, so that arcs stay arcs. Two points are a circle, which needs no closing row.
void addLoop(int loop, EDAOutline const &outline, IDFRows &rows) {
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        addPoint(loop, *point, rows);
    if (outline.numPoints() <= 2) return;
    Point const &first = *outline.beginPoints();
    if (isOpen(first, *(outline.endPoints() - 1))) addPoint(loop, first, rows);
}

} // namespace

void addOutline(EDAOutline const &outline, IDFRows &rows) {
    int loop = 0;
    addLoop(loop, outline, rows);
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        addLoop(++loop, *inner, rows);
}

void IDFWriter::writeOutline(EDAOutline const &outline, FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    addOutline(outline, rows);
}

void IDFWriter::writeBoardOutline(EDABoard const &board, FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    rows.add(".BOARD_OUTLINE  UNOWNED").endRow(); // two blanks, as readers of these files know it
    rows.add(board.getThickness()).endRow();
    rows.flush();
    writeOutline(board.getOutline(), stream);
    rows.add(".END_BOARD_OUTLINE").endRow();
}

void IDFWriter::writeKeepouts(EDABoard const &board, FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    for (auto keepout = board.beginKeepouts(); keepout != board.endKeepouts(); ++keepout) {
        std::string const &type = keepout->getType();
        const bool hasSide = type == "PLACE_KEEPOUT";
        if (!hasSide && type != "VIA_KEEPOUT") continue;
        rows.add('.').add(type).add(" UNOWNED").endRow();
        if (hasSide)
            rows.addBare(idfSide(keepout->getBoardSide())).add(' ').add(keepout->getHeight()).endRow();
        addOutline(keepout->getOutline(), rows);
        rows.add(".END_").add(type).endRow();
    }
}

} // namespace EDA
