// The root of the board model.
#pragma once

#include "model/DefinitionTable.h"
#include "model/EDABoardLayer.h"
#include "model/EDABump.h"
#include "model/EDAComponent.h"
#include "model/EDAComponentPlacement.h"
#include "model/EDAKeepout.h"
#include "model/EDAOutline.h"
#include "model/EDAVia.h"
#include "model/EDAWirebond.h"
#include "model/PartTable.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace EDA {

// A printed circuit board as its design file tells it: the edge with its cut-outs, the stack
// of layers, component definitions and their placements, holes, bumps, keepouts and wires.
// Each reader fills one; the import and the writers walk one.
//
//     EDABoard board;
//     board.setUnits("mm");
//     board.addPoint(0, 0.0, 0.0, 0.0); // ... the edge
//     EDAComponent part("ELECTRICAL");
//     part.setName("QFP64");
//     board.addComponent(part, true);
//     EDAComponentPlacement placed;
//     placed.setName(part.getName()); // after addComponent, which may have renamed the part
//     board.addComponentPlacement(placed);
//
// Guarantees and caveats:
// - Lengths are in the board's units, named by `getUnits`; nothing here converts them.
// - All is held by value, in the order added; a copy is a deep copy. Objects refer to each
//   other by name only.
// - A pointer, reference or iterator into one of the collections is valid until the next
//   addition to that collection.
// - Searches use tables that are made at the first search and kept up to date behind `const`,
//   also when stored objects are renamed through iterators. A board belongs to one thread at a time.
// - A search that finds nothing says so by its result. Only `getNthLayer` throws.
class EDABoard {
public:
    using ComponentIterator = std::vector<EDAComponent>::iterator;
    using ConstComponentIterator = std::vector<EDAComponent>::const_iterator;
    using PlacementIterator = std::vector<EDAComponentPlacement>::iterator;
    using ConstPlacementIterator = std::vector<EDAComponentPlacement>::const_iterator;
    using KeepoutIterator = std::vector<EDAKeepout>::const_iterator;
    using ViaIterator = std::vector<EDAVia>::const_iterator;
    using BumpIterator = std::vector<EDABump>::const_iterator;
    using LayerIterator = std::vector<EDABoardLayer>::const_iterator;
    using OutlineIterator = std::vector<EDAOutline>::const_iterator;
    using WirebondIterator = std::vector<EDAWirebond>::const_iterator;

