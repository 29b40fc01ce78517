// The root of a model, and ids.
#include "host/EntityModel/Model.h"

#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Undo.h"

#include <stdexcept>
#include <utility>

namespace EntityModel {

Model::Model(const TypeRef &rootType) {
    const EntityType *const type = Schema::instance().find(rootType);
    if (!type) throw std::invalid_argument("No entity type is called \"" + rootType.getLabel() + "\"");
    insertChild(0, std::make_unique<Entity>(*type));
    assignIds(*root_);
}

Model::~Model() { UndoStack::instance().clear(); }

void Model::assignIds(Entity &entity) {
    std::vector<Entity *> pending{&entity};
    while (!pending.empty()) {
        Entity *const next = pending.back();
        pending.pop_back();
        if (next->id_ == 0) next->id_ = takeId();
        std::vector<Entity *> children;
        next->getChildEntities(children);
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
}

void Model::insertChild(int, std::unique_ptr<Entity> child) {
    child->setHolder(this);
    root_ = std::move(child);
}

std::unique_ptr<Entity> Model::removeChild(Entity *, int &) { return nullptr; }

} // namespace EntityModel
