// Writing a board in the format that the name of the output asks for.
#include "BoardOutput.h"

#include "Console.h"
#include "IdfBoard.h"
#include "IdfOutput.h"
#include "IdxBoard.h"
#include "IdxOutput.h"

namespace EDATool {

void checkOutputName(const std::string &output) {
    if (!isIdxName(output)) idfNames(output);
}

void checkOutput(const std::string &output, const std::vector<std::string> &filesRead) {
    if (isIdxName(output))
        checkIdxName(output, filesRead);
    else
        checkIdfNames(idfNames(output), filesRead);
}

WrittenBoard writeBoard(const EDA::EDABoard &board, const std::string &output, const std::string &units) {
    if (isIdxName(output)) {
        IdxBoard result = makeIdxBoard(board, units);
        stopIfInterrupted();
        writeIdx(result.board, output);
        return {idxSummary(result.board, output), std::move(result.notices)};
    }
    const IdfNames names = idfNames(output);
    IdfBoard result = makeIdfBoard(board, units);
    stopIfInterrupted();
    writeIdfPair(result.board, names);
    return {idfSummary(result.board, names), std::move(result.notices)};
}

} // namespace EDATool
