// Any bytes as an IDF file, read once and once more on top.
#include "readers/BoardUnits.h"
#include "readers/IDFReader.h"
#include "ScratchFile.h"

#include <cmath>

namespace {

// What a broken promise of the reader looks like to the fuzzer.
void require(bool promise) {
    if (!promise) std::abort();
}

void visit(EDA::EDABoard &board) {
    double bound[4];
    board.getOverallBound(bound[0], bound[1], bound[2], bound[3]);
    for (auto point = board.getOutline().beginPoints(); point != board.getOutline().endPoints(); ++point)
        require(std::isfinite(point->x) && std::isfinite(point->y) && std::isfinite(point->angle));
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement) {
        board.findComponent(*placement);
        require(std::isfinite(placement->getXLocation()) && std::isfinite(placement->getAngle(true)));
    }
    EDA::describeUnknownUnits(board);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const Fuzz::ScratchFile file(".emn");
    const std::string name = file.write(data, size);
    EDA::IDFReader::describeUnsupported(name);
    EDA::IDFReader reader;
    const bool isRead = reader.readFile(name);
    require(!isRead || reader.getError().empty());
    visit(reader.getBoard());
    reader.readFile(name); // sections before a header now see the version of the first read
    visit(reader.getBoard());
    return 0;
}
