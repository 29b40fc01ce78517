// A board made ready for an IDX document, with word of what that cannot hold.
#include "IdxBoard.h"

#include "host/EntityModel/Units.h"
#include "IdxNotices.h"
#include "PlacedItems.h"
#include "PlacementAngle.h"
#include "Printable.h"
#include "text/Text.h"
#include "writers/IDXTextDetail.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace EDATool {

namespace {

using namespace EDA;

const EntityModel::Unit *unitOf(const std::string &spelling) {
    const EntityModel::Quantity *const length = EntityModel::Units::findQuantity("Length");
    return length == nullptr ? nullptr : EntityModel::Units::find(*length, spelling);
}

bool isBlank(const std::string &text) { return text.find_first_not_of(" \t") == std::string::npos; }

class IdxBoardMaker {
public:
    IdxBoardMaker(const EDABoard &design, const std::string &units) : design_(design), asked_(units) {}

    IdxBoard make();

private:
    void settleUnits();
    void addKeepout(const EDAKeepout &keepout);
    void addVias(const EDAVia &via);
    void countVias(const EDAVia &via);
    void addPlacement(const EDAComponentPlacement &placement);
    void addComponent(const EDAComponent &component);
    void countComponent(const EDAComponent &component);
    void countTheRest();

    double scaleOf(const EDAComponent &component);
    double number(double value);
    EDAOutline outline(const EDAOutline &source, double scale);
    void countPoints(const EDAOutline &source);
    void countPlace(double x, double y);
    const std::string &text(const std::string &value);

