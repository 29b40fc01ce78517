// Keeping parts by entity and their ties.
#include "host/EntityCore/PartTree.h"

#include "host/EntityModel/Entity.h"

#include <utility>

namespace EntityGUI {

using EntityModel::Entity;

struct PartTree::Node {
    std::uint64_t id = 0;
    std::unique_ptr<Geometry::Part> part;
    Node *parent = nullptr;
    std::size_t place = 0; // among the children of the parent
    std::vector<Node *> children;
};

PartTree::PartTree() = default;

PartTree::~PartTree() = default;

PartTree::Node *PartTree::findNode(Entity const *entity) const {
    auto const found = nodes_.find(entity);
    bool const isIt = found != nodes_.end() && found->second->id == entity->getID().value();
    return isIt ? found->second.get() : nullptr;
}

Geometry::Part *PartTree::find(Entity const *entity) const {
    Node const *const node = findNode(entity);
    return node ? node->part.get() : nullptr;
}

PartTree::Node *PartTree::nearestOwner(Entity const *entity) const {
    for (Entity const *owner = entity->getOwnerEntity(); owner; owner = owner->getOwnerEntity())
        if (Node *const node = findNode(owner)) return node;
    return nullptr;
}

void PartTree::attach(Node &node, Node *parent) {
    node.parent = parent;
    if (!parent) return;
    node.place = parent->children.size();
    parent->children.push_back(&node);
}

void PartTree::detach(Node &node) {
    if (!node.parent) return;
    std::vector<Node *> &siblings = node.parent->children;
    siblings[node.place] = siblings.back();
    siblings[node.place]->place = node.place;
    siblings.pop_back();
    node.parent = nullptr;
}

Geometry::Part *PartTree::put(Entity *entity, std::unique_ptr<Geometry::Geometry> geometry) {
    if (!findNode(entity)) erase(entity);
    std::unique_ptr<Node> &slot = nodes_[entity];
    if (!slot) slot = std::make_unique<Node>();
    Node &node = *slot;
    node.id = entity->getID().value();
    detach(node);
    attach(node, nearestOwner(entity));
    node.part = std::make_unique<Geometry::Part>(entity, std::move(geometry),
                                                 node.parent ? node.parent->part.get() : nullptr);
    for (Node *const child : node.children)
        child->part->setParent(node.part.get());
    return node.part.get();
}

void PartTree::erase(Entity const *entity) {
    auto const found = nodes_.find(entity);
    if (found == nodes_.end()) return;
    detach(*found->second);
    for (Node *const child : found->second->children) {
        child->parent = nullptr;
        child->part->setParent(nullptr);
    }
    nodes_.erase(found);
}

void PartTree::clear() { nodes_.clear(); }

} // namespace EntityGUI
