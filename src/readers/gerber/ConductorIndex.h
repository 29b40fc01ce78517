// Finds the conductors that a clear object touches.
#pragma once

#include "model/GrowingBoundTree.h"
#include "model/OutlineIndex.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace EDA {

class EDAOutlineMerge;

// The places of the outlines of a growing list, and what is known of the large ones among them. The outlines
// stay as they were added, but for the holes that they get.
class ConductorIndex {
public:
    void add(const EDAOutline &outline) { bounds_.add(outline.getBound()); }
    std::size_t size() const { return bounds_.size(); }
    void clear() { *this = ConductorIndex(); }

    // The numbers, ascending, of the outlines in the list whose material the object meets
    // (`EDAOutline::intersectsHole`).
    std::vector<std::size_t> findTouched(EDAOutlineMerge &list, const EDAOutline &object);

    // How often so far an object was held against an outline or a hole of one. Where many points are held
    // against many edges it counts for more: as what takes about as long.
    std::size_t numTests() const { return numTests_; }

private:
    bool touches(std::size_t number, const EDAOutline &outline, const EDAOutline &object,
                 OutlineIndex &objectIndex);

    GrowingBoundTree bounds_;
    std::unordered_map<std::size_t, OutlineIndex> large_;
    std::size_t numTests_ = 0;
};

} // namespace EDA
