// The import options, and the filters that they set.
#include "import/EDAImporterDetail.h"

#include <cmath>

namespace EDA {

using namespace EntityModel;

// An option's attribute and flag; the first four also have a value attribute that the importer keeps a copy
// of.
struct EDAImporter::OptionRow {
    const TypeRef &flagType;
    bool Options::*flag;
    const TypeRef *valueType = nullptr;
    Attribute *EDAImporter::*value = nullptr;
};

namespace {

constexpr double filterTolerance = 1e-9; // Added to a threshold, so that what equals it counts as below.

} // namespace

void EDAImporter::setImportOptions(Entity *options, EDABoard &board) {
    if (!options) return;
    static const OptionRow rows[] = {
        {Filter_On_Height_t, &Options::filterOnHeight, &Min_Height_t, &EDAImporter::minHeightAttribute_},
        {Filter_On_Size_t, &Options::filterOnSize, &Min_Diagonal_Size_t,
         &EDAImporter::minDiagonalSizeAttribute_},
        {Filter_On_Power_t, &Options::filterOnPower, &Min_Power_t, &EDAImporter::minPowerAttribute_},
        {Ignore_holes_less_than_a_specified_size_t, &Options::ignoreSmallHoles, &Maximum_size_to_be_ignored_t,
         &EDAImporter::maxIgnoredHoleSizeAttribute_},
        {Import_Vias_t, &Options::importVias},
        {Import_Non_Plated_Vias_t, &Options::importNonPlatedVias},
        {Import_Component_Keepouts_t, &Options::importComponentKeepouts},
        {Import_Via_Keepouts_t, &Options::importViaKeepouts},
        {Import_Routing_Keepouts_t, &Options::importRoutingKeepouts},
        {Import_Detailed_Layers_t, &Options::importDetailedLayers},
        {Group_Identical_Vias_t, &Options::groupIdenticalVias},
        {Import_Wirebonds_t, &Options::importWirebonds},
        {Import_Bumps_t, &Options::importBumps},
        {Group_Identical_Bumps_t, &Options::groupIdenticalBumps},
        {Materials_From_Library_t, &Options::materialsFromLibrary},
        {Import_Dielectric_Layers_t, &Options::importDielectricLayers},
        {Ignore_Fill_Material_t, &Options::ignoreFillMaterial},
        {Reset_Board_Origin_t, &Options::resetBoardOrigin},
        {Simplify_Shapes_t, &Options::simplifyShapes},
    };
    importAs_ = getTypeValue(options, AttributePath(Import_Type_t), TypeRef(TypeFactory::emptyType()));
    for (const OptionRow &row : rows)
        readOption(options, row);
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component) {
        component->setFiltered(isComponentFiltered(*component, board));
    }
}

void EDAImporter::readOption(Entity *options, const OptionRow &row) {
    const Attribute *const flag = options->readAttribute(row.flagType);
    if (!flag) return;
    options_.*row.flag = flag->getBool();
    const Attribute *const value = row.valueType ? options->readAttribute(*row.valueType) : nullptr;
    if (!value) return;
    Attribute *&kept = this->*row.value;
    if (kept) {
        std::string text;
        kept->setFromString(value->getString(text));
    } else if (value->isDoubleAttribute()) {
        // Kept as an attribute, since each filter asks for it in the units of its component.
        kept = value->clone();
    }
}

std::string EDAImporter::getComponentUnits(const EDAComponent &component, const EDABoard &board) const {
    return component.getUnits().empty() ? board.getUnits() : component.getUnits();
}

bool EDAImporter::isComponentFiltered(const EDAComponent &component, const EDABoard &board) const {
    if (!hasOutline(component)) return false;
    const std::string units = getComponentUnits(component, board);
    const auto isBelow = [](double value, const Attribute &least, const std::string &in) {
        return value < least.getValueIn(in) + filterTolerance;
    };
    if (options_.filterOnHeight && minHeightAttribute_ &&
        isBelow(component.getHeight(), *minHeightAttribute_, units)) {
        return true;
    }
    // A package whose edge has no points has no size to be judged by.
    if (options_.filterOnSize && minDiagonalSizeAttribute_ && component.getOutline().getBound().isValid() &&
        isBelow(component.getSize(), *minDiagonalSizeAttribute_, units)) {
        return true;
    }
    // Intended: a component that names no operating power has none, and is filtered even by a minimum of 0.
    return options_.filterOnPower && minPowerAttribute_ &&
           isBelow(component.getPower(), *minPowerAttribute_, "mW");
}

} // namespace EDA
