// Puts the steps of an IPC-2581 document together into a layout.
#pragma once

#include "host/QvDbWrap/IpcDesign.h"
#include "host/QvDbWrap/IpcHoles.h"
#include "host/QvDbWrap/IpcParts.h"
#include "host/QvDbWrap/IpcStackup.h"

#include <optional>
#include <set>
#include <string>
#include <unordered_map>

namespace QvDbWrap {

using IpcSteps = std::unordered_map<std::string, IpcStep>;

// A step without a profile that repeats others is a panel: they stand on it at all their places. A step with
// a profile is a board, whatever it repeats.
class IpcAssembly {
public:
    static constexpr int maxDepth = 16;              // panels in panels
    static constexpr std::size_t maxSteps = 1000000; // that stand on a panel
    // What a hole or component costs on a panel, in points.
    static constexpr std::size_t pointsPerRecord = 60;

    IpcAssembly(IpcContext &context, const IpcLayers &layers, const IpcNames &names, IpcSteps &steps)
        : context_(context), layers_(layers), names_(names), steps_(steps) {}

    Layout assemble(IpcStep &chosen);

    static bool isPanel(const IpcStep &step) { return !step.hasProfile && !step.repeats.empty(); }

private:
    void expand(IpcStep &step, const IpcPlacement &placement, int depth);
    void repeat(const IpcRepeat &repeat, const IpcPlacement &placement, int depth);
    bool takeStep(const IpcStep &step);
    void tellRepeats(const IpcStep &step) const;
    void tellTooMany() const;
    void place(IpcStep &step, const IpcPlacement &placement);
    void settle(IpcStep &step);
    void addCopper(IpcStep &step, const IpcPlacement &placement);
    void addElements(layerData &layer, Area &&area, const std::string &net) const;
    void addOutline();

    IpcContext &context_;
    const IpcLayers &layers_;
    const IpcNames &names_;
    IpcSteps &steps_;
    Layout layout_;
    std::optional<IpcHoles> holes_;
    std::optional<IpcParts> parts_;
    std::set<const IpcStep *> settled_;
    std::unordered_map<const IpcStep *, int> numPlaced_;
    std::vector<std::vector<Ring>> profiles_;
    bool isPanel_ = false;
    std::size_t numSteps_ = 0;
};

} // namespace QvDbWrap
