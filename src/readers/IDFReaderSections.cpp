// The outline sections of an IDF file: board edge, keepouts, areas for routes and for placement, notes.
#include "readers/IDFReader.h"

#include "text/Text.h"

namespace EDA {

void IDFReader::readBoardOutline(RowIterator &row, const RowIterator &end) {
    constexpr std::string_view endToken = ".END_BOARD_OUTLINE";
    if (!nextRow(row, end)) return;
    if (!equalsIgnoreCase(row->front(), endToken)) {
        checkRecordSize(row, "IDF Board Outline record 2", 1, false);
        board_.setThickness(numberAt(*row, 0));
        nextRow(row, end);
    }
    const std::size_t pointsBefore = state_.points;
    readOutlineRows(row, end, endToken, board_.getOutline());
    boardPoints_ += state_.points - pointsBefore;
    cleanBoardOutline();
}

void IDFReader::cleanBoardOutline() {
    state_.boardCleanUpDue = state_.boardCleanUpWork > limits_.boardCleanUpWork;
    if (state_.boardCleanUpDue) return;
    state_.boardCleanUpWork += boardPoints_;
    board_.getOutline().removeDegeneratePoints();
}

void IDFReader::readKeepout(RowIterator &row, const RowIterator &end, const std::string &label) {
    const std::string endToken = ".END_" + label;
    EDAKeepout keepout(label);
    const bool hasSide = label == "PLACE_KEEPOUT";
    if (!nextRow(row, end) && hasSide) return;
    if (hasSide) {
        const bool isChecked = lastFileVersion_ == 2 || lastFileVersion_ == 3;
        const bool isShort = lastFileVersion_ == 3 && row->size() == 2;
        if (isChecked && !isShort) checkRecordSize(row, "IDF Component Keepout record 2", 3, false);
        if (!equalsIgnoreCase(row->front(), endToken)) {
            keepout.setBoardSide(row->front());
            keepout.setHeight(numberAt(*row, 1));
            nextRow(row, end);
        }
    }
    readOutlineRows(row, end, endToken, keepout.getOutline());
    keepout.getOutline().removeDegeneratePoints();
    board_.addKeepout(keepout);
}

void IDFReader::readRouteOutline(RowIterator &row, const RowIterator &end) {
    constexpr std::string_view endToken = ".END_ROUTE_OUTLINE";
    if (!skipOutlineRecord(row, end, endToken, "IDF Route Outline record 2", 1)) return;
    EDAOutline outline;
    readOutlineRows(row, end, endToken, outline);
    outline.removeDegeneratePoints();
    board_.addRouteOutline(outline);
}

void IDFReader::readPlacementOutline(RowIterator &row, const RowIterator &end) {
    constexpr std::string_view endToken = ".END_PLACE_OUTLINE";
    if (!skipOutlineRecord(row, end, endToken, "IDF Placement Outline record 2", 2)) return;
    EDAOutline outline;
    readOutlineRows(row, end, endToken, outline);
    outline.removeDegeneratePoints();
    board_.addPlacementOutline(outline);
}

// Version 3 has a record before the points, which some files leave out. False where the rows end before it.
bool IDFReader::skipOutlineRecord(RowIterator &row, const RowIterator &end, std::string_view endToken,
                                  const char *recordName, std::size_t size) const {
    const bool hasRow = nextRow(row, end);
    if (lastFileVersion_ != 3) return true;
    if (!hasRow) return false;
    // The end row of an empty section must not pass for a record of its size, or the loop would miss the end.
    const bool isEmpty = row->size() == size && equalsIgnoreCase(row->front(), endToken);
    if (isEmpty || row->size() == pointEntries) return true;
    checkRecordSize(row, recordName, size, false);
    nextRow(row, end);
    return true;
}

void IDFReader::readNotes(RowIterator &row, const RowIterator &end) {
    while (nextRow(row, end))
        if (equalsIgnoreCase(row->front(), ".END_NOTES")) return;
}

} // namespace EDA