    const EDABoard &design_;
    const std::string asked_;
    const EntityModel::Unit *unit_ = nullptr; // of what is written; null where that is unknown
    double scale_ = 1.0;                      // of the lengths of the board
    IdxNotices notices_;
    EDABoard board_;
    std::unordered_set<const EDAComponent *> placed_; // of the design
    std::vector<std::string> lines_;
};

IdxBoard IdxBoardMaker::make() {
    settleUnits();
    board_.setName(text(design_.getName()));
    board_.setThickness(number(scale_ * design_.getThickness()));
    board_.getOutline() = outline(design_.getOutline(), scale_);
    for (auto inner = design_.getOutline().beginInternalOutlines();
         inner != design_.getOutline().endInternalOutlines(); ++inner)
        notices_.add(IdxLoss::InnerCutOuts, static_cast<std::size_t>(inner->numInternalOutlines()));
    for (auto keepout = design_.beginKeepouts(); keepout != design_.endKeepouts(); ++keepout)
        addKeepout(*keepout);
    for (auto via = design_.beginVias(); via != design_.endVias(); ++via)
        addVias(*via);
    for (auto placement = design_.beginPlacements(); placement != design_.endPlacements(); ++placement)
        addPlacement(*placement);
    for (auto component = design_.beginComponents(); component != design_.endComponents(); ++component)
        addComponent(*component);
    countTheRest();
    for (std::string &line : notices_.lines())
        lines_.push_back(std::move(line));
    return {std::move(board_), std::move(lines_)};
}

void IdxBoardMaker::settleUnits() {
    std::string own = design_.getUnits();
    const std::string standard = asked_.empty() ? "mm" : asked_;
    const EntityModel::Unit *const from = unitOf(own);
    if (isBlank(own)) {
        lines_.push_back("the board names no units; its lengths are taken to be in " + standard);
        own = standard;
    } else if (from == nullptr) {
        lines_.push_back(
            "the units " + inQuotes(shortened(own, 40)) + " are unknown; " +
            (asked_.empty() ? "the document repeats them" : "its lengths are taken to be in " + asked_));
    }
    board_.setUnits(asked_.empty() ? text(own) : asked_);
    unit_ = unitOf(board_.getUnits());
    if (from != nullptr && unit_ != nullptr) scale_ = EntityModel::Units::convert(1.0, *from, *unit_);
}

double IdxBoardMaker::scaleOf(const EDAComponent &component) {
    const std::string &own = component.getUnits();
    if (isBlank(own) || own == design_.getUnits()) return scale_;
    const EntityModel::Unit *const from = unitOf(own);
    if (from != nullptr && unit_ != nullptr) return EntityModel::Units::convert(1.0, *from, *unit_);
    notices_.add(IdxLoss::ComponentUnits);
    return 1.0;
}

double IdxBoardMaker::number(double value) {
    if (std::isfinite(value)) return value;
    notices_.add(IdxLoss::NumbersNotFinite);
    return 0.0;
}

const std::string &IdxBoardMaker::text(const std::string &value) {
    if (idxText(value).toStdString() != value) notices_.add(IdxLoss::Characters);
    return value;
}

bool isArc(const OutlinePoint &point) { return point.centered || point.angle != 0.0; }

// The points of one outline, as they are written, without what lies inside. The writer keeps a circle that is
// one to it, which depends on the units.
void IdxBoardMaker::countPoints(const EDAOutline &source) {
    std::size_t arcs = 0;
    for (auto point = source.beginPoints(); point != source.endPoints(); ++point) {
        if (isArc(*point)) ++arcs;
        if (!std::isfinite(point->x) || !std::isfinite(point->y)) notices_.add(IdxLoss::NumbersNotFinite);
    }
    if (arcs == 0) return;
    EDAOutline edge;
    edge.resetOutline(source, false);
    double x = 0.0, y = 0.0, diameter = 0.0;
    if (!edge.isCylinder(x, y, diameter, 12, 1e-4)) notices_.add(IdxLoss::Arcs, arcs);
}

EDAOutline IdxBoardMaker::outline(const EDAOutline &source, double scale) {
    EDAOutline scaled = scale == 1.0 ? source : placedOutline(source, {scale, 0.0, 0.0});
    countPoints(scaled);
    for (auto inner = scaled.beginInternalOutlines(); inner != scaled.endInternalOutlines(); ++inner)
        countPoints(*inner);
    return scaled;
}

bool isRounded(double value) { return parseDouble(shortNumber(value, 6), 0.0, 0.0) != value; }

void IdxBoardMaker::countPlace(double x, double y) {
    if (isRounded(x) || isRounded(y)) notices_.add(IdxLoss::RoundedPlaces);
}

void IdxBoardMaker::addKeepout(const EDAKeepout &keepout) {
    const bool hasSide = keepout.isOnBoardTop() || keepout.isOnBoardBottom() || keepout.isOnBoardBothSides();
    // Those for vias go through the board and need no side.
    if (!hasSide && !keepout.isViaKeepout()) notices_.add(IdxLoss::KeepoutsWithoutSide);
    EDAKeepout result(text(keepout.getType()));
    result.setName(text(keepout.getName()));
    result.setBoardSide(keepout.getBoardSide());
    result.setHeight(number(scale_ * keepout.getHeight()));
    EDAOutline &edge = result.getOutline();
    edge.resetOutline(keepout.getOutline(), false);
    edge = outline(edge, scale_);
    notices_.add(IdxLoss::KeepoutCutOuts,
                 static_cast<std::size_t>(keepout.getOutline().numInternalOutlines()));
    board_.addKeepout(result);
}

bool hasSpan(const EDAVia &via) {
    std::string startLayer, endLayer;
    via.getLayers(startLayer, endLayer);
    double zLow = 0.0, zHigh = 0.0;
    via.getZDimensions(zLow, zHigh);
    return !startLayer.empty() || !endLayer.empty() || !via.getFillMaterial().empty() || zLow != 0.0 ||
           zHigh != 0.0 || via.getPlatingThickness() != 0.0;
}

bool isPlainPlating(const EDAVia &via) {
    const std::string &style = via.getPlatingStyle();
    return via.isPlated() || style.empty() || equalsIgnoreCase(style, "NPTH");
}

void IdxBoardMaker::countVias(const EDAVia &via) {
    const std::size_t all = 1 + via.numInstances();
    if (!via.getOutline().empty()) notices_.add(IdxLoss::HoleShapes, all);
    if (hasSpan(via)) notices_.add(IdxLoss::HoleSpans, all);
    if (!via.isThermalVia()) notices_.add(IdxLoss::HoleTypes, all);
    if (!isPlainPlating(via)) notices_.add(IdxLoss::PlatingStyles, all);
    text(via.getName());
    text(via.getAssociatedPart());
}

// The via at its own place, and then one at the place of each of its instances.
void IdxBoardMaker::addVias(const EDAVia &via) {
    countVias(via);
    EDAVia result = placedVia(via, {scale_, 0.0, 0.0});
    result.setDiameter(number(result.getDiameter()));
    const auto addAt = [&](double x, double y) {
        const double scaledX = number(scale_ * x), scaledY = number(scale_ * y);
        countPlace(scaledX, scaledY);
        result.setCentre(scaledX, scaledY);
        board_.addVia(result, false);
    };
    addAt(via.getXCentre(), via.getYCentre());
    for (int i = 0; i < static_cast<int>(via.numInstances()); ++i) {
        result.setName(text(via.getInstanceName(i)));
        addAt(via.getInstanceXCentre(i), via.getInstanceYCentre(i));
    }
}

bool losesStatus(const std::string &status) { return !status.empty() && !equalsIgnoreCase(status, "PLACED"); }

void IdxBoardMaker::addPlacement(const EDAComponentPlacement &placement) {
    const EDAComponent *const component = design_.findComponent(placement);
    notices_.add(IdxLoss::Bumps, placement.numBumps(1));
    if (component == nullptr) return notices_.add(IdxLoss::WithoutComponent);
    placed_.insert(component);
    EDAComponentPlacement result;
    result.setName(placement.getName());
    result.setPartNumber(placement.getPartNumber());
    result.setReferenceDesignator(text(placement.getReferenceDesignator()));
    const double x = number(scale_ * placement.getXLocation()), y = number(scale_ * placement.getYLocation());
    countPlace(x, y);
    result.setLocation(x, y);
    result.setAngle(number(angleWithoutOrientation(placement)));
    result.setBoardSide(placement.isOnBoardTop() ? "TOP" : "BOTTOM");
    if (placement.getOffset() != 0.0) notices_.add(IdxLoss::Offsets);
    if (losesStatus(placement.getStatus())) notices_.add(IdxLoss::Statuses);
    if (placement.getHeatsink()) notices_.add(IdxLoss::Heatsinks);
    board_.addComponentPlacement(std::move(result));
}

void IdxBoardMaker::addComponent(const EDAComponent &component) {
    countComponent(component);
    const double scale = scaleOf(component);
    EDAComponent result(component.getType());
    result.setName(text(component.getName()));
    result.setPartNumber(text(component.getPartNumber()));
    result.setUnits(board_.getUnits());
    result.setHeight(number(scale * component.getHeight()));
    EDAOutline &edge = result.getOutline();
    edge.resetOutline(component.getOutline(), false);
    edge = outline(edge, scale);
    board_.addComponent(result, false);
}

void IdxBoardMaker::countComponent(const EDAComponent &component) {
    if (placed_.count(&component) == 0) notices_.add(IdxLoss::WithoutPlacement);
    if (!component.isElectrical()) notices_.add(IdxLoss::MechanicalComponents);
    if (!component.getManufacturer().empty()) notices_.add(IdxLoss::Manufacturers);
    if (component.isMoldEnabled()) notices_.add(IdxLoss::Molds);
    notices_.add(IdxLoss::ComponentCutOuts,
                 static_cast<std::size_t>(component.getOutline().numInternalOutlines()));
    notices_.add(IdxLoss::Properties, static_cast<std::size_t>(std::distance(component.beginProperties(),
                                                                             component.endProperties())));
}

void IdxBoardMaker::countTheRest() {
    notices_.add(IdxLoss::Layers, design_.numLayers());
    notices_.add(IdxLoss::Bumps, design_.numBumps(1));
    notices_.add(IdxLoss::Wirebonds, design_.numWirebonds());
    notices_.add(IdxLoss::RouteOutlines, design_.numRouteOutlines());
    notices_.add(IdxLoss::PlacementOutlines, design_.numPlacementOutlines());
    notices_.add(IdxLoss::Materials, (design_.getConductorMaterial().empty() ? 0u : 1u) +
                                         (design_.getDielectricMaterial().empty() ? 0u : 1u));
}

} // namespace

IdxBoard makeIdxBoard(const EDABoard &design, const std::string &units) {
    return IdxBoardMaker(design, units).make();
}

} // namespace EDATool
