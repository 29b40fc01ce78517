// Storage and search of an entity's attributes.
#include "host/EntityModel/Entity.h"

#include "host/EntityModel/Model.h"
#include "host/EntityModel/Types.h"

#include <algorithm>

namespace EntityModel {

namespace {

void appendChildren(const Attribute &attribute, std::vector<Entity *> &children) {
    if (attribute.isEntityList()) {
        const auto &list = static_cast<const EntityList &>(attribute);
        children.insert(children.end(), list.begin(), list.end());
    } else if (attribute.kind() == AttributeKind::OwningLink) {
        Entity *const target = static_cast<const OwningLink &>(attribute).target();
        if (target) children.push_back(target);
    }
}

void appendOfType(const CompositeAttribute &composite, const Type &type, bool recursive,
                  std::vector<Entity *> &found) {
    std::vector<Entity *> children;
    composite.getChildEntities(children);
    for (Entity *child : children) {
        if (child->getType() == type) found.push_back(child);
        if (recursive) appendOfType(*child, type, true, found);
    }
}

} // namespace

Attribute *CompositeAttribute::findAttribute(const AttributePath &path) {
    CompositeAttribute *composite = this;
    for (size_t i = 0;; ++i) {
        Attribute *const found = composite->findAttribute(TypeRef(path.step(i)), false);
        if (!found || i + 1 == path.size()) return found;
        composite = dynamic_cast<CompositeAttribute *>(found);
        if (!composite) return nullptr;
    }
}

void CompositeAttribute::getOwnedChildEntitiesOfType(std::vector<Entity *> &children, const TypeRef &type,
                                                     bool recursive, bool) const {
    appendOfType(*this, type, recursive, children);
}

Attribute *GroupAttribute::findAttribute(const TypeRef &label, bool) {
    Entity *const owner = getOwnerEntity();
    if (!owner) return nullptr;
    const AttributeDef *def = owner->entityType().findWithin(*definition(), label);
    return def ? &owner->attribute(*def) : nullptr;
}

const Attribute *GroupAttribute::readAttribute(const AttributePath &path) const {
    const Entity *const owner = getOwnerEntity();
    return owner ? owner->readWithin(definition(), path) : nullptr;
}

void GroupAttribute::getChildEntities(std::vector<Entity *> &) const {}

Entity::Entity(const EntityType &type) : CompositeAttribute(nullptr, nullptr), type_(type) {}

Entity::~Entity() {
    // A referrer that outlives its target must not point at it.
    while (referrers_ && !referrers_->empty()) referrers_->back()->relink(nullptr);
}

Entity *Entity::getOwnerEntity() const { return holder_ ? holder_->holderEntity() : nullptr; }

const std::string &Entity::getName(std::string &name, bool) const {
    name.clear();
    const Attribute *const attribute = readAttribute(AttributePath(Name_t));
    return attribute ? attribute->getString(name) : name;
}

Entity *Entity::getAncestor(const Type &type) const {
    for (Entity *owner = getOwnerEntity(); owner; owner = owner->getOwnerEntity()) {
        if (owner->getType() == type) return owner;
    }
    return nullptr;
}

void Entity::protect(const std::string &) { protected_ = true; }

Attribute &Entity::attribute(const AttributeDef &def) {
    const auto before = [](const Slot &slot, int index) { return slot->definition()->index < index; };
    const auto place = std::lower_bound(slots_.begin(), slots_.end(), def.index, before);
    if (place != slots_.end() && (*place)->definition()->index == def.index) return **place;
    return **slots_.insert(place, makeAttribute(def, this));
}

const Attribute *Entity::stored(const AttributeDef &def) const {
    const auto before = [](const Slot &slot, int index) { return slot->definition()->index < index; };
    const auto place = std::lower_bound(slots_.begin(), slots_.end(), def.index, before);
    return place != slots_.end() && (*place)->definition()->index == def.index ? place->get() : nullptr;
}

const Attribute &Entity::read(const AttributeDef &def) const {
    const Attribute *const found = stored(def);
    return found ? *found : *def.defaultAttribute;
}

Attribute *Entity::findAttribute(const TypeRef &label, bool) {
    if (const AttributeDef *def = type_.find(label)) return &attribute(*def);
    int element = 0;
    const AttributeDef *const list = type_.findElementList(label.getLabel(), element);
    return list ? static_cast<ListAttribute &>(attribute(*list)).at(element) : nullptr;
}

const Attribute *Entity::readAttribute(const AttributePath &path) const { return readWithin(nullptr, path); }

const Attribute *Entity::readWithin(const AttributeDef *group, const AttributePath &path) const {
    for (size_t i = 0;; ++i) {
        const AttributeDef *const def = group ? type_.findWithin(*group, path.step(i)) : type_.find(path.step(i));
        const bool isLast = i + 1 == path.size();
        if (!def) return isLast && !group ? readElement(path.step(i)) : nullptr;
        if (isLast) return &read(*def);
        group = def;
    }
}

const Attribute *Entity::readElement(const Type &label) const {
    int element = 0;
    const AttributeDef *const list = type_.findElementList(label.getLabel(), element);
    return list ? static_cast<const ListAttribute &>(read(*list)).at(element) : nullptr;
}

void Entity::getChildEntities(std::vector<Entity *> &children) const {
    forEachStored([&children](const Attribute &attribute) { appendChildren(attribute, children); });
}

Model *Entity::model() const {
    const Entity *top = this;
    while (const Entity *owner = top->getOwnerEntity()) top = owner;
    return dynamic_cast<Model *>(top->holder_);
}

bool Entity::isInside(const Entity *ancestor) const {
    for (const Entity *entity = this; entity; entity = entity->getOwnerEntity()) {
        if (entity == ancestor) return true;
    }
    return false;
}

const std::vector<ReferenceLink *> &Entity::referrers() const {
    static const std::vector<ReferenceLink *> none;
    return referrers_ ? *referrers_ : none;
}

} // namespace EntityModel
