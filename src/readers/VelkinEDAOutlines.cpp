// Outlines of the external suite: from points to shapes, and the repair of those whose holes are cut in.
#include "readers/VelkinEDAReader.h"

#include "host/Geometry/PolygonClipper.h"
#include "host/QvDbWrap/DbWrapper.h"
#include "model/Enclosure.h"
#include "readers/VelkinEDAReaderDetail.h"

#include <algorithm>
#include <cstddef>

namespace EDA {

using QvDbWrap::geomElem;

namespace {

using Geometry::Polygon2D;
using Polygons = std::vector<Polygon2D>;

// The points of holes that the further pieces of one outline may get, by the points that it has. In a design
// the pieces lie side by side, and few holes lie in more than one. Rings in rings could give each piece all
// holes.
constexpr std::size_t maxCopies = 64;

Polygon2D polygonOf(const EDAOutline &outline) {
    Polygon2D polygon;
    outline.convertToPolygon(polygon);
    return polygon;
}

Polygons holesOf(const EDAOutline &outline) {
    Polygons holes;
    for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
         ++internal)
        if (internal->isHole()) holes.push_back(polygonOf(*internal));
    return holes;
}

// Adds those that lie inside. They are held against a copy, which shows its points as they are now: the
// outline itself may still show points that are taken out.
void addEnclosed(EDAOutline &outline, const std::vector<EDAOutline> &holes) {
    if (holes.empty()) return;
    const EDAOutline edge(outline);
    Enclosure enclosure(edge);
    for (const EDAOutline &hole : holes)
        if (enclosure.encloses(hole)) outline.addInternalOutline(hole);
}

// Adds all pieces but the first, each with the holes in it. False when the holes became too many.
bool addFurtherPieces(EDAOutline &outline, const Polygons &pieces, const std::vector<EDAOutline> &holes) {
    std::vector<EDAOutline> further;
    std::size_t room = outline.numPoints();
    for (auto piece = pieces.begin() + 1; piece != pieces.end(); ++piece)
        room += further.emplace_back(*piece, false).numPoints();
    for (const EDAOutline &hole : holes)
        room += hole.numPoints();
    room *= maxCopies;
    bool isComplete = true;
    giveEnclosedHoles(further, holes, [&room, &isComplete](const EDAOutline &hole) {
        isComplete = room >= hole.numPoints();
        if (isComplete) room -= hole.numPoints();
        return isComplete;
    });
    for (const EDAOutline &piece : further)
        outline.addInternalOutline(piece);
    return isComplete;
}

// Holes that touch the edge in a point are still cut in after the clipping.
void removeRemainingCutIns(EDAOutline &outline) {
    std::vector<EDAOutline> pieces;
    if (outline.hasCutIns() && outline.removeCutIns(pieces)) addEnclosed(outline, pieces);
}

// Adds the points of an element. True when the outline is to be cleaned afterwards.
bool addGeometry(const geomElem &element, EDAOutline &outline, int index) {
    outline.setHole(element.role == geomElem::Hole);
    if (element.kind == geomElem::Box && element.points.size() == 2) {
        const QvDbWrap::_mFPOINT &a = element.points[0], &b = element.points[1];
        outline.addPoint(index, a.x, a.y, 0.0);
        outline.addPoint(index, a.x, b.y, 0.0);
        outline.addPoint(index, b.x, b.y, 0.0);
        outline.addPoint(index, b.x, a.y, 0.0);
    }
    if (element.kind != geomElem::Polygon) return false;
    for (const QvDbWrap::_mFPOINT &point : element.points)
        outline.addPoint(index, point.x, point.y, 0.0);
    return true;
}

// An outline by the index of addPoint; null when there is none.
EDAOutline *outlineAt(EDAOutline &outline, int index) {
    if (index == 0) return &outline;
    return index <= outline.numInternalOutlines() ? &outline.beginInternalOutlines()[index - 1] : nullptr;
}

} // namespace

// Intended: the role of an element marks the whole outline as a hole or not, also when its points go to an
// internal one.
void VelkinEDAReader::convertGeometry(const geomElem &element, EDAOutline &outline, int index) {
    if (addGeometry(element, outline, index)) cleanupOutline(outline);
}