    EDABoard();
    EDABoard(EDABoard const &);
    EDABoard(EDABoard &&) noexcept;
    EDABoard &operator=(EDABoard const &);
    EDABoard &operator=(EDABoard &&) noexcept;
    virtual ~EDABoard();

    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }

    void setUnits(std::string const &units) { units_ = units; }
    std::string const &getUnits() const { return units_; }

    void setThickness(double thickness) { thickness_ = thickness; }
    double getThickness() const { return thickness_; }

    void setImportType(std::string const &type) { importType_ = type; }
    // True when the import type is empty or "BASELINE" (case counts).
    bool isBaselineImport() const { return importType_.empty() || importType_ == "BASELINE"; }

    void setConductorMaterial(std::string const &material) { conductorMaterial_ = material; }
    std::string const &getConductorMaterial() const { return conductorMaterial_; }

    void setDielectricMaterial(std::string const &material) { dielectricMaterial_ = material; }
    std::string const &getDielectricMaterial() const { return dielectricMaterial_; }

    void setSourceBoardFile(std::string const &filename) { sourceBoardFile_ = filename; }
    void setSourceLibraryFile(std::string const &filename) { sourceLibraryFile_ = filename; }
    void getSourceFilename(std::string &board, std::string &library) const;

    // Whether the top offsets of the layers are to be trusted.
    void setGoodEDA(bool const &good) { goodEDA_ = good; }
    bool getGoodEDA() const { return goodEDA_; }

    // The edge.

    // The board edge; its internal outlines are the cut-outs.
    EDAOutline &getOutline() { return outline_; }
    EDAOutline const &getOutline() const { return outline_; }
    // `EDAOutline::addPoint` on the outline: index 0 is the edge, higher ones are cut-outs.
    void addPoint(int outline, double x, double y, double angle) { outline_.addPoint(outline, x, y, angle); }
    // Turns one cut-out, counted from 0, by `angle` degrees about (`x`, `y`). Any other index
    // does nothing.
    void rotateInternalOutline(int index, double angle, double x, double y);

    // Append a copy; the argument is not changed.
    void addRouteOutline(EDAOutline &outline) { routeOutlines_.push_back(outline); }
    std::size_t numRouteOutlines() const { return routeOutlines_.size(); }
    OutlineIterator beginRouteOutlines() const { return routeOutlines_.begin(); }
    OutlineIterator endRouteOutlines() const { return routeOutlines_.end(); }

    void addPlacementOutline(EDAOutline &outline) { placementOutlines_.push_back(outline); }
    std::size_t numPlacementOutlines() const { return placementOutlines_.size(); }
    OutlineIterator beginPlacementOutlines() const { return placementOutlines_.begin(); }
    OutlineIterator endPlacementOutlines() const { return placementOutlines_.end(); }

    // Components and placements.

    // Appends a copy. With `checkDuplicates`, a stored component of the same name and part
    // number decides: with the same height and outline the new one is dropped; otherwise
    // "-1", "-2" and so on is appended to the new one's name, IN THE CALLER'S OBJECT TOO.
    // Only the first stored namesake is compared: a third shape that equals the second
    // still gets a name of its own, which is intended.
    void addComponent(EDAComponent &component, bool checkDuplicates);
    std::size_t numComponents() const { return components_.size(); }
    ComponentIterator beginComponents() { return components_.begin(); }
    ComponentIterator endComponents() { return components_.end(); }
    ConstComponentIterator beginComponents() const { return components_.begin(); }
    ConstComponentIterator endComponents() const { return components_.end(); }

    // Appends a copy; the argument is not changed.
    void addComponentPlacement(EDAComponentPlacement &placement) { placements_.push_back(placement); }
    void addComponentPlacement(EDAComponentPlacement &&placement);
    std::size_t numComponentPlacements() const { return placements_.size(); }
    PlacementIterator beginPlacements() { return placements_.begin(); }
    PlacementIterator endPlacements() { return placements_.end(); }
    ConstPlacementIterator beginPlacements() const { return placements_.begin(); }
    ConstPlacementIterator endPlacements() const { return placements_.end(); }

    // The first component with the placement's name and part number, otherwise the first with
    // its name, otherwise null.
    EDAComponent const *findComponent(EDAComponentPlacement const &placement) const;
    // Appends copies of the placements with the component's name and part number to `found`.
    // If `found` is empty after that, appends those with its name alone.
    void findComponentPlacements(EDAComponent const &component,
                                 std::vector<EDAComponentPlacement> &found) const;
    // Calls `use` for each placement that `findComponentPlacements` gives, in order, until it returns false.
    void visitComponentPlacements(EDAComponent const &component,
                                  std::function<bool(EDAComponentPlacement const &)> const &use) const;

    // Keepouts, holes, bumps and wires.

    // Appends a copy; the argument is not changed.
    void addKeepout(EDAKeepout &keepout) { keepouts_.push_back(keepout); }
    std::size_t numKeepouts() const { return keepouts_.size(); }
    KeepoutIterator beginKeepouts() const { return keepouts_.begin(); }
    KeepoutIterator endKeepouts() const { return keepouts_.end(); }

    // With `merge`, adds the via's name and location to the first stored definition that
    // `via.isInstanceOf` accepts. Without it, or when there is none, appends a copy.
    void addVia(EDAVia const &via, bool merge);
    // The first stored definition that `via.isInstanceOf` accepts, or null. Its time does not
    // grow with the number of vias.
    EDAVia *findViaDefinition(EDAVia const &via);
    // With 0 the number of definitions, otherwise of definitions and all their instances.
    std::size_t numVias(int withInstances) const;
    ViaIterator beginVias() const { return vias_.begin(); }
    ViaIterator endVias() const { return vias_.end(); }

    // As `addVia`, `findViaDefinition` and `numVias`.
    void addBump(EDABump const &bump, bool merge);
    EDABump *findBumpDefinition(EDABump const &bump);
    std::size_t numBumps(int withInstances) const;
    BumpIterator beginBumps() const { return bumps_.begin(); }
    BumpIterator endBumps() const { return bumps_.end(); }

    void addWirebond(EDAWirebond const &wirebond) { wirebonds_.push_back(wirebond); }
    std::size_t numWirebonds() const { return wirebonds_.size(); }
    WirebondIterator beginWirebonds() const { return wirebonds_.begin(); }
    WirebondIterator endWirebonds() const { return wirebonds_.end(); }

    // Layers.

    // Appends a copy; the argument is not changed.
    void addLayer(EDABoardLayer &layer) { layers_.push_back(layer); }
    void addLayer(EDABoardLayer &&layer);
    std::size_t numLayers() const { return layers_.size(); }
    // Counted from 0. A bad index throws `std::out_of_range`.
    EDABoardLayer &getNthLayer(int index);
    EDABoardLayer const &getNthLayer(int index) const;
    // A copy of the first layer with exactly this name, or nothing. It copies all traces too.
    std::optional<EDABoardLayer> getLayer(std::string const &name) const;
    // The same layer itself, or null.
    EDABoardLayer const *findLayer(std::string const &name) const;
    LayerIterator beginLayers() const { return layers_.begin(); }
    LayerIterator endLayers() const { return layers_.end(); }
    // Number of layers, loose traces and traces of nets, modulo 2^32.
    std::size_t numLayersAndTraces() const;

    // Sizes.

    // The larger extent of the board outline with its cut-outs; 0.0 without one.
    double getModelDimension() const;
    // Limits of the board outline, keepouts, route and placement outlines, components placed
    // on top (shifted, but not turned) and loose traces. Components on the bottom and traces
    // of nets don't count, vias only when nothing else has an extent. All 0.0 when nothing has.
    void getOverallBound(double &xLow, double &yLow, double &xHigh, double &yHigh) const;

