// Any bytes as outlines on a small lattice: merging must keep what is covered.
#include "model/EDAOutlineMerge.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

using EDA::EDAOutline;

constexpr std::size_t maxPoints = 200;

// What a broken promise of the union looks like to the fuzzer.
void require(bool promise) {
    if (!promise) std::abort();
}

// A byte is a point of a lattice of 15 by 15; 0xFF starts a new outline, and 0xF0 a hole in the last one.
std::vector<EDAOutline> outlinesOf(const std::uint8_t *data, std::size_t size) {
    std::vector<EDAOutline> outlines(1);
    int target = 0;
    for (std::size_t i = 0; i < size && i < maxPoints; ++i) {
        if (data[i] == 0xFF) {
            outlines.emplace_back();
            target = 0;
        } else if (data[i] == 0xF0) {
            target = outlines.back().numInternalOutlines() + 1;
        } else {
            outlines.back().addPoint(target, data[i] % 16, data[i] / 16, 0.0);
        }
    }
    return outlines;
}

bool encloses(const EDAOutline &outline, double x, double y) {
    const auto &points = outline.getPoints(true);
    bool inside = false;
    for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
        const auto &[x1, y1] = points[i];
        const auto &[x2, y2] = points[j];
        if ((y1 > y) != (y2 > y) && x < (x2 - x1) * (y - y1) / (y2 - y1) + x1) inside = !inside;
    }
    return inside;
}

bool covers(const std::vector<EDAOutline> &outlines, double x, double y) {
    for (const EDAOutline &outline : outlines) {
        bool inside = encloses(outline, x, y);
        for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner) {
            if (encloses(*inner, x, y)) inside = !inner->isHole();
        }
        if (inside) return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::vector<EDAOutline> before = outlinesOf(data, size);
    std::vector<EDAOutline> copies = before, after;
    std::vector<EDAOutline *> others;
    for (std::size_t i = 1; i < copies.size(); ++i)
        others.push_back(&copies[i]);
    std::size_t count = 0;
    require(copies[0].mergeOutlines(others, after, nullptr, count));
    require(copies[0].numPoints() > 0 || after.empty());
    after.insert(after.begin(), copies[0]);
    // Places that no edge between points of the lattice comes near.
    int differences = 0;
    for (int x = 0; x < 15; ++x) {
        for (int y = 0; y < 15; ++y)
            differences +=
                covers(before, x + 0.5137, y + 0.4871) != covers(after, x + 0.5137, y + 0.4871) ? 1 : 0;
    }
    require(differences == 0 ||
            after.size() > 1); // a hole of a piece within a hole may go to the first piece
    EDA::EDAOutlineMerge merge;
    for (const EDAOutline &each : before)
        merge.addOutline(each);
    merge.mergeConductors(nullptr);
    for (const EDAOutline &each : merge)
        require(std::isfinite(each.getArea()));
    return 0;
}
