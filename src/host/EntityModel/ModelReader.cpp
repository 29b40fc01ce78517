// Builds a model from the events of a JSON reader: the file, its entities and their order.
#include "host/EntityModel/ModelReader.h"

#include "host/EntityModel/ModelFile.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace EntityModel {

namespace {

constexpr const char *fileKeys[] = {"format", "version", "root"};
constexpr const char *entityKeys[] = {"type",  "id",     "flags",  "values",
                                      "links", "locked", "marked", "children"};

constexpr std::uint64_t greatestIdAllowed = (std::uint64_t{1} << 53) - 1; // exact in every JSON reader

bool parseId(std::string_view text, std::uint64_t &id) {
    const auto read = std::from_chars(text.data(), text.data() + text.size(), id);
    return read.ec == std::errc() && read.ptr == text.data() + text.size() && id > 0 &&
           id <= greatestIdAllowed;
}

std::string quoted(std::string_view text) {
    constexpr size_t most = 80;
    return "\"" + std::string(text.substr(0, most)) + (text.size() > most ? "...\"" : "\"");
}

} // namespace

ModelReader::ModelReader(std::function<size_t()> offset) : offset_(std::move(offset)), frames_(1) {}

ModelReader::~ModelReader() = default;

bool ModelReader::fail(const std::string &what) {
    what_ = what;
    errorOffset_ = offset_();
    return false;
}

std::string ModelReader::nameOf(const Entity *entity) const {
    return entity ? entity->getType().getLabel() + " " + entity->getID().toString() : "an entity";
}

bool ModelReader::push(State state, Entity *entity, ChildHolder *holder) {
    if (depth_ + 1 > static_cast<size_t>(ModelFileLimits::depth)) {
        return fail("nested more than " + std::to_string(ModelFileLimits::depth) + " deep");
    }
    ++depth_;
    if (depth_ == frames_.size()) frames_.emplace_back();
    Frame &frame = top();
    frame.state = state;
    frame.entity = entity;
    frame.holder = holder;
    frame.def = nullptr;
    frame.key.clear();
    frame.seen.clear();
    return true;
}

bool ModelReader::pop() {
    --depth_;
    return true;
}

bool ModelReader::take(const JsonEvent &event) {
    if (value_.isBusy()) return value_.take(event) || fail(value_.what() + " in " + nameOf(top().entity));
    switch (top().state) {
    case State::Start:
        if (event.kind != JsonKind::StartObject) return fail("a model file is one JSON object");
        top().state = State::End;
        return push(State::File, nullptr);
    case State::File:
        return takeFile(event);
    case State::Entity:
        return takeEntity(event);
    case State::Flags:
        return takeFlags(event);
    case State::Labels:
        return takeLabels(event);
    case State::LabelPath:
        return takeLabelPath(event);
    case State::Values:
    case State::Members:
        return takeValues(event);
    case State::Links:
        return takeLinks(event);
    case State::Children:
        return takeChildren(event);
    case State::List:
        return takeList(event);
    case State::End:
        break;
    }
    return fail(moreAfterEnd);
}

bool ModelReader::takeKey(std::string_view key, const char *const *known, size_t count) {
    const auto *const found = std::find(known, known + count, key);
    if (found == known + count) return fail("unknown key " + quoted(key));
    Frame &frame = top();
    frame.seen.resize(count);
    char &seen = frame.seen[static_cast<size_t>(found - known)];
    if (seen) return fail("the key " + quoted(key) + " is there twice");
    seen = 1;
    frame.key = key;
    return true;
}

bool ModelReader::takeFile(const JsonEvent &event) {
    if (event.kind == JsonKind::EndObject) {
        return root_ ? pop() : fail("the model has no root");
    }
    if (event.kind == JsonKind::Key) {
        if (!takeKey(event.text, fileKeys, std::size(fileKeys))) return false;
        const bool isTold = top().seen[0] && top().seen[1];
        if (event.text == "root" && !isTold)
            return fail("\"format\" and \"version\" must stand before \"root\"");
        return true;
    }
    if (top().key == "format") {
        const bool isRight = event.kind == JsonKind::String && event.text == "eda-model";
        return isRight || fail("the format is not \"eda-model\"");
    }
    if (top().key == "version") {
        if (event.kind == JsonKind::Number && event.text == "1") return true;
        return fail("version " + std::string(event.text.substr(0, 40)) + " can't be read; this is version 1");
    }
    if (event.kind != JsonKind::StartObject) return fail("the root must be an entity");
    return push(State::Entity, nullptr);
}

bool ModelReader::takeEntity(const JsonEvent &event) {
    if (event.kind == JsonKind::EndObject) return endEntity();
    if (event.kind != JsonKind::Key) return takeEntityMember(event);
    if (!top().entity && event.text != "type") return fail("an entity's first key must be \"type\"");
    return takeKey(event.text, entityKeys, std::size(entityKeys));
}