void VelkinEDAReader::cleanupOutline(EDAOutline &outline) {
    if (!outline.hasCutIns()) return outline.removeDegeneratePoints();
    const Polygon2D polygon = polygonOf(outline);
    const Polygons innerHoles = holesOf(outline);
    Polygons pieces, holePolygons;
    Geometry::PolygonClipper::clipPolygon(polygon, innerHoles, polygon, innerHoles,
                                          Geometry::PolygonClipper::Union, pieces, holePolygons);
    if (pieces.empty()) return;
    std::vector<EDAOutline> holes;
    for (const Polygon2D &hole : holePolygons)
        holes.emplace_back(hole, true);
    outline.resetOutline(EDAOutline(pieces.front(), false), true);
    addEnclosed(outline, holes);
    if (!addFurtherPieces(outline, pieces, holes))
        warnings_ += "Warning: an outline of too many nested rings lost some of its holes.\n";
    removeRemainingCutIns(outline);
    outline.removeDegeneratePoints();
}

// Where the next piece goes. A piece without a point leaves no outline behind, so that the pieces after it
// have a higher number than there are outlines to be continued.
int VelkinEDAReader::EdgePieces::nextTarget(const EDAOutline &edge) {
    return std::min(index++, edge.numInternalOutlines() + 1);
}

void VelkinEDAReader::EdgePieces::note(EDAOutline &edge, int target, bool gavePoints) {
    const EDAOutline *const outline = outlineAt(edge, target);
    hasData = hasData || (gavePoints && outline != nullptr && !outline->empty());
}

// The whole edge is cleaned when its own points have changed, and once more behind the last piece. A cut-out
// alone is cleaned for itself, since a board may have thousands.
void VelkinEDAReader::addEdgeElement(const geomElem &element, EdgePieces &pieces) {
    EDAOutline &edge = board_.getOutline();
    const int target = pieces.nextTarget(edge);
    const bool isDue = addGeometry(element, edge, target);
    pieces.isEdgeRaw = pieces.isEdgeRaw || target == 0;
    if (isDue && pieces.isEdgeRaw) {
        cleanupOutline(edge);
        pieces.isEdgeRaw = false;
    } else if (EDAOutline *const cutOut = isDue ? outlineAt(edge, target) : nullptr) {
        cutOut->removeDegeneratePoints();
    }
    pieces.note(edge, target,
                isDue ? !element.points.empty()
                      : element.kind == geomElem::Box && element.points.size() == 2);
}

void VelkinEDAReader::addEdgeObject(const QvDbWrap::GeomObj &object, EdgePieces &pieces) {
    EDAOutline &edge = board_.getOutline();
    const int target = pieces.nextTarget(edge);
    pieces.isEdgeRaw = pieces.isEdgeRaw || target == 0;
    std::vector<QvDbWrap::_mFPOINT> vertices;
    object.GetVertexes(vertices, 0.0, {});
    for (const QvDbWrap::_mFPOINT &vertex : vertices)
        edge.addPoint(target, vertex.x, vertex.y, 0.0);
    pieces.note(edge, target, !vertices.empty());
}

bool VelkinEDAReader::convertBoardOutlines(const QvDbWrap::DbWrapper &wrapper) {
    VelkinEDASection conversion("EDAConvertBoardOutlines");
    EdgePieces pieces;
    for (const QvDbWrap::outlineData &record : wrapper.GetOutlines()) {
        if (record.shape == nullptr) {
            for (const geomElem &element : record.elements)
                addEdgeElement(element, pieces);
            continue;
        }
        for (const QvDbWrap::ShapeElem &element : record.shape->gShapeElemCont())
            for (const QvDbWrap::GeomObj &object : element.gGeomCont())
                addEdgeObject(object, pieces);
    }
    conversion.endSection();
    const VelkinEDASection cleaning("EDACleanupBoardOutlines");
    cleanupOutline(board_.getOutline());
    return pieces.hasData;
}

} // namespace EDA
