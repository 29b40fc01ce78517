// Edits that create, add, move and delete entities.
#include "host/EntityModel/EditRecords.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/EntityEditorDetail.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/Types.h"

#include <map>
#include <optional>
#include <unordered_set>

namespace EntityModel {

EditScope::EditScope() {
    const UndoStack &undo = UndoStack::instance();
    if (!undo.isOpen() && !undo.isDisabled()) opener_.emplace("Edit");
}

ChildHolder *asHolder(Attribute *attribute) {
    if (!attribute) return nullptr;
    if (attribute->isEntityList()) return static_cast<EntityList *>(attribute);
    return attribute->kind() == AttributeKind::OwningLink ? static_cast<OwningLink *>(attribute) : nullptr;
}

namespace {

using EntitySet = std::unordered_set<const Entity *>;

bool isInsideAny(const Entity *entity, const EntitySet &roots) {
    for (; entity; entity = entity->getOwnerEntity()) {
        if (roots.count(entity) > 0) return true;
    }
    return false;
}

void collectBelow(Entity *root, std::vector<Entity *> &all) {
    size_t next = all.size();
    all.push_back(root);
    while (next < all.size())
        all[next++]->getChildEntities(all);
}

// Clears the links that point from outside to an entity that goes.
void clearReferrers(Entity *target, const EntitySet &going) {
    UndoStack &undo = UndoStack::instance();
    // A copy, since clearing a link takes it out of the target's own list.
    const std::vector<ReferenceLink *> referrers(target->referrers().begin(), target->referrers().end());
    for (ReferenceLink *link : referrers) {
        const Entity *const owner = link->getOwnerEntity();
        if (owner && isInsideAny(owner, going)) continue;
        // What a step holds, the copy of a link or an entity outside the model, comes back only after the
        // target.
        if (undo.isRecording() && (!owner || !owner->model())) continue;
        std::unique_ptr<Attribute> before = undo.snapshot(*link);
        link->setTarget(nullptr);
        undo.addValueChange(*link, std::move(before));
    }
}

bool isInModel(const ChildHolder &holder) { return holder.holderEntity() && holder.holderEntity()->model(); }

void addRemoval(const ChildHolder &holder, std::unique_ptr<UndoRecord> record) {
    UndoStack &undo = UndoStack::instance();
    if (isInModel(holder) && undo.isRecording()) undo.add(std::move(record));
}

void recordInsertion(ChildHolder &holder, Entity *child, int index) {
    UndoStack &undo = UndoStack::instance();
    if (!isInModel(holder)) return;
    // Undone with its owner. The place in an owning link must be freed before another child can come back.
    const bool isList = dynamic_cast<EntityList *>(&holder) != nullptr;
    if (isList && undo.isRecording() && undo.isOfOpenStep(*holder.holderEntity())) return;
    if (undo.isRecording()) return undo.add(std::make_unique<PresenceRecord>(holder, child, index));
    undo.noteUnrecorded();
}

void removeFromList(EntityList &list, const EntitySet &children) {
    addRemoval(list, std::make_unique<RemovalRecord>(list, children, list.removeChildren(children)));
}

void removeFromLink(ChildHolder &link, Entity *child) {
    int index = 0;
    std::unique_ptr<Entity> removed = link.removeChild(child, index);
    addRemoval(link, std::make_unique<PresenceRecord>(link, std::move(removed), index));
}

// The holder in `parent` for a type: the first attribute of the schema that takes it.
ChildHolder *firstHolderFor(Entity &parent, const Type &childType) {
    for (const auto &def : parent.entityType().attributes()) {
        const bool holds = def->kind == AttributeKind::EntityList || def->kind == AttributeKind::OwningLink;
        if (holds && def->takesChild(childType)) return asHolder(&parent.attribute(*def));
    }
    return nullptr;
}

bool isOfAnotherModel(const Entity *target, const Entity &entity) {
    const Model *const theirs = target ? target->model() : nullptr;
    const Model *const ours = theirs ? entity.model() : nullptr;
    return ours && ours != theirs;
}

} // namespace

ChildHolder *holderFor(Entity &parent, Attribute *where, const Type &childType) {
    if (!where) return firstHolderFor(parent, childType);
    return where->getOwnerEntity() == &parent ? asHolder(where) : nullptr;
}

Entity *insertAndRecord(ChildHolder &holder, int index, std::unique_ptr<Entity> entity) {
    Entity *const inserted = entity.get();
    holder.insertChild(index, std::move(entity));
    recordInsertion(holder, inserted, index);
    return inserted;
}

std::unique_ptr<Entity> EntityEditor::makeEntity(const EntityType &type, const std::string &name) {
    auto entity = std::make_unique<Entity>(type);
    entity->createdInStep_ = UndoStack::instance().currentStep();
    if (!name.empty()) entity->findAttribute(Name_t)->setFromString(name);
    for (const DefaultChild &child : type.defaultChildren()) {
        ChildHolder *const holder = asHolder(entity->findAttribute(TypeRef(child.list)));
        const EntityType *const childType = Schema::instance().find(child.type);
        holder->insertChild(-1, makeEntity(*childType, child.name));
    }
    return entity;
}

void EntityEditor::assignIds(Entity &entity) {
    if (Model *const model = entity.model()) model->assignIds(entity);
}

Entity *EntityEditor::createEntity(const TypeRef &type, Entity *parent, const AttributePath &where,
                                   LibraryInterface *loader, bool, bool, bool, const std::string &name,
                                   int index) {
    const EntityType *const entityType = Schema::instance().find(type);
    const bool canCreate = parent && entityType && !parent->isHeldByStep();
    Attribute *const attribute = canCreate ? parent->findAttribute(where) : nullptr;
    ChildHolder *const holder = asHolder(attribute);
    if (!holder || !attribute->definition()->takesChild(type)) return nullptr;

    const EditScope scope;
    if (!holder->canTake(type)) deleteEntity(holder->childAt(0));
    std::unique_ptr<Entity> entity = makeEntity(*entityType, name);
    if (loader && loader->supplyContent(*entity)) adoptLinks(*entity, *parent);
    Entity *const created = insertAndRecord(*holder, index, std::move(entity));
    assignIds(*created);
    return created;
}

bool EntityEditor::addEntity(Entity *parent, const AttributePath &where, Entity *child, bool, bool, bool,
                             bool, bool, int index) {
    Attribute *const attribute = parent && !parent->isHeldByStep() ? parent->findAttribute(where) : nullptr;
    if (!attribute) return false;
    if (attribute->kind() == AttributeKind::ReferenceLink) {
        UndoStack &undo = UndoStack::instance();
        std::unique_ptr<Attribute> before = undo.snapshot(*attribute);
        if (isOfAnotherModel(child, *parent)) return false;
        if (!static_cast<ReferenceLink *>(attribute)->setTarget(child)) return false;
        undo.addValueChange(*attribute, std::move(before));
        return true;
    }
    ChildHolder *const holder = asHolder(attribute);
    // What a step holds must not get a second owner.
    const bool fits =
        holder && child && !child->holder() && !child->isHeldByStep() && !parent->isInside(child);
    if (!fits || !holder->canTake(child->getType())) return false;
    const EditScope scope;
    adoptLinks(*child, *parent);
    assignIds(*insertAndRecord(*holder, index, std::unique_ptr<Entity>(child)));
    return true;
}

bool EntityEditor::moveEntity(Entity *entity, Entity *newParent, Attribute *where, bool, int index) {
    if (!entity || !entity->holder() || !newParent || newParent->isInside(entity)) return false;
    // The root of a model has no other place. Ids and links are those of one model.
    Model *const model = newParent->model();
    Model *const oldModel = entity->model();
    if (!entity->getOwnerEntity() || !model || (oldModel && oldModel != model)) return false;
    if (entity->isHeldByStep()) return false;
    ChildHolder *const to = holderFor(*newParent, where, entity->getType());
    if (!to || !to->canTake(entity->getType())) return false;
    UndoStack &undo = UndoStack::instance();
    if (oldModel && !undo.isRecording()) undo.noteUnrecordedRemoval();
    const EditScope scope;
    if (!oldModel) adoptLinks(*entity, *newParent);
    ChildHolder &from = *entity->holder();
    int fromIndex = 0;
    to->insertChild(index, from.removeChild(entity, fromIndex));
    if (oldModel) {
        undo.add(std::make_unique<MoveRecord>(entity, from, fromIndex, *to, index));
    } else {
        recordInsertion(*to, entity, index);
        assignIds(*entity);
    }
    return true;
}

bool EntityEditor::deleteEntity(Entity *entity, bool, bool) { return deleteEntities({entity}); }

bool EntityEditor::deleteEntities(const std::vector<Entity *> &entities, bool, bool) {
    EntitySet going;
    std::vector<Entity *> below;
    for (Entity *entity : entities) {
        if (!entity || !entity->getOwnerEntity() || entity->isHeldByStep()) return false;
        going.insert(entity);
    }
    std::map<ChildHolder *, EntitySet> byHolder;
    std::vector<ChildHolder *> holders; // In the order of the list, so that steps are the same in every run.
    for (Entity *entity : entities) {
        if (isInsideAny(entity->getOwnerEntity(), going)) continue;
        EntitySet &children = byHolder[entity->holder()];
        if (children.empty()) holders.push_back(entity->holder());
        if (children.insert(entity).second) collectBelow(entity, below);
    }

    const EditScope scope;
    UndoStack &undo = UndoStack::instance();
    // Before any link is looked at: entities that only a step holds may be among the referrers.
    if (!undo.isRecording() && !below.empty() && below.front()->model()) undo.noteUnrecordedRemoval();
    for (Entity *entity : below)
        clearReferrers(entity, going);
    for (ChildHolder *holder : holders) {
        const EntitySet &children = byHolder[holder];
        if (auto *list = dynamic_cast<EntityList *>(holder)) {
            removeFromList(*list, children);
        } else {
            removeFromLink(*holder, const_cast<Entity *>(*children.begin()));
        }
    }
    return true;
}

Entity *EntityFetcher::getBoundingEntity(const Entity *entity) {
    const Entity *top = entity;
    while (top && top->getType() != Velkin_Solver_Project_t && top->getOwnerEntity()) {
        top = top->getOwnerEntity();
    }
    if (!top) return nullptr;
    if (top->getType() == Velkin_Solver_Project_t) {
        Entity *const chassis = getLinkedEntity(top, Chassis_t);
        return chassis ? chassis : getLinkedEntity(top, Test_Chamber_t);
    }
    const bool bounds = top->getType() == Chassis_t || top->getType() == Test_Chamber_t;
    return bounds ? const_cast<Entity *>(top) : nullptr;
}

} // namespace EntityModel
