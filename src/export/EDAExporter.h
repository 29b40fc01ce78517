// Fills a board with what the host's entity model says of one.
#pragma once

#include "host/EntityModel/Entity.h"
#include "model/EDABoard.h"

#include <string>

namespace EDA {

// Walks the entity tree of a board and fills an `EDABoard` with the outline and its holes, the components and
// their placements, the keepouts and the vias, ready for a writer. It opens no file. Layers, traces, nets,
// bumps and wirebonds are not exported.
//
//     EDA::EDABoard board;
//     EDA::EDAExporter().exportBoard(entity, board, "MM");
//
// Entity X and Z become board x and -y, moved so that the low-x, high-y corner of the outline's bound is
// where the items count from: for a polygonal board the exact undoing of what the importer does.
//
// Components that are modelled in detail, and vias that belong to components, are looked up in the geometry
// builder of EntityManager. The exporter builds nothing: without a built part such a component has no
// outline, and such a via counts from the corner of the board.
//
// Nothing is reported: what an entity lacks is skipped, and the field keeps its default. The model is only
// read, and stays bit for bit as it was. An exporter keeps nothing between calls but the units.
class EDAExporter {
public:
    EDAExporter();
    EDAExporter(const EDAExporter &);
    EDAExporter &operator=(const EDAExporter &);
    virtual ~EDAExporter();

    // Adds the board of `boardEntity`, a PCB or a substrate, to `board`, which should be empty: it is not
    // cleared. A null entity does nothing. All lengths are in `units`; empty means those of the user's
    // preferences, "MM" or "THOU", and without any those of the previous call. A unit that the host does not
    // know is handed to the host as it is, which then gives each number in a unit of its own: such a board is
    // in no one unit, and sums of lengths in it mean nothing.
    void exportBoard(EntityModel::Entity *boardEntity, EDABoard &board, const std::string &units);

private:
    using AttributePath = EntityModel::AttributePath;
    using Entity = EntityModel::Entity;

    // The walk (EDAExporter.cpp).
    void settleUnits(const std::string &units);
    void exportHoles(Entity *boardEntity, EDABoard &board, double xLow, double yHigh) const;
    void exportParts(Entity *boardEntity, EDABoard &board, double offsetX, double offsetY) const;
    void exportChipSockets(Entity *boardEntity, EDABoard &board, double offsetX, double offsetY) const;
    void exportKeepouts(Entity *boardEntity, EDABoard &board, double offsetX, double offsetY) const;
    void addViasOf(Entity *part, EDABoard &board, double offsetX, double offsetY) const;

    // Components and keepouts (EDAExporterItems.cpp). An item at X, Z of its entity goes to X + offsetX,
    // -(Z + offsetY). `socket` is what the component is plugged into, or null.
    void addComponentAndPlacement(Entity *entity, const std::string &type, EDABoard &board, Entity *socket,
                                  double offsetX, double offsetY) const;
    void addKeepout(Entity *entity, const std::string &type, EDABoard &board, double offsetX,
                    double offsetY) const;
    double partHeight(const Entity *entity) const;
    void exportDetailedBody(Entity *entity, EDAComponent &component) const;
    void place(EDAComponentPlacement &placement, const Entity *entity, const Entity *socket, double offsetX,
               double offsetY) const;

    // Vias (EDAExporterVias.cpp).
    void addVia(Entity *entity, EDABoard &board, double offsetX, double offsetY) const;
    void addSingleVia(Entity *entity, EDAVia &via, EDABoard &board, double offsetX, double offsetY) const;
    void addMultipleVias(Entity *entity, EDAVia &via, EDABoard &board, double offsetX, double offsetY) const;
    bool findInBoardFrame(Entity *via, double &x, double &z) const;

    // Properties (EDAExporterProperties.cpp).
    static void addProperties(const Entity *entity, EDAComponent &component);

    // The shape of an entity, added to the outline itself (index 0) or to one inside it (counted from 1), at
    // (`x`, `y`): a rectangle's low-x, high-y corner or with `fromCentre` its middle, a circle's centre, a
    // polygon's origin. The angle, in degrees, turns inner outlines alone (EDAExporterShape.cpp).
    void exportShape(Entity *entity, EDAOutline &outline, int outlineIndex, double x, double y, double angle,
                     bool fromCentre) const;
    void addPolygon(const Entity *entity, EDAOutline &outline, int outlineIndex, double x, double y) const;
    void addCylinder(const Entity *entity, EDAOutline &outline, int outlineIndex, double x, double y) const;

    // Shared by all topics. Lengths are in the units of the export, and 0 where they are missing.
    double length(const Entity *entity, const AttributePath &path) const;
    double depth(const Entity *entity, double missing) const; // "Length" where there is no "Depth"
    double mapZCoord(double z) const { return -z; }

    std::string units_;
};

} // namespace EDA
