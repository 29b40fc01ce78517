// From the item instances of an IDX document to the parts of a board.
#include "readers/IDXReader.h"

#include <cmath>

namespace EDA {

namespace {

double finiteOrZero(double value) { return std::isfinite(value) ? value : 0.0; }

std::string textOf(const QMap<QString, QString> &properties, const char *name) {
    return properties.value(QLatin1String(name)).toStdString();
}

bool has(const QMap<QString, QString> &properties, const char *name) {
    return properties.contains(QLatin1String(name));
}

// A property as a number; 0 without the property, and where it is no finite number.
double numberOf(const QMap<QString, QString> &properties, const char *name) {
    bool isNumber = false;
    const double value = properties.value(QLatin1String(name)).toDouble(&isNumber);
    return isNumber ? finiteOrZero(value) : 0.0;
}

} // namespace

// A kind of shape and what its instances become; without a function they become nothing.
struct IDXReader::PartRule {
    const char *kind;
    void (IDXReader::*create)(const ItemInstance &instance, const Item &item, const Shape &shape);
};

void IDXReader::createParts() {
    int index = 0;
    for (auto layer = board_.beginLayers(); layer != board_.endLayers(); ++layer)
        noteLayer(*layer, index++);
    for (const ItemInstance &instance : qAsConst(tables_.instances))
        createPart(instance);
    for (const auto &[id, shape] : tables_.shapes)
        if (shape.kind == QLatin1String("Stratum") && making_.usedShapes.count(id) == 0) addLayer(shape);
}

void IDXReader::createPart(const ItemInstance &instance) {
    static constexpr PartRule rules[] = {
        {"Stratum", &IDXReader::createStratum},
        {"Component", &IDXReader::createComponent},
        {"MechanicalItem", &IDXReader::createComponent},
        {"KeepOut", &IDXReader::createKeepout},
        {"PlatedCutout", &IDXReader::createCutout},
        {"Cutout", &IDXReader::createCutout},
        {"KeepIn", nullptr},
    };
    const Item &item = lookUp(tables_.items, instance.item);
    if (!takeLength(item.shape)) return;
    const Shape &shape = lookUp(tables_.shapes, item.shape);
    making_.usedShapes.insert(item.shape);
    for (const PartRule &rule : rules) {
        if (shape.kind != QLatin1String(rule.kind)) continue;
        if (rule.create)
            (this->*rule.create)(instance, item, shape);
        else
            ++passedOver_.keepIns;
        return;
    }
    reportKind(shape.kind);
}

// The first one that is no plain layer is the board.
void IDXReader::createStratum(const ItemInstance &instance, const Item &, const Shape &shape) {
    const bool isLayer = !shape.technology.isEmpty() && instance.name != QLatin1String("BoardOutline") &&
                         !getShapeElementType(shape).isEmpty();
    if (making_.boardTaken || isLayer) return addLayer(shape);
    if (has(instance.properties, "THICKNESS"))
        board_.setThickness(numberOf(instance.properties, "THICKNESS"));
    double width = 0.0, low = 0.0, high = 0.0;
    generateOutline(board_.getOutline(), shape, width);
    if (getZDimensions(shape, low, high)) board_.setThickness(finiteOrZero(high - low));
    making_.boardTaken = true;
}

void IDXReader::createComponent(const ItemInstance &instance, const Item &item, const Shape &shape) {
    const bool isMechanical = shape.kind == QLatin1String("MechanicalItem");
    const MadeShape made = componentShape(item.shape, shape);
    EDAComponent component(isMechanical ? "MECHANICAL" : "ELECTRICAL");
    component.getOutline() = made.outline;
    if (has(instance.properties, "PKGNAME"))
        component.setName(textOf(instance.properties, "PKGNAME"));
    else
        component.setName(item.packageName.isEmpty() ? instance.instanceName.toStdString()
                                                     : takeText(item.packageName));
    if (has(instance.properties, "PARTNUM"))
        component.setPartNumber(textOf(instance.properties, "PARTNUM"));
    else
        component.setPartNumber(takeText(item.properties.value(QStringLiteral("PARTNUM"))));
    if (made.hasHeight) component.setHeight(finiteOrZero(made.high - made.low));
    board_.addComponent(component, true);
    createPlacement(instance, component, made);
}

void IDXReader::createPlacement(const ItemInstance &instance, const EDAComponent &component,
                                const MadeShape &made) {
    const QMap<QString, QString> &properties = instance.properties;
    EDAComponentPlacement placement;
    placement.setName(component.getName()); // which the board may have changed
    placement.setPartNumber(component.getPartNumber());
    placement.setReferenceDesignator(instance.name.isEmpty() ? textOf(properties, "REFDDES")
                                                             : instance.name.toStdString());
    if (has(properties, "PLACED"))
        placement.setStatus(textOf(properties, "PLACED") == "true" ? "PLACED" : "UNPLACED");
    const Transform &transform = instance.transform;
    if (transform.present) {
        // The orientation carries the rotation; the properties about the place are left alone.
        placement.setLocation(transform.tx, transform.ty);
        placement.setOrientation(transform.xx, transform.xy, transform.yx, transform.yy);
        if (transform.isMirror()) placement.setBoardSide("BOTTOM");
        if (made.hasHeight) placement.setOffset(made.low);
    } else {
        placement.setBoardSide(textOf(properties, "SIDE"));
        placement.setAngle(numberOf(properties, "ROTATION"));
        placement.setLocation(numberOf(properties, "XLOC"), numberOf(properties, "YLOC"));
        placement.setOffset(numberOf(properties, "MNTOFFSET"));
    }
    board_.addComponentPlacement(std::move(placement));
}

// The transform of the instance says on which side the keepout is, but does not move it.
void IDXReader::createKeepout(const ItemInstance &instance, const Item &, const Shape &shape) {
    EDAKeepout keepout(takeText(shape.purpose));
    double width = 0.0, low = 0.0, high = 0.0;
    generateOutline(keepout.getOutline(), shape, width);
    keepout.setName(instance.instanceName.toStdString());
    if (has(instance.properties, "SIDE"))
        keepout.setBoardSide(textOf(instance.properties, "SIDE"));
    else
        keepout.setBoardSide(instance.transform.isMirror() ? "BOTTOM" : "TOP");
    if (getZDimensions(shape, low, high)) keepout.setHeight(finiteOrZero(high - low));
    board_.addKeepout(keepout);
}

void IDXReader::createCutout(const ItemInstance &instance, const Item &, const Shape &shape) {
    Circle circle;
    QString elementType;
    if (!getCircleShape(shape, circle, elementType)) return reportKind(shape.kind);
    const QMap<QString, QString> &properties = instance.properties;
    const Transform &transform = instance.transform;
    if (!takeLength(circle.centre)) return;
    const std::pair<double, double> &centre = lookUp(tables_.points, circle.centre);
    const double x = transform.present ? transform.tx : numberOf(properties, "XLOC");
    const double y = transform.present ? transform.ty : numberOf(properties, "YLOC");
    EDAVia via;
    via.setName(has(properties, "MHNAME") ? textOf(properties, "MHNAME")
                                          : instance.instanceName.toStdString());
    via.setHoleType(takeText(elementType));
    if (shape.kind == QLatin1String("PlatedCutout")) via.setPlated(true);
    via.setDiameter(circle.diameter);
    via.setCentre(finiteOrZero(centre.first + x), finiteOrZero(centre.second + y));
    if (has(properties, "ICMIDX_ATTRIBUTE_HOLE_ASSOCIATED_PART"))
        via.setAssociatedPart(textOf(properties, "ICMIDX_ATTRIBUTE_HOLE_ASSOCIATED_PART"));
    board_.addVia(via, true);
}

IDXReader::MadeShape IDXReader::makeShape(const Shape &shape) {
    MadeShape made;
    double width = 0.0;
    const std::size_t points = making_.points, outlines = making_.outlines;
    generateOutline(made.outline, shape, width);
    made.hasHeight = getZDimensions(shape, made.low, made.high);
    made.points = making_.points - points;
    made.outlines = making_.outlines - outlines;
    return made;
}

// A shape that gave a message is made anew each time, for the message.
IDXReader::MadeShape IDXReader::componentShape(const QString &id, const Shape &shape) {
    const auto found = making_.madeShapes.find(id);
    if (found != making_.madeShapes.end()) {
        const bool isTaken = takePoints(found->second.points) && takeOutlines(found->second.outlines);
        return isTaken ? found->second : MadeShape();
    }
    const std::size_t messages = making_.messages;
    MadeShape made = makeShape(shape);
    if (making_.messages == messages) making_.madeShapes.emplace(id, made);
    return made;
}

} // namespace EDA
