// Areas that take away from others.
#pragma once

#include "host/QvDbWrap/IpcGeometry.h"

#include <cstdint>
#include <memory>

namespace QvDbWrap {

// Holds what is taken away, prepared once for any number of areas: each of these costs no more than what lies
// near it. What is drawn later takes from what is drawn earlier, so each area has a number that tells when.
class IpcCutters {
public:
    IpcCutters();
    ~IpcCutters();

    // All are to be added before the first cut.
    void add(const Area &area, std::uint32_t number = 1);

    // What is left of an area without all that have a higher number: with the outer rings anticlockwise, the
    // holes clockwise. Just the area when nothing is taken from it, or when it can't be clipped since it
    // holds no numbers or crosses itself too often; what can't be clipped takes nothing away either.
    Areas cut(const Area &area, std::uint32_t number = 0);

private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace QvDbWrap
