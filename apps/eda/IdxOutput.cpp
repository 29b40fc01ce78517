// Writing an IDX document.
#include "IdxOutput.h"

#include "Failure.h"
#include "Files.h"
#include "Printable.h"
#include "Report.h"
#include "writers/IDXWriter.h"

namespace EDATool {

bool isIdxName(const std::string &file) { return lowerExtension(file) == ".idx"; }

void checkIdxName(const std::string &file, const std::vector<std::string> &filesRead) {
    for (const std::string &read : filesRead) {
        if (isSameFile(file, read))
            throw UsageFailure(inQuotes(read) + " is read, so it cannot be written over");
    }
    checkWritable(file);
}

// The writer gives no reason; where the name is the reason, checkIdxName has told.
void writeIdx(const EDA::EDABoard &board, const std::string &file) {
    if (EDA::IDXWriter().writeFile(file, board)) return;
    checkWritable(file);
    failToWrite(file, "the disk may be full");
}

std::string idxSummary(const EDA::EDABoard &board, const std::string &file) {
    return "Written:\n" + tableText({{"Document", shortened(file, 300)},
                                     {"Units", shortened(board.getUnits(), 40)},
                                     {"Components", std::to_string(board.numComponents())},
                                     {"Placements", std::to_string(board.numComponentPlacements())},
                                     {"Keepouts", std::to_string(board.numKeepouts())},
                                     {"Holes and vias", std::to_string(board.numVias(0))}});
}

} // namespace EDATool
