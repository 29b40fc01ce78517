// The parts that are there, and which hangs on which.
#pragma once

#include "host/Geometry/Part.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace EntityGUI {

// Parts by entity. The parent of a part is that of the nearest owner that had one when the part was put in;
// it follows when that one is replaced and is gone when that one is erased.
//
// Each operation takes constant time, or time in the number of the parts that hang on the one it is about.
// No operation but `put` looks into an entity other than its argument.
class PartTree {
public:
    PartTree();
    ~PartTree();
    PartTree(PartTree const &) = delete;
    PartTree &operator=(PartTree const &) = delete;

    // The part of the entity, or null. A part left behind by a dead entity is not given for a new one that
    // came to lie at its address.
    Geometry::Part *find(EntityModel::Entity const *entity) const;

    // Puts in a part of `entity`, in place of the one there.
    Geometry::Part *put(EntityModel::Entity *entity, std::unique_ptr<Geometry::Geometry> geometry);

    void erase(EntityModel::Entity const *entity);
    void clear();

private:
    struct Node;

    Node *findNode(EntityModel::Entity const *entity) const;
    Node *nearestOwner(EntityModel::Entity const *entity) const;
    static void attach(Node &node, Node *parent);
    static void detach(Node &node);

    std::unordered_map<EntityModel::Entity const *, std::unique_ptr<Node>> nodes_;
};

} // namespace EntityGUI
