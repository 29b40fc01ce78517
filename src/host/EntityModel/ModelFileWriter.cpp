// Writes the model file.
#include "host/EntityModel/ModelFile.h"

#include "host/EntityModel/JsonText.h"
#include "host/FileSystem/AtomicFile.h"
#include "text/Encoding.h"

#include <cmath>
#include <unordered_map>

namespace EntityModel {

namespace {

// An entity takes three levels: itself, its children, a list of them. The file, the entity's values and their
// lists take the rest.
constexpr int entityDepth = (ModelFileLimits::depth - 6) / 3 + 1;

// The spellings of one entity type's labels, made once a file.
struct TypeText {
    std::string opening;           // {"type":"PCB","id":
    std::vector<std::string> keys; // "Width":
};

template <typename Kind> const Kind &as(const Attribute &attribute) {
    return static_cast<const Kind &>(attribute);
}

bool sameNumber(const DoubleAttribute &a, const DoubleAttribute &b) {
    return a.value() == b.value() && std::signbit(a.value()) == std::signbit(b.value()) &&
           &a.unit() == &b.unit() && &a.displayUnit() == &b.displayUnit();
}

// Does the attribute's value, locks and marks aside, differ from what a new entity has?
bool hasOwnValue(const Attribute &attribute, AttributeKind kind) {
    const Attribute &initial = *attribute.definition()->defaultAttribute;
    switch (kind) {
    case AttributeKind::Text:
        return as<TextAttribute>(attribute).text() != as<TextAttribute>(initial).text();
    case AttributeKind::Number:
        return !sameNumber(as<DoubleAttribute>(attribute), as<DoubleAttribute>(initial));
    case AttributeKind::Integer:
        return as<IntegerAttribute>(attribute).value() != as<IntegerAttribute>(initial).value();
    case AttributeKind::Choice:
        return as<ChoiceAttribute>(attribute).value() != as<ChoiceAttribute>(initial).value();
    case AttributeKind::YesNo:
        return attribute.getBool() != initial.getBool();
    case AttributeKind::DoubleList:
        return !as<DoubleListAttribute>(attribute).values().empty() ||
               &as<DoubleListAttribute>(attribute).unit() != &as<DoubleListAttribute>(initial).unit();
    case AttributeKind::IntList:
        return !as<IntListAttribute>(attribute).values().empty();
    case AttributeKind::AttributeList:
        return as<ListAttribute>(attribute).size() > 0;
    default:
        return false;
    }
}

class ModelWriter {
public:
    // `maxDepth` of nested entities; 0 is no limit.
    template <typename Target>
    ModelWriter(Target &target, int maxDepth) : out_(target), maxDepth_(maxDepth) {}

    // False if the entities are nested too deeply.
    bool write(const Model &model) {
        out_.raw("{\"format\":\"eda-model\",\"version\":1,\"root\":");
        entity(*model.root(), 0, 1);
        out_.raw("}\n");
        out_.flush();
        return isWhole_;
    }

private:
    void entity(const Entity &entity, int indent, int depth) {
        if (maxDepth_ > 0 && depth > maxDepth_) {
            isWhole_ = false;
            return;
        }
        const TypeText &type = textOf(entity.entityType());
        out_.newLine(indent);
        out_.raw(type.opening);
        out_.integer(entity.getID().value());
        flags(entity);
        ownAttributes(entity, type);
        children(entity, type, indent, depth);
        out_.raw('}');
    }

    const TypeText &textOf(const EntityType &type) {
        TypeText &text = types_[&type];
        if (!text.opening.empty()) return text;
        text.opening = "{\"type\":" + quoted(type.type().getLabel()) + ",\"id\":";
        for (const auto &def : type.attributes())
            text.keys.push_back(quoted(def->type.getLabel()) + ":");
        return text;
    }

    static std::string quoted(const std::string &label) {
        std::string text;
        JsonText out(text);
        out.string(label);
        out.flush();
        return text;
    }

    static const std::string &keyOf(const TypeText &type, const AttributeDef &def) {
        return type.keys[static_cast<size_t>(def.index)];
    }

