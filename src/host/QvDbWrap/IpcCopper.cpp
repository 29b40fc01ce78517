// Polarity of copper: what negative shapes leave of those drawn before them.
#include "host/QvDbWrap/IpcCopper.h"

#include "host/QvDbWrap/IpcStepReader.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace QvDbWrap {

namespace {

struct Bound {
    double low[2];
    double high[2];

    static Bound of(const Area &area) {
        Bound bound{{area.outer[0].x, area.outer[0].y}, {area.outer[0].x, area.outer[0].y}};
        for (const _mFPOINT &point : area.outer) {
            const double place[2] = {point.x, point.y};
            for (int axis = 0; axis < 2; ++axis) {
                bound.low[axis] = std::min(bound.low[axis], place[axis]);
                bound.high[axis] = std::max(bound.high[axis], place[axis]);
            }
        }
        return bound;
    }
    void unite(const Bound &other) {
        for (int axis = 0; axis < 2; ++axis) {
            low[axis] = std::min(low[axis], other.low[axis]);
            high[axis] = std::max(high[axis], other.high[axis]);
        }
    }
    bool touches(const Bound &other) const {
        return low[0] <= other.high[0] && other.low[0] <= high[0] && low[1] <= other.high[1] &&
               other.low[1] <= high[1];
    }
};

// The negative shapes of a layer, in cells of a grid; those over many cells apart.
class Cutters {
public:
    // More comparisons and cuts than this are not made for one layer.
    static constexpr std::size_t maxTests = 200000000;
    static constexpr std::size_t maxCuts = 1000000;

    explicit Cutters(const std::vector<IpcDrawn> &drawn) : drawn_(drawn) {
        for (std::uint32_t i = 0; i < drawn.size(); ++i)
            if (drawn[i].isNegative) bounds_.emplace_back(i, Bound::of(drawn[i].area));
        if (bounds_.empty()) return;
        all_ = bounds_[0].second;
        for (const auto &[index, bound] : bounds_)
            all_.unite(bound);
        const double wanted = std::sqrt(static_cast<double>(bounds_.size()));
        numCells_ = static_cast<int>(std::clamp(wanted, 1.0, 512.0));
        cells_.resize(static_cast<std::size_t>(numCells_) * static_cast<std::size_t>(numCells_));
        for (std::uint32_t i = 0; i < bounds_.size(); ++i)
            add(i);
    }
    bool isEmpty() const { return bounds_.empty(); }
    bool isSpent() const { return numTests_ > maxTests || numCuts_ > maxCuts; }

    // Those later than the shape that may reach it, in order.
    Areas after(std::uint32_t index) {
        found_.clear();
        if (isSpent()) return {};
        const Bound bound = Bound::of(drawn_[index].area);
        if (!bound.touches(all_)) return {};
        test(large_, index, bound);
        forCells(bound, [&](std::vector<std::uint32_t> &cell) { test(cell, index, bound); });
        std::sort(found_.begin(), found_.end());
        found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
        numCuts_ += found_.size();
        Areas areas;
        for (const std::uint32_t cutter : found_)
            areas.push_back(drawn_[cutter].area);
        return areas;
    }

private:
    static constexpr int maxCellsOfOne = 256;

    void add(std::uint32_t i) {
        const Bound &bound = bounds_[i].second;
        if (numCellsOf(bound) > maxCellsOfOne) return large_.push_back(i);
        forCells(bound, [i](std::vector<std::uint32_t> &cell) { cell.push_back(i); });
    }
    int cellOf(double place, int axis) const {
        const double width = all_.high[axis] - all_.low[axis];
        const double part = width > 0 ? (place - all_.low[axis]) / width : 0;
        return static_cast<int>(std::clamp(part * numCells_, 0.0, numCells_ - 1.0));
    }
    int numCellsOf(const Bound &bound) const {
        int count = 1;
        for (int axis = 0; axis < 2; ++axis)
            count *= cellOf(bound.high[axis], axis) - cellOf(bound.low[axis], axis) + 1;
        return count;
    }
    template <typename Use> void forCells(const Bound &bound, const Use &use) {
        for (int y = cellOf(bound.low[1], 1); y <= cellOf(bound.high[1], 1); ++y)
            for (int x = cellOf(bound.low[0], 0); x <= cellOf(bound.high[0], 0); ++x)
                use(cells_[static_cast<std::size_t>(y) * static_cast<std::size_t>(numCells_) +
                           static_cast<std::size_t>(x)]);
    }
    void test(const std::vector<std::uint32_t> &cutters, std::uint32_t index, const Bound &bound) {
        numTests_ += cutters.size() + 1;
        if (isSpent()) return;
        for (const std::uint32_t i : cutters)
            if (bounds_[i].first > index && bounds_[i].second.touches(bound))
                found_.push_back(bounds_[i].first);
    }

