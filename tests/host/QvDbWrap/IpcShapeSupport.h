// Reads shapes of IPC-2581 documents that stand in a text.
#pragma once

#include "host/QvDbWrap/IpcGeometry.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace QvDbWrap {

constexpr double mm = 1e-3;
constexpr double pi = 3.14159265358979323846;

// What chords leave of a circle's area: that of a regular polygon of 36 corners, over that of its circle.
inline double chordShare() { return std::sin(2 * pi / 36) / (2 * pi / 36); }

inline double ringArea(const Ring &ring) {
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const _mFPOINT &a = ring[i], &b = ring[(i + 1) % ring.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2;
}

// In square millimetres; areas that overlap count twice.
inline double areaOf(const Areas &areas) {
    double sum = 0;
    for (const Area &area : areas) {
        sum += ringArea(area.outer);
        for (const Ring &hole : area.holes)
            sum += ringArea(hole); // runs the other way round
    }
    return sum / (mm * mm);
}

// In millimetres.
struct Bounds {
    double xLow = 1e9, yLow = 1e9, xHigh = -1e9, yHigh = -1e9;
};

inline Bounds boundsOf(const Areas &areas) {
    Bounds bounds;
    for (const Area &area : areas)
        for (const _mFPOINT &point : area.outer) {
            bounds.xLow = std::min(bounds.xLow, point.x / mm);
            bounds.yLow = std::min(bounds.yLow, point.y / mm);
            bounds.xHigh = std::max(bounds.xHigh, point.x / mm);
            bounds.yHigh = std::max(bounds.yHigh, point.y / mm);
        }
    return bounds;
}

// Whether a place in millimetres is inside of any of the areas.
inline bool isInside(const Ring &ring, double x, double y) {
    bool inside = false;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const _mFPOINT &a = ring[i], &b = ring[(i + 1) % ring.size()];
        if ((a.y > y) != (b.y > y) && x < a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
    }
    return inside;
}

inline bool covers(const Areas &areas, double x, double y) {
    return std::any_of(areas.begin(), areas.end(), [&](const Area &area) {
        return isInside(area.outer, x * mm, y * mm) &&
               std::none_of(area.holes.begin(), area.holes.end(),
                            [&](const Ring &hole) { return isInside(hole, x * mm, y * mm); });
    });
}

// A geometry with lengths in millimetres and its log.
struct IpcBench {
    WrapperLog log;
    IpcGeometry geometry{log};

    Areas shape(const std::string &element) {
        IpcXml xml(QByteArray::fromStdString(element));
        xml.openRoot();
        return geometry.readShape(xml);
    }

    Ring ring(const std::string &element) {
        IpcXml xml(QByteArray::fromStdString(element));
        xml.openRoot();
        return geometry.readRing(xml);
    }

    bool dictionary(const std::string &element) {
        IpcXml xml(QByteArray::fromStdString(element));
        xml.openRoot();
        return geometry.readDictionary(xml);
    }
};

inline Area boxArea(double xLow, double yLow, double xHigh, double yHigh) {
    return {
        {{xLow * mm, yLow * mm}, {xHigh * mm, yLow * mm}, {xHigh * mm, yHigh * mm}, {xLow * mm, yHigh * mm}},
        {}};
}

} // namespace QvDbWrap
