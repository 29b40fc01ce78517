// Steps of an IPC-2581 document as one layout.
#include "host/QvDbWrap/IpcAssembly.h"

#include "host/QvDbWrap/IpcCopper.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace QvDbWrap {

namespace {

std::size_t countPoints(const Area &area) {
    std::size_t count = area.outer.size();
    for (const Ring &hole : area.holes)
        count += hole.size();
    return count;
}

IpcPlacement within(const IpcPlacement &outer, const _mFPOINT &at, double rotation) {
    IpcPlacement placement;
    const _mFPOINT place = outer.apply(at);
    placement.x = place.x;
    placement.y = place.y;
    placement.rotation = std::fmod(outer.rotation + std::fmod(rotation, 360), 360);
    return placement;
}

geomElem elementOf(Ring &&ring, geomElem::Role role) {
    geomElem element;
    element.points = std::move(ring);
    element.role = role;
    return element;
}

Ring rectangleAround(const std::vector<std::vector<Ring>> &profiles) {
    _mFPOINT low = profiles[0][0][0];
    _mFPOINT high = low;
    for (const std::vector<Ring> &profile : profiles)
        for (const _mFPOINT &point : profile[0]) {
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
    return {low, {high.x, low.y}, high, {low.x, high.y}};
}

} // namespace

Layout IpcAssembly::assemble(IpcStep &chosen) {
    layout_.layers = layers_.build(chosen.stackup);
    holes_.emplace(context_, names_, layout_);
    parts_.emplace(context_, layers_, layout_);
    isPanel_ = isPanel(chosen);
    expand(chosen, IpcPlacement(), 0);
    addOutline();
    return std::move(layout_);
}

void IpcAssembly::expand(IpcStep &step, const IpcPlacement &placement, int depth) {
    if (++numSteps_ > maxSteps) return tellTooMany();
    place(step, placement);
    if (!isPanel(step)) {
        if (numPlaced_[&step] == 1) tellRepeats(step); // not for each place of it
        return;
    }
    if (depth >= maxDepth)
        return context_.log.warn("panels in panels are too deep: those further in are left out");
    for (const IpcRepeat &one : step.repeats)
        repeat(one, placement, depth);
}

// Often a panel with a rail of its own, and nothing of a board on it: its boards are to be asked for.
void IpcAssembly::tellRepeats(const IpcStep &step) const {
    constexpr std::size_t most = 5;
    std::set<std::string> names;
    for (const IpcRepeat &repeat : step.repeats)
        if (names.size() <= most) names.insert(repeat.step);
    std::string text;
    std::size_t count = 0;
    for (const std::string &name : names)
        text += count++ == most ? ", ..." : (count > 1 ? ", " : "") + name;
    if (!names.empty())
        context_.log.warn("step " + step.name +
                          " has a profile and repeats others, which are left out (to be read "
                          "with --step): " +
                          text);
}

void IpcAssembly::tellTooMany() const {
    context_.log.warn("more than " + std::to_string(maxSteps) + " steps on a panel: the rest is left out");
}

void IpcAssembly::repeat(const IpcRepeat &repeat, const IpcPlacement &placement, int depth) {
    if (++numSteps_ > maxSteps) return tellTooMany();
    const auto found = steps_.find(repeat.step);
    if (found == steps_.end()) return context_.log.warn("step " + repeat.step + " of a panel is missing");
    if (repeat.isMirrored) return context_.log.warn("a step that is mirrored on a panel is left out");
    for (int row = 0; row < repeat.ny; ++row)
        for (int column = 0; column < repeat.nx; ++column) {
            if (numSteps_ > maxSteps || context_.isFull) return;
            const _mFPOINT at = {repeat.at.x + column * repeat.dx, repeat.at.y + row * repeat.dy};
            expand(found->second, within(placement, at, repeat.rotation), depth + 1);
        }
}

// What a step costs that stands on a panel many times counts as points do. Each component and hole becomes
// records of its own here and further on.
bool IpcAssembly::takeStep(const IpcStep &step) {
    const std::size_t records = step.components.size() + holes_->countOf(step);
    return context_.takePoints(layout_.layers.size() + step.profile.size() + step.packages.size() +
                               pointsPerRecord * records);
}

void IpcAssembly::place(IpcStep &step, const IpcPlacement &placement) {
    if (isPanel_ && !takeStep(step)) return;
    settle(step);
    const int number = ++numPlaced_[&step];
    addCopper(step, placement);
    holes_->add(step, placement);
    parts_->add(step, placement, number > 1 ? '_' + std::to_string(number) : std::string());
    if (!step.hasProfile) return;
    std::vector<Ring> profile;
    for (const Ring &ring : step.profile) {
        Areas moved = placement.apply(Areas{{ring, {}}});
        if (!context_.geometry.isUsable(moved) || (isPanel_ && !context_.takePoints(ring.size()))) return;
        profile.push_back(std::move(moved[0].outer));
    }
    profiles_.push_back(std::move(profile));
}

void IpcAssembly::settle(IpcStep &step) {
    if (!settled_.insert(&step).second) return;
    for (const layerData &layer : layout_.layers) {
        const IpcLayer *const known = layers_.find(layer.name);
        const auto copper = step.copper.find(layer.name);
        if (!known || layer.layerType != layerData::Conductor) continue;
        if (copper != step.copper.end())
            settleCopper(copper->second, layer.name, known->isNegative, step, context_);
    }
    for (const auto &[name, copper] : step.copper)
        if (!layers_.find(name))
            context_.log.warn("features on layer " + name + " are left out: it is not declared");
}

// A board's copper is handed on; that of a panel's boards is needed again.
void IpcAssembly::addCopper(IpcStep &step, const IpcPlacement &placement) {
    for (layerData &layer : layout_.layers) {
        const auto copper = step.copper.find(layer.name);
        if (copper == step.copper.end() || layer.layerType != layerData::Conductor) continue;
        if (!isPanel_) layer.elements.reserve(copper->second.drawn.size());
        for (IpcDrawn &drawn : copper->second.drawn) {
            const std::string &net = names_.get(drawn.net);
            const std::size_t numElements = 1 + drawn.area.holes.size();
            if (!context_.takePoints(IpcContext::costOf(net) * numElements)) return;
            if (!isPanel_) {
                addElements(layer, std::move(drawn.area), net);
                continue;
            }
            if (!context_.takeCopies(countPoints(drawn.area), numElements, IpcGeometry::Copy::OfPanel))
                return;
            Areas moved = placement.apply(Areas{drawn.area});
            if (context_.geometry.isUsable(moved)) addElements(layer, std::move(moved[0]), net);
        }
        if (!isPanel_) std::vector<IpcDrawn>().swap(copper->second.drawn);
    }
}

void IpcAssembly::addElements(layerData &layer, Area &&area, const std::string &net) const {
    layer.elements.push_back(elementOf(std::move(area.outer), geomElem::Solid));
    layer.elements.back().netName = net;
    for (Ring &hole : area.holes) {
        layer.elements.push_back(elementOf(std::move(hole), geomElem::Hole));
        layer.elements.back().netName = net;
    }
}

void IpcAssembly::addOutline() {
    if (profiles_.empty()) return context_.log.warn("the step has no profile: the board has no edge");
    outlineData outline;
    if (profiles_.size() > 1) {
        context_.log.warn("the panel has no profile: its edge is the rectangle around its steps");
        outline.elements.push_back(elementOf(rectangleAround(profiles_), geomElem::Solid));
    }
    for (std::vector<Ring> &profile : profiles_)
        for (std::size_t i = profiles_.size() > 1 ? 1 : 0; i < profile.size(); ++i)
            outline.elements.push_back(elementOf(std::move(profile[i]), geomElem::Solid));
    layout_.outlines.push_back(std::move(outline));
}

} // namespace QvDbWrap
