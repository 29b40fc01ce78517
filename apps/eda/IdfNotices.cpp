// Counting what IDF files cannot hold.
#include "IdfNotices.h"

namespace EDATool {

namespace {

// In the order of IdfLoss.
constexpr std::array<LossText, static_cast<std::size_t>(IdfLoss::Count)> texts = {{
    {"layer is left out", "layers are left out"},
    {"bump is left out", "bumps are left out"},
    {"wirebond is left out", "wirebonds are left out"},
    {"route outline is left out", "route outlines are left out"},
    {"placement outline is left out", "placement outlines are left out"},
    {"routing keepout is left out", "routing keepouts are left out"},
    {"keepout of an unknown type is left out", "keepouts of unknown types are left out"},
    {"keepout of no known side holds for both now", "keepouts of no known side hold for both now"},
    {"via keepout of one side holds for both now", "via keepouts of one side hold for both now"},
    {"arc about a centre becomes a straight edge", "arcs about a centre become straight edges"},
    {"cut-out within a cut-out is left out", "cut-outs within cut-outs are left out"},
    {"outline inside another that is no cut-out becomes one",
     "outlines inside others that are no cut-outs become some"},
    {"cut-out of a component is left out", "cut-outs of components are left out"},
    {"hole that is not round becomes a round one", "holes that are not round become round ones"},
    {"hole loses its layers, plating thickness, fill or heights",
     "holes lose their layers, plating thickness, fill or heights"},
    {"heatsink is left out", "heatsinks are left out"},
    {"mold is left out", "molds are left out"},
    {"component loses its manufacturer", "components lose their manufacturers"},
    {"material of the board is left out", "materials of the board are left out"},
    {"name of a hole or keepout is left out", "names of holes and keepouts are left out"},
    {"component of another type becomes ELECTRICAL", "components of other types become ELECTRICAL"},
    {"component of unknown units is taken to be in those of --units",
     "components of unknown units are taken to be in those of --units"},
    {"placement without a usable status becomes PLACED", "placements without a usable status become PLACED"},
    {"property name is changed", "property names are changed"},
    {"property without a name or value that fits is left out",
     "properties without a name or value that fits are left out"},
    {"text has characters that are written as '?'", "texts have characters that are written as '?'"},
    {"text has quotes, tabs or line ends that are replaced",
     "texts have quotes, tabs or line ends that are replaced"},
    {"number that is not finite becomes 0", "numbers that are not finite become 0"},
}};
static_assert(texts.back().one); // one for each

} // namespace

std::vector<std::string> IdfNotices::lines() const { return lossLines(texts, numbers_); }

} // namespace EDATool
