// Whether the copper of one design lies on the board of another.
#include "CopperOnBoard.h"

#include "Printable.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace EDATool {

namespace {

using EDA::EDABoard;
using Geometry::Bound2D;

void uniteTrace(const EDA::EDATrace &trace, Bound2D &bound) {
    const Bound2D &own = trace.getOutline().getBound();
    if (own.isValid()) bound.unite(own);
}

Bound2D boundOfHoles(const EDABoard &board) {
    Bound2D bound;
    for (auto via = board.beginVias(); via != board.endVias(); ++via) {
        Bound2D own;
        via->getBound(own);
        if (own.isValid()) bound.unite(own);
    }
    return bound;
}

Bound2D boundOfConductors(const EDABoard &board) {
    Bound2D bound;
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        for (auto trace = layer->beginTraces(); trace != layer->endTraces(); ++trace)
            uniteTrace(*trace, bound);
        for (auto net = layer->beginNets(); net != layer->endNets(); ++net) {
            for (auto trace = net->beginTraces(); trace != net->endTraces(); ++trace)
                uniteTrace(*trace, bound);
        }
    }
    return bound;
}

// Low corner and size; a size of 0 where there is nothing.
struct Extent {
    double x = 0.0, y = 0.0, width = 0.0, height = 0.0;

    bool isEmpty() const { return !(width > 0.0) || !(height > 0.0); }
};

Extent extentOf(const Bound2D &bound) {
    if (!bound.isValid()) return {};
    return {bound.getXLow(), bound.getYLow(), bound.getXSize(), bound.getYSize()};
}

Extent placed(const Extent &extent, const CopperPlace &place) {
    return {place.scale * extent.x + place.x, place.scale * extent.y + place.y, place.scale * extent.width,
            place.scale * extent.height};
}

class Comparison {
public:
    Comparison(const Extent &copper, const Extent &edge, double perMillimetre, std::string unit)
        : copper_(copper), edge_(edge), perMillimetre_(perMillimetre), unit_(std::move(unit)) {}

    // The factor that both sides of the copper are about too long by, or 0. Copper need not reach the edge.
    double wrongFactor() const {
        constexpr double factors[] = {25.4, 1 / 25.4, 1000.0, 0.001};
        const auto fits = [this](double factor) {
            const double across = copper_.width / (edge_.width * factor);
            const double along = copper_.height / (edge_.height * factor);
            return std::min(across, along) > 0.5 && std::max(across, along) < 1.1;
        };
        const auto *const found = std::find_if(std::begin(factors), std::end(factors), fits);
        return found == std::end(factors) ? 0.0 : *found;
    }

    bool isTooLarge() const {
        return copper_.width > edge_.width + 2 * slack() || copper_.height > edge_.height + 2 * slack();
    }

    bool sticksOut() const {
        return copper_.x < edge_.x - slack() || copper_.y < edge_.y - slack() ||
               copper_.x + copper_.width > edge_.x + edge_.width + slack() ||
               copper_.y + copper_.height > edge_.y + edge_.height + slack();
    }

    std::string sizes() const {
        return "the copper is " + sizeText(copper_) + " in size, the board " + sizeText(edge_);
    }

    std::string offsetToMiddle() const {
        return offsetText(edge_.x + edge_.width / 2 - copper_.x - copper_.width / 2,
                          edge_.y + edge_.height / 2 - copper_.y - copper_.height / 2);
    }

    // Where the holes of both cover boxes of one size, their offset is that of the copper. Empty where they
    // do not, and where they are in place.
    std::string offsetOfHoles(const Extent &copper, const Extent &board) const {
        const double tolerance = 0.1 * perMillimetre_;
        const bool areAlike = !copper.isEmpty() && !board.isEmpty() &&
                              std::fabs(copper.width - board.width) < tolerance &&
                              std::fabs(copper.height - board.height) < tolerance;
        const double x = board.x + board.width / 2 - copper.x - copper.width / 2;
        const double y = board.y + board.height / 2 - copper.y - copper.height / 2;
        return areAlike && std::hypot(x, y) > tolerance ? offsetText(x, y) : std::string();
    }

private:
    // Copper may reach the edge and a little over it.
    double slack() const {
        return std::max(0.5 * perMillimetre_, 0.01 * std::max(edge_.width, edge_.height));
    }

    std::string sizeText(const Extent &extent) const {
        return shortNumber(extent.width) + " x " + shortNumber(extent.height) + " " + unit_;
    }

    // What the sums leave beyond six decimals is no offset.
    static std::string offsetText(double x, double y) {
        const auto text = [](double value) { return shortNumber(std::round(value * 1e6) / 1e6 + 0.0); };
        return text(x) + "," + text(y);
    }

    const Extent &copper_;
    const Extent &edge_;
    double perMillimetre_;
    std::string unit_;
};

} // namespace

std::vector<std::string> compareExtents(const EDABoard &copper, const CopperPlace &place,
                                        const EDABoard &board, double perMillimetre) {
    const Extent holes = placed(extentOf(boundOfHoles(copper)), place);
    Extent conductors = placed(extentOf(boundOfConductors(copper)), place);
    if (conductors.isEmpty()) conductors = holes;
    const Extent edge = extentOf(board.getOutline().getBound());
    if (conductors.isEmpty() || edge.isEmpty()) return {};
    const Comparison comparison(conductors, edge, perMillimetre, printable(board.getUnits()));
    const double factor = comparison.wrongFactor();
    if (factor != 0.0)
        return {comparison.sizes() + ", so its lengths are about " + shortNumber(factor) +
                " times what they should be; --copper-units can say what the numbers of its files are in"};
    const auto moveBy = [](const std::string &offset) {
        return "; --copper-offset=" + offset + " would move it there";
    };
    const std::string ofHoles = comparison.offsetOfHoles(holes, extentOf(boundOfHoles(board)));
    if (!ofHoles.empty())
        return {"the holes of the copper lie " + ofHoles + " off those of the board" + moveBy(ofHoles)};
    if (comparison.isTooLarge())
        return {comparison.sizes() + ", so it is not of this board, or has an offset or another scale"};
    if (!comparison.sticksOut()) {
        const Comparison ofDrills(holes, edge, perMillimetre, printable(board.getUnits()));
        if (holes.isEmpty() || !ofDrills.sticksOut()) return {};
        return {"the conductors lie on the board, but holes of the drill files beside it; --drill-format can "
                "say how their numbers are read"};
    }
    const std::string offset = comparison.offsetToMiddle();
    return {"the copper does not lie on the board: from its middle to that of the board it is " + offset +
            " " + printable(board.getUnits()) + moveBy(offset)};
}

} // namespace EDATool
