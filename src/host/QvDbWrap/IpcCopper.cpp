// Polarity of copper: what negative shapes leave of those drawn before them.
#include "host/QvDbWrap/IpcCopper.h"

#include "host/QvDbWrap/IpcCurves.h"
#include "host/QvDbWrap/IpcStepReader.h"
#include "host/QvDbWrap/IpcSubtract.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <algorithm>
#include <utility>

namespace QvDbWrap {

namespace {

// Some documents name a shape of a dictionary where a stack is meant.
const Areas *findShape(const IpcPendingPad &pad, const std::string &layerName, const IpcStep &step,
                       IpcContext &context) {
    if (step.padstacks.count(pad.padstack) == 0) {
        const Areas &shape = context.geometry.findShape(pad.padstack);
        if (!shape.empty()) return &shape;
        context.log.warn("padstack " + pad.padstack + " is missing");
        return nullptr;
    }
    const Areas *const shape = findPad(step, pad.padstack, layerName);
    if (!shape) context.log.warn("a pad has no shape of its own, and its stack none on its layer");
    return shape;
}

void addPending(IpcCopper &copper, const std::string &layerName, const IpcStep &step, IpcContext &context) {
    if (copper.pending.empty()) return;
    for (const IpcPendingPad &pad : copper.pending) {
        const Areas *const shape = findShape(pad, layerName, step, context);
        if (!shape) continue;
        if (!context.takeCopies(numPoints(*shape), shape->size(), IpcGeometry::Copy::OfElement)) break;
        for (Area &area : pad.placement.apply(*shape))
            if (context.geometry.isUsable({area}))
                copper.drawn.push_back({std::move(area), pad.net, pad.order, pad.isNegative});
    }
    copper.pending.clear();
    std::stable_sort(copper.drawn.begin(), copper.drawn.end(),
                     [](const IpcDrawn &a, const IpcDrawn &b) { return a.order < b.order; });
}

void turnPolarity(IpcCopper &copper, const IpcStep &step) {
    for (IpcDrawn &drawn : copper.drawn)
        drawn.isNegative = !drawn.isNegative;
    if (step.profile.empty()) return;
    IpcDrawn plane;
    plane.area.outer = step.profile[0];
    plane.area.holes.assign(step.profile.begin() + 1, step.profile.end());
    copper.drawn.insert(copper.drawn.begin(), std::move(plane));
}

// What is negative is not needed once it is among the cutters.
void moveCutters(std::vector<IpcDrawn> &drawn, IpcCutters &cutters) {
    for (std::uint32_t i = 0; i < drawn.size(); ++i) {
        if (!drawn[i].isNegative) continue;
        cutters.add(drawn[i].area, i);
        drawn[i].area = Area();
    }
}

// Cutting makes points of its own where edges cross.
bool takeGrowth(const Areas &rest, std::size_t before, IpcContext &context) {
    const std::size_t after = numPoints(rest);
    return after <= before || context.takePoints(after - before);
}

void cut(std::vector<IpcDrawn> &drawn, IpcContext &context) {
    const auto isNegative = [](const IpcDrawn &one) { return one.isNegative; };
    if (std::none_of(drawn.begin(), drawn.end(), isNegative)) return;
    const std::size_t failuresBefore = context.cutting.failures;
    IpcCutters cutters(&context.cutting);
    moveCutters(drawn, cutters);
    std::vector<IpcDrawn> left;
    for (std::uint32_t i = 0; i < drawn.size(); ++i) {
        if (drawn[i].isNegative) continue;
        const std::size_t before = numPoints(drawn[i].area);
        Areas rest = cutters.cut(std::move(drawn[i].area), i);
        if (!takeGrowth(rest, before, context)) break;
        for (Area &area : rest)
            left.push_back({std::move(area), drawn[i].net, drawn[i].order, false});
    }
    if (const std::size_t count = context.cutting.failures - failuresBefore; count > 0)
        context.log.warn("shapes that cross too often are not cut, or not cut out", count);
    if (context.cutting.isSpent())
        context.log.warn("a layer has too many shapes of negative polarity: not all of them are cut out");
    drawn = std::move(left);
}

} // namespace

void settleCopper(IpcCopper &copper, const std::string &layerName, bool isNegativeLayer, const IpcStep &step,
                  IpcContext &context) {
    addPending(copper, layerName, step, context);
    if (isNegativeLayer) turnPolarity(copper, step);
    cut(copper.drawn, context);
}

} // namespace QvDbWrap
