// Vias that go into the parts they belong to.
#include "import/ViaMoves.h"

#include "host/EntityCore/EntityManager.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Types.h"
#include "import/RunParts.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace EDA {

using namespace EntityModel;

namespace {

// So many vias have solid parts at a time: a million at once would take gigabytes.
constexpr std::size_t chunkSize = 10000;

int countVias(const Entity *owner) {
    const Attribute *const vias = owner ? owner->readAttribute(Vias_t) : nullptr;
    return vias && vias->isEntityList() ? static_cast<const EntityList *>(vias)->size() : 0;
}

std::string viaName(int number) { return "Via " + std::to_string(number); }

// A place for the via in the list of the part. What a library made and no list took is in no model.
bool canHold(const Entity *part, const Entity *board) {
    return part && board && part->model() == board->model() && part->readAttribute(Vias_t);
}

struct PlacedMove {
    EntityEditor::Move move;
    double x; // metres, from the low corner of the part's shape
    double z;
};

// One that stands for many is put by its low corner, and keeps its middle: it does not turn with the part.
PlacedMove placeIn(const EntityEditor::Move &move, const Geometry::Geometry &via,
                   const Geometry::Geometry &part) {
    const bool isGroup = getTypeValue(move.entity, Modelling_Type_t, TypeRef()) == Multiple_Vias_t;
    const double halfWidth = isGroup ? getStandardDoubleValue(move.entity, Width_t, 0.0) * 0.5 : 0.0;
    const double halfDepth = isGroup ? getStandardDoubleValue(move.entity, Depth_t, 0.0) * 0.5 : 0.0;
    Geometry::Vec3T<double> point(halfWidth, 0.0, halfDepth);
    via.getTransform().transform(point);
    part.getTransform().inverse().transform(point);
    const Geometry::Bound &bound = part.getBound();
    return {move, point.x - halfWidth - bound.getXLow(), point.z - halfDepth - bound.getZLow()};
}

// Those whose places can be told.
std::vector<PlacedMove> findPlaces(const std::vector<EntityEditor::Move> &moves,
                                   EntityGUI::GeometryBuilder &builder) {
    std::vector<Entity *> hosts;
    std::unordered_set<const Entity *> seen;
    for (const EntityEditor::Move &move : moves) {
        if (seen.insert(move.newParent).second) hosts.push_back(move.newParent);
    }
    RunParts hostParts(builder);
    hostParts.add(hosts);

    std::vector<PlacedMove> places;
    for (std::size_t begin = 0; begin < moves.size(); begin += chunkSize) {
        const std::size_t end = std::min(begin + chunkSize, moves.size());
        std::vector<Entity *> vias;
        for (std::size_t i = begin; i < end; ++i)
            vias.push_back(moves[i].entity);
        RunParts viaParts(builder);
        viaParts.add(vias);
        for (std::size_t i = begin; i < end; ++i) {
            const Geometry::Part *const via = viaParts.get(moves[i].entity);
            const Geometry::Part *const host = hostParts.get(moves[i].newParent);
            if (via && host) places.push_back(placeIn(moves[i], *via->getGeometry(), *host->getGeometry()));
        }
    }
    return places;
}

} // namespace

std::string ViaMoves::numberedName() const { return viaName(countVias(board_) + 1); }

void ViaMoves::add(const std::vector<Entity *> &vias, Entity *part, Entity *numbered) {
    vias_.insert(vias_.end(), vias.begin(), vias.end());
    definitions_.push_back({vias_.size(), canHold(part, board_) ? part : nullptr, numbered,
                            countVias(board_) - static_cast<int>(vias.size())});
}

template <typename Visit> void ViaMoves::forEach(const Visit &visit) const {
    std::size_t via = 0;
    for (const Definition &definition : definitions_) {
        for (; via < definition.end; ++via)
            visit(definition, vias_[via]);
    }
}

void ViaMoves::make() {
    EntityGUI::GeometryBuilder *const builder = EntityGUI::EntityManager::getGeometryBuilder();
    std::vector<EntityEditor::Move> candidates, moves;
    forEach([&candidates](const Definition &definition, Entity *via) {
        if (definition.part) candidates.push_back({via, definition.part});
    });
    if (!builder || candidates.empty()) return;
    const std::vector<PlacedMove> places = findPlaces(candidates, *builder);
    for (const PlacedMove &place : places)
        moves.push_back(place.move);
    EntityEditor::moveEntities(moves);
    for (const auto &[move, x, z] : places) {
        if (move.entity->getOwnerEntity() != move.newParent) continue;
        EntityEditor::setSIValueNoThrow(move.entity, X_Location_t, x, true);
        EntityEditor::setSIValueNoThrow(move.entity, Z_Location_t, z, true);
    }
    renumber();
}

// Which vias really left is known only now, and with it how long each list was when a via came.
void ViaMoves::renumber() const {
    const auto hasMoved = [](const Definition &definition, const Entity *via) {
        return definition.part && via->getOwnerEntity() == definition.part;
    };
    std::unordered_map<const Entity *, int> sizes; // of the lists of the parts, before the first came
    forEach([&](const Definition &definition, const Entity *via) {
        if (hasMoved(definition, via))
            --sizes.try_emplace(definition.part, countVias(definition.part)).first->second;
    });
    int gone = 0;
    std::size_t via = 0;
    for (const Definition &definition : definitions_) {
        if (definition.numbered && gone > 0)
            EntityEditor::setValue(definition.numbered, Name_t, viaName(definition.listSize - gone + 1),
                                   true);
        for (; via < definition.end; ++via) {
            if (!hasMoved(definition, vias_[via])) continue;
            ++gone;
            const int size = ++sizes[definition.part];
            if (definition.numbered) EntityEditor::setValue(vias_[via], Name_t, viaName(size), true);
        }
    }
}

} // namespace EDA