    void flags(const Entity &entity) {
        if (!entity.isProtected() && !entity.isLocked() && !entity.getFlag()) return;
        out_.raw(",\"flags\":");
        char separator = '[';
        const auto add = [&](bool isSet, std::string_view name) {
            if (!isSet) return;
            out_.raw(separator);
            out_.string(name);
            separator = ',';
        };
        add(entity.isProtected(), "protected");
        add(entity.isLocked(), "locked");
        add(entity.getFlag(), "marked");
        out_.raw(']');
    }

    void ownAttributes(const Entity &entity, const TypeText &type) {
        links_.clear();
        locked_.clear();
        marked_.clear();
        hasValues_ = false;
        composite_ = nullptr;
        entity.forEachStored([&](const Attribute &attribute) { noteAndWrite(entity, type, attribute); });
        if (composite_) out_.raw('}');
        if (hasValues_) out_.raw('}');
        links(type);
        labels(",\"locked\":", entity, locked_);
        labels(",\"marked\":", entity, marked_);
    }

    void noteAndWrite(const Entity &entity, const TypeText &type, const Attribute &attribute) {
        const AttributeKind kind = attribute.kind();
        if (attribute.isLocked()) locked_.push_back(&attribute);
        if (attribute.getFlag()) marked_.push_back(&attribute);
        if (kind == AttributeKind::ReferenceLink && as<ReferenceLink>(attribute).target()) {
            links_.push_back(&as<ReferenceLink>(attribute));
        }
        if (kind == AttributeKind::AttributeList) noteElements(as<ListAttribute>(attribute));
        if (!hasOwnValue(attribute, kind)) return;
        openValues(type, compositeOf(entity, *attribute.definition()));
        out_.raw(keyOf(type, *attribute.definition()));
        value(attribute, kind);
    }

    void noteElements(const ListAttribute &list) {
        for (int i = 0; i < list.size(); ++i) {
            if (list.at(i)->isLocked()) locked_.push_back(list.at(i));
            if (list.at(i)->getFlag()) marked_.push_back(list.at(i));
        }
    }

    static const AttributeDef *compositeOf(const Entity &entity, const AttributeDef &def) {
        if (def.group < 0) return nullptr;
        const AttributeDef *const holder =
            entity.entityType().attributes()[static_cast<size_t>(def.group)].get();
        return holder->kind == AttributeKind::Composite ? holder : nullptr;
    }

    // Writes what stands before a value: the opening of "values" and of a composite's object, or a comma.
    void openValues(const TypeText &type, const AttributeDef *composite) {
        if (!hasValues_) out_.raw(",\"values\":{");
        if (composite_ && composite != composite_) out_.raw('}');
        const bool isFirst = !hasValues_;
        const bool opensComposite = composite && composite != composite_;
        if (!isFirst) out_.raw(',');
        if (opensComposite) {
            out_.raw(keyOf(type, *composite));
            out_.raw('{');
        }
        hasValues_ = true;
        composite_ = composite;
    }

    void value(const Attribute &attribute, AttributeKind kind) {
        switch (kind) {
        case AttributeKind::Text:
            return text(as<TextAttribute>(attribute).text());
        case AttributeKind::Number:
            return number(as<DoubleAttribute>(attribute));
        case AttributeKind::Integer:
            return out_.integer(as<IntegerAttribute>(attribute).value());
        case AttributeKind::Choice:
            return out_.string(as<ChoiceAttribute>(attribute).value().getLabel());
        case AttributeKind::YesNo:
            return out_.raw(attribute.getBool() ? "true" : "false");
        case AttributeKind::DoubleList:
            return doubleList(as<DoubleListAttribute>(attribute));
        case AttributeKind::IntList:
            return intList(as<IntListAttribute>(attribute).values());
        default:
            return attributeList(as<ListAttribute>(attribute));
        }
    }

    void text(const std::string &text) {
        if (EDA::isValidUtf8(text)) return out_.string(text);
        // JSON can't hold other bytes, and texts are kept as they came.
        static constexpr std::string_view hex = "0123456789abcdef";
        out_.raw("{\"bytes\":\"");
        for (const char c : text) {
            out_.raw(hex[static_cast<unsigned char>(c) >> 4]);
            out_.raw(hex[static_cast<unsigned char>(c) & 15]);
        }
        out_.raw("\"}");
    }

