// What all attributes share, and the making of attributes from their definitions.
#include "host/EntityModel/Attribute.h"

#include "host/EntityModel/Entity.h"

#include <utility>

namespace EntityModel {

Attribute::~Attribute() = default;

const Type &Attribute::getType() const { return def_ ? def_->type : TypeFactory::emptyType(); }

AttributeKind Attribute::kind() const { return def_->kind; }

void Attribute::setLocked(bool locked) { setFlagBit(LockedFlag, locked); }

bool Attribute::isDisabled() const {
    if (!owner_ || !def_ || def_->enabledBy.isEmpty()) return false;
    const Attribute *const choice = owner_->readAttribute(AttributePath(def_->enabledBy));
    return !choice || !choice->isValue(def_->enabledWhen);
}

bool Attribute::setFromString(const std::string &) { return false; }

const std::string &Attribute::getString(std::string &text) const {
    text.clear();
    return text;
}

bool Attribute::sameValue(const Attribute *other) const {
    if (!other || other->kind() != kind()) return false;
    std::string mine, others;
    return getString(mine) == other->getString(others);
}

bool Attribute::isValue(const TypeRef &) const { return false; }

double Attribute::getValueIn(const std::string &) const { return getStandardValue(); }

bool Attribute::isDefault() const {
    return flags_ == 0 && (!def_ || !def_->defaultAttribute || sameValue(def_->defaultAttribute.get()));
}

void Attribute::swapValue(Attribute &other) { std::swap(flags_, other.flags_); }

namespace {

std::unique_ptr<Attribute> makeOfKind(const AttributeDef &def, Entity *owner) {
    switch (def.kind) {
    case AttributeKind::Group:
    case AttributeKind::Composite:
        return std::make_unique<GroupAttribute>(&def, owner);
    case AttributeKind::Text:
        return std::make_unique<TextAttribute>(&def, owner);
    case AttributeKind::Number:
        return std::make_unique<DoubleAttribute>(&def, owner);
    case AttributeKind::Integer:
        return std::make_unique<IntegerAttribute>(&def, owner);
    case AttributeKind::Choice:
        return std::make_unique<ChoiceAttribute>(&def, owner);
    case AttributeKind::YesNo:
        return std::make_unique<YesNoAttribute>(&def, owner);
    case AttributeKind::DoubleList:
        return std::make_unique<DoubleListAttribute>(&def, owner);
    case AttributeKind::IntList:
        return std::make_unique<IntListAttribute>(&def, owner);
    case AttributeKind::AttributeList:
        return std::make_unique<ListAttribute>(&def, owner);
    case AttributeKind::EntityList:
        return std::make_unique<EntityList>(&def, owner);
    case AttributeKind::OwningLink:
        return std::make_unique<OwningLink>(&def, owner);
    case AttributeKind::ReferenceLink:
        return std::make_unique<ReferenceLink>(&def, owner);
    }
    return nullptr;
}

} // namespace

std::unique_ptr<Attribute> makeAttribute(const AttributeDef &def, Entity *owner) {
    std::unique_ptr<Attribute> made = makeOfKind(def, owner);
    if (def.defaultAttribute) {
        const std::unique_ptr<Attribute> value(def.defaultAttribute->clone());
        if (value) made->swapValue(*value);
    }
    return made;
}

} // namespace EntityModel
