// Reads the schema of the entity types from its JSON text.
#include "host/EntityModel/SchemaLoader.h"

#include "host/EntityModel/Attribute.h"

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

// The text of schema.json; the build makes a source file of it.
extern const unsigned char edaEntitySchema[];
extern const size_t edaEntitySchemaSize;

namespace EntityModel {

namespace {

using rapidjson::Value;

constexpr int mixinDepth = 16; // A mixin that holds itself ends here.

struct KindRow {
    const char *name;
    AttributeKind kind;
    const char *quantity; // of a kind that implies one
    bool nonNegative;
};

const KindRow kindRows[] = {
    {"group", AttributeKind::Group, nullptr, false},
    {"composite", AttributeKind::Composite, nullptr, false},
    {"text", AttributeKind::Text, nullptr, false},
    {"length", AttributeKind::Number, "Length", true},
    {"location", AttributeKind::Number, "Length", false},
    {"number", AttributeKind::Number, nullptr, false},
    {"integer", AttributeKind::Integer, nullptr, false},
    {"choice", AttributeKind::Choice, nullptr, false},
    {"yesNo", AttributeKind::YesNo, nullptr, false},
    {"doubleList", AttributeKind::DoubleList, nullptr, false},
    {"intList", AttributeKind::IntList, nullptr, false},
    {"attributeList", AttributeKind::AttributeList, nullptr, false},
    {"entityList", AttributeKind::EntityList, nullptr, false},
    {"owningLink", AttributeKind::OwningLink, nullptr, false},
    {"referenceLink", AttributeKind::ReferenceLink, nullptr, false},
};

bool hasQuantity(AttributeKind kind) {
    return kind == AttributeKind::Number || kind == AttributeKind::DoubleList ||
           kind == AttributeKind::AttributeList;
}

bool takesEntities(AttributeKind kind) {
    return kind == AttributeKind::EntityList || kind == AttributeKind::OwningLink ||
           kind == AttributeKind::ReferenceLink;
}

bool isComposite(AttributeKind kind) {
    return kind == AttributeKind::Group || kind == AttributeKind::Composite;
}

std::string textOf(const Value &value) { return std::string(value.GetString(), value.GetStringLength()); }

} // namespace

class SchemaLoader::Work {
public:
    explicit Work(std::string_view json) : schema_(new Schema) {
        document_.Parse<rapidjson::kParseIterativeFlag>(json.data(), json.size());
        if (document_.HasParseError()) {
            fail(std::string(rapidjson::GetParseError_En(document_.GetParseError())) + " At byte " +
                 std::to_string(document_.GetErrorOffset()));
        }
    }

    std::unique_ptr<Schema> run() {
        allowOnly(document_, {"everyType", "mixins", "types"});
        for (const Value &type : array(document_, "types"))
            addType(type);
        where_.clear();
        for (const auto &type : schema_->types_)
            checkReferences(*type);
        return std::move(schema_);
    }

private:
    [[noreturn]] void fail(const std::string &what) const {
        throw std::logic_error("Entity schema: " + (where_.empty() ? "" : where_ + ": ") + what);
    }

    void allowOnly(const Value &object, std::initializer_list<std::string_view> keys) const {
        if (!object.IsObject()) fail("an object is expected");
        for (const auto &member : object.GetObject()) {
            const std::string key = textOf(member.name);
            if (std::find(keys.begin(), keys.end(), key) == keys.end()) fail("unknown key \"" + key + "\"");
        }
    }

    const Value *member(const Value &object, const char *key) const {
        const auto found = object.FindMember(key);
        return found != object.MemberEnd() ? &found->value : nullptr;
    }

    std::string text(const Value &object, const char *key) const {
        const Value *const value = member(object, key);
        if (!value || !value->IsString()) fail(std::string("a text is expected at \"") + key + "\"");
        return textOf(*value);
    }

    Value::ConstArray array(const Value &object, const char *key) const {
        const Value *const value = member(object, key);
        if (!value || !value->IsArray()) fail(std::string("a list is expected at \"") + key + "\"");
        return value->GetArray();
    }

    std::vector<Type> types(const Value &object, const char *key) const {
        std::vector<Type> result;
        for (const Value &label : array(object, key)) {
            if (!label.IsString()) fail(std::string("texts are expected in \"") + key + "\"");
            result.push_back(TypeFactory::getType(textOf(label)));
        }
        if (result.empty()) fail(std::string("\"") + key + "\" is empty");
        return result;
    }

