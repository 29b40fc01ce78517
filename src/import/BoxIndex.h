// Many boxes in a plane, asked for the first that holds a point.
#pragma once

#include <vector>

namespace EDA {

// A tree of boxes. It takes n log n to build. A question about a point goes only into the branches that hold
// it, and there in the order of the list: that many boxes lie on one another costs nothing.
class BoxIndex {
public:
    struct Box {
        double xLow;
        double zLow;
        double xHigh;
        double zHigh;

        bool contains(double x, double z) const { return x >= xLow && x <= xHigh && z >= zLow && z <= zHigh; }
    };

    // The numbers must be finite.
    explicit BoxIndex(const std::vector<Box> &boxes);

    // The place in the list of the first box that holds the point, border included, and that `accept(place)`
    // says yes to; -1 if there is none. Asks only about boxes that hold the point, in the order of the list.
    template <typename Accept> int findFirst(double x, double z, Accept accept) const;

private:
    struct Node {
        Box box;
        int first;    // The least place in the list of all boxes below; of a leaf, its own.
        int children; // The node of the first child, the other follows it; 0 for a leaf.
    };
    using Open = std::vector<int>; // Nodes still to be looked at, a heap with the least `first` on top.

    void fill(int node, const std::vector<Box> &boxes, std::vector<int>::iterator begin,
              std::vector<int>::iterator end);
    void push(Open &open, int node, double x, double z) const;
    const Node &pop(Open &open) const;

    std::vector<Node> nodes_; // The root first.
};

template <typename Accept> int BoxIndex::findFirst(double x, double z, Accept accept) const {
    Open open;
    if (!nodes_.empty()) push(open, 0, x, z);
    while (!open.empty()) {
        const Node &node = pop(open);
        if (node.children > 0) {
            push(open, node.children, x, z);
            push(open, node.children + 1, x, z);
        } else if (accept(node.first)) {
            return node.first;
        }
    }
    return -1;
}

} // namespace EDA
