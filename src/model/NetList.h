// The nets of a layer, sorted by name.
#pragma once

#include "model/EDANet.h"
#include "model/LookupTable.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

namespace EDA {

// Nets in the order that results from sorting by name after every `add`: without regard to
// case, nets of equal names in the order added. Adding costs no sort, as the nets stay where
// they are and only their order is sorted, when it is first asked for after an addition.
class NetList {
public:
    // Goes through the nets in order. As with a vector, an addition makes it invalid.
    class Iterator {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = EDANet;
        using difference_type = std::ptrdiff_t;
        using pointer = EDANet const *;
        using reference = EDANet const &;

        Iterator() = default;
        Iterator(std::vector<EDANet> const &nets, std::vector<std::size_t>::const_iterator at)
            : nets_(&nets), at_(at) {}

        reference operator*() const { return (*nets_)[*at_]; }
        pointer operator->() const { return &**this; }
        Iterator &operator++() { return ++at_, *this; }
        Iterator &operator--() { return --at_, *this; }
        Iterator operator++(int) { return Iterator(*nets_, at_++); }
        Iterator operator--(int) { return Iterator(*nets_, at_--); }
        bool operator==(Iterator const &other) const { return at_ == other.at_; }
        bool operator!=(Iterator const &other) const { return at_ != other.at_; }

    private:
        std::vector<EDANet> const *nets_ = nullptr;
        std::vector<std::size_t>::const_iterator at_;
    };

    void add(EDANet const &net);
    void add(EDANet &&net);

    std::size_t size() const { return nets_.size(); }

    // The net at a place of the order, counted from 0. A bad index throws `std::out_of_range`
    // with the text "Index out of range in " and `caller`.
    EDANet &at(int index, char const *caller);
    EDANet const &at(int index, char const *caller) const;

    // The first net with exactly this name (case counts), or null. Its time does not grow with
    // the number of nets, unless a net was renamed in place since the last search.
    EDANet *find(std::string const &name);

    Iterator begin() const;
    Iterator end() const;

private:
    struct Table {
        PositionChains chains;
        std::size_t known = 0;
        std::uint64_t changesSeen = 0;
    };

    void refreshKeys();
    void sort() const;
    std::size_t position(int index, char const *caller) const;
    PositionChains const &updateTable();

    std::vector<EDANet> nets_;      // in the order added
    std::vector<std::string> keys_; // the names in upper case, as they were at the last addition
    std::uint64_t keyChangesSeen_ = KeyWatch::changes();
    // Positions in nets_, sorted by key. Shorter than nets_ while additions wait to be sorted in.
    mutable std::vector<std::size_t> order_;
    LazyTable<Table> table_;
};

} // namespace EDA