    void number(const DoubleAttribute &attribute) {
        out_.raw('[');
        out_.number(attribute.value());
        out_.raw(',');
        out_.string(attribute.unit().label);
        if (&attribute.displayUnit() != &attribute.unit()) {
            out_.raw(',');
            out_.string(attribute.displayUnit().label);
        }
        out_.raw(']');
    }

    void doubleList(const DoubleListAttribute &list) {
        out_.raw("[[");
        bool isFirst = true;
        for (const double value : list.values()) {
            if (!isFirst) out_.raw(',');
            isFirst = false;
            out_.number(value);
        }
        out_.raw("],");
        out_.string(list.unit().label);
        out_.raw(']');
    }

    void intList(const std::vector<int> &values) {
        out_.raw('[');
        bool isFirst = true;
        for (const int value : values) {
            if (!isFirst) out_.raw(',');
            isFirst = false;
            out_.integer(value);
        }
        out_.raw(']');
    }

    void attributeList(const ListAttribute &list) {
        out_.raw('[');
        for (int i = 0; i < list.size(); ++i) {
            if (i > 0) out_.raw(',');
            doubleList(*list.at(i));
        }
        out_.raw(']');
    }

    void links(const TypeText &type) {
        if (links_.empty()) return;
        out_.raw(",\"links\":");
        char separator = '{';
        for (const ReferenceLink *link : links_) {
            out_.raw(separator);
            out_.raw(keyOf(type, *link->definition()));
            out_.integer(link->target()->getID().value());
            separator = ',';
        }
        out_.raw('}');
    }

    void labels(std::string_view key, const Entity &entity,
                const std::vector<const Attribute *> &attributes) {
        if (attributes.empty()) return;
        out_.raw(key);
        char separator = '[';
        for (const Attribute *attribute : attributes) {
            out_.raw(separator);
            label(entity, *attribute);
            separator = ',';
        }
        out_.raw(']');
    }

    void label(const Entity &entity, const Attribute &attribute) {
        const AttributeDef *const composite = compositeOf(entity, *attribute.definition());
        if (!composite) return out_.string(attribute.getType().getLabel());
        out_.raw('[');
        out_.string(composite->type.getLabel());
        out_.raw(',');
        out_.string(attribute.getType().getLabel());
        out_.raw(']');
    }

    void children(const Entity &entity, const TypeText &type, int indent, int depth) {
        bool isFirst = true;
        entity.forEachStored([&](const Attribute &attribute) {
            const AttributeKind kind = attribute.kind();
            const bool isList = kind == AttributeKind::EntityList && as<EntityList>(attribute).size() > 0;
            const bool isLink = kind == AttributeKind::OwningLink && as<OwningLink>(attribute).target();
            if (!isList && !isLink) return;
            out_.raw(std::string_view(isFirst ? ",\"children\":{" : ","));
            isFirst = false;
            out_.newLine(indent + 1);
            out_.raw(keyOf(type, *attribute.definition()));
            if (isList) return list(as<EntityList>(attribute), indent + 2, depth + 1);
            this->entity(*as<OwningLink>(attribute).target(), indent + 2, depth + 1);
        });
        if (!isFirst) out_.raw('}');
    }

    void list(const EntityList &list, int indent, int depth) {
        char separator = '[';
        for (const Entity *child : list) {
            out_.raw(separator);
            entity(*child, indent, depth);
            separator = ',';
        }
        out_.raw(']');
    }

    JsonText out_;
    int maxDepth_;
    bool isWhole_ = true;
    std::unordered_map<const EntityType *, TypeText> types_;

    // Of the entity being written.
    std::vector<const ReferenceLink *> links_;
    std::vector<const Attribute *> locked_;
    std::vector<const Attribute *> marked_;
    bool hasValues_ = false;
    const AttributeDef *composite_ = nullptr;
};

} // namespace

bool ModelFile::save(const Model &model, const std::string &filename, std::string &error) {
    error.clear();
    FileSystem::AtomicFile file(filename);
    const bool isWhole = file.isOpen() && ModelWriter(file.stream(), entityDepth).write(model);
    if (file.isOpen() && !isWhole) {
        error = filename + ": entities are nested more than " + std::to_string(entityDepth) + " deep";
        return false;
    }
    if (file.commit()) return true;
    error = file.error();
    return false;
}

std::string ModelFile::toText(const Model &model) {
    std::string text;
    ModelWriter(text, 0).write(model);
    return text;
}

} // namespace EntityModel
