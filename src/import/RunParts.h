// Solid parts that a step of the import asks for.
#pragma once

#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/Entity.h"
#include "host/Geometry/Part.h"

#include <vector>

namespace EDA {

// Parts for one run: those that are there stay as they are, those that it needs besides go at its end.
class RunParts {
public:
    explicit RunParts(EntityGUI::GeometryBuilder &builder) : builder_(builder) {}
    ~RunParts();
    RunParts(const RunParts &) = delete;
    RunParts &operator=(const RunParts &) = delete;

    // Sees to it that each of these has a part, if it has a size.
    void add(const std::vector<EntityModel::Entity *> &entities);
    const Geometry::Part *get(EntityModel::Entity *entity) const { return builder_.getPart(entity); }

private:
    EntityGUI::GeometryBuilder &builder_;
    std::vector<EntityModel::Entity *> temporary_;
};

} // namespace EDA
