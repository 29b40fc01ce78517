// One placement on its way to an entity; shared by the files about components, not for others.
#pragma once

#include "import/EDAImporterDetail.h"

#include <string>

namespace EDA {

// What the outline of a definition says, whatever stands on it: asked once, since a definition may be placed
// a hundred thousand times. Lengths are in the component's units.
struct EDAImporter::OutlineFacts {
    std::string units;
    double xLow = 0.0; // Of the bound; 0 without a point.
    double yLow = 0.0;
    double xHigh = 0.0;
    double yHigh = 0.0;
    bool isRectangle = false; // Never without the option that simplifies shapes.
    bool isCylinder = false;
    double centreX = 0.0; // Of the circle.
    double centreY = 0.0;
    double diameter = 0.0;
    std::string text; // As a polygon; made when first needed.
};

struct EDAImporter::Placing {
    Entity *boardEntity;
    const EDAComponent &component;
    const EDAComponentPlacement &placement;
    const EDABoard &board;

    Entity *entity = nullptr;
    bool isFromLibrary = false;

    OutlineFacts *facts = nullptr;
    bool useRect = false;    // It becomes a box.
    bool isCylinder = false; // It becomes a cylinder, unless it becomes a box.
    bool forceBound = false; // Its type takes no better shape than the bound.
    double width = 0.0;      // Of the box, or of the bound.
    double depth = 0.0;
    double x = 0.0; // What the entity is placed at, before mapZCoord.
    double y = 0.0;

    bool isSolid() const { return entity->getType() == EntityModel::Solid_Obstruction_t; }
    bool isComponent() const { return entity->getType() == EntityModel::Component_t; }
};

// What the importer knows of placed components for the time of one import only.
class EDAImporter::ComponentScope {
public:
    explicit ComponentScope(EDAImporter &importer) : importer_(importer) {}
    ~ComponentScope() { importer_.forgetComponents(); }
    ComponentScope(const ComponentScope &) = delete;
    ComponentScope &operator=(const ComponentScope &) = delete;

private:
    EDAImporter &importer_;
};

} // namespace EDA
