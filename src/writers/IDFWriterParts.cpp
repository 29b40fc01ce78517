// The sections of an IDF file about parts: drilled holes, placements, component shapes.
#include "writers/IDFWriter.h"

#include "text/Encoding.h"
#include "writers/IDFRowsDetail.h"
#include "writers/IDFWriterDetail.h"

namespace EDA {

namespace {

// "PROP key value". Only the value may have blanks.
void addProperty(std::string const &key, std::string const &value, IDFRows &rows) {
    rows.add("PROP ").addBare(utf8ToLatin1(key)).add(' ');
    const bool isDivided = value.find_first_of(" \t\r\n") != std::string::npos;
    const std::string text = utf8ToLatin1(value);
    (isDivided ? rows.addQuoted(text) : rows.addBare(text)).endRow();
}

} // namespace

void IDFWriter::writeVias(EDABoard const &board, FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    rows.add(".DRILLED_HOLES").endRow();
    for (auto via = board.beginVias(); via != board.endVias(); ++via) {
        rows.add(via->getDiameter()).add(' ').add(via->getXCentre()).add(' ').add(via->getYCentre()).add(' ');
        rows.addQuoted(via->getPlatingStyle()).add(' ').addQuoted(via->getAssociatedPart()).add(' ');
        rows.addQuoted(via->getHoleType()).add(" UNOWNED").endRow();
    }
    rows.add(".END_DRILLED_HOLES").endRow();
}

void IDFWriter::writePlacements(EDABoard const &board, FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    rows.add(".PLACEMENT").endRow();
    for (auto placed = board.beginPlacements(); placed != board.endPlacements(); ++placed) {
        rows.addQuoted(utf8ToLatin1(placed->getName())).add(' ').addQuoted(placed->getPartNumber()).add(' ');
        rows.addQuoted(placed->getReferenceDesignator()).endRow();
        rows.add(placed->getXLocation()).add(' ').add(placed->getYLocation()).add(' ');
        rows.add(placed->getOffset()).add(' ').add(placed->getAngle(false)).add(' ');
        rows.addBare(idfSide(placed->getBoardSide())).add(' ').addBare(placed->getStatus()).endRow();
    }
    rows.add(".END_PLACEMENT").endRow();
}

void IDFWriter::writeComponents(EDABoard const &board, FileSystem::FFofstream &stream) const {
    IDFRows rows(stream);
    for (auto part = board.beginComponents(); part != board.endComponents(); ++part) {
        const std::string type = utf8ToLatin1(part->getType());
        rows.add('.').addBare(type).endRow();
        rows.addQuoted(utf8ToLatin1(part->getName())).add(' ').addQuoted(part->getPartNumber()).add(' ');
        rows.addBare(part->getUnits()).add(' ').add(part->getHeight()).endRow();
        addOutline(part->getOutline(), rows);
        for (auto property = part->beginProperties(); property != part->endProperties(); ++property)
            addProperty(property->first, property->second, rows);
        rows.add(".END_").addBare(type).endRow();
    }
}

} // namespace EDA
