// Looks at single points of a layer: which of them its conductors cover. Knows nothing of clipping.
#pragma once

#include "model/EDAOutline.h"
#include "model/EDATrace.h"
#include "support/Outlines.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace TestSupport {

// Seeded points in the bound of a layer, and what two sets of conductors make of them. A point is covered by
// an outline whose material it lies in: the outline's points are painted, then its internal outlines punched
// out or painted, in their order, each by the even-odd rule. Points within a millionth of the layer's size of
// any edge are left out.
class LayerSampler {
public:
    LayerSampler(const std::vector<EDA::EDATrace> &traces, std::size_t count, unsigned seed) {
        Geometry::Bound2D bound;
        for (const EDA::EDATrace &trace : traces)
            trace.getOutline().getOverallBound(bound);
        if (traces.empty()) return;
        const double width = bound.getXHigh() - bound.getXLow(), height = bound.getYHigh() - bound.getYLow();
        margin_ = 1e-6 * std::max(width, height);
        EDA::test::Random random(seed);
        for (std::size_t i = 0; i < count; ++i) {
            const double x = bound.getXLow() + width * random.between(-0.02, 1.02);
            const double y = bound.getYLow() + height * random.between(-0.02, 1.02);
            points_.emplace_back(x, y);
        }
        std::sort(points_.begin(), points_.end(),
                  [](const auto &a, const auto &b) { return a.second < b.second; });
        nearEdge_.assign(points_.size(), false);
    }

    // For each point, whether any outline of these covers it.
    std::vector<bool> covered(const std::vector<EDA::EDATrace> &traces) {
        std::vector<bool> result(points_.size(), false);
        for (const EDA::EDATrace &trace : traces) {
            for (const std::size_t point : material(trace.getOutline()))
                result[point] = true;
        }
        return result;
    }

    const std::vector<std::pair<double, double>> &points() const { return points_; }
    // After what was asked of `covered` so far.
    bool isNearEdge(std::size_t point) const { return nearEdge_[point]; }

private:
    using Numbers = std::vector<std::size_t>;

    Numbers material(const EDA::EDAOutline &outline) {
        Numbers inside = enclosed(outline);
        for (auto internal = outline.beginInternalOutlines(); internal != outline.endInternalOutlines();
             ++internal) {
            const Numbers part = enclosed(*internal);
            Numbers painted;
            if (internal->isHole()) {
                std::set_difference(inside.begin(), inside.end(), part.begin(), part.end(),
                                    std::back_inserter(painted));
            } else {
                std::set_union(inside.begin(), inside.end(), part.begin(), part.end(),
                               std::back_inserter(painted));
            }
            inside = std::move(painted);
        }
        return inside;
    }

    // The points with an odd number of edges to their left.
    Numbers enclosed(const EDA::EDAOutline &outline) {
        const auto &corners = outline.getPoints(true);
        Numbers crossings;
        for (std::size_t i = 0; i < corners.size(); ++i)
            cross(corners[i], corners[(i + 1) % corners.size()], crossings);
        std::sort(crossings.begin(), crossings.end());
        Numbers odd;
        for (auto it = crossings.begin(); it != crossings.end();) {
            const auto next = std::upper_bound(it, crossings.end(), *it);
            if ((next - it) % 2 != 0) odd.push_back(*it);
            it = next;
        }
        return odd;
    }

    void cross(const std::pair<double, double> &a, const std::pair<double, double> &b, Numbers &crossings) {
        const double low = std::min(a.second, b.second), high = std::max(a.second, b.second);
        const auto first = std::lower_bound(points_.begin(), points_.end(), low - margin_,
                                            [](const auto &point, double y) { return point.second < y; });
        for (auto point = first; point != points_.end() && point->second <= high + margin_; ++point) {
            const auto number = static_cast<std::size_t>(point - points_.begin());
            if (distance(*point, a, b) < margin_) nearEdge_[number] = true;
            if (point->second < low || point->second >= high) continue;
            const double x =
                a.first + (b.first - a.first) * (point->second - a.second) / (b.second - a.second);
            if (x < point->first) crossings.push_back(number);
        }
    }

    static double distance(const std::pair<double, double> &p, const std::pair<double, double> &a,
                           const std::pair<double, double> &b) {
        const double dx = b.first - a.first, dy = b.second - a.second;
        const double length = dx * dx + dy * dy;
        double t = 0.0;
        if (length > 0.0) t = ((p.first - a.first) * dx + (p.second - a.second) * dy) / length;
        t = std::clamp(t, 0.0, 1.0);
        return std::hypot(p.first - a.first - t * dx, p.second - a.second - t * dy);
    }

    std::vector<std::pair<double, double>> points_;
    std::vector<bool> nearEdge_;
    double margin_ = 0.0;
};

// Points that one of two sets of conductors covers and the other does not; how many were looked at.
struct SampleResult {
    std::size_t compared = 0;
    std::size_t inside = 0;
    std::vector<std::pair<double, double>> onlyBefore;
    std::vector<std::pair<double, double>> onlyAfter;
};

inline SampleResult compareCover(const std::vector<EDA::EDATrace> &before,
                                 const std::vector<EDA::EDATrace> &after, std::size_t count, unsigned seed) {
    LayerSampler sampler(before, count, seed);
    const std::vector<bool> first = sampler.covered(before), second = sampler.covered(after);
    SampleResult result;
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (sampler.isNearEdge(i)) continue;
        ++result.compared;
        result.inside += first[i] ? 1 : 0;
        if (first[i] == second[i]) continue;
        (first[i] ? result.onlyBefore : result.onlyAfter).push_back(sampler.points()[i]);
    }
    return result;
}

} // namespace TestSupport
