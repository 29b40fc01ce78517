// The units of IDF files.
#include "IdfUnits.h"

#include "Failure.h"
#include "Printable.h"

#include <string_view>

namespace EDATool {

namespace {

using EntityModel::Unit;

constexpr std::string_view thousandth = "mil";

const Unit *unitOf(const std::string &spelling) {
    const EntityModel::Quantity *const length = EntityModel::Units::findQuantity("Length");
    return length == nullptr ? nullptr : EntityModel::Units::find(*length, spelling);
}

// Lengths in inches and feet are whole numbers of thousandths of an inch more often than of millimetres.
const Unit *nearestOfIdf(const Unit &unit) {
    const bool isImperial = unit.label == thousandth || unit.label == "in" || unit.label == "ft";
    return unitOf(isImperial ? "mil" : "mm");
}

} // namespace

std::string idfUnits(const std::string &spelling) {
    const Unit *const unit = unitOf(spelling);
    if (unit == nullptr || unit != nearestOfIdf(*unit)) return std::string();
    return unit->label == thousandth ? "THOU" : "MM";
}

void checkIdfUnits(const Arguments &arguments) {
    if (!arguments.has("--units") || !idfUnits(arguments.value("--units")).empty()) return;
    throw UsageFailure("--units " + inQuotes(arguments.value("--units")) +
                       " is no unit of IDF files; it takes MM or THOU");
}

std::string IdfLengths::word() const { return to->label == thousandth ? "THOU" : "MM"; }

IdfLengths idfLengths(const std::string &spelling, const std::string &asked) {
    const Unit *const from = unitOf(spelling);
    if (from == nullptr) return {};
    return {from, asked.empty() ? nearestOfIdf(*from) : unitOf(asked)};
}

} // namespace EDATool
