// Counting what XFL files say and boards and packages lack.
#include "XflNotices.h"

#include "Printable.h"

namespace EDATool {

namespace {

// In the order of XflLoss.
constexpr std::array<LossText, static_cast<std::size_t>(XflLoss::Count)> texts = {{
    {"scale is no number, or 0, and is ignored", "scales are no numbers, or 0, and are ignored"},
    {"row outside of the known sections is left out", "rows outside of the known sections are left out"},
    {"keyword of a section stands within the section before it, whose end or shape is missing, and counts as "
     "a "
     "row of that one",
     "keywords of sections stand within the sections before them, whose ends or shapes are missing, and "
     "count "
     "as rows of those"},
    {"row of a section has too few fields and is left out",
     "rows of sections have too few fields and are left out"},
    {"block is never closed, so it takes in all rows behind it",
     "blocks are never closed, so they take in all rows behind them"},
    {"layer is out of turn: conductors and dielectrics are expected one after the other, a conductor first; "
     "heights of copper and vias may be wrong",
     "layers are out of turn: conductors and dielectrics are expected one after the other, a conductor "
     "first; "
     "heights of copper and vias may be wrong"},
    {"edge has no points: its kind of shape is not drawn, or parameters are missing",
     "edges have no points: their kinds of shape are not drawn, or parameters are missing"},
    {"part has a body that is neither R, C nor D, and gets no shape",
     "parts have a body that is neither R, C nor D, and get no shape"},
    {"part loses its block, which holds its pins", "parts lose their blocks, which hold their pins"},
    {"bond wire is left out", "bond wires are left out"},
    {"row of a net begins with an unknown word and is left out with its block",
     "rows of nets begin with unknown words and are left out with their blocks"},
    {"piece of a net is left out: it names a layer that the file does not have",
     "pieces of nets are left out: they name layers that the file does not have"},
    {"via is left out: its kind is not in the file", "vias are left out: their kinds are not in the file"},
    {"via is left out: its shape is no circle", "vias are left out: their shapes are no circles"},
    {"piece of copper has no points: its shape is not in the file",
     "pieces of copper have no points: their shapes are not in the file"},
    {"piece of copper has no points: its kind of shape is not drawn",
     "pieces of copper have no points: their kinds of shape are not drawn"},
    {"piece of copper has no area: parameters of its shape are missing",
     "pieces of copper have no area: parameters of their shapes are missing"},
    {"track has no area: it has less than two points, or its width is not above 0",
     "tracks have no area: they have less than two points, or their widths are not above 0"},
    {"void has no points: its kind of shape is not drawn",
     "voids have no points: their kinds of shape are not drawn"},
    {"void has no area: parameters of its shape are missing",
     "voids have no area: parameters of their shapes are missing"},
    {"void is left out: no copper but tracks stands before it on its layer",
     "voids are left out: no copper but tracks stands before them on their layers"},
    {"void is left out: no solid stands before it", "voids are left out: no solids stand before them"},
    {"void is left out: what it would be cut out of has no area",
     "voids are left out: what they would be cut out of has no area"},
    {"void may be out of its place: a package must have one edge, which stands before its voids",
     "voids may be out of their places: a package must have one edge, which stands before its voids"},
}};
static_assert(texts.back().one); // one for each

} // namespace

void XflNotices::add(XflLoss loss, const std::string &word) {
    constexpr std::size_t longest = 40;
    add(loss);
    std::string &first = words_[static_cast<std::size_t>(loss)];
    if (first.empty()) first = "'" + shortened(word, longest) + "'";
}

std::vector<std::string> XflNotices::lines() const {
    std::vector<std::string> lines = lossLines(texts, numbers_);
    auto line = lines.begin();
    for (std::size_t i = 0; i < kinds; ++i) {
        if (numbers_[i] == 0) continue;
        if (!words_[i].empty()) *line += (numbers_[i] == 1 ? ": " : ": the first is ") + words_[i];
        ++line;
    }
    return lines;
}

} // namespace EDATool
