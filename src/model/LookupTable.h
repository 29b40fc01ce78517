// Building blocks of the look-up tables: chains of positions, and a holder that copies as empty.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace EDA {

// Positions in a vector, chained by the hash of their keys, each chain in the order of
// `append`. A position can be in one chain only. Chains can mix keys of equal hash, so the
// reader compares the element itself.
class PositionChains {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    void append(std::size_t hash, std::size_t position) {
        if (next_.size() <= position) next_.resize(position + 1, none);
        auto const [chain, isNew] = ends_.try_emplace(hash, position, position);
        if (isNew) return;
        next_[chain->second.second] = position;
        chain->second.second = position;
    }

    // First position of the chain, or `none`.
    std::size_t first(std::size_t hash) const {
        auto const chain = ends_.find(hash);
        return chain == ends_.end() ? none : chain->second.first;
    }

    // The position behind this one in its chain, or `none`.
    std::size_t next(std::size_t position) const { return next_[position]; }

    void clear() {
        ends_.clear();
        next_.clear();
    }

private:
    std::unordered_map<std::size_t, std::pair<std::size_t, std::size_t>> ends_;
    std::vector<std::size_t> next_;
};

// Mixes one more hash into `seed`.
inline std::size_t combineHash(std::size_t seed, std::size_t hash) {
    return seed ^ (hash + static_cast<std::size_t>(0x9e3779b97f4a7c15ULL) + (seed << 6) + (seed >> 2));
}

// Holds a table that can be rebuilt from its owner at any time. It is made at first use, so
// that an owner without searches pays one pointer, and it is not copied with its owner.
template <typename Table> class LazyTable {
public:
    LazyTable() = default;
    LazyTable(LazyTable const &) noexcept {}
    LazyTable(LazyTable &&) noexcept = default;
    LazyTable &operator=(LazyTable const &) noexcept {
        table_.reset();
        return *this;
    }
    LazyTable &operator=(LazyTable &&) noexcept = default;
    ~LazyTable() = default;

    Table &get() {
        if (!table_) table_ = std::make_unique<Table>();
        return *table_;
    }

private:
    std::unique_ptr<Table> table_;
};

} // namespace EDA
