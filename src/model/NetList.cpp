// The sorted nets of a layer: adding, ordering and searching.
#include "model/NetList.h"

#include "text/Text.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace EDA {

void NetList::add(EDANet const &net) { add(EDANet(net)); }

void NetList::add(EDANet &&net) {
    nets_.push_back(std::move(net));
    keys_.push_back(upperCase(nets_.back().getName()));
    if (keyChangesSeen_ != KeyWatch::changes()) refreshKeys();
}

// A net was renamed in place: an addition puts it where its new name belongs.
void NetList::refreshKeys() {
    keyChangesSeen_ = KeyWatch::changes();
    for (std::size_t i = 0; i < nets_.size(); ++i)
        keys_[i] = upperCase(nets_[i].getName());
    order_.clear();
    table_ = LazyTable<Table>();
}

void NetList::sort() const {
    if (order_.size() == nets_.size()) return;
    auto const sorted = static_cast<std::ptrdiff_t>(order_.size());
    order_.resize(nets_.size());
    auto const tail = order_.begin() + sorted;
    std::iota(tail, order_.end(), static_cast<std::size_t>(sorted));
    auto const byKey = [this](std::size_t a, std::size_t b) { return keys_[a] < keys_[b]; };
    std::stable_sort(tail, order_.end(), byKey);
    std::inplace_merge(order_.begin(), tail, order_.end(), byKey);
}

std::size_t NetList::position(int index, char const *caller) const {
    if (index < 0 || static_cast<std::size_t>(index) >= nets_.size())
        throw std::out_of_range(std::string("Index out of range in ") + caller);
    sort();
    return order_[static_cast<std::size_t>(index)];
}

EDANet &NetList::at(int index, char const *caller) {
    auto &net = nets_[position(index, caller)];
    net.watchKey();
    return net;
}

EDANet const &NetList::at(int index, char const *caller) const { return nets_[position(index, caller)]; }

EDANet *NetList::find(std::string const &name) {
    auto const &chains = updateTable();
    auto at = chains.first(std::hash<std::string>()(name));
    while (at != PositionChains::none && nets_[at].getName() != name)
        at = chains.next(at);
    if (at == PositionChains::none) return nullptr;
    nets_[at].watchKey();
    return &nets_[at];
}

PositionChains const &NetList::updateTable() {
    auto &table = table_.get();
    auto const append = [&](std::size_t at) {
        table.chains.append(std::hash<std::string>()(nets_[at].getName()), at);
    };
    if (table.changesSeen != KeyWatch::changes()) {
        // After a renaming in place the order stays as it was, so equal names are found by it.
        table = Table{PositionChains(), 0, KeyWatch::changes()};
        sort();
        std::for_each(order_.begin(), order_.end(), append);
        table.known = nets_.size();
    }
    for (; table.known < nets_.size(); ++table.known)
        append(table.known);
    return table.chains;
}

NetList::Iterator NetList::begin() const {
    sort();
    return Iterator(nets_, order_.begin());
}

NetList::Iterator NetList::end() const {
    sort();
    return Iterator(nets_, order_.end());
}

} // namespace EDA