bool ModelReader::takeEntityMember(const JsonEvent &event) {
    const std::string &key = top().key;
    if (key == "type") {
        if (event.kind != JsonKind::String) return fail("the type must be a text");
        return makeEntity(std::string(event.text));
    }
    if (key == "id") {
        if (event.kind != JsonKind::Number) return fail("the id must be a number");
        return setId(event.text);
    }
    if (key == "flags") return startMember(event, State::Flags);
    if (key == "values") return startMember(event, State::Values);
    if (key == "links") return startMember(event, State::Links);
    if (key == "children") return startMember(event, State::Children);
    return startMember(event, State::Labels);
}

bool ModelReader::startMember(const JsonEvent &event, State state) {
    const bool isObject = state == State::Values || state == State::Links || state == State::Children;
    if (event.kind != (isObject ? JsonKind::StartObject : JsonKind::StartArray)) {
        return fail(quoted(top().key) + " must be " + (isObject ? "an object" : "a list"));
    }
    Entity *const entity = top().entity;
    const std::string key = top().key;
    if (!push(state, entity)) return false;
    top().key = key;
    if (isObject) top().seen.resize(entity->entityType().attributes().size());
    return true;
}

bool ModelReader::makeEntity(const std::string &label) {
    ChildHolder *const holder = top().holder;
    const EntityType *const type = Schema::instance().find(TypeFactory::getType(label));
    if (!type) return fail("unknown entity type " + quoted(label));
    if (holder && !holder->canTake(type->type())) {
        const auto *const attribute = dynamic_cast<const Attribute *>(holder);
        return fail(quoted(attribute->getType().getLabel()) + " of " + nameOf(holder->holderEntity()) +
                    " takes no " + quoted(label));
    }
    auto entity = std::make_unique<Entity>(*type);
    top().entity = entity.get();
    if (holder) {
        holder->insertChild(-1, std::move(entity));
    } else {
        root_ = std::move(entity);
    }
    return true;
}

bool ModelReader::setId(std::string_view text) {
    std::uint64_t id = 0;
    if (!parseId(text, id)) return fail("bad id " + std::string(text.substr(0, 40)));
    if (!byId_.emplace(id, top().entity).second)
        return fail("the id " + std::to_string(id) + " is there twice");
    top().entity->id_ = id;
    greatestId_ = std::max(greatestId_, id);
    return true;
}

bool ModelReader::endEntity() {
    if (!top().entity) return fail("an entity has no type");
    if (top().entity->id_ == 0) return fail("an entity has no id");
    return pop();
}

bool ModelReader::takeFlags(const JsonEvent &event) {
    if (event.kind == JsonKind::EndArray) return pop();
    Entity &entity = *top().entity;
    if (event.kind == JsonKind::String && event.text == "protected") {
        entity.protected_ = true;
    } else if (event.kind == JsonKind::String && event.text == "locked") {
        entity.setLocked(true);
    } else if (event.kind == JsonKind::String && event.text == "marked") {
        entity.setFlag(true);
    } else {
        return fail("\"flags\" takes \"protected\", \"locked\" and \"marked\"");
    }
    return true;
}

bool ModelReader::takeList(const JsonEvent &event) {
    if (event.kind == JsonKind::EndArray) return pop();
    if (event.kind != JsonKind::StartObject) return fail("an entity is expected");
    return push(State::Entity, nullptr, top().holder);
}

bool ModelReader::isWhole() {
    if (!root_) return fail("the model has no root");
    return std::all_of(links_.begin(), links_.end(),
                       [this](const PendingLink &link) { return resolve(link); });
}

std::unique_ptr<Entity> ModelReader::finishTree() {
    if (!isWhole()) return nullptr;
    for (const auto &[id, entity] : byId_)
        entity->id_ = 0;
    return std::move(root_);
}

std::unique_ptr<Model> ModelReader::finish() {
    if (!isWhole()) return nullptr;
    auto model = std::make_unique<Model>(TypeRef(root_->getType()));
    model->insertChild(0, std::move(root_));
    model->nextId_ = greatestId_ + 1;
    return model;
}

bool ModelReader::resolve(const PendingLink &link) {
    const auto found = byId_.find(link.id);
    const std::string label = quoted(link.def->type.getLabel());
    if (found == byId_.end()) {
        fail(label + " of " + nameOf(link.entity) + " leads to the unknown id " + std::to_string(link.id));
    } else if (!static_cast<ReferenceLink &>(link.entity->attribute(*link.def)).setTarget(found->second)) {
        fail(label + " of " + nameOf(link.entity) + " can't lead to " + nameOf(found->second));
    } else {
        return true;
    }
    errorOffset_ = link.offset;
    return false;
}

} // namespace EntityModel
