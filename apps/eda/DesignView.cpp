// What a picture of a design shows.
#include "BoardView.h"

#include "host/EntityModel/Units.h"
#include "LayerNames.h"
#include "LayerScene.h"
#include "OutlinePath.h"

#include <cmath>

namespace EDATool {

namespace {

const EntityModel::Unit *lengthUnit(const std::string &spelling) {
    return EntityModel::Units::find(*EntityModel::Units::findQuantity("Length"), spelling);
}

// From the units of a component to those of the board. A component without known units takes the board's.
double componentScale(const EDA::EDAComponent &component, const EntityModel::Unit *boardUnit) {
    const EntityModel::Unit *own = lengthUnit(component.getUnits());
    if (own == nullptr || boardUnit == nullptr) return 1.0;
    return EntityModel::Units::convert(1.0, *own, *boardUnit);
}

// A part on the bottom is mirrored about its own y axis first, then turned. Its angle is told as it is seen,
// from below, so that seen from the top it turns clockwise.
Similarity placeOf(const EDA::EDAComponentPlacement &placement, double scale) {
    Similarity place = Similarity::scaling(scale);
    if (!placement.isOnBoardTop()) place = then(place, Similarity::mirrorX());
    const double angle = placement.getAngle(true);
    if (std::isfinite(angle)) place = then(place, Similarity::turn(angle));
    return then(place, Similarity::move(placement.getXLocation(), placement.getYLocation()));
}

void addParts(const EDA::EDABoard &board, const EntityModel::Unit *unit, BoardView &view) {
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement) {
        const Side side = placement->isOnBoardTop() ? Side::Top : Side::Bottom;
        if (!placement->isPlaced()) {
            view.numUnplaced += side == view.side ? 1 : 0;
            continue;
        }
        PartView part;
        part.at = {placement->getXLocation(), placement->getYLocation()};
        part.designator = placement->getReferenceDesignator();
        if (const EDA::EDAComponent *component = board.findComponent(*placement)) {
            part.kind = component->isElectrical() ? PartKind::Component : PartKind::Mechanical;
            part.power = 1e-3 * component->getPower();
            part.body =
                placeOf(*placement, componentScale(*component, unit)).apply(pathOf(component->getOutline()));
        }
        addPart(view, std::move(part), side);
    }
}

void addHole(const EDA::EDAVia &via, double x, double y, BoardView &view) {
    Path path = pathOf(via.getOutline());
    if (path.empty()) {
        if (!std::isfinite(x) || !std::isfinite(y) || !(via.getDiameter() > 0)) return;
        path = circlePath({x, y}, via.getDiameter() / 2);
    } else {
        path = then(Similarity::turn(via.getAngle()), Similarity::move(x, y)).apply(path);
    }
    view.holes.push_back({std::move(path), via.isPlated()});
}

// The conductor layer of this number, from 1; null where there is none, and for 0.
const EDA::EDABoardLayer *conductorLayer(const EDA::EDABoard &board, std::size_t number) {
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer)
        if (layer->isConductor() && number-- == 1) return &*layer;
    return nullptr;
}

// A layer that is shown, and the names of all.
struct ShownLayer {
    std::size_t number; // from 1; 0: none is shown
    const EDA::EDABoardLayer *layer;
    double boardThickness;
    std::vector<std::string> names;
};

// Of a via that says its heights alone. The top offset of a layer is that of its lower face.
bool spansLayer(const EDA::EDAVia &via, const ShownLayer &shown) {
    constexpr double noOffset = -1000.0;
    double low = 0.0, high = 0.0;
    via.getZDimensions(low, high);
    if (low == high || shown.layer == nullptr || !(shown.layer->getTopOffset() > noOffset)) return true;
    const double bottom = shown.boardThickness - shown.layer->getTopOffset();
    return touches({low, high}, {bottom, bottom + shown.layer->getThickness()});
}

bool reaches(const EDA::EDAVia &via, const ShownLayer &shown) {
    if (shown.number == 0) return true;
    std::string from, to;
    via.getLayers(from, to);
    if (from.empty() && to.empty()) return spansLayer(via, shown);
    return reachesLayer(from, to, shown.names, shown.number);
}

void addHoles(const EDA::EDABoard &board, BoardView &view) {
    const ShownLayer shown{view.layerNumber, conductorLayer(board, view.layerNumber), board.getThickness(),
                           layerNamesOf(board)};
    for (auto via = board.beginVias(); via != board.endVias(); ++via) {
        if (!reaches(*via, shown)) continue;
        addHole(*via, via->getXCentre(), via->getYCentre(), view);
        for (int index = 0; index < static_cast<int>(via->numInstances()); ++index) {
            addHole(*via, via->getInstanceXCentre(index), via->getInstanceYCentre(index), view);
        }
    }
}

KeepoutKind kindOf(const EDA::EDAKeepout &keepout) {
    if (keepout.isComponentKeepout()) return KeepoutKind::Components;
    if (keepout.isViaKeepout()) return KeepoutKind::Vias;
    return keepout.isRoutingKeepout() ? KeepoutKind::Routing : KeepoutKind::Other;
}

void addKeepouts(const EDA::EDABoard &board, BoardView &view) {
    for (auto keepout = board.beginKeepouts(); keepout != board.endKeepouts(); ++keepout) {
        const bool isOnOtherSide =
            view.side == Side::Top ? keepout->isOnBoardBottom() : keepout->isOnBoardTop();
        if (isOnOtherSide || keepout->getOutline().empty()) continue;
        view.keepouts.push_back({pathWithHoles(keepout->getOutline()), kindOf(*keepout)});
    }
}

} // namespace

BoardView viewOfDesign(const Design &design, Side side) { return viewOfBoard(design.board(), side); }

BoardView viewOfBoard(const EDA::EDABoard &board, Side side, std::size_t layerNumber) {
    const EntityModel::Unit *unit = lengthUnit(board.getUnits());
    BoardView view;
    view.name = board.getName();
    view.unit = unit != nullptr ? unit->label : std::string();
    view.side = side;
    view.layerNumber = layerNumber;
    view.thickness = board.getThickness();
    view.edge = pathWithHoles(board.getOutline());
    view.edgeBound = boundOf(pathOf(board.getOutline()));
    const EDA::EDAOutline &edge = board.getOutline();
    for (auto inner = edge.beginInternalOutlines(); inner != edge.endInternalOutlines(); ++inner) {
        view.cutOuts.push_back(pathOf(*inner));
    }
    addHoles(board, view);
    if (layerNumber > 0) return view;
    addKeepouts(board, view);
    addParts(board, unit, view);
    return view;
}

} // namespace EDATool
