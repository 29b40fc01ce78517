// Reading an XFL design: one file, as a board or as a package.
#include "Console.h"
#include "Entities.h"
#include "Failure.h"
#include "Formats.h"
#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/FileSystem/CSVParser.h"
#include "ImportOptions.h"
#include "Printable.h"
#include "readers/XFLReader.h"
#include "XflNotices.h"

#include <algorithm>
#include <array>

namespace EDATool {

namespace {

using Text = std::string_view;

constexpr std::array<Text, 10> sections = {".version",    ".unit", ".scale",     ".layer", ".shape",
                                           ".board_geom", ".part", ".component", ".via",   ".route"};

// What the import would make of it: the options of the command line win over the stored ones.
bool isForComponent(const DesignSettings &settings) {
    using namespace EntityModel;
    std::vector<std::string> changes = settings.options;
    if (!settings.importAs.empty()) changes.insert(changes.begin(), "Import Type=" + settings.importAs);
    EDA::XFLReader reader(false);
    const std::unique_ptr<Model> options = makeImportOptions(reader, changes);
    return textOf(*options->root(), AttributePath(Import_Type_t)) == "Component";
}

// Errors about files begin with the name, which is told as it is.
std::string reasonOf(const std::string &error, const std::string &file) {
    const std::string start = file + ": ";
    return error.rfind(start, 0) == 0 ? error.substr(start.size()) : error;
}

// Gives the number of solids that a package loses for the reasons that were told.
std::size_t addLosses(const std::string &file, bool isPackage, Design &design) {
    FileSystem::CSVParser rows(' ', true, false, '\n', false);
    rows.addSeparator('\t');
    if (!rows.parseFile(file, true, true, false))
        throw DesignFailure(inQuotes(file) +
                            ": cannot be read as XFL: " + printable(reasonOf(rows.getError(), file)));
    if (rows.getNumberOfRows() == 0) throw DesignFailure(inQuotes(file) + ": has no rows");
    const XflNotices notices = findXflLosses(rows, isPackage);
    for (const std::string &line : notices.lines())
        design.warnings.push_back(inQuotes(file) + ": " + line);
    return notices.numEmptySolids();
}

void read(EDA::XFLReader &reader, const std::string &file, Design &design) {
    if (!reader.readFile(file)) throw DesignFailure(inQuotes(file) + ": has no rows that can be read");
    for (const std::string &line : messageLines(reader.getError()))
        design.warnings.push_back(inQuotes(file) + ": " + line);
}

bool isEmpty(const EDA::EDABoard &board) {
    return board.getOutline().empty() && board.numComponents() == 0 && board.numVias(0) == 0 &&
           board.numLayers() == 0;
}

bool hasBodies(const EDA::EDABoard &board) {
    return board.numComponents() > 0 && board.beginComponents()->getOutline().numInternalOutlines() > 0;
}

double heightOf(const EDA::EDAOutline &bodies) {
    double height = 0.0;
    for (auto body = bodies.beginInternalOutlines(); body != bodies.endInternalOutlines(); ++body) {
        double low = 0.0, high = 0.0;
        body->getZDimensions(low, high);
        height = std::max(height, high);
    }
    return height;
}

// Leaves out the solids without an area, of which an import would make solids without an outline. Gives their
// number.
std::size_t dropEmptyBodies(EDA::EDAOutline &outline) {
    std::vector<EDA::EDAOutline> bodies;
    const auto total = static_cast<std::size_t>(outline.numInternalOutlines());
    for (auto body = outline.beginInternalOutlines(); body != outline.endInternalOutlines(); ++body)
        if (body->getPoints(true).size() > 2) bodies.push_back(std::move(*body));
    outline.clear();
    for (const EDA::EDAOutline &body : bodies)
        outline.addInternalOutline(body);
    return total - bodies.size();
}

// What the file places is nothing to a package, which is one part.
void leaveComponentAlone(EDA::EDABoard &board) {
    EDA::EDAComponent component = std::move(*board.beginComponents());
    EDA::EDAComponentPlacement placement;
    placement.setReferenceDesignator(component.getName());
    placement.setName(component.getName());
    placement.setPartNumber(component.getPartNumber());
    EDA::EDABoard alone;
    alone.setUnits(board.getUnits());
    alone.addComponent(component, false);
    alone.addComponentPlacement(std::move(placement));
    board = std::move(alone);
}

void tellEmptyBodies(const std::string &file, std::size_t number, Design &design) {
    if (number == 0) return;
    design.warnings.push_back(
        inQuotes(file) + ": " + std::to_string(number) +
        (number == 1 ? " solid has no area and is left out" : " solids have no area and are left out") +
        ": sizes of 0, or tracks that cross themselves too often");
}

// As a package the file is one component. Its edge, name and height are those of the same file as a board:
// what is in the component is measured from that edge.
void readPackage(const std::string &file, std::size_t numEmptyTold, Design &design) {
    auto reader = std::make_unique<EDA::XFLReader>(true);
    read(*reader, file, design);
    EDA::EDABoard &board = reader->getBoard();
    const bool hasComponent = board.numComponents() > 0;
    const std::size_t numEmpty = hasComponent ? dropEmptyBodies(board.beginComponents()->getOutline()) : 0;
    tellEmptyBodies(file, numEmpty - std::min(numEmpty, numEmptyTold), design);
    if (!hasBodies(board))
        throw DesignFailure(inQuotes(file) + ": has nothing that a component can be made of");
    leaveComponentAlone(board);
    const auto component = board.beginComponents();
    component->setHeight(heightOf(component->getOutline()));
    EDA::XFLReader asBoard(false);
    if (asBoard.readFile(file)) {
        board.getOutline() = asBoard.getBoard().getOutline();
        board.setName(asBoard.getBoard().getName());
        board.setThickness(asBoard.getBoard().getThickness());
    }
    design.isPackage = true;
    design.reader = std::move(reader);
}

void readBoard(const std::string &file, Design &design) {
    auto reader = std::make_unique<EDA::XFLReader>(false);
    read(*reader, file, design);
    if (isEmpty(reader->getBoard()))
        design.warnings.push_back(inQuotes(file) + ": no part of a board was found in the file");
    design.reader = std::move(reader);
}

Text firstField(Text line) {
    constexpr Text separators = " \t";
    line.remove_prefix(std::min(line.find_first_not_of(separators), line.size()));
    return line.substr(0, line.find_first_of(separators));
}

} // namespace

// By its first row that is no comment.
bool looksLikeXfl(const std::string &, Text head) {
    while (!head.empty()) {
        const std::size_t end = std::min(head.find_first_of("\r\n"), head.size());
        const Text keyword = firstField(head.substr(0, end));
        if (!keyword.empty() && keyword[0] != '#')
            return std::find(sections.begin(), sections.end(), keyword) != sections.end();
        head.remove_prefix(std::min(end + 1, head.size()));
    }
    return false;
}

std::unique_ptr<EDA::EDAReader> makeXflReader() { return std::make_unique<EDA::XFLReader>(false); }

void readXflDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design) {
    const std::string &file = files.front();
    if (files.size() > 1) {
        throw UsageFailure(inQuotes(file) + " and " + inQuotes(files[1]) +
                           " are two XFL files, which are a design each");
    }
    const bool isPackage = isForComponent(settings);
    const std::size_t numEmptyTold = addLosses(file, isPackage, design);
    if (isPackage) {
        readPackage(file, numEmptyTold, design);
    } else {
        readBoard(file, design);
    }
    design.files.push_back(file);
    design.hasBoard = true;
}

} // namespace EDATool
