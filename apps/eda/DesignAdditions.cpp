// What joins a design beside its own files: the copper of other files, and a stack-up.
#include "CopperOnBoard.h"
#include "Design.h"
#include "Failure.h"
#include "Formats.h"
#include "Printable.h"
#include "readers/BoardUnits.h"
#include "Stackup.h"

#include <optional>

namespace EDATool {

namespace {

using EntityModel::Unit;
using EntityModel::Units::convert;

// Places of holes in files of two kinds differ by their rounding, and sizes by that of tools.
constexpr double sameHole = 0.05; // mm

const Unit *lengthUnit(const std::string &spelling) {
    using namespace EntityModel;
    return Units::find(*Units::findQuantity("Length"), spelling);
}

double millimetres(double value, const Unit &unit) { return convert(value, *lengthUnit("mm"), unit); }

// From here on the files of the design are told one by one.
void startSources(Design &design) {
    if (!design.sources.empty()) return;
    for (const std::string &file : design.files)
        design.sources.push_back({file, design.format, "the design"});
}

template <class Items> void append(const Items &from, Items &to) {
    to.insert(to.end(), from.begin(), from.end());
}

Design readCopper(const Design &design, const DesignSettings &settings) {
    if (design.board().numLayers() > 0)
        throw UsageFailure(inQuotes(design.files.front()) +
                           " has layers of its own, so --copper has no place");
    DesignSettings own = settings;
    own.copper.clear();
    own.step.clear();
    Design copper = readDesign(settings.copper, own);
    if (!findFormat(copper.format).isSetOfLayers)
        throw UsageFailure("--copper takes Gerber layers and drill files, but " +
                           inQuotes(settings.copper.front()) + " is " + copper.format);
    return copper;
}

const Unit &boardUnit(const Design &design) {
    const Unit *const unit = lengthUnit(design.board().getUnits());
    if (unit == nullptr)
        throw DesignFailure(inQuotes(design.files.front()) +
                            ": names no known units, so the place of the copper on it is not known");
    return *unit;
}

// What one unit of length of the copper stands for. Where the front end made millimetres of what the files
// say and that is wrong, what --copper-units says is of the numbers in the files.
struct CopperUnit {
    const Unit *unit;
    double factor = 1.0;
};

CopperUnit copperUnit(const Design &copper, const DesignSettings &settings) {
    const std::string &given = settings.copperUnits;
    const Unit *const unit = lengthUnit(given.empty() ? copper.board().getUnits() : given);
    const bool isConverted = !given.empty() && copper.fabrication;
    if (isConverted && unit != nullptr)
        return {unit, convert(1.0, *lengthUnit("mm"), *lengthUnit(copper.fileUnits))};
    if (unit == nullptr)
        throw DesignFailure(
            inQuotes(copper.files.front()) +
            ": names no units, so its size on the board is not known; --copper-units can say");
    return {unit};
}

void tellHoles(const CopperResult &result, Design &design) {
    if (result.copperHoles == 0) return;
    const std::string same = std::to_string(result.sameHoles);
    design.notices.push_back("holes: the board has " + std::to_string(result.boardHoles) +
                             ", the files of --copper have " + std::to_string(result.copperHoles) +
                             (result.sameHoles == 0
                                  ? std::string()
                                  : "; " + same + " of these are left out, since the board has the same"));
    if (result.otherSizes == 0) return;
    design.warnings.push_back(std::to_string(result.otherSizes) +
                              " holes of --copper stand where the board has one of another size; both stay");
}

void addCopper(const DesignSettings &settings, Design &design) {
    Design copper = readCopper(design, settings);
    const Unit &unit = boardUnit(design);
    const CopperUnit from = copperUnit(copper, settings);
    const CopperPlace place{from.factor * convert(1.0, *from.unit, unit), settings.copperX, settings.copperY};
    append(copper.notices, design.notices);
    append(copper.warnings, design.warnings);
    design.notices.push_back("copper is in " + from.unit->label + ", the board in " + unit.label +
                             ": lengths times " + shortNumber(place.scale));
    for (const std::string &line :
         compareExtents(copper.board(), place, design.board(), millimetres(1.0, unit)))
        design.warnings.push_back("--copper: " + line);
    tellHoles(putCopperOnBoard(copper.board(), place, millimetres(sameHole, unit), design.board()), design);
    startSources(design);
    append(copper.sources, design.sources);
    append(copper.files, design.files);
    design.layerFiles = copper.layerFiles;
    design.fabrication = std::move(copper.fabrication);
}

} // namespace

void completeDesign(Design &design, const DesignSettings &settings) {
    if (settings.copper.empty() && settings.stackup.empty()) return;
    if (!design.hasBoard)
        throw DesignFailure(inQuotes(design.files.front()) + ": is a library; its board file is missing");
    if (design.isPackage)
        throw UsageFailure("--copper and --stackup are for boards, but " + inQuotes(design.files.front()) +
                           " is read as a component");
    std::optional<Stackup> stackup; // read first, since copper may take long
    if (!settings.stackup.empty()) stackup = readStackup(settings.stackup);
    if (!settings.copper.empty()) addCopper(settings, design);
    if (!stackup) return;
    applyStackup(*stackup, design);
    startSources(design);
    design.sources.push_back({settings.stackup, "stack-up", "by --stackup"});
}

Design readWholeDesign(const std::vector<std::string> &files, const DesignSettings &settings) {
    Design design = readDesign(files, settings);
    completeDesign(design, settings);
    return design;
}

} // namespace EDATool
