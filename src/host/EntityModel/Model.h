// A model: the root of an entity tree.
#pragma once

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/MaterialIndex.h"
#include "host/EntityModel/Types.h"

#include <cstdint>
#include <memory>

namespace EntityModel {

// Owns the root entity and hands out ids. A model belongs to one thread; destroying it empties that thread's
// undo stack, whose steps may hold its entities.
class Model : public ChildHolder {
public:
    // A model whose root is a new entity of this type, a Velkin Solver Project as a rule: materials of a
    // board live at the top of its owners, and only a project has a list for them. Throws
    // std::invalid_argument for a type that the schema lacks.
    explicit Model(const TypeRef &rootType = Velkin_Solver_Project_t);
    ~Model() override;
    Model(const Model &) = delete;
    Model &operator=(const Model &) = delete;

    Entity *root() const { return root_.get(); }

    // Ids count up from 1 in the order of creation, so that one sequence of edits always gives the same ids.
    std::uint64_t nextId() const { return nextId_; }

private:
    friend class Entity;
    friend class EntityEditor;
    friend class EntityList;
    friend class OwningLink;
    friend class ModelReader;
    friend class UserPreference;

    std::uint64_t takeId() { return nextId_++; }
    void assignIds(Entity &entity);                // to the entity and all below it that have none
    Entity *findMaterial(const std::string &name); // the root's first of this name, or null

    Entity *holderEntity() const override { return nullptr; }
    int childCount() const override { return root_ ? 1 : 0; }
    Entity *childAt(int index) const override { return index == 0 ? root_.get() : nullptr; }
    bool canTake(const Type &) const override { return false; }
    void insertChild(int index, std::unique_ptr<Entity> child) override;
    std::unique_ptr<Entity> removeChild(Entity *child, int &index) override;

    std::unique_ptr<Entity> root_;
    std::uint64_t nextId_ = 1;
    MaterialIndex materials_;
    std::uint32_t materialsStep_ = 0; // the undo step in which the index was begun
};

} // namespace EntityModel
