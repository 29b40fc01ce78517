// Search of materials by name.
#include "host/EntityModel/MaterialIndex.h"

#include "host/EntityModel/Entity.h"

namespace EntityModel {

Entity *MaterialIndex::find(const EntityList &list, const std::string &name) {
    if (&list != list_ || list.size() < numKnown_) reset();
    follow(list);
    if (places_.count(name) == 0) return nullptr;
    if (Entity *const found = findKnown(list, name)) return found;
    reset();
    follow(list);
    return findKnown(list, name);
}

void MaterialIndex::reset() {
    list_ = nullptr;
    numKnown_ = 0;
    places_.clear();
}

void MaterialIndex::follow(const EntityList &list) {
    list_ = &list;
    std::string name;
    for (; numKnown_ < list.size(); ++numKnown_) {
        // The first of several namesakes stays.
        places_.emplace(list.at(numKnown_)->getName(name), numKnown_);
    }
}

Entity *MaterialIndex::findKnown(const EntityList &list, const std::string &name) const {
    const auto place = places_.find(name);
    Entity *const material = place != places_.end() ? list.at(place->second) : nullptr;
    std::string itsName;
    return material && material->getName(itsName) == name ? material : nullptr;
}

} // namespace EntityModel