    void addType(const Value &value) {
        where_ = "types";
        allowOnly(value, {"name", "attributes", "defaults", "defaultChildren"});
        where_ = text(value, "name");
        const Type label = TypeFactory::getType(where_);
        auto type = std::make_unique<EntityType>(label);
        if (!schema_->byType_.emplace(label, type.get()).second) fail("the type is there twice");
        if (member(document_, "everyType")) addAttributes(*type, array(document_, "everyType"), -1, 0);
        addAttributes(*type, array(value, "attributes"), -1, 0);
        if (const Value *defaults = member(value, "defaults")) addDefaults(*type, *defaults);
        if (member(value, "defaultChildren")) addDefaultChildren(*type, value);
        schema_->types_.push_back(std::move(type));
    }

    void addAttributes(EntityType &type, Value::ConstArray list, int group, int depth) {
        if (depth > mixinDepth) fail("mixins or groups are nested too deeply");
        for (const Value &item : list) {
            if (item.IsString()) {
                addAttributes(type, mixin(textOf(item)), group, depth + 1);
            } else {
                addAttribute(type, item, group, depth);
            }
        }
    }

    Value::ConstArray mixin(const std::string &name) const {
        const Value *const mixins = member(document_, "mixins");
        const Value *const found = mixins && mixins->IsObject() ? member(*mixins, name.c_str()) : nullptr;
        if (!found || !found->IsArray()) fail("unknown mixin \"" + name + "\"");
        return found->GetArray();
    }

    void addAttribute(EntityType &type, const Value &value, int group, int depth) {
        allowOnly(value, {"name", "aliases", "kind", "quantity", "unit", "default", "choices", "takes",
                          "element", "members", "hidden", "enabledWhen"});
        auto def = std::make_unique<AttributeDef>();
        def->type = TypeFactory::getType(text(value, "name"));
        def->group = group;
        def->index = static_cast<int>(type.attributes_.size());
        where_ = type.type().getLabel() + "/" + def->type.getLabel();
        if (member(value, "aliases")) def->aliases = types(value, "aliases");
        readKind(*def, value);
        readDialog(*def, value);
        def->defaultAttribute = makeAttribute(*def, nullptr);
        if (member(value, "default")) setDefault(*def, text(value, "default"));
        const int index = def->index;
        const bool hasMembers = isComposite(def->kind);
        checkPlace(type, *def);
        addLabels(type, *def);
        type.attributes_.push_back(std::move(def));
        if (hasMembers) addAttributes(type, array(value, "members"), index, depth + 1);
    }

    void readKind(AttributeDef &def, const Value &value) {
        const std::string name = text(value, "kind");
        const auto *const row = std::find_if(std::begin(kindRows), std::end(kindRows),
                                             [&name](const KindRow &kind) { return name == kind.name; });
        if (row == std::end(kindRows)) fail("unknown kind \"" + name + "\"");
        def.kind = row->kind;
        def.nonNegative = row->nonNegative;
        if (hasQuantity(def.kind)) readQuantity(def, value, row->quantity);
        if (def.kind == AttributeKind::Choice) def.choices = types(value, "choices");
        if (takesEntities(def.kind)) def.childTypes = types(value, "takes");
        if (def.kind == AttributeKind::AttributeList) def.elementLabel = text(value, "element");
        checkKeysOfKind(def, value, row->quantity != nullptr);
    }

    void readDialog(AttributeDef &def, const Value &value) {
        if (const Value *const hidden = member(value, "hidden")) {
            if (!hidden->IsBool()) fail("true or false is expected at \"hidden\"");
            def.hidden = hidden->GetBool();
        }
        const Value *const rule = member(value, "enabledWhen");
        if (!rule) return;
        allowOnly(*rule, {"attribute", "is"});
        def.enabledBy = TypeFactory::getType(text(*rule, "attribute"));
        def.enabledWhen = TypeFactory::getType(text(*rule, "is"));
    }

    // The model file writes a composite's members as one flat object.
    void checkPlace(const EntityType &type, const AttributeDef &def) const {
        if (def.group < 0) return;
        const AttributeDef &holder = *type.attributes_[static_cast<size_t>(def.group)];
        if (holder.kind != AttributeKind::Composite) return;
        if (isComposite(def.kind) || takesEntities(def.kind)) fail("does not fit into a composite");
    }

