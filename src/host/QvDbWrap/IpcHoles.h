// The holes of steps as models and vias.
#pragma once

#include "host/QvDbWrap/IpcDesign.h"
#include "host/QvDbWrap/IpcStackup.h"

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace QvDbWrap {

// Collects vias into a layout whose layers stand. Equal holes share a model; a hole that is there twice is
// taken once.
class IpcHoles {
public:
    IpcHoles(IpcContext &context, const IpcNames &names, Layout &layout);

    void add(const IpcStep &step, const IpcPlacement &placement);

private:
    class Fills;

    std::vector<IpcHole> holesOf(const IpcStep &step) const;
    bool complete(const IpcStep &step, IpcHole &hole) const;
    void addVia(const IpcHole &hole, const IpcPlacement &placement);
    const std::string &modelOf(const IpcHole &hole);
    void setSpan(const IpcHole &hole, viaData &via) const;

    IpcContext &context_;
    const IpcNames &names_;
    Layout &layout_;
    std::unordered_map<std::string, std::size_t> layerIndices_;
    std::unordered_map<std::string, std::string> models_;
    std::unordered_set<std::string> places_;
};

} // namespace QvDbWrap
