// The sections of an IDF file about parts: component shapes, placements, drilled holes.
#include "readers/IDFReader.h"

#include "text/Text.h"

#include <utility>

namespace EDA {

namespace {

// Name, part number, units, height. A part number with blanks takes several entries, and may be missing.
void setRecord2(const std::vector<std::string> &row, EDAComponent &component) {
    const std::size_t size = row.size();
    std::string partNumber;
    for (std::size_t i = 1; i + 2 < size; ++i)
        partNumber.append(i == 1 ? "" : " ").append(row[i]);
    component.setName(row.front());
    component.setPartNumber(partNumber);
    component.setUnits(row[size - 2]);
    component.setHeight(parseDouble(row[size - 1], 0, 0));
}

} // namespace

void IDFReader::readComponentOutline(RowIterator &row, const RowIterator &end, const std::string &label) {
    EDAComponent component(label);
    if (!nextRow(row, end)) return;
    checkRecordSize(row, "IDF Component Outline record 2", 3, true);
    setRecord2(*row, component);
    const std::string endToken = ".END_" + label;
    while (nextRow(row, end) && !equalsIgnoreCase(row->front(), endToken))
        readComponentRow(*row, component);
    component.getOutline().removeDegeneratePoints();
    board_.addComponent(component, false);
}

// A component has one outline: the loop label, which some systems use for the direction, says nothing here.
void IDFReader::readComponentRow(const Row &row, EDAComponent &component) {
    if (row.size() == pointEntries)
        addPoint(component.getOutline(), 0, row);
    else if (row.size() == propertyEntries && equalsIgnoreCase(row[0], "PROP"))
        component.addProperty(row[1], row[2]);
}

void IDFReader::readComponentPlacement(RowIterator &row, const RowIterator &end) {
    while (nextRow(row, end) && !equalsIgnoreCase(row->front(), ".END_PLACEMENT")) {
        checkRecordSize(row, "IDF Component Placement record part 1", 2, true);
        EDAComponentPlacement placement;
        placement.setName(row->front());
        placement.setReferenceDesignator(row->back());
        if (row->size() == 3) placement.setPartNumber((*row)[1]);
        if (!nextRow(row, end)) return;
        const bool hasOffset = lastFileVersion_ == 2 ? row->size() == 6 : row->size() != 5;
        if (lastFileVersion_ == 2 || lastFileVersion_ == 3) {
            checkRecordSize(row, "IDF Component Placement record part 2", hasOffset ? 6 : 5, false);
            readPlacementRow(*row, placement);
        }
        board_.addComponentPlacement(std::move(placement));
    }
}

// x, y, offset, angle, side, status; or without the offset.
void IDFReader::readPlacementRow(const Row &row, EDAComponentPlacement &placement) const {
    const std::size_t behindOffset = row.size() - 3;
    placement.setLocation(numberAt(row, 0), numberAt(row, 1));
    if (behindOffset == 3) placement.setOffset(row[2]);
    placement.setAngle(numberAt(row, behindOffset));
    placement.setBoardSide(row[behindOffset + 1]);
    placement.setStatus(row[behindOffset + 2]);
}

void IDFReader::readVia(RowIterator &row, const RowIterator &end) {
    while (nextRow(row, end) && !equalsIgnoreCase(row->front(), ".END_DRILLED_HOLES")) {
        const bool isChecked = lastFileVersion_ == 2 || lastFileVersion_ == 3;
        const bool isFull = lastFileVersion_ == 3 && row->size() == 7;
        if (isChecked && !isFull) checkRecordSize(row, "IDF Drilled Holes record part 1", 5, false);
        addViaDefinition(*row);
    }
}

// Equal holes become instances of the first of them.
void IDFReader::addViaDefinition(const Row &row) {
    EDAVia via;
    via.setDiameter(numberAt(row, 0));
    via.setCentre(numberAt(row, 1), numberAt(row, 2));
    via.setPlatingStyle(textAt(row, 3));
    via.setAssociatedPart(textAt(row, 4));
    if (lastFileVersion_ == 3 && row.size() >= 6) via.setHoleType(row[5]);
    board_.addVia(via, true);
}

} // namespace EDA
