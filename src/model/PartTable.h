// Finds components and placements by name and part number.
#pragma once

#include "model/KeyWatch.h"
#include "model/LookupTable.h"

#include <functional>
#include <string>
#include <vector>

namespace EDA {

// Look-up of `Item`s by name and part number, and by name alone. Elements appended to the
// vector are taken in at the next search; a vector that shrank, or an element renamed in
// place, rebuilds the table. Elements must not be exchanged otherwise.
template <typename Item> class PartTable {
public:
    // Calls `use(item)` for each item with this name and part number, in order, until it
    // returns false.
    template <typename Use>
    void eachPart(std::vector<Item> const &items, std::string const &name, std::string const &partNumber,
                  Use use) {
        update(items);
        for (auto at = byPart_.first(hash(name, partNumber)); at != PositionChains::none;
             at = byPart_.next(at)) {
            if (items[at].getName() != name || items[at].getPartNumber() != partNumber) continue;
            if (!use(items[at])) return;
        }
    }

    // The same for each item with this name, whatever its part number.
    template <typename Use> void eachName(std::vector<Item> const &items, std::string const &name, Use use) {
        update(items);
        for (auto at = byName_.first(hash(name)); at != PositionChains::none; at = byName_.next(at)) {
            if (items[at].getName() != name) continue;
            if (!use(items[at])) return;
        }
    }

private:
    static std::size_t hash(std::string const &name) { return std::hash<std::string>()(name); }
    static std::size_t hash(std::string const &name, std::string const &partNumber) {
        return combineHash(hash(name), hash(partNumber));
    }

    void update(std::vector<Item> const &items) {
        if (items.size() < known_ || changesSeen_ != KeyWatch::changes()) restart();
        for (; known_ < items.size(); ++known_) {
            auto const &item = items[known_];
            byPart_.append(hash(item.getName(), item.getPartNumber()), known_);
            byName_.append(hash(item.getName()), known_);
            item.watchKey();
        }
    }

    void restart() {
        byPart_.clear();
        byName_.clear();
        known_ = 0;
        changesSeen_ = KeyWatch::changes();
    }

    PositionChains byPart_;
    PositionChains byName_;
    std::size_t known_ = 0;
    std::uint64_t changesSeen_ = KeyWatch::changes();
};

} // namespace EDA
