// Transforms of parts from the locations and angles of entities.
#include "host/EntityCore/PartPlacement.h"

#include "host/EntityCore/PartSpan.h"
#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"

#include <cmath>
#include <string>
#include <vector>

namespace EntityGUI {

namespace {

using EntityModel::AttributePath;
using EntityModel::Entity;
using EntityModel::TypeRef;
using Form = PartFootprint::Form;
using Geometry::Transform;
using Point = Geometry::Vec3T<double>;

double readNumber(Entity const &entity, AttributePath const &label) {
    return getStandardDoubleValue(&entity, label, 0.0);
}

Transform shift(Point const &by) { return Transform::createTranslation(by.x, by.y, by.z); }

Transform shiftBack(Point const &by) { return Transform::createTranslation(-by.x, -by.y, -by.z); }

// The points of the own frame that the location names and that the part turns about.
struct Anchor {
    Point location;
    Point pivot;
};

Anchor anchorAtCorner(PartRule const &rule, PartFootprint const &print, double height) {
    Anchor anchor;
    anchor.location = {print.xLow, 0.0, print.zLow};
    anchor.pivot = anchor.location;
    if (rule.pivot == PartPivot::Location) return anchor;
    anchor.pivot = {print.xMiddle(), rule.pivot == PartPivot::BodyCentre ? 0.5 * height : 0.0,
                    print.zMiddle()};
    return anchor;
}

Anchor anchorAtCentre(PartFootprint const &print, double y) {
    Point const centre(print.xMiddle(), y, print.zMiddle());
    return {centre, centre};
}

Anchor readAnchor(Entity const &entity, PartRule const &rule, PartFootprint const &print, double height) {
    if (print.form == Form::None || print.form == Form::Polygon || print.placedByOwner) return {};
    if (rule.origin == PartOrigin::Usual)
        return print.form == Form::Circle ? anchorAtCentre(print, 0.0) : anchorAtCorner(rule, print, height);
    std::string const origin = getPreciceStringValue(&entity, EntityModel::Origin_Point_t, std::string());
    if (origin == "Corner") return anchorAtCorner(rule, print, height);
    bool const inBody = origin == "Centre" && rule.origin == PartOrigin::Chosen;
    return anchorAtCentre(print, inBody ? 0.5 * height : 0.0);
}

Transform turnInOrder(Entity const &entity, std::string const &order) {
    static AttributePath const angles[] = {"Angle 1", "Angle 2", "Angle 3"};
    Transform turn;
    for (std::size_t i = 0; i < order.size() && i < 3; ++i) {
        int const axis = order[i] - 'X';
        if (axis < Transform::XAxis || axis > Transform::ZAxis) continue;
        turn = Transform::multiply(turn, Transform::createRotation(readNumber(entity, angles[i]),
                                                                   static_cast<Transform::Axis>(axis)));
    }
    return turn;
}

Transform readTurn(Entity const &entity, PartRule const &rule, PartFrame const &frame) {
    if (rule.turn == PartTurn::None) return Transform();
    TypeRef const mechanism = getTypeValue(&entity, EntityModel::Rotation_Mechanism_t, TypeRef());
    if (rule.turn == PartTurn::Ordered && mechanism.getLabel() == "Ordered")
        return turnInOrder(entity,
                           getPreciceStringValue(&entity, EntityModel::Rotation_Order_t, std::string()));
    double const angle = readNumber(entity, rule.angle) + (frame.plug ? frame.plug->turn : 0.0);
    return Transform::createRotation(angle, Transform::YAxis);
}

// A cylinder that is tilted to the board rolls over the point of its rim with the greatest Z. At 90 degrees
// it lies on the board, from that point on, which is the footprint that the exporter gives it.
Transform readTilt(Entity const &entity, PartFootprint const &print) {
    constexpr double upright = 1e-6;
    double const tilt = readNumber(entity, EntityModel::Angle_To_Board_t);
    if (print.form != Form::Circle || !(tilt > upright)) return Transform();
    Point const rim(print.xMiddle(), 0.0, print.zHigh);
    return Transform::multiply(
        shift(rim), Transform::multiply(Transform::createRotation(tilt, Transform::XAxis), shiftBack(rim)));
}

Point readLocation(Entity const &entity, PartRule const &rule, PartFrame const &frame, bool placedByOwner) {
    Point location;
    if (!placedByOwner) {
        location.x = readNumber(entity, EntityModel::X_Location_t);
        location.z = readNumber(entity, EntityModel::Z_Location_t);
    }
    if (!rule.inShapeFrame) {
        location.x += frame.cornerX;
        location.z += frame.cornerZ;
    }
    TypeRef const shape = getTypeValue(&entity, EntityModel::Shape_t, TypeRef());
    if (frame.plug && (shape == EntityModel::Polygon_t || shape == EntityModel::Cylinder_t)) {
        location.x += frame.plug->middleX;
        location.z += frame.plug->middleZ;
    }
    return location;
}

bool isFinite(Point const &point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

PartFrame plugFrame(Entity const &socket, PartRule const &rule, PartPlace const &place,
                    PartFrame const &frame) {
    PartFrame result = frame;
    result.cornerX += readNumber(socket, EntityModel::X_Location_t);
    result.cornerZ += readNumber(socket, EntityModel::Z_Location_t);
    PartFrame::Plug plug;
    plug.onBottom = getPreciceStringValue(&socket, EntityModel::Board_Side_t, std::string()) == "Bottom";
    plug.turn = readNumber(socket, rule.angle);
    plug.lift = readNumber(socket, EntityModel::Y_Location_t);
    plug.middleX = place.footprint.xMiddle();
    plug.middleZ = place.footprint.zMiddle();
    result.plug = plug;
    return result;
}

} // namespace

bool PartPlace::isSolid() const {
    if (footprint.form == Form::None || !std::isfinite(height)) return false;
    for (int corner = 0; corner < 8; ++corner) {
        Point point((corner & 1) != 0 ? footprint.xHigh : footprint.xLow, (corner & 2) != 0 ? height : 0.0,
                    (corner & 4) != 0 ? footprint.zHigh : footprint.zLow);
        toRoot.transform(point);
        if (!isFinite(point)) return false;
    }
    return true;
}

PartPlace placePart(Entity const &entity, PartRule const &rule, PartFrame const &frame) {
    PartPlace place;
    place.footprint = readFootprint(entity, rule);
    PartSpan const span = readSpan(entity, rule, frame);
    place.height = span.height;
    Anchor const anchor =
        readAnchor(entity, rule, place.footprint, std::isfinite(span.height) ? span.height : 0.0);
    Point location = readLocation(entity, rule, frame, place.footprint.placedByOwner);
    location = {location.x - anchor.location.x + anchor.pivot.x,
                span.low - anchor.location.y + anchor.pivot.y,
                location.z - anchor.location.z + anchor.pivot.z};

    Transform turn = readTurn(entity, rule, frame);
    if (span.hangs) turn = Transform::multiply(turn, Transform::createRotation(180.0, Transform::ZAxis));
    Transform const own = Transform::multiply(shiftBack(anchor.pivot), readTilt(entity, place.footprint));
    place.toOwner = Transform::multiply(shift(location), Transform::multiply(turn, own));
    place.toRoot = Transform::multiply(frame.toRoot, place.toOwner);
    return place;
}

PartFrame childFrame(Entity const &entity, PartRule const &rule, PartPlace const &place,
                     PartFrame const &frame) {
    if (rule.hold == PartHold::Plugged) return plugFrame(entity, rule, place, frame);
    PartFrame result;
    result.toRoot = place.toRoot;
    result.cornerX = place.footprint.xLow;
    result.cornerZ = place.footprint.zLow;
    result.height = std::isfinite(place.height) ? place.height : 0.0;
    bool const isBoard = rule.hold == PartHold::AsBoard;
    result.board = isBoard ? &entity : frame.board;
    result.boardToRoot = isBoard ? result.toRoot : frame.boardToRoot;
    result.boardHeight = isBoard ? result.height : frame.boardHeight;
    return result;
}

PartFrame ownerFrame(Entity const &entity) {
    std::vector<Entity const *> owners;
    for (Entity const *owner = entity.getOwnerEntity(); owner; owner = owner->getOwnerEntity())
        owners.push_back(owner);
    PartFrame frame;
    for (auto owner = owners.rbegin(); owner != owners.rend(); ++owner) {
        PartRule const *const rule = findPartRule((*owner)->getType());
        if (rule) frame = childFrame(**owner, *rule, placePart(**owner, *rule, frame), frame);
    }
    return frame;
}

} // namespace EntityGUI
