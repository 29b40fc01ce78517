// Reads the elements of an IPC-2581 document that draw something.
#pragma once

#include "host/QvDbWrap/IpcDrawing.h"

#include <string>

namespace QvDbWrap {

class IpcXml;
class WrapperLog;

// Whether an element of this name draws something that is read.
bool isShapeElement(const std::string &element);

// Reads from the open element of a document whose lengths are in one unit. What is not read and what has
// numbers that can't be used is told to the log and left out.
class IpcShapeReader {
public:
    IpcShapeReader(IpcXml &xml, double metresPerUnit, WrapperLog &log)
        : xml_(xml), metresPerUnit_(metresPerUnit), log_(log) {}

    // The open element is a shape.
    Drawing readShape();

    // The shapes that are children of the open element, as parts; and its Drill where that is asked for.
    Drawing readParts(ShapeDrill *drill = nullptr);

    // The open element holds PolyBegin, PolyStepSegment and PolyStepCurve: its ring as it stands in the
    // document, placed by its own Xform.
    Ring readRing();

    // The open element is a LineDesc or a FillDesc.
    LineStyle readLine();
    FillStyle readFill();

private:
    Drawing readNamed(const std::string &element);
    void readPrimitive(const std::string &element, Drawing &drawing);
    void readReference(Drawing &drawing, bool isUser);
    void readStroke(const std::string &element, Drawing &drawing);
    void readPolyline(Drawing &drawing);
    void readPolygon(Drawing &drawing);
    void readFramed(Drawing &drawing);
    void readFramedChild(Drawing &drawing, Area &area, bool &isUsable);
    Ring readSteps(Drawing &drawing, bool &isUsable);

    // Reads the open child when it is one that any shape may hold.
    bool readCommon(Drawing &drawing);
    void readCommonOnly(Drawing &drawing);
    bool readStep(Path &path);

    void readDrill(ShapeDrill &drill);

    // Takes a child that is no shape, and tells it unless it draws nothing.
    void passOver();
    void leaveOut(const std::string &element);
    _mFPOINT point(const char *x, const char *y) const;

    IpcXml &xml_;
    const double metresPerUnit_;
    WrapperLog &log_;
};

// Adds what the open element, a Location or Xform, says to a placement.
void readLocationInto(const IpcXml &xml, double metresPerUnit, IpcPlacement &placement);
void readXformInto(const IpcXml &xml, double metresPerUnit, IpcPlacement &placement);

} // namespace QvDbWrap
