// The holes of steps as models and vias.
#pragma once

#include "host/QvDbWrap/IpcDesign.h"
#include "host/QvDbWrap/IpcStackup.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace QvDbWrap {

// Collects vias into a layout whose layers stand. Equal holes share a model; a hole that is there twice is
// taken once.
class IpcHoles {
public:
    IpcHoles(IpcContext &context, const IpcNames &names, Layout &layout);

    // How many vias each place of the step adds at most.
    std::size_t countOf(const IpcStep &step);

    void add(const IpcStep &step, const IpcPlacement &placement);

private:
    class Places;
    struct StackHole {
        _mFPOINT at;
        double diameter;
        IpcPlating plating;
    };

    // A hole of a step with all that its vias have in common.
    struct Ready {
        std::string name;
        _mFPOINT at;
        bool isSlot;
        std::size_t model; // indices
        std::size_t from;
        std::size_t to;
    };
    // Place, angle, model and span of a via.
    using Key = std::array<std::int64_t, 6>;
    struct HashOfKey {
        std::size_t operator()(const Key &key) const;
    };

    const std::vector<Ready> &holesOf(const IpcStep &step);
    std::vector<IpcHole> drilled(const IpcStep &step) const;
    std::optional<StackHole> stackHole(const IpcStep &step, std::uint32_t padstack) const;
    bool complete(const IpcStep &step, IpcHole &hole) const;
    void addVia(const Ready &hole, const IpcPlacement &placement);
    std::size_t modelOf(const IpcHole &hole);
    std::pair<std::size_t, std::size_t> spanOf(const IpcHole &hole) const;

    IpcContext &context_;
    const IpcNames &names_;
    Layout &layout_;
    std::string outer_[2]; // conductors
    std::unordered_map<std::string, std::size_t> layerIndices_;
    std::unordered_map<const IpcStep *, std::vector<Ready>> holes_;
    std::unordered_map<std::string, std::size_t> models_; // indices
    std::unordered_set<Key, HashOfKey> places_;
};

} // namespace QvDbWrap
