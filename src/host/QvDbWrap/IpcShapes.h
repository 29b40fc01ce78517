// The standard primitives of an IPC-2581 document.
#pragma once

#include "host/QvDbWrap/IpcGeometry.h"

#include <string>

namespace QvDbWrap {

// The attributes of a primitive's element, lengths in metres.
class ShapeAttributes {
public:
    ShapeAttributes(const IpcXml &xml, double metresPerUnit) : xml_(xml), metresPerUnit_(metresPerUnit) {}

    // Not a number where it is missing or unreadable: what is made of it can't be used.
    double coordinate(const char *name) const;
    // As above, and where it is negative.
    double size(const char *name) const;
    // 0 where it is missing.
    double degrees(const char *name) const;
    int count(const char *name) const;
    std::string text(const char *name) const; // in capitals
    bool has(const char *name) const;
    bool flag(const char *name) const;

private:
    const IpcXml &xml_;
    double metresPerUnit_;
};

// Makes a primitive, about 0, 0 unless its attributes give its place. Sizes that are not usable give points
// that are no numbers.
using PrimitiveMaker = Areas (*)(const ShapeAttributes &attributes);

// Null when the element is no primitive with attributes alone.
PrimitiveMaker findPrimitive(const std::string &element);

} // namespace QvDbWrap
