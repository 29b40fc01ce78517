// Reads a step of an IPC-2581 document: its profile, copper, holes, packages and components.
#pragma once

#include "host/QvDbWrap/IpcDesign.h"
#include "host/QvDbWrap/IpcStackup.h"

#include <string>
#include <vector>

namespace QvDbWrap {

class IpcStepReader {
public:
    IpcStepReader(IpcContext &context, const IpcLayers &layers, IpcNames &names, bool useCourtyards)
        : context_(context), xml_(context.xml), layers_(layers), names_(names),
          useCourtyards_(useCourtyards) {}

    // The open element is a Step.
    IpcStep read();

private:
    // A set of features: what is common to them.
    struct Set {
        std::string layerName;
        const IpcLayer *layer = nullptr; // null: not declared
        IpcCopper *copper = nullptr;     // null: nothing is drawn here
        std::uint32_t net = 0;
        bool isNegative = false;
        std::string padstack;
        IpcSpec layerSpec;
        IpcSpec spec; // of the set alone
        bool readsHoles = false;
    };

    // Shapes and the places where they stand.
    struct Placed {
        IpcPlacement xform;
        std::vector<_mFPOINT> places;
        Areas areas;
        bool hasShape = false;
        IpcSpec spec;

        std::vector<IpcPlacement> placements() const;
    };

    void readChild();
    void readProfile();
    void readRepeat();

    // Of IpcFeatures.cpp.
    void readLayerFeature();
    void readSet(const Set &layer);
    void readFeature(Set &set);
    void readPad(const Set &set);
    Placed readPlaced();
    bool readPlacedPart(Placed &placed);
    void takeSpec(IpcSpec &spec);
    Areas apply(const IpcPlacement &placement, const Areas &areas, bool isCopy = false);
    void draw(const Set &set, const Placed &placed);
    void draw(const Set &set, Areas areas);
    void drawPad(const Set &set, const std::string &padstack, const IpcPlacement &placement);
    void addFills(const Set &set, const Placed &placed);
    void addFill(const _mFPOINT &at, const std::string &material);

    // Of IpcDrills.cpp.
    void readPadstackDef();
    void readPadstackPad(IpcPadstack &padstack);
    void readPadstackInstance();
    void readLayerPad(std::uint32_t net);
    void readHole(const Set &set);
    void readEnclosed(Placed &placed);
    void readSlot(const Set &set);
    void addHole(IpcHole hole, const Set &set);

    // Of IpcPackages.cpp.
    void readPackage();
    Ring readBody();
    void readComponent();

    IpcContext &context_;
    IpcXml &xml_;
    const IpcLayers &layers_;
    IpcNames &names_;
    bool useCourtyards_;
    IpcStep step_;
};

// The shape that a stack has on a layer; null without one.
const Areas *findPad(const IpcStep &step, const std::string &padstack, const std::string &layer);

// A place with all that a location says.
inline IpcPlacement placedAt(IpcPlacement placement, const _mFPOINT &at) {
    placement.x = at.x;
    placement.y = at.y;
    return placement;
}

} // namespace QvDbWrap
