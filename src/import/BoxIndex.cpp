// A tree over boxes, each branch halved at the middle of its longer side.
#include "import/BoxIndex.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace EDA {

namespace {

using Box = BoxIndex::Box;

// Halves first: the sum of two large numbers may not be finite.
double xMiddle(const Box &box) { return box.xLow * 0.5 + box.xHigh * 0.5; }
double zMiddle(const Box &box) { return box.zLow * 0.5 + box.zHigh * 0.5; }

void unite(Box &box, const Box &other) {
    box.xLow = std::min(box.xLow, other.xLow);
    box.zLow = std::min(box.zLow, other.zLow);
    box.xHigh = std::max(box.xHigh, other.xHigh);
    box.zHigh = std::max(box.zHigh, other.zHigh);
}

} // namespace

BoxIndex::BoxIndex(const std::vector<Box> &boxes) {
    if (boxes.empty()) return;
    std::vector<int> places(boxes.size());
    std::iota(places.begin(), places.end(), 0);
    nodes_.reserve(2 * boxes.size() - 1);
    nodes_.emplace_back();
    fill(0, boxes, places.begin(), places.end());
}

// The depth is that of a balanced tree.
void BoxIndex::fill(int node, const std::vector<Box> &boxes, std::vector<int>::iterator begin,
                    std::vector<int>::iterator end) {
    const auto boxOf = [&boxes](int place) -> const Box & { return boxes[static_cast<std::size_t>(place)]; };
    Node filled{boxOf(*begin), *std::min_element(begin, end), 0};
    for (auto place = begin; place != end; ++place)
        unite(filled.box, boxOf(*place));
    const auto count = end - begin;
    if (count > 1) {
        const Box &all = filled.box;
        const bool alongX = all.xHigh * 0.5 - all.xLow * 0.5 > all.zHigh * 0.5 - all.zLow * 0.5;
        const auto middle = alongX ? xMiddle : zMiddle;
        std::nth_element(begin, begin + count / 2, end,
                         [&](int a, int b) { return middle(boxOf(a)) < middle(boxOf(b)); });
        filled.children = static_cast<int>(nodes_.size());
        nodes_.resize(nodes_.size() + 2);
        fill(filled.children, boxes, begin, begin + count / 2);
        fill(filled.children + 1, boxes, begin + count / 2, end);
    }
    nodes_[static_cast<std::size_t>(node)] = filled;
}

void BoxIndex::push(Open &open, int node, double x, double z) const {
    if (!nodes_[static_cast<std::size_t>(node)].box.contains(x, z)) return;
    open.push_back(node);
    std::push_heap(open.begin(), open.end(), [this](int a, int b) {
        return nodes_[static_cast<std::size_t>(a)].first > nodes_[static_cast<std::size_t>(b)].first;
    });
}

const BoxIndex::Node &BoxIndex::pop(Open &open) const {
    std::pop_heap(open.begin(), open.end(), [this](int a, int b) {
        return nodes_[static_cast<std::size_t>(a)].first > nodes_[static_cast<std::size_t>(b)].first;
    });
    const int node = open.back();
    open.pop_back();
    return nodes_[static_cast<std::size_t>(node)];
}

} // namespace EDA
