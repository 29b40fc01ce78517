// The parts that an import put on a board.
#include "PartFinder.h"

#include "Entities.h"
#include "host/EntityModel/Types.h"

#include <algorithm>

namespace EDATool {

using namespace EntityModel;

namespace {

bool isPart(const Entity &entity) {
    for (const Type &type :
         {Type(Component_t), Type(Resistor_t), Type(Capacitor_t), Type(Inductor_t), Type(Chip_Socket_t),
          Type(Cable_Socket_t), Type(Daughter_Board_Socket_t), Type(Solid_Obstruction_t)}) {
        if (entity.getType() == type) return true;
    }
    return false;
}

// A solid has no designator; its name stands for it.
std::string designatorOf(const Entity &part) {
    std::string name;
    return part.getType() == Solid_Obstruction_t ? part.getName(name) : textOf(part, Reference_Designator_t);
}

} // namespace

PartFinder::PartFinder(const Entity *boardEntity, std::uint64_t firstNewId) {
    if (boardEntity == nullptr) return;
    const Entity *parent = boardEntity;
    if (boardEntity->getType() == Substrate_t) parent = boardEntity->getAncestor(Subcomponent_Group_t);
    if (parent != nullptr) addParts(*parent, firstNewId);
    std::sort(parts_.begin(), parts_.end(),
              [](const Entity *a, const Entity *b) { return a->getID().value() < b->getID().value(); });
    for (Entity *part : parts_)
        byDesignator_[designatorOf(*part)].parts.push_back(part);
}

void PartFinder::addParts(const Entity &parent, std::uint64_t firstNewId) {
    std::vector<Entity *> children;
    parent.getChildEntities(children);
    for (Entity *child : children) {
        if (!isPart(*child)) continue;
        if (child->getID().value() >= firstNewId) parts_.push_back(child);
        if (child->getType() == Chip_Socket_t) addParts(*child, firstNewId);
    }
}

Entity *PartFinder::take(const std::string &designator, bool isFiltered) {
    const auto found = byDesignator_.find(designator);
    if (found == byDesignator_.end()) return nullptr;
    Queue &queue = found->second;
    if (queue.next == queue.parts.size() || PartFinder::isFiltered(*queue.parts[queue.next]) != isFiltered)
        return nullptr;
    return queue.parts[queue.next++];
}

bool PartFinder::isFiltered(const Entity &part) {
    const Attribute *const filtered = part.readAttribute(Filtered_t);
    return filtered != nullptr && filtered->getBool();
}

bool PartFinder::isInSocket(const Entity &part) {
    const Entity *const owner = part.getOwnerEntity();
    return owner != nullptr && owner->getType() == Chip_Socket_t;
}

double PartFinder::ownPowerOf(const Entity &entity) {
    const double watts = getStandardDoubleValue(&entity, Thermal_Design_Power_t, 0.0);
    const double percent = getStandardDoubleValue(&entity, Utilisation_t, 0.0);
    return watts * percent * 0.01 + getStandardDoubleValue(&entity, Heat_Dissipated_t, 0.0);
}

double PartFinder::powerOf(const Entity &part) {
    double power = 0.0;
    std::vector<const Entity *> waiting{&part};
    while (!waiting.empty()) {
        const Entity *const entity = waiting.back();
        waiting.pop_back();
        power += ownPowerOf(*entity);
        std::vector<Entity *> children;
        entity->getChildEntities(children);
        for (const Entity *child : children) {
            if (!isInSocket(*child)) waiting.push_back(child);
        }
    }
    return power;
}

} // namespace EDATool
