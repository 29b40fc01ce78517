// Entities: the nodes of the typed tree.
#pragma once

#include "host/EntityModel/AttributePath.h"
#include "host/EntityModel/ChildAttributes.h"
#include "host/EntityModel/ValueAttributes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace EntityModel {

class Model;
class UndoStack;

// The id of an entity: unique in its model, never empty as text, fit for file names.
class ID {
public:
    explicit ID(std::uint64_t value = 0) : value_(value) {}
    std::string toString() const { return std::to_string(value_); }
    std::uint64_t value() const { return value_; }
    bool operator==(const ID &other) const { return value_ == other.value_; }

private:
    std::uint64_t value_;
};

// An attribute with members: an entity, a group such as "Geometry", a composite such as "Conductivity".
class CompositeAttribute : public Attribute {
public:
    // The member of this label at any depth of groups, or null. The search never enters child entities. The
    // flag is accepted for the interface and has no meaning in this host.
    virtual Attribute *findAttribute(const TypeRef &label, bool flag = false) = 0;
    Attribute *findAttribute(const AttributePath &path);
    Attribute *findAttribute(const std::string &label) { return findAttribute(TypeRef(label), false); }
    Attribute *findAttribute(const char *label, bool flag = false) {
        return findAttribute(TypeRef(label), flag);
    }

    // The same for reading: gives the default where the entity stores none, and stores nothing.
    virtual const Attribute *readAttribute(const AttributePath &path) const = 0;

    // All owned children over all lists and owning links, in the order of the schema and of each list.
    virtual void getChildEntities(std::vector<Entity *> &children) const = 0;

    // Appends the owned children of exactly this type. Callers pass false, true: direct children only.
    void getOwnedChildEntitiesOfType(std::vector<Entity *> &children, const TypeRef &type, bool recursive,
                                     bool direct) const;

protected:
    using Attribute::Attribute;
};

// A group or composite of an entity. The entity stores the members.
class GroupAttribute : public CompositeAttribute {
public:
    GroupAttribute(const AttributeDef *def, Entity *owner) : CompositeAttribute(def, owner) {}
    using CompositeAttribute::findAttribute;
    Attribute *findAttribute(const TypeRef &label, bool flag = false) override;
    const Attribute *readAttribute(const AttributePath &path) const override;
    void getChildEntities(std::vector<Entity *> &children) const override;
    Attribute *clone() const override { return new GroupAttribute(*this); }
};

// A node of the model. It stores only the attributes that were asked for or set; all others are the
// schema's defaults. Made by EntityEditor::createEntity or as the root of a Model.
class Entity final : public CompositeAttribute {
public:
    explicit Entity(const EntityType &type);
    ~Entity() override;

    const Type &getType() const override { return type_.type(); }
    AttributeKind kind() const override { return AttributeKind::Composite; }
    Entity *getOwnerEntity() const override;

    // The "Name" attribute's text, written to `name` and given back by reference.
    const std::string &getName(std::string &name, bool flag = false) const;
    ID getID() const { return ID(id_); }

    // The nearest owner of this type, not the entity itself, or null.
    Entity *getAncestor(const Type &type) const;

    // Marks the entity as protected from the user. It never stops EntityEditor.
    void protect(const std::string &reason);
    bool isProtected() const { return protected_; }

    using CompositeAttribute::findAttribute;
    Attribute *findAttribute(const TypeRef &label, bool flag = false) override;
    const Attribute *readAttribute(const AttributePath &path) const override;
    void getChildEntities(std::vector<Entity *> &children) const override;

    // An attribute by its definition: stored, stored now with its default, or only if stored.
    Attribute &attribute(const AttributeDef &def);
    const Attribute *stored(const AttributeDef &def) const;
    const Attribute &read(const AttributeDef &def) const;
    const Attribute *readWithin(const AttributeDef *group, const AttributePath &path) const;

    const EntityType &entityType() const { return type_; }

    // Visits the stored attributes in the order of the schema.
    template <typename Visitor> void forEachStored(Visitor visit) const {
        for (const Slot &slot : slots_)
            visit(*slot);
    }

    ChildHolder *holder() const { return holder_; }
    Model *model() const; // null for an entity outside every model
    bool isHeldByStep() const {
        return id_ != 0 && !model();
    }                                            // was in a model, may come back by undo or redo
    bool isInside(const Entity *ancestor) const; // this entity or below it
    const std::vector<ReferenceLink *> &referrers() const;

private:
    friend class EntityList;
    friend class OwningLink;
    friend class ReferenceLink;
    friend class EntityEditor;
    friend class UndoStack;
    friend class Model;
    friend class ModelReader;
    using Slot = std::unique_ptr<Attribute>;

    void setHolder(ChildHolder *holder) { holder_ = holder; }
    const Attribute *readElement(const Type &label) const;

    const EntityType &type_;
    std::vector<Slot> slots_; // Sorted by definition index.
    ChildHolder *holder_ = nullptr;
    std::unique_ptr<std::vector<ReferenceLink *>> referrers_;
    std::uint64_t id_ = 0;
    std::uint32_t createdInStep_ = 0; // The undo step that made it: edits within that step need no record.
    bool protected_ = false;
};

// Reads of attributes by path that never store anything. `composite` may be null: then the default.

// A choice's value as a type; "Yes" or "No" of a yes-no; `defaultValue` if absent.
TypeRef getTypeValue(const CompositeAttribute *composite, const AttributePath &path,
                     const TypeRef &defaultValue);

// A number in `units`, or the default. An empty or unknown unit means the attribute's own unit.
double getDoubleValue(const CompositeAttribute *composite, const AttributePath &path,
                      const std::string &units, double defaultValue);

// A number in the quantity's standard unit, or the default.
double getStandardDoubleValue(const CompositeAttribute *composite, const AttributePath &path,
                              double defaultValue);

// The value as text at full precision: reading the text back gives the same number. (So spelt.)
std::string getPreciceStringValue(const CompositeAttribute *composite, const AttributePath &path,
                                  const std::string &defaultValue);

// The target of a link, or null.
Entity *getLinkedEntity(const CompositeAttribute *composite, const AttributePath &path);

// Appends the target of a link, or the members of an entity list.
void getLinkedEntities(const CompositeAttribute *composite, const AttributePath &path,
                       std::vector<Entity *> &entities);

} // namespace EntityModel
