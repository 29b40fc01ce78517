// The packages and components of steps as models and placements.
#pragma once

#include "host/QvDbWrap/IpcDesign.h"
#include "host/QvDbWrap/IpcStackup.h"

#include <set>
#include <string>
#include <unordered_map>

namespace QvDbWrap {

// Collects components into a layout whose layers stand. A model is a package with a part: it bears the
// package's name, and the part's behind it where a package holds several parts.
class IpcParts {
public:
    IpcParts(IpcContext &context, const IpcLayers &layers, Layout &layout);

    // `suffix` tells the designators of a step that stands on the board more than once apart.
    void add(const IpcStep &step, const IpcPlacement &placement, const std::string &suffix);

private:
    struct Packages {
        std::unordered_map<std::string, const IpcPackage *> byName;
        std::unordered_map<std::string, std::set<std::string>> parts;
    };

    Packages packagesOf(const IpcStep &step) const;
    const std::string &modelOf(const IpcStep &step, const Packages &packages, const IpcComponent &component);
    void addModel(const IpcPackage &package, std::string &name, const std::string &part, double height);
    void addUnused(const IpcStep &step);
    bool isOnBottom(const IpcComponent &component) const;
    std::string startLayer(bool isBottom) const;
    void place(const IpcComponent &component, const IpcPlacement &placement, componentData &data) const;

    IpcContext &context_;
    const IpcLayers &layers_;
    Layout &layout_;
    std::string top_;
    std::string bottom_;
    std::string startLayers_[2];
    std::unordered_map<const IpcStep *, Packages> packages_;
    std::unordered_map<std::string, std::string> models_;
    std::set<std::string> names_;
    std::unordered_map<std::string, int> nextNumbers_; // of models with one name
};

} // namespace QvDbWrap
