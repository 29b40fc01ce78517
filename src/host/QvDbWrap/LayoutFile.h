// A layout in text form, the wrapper's own .qvd files: what the records hold, a record a line.
#pragma once

#include "host/QvDbWrap/Records.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace QvDbWrap {

// Far above any real layout; a file beyond them is refused. Those of a file and its lines are in LayoutLine.h
// and host/FileSystem/Limits.h.
struct LayoutLimits {
    std::size_t points = 50'000'000;
    std::size_t records = 10'000'000; // lines that begin one
};

// Whether a file starts as one of this form, of whatever version. False for one that can't be read.
bool isLayoutFile(const std::string &file);

// Reads a layout. Throws std::runtime_error with "line N: reason" for a file that is not of this form, breaks
// off, or goes beyond the limits.
Layout readLayoutFile(const std::string &file, const LayoutLimits &limits = LayoutLimits());

// The same of a text in memory.
Layout parseLayout(std::string_view text, const LayoutLimits &limits = LayoutLimits());

// Writes a layout, atomically. Throws std::runtime_error when it can't be written, as when it holds a number
// that is not finite. Reading it gives the same records, numbers bit by bit. Shapes behind pointers are
// written as elements.
void writeLayoutFile(const Layout &layout, const std::string &file);

} // namespace QvDbWrap
