// What a picture of a board shows: sums over its parts.
#include "BoardView.h"

#include "host/EntityModel/Units.h"

#include <algorithm>
#include <cmath>

namespace EDATool {

namespace {

// 0 where the unit is not known.
double centimetresPer(const std::string &unit) {
    using namespace EntityModel;
    const Quantity &length = *Units::findQuantity("Length");
    const Unit *const found = unit.empty() ? nullptr : Units::find(length, unit);
    return found == nullptr ? 0.0 : Units::convert(1.0, *found, *Units::find(length, "cm"));
}

double densityOf(const PartView &part, const std::string &unit) {
    if (part.power == 0.0 || part.body.empty()) return 0.0;
    const double side = centimetresPer(unit);
    const double density = part.power / (areaOf(part.body) * side * side);
    return std::isfinite(density) ? density : 0.0;
}

} // namespace

void addPart(BoardView &view, PartView part, Side side) {
    if (!std::isfinite(part.power)) part.power = 0.0;
    part.density = densityOf(part, view.unit);
    if (!part.isFiltered) {
        PowerTotals &totals = view.power;
        totals.board += part.power;
        if (side == view.side) totals.shownSide += part.power;
        totals.greatest = std::max(totals.greatest, part.power);
        totals.greatestDensity = std::max(totals.greatestDensity, part.density);
    }
    if (side == view.side) view.parts.push_back(std::move(part));
}

Box boundOf(const BoardView &view) {
    Box box = view.edgeBound;
    for (const Path &path : view.copper)
        box.add(boundOf(path));
    for (const HoleView &hole : view.holes)
        box.add(boundOf(hole.path));
    for (const KeepoutView &keepout : view.keepouts)
        box.add(boundOf(keepout.path));
    for (const PartView &part : view.parts) {
        box.add(part.at);
        box.add(boundOf(part.body));
    }
    return box;
}

} // namespace EDATool