    const std::vector<IpcDrawn> &drawn_;
    std::vector<std::pair<std::uint32_t, Bound>> bounds_;
    Bound all_{};
    int numCells_ = 1;
    std::vector<std::vector<std::uint32_t>> cells_;
    std::vector<std::uint32_t> large_;
    std::vector<std::uint32_t> found_;
    std::size_t numTests_ = 0;
    std::size_t numCuts_ = 0;
};

// Some documents name a shape of a dictionary where a stack is meant.
const Areas *findShape(const IpcPendingPad &pad, const std::string &layerName, const IpcStep &step,
                       IpcContext &context) {
    if (step.padstacks.count(pad.padstack) == 0) {
        const Areas &shape = context.geometry.findShape(pad.padstack);
        if (!shape.empty()) return &shape;
        context.log.warn("padstack " + pad.padstack + " is missing");
        return nullptr;
    }
    const Areas *const shape = findPad(step, pad.padstack, layerName);
    if (!shape) context.log.warn("a pad has no shape of its own, and its stack none on its layer");
    return shape;
}

void addPending(IpcCopper &copper, const std::string &layerName, const IpcStep &step, IpcContext &context) {
    if (copper.pending.empty()) return;
    for (const IpcPendingPad &pad : copper.pending) {
        const Areas *const shape = findShape(pad, layerName, step, context);
        if (!shape) continue;
        std::size_t count = 0;
        for (const Area &area : *shape)
            count += area.outer.size();
        if (!context.takePoints(count)) break;
        for (Area &area : pad.placement.apply(*shape))
            if (context.geometry.isUsable({area}))
                copper.drawn.push_back({std::move(area), pad.net, pad.order, pad.isNegative});
    }
    copper.pending.clear();
    std::stable_sort(copper.drawn.begin(), copper.drawn.end(),
                     [](const IpcDrawn &a, const IpcDrawn &b) { return a.order < b.order; });
}

void turnPolarity(IpcCopper &copper, const IpcStep &step) {
    for (IpcDrawn &drawn : copper.drawn)
        drawn.isNegative = !drawn.isNegative;
    if (step.profile.empty()) return;
    IpcDrawn plane;
    plane.area.outer = step.profile[0];
    plane.area.holes.assign(step.profile.begin() + 1, step.profile.end());
    copper.drawn.insert(copper.drawn.begin(), std::move(plane));
}

void cut(std::vector<IpcDrawn> &drawn, IpcContext &context) {
    std::vector<IpcDrawn> left;
    Cutters cutters(drawn);
    if (cutters.isEmpty()) return;
    for (std::uint32_t i = 0; i < drawn.size(); ++i) {
        if (drawn[i].isNegative) continue;
        const Areas others = cutters.after(i);
        if (others.empty()) {
            left.push_back(std::move(drawn[i]));
            continue;
        }
        for (Area &area : subtract({drawn[i].area}, others))
            left.push_back({std::move(area), drawn[i].net, drawn[i].order, false});
    }
    if (cutters.isSpent())
        context.log.warn("a layer has too many shapes of negative polarity: not all of them are cut out");
    drawn = std::move(left);
}

} // namespace

void settleCopper(IpcCopper &copper, const std::string &layerName, bool isNegativeLayer, const IpcStep &step,
                  IpcContext &context) {
    addPending(copper, layerName, step, context);
    if (isNegativeLayer) turnPolarity(copper, step);
    cut(copper.drawn, context);
}

} // namespace QvDbWrap
