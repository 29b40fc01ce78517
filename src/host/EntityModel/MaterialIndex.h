// The materials of a model by name.
#pragma once

#include "host/EntityModel/ChildAttributes.h"

#include <string>
#include <unordered_map>

namespace EntityModel {

// Finds materials in a model's list in constant time. An import asks for one per component, and a design may
// bring a material of its own with each; so may items of a library.
//
// Follows a list that grows. What it remembers are places, which it checks against the list before it
// answers, so a list that changed otherwise costs a new pass and never gives an entity that is gone.
class MaterialIndex {
public:
    // The first material of this name, with case, or null.
    Entity *find(const EntityList &list, const std::string &name);

    // Forgets the list. Due before each import or step, since in between materials may be renamed.
    void reset();

private:
    void follow(const EntityList &list);
    Entity *findKnown(const EntityList &list, const std::string &name) const;

    const EntityList *list_ = nullptr; // Compared, never followed.
    int numKnown_ = 0;
    std::unordered_map<std::string, int> places_;
};

} // namespace EntityModel
