// Search in the schema.
#include "host/EntityModel/Schema.h"

#include "host/EntityModel/Attribute.h"
#include "host/EntityModel/SchemaLoader.h"

#include <algorithm>
#include <charconv>

namespace EntityModel {

bool AttributeDef::takesChild(const Type &childType) const {
    return std::find(childTypes.begin(), childTypes.end(), childType) != childTypes.end();
}

EntityType::EntityType(const Type &type) : type_(type) {}

EntityType::~EntityType() = default;

const AttributeDef *EntityType::find(const Type &label) const {
    const auto found = byLabel_.find(label);
    return found != byLabel_.end() ? attributes_[static_cast<size_t>(found->second)].get() : nullptr;
}

const AttributeDef *EntityType::findWithin(const AttributeDef &group, const Type &label) const {
    // Members follow their group, those of inner groups among them.
    for (size_t i = static_cast<size_t>(group.index) + 1; i < attributes_.size(); ++i) {
        const AttributeDef &member = *attributes_[i];
        if (member.group < group.index) return nullptr;
        if (member.type == label) return &member;
        if (std::find(member.aliases.begin(), member.aliases.end(), label) != member.aliases.end()) {
            return &member;
        }
    }
    return nullptr;
}

const AttributeDef *EntityType::findElementList(const std::string &label, int &element) const {
    const size_t digits = label.find_last_not_of("0123456789") + 1;
    if (digits < 2 || digits == label.size() || label[digits - 1] != ' ' || label[digits] == '0')
        return nullptr;
    int number = 0;
    const char *const end = label.data() + label.size();
    if (std::from_chars(label.data() + digits, end, number).ec != std::errc()) return nullptr;
    const std::string_view word(label.data(), digits - 1);
    for (const auto &attribute : attributes_) {
        if (attribute->kind != AttributeKind::AttributeList || attribute->elementLabel != word) continue;
        element = number - 1;
        return attribute.get();
    }
    return nullptr;
}

Schema::Schema() = default;

const Schema &Schema::instance() {
    // Never destroyed: entities refer to it for as long as they live.
    static const Schema *const schema = SchemaLoader::load(SchemaLoader::builtIn()).release();
    return *schema;
}

const EntityType *Schema::find(const Type &type) const {
    const auto found = byType_.find(type);
    return found != byType_.end() ? found->second : nullptr;
}

} // namespace EntityModel
