// Names made unique within a set.
#include "host/EntityModel/UniqueIDSet.h"

namespace EntityModel {

std::string UniqueIDSet::addUnique(const std::string &name) {
    if (names_.insert(name).second) return name;
    // Nothing ever leaves the set, so numbers found taken once need no second look.
    unsigned long &number = nextNumber_.try_emplace(name, 1).first->second;
    for (;;) {
        std::string candidate = name + "-" + std::to_string(number++);
        if (names_.insert(candidate).second) return candidate;
    }
}

void UniqueIDSet::addUnique(std::string &result, const std::string &candidate) {
    result = addUnique(candidate);
}

} // namespace EntityModel
