// Reading values by path without storing anything.
#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"

namespace EntityModel {

namespace {

const Attribute *read(const CompositeAttribute *composite, const AttributePath &path) {
    return composite ? composite->readAttribute(path) : nullptr;
}

bool isNumber(const Attribute *attribute) {
    return attribute && (attribute->isDoubleAttribute() || attribute->kind() == AttributeKind::Integer);
}

} // namespace

TypeRef getTypeValue(const CompositeAttribute *composite, const AttributePath &path,
                     const TypeRef &defaultValue) {
    const Attribute *const attribute = read(composite, path);
    if (!attribute) return defaultValue;
    if (attribute->kind() == AttributeKind::Choice) {
        return static_cast<const ChoiceAttribute *>(attribute)->value();
    }
    if (attribute->kind() == AttributeKind::YesNo) return attribute->getBool() ? Yes_t : TypeRef("No");
    return defaultValue;
}

double getDoubleValue(const CompositeAttribute *composite, const AttributePath &path, const std::string &units,
                      double defaultValue) {
    const Attribute *const attribute = read(composite, path);
    return isNumber(attribute) ? attribute->getValueIn(units) : defaultValue;
}

double getStandardDoubleValue(const CompositeAttribute *composite, const AttributePath &path,
                              double defaultValue) {
    const Attribute *const attribute = read(composite, path);
    return isNumber(attribute) ? attribute->getStandardValue() : defaultValue;
}

std::string getPreciceStringValue(const CompositeAttribute *composite, const AttributePath &path,
                                  const std::string &defaultValue) {
    const Attribute *const attribute = read(composite, path);
    if (!attribute) return defaultValue;
    std::string text;
    return attribute->getString(text);
}

Entity *getLinkedEntity(const CompositeAttribute *composite, const AttributePath &path) {
    const Attribute *const attribute = read(composite, path);
    return attribute && attribute->isEntityLink() ? static_cast<const EntityLink *>(attribute)->target()
                                                  : nullptr;
}

void getLinkedEntities(const CompositeAttribute *composite, const AttributePath &path,
                       std::vector<Entity *> &entities) {
    const Attribute *const attribute = read(composite, path);
    if (!attribute) return;
    if (attribute->isEntityList()) {
        const auto *list = static_cast<const EntityList *>(attribute);
        entities.insert(entities.end(), list->begin(), list->end());
    } else if (Entity *target = getLinkedEntity(composite, path)) {
        entities.push_back(target);
    }
}

} // namespace EntityModel
