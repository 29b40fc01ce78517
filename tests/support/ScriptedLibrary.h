// A component library that answers as a test tells it to, and notes what it was asked.
#pragma once

#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/LibraryInterface.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

class ScriptedLibrary : public EntityModel::LibraryInterface {
public:
    using Maker = std::function<EntityModel::Entity *()>;

    // What a name is answered with: a mapping, and a maker of its entity where it has one.
    struct Item {
        MappingType mapping = Mapped;
        Maker make;
    };

    // A new entity that is in no model, with values set: {"Width", "3 mm"}.
    static EntityModel::Entity *
    makeEntity(const EntityModel::TypeRef &type,
               const std::vector<std::pair<std::string, std::string>> &values = {}) {
        auto *const entity = new EntityModel::Entity(*EntityModel::Schema::instance().find(type));
        for (const auto &[label, value] : values) {
            EntityModel::EntityEditor::setValue(entity, label, value);
        }
        return entity;
    }

    void setComponentTypes(const std::set<std::string> &types) override { componentTypes = types; }

    void getMapping(std::string &result, const std::string &key, std::string &path,
                    MappingType &type) override {
        askedMappings.push_back(key);
        const auto found = mappings.find(key);
        if (found == mappings.end()) return;
        result = found->second.first;
        path = paths[key];
        type = found->second.second;
    }

    EntityModel::Entity *loadItem(const std::string &name, const std::string &path, bool exact,
                                  Attributes &attributes, MappingType &type) override {
        loads.push_back({name, path, exact, attributes.size()});
        const auto found = items.find(name);
        if (found == items.end()) return nullptr;
        type = found->second.mapping;
        return found->second.make ? found->second.make() : nullptr;
    }

    EntityModel::LibraryItem *findItem(const std::string &name, const std::string &path, bool exact,
                                       Attributes &attributes, MappingType &type) override {
        finds.push_back({name, path, exact, attributes.size()});
        const auto found = items.find(name);
        if (found == items.end()) return nullptr;
        type = found->second.mapping;
        if (!found->second.make) return nullptr;
        foundItems_.push_back(std::make_unique<OwnedItem>(found->second.make()));
        return foundItems_.back().get();
    }

    bool supplyContent(EntityModel::Entity &) override { return false; }

    struct Question {
        std::string name, path;
        bool exact;
        size_t numAttributes;
    };

    std::map<std::string, Item> items;                                   // by the name asked for
    std::map<std::string, std::pair<std::string, MappingType>> mappings; // by key: name, mapping
    std::map<std::string, std::string> paths;                            // by key
    std::set<std::string> componentTypes;
    std::vector<Question> loads, finds;
    std::vector<std::string> askedMappings;

private:
    class OwnedItem : public EntityModel::LibraryItem {
    public:
        explicit OwnedItem(EntityModel::Entity *entity) : entity_(entity) {}
        EntityModel::Entity *getEntity() override { return entity_.get(); }

    private:
        std::unique_ptr<EntityModel::Entity> entity_;
    };
    std::vector<std::unique_ptr<OwnedItem>> foundItems_;
};

} // namespace TestSupport