private:
    EDAComponent const *findPart(std::string const &name, std::string const &partNumber) const;
    void checkLayer(int index) const;
    void uniteOutlines(Geometry::Bound2D &bound) const;
    void unitePlacements(Geometry::Bound2D &bound) const;
    void uniteTraces(Geometry::Bound2D &bound) const;
    void uniteVias(Geometry::Bound2D &bound) const;

    std::string name_;
    std::string units_;
    double thickness_ = 0.0;
    std::string importType_;
    std::string conductorMaterial_;
    std::string dielectricMaterial_;
    EDAOutline outline_;
    std::vector<EDAComponent> components_;
    std::vector<EDAComponentPlacement> placements_;
    std::vector<EDAKeepout> keepouts_;
    std::vector<EDAVia> vias_;
    std::vector<EDABump> bumps_;
    std::vector<EDABoardLayer> layers_;
    std::vector<EDAOutline> routeOutlines_;
    std::vector<EDAOutline> placementOutlines_;
    std::vector<EDAWirebond> wirebonds_;
    std::string sourceBoardFile_;
    std::string sourceLibraryFile_;
    std::map<std::string, int> componentNameCounts_;
    bool goodEDA_ = true;

    mutable LazyTable<PartTable<EDAComponent>> componentTable_;
    mutable LazyTable<PartTable<EDAComponentPlacement>> placementTable_;
    LazyTable<DefinitionTable<EDAVia>> viaTable_;
    LazyTable<DefinitionTable<EDABump>> bumpTable_;
};

} // namespace EDA
