// Any bytes as an XFL file, as a board and as a package, read once and once more on top.
#include "readers/BoardUnits.h"
#include "readers/XFLReader.h"
#include "ScratchFile.h"

#include <cmath>

namespace {

// What a broken promise of the reader looks like to the fuzzer.
void require(bool promise) {
    if (!promise) std::abort();
}

EDA::XFLReaderLimits lowLimits() {
    EDA::XFLReaderLimits limits; // lower, so that a run does not wait for what they stop
    limits.points = 100'000;
    limits.parameters = 100'000;
    limits.items = 10'000;
    limits.bodyLayers = 1'000;
    limits.sharedText = 1u << 20;
    return limits;
}

std::size_t numPoints(const EDA::EDAOutline &outline) {
    std::size_t count = outline.numPoints() + outline.getPoints(true).size();
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        count += numPoints(*inner);
    return count;
}

void visit(EDA::EDABoard &board, std::size_t mostPoints) {
    double bound[4];
    board.getOverallBound(bound[0], bound[1], bound[2], bound[3]);
    std::size_t count = numPoints(board.getOutline());
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer)
        for (auto trace = layer->beginTraces(); trace != layer->endTraces(); ++trace)
            count += numPoints(trace->getOutline());
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component)
        count += numPoints(component->getOutline());
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement) {
        board.findComponent(*placement);
        require(std::isfinite(placement->getXLocation()) && std::isfinite(placement->getYLocation()));
        require(!(placement->getAngle(false) < 0.0));
    }
    require(count <= mostPoints);
    EDA::describeUnknownUnits(board);
}

void read(const std::string &name, bool componentMode) {
    const EDA::XFLReaderLimits limits = lowLimits();
    EDA::XFLReader reader(componentMode, limits);
    const bool isRead = reader.readFile(name);
    require(isRead || reader.getError().empty());
    require(!componentMode || reader.getBoard().numLayers() == 0);
    require(!componentMode || !isRead || reader.getBoard().numComponents() == 1);
    // Each point counts as stored and as drawn, and an arc of a full circle is drawn as 36 at the least.
    constexpr std::size_t drawn = 100;
    visit(reader.getBoard(), drawn * limits.points);
    require(reader.readFile(name) == isRead); // layers, shapes and scale of the first read are still there
    visit(reader.getBoard(), 2 * drawn * limits.points);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Fuzz::ScratchFile file(".xfl");
    const std::string name = file.write(data, size);
    read(name, false);
    read(name, true);
    return 0;
}
