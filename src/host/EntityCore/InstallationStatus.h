// What the installed entity types can do.
#pragma once

namespace EntityModel {
class Entity;
}

namespace Geometry {

class InstallationStatus {
public:
    // Can an entity of this type stay in the model although it is filtered out: has it a "Filtered"
    // attribute? False for a null entity.
    static bool doesItemHaveFilteredStatus(const EntityModel::Entity *entity);
};

} // namespace Geometry
