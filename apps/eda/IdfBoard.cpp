// A board made ready for IDF files, with word of what they cannot hold.
#include "IdfBoard.h"

#include "Failure.h"
#include "IdfNotices.h"
#include "IdfText.h"
#include "IdfUnits.h"
#include "PlacementAngle.h"
#include "Printable.h"
#include "text/Text.h"

#include <cmath>
#include <set>
#include <utility>

namespace EDATool {

namespace {

using namespace EDA;

class IdfBoardMaker {
public:
    IdfBoardMaker(const EDABoard &design, const std::string &units) : design_(design), asked_(units) {}

    IdfBoard make();

private:
    void settleUnits();
    void addKeepout(const EDAKeepout &keepout);
    void addVias(const EDAVia &via);
    void addPlacement(const EDAComponentPlacement &placement);
    void addComponent(const EDAComponent &component);
    void addProperties(const EDAComponent &component, EDAComponent &result);
    void countTheRest();

    IdfLengths lengthsOf(const EDAComponent &component);
    void noteConversion(const std::string &spelling, const IdfLengths &lengths);
    double number(double value);
    double length(double value) { return number(lengths_.convert(value)); }
    EDAOutline outline(const EDAOutline &source, const IdfLengths &lengths);
    void addInternals(const EDAOutline &source, EDAOutline &result);
    std::string text(const std::string &value) { return encodedText(value, notices_); }
    std::string plating(const EDAVia &via);
    std::string holeType(const EDAVia &via);

