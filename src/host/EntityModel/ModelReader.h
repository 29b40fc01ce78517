// Builds a model from the events of a JSON reader.
#pragma once

#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelValueReader.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace EntityModel {

// Checks everything against the schema as it comes. Each event answers false as soon as the file is wrong;
// what() then tells why, and errorOffset() where.
class ModelReader {
public:
    static constexpr const char *moreAfterEnd = "there is more after the end of the model";

    // `offset` gives the place of the event in the file.
    explicit ModelReader(std::function<size_t()> offset);
    ~ModelReader();

    bool take(const JsonEvent &event);

    // The model, once the text has ended. Null when it lacks something or a link leads nowhere.
    std::unique_ptr<Model> finish();

    // The same, but the root alone: its entities are outside every model and have no ids.
    std::unique_ptr<Entity> finishTree();

    const std::string &what() const { return what_; }
    size_t errorOffset() const { return errorOffset_; }

private:
    enum class State {
        Start,
        File,
        Entity,
        Flags,
        Labels,
        LabelPath,
        Values,
        Members,
        Links,
        Children,
        List,
        End
    };

    // An open object or array.
    struct Frame {
        State state = State::Start;
        Entity *entity = nullptr;          // null while an entity's type is unknown
        ChildHolder *holder = nullptr;     // Entity, List: where entities go; null for the root
        const AttributeDef *def = nullptr; // the attribute whose value, members, link or children come next
        std::string key;                   // File, Entity: the last key
        std::vector<char> seen;            // by key or by attribute index
    };

    // One link, to be resolved when all entities are there.
    struct PendingLink {
        Entity *entity;
        const AttributeDef *def;
        std::uint64_t id;
        size_t offset;
    };

    bool takeFile(const JsonEvent &event);
    bool takeEntity(const JsonEvent &event);
    bool takeEntityMember(const JsonEvent &event);
    bool takeFlags(const JsonEvent &event);
    bool takeLabels(const JsonEvent &event);
    bool takeLabelPath(const JsonEvent &event);
    bool takeValues(const JsonEvent &event);
    bool takeLinks(const JsonEvent &event);
    bool takeChildren(const JsonEvent &event);
    bool takeList(const JsonEvent &event);

    bool takeKey(std::string_view key, const char *const *known, size_t count);
    bool startMember(const JsonEvent &event, State state);
    bool makeEntity(const std::string &label);
    bool setId(std::string_view text);
    bool endEntity();
    bool findDef(std::string_view label, const AttributeDef *composite);
    bool markSeen(const AttributeDef &def);
    bool startChildren(const JsonEvent &event);
    bool flagAttribute(Attribute *attribute, const std::string &label);
    bool resolve(const PendingLink &link);
    bool isWhole();

    bool push(State state, Entity *entity, ChildHolder *holder = nullptr);
    bool pop();
    Frame &top() { return frames_[depth_]; }
    bool fail(const std::string &what);
    std::string nameOf(const Entity *entity) const;

    std::function<size_t()> offset_;
    std::vector<Frame> frames_; // Reused: the open ones are those up to depth_.
    size_t depth_ = 0;
    ModelValueReader value_;
    std::string firstLabel_; // LabelPath: the composite's label
    std::unique_ptr<Entity> root_;
    std::unordered_map<std::uint64_t, Entity *> byId_;
    std::vector<PendingLink> links_;
    std::uint64_t greatestId_ = 0;
    std::string what_;
    size_t errorOffset_ = 0;
};

} // namespace EntityModel
