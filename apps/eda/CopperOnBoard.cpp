// The conductor layers and holes of one design on the board of another.
#include "CopperOnBoard.h"

#include "PlacedItems.h"

#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace EDATool {

namespace {

using EDA::EDABoard;
using EDA::EDAVia;

template <class Visit> void forEachPlace(const EDAVia &via, const Visit &visit) {
    visit(via.getName(), via.getXCentre(), via.getYCentre());
    for (int index = 0; index < static_cast<int>(via.numInstances()); ++index)
        visit(via.getInstanceName(index), via.getInstanceXCentre(index), via.getInstanceYCentre(index));
}

// An import leaves out holes of other kinds, so one that comes with the copper must not give way to them.
bool isImported(const EDAVia &via) {
    return via.isThermalVia() || via.isPin() || via.isMountingHole() || via.isToolHole();
}

// The holes of a board in squares as wide as the tolerance, so that each is found among its neighbours.
class HoleGrid {
public:
    HoleGrid(const EDABoard &board, double tolerance) : tolerance_(tolerance) {
        for (auto via = board.beginVias(); via != board.endVias(); ++via) {
            if (isImported(*via) && via->getOutline().empty())
                forEachPlace(*via, [this, &via](const std::string &, double x, double y) {
                    add(x, y, via->getDiameter());
                });
        }
    }

    enum class Found { Nothing, OtherSize, Same };

    Found find(double x, double y, double diameter) const {
        Found found = Found::Nothing;
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                const auto cell =
                    cells_.find({std::floor(x / tolerance_) + dx, std::floor(y / tolerance_) + dy});
                if (cell == cells_.end()) continue;
                for (const Hole &hole : cell->second) {
                    if (std::hypot(hole.x - x, hole.y - y) > tolerance_) continue;
                    if (std::fabs(hole.diameter - diameter) <= tolerance_) return Found::Same;
                    found = Found::OtherSize;
                }
            }
        }
        return found;
    }

private:
    // Far more than lie at one place of any board; a heap of them must not take the time of its square.
    static constexpr std::size_t mostInCell = 64;

    struct Hole {
        double x, y, diameter;
    };

    void add(double x, double y, double diameter) {
        // The keys are ordered, so they must be numbers.
        if (!std::isfinite(x) || !std::isfinite(y)) return;
        std::vector<Hole> &cell = cells_[{std::floor(x / tolerance_), std::floor(y / tolerance_)}];
        if (cell.size() < mostInCell) cell.push_back({x, y, diameter});
    }

    double tolerance_;
    std::map<std::pair<double, double>, std::vector<Hole>> cells_;
};

// One definition with those of its places that the board does not have yet.
void putVia(const EDAVia &via, const CopperPlace &place, const HoleGrid &grid, EDABoard &board,
            CopperResult &result) {
    std::optional<EDAVia> placed;
    const EDAVia hole = placedVia(via, place);
    forEachPlace(via, [&](const std::string &name, double sourceX, double sourceY) {
        const double x = place.scale * sourceX + place.x;
        const double y = place.scale * sourceY + place.y;
        ++result.copperHoles;
        const auto found = hole.getOutline().empty() && std::isfinite(x) && std::isfinite(y)
                               ? grid.find(x, y, hole.getDiameter())
                               : HoleGrid::Found::Nothing;
        if (found == HoleGrid::Found::Same) {
            ++result.sameHoles;
            return;
        }
        if (found == HoleGrid::Found::OtherSize) ++result.otherSizes;
        if (placed) {
            placed->addInstance(name, x, y);
            return;
        }
        placed = hole;
        placed->setName(name);
        placed->setCentre(x, y);
    });
    if (placed) board.addVia(*placed, false);
}

} // namespace

CopperResult putCopperOnBoard(EDABoard &copper, const CopperPlace &place, double tolerance, EDABoard &board) {
    CopperResult result;
    result.boardHoles = board.numVias(1);
    const HoleGrid grid(board, tolerance);
    for (auto via = copper.beginVias(); via != copper.endVias(); ++via)
        putVia(*via, place, grid, board, result);
    for (int index = 0; index < static_cast<int>(copper.numLayers()); ++index) {
        EDA::EDABoardLayer &layer = copper.getNthLayer(index);
        board.addLayer(placedLayer(layer, place));
        layer = EDA::EDABoardLayer();
    }
    return result;
}

} // namespace EDATool
