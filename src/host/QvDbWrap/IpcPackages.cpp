// Packages and components of a step of an IPC-2581 document.
#include "host/QvDbWrap/IpcStepReader.h"

#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <utility>

namespace QvDbWrap {

namespace {

// The rectangle around all that was drawn.
class Extent {
public:
    void add(const Areas &areas) {
        for (const Area &area : areas)
            for (const _mFPOINT &point : area.outer)
                add(point);
    }
    Ring rectangle() const {
        if (!(low_.x < high_.x) || !(low_.y < high_.y)) return {};
        return {low_, {high_.x, low_.y}, high_, {low_.x, high_.y}};
    }

private:
    void add(const _mFPOINT &point) {
        low_ = isEmpty_ ? point : _mFPOINT{std::min(low_.x, point.x), std::min(low_.y, point.y)};
        high_ = isEmpty_ ? point : _mFPOINT{std::max(high_.x, point.x), std::max(high_.y, point.y)};
        isEmpty_ = false;
    }

    _mFPOINT low_;
    _mFPOINT high_;
    bool isEmpty_ = true;
};

} // namespace

// The body is the package's outline, or where there is none what its assembly drawing shows.
void IpcStepReader::readPackage() {
    IpcPackage package;
    package.name = xml_.text("name");
    package.height = context_.geometry.length(xml_, "height");
    Ring drawing;
    Ring courtyard;
    xml_.eachChild([&] {
        if (xml_.is("Outline"))
            package.outline = readBody();
        else if (xml_.is("AssemblyDrawing"))
            drawing = readBody();
        else if (xml_.is("Courtyard"))
            courtyard = readBody();
        else
            context_.passOver();
    });
    if (useCourtyards_ && !courtyard.empty()) package.outline = courtyard;
    if (package.outline.empty()) package.outline = !drawing.empty() ? drawing : courtyard;
    if (package.outline.empty()) context_.log.warn("package " + package.name + " has no outline");
    step_.packages.push_back(std::move(package));
}

// A polygon, straight in the open element or in an Outline there; else the rectangle around all shapes.
Ring IpcStepReader::readBody() {
    Ring ring;
    Extent extent;
    const auto readPolygon = [&] {
        Ring polygon = context_.geometry.readRing(xml_);
        if (ring.empty() && polygon.size() > 2 && context_.geometry.isUsable({Area{polygon, {}}}))
            ring = std::move(polygon);
    };
    const auto readShapes = [&] {
        const Placed placed = readPlaced();
        for (const IpcPlacement &placement : placed.placements())
            extent.add(apply(placement, placed.areas));
    };
    xml_.eachChild([&] {
        if (xml_.is("Polygon"))
            readPolygon();
        else if (xml_.is("Outline"))
            xml_.eachChild([&] {
                if (xml_.is("Polygon")) readPolygon();
            });
        else if (xml_.is("Marking"))
            readShapes();
        else if (IpcGeometry::isShape(xml_))
            extent.add(context_.geometry.readShape(xml_));
        else
            context_.passOver();
    });
    return ring.empty() ? extent.rectangle() : ring;
}

void IpcStepReader::readComponent() {
    IpcComponent component;
    component.designator = xml_.text("refDes");
    component.package = xml_.text("packageRef");
    component.part = xml_.text("part");
    component.layer = xml_.text("layerRef");
    component.height = context_.geometry.length(xml_, "height");
    bool hasPlace = false;
    xml_.eachChild([&] {
        const bool isXform = xml_.is("Xform");
        if (isXform) context_.geometry.readXform(xml_, component.placement);
        if (xml_.is("Location") || (isXform && !hasPlace && xml_.has("x"))) {
            context_.geometry.readLocation(xml_, component.placement);
            hasPlace = true;
        } else if (!isXform) {
            context_.passOver();
        }
    });
    if (!hasPlace) context_.log.warn("a component has no location: it is put at 0, 0");
    step_.components.push_back(std::move(component));
}

} // namespace QvDbWrap