    const EDABoard &design_;
    const std::string asked_;
    IdfLengths lengths_; // of the board
    IdfNotices notices_;
    std::set<std::string> conversions_; // that nobody asked for, a line each
    EDABoard board_;
    std::vector<std::string> lines_;
};

[[noreturn]] void refuseUnits(const std::string &units) {
    throw DesignFailure("the units " + inQuotes(shortened(units, 40)) +
                        " are unknown; --units MM or --units THOU can say what the lengths are in");
}

bool isBlank(const std::string &text) { return text.find_first_not_of(" \t") == std::string::npos; }

IdfBoard IdfBoardMaker::make() {
    settleUnits();
    board_.setName(checkedText(design_.getName(), notices_));
    board_.setThickness(length(design_.getThickness()));
    board_.getOutline() = outline(design_.getOutline(), lengths_);
    addInternals(design_.getOutline(), board_.getOutline());
    for (auto keepout = design_.beginKeepouts(); keepout != design_.endKeepouts(); ++keepout)
        addKeepout(*keepout);
    for (auto via = design_.beginVias(); via != design_.endVias(); ++via)
        addVias(*via);
    for (auto placement = design_.beginPlacements(); placement != design_.endPlacements(); ++placement)
        addPlacement(*placement);
    for (auto component = design_.beginComponents(); component != design_.endComponents(); ++component)
        addComponent(*component);
    countTheRest();
    lines_.insert(lines_.end(), conversions_.begin(), conversions_.end());
    for (std::string &line : notices_.lines())
        lines_.push_back(std::move(line));
    return {std::move(board_), std::move(lines_)};
}

void IdfBoardMaker::settleUnits() {
    const std::string &own = design_.getUnits();
    lengths_ = idfLengths(own, asked_);
    if (lengths_.from == nullptr) {
        if (asked_.empty() && !isBlank(own)) refuseUnits(own);
        lengths_ = idfLengths(asked_.empty() ? "MM" : asked_, asked_);
        lines_.push_back((isBlank(own) ? "the board names no units"
                                       : "the units " + inQuotes(shortened(own, 40)) + " are unknown") +
                         "; its lengths are taken to be in " + lengths_.word());
    }
    noteConversion(own, lengths_);
    board_.setUnits(lengths_.word());
}

IdfLengths IdfBoardMaker::lengthsOf(const EDAComponent &component) {
    const std::string &own = component.getUnits();
    if (isBlank(own)) return lengths_;
    IdfLengths lengths = idfLengths(own, asked_);
    if (lengths.from == nullptr) {
        if (asked_.empty()) refuseUnits(own);
        notices_.add(IdfLoss::ComponentUnits);
        lengths = idfLengths(asked_, asked_);
    }
    noteConversion(own, lengths);
    return lengths;
}

void IdfBoardMaker::noteConversion(const std::string &spelling, const IdfLengths &lengths) {
    if (lengths.from == lengths.to || !asked_.empty()) return;
    conversions_.insert("lengths in " + inQuotes(spelling) +
                        ", which IDF has no word for, are converted to " + lengths.word());
}

double IdfBoardMaker::number(double value) {
    if (std::isfinite(value)) return value;
    notices_.add(IdfLoss::NumbersNotFinite);
    return 0.0;
}

// The points alone, without what lies inside.
EDAOutline IdfBoardMaker::outline(const EDAOutline &source, const IdfLengths &lengths) {
    EDAOutline result(source.isHole());
    for (auto point = source.beginPoints(); point != source.endPoints(); ++point) {
        if (point->centered) notices_.add(IdfLoss::CentredArcs);
        result.addPoint(0, number(lengths.convert(point->x)), number(lengths.convert(point->y)),
                        point->centered ? 0.0 : number(point->angle));
    }
    return result;
}

void IdfBoardMaker::addInternals(const EDAOutline &source, EDAOutline &result) {
    for (auto inner = source.beginInternalOutlines(); inner != source.endInternalOutlines(); ++inner) {
        if (!inner->isHole()) notices_.add(IdfLoss::Islands);
        notices_.add(IdfLoss::InnerCutOuts, static_cast<std::size_t>(inner->numInternalOutlines()));
        result.addInternalOutline(outline(*inner, lengths_));
    }
}

void IdfBoardMaker::addKeepout(const EDAKeepout &keepout) {
    const bool isForComponents = keepout.isComponentKeepout();
    if (!isForComponents && !keepout.isViaKeepout()) {
        notices_.add(keepout.isRoutingKeepout() ? IdfLoss::RoutingKeepouts : IdfLoss::OtherKeepouts);
        return;
    }
    const bool isOneSided = keepout.isOnBoardTop() || keepout.isOnBoardBottom();
    EDAKeepout result(isForComponents ? "PLACE_KEEPOUT" : "VIA_KEEPOUT");
    if (isForComponents) {
        result.setBoardSide(keepout.isOnBoardTop() ? "TOP" : isOneSided ? "BOTTOM" : "BOTH");
        result.setHeight(length(keepout.getHeight()));
        if (!isOneSided && !keepout.isOnBoardBothSides()) notices_.add(IdfLoss::KeepoutsWithoutSide);
    } else if (isOneSided) {
        notices_.add(IdfLoss::ViaKeepoutsOfOneSide);
    }
    if (!keepout.getName().empty()) notices_.add(IdfLoss::ItemNames);
    result.getOutline() = outline(keepout.getOutline(), lengths_);
    addInternals(keepout.getOutline(), result.getOutline());
    board_.addKeepout(result);
}

std::string IdfBoardMaker::plating(const EDAVia &via) {
    if (via.isPlated()) return "PTH";
    return via.getPlatingStyle().empty() ? "NPTH" : text(via.getPlatingStyle());
}

std::string IdfBoardMaker::holeType(const EDAVia &via) {
    if (via.isThermalVia()) return "VIA";
    if (via.isMountingHole()) return "MTG";
    if (via.isToolHole()) return "TOOL";
    return via.isPin() ? "PIN" : text(via.getHoleType());
}

bool hasSpan(const EDAVia &via) {
    std::string startLayer, endLayer;
    via.getLayers(startLayer, endLayer);
    double zLow = 0.0, zHigh = 0.0;
    via.getZDimensions(zLow, zHigh);
    return !startLayer.empty() || !endLayer.empty() || !via.getFillMaterial().empty() || zLow != 0.0 ||
           zHigh != 0.0 || via.getPlatingThickness() != 0.0;
}

// The via at its own place, and then one at the place of each of its instances.
void IdfBoardMaker::addVias(const EDAVia &via) {
    const std::size_t all = 1 + via.numInstances();
    if (!via.getOutline().empty()) notices_.add(IdfLoss::HoleShapes, all);
    if (hasSpan(via)) notices_.add(IdfLoss::HoleSpans, all);
    if (!via.getName().empty()) notices_.add(IdfLoss::ItemNames);
    EDAVia result;
    result.setDiameter(length(via.getDiameter()));
    result.setPlatingStyle(plating(via));
    result.setAssociatedPart(via.getAssociatedPart().empty() ? "BOARD" : text(via.getAssociatedPart()));
    result.setHoleType(holeType(via));
    result.setCentre(length(via.getXCentre()), length(via.getYCentre()));
    board_.addVia(result, false);
    for (int i = 0; i < static_cast<int>(via.numInstances()); ++i) {
        if (!via.getInstanceName(i).empty()) notices_.add(IdfLoss::ItemNames);
        result.setCentre(length(via.getInstanceXCentre(i)), length(via.getInstanceYCentre(i)));
        board_.addVia(result, false);
    }
}

void IdfBoardMaker::addPlacement(const EDAComponentPlacement &placement) {
    EDAComponentPlacement result;
    result.setName(checkedText(placement.getName(), notices_));
    result.setPartNumber(text(placement.getPartNumber()));
    result.setReferenceDesignator(text(placement.getReferenceDesignator()));
    result.setLocation(length(placement.getXLocation()), length(placement.getYLocation()));
    result.setOffset(length(placement.getOffset()));
    result.setAngle(number(angleWithoutOrientation(placement)));
    result.setBoardSide(placement.isOnBoardTop() ? "TOP" : "BOTTOM");
    const bool hasStatus = isWord(placement.getStatus());
    result.setStatus(hasStatus ? text(placement.getStatus()) : "PLACED");
    if (!hasStatus) notices_.add(IdfLoss::Statuses);
    if (placement.getHeatsink()) notices_.add(IdfLoss::Heatsinks);
    notices_.add(IdfLoss::Bumps, placement.numBumps(1));
    board_.addComponentPlacement(std::move(result));
}

void IdfBoardMaker::addComponent(const EDAComponent &component) {
    const bool isMechanical = equalsIgnoreCase(component.getType(), "MECHANICAL");
    if (!isMechanical && !component.isElectrical()) notices_.add(IdfLoss::ComponentTypes);
    const IdfLengths lengths = lengthsOf(component);
    EDAComponent result(isMechanical ? "MECHANICAL" : "ELECTRICAL");
    result.setName(checkedText(component.getName(), notices_));
    result.setPartNumber(text(component.getPartNumber()));
    result.setUnits(lengths.word());
    result.setHeight(number(lengths.convert(component.getHeight())));
    result.getOutline() = outline(component.getOutline(), lengths);
    notices_.add(IdfLoss::ComponentCutOuts,
                 static_cast<std::size_t>(component.getOutline().numInternalOutlines()));
    if (!component.getManufacturer().empty()) notices_.add(IdfLoss::Manufacturers);
    if (component.isMoldEnabled()) notices_.add(IdfLoss::Molds);
    addProperties(component, result);
    board_.addComponent(result, false);
}

void IdfBoardMaker::addProperties(const EDAComponent &component, EDAComponent &result) {
    for (auto property = component.beginProperties(); property != component.endProperties(); ++property) {
        const std::string key = propertyKey(property->first, notices_);
        const std::string value = propertyValue(property->second, notices_);
        if (key.empty() || value.empty())
            notices_.add(IdfLoss::PropertyValues);
        else
            result.addProperty(key, value);
    }
}

void IdfBoardMaker::countTheRest() {
    notices_.add(IdfLoss::Layers, design_.numLayers());
    notices_.add(IdfLoss::Bumps, design_.numBumps(1));
    notices_.add(IdfLoss::Wirebonds, design_.numWirebonds());
    notices_.add(IdfLoss::RouteOutlines, design_.numRouteOutlines());
    notices_.add(IdfLoss::PlacementOutlines, design_.numPlacementOutlines());
    notices_.add(IdfLoss::Materials, (design_.getConductorMaterial().empty() ? 0u : 1u) +
                                         (design_.getDielectricMaterial().empty() ? 0u : 1u));
}

} // namespace

IdfBoard makeIdfBoard(const EDABoard &design, const std::string &units) {
    return IdfBoardMaker(design, units).make();
}

} // namespace EDATool
