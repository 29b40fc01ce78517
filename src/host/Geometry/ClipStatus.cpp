// Keeping the list of crossed edges in blocks of bounded size.
#include "host/Geometry/ClipStatus.h"

#include <algorithm>

namespace Geometry {
namespace Clip {

namespace {

constexpr std::size_t firstRoom = 32; // edges; saves small inputs from growing it step by step

} // namespace

Index Status::before(Position const &position) const {
    if (position.offset > 0) return blocks_[position.block][position.offset - 1];
    return position.block > 0 ? blocks_[position.block - 1].back() : none;
}

void Status::erase(Position &position) {
    std::vector<Index> &block = blocks_[position.block];
    block.erase(block.begin() + static_cast<std::ptrdiff_t>(position.offset));
    if (block.empty()) {
        blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(position.block));
        position.offset = 0;
    } else if (position.offset == block.size()) {
        ++position.block;
        position.offset = 0;
    }
}

void Status::eraseAnywhere(Index edge) {
    for (std::size_t block = 0; block < blocks_.size(); ++block) {
        auto const found = std::find(blocks_[block].begin(), blocks_[block].end(), edge);
        if (found == blocks_[block].end()) continue;
        Position position{block, static_cast<std::size_t>(found - blocks_[block].begin())};
        erase(position);
        return;
    }
}

void Status::insert(Position &position, Index edge) {
    if (position.block == blocks_.size()) {
        if (blocks_.empty()) {
            blocks_.emplace_back();
            blocks_.back().reserve(firstRoom);
        }
        position = {blocks_.size() - 1, blocks_.back().size()};
    }
    std::vector<Index> &block = blocks_[position.block];
    block.insert(block.begin() + static_cast<std::ptrdiff_t>(position.offset), edge);
    ++position.offset;
    if (block.size() >= blockSize) splitBlock(position);
    if (position.offset == blocks_[position.block].size()) position = {position.block + 1, 0};
}

void Status::splitBlock(Position &position) {
    std::vector<Index> &block = blocks_[position.block];
    std::size_t const half = block.size() / 2;
    std::vector<Index> upper(block.begin() + static_cast<std::ptrdiff_t>(half), block.end());
    block.resize(half);
    blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(position.block) + 1, std::move(upper));
    if (position.offset >= half) position = {position.block + 1, position.offset - half};
}

} // namespace Clip
} // namespace Geometry
