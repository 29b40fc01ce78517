// The materials of a model by name.
#pragma once

#include "host/EntityModel/ChildAttributes.h"

#include <string>
#include <unordered_map>

namespace EDA {

// Finds materials in a model's list in constant time. An import asks for one per component, and a design may
// bring a material of its own with each.
//
// Follows a list that grows. What it remembers are places, which it checks against the list before it
// answers, so a list that changed otherwise costs a new pass and never gives an entity that is gone.
class MaterialIndex {
public:
    // The first material of this name, with case, or null.
    EntityModel::Entity *find(const EntityModel::EntityList &list, const std::string &name);

    // Forgets the list. Due before each import, since between imports materials may be renamed.
    void reset();

private:
    void follow(const EntityModel::EntityList &list);
    EntityModel::Entity *findKnown(const EntityModel::EntityList &list, const std::string &name) const;

    const EntityModel::EntityList *list_ = nullptr; // Compared, never followed.
    int numKnown_ = 0;
    std::unordered_map<std::string, int> places_;
};

} // namespace EDA
