// Names made unique within a set.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace EntityModel {

// Gives each name once: the first "via" stays "via", the next becomes "via-1", then "via-2".
class UniqueIDSet {
public:
    // The name itself if it is new to the set, else the name with the lowest free number behind it. The
    // result is in the set from then on. Constant time on average.
    std::string addUnique(const std::string &name);

    // The same, the result written to `result`, which may be `candidate` itself.
    void addUnique(std::string &result, const std::string &candidate);

private:
    std::unordered_set<std::string> names_;
    std::unordered_map<std::string, unsigned long> nextNumber_;
};

} // namespace EntityModel
