// Areas that take away from others.
#pragma once

#include "host/QvDbWrap/IpcGeometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace QvDbWrap {

// What cutting has cost, of all cutters that share it. The limits are many times those of a real design.
class IpcCutBudget {
public:
    static constexpr std::size_t maxCuts = 200000;     // of one area each
    static constexpr std::size_t maxPoints = 4000000;  // of what is cut, what cuts it, and what crossings add
    static constexpr std::size_t maxTests = 200000000; // of whether a cutter is near
    static constexpr std::size_t maxHalved = 4000000;  // points of large cutters when they are prepared

    bool isSpent() const { return cuts > maxCuts || points > maxPoints || tests > maxTests; }

    std::size_t cuts = 0;
    std::size_t points = 0;
    std::size_t tests = 0;
    std::size_t halved = 0;
    std::size_t failures = 0; // what was not cut, or took nothing, as it crosses too often
};

// Holds what is taken away, prepared once for any number of areas: each of these costs no more than what lies
// near it. What is drawn later takes from what is drawn earlier, so each area has a number that tells when.
class IpcCutters {
public:
    // Without a budget to share it has one of its own. Once that is spent nothing more is cut.
    explicit IpcCutters(IpcCutBudget *budget = nullptr);
    ~IpcCutters();

    // All are to be added before the first cut.
    void add(const Area &area, std::uint32_t number = 1);

    // What is left of an area without all that have a higher number: with the outer rings anticlockwise, the
    // holes clockwise. Just the area when nothing is taken from it, or when it can't be clipped since it
    // holds no numbers or crosses itself too often; what can't be clipped takes nothing away either.
    Areas cut(Area area, std::uint32_t number = 0);

private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace QvDbWrap
