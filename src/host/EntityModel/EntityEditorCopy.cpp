// Deep copies of entities.
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/EntityEditorDetail.h"
#include "host/EntityModel/Types.h"

namespace EntityModel {

namespace {

std::unique_ptr<Entity> copyTree(const Entity &original, EntityEditor::CopyMap &copies);

void copyElements(const ListAttribute &from, ListAttribute &to) {
    ListAttribute::Elements elements;
    for (int i = 0; i < from.size(); ++i) {
        const std::unique_ptr<Attribute> value(from.at(i)->clone());
        value->setLocked(false);
        elements.push_back(std::make_unique<ListElement>(to.definition(), to.getOwnerEntity(), i + 1));
        elements.back()->swapValue(*value);
    }
    to.append(std::move(elements));
}

void copyAttribute(const Attribute &from, Entity &copy, EntityEditor::CopyMap &copies) {
    Attribute &to = copy.attribute(*from.definition());
    if (from.isEntityList()) {
        auto &list = static_cast<EntityList &>(to);
        for (const Entity *child : static_cast<const EntityList &>(from)) {
            list.insertChild(-1, copyTree(*child, copies));
        }
    } else if (from.kind() == AttributeKind::OwningLink) {
        const Entity *const child = static_cast<const OwningLink &>(from).target();
        if (child) static_cast<OwningLink &>(to).insertChild(0, copyTree(*child, copies));
    } else if (from.kind() == AttributeKind::AttributeList) {
        copyElements(static_cast<const ListAttribute &>(from), static_cast<ListAttribute &>(to));
    } else {
        const std::unique_ptr<Attribute> value(from.clone());
        value->setLocked(false);
        to.swapValue(*value);
    }
}

// As deep as the tree; the schema and the depth limit of model files bound it.
std::unique_ptr<Entity> copyTree(const Entity &original, EntityEditor::CopyMap &copies) {
    auto copy = std::make_unique<Entity>(original.entityType());
    copies[&original] = copy.get();
    original.forEachStored(
        [&copy, &copies](const Attribute &attribute) { copyAttribute(attribute, *copy, copies); });
    return copy;
}

// A link to an entity that was copied along points to the copy.
void redirectLinks(Entity &copy, const EntityEditor::CopyMap &copies) {
    copy.forEachStored([&copy, &copies](const Attribute &attribute) {
        if (attribute.kind() != AttributeKind::ReferenceLink) return;
        const auto found = copies.find(static_cast<const ReferenceLink &>(attribute).target());
        if (found == copies.end()) return;
        static_cast<ReferenceLink &>(copy.attribute(*attribute.definition())).setTarget(found->second);
    });
}

} // namespace

void EntityEditor::finishCopies(const CopyMap &copies) {
    for (const auto &[original, made] : copies) {
        made->createdInStep_ = UndoStack::instance().currentStep();
        redirectLinks(*made, copies);
    }
}

std::unique_ptr<Entity> EntityEditor::cloneEntity(const Entity &entity) {
    CopyMap copies;
    std::unique_ptr<Entity> copy = copyTree(entity, copies);
    finishCopies(copies);
    return copy;
}

bool EntityEditor::copyContent(const Entity &from, Entity &to) {
    if (&from.entityType() != &to.entityType() || &from == &to || to.id_ != 0 || to.model()) return false;
    std::string name;
    to.getName(name);
    CopyMap copies{{&from, &to}};
    to.slots_.clear();
    from.forEachStored([&to, &copies](const Attribute &attribute) { copyAttribute(attribute, to, copies); });
    finishCopies(copies);
    if (!name.empty()) to.findAttribute(Name_t)->setFromString(name);
    return true;
}

Entity *EntityEditor::copyEntity(Entity *entity, Entity *parent, Attribute *where, bool, CopyMap *copied) {
    if (!entity || !parent || parent->isHeldByStep()) return nullptr;
    ChildHolder *const holder = holderFor(*parent, where, entity->getType());
    if (!holder || !holder->canTake(entity->getType())) return nullptr;

    const EditScope scope;
    CopyMap copies;
    std::unique_ptr<Entity> copy = copyTree(*entity, copies);
    finishCopies(copies);
    if (entity->model() != parent->model()) adoptLinks(*copy, *parent);
    Entity *const inserted = insertAndRecord(*holder, -1, std::move(copy));
    assignIds(*inserted);
    if (copied) copied->insert(copies.begin(), copies.end());
    return inserted;
}

} // namespace EntityModel
