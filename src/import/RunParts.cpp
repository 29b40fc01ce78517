// Solid parts that a step of the import asks for.
#include "import/RunParts.h"

namespace EDA {

using EntityModel::Entity;

RunParts::~RunParts() {
    for (Entity *entity : temporary_)
        builder_.deletePart(entity, false, false);
}

void RunParts::add(const std::vector<Entity *> &entities) {
    std::vector<Entity *> missing;
    for (Entity *entity : entities) {
        if (!builder_.getPart(entity)) missing.push_back(entity);
    }
    builder_.buildParts(missing);
    for (Entity *entity : missing) {
        if (const Geometry::Part *const part = get(entity)) temporary_.push_back(part->getEntity());
    }
}

} // namespace EDA
