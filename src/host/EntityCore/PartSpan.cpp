// Vertical place of parts: on a side of the board, in a frame, through a board or some of its layers.
#include "host/EntityCore/PartSpan.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace EntityGUI {

namespace {

using EntityModel::AttributePath;
using EntityModel::Entity;
using EntityModel::TypeRef;

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

double yLocation(Entity const &entity) {
    return getStandardDoubleValue(&entity, EntityModel::Y_Location_t, 0.0);
}

std::string readText(Entity const &entity, AttributePath const &label) {
    return getPreciceStringValue(&entity, label, std::string());
}

PartSpan onBoardSide(Entity const &entity, double height, PartFrame const &frame) {
    bool const onBottom =
        frame.plug ? frame.plug->onBottom : readText(entity, EntityModel::Board_Side_t) == "Bottom";
    double const offset = yLocation(entity) + (frame.plug ? frame.plug->lift : 0.0);
    return {onBottom ? 0.0 - offset : frame.boardHeight + offset, height, onBottom};
}

PartSpan alongBoard(Entity const &entity, double height, PartFrame const &frame) {
    std::string const side = readText(entity, EntityModel::Board_Side_t);
    if (side == "Top") return {frame.boardHeight, height, false};
    if (side == "Bottom") return {0.0 - height, height, false};
    return {0.0 - height, height + frame.boardHeight + height, false};
}

// From the lowest to the highest face of two layers of the board; the whole board if they are not there. A
// board has few layers, so they are searched.
PartSpan betweenLayers(Entity const &entity, PartFrame const &frame) {
    static AttributePath const thickness("Conductor Thickness");
    std::string const names[] = {readText(entity, EntityModel::From_Layer_t),
                                 readText(entity, EntityModel::To_Layer_t)};
    std::vector<Entity *> layers;
    getLinkedEntities(frame.board, EntityModel::Conductor_Layers_t, layers);
    double low = 0.0, high = 0.0;
    bool found[] = {false, false};
    for (Entity const *layer : layers) {
        std::string const name = readText(*layer, EntityModel::Name_t);
        for (int i = 0; i < 2; ++i) {
            if (found[i] || names[i] != name) continue;
            double const bottom = yLocation(*layer);
            double const top = bottom + getStandardDoubleValue(layer, thickness, 0.0);
            bool const first = !found[1 - i];
            low = first ? bottom : std::min(low, bottom);
            high = first ? top : std::max(high, top);
            found[i] = true;
        }
    }
    if (!found[0] || !found[1]) return {0.0, frame.boardHeight, false};
    return {low, high - low, false};
}

PartSpan drilledFromBoard(Entity const &entity, double height, PartFrame const &frame) {
    std::string const heightFrom = readText(entity, EntityModel::Height_From_t);
    if (heightFrom == "User Specified") return {yLocation(entity), height, false};
    if (heightFrom == "Layers") return betweenLayers(entity, frame);
    return {0.0, frame.boardHeight, false};
}

// A via that was moved into a part still goes through the board that the part stands on.
PartSpan drilled(Entity const &entity, double height, PartFrame const &frame) {
    PartSpan const span = drilledFromBoard(entity, height, frame);
    if (!frame.board || frame.board == entity.getOwnerEntity()) return span;
    Geometry::Transform const toOwner =
        Geometry::Transform::multiply(frame.toRoot.inverse(), frame.boardToRoot);
    Geometry::Vec3T<double> low(0.0, span.low, 0.0), high(0.0, span.low + span.height, 0.0);
    toOwner.transform(low);
    toOwner.transform(high);
    return {std::min(low.y, high.y), std::abs(high.y - low.y), false};
}

} // namespace

PartSpan readSpan(Entity const &entity, PartRule const &rule, PartFrame const &frame) {
    double const height = getStandardDoubleValue(&entity, rule.height, missing);
    switch (rule.base) {
    case PartBase::YLocation:
        break;
    case PartBase::BoardSide:
        return onBoardSide(entity, height, frame);
    case PartBase::ThroughOwner:
        return {0.0, frame.height, false};
    case PartBase::AlongBoard:
        return alongBoard(entity, height, frame);
    case PartBase::Drilled:
        return drilled(entity, height, frame);
    }
    return {yLocation(entity), height, false};
}

} // namespace EntityGUI
