// Counting what XFL files say and boards and packages lack.
#include "XflNotices.h"

namespace EDATool {

namespace {

// In the order of XflLoss.
constexpr std::array<LossText, static_cast<std::size_t>(XflLoss::Count)> texts = {{
    {"scale is no number, or 0, and is ignored", "scales are no numbers, or 0, and are ignored"},
    {"row outside of the known sections is left out", "rows outside of the known sections are left out"},
    {"row of a section has too few fields and is left out",
     "rows of sections have too few fields and are left out"},
    {"block is never closed, so it takes in all rows behind it",
     "blocks are never closed, so they take in all rows behind them"},
    {"layer is out of turn: conductors and dielectrics are expected one after the other, a conductor first; "
     "heights of copper and vias may be wrong",
     "layers are out of turn: conductors and dielectrics are expected one after the other, a conductor "
     "first; "
     "heights of copper and vias may be wrong"},
    {"part has a body that is neither R, C nor D, and gets no shape",
     "parts have a body that is neither R, C nor D, and get no shape"},
    {"part loses its block, which holds its pins", "parts lose their blocks, which hold their pins"},
    {"bond wire is left out", "bond wires are left out"},
    {"row of a net begins with an unknown word and is left out",
     "rows of nets begin with an unknown word and are left out"},
    {"piece of a net is left out: it names a layer that the file does not have",
     "pieces of nets are left out: they name layers that the file does not have"},
    {"via is left out: its kind is not in the file", "vias are left out: their kinds are not in the file"},
    {"via is left out: its shape is no circle", "vias are left out: their shapes are no circles"},
    {"piece of copper has no points: its shape is not in the file",
     "pieces of copper have no points: their shapes are not in the file"},
    {"piece of copper has no points: its kind of shape is not drawn",
     "pieces of copper have no points: their kinds of shape are not drawn"},
    {"void has no points: its kind of shape is not drawn",
     "voids have no points: their kinds of shape are not drawn"},
    {"void is left out: nothing on its layer stands before it",
     "voids are left out: nothing on their layers stands before them"},
}};
static_assert(texts.back().one); // one for each

} // namespace

std::vector<std::string> XflNotices::lines() const { return lossLines(texts, numbers_); }

} // namespace EDATool