    void readQuantity(AttributeDef &def, const Value &value, const char *implied) {
        const std::string label = implied ? implied : text(value, "quantity");
        def.quantity = Units::findQuantity(label);
        if (!def.quantity) fail("unknown quantity \"" + label + "\"");
        def.displayUnit = def.quantity->display;
        if (!member(value, "unit")) return;
        def.displayUnit = Units::find(*def.quantity, text(value, "unit"));
        if (!def.displayUnit) fail("unknown unit \"" + text(value, "unit") + "\"");
    }

    void checkKeysOfKind(const AttributeDef &def, const Value &value, bool impliesQuantity) const {
        const auto allow = [&](const char *key, bool allowed) {
            if (member(value, key) && !allowed) fail(std::string("\"") + key + "\" does not fit the kind");
        };
        allow("quantity", hasQuantity(def.kind) && !impliesQuantity);
        allow("unit", hasQuantity(def.kind));
        allow("choices", def.kind == AttributeKind::Choice);
        allow("takes", takesEntities(def.kind));
        allow("element", def.kind == AttributeKind::AttributeList);
        allow("members", isComposite(def.kind));
    }

    void setDefault(const AttributeDef &def, const std::string &text) const {
        if (!def.defaultAttribute->setFromString(text)) fail("cannot have the default \"" + text + "\"");
    }

    // The first attribute of a label is the one that the entity finds; the members of a composite may repeat
    // labels ("Value"), all others may not.
    void addLabels(EntityType &type, const AttributeDef &def) const {
        const bool mayRepeat = def.group >= 0 && type.attributes_[static_cast<size_t>(def.group)]->kind ==
                                                     AttributeKind::Composite;
        std::vector<Type> labels = def.aliases;
        labels.insert(labels.begin(), def.type);
        for (const Type &label : labels) {
            if (label.isEmpty()) fail("the label is empty");
            if (!type.byLabel_.emplace(label, def.index).second && !mayRepeat) {
                fail("the label \"" + label.getLabel() + "\" is there twice");
            }
        }
    }

    void addDefaults(const EntityType &type, const Value &defaults) {
        if (!defaults.IsObject()) fail("an object is expected at \"defaults\"");
        for (const auto &entry : defaults.GetObject()) {
            const std::string label = textOf(entry.name);
            const AttributeDef *const def = type.find(TypeFactory::getType(label));
            if (!def) fail("a default for the unknown attribute \"" + label + "\"");
            where_ = type.type().getLabel() + "/" + label;
            setDefault(*def, text(defaults, label.c_str()));
        }
    }

    void addDefaultChildren(EntityType &type, const Value &value) {
        for (const Value &child : array(value, "defaultChildren")) {
            allowOnly(child, {"list", "type", "name"});
            type.defaultChildren_.push_back({TypeFactory::getType(text(child, "list")),
                                             TypeFactory::getType(text(child, "type")), text(child, "name")});
        }
    }

    // A type may lack the choice that would enable the attribute: then it never is.
    void checkRule(const EntityType &type, const AttributeDef &def) {
        if (def.enabledBy.isEmpty()) return;
        where_ = type.type().getLabel() + "/" + def.type.getLabel();
        const AttributeDef *const choice = type.find(def.enabledBy);
        if (!choice || choice->kind != AttributeKind::Choice) fail("is enabled by what is no choice");
    }

    void checkReferences(const EntityType &type) {
        for (const auto &def : type.attributes()) {
            checkRule(type, *def);
            for (const Type &child : def->childTypes) {
                where_ = type.type().getLabel() + "/" + def->type.getLabel();
                if (!schema_->find(child)) fail("takes the unknown type \"" + child.getLabel() + "\"");
            }
        }
        where_ = type.type().getLabel();
        for (const DefaultChild &child : type.defaultChildren()) {
            const AttributeDef *const list = type.find(child.list);
            if (!list || list->kind == AttributeKind::ReferenceLink || !list->takesChild(child.type)) {
                fail("the default child \"" + child.name + "\" has no place");
            }
        }
    }

    rapidjson::Document document_;
    std::unique_ptr<Schema> schema_;
    std::string where_; // What is being read, for messages.
};

std::unique_ptr<Schema> SchemaLoader::load(std::string_view json) { return Work(json).run(); }

std::string_view SchemaLoader::builtIn() {
    return {reinterpret_cast<const char *>(edaEntitySchema), edaEntitySchemaSize};
}

} // namespace EntityModel
