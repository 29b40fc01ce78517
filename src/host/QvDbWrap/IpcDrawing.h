// A shape as its element gives it, before its references are looked up.
#pragma once

#include "host/QvDbWrap/IpcStrokes.h"

#include <string>
#include <vector>

namespace QvDbWrap {

enum class FillStyle { Solid, Hollow, Void };

// Something that an element gives in place or by the id of a dictionary's entry.
template <typename Style> struct Given {
    bool isGiven = false;
    Style style = Style();
    std::string id; // empty: in place
};

struct ShapeReference {
    std::string id;
    bool isUser = false; // where both dictionaries have the id
};

struct Drawing {
    std::string element; // its name, for messages
    Areas filled;        // what is drawn when it is filled
    Path path;           // of a stroke
    std::vector<ShapeReference> references;
    std::vector<Drawing> parts;
    Given<LineStyle> line;
    Given<FillStyle> fill;
    bool isPlaced = false;
    IpcPlacement placement;
};

// Whether all is finite and within IpcGeometry::maxCoordinate.
bool isInRange(const Path &path);
bool isInRange(const Ring &ring);
bool isInRange(const Areas &areas);

} // namespace QvDbWrap
