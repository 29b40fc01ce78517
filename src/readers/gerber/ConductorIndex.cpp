// Conductors by place.
#include "readers/gerber/ConductorIndex.h"

#include "model/EDAOutlineMerge.h"

#include <algorithm>

namespace EDA {

namespace {

constexpr std::size_t pointTestsOfTest = 32; // points held against an edge, in one test of outlines

} // namespace

std::vector<std::size_t> ConductorIndex::findTouched(EDAOutlineMerge &list, const EDAOutline &object) {
    OutlineIndex objectIndex;
    std::vector<std::size_t> touched;
    bounds_.search(object.getBound(), Geometry::Bound2D::defaultTolerance, [&](std::size_t number) {
        const EDAOutline &outline = *(list.begin() + static_cast<std::ptrdiff_t>(number));
        if (touches(number, outline, object, objectIndex)) touched.push_back(number);
    });
    std::sort(touched.begin(), touched.end());
    return touched;
}

bool ConductorIndex::touches(std::size_t number, const EDAOutline &outline, const EDAOutline &object,
                             OutlineIndex &objectIndex) {
    ++numTests_;
    OutlineIndex small;
    OutlineIndex &index = OutlineIndex::isWorthwhile(outline) ? large_[number] : small;
    const std::size_t testsBefore = index.numHoleTests();
    const std::size_t pointTestsBefore = index.numPointTests() + objectIndex.numPointTests();
    const bool isTouched = OutlineIndex::intersectsHole(outline, index, object, objectIndex);
    numTests_ += index.numHoleTests() - testsBefore;
    numTests_ += (index.numPointTests() + objectIndex.numPointTests() - pointTestsBefore) / pointTestsOfTest;
    return isTouched;
}

} // namespace EDA
