// Links of what enters a model.
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/EntityEditorDetail.h"
#include "host/EntityModel/Model.h"

namespace EntityModel {

namespace {

// Gives `visit` each set reference link of the tree.
template <typename Visit> void forEachLink(Entity &root, Visit visit) {
    std::vector<Entity *> pending{&root};
    while (!pending.empty()) {
        Entity *const entity = pending.back();
        pending.pop_back();
        entity->getChildEntities(pending);
        entity->forEachStored([&](const Attribute &attribute) {
            if (attribute.kind() != AttributeKind::ReferenceLink) return;
            auto &link = static_cast<ReferenceLink &>(entity->attribute(*attribute.definition()));
            if (link.target()) visit(link);
        });
    }
}

} // namespace

Entity *Model::findMaterial(const std::string &name) {
    const auto *const materials = static_cast<EntityList *>(root_->findAttribute(Materials_t));
    if (!materials) return nullptr;
    // Names change between steps, and outside of them at any time.
    const std::uint32_t step = UndoStack::instance().currentStep();
    if (step == 0 || step != materialsStep_) materials_.reset();
    materialsStep_ = step;
    return materials_.find(*materials, name);
}

void EntityEditor::adoptLinks(Entity &entering, const Entity &parent) {
    Model *const model = parent.model();
    if (!model) return;
    const auto adopt = [model](const Entity &material) -> Entity * {
        std::string name;
        if (Entity *const own = model->findMaterial(material.getName(name))) return own;
        auto *const list = asHolder(model->root()->findAttribute(Materials_t));
        if (!list || !list->canTake(material.getType())) return nullptr;
        Entity *const copy = insertAndRecord(*list, -1, cloneEntity(material));
        assignIds(*copy);
        return copy;
    };
    forEachLink(entering, [&](ReferenceLink &link) {
        const Entity *const target = link.target();
        if (target->isInside(&entering) || target->model() == model) return;
        link.setTarget(target->getType() == Material_t ? adopt(*target) : nullptr);
    });
}

} // namespace EntityModel
