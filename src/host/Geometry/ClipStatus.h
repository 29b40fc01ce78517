// The edges that a sweep line crosses, from low to high.
#pragma once

#include "host/Geometry/ClipNoder.h"

#include <vector>

namespace Geometry {
namespace Clip {

// An ordered list in blocks, so that finding, inserting and erasing stay cheap however
// many edges the line crosses.
class Status {
public:
    struct Position {
        std::size_t block = 0;
        std::size_t offset = 0;
    };

    bool atEnd(Position const &position) const { return position.block >= blocks_.size(); }
    Index at(Position const &position) const { return blocks_[position.block][position.offset]; }

    // The edge before the position, or `none`.
    Index before(Position const &position) const;

    // The first position whose edge `isBelow` does not hold for. It must hold for a lower part.
    template <typename IsBelow> Position find(IsBelow const &isBelow) const;

    // Puts another edge in the place of the one there.
    void replace(Position const &position, Index edge) { blocks_[position.block][position.offset] = edge; }

    // Erases the edge there; the position then names the one that followed.
    void erase(Position &position);

    // Erases the edge wherever it is.
    void eraseAnywhere(Index edge);

    // Inserts before the position, which then names the place behind the new edge.
    void insert(Position &position, Index edge);

private:
    static constexpr std::size_t blockSize = 256;

    void splitBlock(Position &position);

    std::vector<std::vector<Index>> blocks_; // none is empty
};

template <typename IsBelow> Status::Position Status::find(IsBelow const &isBelow) const {
    std::size_t low = 0, high = blocks_.size();
    while (low < high) {
        std::size_t const middle = (low + high) / 2;
        if (isBelow(blocks_[middle].back()))
            low = middle + 1;
        else
            high = middle;
    }
    Position position{low, 0};
    if (low == blocks_.size()) return position;
    std::size_t offsetHigh = blocks_[low].size();
    while (position.offset < offsetHigh) {
        std::size_t const middle = (position.offset + offsetHigh) / 2;
        if (isBelow(blocks_[low][middle]))
            position.offset = middle + 1;
        else
            offsetHigh = middle;
    }
    return position;
}

} // namespace Clip
} // namespace Geometry
