// The parts that an import put on a board.
#pragma once

#include "host/EntityModel/Entity.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace EDATool {

// Finds the entities of placements by their reference designators. Each is given once, in the order in which
// they were made, so that placements of the same designator get one each.
class PartFinder {
public:
    // The parts under a board entity whose ids are not below `firstNewId`; none for null. On a substrate they
    // are the solids beside it.
    PartFinder(const EntityModel::Entity *boardEntity, std::uint64_t firstNewId);

    const std::vector<EntityModel::Entity *> &parts() const { return parts_; }

    // The next part of this designator, if it is filtered or not as asked; else null.
    EntityModel::Entity *take(const std::string &designator, bool isFiltered);

    static bool isFiltered(const EntityModel::Entity &part);
    static bool isInSocket(const EntityModel::Entity &part);

    // In watts: the power that is stored at the entity itself.
    static double ownPowerOf(const EntityModel::Entity &entity);

    // In watts: that of the part and all below it, but not that of a part in a socket.
    static double powerOf(const EntityModel::Entity &part);

private:
    struct Queue {
        std::vector<EntityModel::Entity *> parts;
        std::size_t next = 0;
    };

    void addParts(const EntityModel::Entity &parent, std::uint64_t firstNewId);

    std::vector<EntityModel::Entity *> parts_;
    std::unordered_map<std::string, Queue> byDesignator_;
};

} // namespace EDATool
