// Attributes that hold entities: lists of children, owning links, references.
#pragma once

#include "host/EntityModel/Attribute.h"

#include <unordered_set>
#include <vector>

namespace EntityModel {

class Entity;

// What owns child entities: an entity list, an owning link, or a model for its root.
class ChildHolder {
public:
    virtual ~ChildHolder() = default;

    virtual Entity *holderEntity() const = 0; // the entity whose attribute this is; null for a model
    virtual int childCount() const = 0;
    virtual Entity *childAt(int index) const = 0; // null outside
    virtual bool canTake(const Type &childType) const = 0; // the right type, and room for one more

    // Low-level moves of ownership, without undo. An index of -1 or past the end appends.
    virtual void insertChild(int index, std::unique_ptr<Entity> child) = 0;
    virtual std::unique_ptr<Entity> removeChild(Entity *child, int &index) = 0;
};

// Owned child entities in creation order.
class EntityList : public Attribute, public ChildHolder {
public:
    EntityList(const AttributeDef *def, Entity *owner) : Attribute(def, owner) {}
    ~EntityList() override;

    int size() const { return static_cast<int>(children_.size()); }
    Entity *at(int index) const { return childAt(index); }
    std::vector<Entity *>::const_iterator begin() const { return children_.begin(); }
    std::vector<Entity *>::const_iterator end() const { return children_.end(); }

    // Deletes the children, as one undoable edit.
    void clear();

    // Without undo, each in one pass: removes the children of a set and gives them with their old places,
    // ascending; puts them back there.
    struct Placed {
        int index;
        std::unique_ptr<Entity> child;
    };
    std::vector<Placed> removeChildren(const std::unordered_set<const Entity *> &removed);
    void insertChildren(std::vector<Placed> children);

    Entity *holderEntity() const override { return getOwnerEntity(); }
    int childCount() const override { return size(); }
    Entity *childAt(int index) const override;
    bool canTake(const Type &childType) const override;
    void insertChild(int index, std::unique_ptr<Entity> child) override;
    std::unique_ptr<Entity> removeChild(Entity *child, int &index) override;

    bool isDefault() const override;

private:
    std::vector<Entity *> children_; // Owned.
};

// A link to another entity, owned or not.
class EntityLink : public Attribute {
public:
    virtual Entity *target() const = 0;

protected:
    using Attribute::Attribute;
};

// At most one owned child.
class OwningLink : public EntityLink, public ChildHolder {
public:
    OwningLink(const AttributeDef *def, Entity *owner);
    ~OwningLink() override;

    Entity *target() const override { return child_.get(); }

    Entity *holderEntity() const override { return getOwnerEntity(); }
    int childCount() const override { return child_ ? 1 : 0; }
    Entity *childAt(int index) const override { return index == 0 ? child_.get() : nullptr; }
    bool canTake(const Type &childType) const override;
    void insertChild(int index, std::unique_ptr<Entity> child) override;
    std::unique_ptr<Entity> removeChild(Entity *child, int &index) override;

    bool isDefault() const override;

private:
    std::unique_ptr<Entity> child_;
};

// A reference to an entity elsewhere. The target knows its referrers, so that deleting it clears them.
class ReferenceLink : public EntityLink {
public:
    ReferenceLink(const AttributeDef *def, Entity *owner) : EntityLink(def, owner) {}
    ~ReferenceLink() override;

    Entity *target() const override { return target_; }
    bool setTarget(Entity *target); // null clears; a wrong type is refused

    bool isDefault() const override;
    bool sameValue(const Attribute *other) const override;
    Attribute *clone() const override;
    void swapValue(Attribute &other) override;

private:
    friend class Entity;
    ReferenceLink(const ReferenceLink &other);
    void relink(Entity *target);

    Entity *target_ = nullptr;
    size_t place_ = 0; // Of this link among the target's referrers, so that unlinking is never a search.
};

} // namespace EntityModel
