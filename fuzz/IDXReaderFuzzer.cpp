// Any bytes as an IDX document, read once and once more on top, and written again.
#include "readers/IDXReader.h"
#include "ScratchFile.h"
#include "writers/IDXWriter.h"

#include <cmath>

namespace {

// What a broken promise of the reader looks like to the fuzzer.
void require(bool promise) {
    if (!promise) std::abort();
}

void visit(const EDA::EDAOutline &outline) {
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        require(std::isfinite(point->x) && std::isfinite(point->y) && std::isfinite(point->angle));
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        visit(*inner);
}

void visit(const EDA::EDABoard &board) {
    double bound[4];
    board.getOverallBound(bound[0], bound[1], bound[2], bound[3]);
    require(std::isfinite(board.getThickness()));
    visit(board.getOutline());
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component)
        visit(component->getOutline());
    for (auto keepout = board.beginKeepouts(); keepout != board.endKeepouts(); ++keepout)
        visit(keepout->getOutline());
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement)
        require(board.findComponent(*placement) && std::isfinite(placement->getAngle(true)));
    for (auto via = board.beginVias(); via != board.endVias(); ++via)
        require(std::isfinite(via->getXCentre()) && std::isfinite(via->getYCentre()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Fuzz::ScratchFile file(".idx");
    const std::string name = file.write(data, size);
    EDA::IDXReader::isDocument(name);
    EDA::IDXReaderLimits limits; // lower, so that a run does not wait for what they stop
    limits.points = 100'000;
    limits.lookUps = 100'000;
    EDA::IDXReader reader(limits);
    const bool isRead = reader.readFile(name);
    require(isRead || reader.getError().empty());
    visit(reader.getBoard());
    reader.readFile(name);
    visit(reader.getBoard());
    if (!isRead) return 0;
    require(EDA::IDXWriter().writeFile(name, reader.getBoard()));
    require(EDA::IDXReader().readFile(name)); // whatever was read, what is written is well-formed
    return 0;
}
