// The board outline becomes the board entity's shape, and settles the origin of all items.
#include "import/EDAImporterDetail.h"

#include <cmath>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr double minArea = 1e-12;  // An outline's bound with less is no outline, in square board units.
constexpr double minExtent = 1e-9; // A bound narrower than this has no extent, in board units.

// Keeps what there was where an extent is missing: ten thicknesses stand for it.
Geometry::Bound2D approximateBound(const EDABoard &board) {
    double xLow = 0.0, yLow = 0.0, xHigh = 0.0, yHigh = 0.0;
    board.getOverallBound(xLow, yLow, xHigh, yHigh);
    const double replacement = 10.0 * board.getThickness();
    if (xHigh - xLow < minExtent) {
        xLow = 0.0;
        xHigh = replacement;
    }
    if (yHigh - yLow < minExtent) {
        yLow = 0.0;
        yHigh = replacement;
    }
    return {xLow, yLow, xHigh, yHigh};
}

double lengthInUnits(Entity *entity, const TypeRef &attribute, const std::string &units) {
    const double length = getStandardDoubleValue(entity, attribute, 0.0);
    return UnitConverter::instance().convertFromSI(Length_t, length, TypeRef(TypeFactory::getType(units)));
}

} // namespace

void EDAImporter::shapeBoard(Run &run) {
    EDAOutline &outline = run.board.getOutline();
    double xLow = 0.0, yLow = 0.0, xHigh = 0.0, yHigh = 0.0;
    bool isRectangle = outline.isRectangle(xLow, yLow, xHigh, yHigh);
    run.bound = Geometry::Bound2D(xLow, yLow, xHigh, yHigh);
    modelDimension_ = run.board.getModelDimension();
    outline.setModelDimension(modelDimension_);

    isRectangle = isRectangle && options_.resetBoardOrigin && options_.simplifyShapes;
    double centreX = 0.0, centreY = 0.0, diameter = 0.0;
    const bool mayBeCylinder =
        !isRectangle && options_.resetBoardOrigin && (options_.simplifyShapes || outline.numPoints() < 3);
    const bool isCylinder =
        mayBeCylinder && isRound(outline, centreX, centreY, diameter, conversionOptions_.boardMinPoints,
                                 conversionOptions_.boardTolerance);
    const bool isBad = outline.isBadOutline();

    if (isRectangle) {
        setRectangleBoard(run);
    } else if (isCylinder) {
        setCylinderBoard(run, diameter);
    } else if (!isBad || boardEntityCreated_) {
        setPolygonBoard(run, isBad);
    } else {
        readBackOrigin(run);
    }
}

void EDAImporter::setRectangleBoard(Run &run) {
    EntityEditor::setValue(run.boardEntity, Shape_t, "Rectangle", true);
    setLength(run.boardEntity, "Width", run.bound.getXSize(), run.board);
    setLength(run.boardEntity, "Depth", run.bound.getYSize(), run.board);
    rectOriginX_ = run.bound.getXLow();
    rectOriginY_ = run.bound.getYHigh();
}

void EDAImporter::setCylinderBoard(Run &run, double diameter) {
    EntityEditor::setValue(run.boardEntity, Shape_t, "Cylinder", true);
    EntityEditor::setValue(run.boardEntity, Origin_Point_t, "Centre", true);
    setLength(run.boardEntity, "Diameter", diameter, run.board);
    // Intended: the corner of the bound is stored, although the origin point says centre. All items are
    // measured from that corner.
    outlineOriginX_ = run.locationX = run.bound.getXLow();
    outlineOriginY_ = run.locationZ = run.bound.getYHigh();
}

void EDAImporter::setPolygonBoard(Run &run, bool isBad) {
    EntityEditor::setValue(run.boardEntity, Shape_t, "Polygon", true);
    const bool hasArea = !isBad && std::fabs(run.bound.getYSize() * run.bound.getXSize()) >= minArea;
    std::string points;
    if (!boardEntityCreated_ || hasArea) {
        for (const auto &[x, y] : run.board.getOutline().getPoints(true)) {
            appendOutlinePoint(points, x, mapZCoord(y));
        }
        traceOffsetX_ = run.bound.getXLow();
        traceOffsetY_ = run.bound.getYHigh();
    } else {
        points = approximateOutline(run);
    }
    EntityEditor::setValue(run.boardEntity, Outline_t, outlineValue(points, run.board.getUnits()), true,
                           nullptr, true, true);
    outlineOriginX_ = run.locationX = run.bound.getXLow();
    outlineOriginY_ = run.locationZ = run.bound.getYHigh();
}

std::string EDAImporter::approximateOutline(Run &run) {
    errorMessage_ +=
        "The outline of this board was not valid in the file so an approximate bound was used instead.\n";
    run.bound = approximateBound(run.board);
    const std::string xLow = streamNumber(run.bound.getXLow()), yLow = streamNumber(run.bound.getYLow());
    const std::string xHigh = streamNumber(run.bound.getXHigh()), yHigh = streamNumber(run.bound.getYHigh());
    traceOffsetX_ = run.bound.getXLow();
    traceOffsetY_ = -run.bound.getYLow();
    // Intended: here y keeps its sign, unlike in a valid outline.
    return xLow + ',' + yLow + ',' + xHigh + ',' + yLow + ',' + xHigh + ',' + yHigh + ',' + xLow + ',' +
           yHigh;
}

// The file's outline is no use, so the shape that the entity already has keeps the coordinates in step.
void EDAImporter::readBackOrigin(const Run &run) {
    Attribute *const shape = run.boardEntity ? run.boardEntity->findAttribute(Shape_t, false) : nullptr;
    if (!shape) return;
    const std::string &units = run.board.getUnits();
    if (shape->isValue(Polygon_t)) {
        Attribute *const outline = run.boardEntity->findAttribute(Outline_t, false);
        if (!outline || !outline->isDoubleListAttribute()) return;
        const auto inUnits = [&units](double value) {
            return UnitConverter::instance().convertFromSI(Length_t, value,
                                                           TypeRef(TypeFactory::getType(units)));
        };
        double low = 0.0, high = 0.0;
        static_cast<DoubleListAttribute *>(outline)->getBoundStandardValues(0, low, high);
        outlineOriginX_ = inUnits(low);
        static_cast<DoubleListAttribute *>(outline)->getBoundStandardValues(1, low, high);
        outlineOriginY_ = -inUnits(low);
        traceOffsetX_ = outlineOriginX_;
        traceOffsetY_ = outlineOriginY_;
    } else if (shape->isValue(Rectangle_t)) {
        // Intended: the x origin stays, and so does the y origin of the other pair.
        rectOriginY_ = lengthInUnits(run.boardEntity, Depth_t, units);
    } else if (shape->isValue(Cylinder_t)) {
        outlineOriginY_ = lengthInUnits(run.boardEntity, Diameter_t, units);
    }
}

} // namespace EDA
