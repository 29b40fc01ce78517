// Builds a model from the events of a JSON reader: the attributes of an entity.
#include "host/EntityModel/ModelReader.h"

#include <charconv>

namespace EntityModel {

namespace {

bool holdsValue(AttributeKind kind) {
    switch (kind) {
    case AttributeKind::Group:
    case AttributeKind::EntityList:
    case AttributeKind::OwningLink:
    case AttributeKind::ReferenceLink:
        return false;
    default:
        return true;
    }
}

bool holdsChildren(AttributeKind kind) {
    return kind == AttributeKind::EntityList || kind == AttributeKind::OwningLink;
}

const AttributeDef *compositeOf(const EntityType &type, const AttributeDef &def) {
    const AttributeDef *const holder =
        def.group < 0 ? nullptr : type.attributes()[static_cast<size_t>(def.group)].get();
    return holder && holder->kind == AttributeKind::Composite ? holder : nullptr;
}

} // namespace

// Members of a composite are found inside it only.
bool ModelReader::findDef(std::string_view label, const AttributeDef *composite) {
    const EntityType &type = top().entity->entityType();
    const Type labelType = TypeFactory::getType(std::string(label));
    const AttributeDef *const def = composite ? type.findWithin(*composite, labelType) : type.find(labelType);
    if (!def || (!composite && compositeOf(type, *def))) {
        return fail(nameOf(top().entity) + " has no attribute \"" + std::string(label.substr(0, 80)) + "\"" +
                    (composite ? " in \"" + composite->type.getLabel() + "\"" : ""));
    }
    top().def = def;
    return true;
}

bool ModelReader::markSeen(const AttributeDef &def) {
    char &seen = top().seen[static_cast<size_t>(def.index)];
    if (seen) return fail("the key \"" + def.type.getLabel() + "\" is there twice");
    seen = 1;
    return true;
}

bool ModelReader::takeValues(const JsonEvent &event) {
    Frame &frame = top();
    if (event.kind == JsonKind::EndObject) return pop();
    if (event.kind == JsonKind::Key) {
        const AttributeDef *const composite =
            frame.state == State::Members ? frames_[depth_ - 1].def : nullptr;
        if (!findDef(event.text, composite) || !markSeen(*frame.def)) return false;
        return holdsValue(frame.def->kind) || fail("\"" + frame.def->type.getLabel() + "\" has no value");
    }
    Entity *const entity = frame.entity;
    if (frame.def->kind == AttributeKind::Composite) {
        if (event.kind != JsonKind::StartObject) {
            return fail("\"" + frame.def->type.getLabel() + "\" must be an object");
        }
        if (!push(State::Members, entity)) return false;
        top().seen.resize(entity->entityType().attributes().size());
        return true;
    }
    value_.start(entity->attribute(*frame.def));
    return take(event);
}

bool ModelReader::takeLinks(const JsonEvent &event) {
    Frame &frame = top();
    if (event.kind == JsonKind::EndObject) return pop();
    if (event.kind == JsonKind::Key) {
        if (!findDef(event.text, nullptr) || !markSeen(*frame.def)) return false;
        const bool isLink = frame.def->kind == AttributeKind::ReferenceLink;
        return isLink || fail("\"" + frame.def->type.getLabel() + "\" is no link");
    }
    std::uint64_t id = 0;
    const char *const end = event.text.data() + event.text.size();
    const auto read = std::from_chars(event.text.data(), end, id);
    if (event.kind != JsonKind::Number || read.ec != std::errc() || read.ptr != end) {
        return fail("\"" + frame.def->type.getLabel() + "\" needs the id of an entity");
    }
    links_.push_back({frame.entity, frame.def, id, offset_()});
    return true;
}

bool ModelReader::takeChildren(const JsonEvent &event) {
    if (event.kind == JsonKind::EndObject) return pop();
    if (event.kind != JsonKind::Key) return startChildren(event);
    if (!findDef(event.text, nullptr) || !markSeen(*top().def)) return false;
    return holdsChildren(top().def->kind) || fail("\"" + top().def->type.getLabel() + "\" holds no children");
}

bool ModelReader::startChildren(const JsonEvent &event) {
    const AttributeDef &def = *top().def;
    Entity *const entity = top().entity;
    const bool isList = def.kind == AttributeKind::EntityList;
    if (event.kind != (isList ? JsonKind::StartArray : JsonKind::StartObject)) {
        return fail("\"" + def.type.getLabel() + "\" must be " +
                    (isList ? "a list of entities" : "an entity"));
    }
    Attribute &attribute = entity->attribute(def);
    if (isList) return push(State::List, entity, &static_cast<EntityList &>(attribute));
    return push(State::Entity, nullptr, &static_cast<OwningLink &>(attribute));
}

bool ModelReader::takeLabels(const JsonEvent &event) {
    if (event.kind == JsonKind::EndArray) return pop();
    if (event.kind == JsonKind::StartArray) {
        const std::string key = top().key;
        firstLabel_.clear();
        if (!push(State::LabelPath, top().entity)) return false;
        top().key = key;
        return true;
    }
    if (event.kind != JsonKind::String) return fail("\"" + top().key + "\" takes labels of attributes");
    const std::string label(event.text);
    return flagAttribute(top().entity->findAttribute(label), label);
}

// ["Conductivity","Value"]
bool ModelReader::takeLabelPath(const JsonEvent &event) {
    const bool isLabel = event.kind == JsonKind::String && !event.text.empty();
    if (isLabel && firstLabel_.empty()) {
        firstLabel_ = event.text;
        return true;
    }
    Frame &frame = top();
    if (isLabel && !frame.def) {
        if (!findDef(firstLabel_, nullptr)) return false;
        if (frame.def->kind != AttributeKind::Composite)
            return fail("\"" + firstLabel_ + "\" has no members");
        if (!findDef(event.text, frame.def)) return false;
        return flagAttribute(&frame.entity->attribute(*frame.def), std::string(event.text));
    }
    if (event.kind == JsonKind::EndArray && frame.def) return pop();
    return fail("a path has two labels, such as [\"Conductivity\",\"Value\"]");
}

bool ModelReader::flagAttribute(Attribute *attribute, const std::string &label) {
    if (!attribute) return fail(nameOf(top().entity) + " has no attribute \"" + label.substr(0, 80) + "\"");
    if (top().key == "locked") {
        attribute->setLocked(true);
    } else {
        attribute->setFlag(true);
    }
    return true;
}

} // namespace EntityModel
