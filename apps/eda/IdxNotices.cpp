// Counting what IDX documents cannot hold.
#include "IdxNotices.h"

namespace EDATool {

namespace {

// In the order of IdxLoss.
constexpr std::array<LossText, static_cast<std::size_t>(IdxLoss::Count)> texts = {{
    {"layer is left out", "layers are left out"},
    {"bump is left out", "bumps are left out"},
    {"wirebond is left out", "wirebonds are left out"},
    {"route outline is left out", "route outlines are left out"},
    {"placement outline is left out", "placement outlines are left out"},
    {"arc becomes straight edges", "arcs become straight edges"},
    {"cut-out within a cut-out is left out", "cut-outs within cut-outs are left out"},
    {"cut-out of a keepout is left out", "cut-outs of keepouts are left out"},
    {"cut-out of a component is left out", "cut-outs of components are left out"},
    {"keepout of no known side holds for both now", "keepouts of no known side hold for both now"},
    {"hole that is not round is written, but eda does not read it back",
     "holes that are not round are written, but eda does not read them back"},
    {"hole of another type becomes a via", "holes of other types become vias"},
    {"hole loses its layers, plating thickness, fill or heights",
     "holes lose their layers, plating thickness, fill or heights"},
    {"hole loses its kind of plating and is not plated now",
     "holes lose their kinds of plating and are not plated now"},
    {"placement without a component is left out", "placements without components are left out"},
    {"component that is placed nowhere is written, but does not come back",
     "components that are placed nowhere are written, but do not come back"},
    {"component of another type becomes ELECTRICAL", "components of other types become ELECTRICAL"},
    {"placement loses its mounting offset", "placements lose their mounting offsets"},
    {"placement loses its status and counts as placed", "placements lose their statuses and count as placed"},
    {"heatsink is left out", "heatsinks are left out"},
    {"mold is left out", "molds are left out"},
    {"component loses its manufacturer", "components lose their manufacturers"},
    {"material of the board is left out", "materials of the board are left out"},
    {"property of a component is left out", "properties of components are left out"},
    {"component of unknown units keeps its numbers as they are",
     "components of unknown units keep their numbers as they are"},
    {"place of a placement or hole is rounded to six digits",
     "places of placements and holes are rounded to six digits"},
    {"text loses characters that XML does not allow", "texts lose characters that XML does not allow"},
    {"number that is not finite becomes 0", "numbers that are not finite become 0"},
}};
static_assert(texts.back().one); // one for each

} // namespace

std::vector<std::string> IdxNotices::lines() const { return lossLines(texts, numbers_); }

} // namespace EDATool
