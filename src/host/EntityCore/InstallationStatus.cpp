// What the installed entity types can do.
#include "host/EntityCore/InstallationStatus.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"

namespace Geometry {

bool InstallationStatus::doesItemHaveFilteredStatus(const EntityModel::Entity *entity) {
    return entity && entity->readAttribute(EntityModel::AttributePath(EntityModel::Filtered_t));
}

} // namespace Geometry
