// Attributes: the named values, lists and links of an entity.
#pragma once

#include "host/EntityModel/Schema.h"

#include <cstdint>
#include <memory>
#include <string>

namespace EntityModel {

class CompositeAttribute;
class Entity;

// The base of every attribute, and of entities themselves.
//
// Change attributes of a model through EntityEditor, which records the change for undo. The setters here
// record nothing; they serve options and clones, which no undo covers. A setter that cannot take what it is
// given answers false and leaves the value as it was.
class Attribute {
public:
    virtual ~Attribute();
    Attribute &operator=(const Attribute &) = delete;

    virtual const Type &getType() const;

    // The entity that has this attribute; for an entity, the entity that owns it. Null at the top of the tree
    // and for an unowned clone.
    virtual Entity *getOwnerEntity() const { return owner_; }

    virtual AttributeKind kind() const;

    // Locks bind the user of a dialog; EntityEditor writes to locked attributes all the same.
    void setLocked(bool locked);
    bool isLocked() const { return (flags_ & LockedFlag) != 0; }

    // One extra mark that a dialog may show; it has no effect on reading or writing the value.
    void setFlag(bool flag) { setFlagBit(MarkFlag, flag); }
    bool getFlag() const { return (flags_ & MarkFlag) != 0; }

    // True while the value has no meaning for its entity: the angle to the board of a part that is no
    // cylinder. It follows another attribute, as the schema says, and stops no reading or writing.
    bool isDisabled() const;

    // Sets the value from its text form. False if this kind or this attribute cannot take it.
    virtual bool setFromString(const std::string &text);

    // The value's text, written to `text` and given back by reference. Numbers carry their unit.
    virtual const std::string &getString(std::string &text) const;

    virtual bool sameValue(const Attribute *other) const;

    // Is the value, of a choice or a yes-no, this one?
    virtual bool isValue(const TypeRef &value) const;
    bool isValue(const char *value) const { return isValue(TypeRef(value)); }

    virtual bool getBool() const { return false; }

    // The number in the quantity's standard unit; 0.0 for an attribute that is no number.
    virtual double getStandardValue() const { return 0.0; }

    // The number in `units`; an empty or unknown unit means the attribute's own display unit.
    virtual double getValueIn(const std::string &units) const;

    // An unowned copy with the same value, units, limits, lock and mark. Null for lists of entities, links
    // and composites. The caller deletes it.
    virtual Attribute *clone() const { return nullptr; }

    bool isDoubleAttribute() const { return kind() == AttributeKind::Number; }
    bool isEntityLink() const {
        return kind() == AttributeKind::OwningLink || kind() == AttributeKind::ReferenceLink;
    }
    bool isDoubleListAttribute() const { return kind() == AttributeKind::DoubleList; }
    bool isEntityList() const { return kind() == AttributeKind::EntityList; }

    // What the schema says of this attribute; null for an entity.
    const AttributeDef *definition() const { return def_; }

    // True when value, units, lock and mark are what a new entity has.
    virtual bool isDefault() const;

    // Exchanges value, units, lock and mark with an attribute of the same definition. Undo is built on it.
    virtual void swapValue(Attribute &other);

protected:
    Attribute(const AttributeDef *def, Entity *owner) : owner_(owner), def_(def) {}
    Attribute(const Attribute &other) : def_(other.def_), flags_(other.flags_) {}

    void setOwner(Entity *owner) { owner_ = owner; }

private:
    enum Flag : std::uint8_t { LockedFlag = 1, MarkFlag = 2 };
    void setFlagBit(Flag bit, bool on) {
        flags_ = static_cast<std::uint8_t>(on ? (flags_ | bit) : (flags_ & ~bit));
    }

    Entity *owner_ = nullptr;
    const AttributeDef *def_ = nullptr;
    std::uint8_t flags_ = 0;
};

// Makes an attribute of a definition with its default value.
std::unique_ptr<Attribute> makeAttribute(const AttributeDef &def, Entity *owner);

} // namespace EntityModel
