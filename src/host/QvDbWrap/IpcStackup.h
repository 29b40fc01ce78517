// The layers of an IPC-2581 document, its materials, and its stack-ups.
#pragma once

#include "host/QvDbWrap/IpcDesign.h"
#include "host/QvDbWrap/Records.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace QvDbWrap {

enum class IpcLayerKind { Unknown, Conductor, Dielectric, Drill, Fill, Other };

enum class IpcSide { Top, Inside, Bottom };

struct IpcLayer {
    std::string name;
    std::string function;
    IpcLayerKind kind = IpcLayerKind::Unknown;
    IpcSide side = IpcSide::Inside;
    bool isNegative = false; // its features are taken from a full plane
    std::string fromLayer;   // of a drill layer, what it goes through; empty: all
    std::string toLayer;
    std::vector<std::string> specs;
};

// What a Spec, or several, say of a layer or a hole.
struct IpcSpec {
    std::string material;
    std::string fillMaterial;
    double platingThickness = 0;
};

// Of several texts the first that is not empty counts.
void takeFirst(IpcSpec &spec, const IpcSpec &other);

class IpcLayers {
public:
    explicit IpcLayers(IpcContext &context) : context_(context) {}

    // The open element is a Spec, a Layer, a Stackup.
    void readSpec();
    void readLayer();
    void readStackup();

    const IpcLayer *find(const std::string &name) const;

    // What these say together.
    IpcSpec specOf(const std::vector<std::string> &ids) const;

    // The layers of the board from the top down, with heights. Takes the stack-up of this name; without it
    // the one with the most conductors. Where none can be used, heights are taken for granted. There are
    // never fewer than three: layers of no type and no height come before what would be less.
    std::vector<layerData> build(const std::string &stackup) const;

private:
    struct Entry {
        std::string ref; // a layer or a group
        double thickness = 0;
        double sequence = 0;
        bool hasSequence = false;
        std::string material;
    };
    struct Group {
        std::string name;
        std::vector<Entry> entries;
    };
    struct Stackup {
        std::string name;
        double thickness = 0; // of all; 0 where it is not given
        std::vector<Group> groups;
    };
    class Flattened;

    void readGroup(Stackup &stackup);
    Entry readEntry();
    void readSpecPart(IpcSpec &spec);
    double readThickness() const;
    const Stackup *choose(const std::string &name) const;
    int numConductors(const Stackup &stackup) const;
    std::vector<layerData> layersOf(const Stackup &stackup) const;
    bool addLayer(const Entry &entry, std::vector<layerData> &layers) const;
    void shareOut(const Stackup &stackup, std::vector<layerData> &layers) const;
    void addSpacers(std::vector<layerData> &layers) const;
    std::vector<layerData> assumedLayers() const;
    layerData describe(const IpcLayer &layer) const;
    void tellLeftOut(const std::vector<layerData> &layers) const;

    IpcContext &context_;
    std::vector<IpcLayer> layers_;
    std::unordered_map<std::string, std::size_t> indices_;
    std::unordered_map<std::string, IpcSpec> specs_;
    std::vector<Stackup> stackups_;
};

// The first or the last conductor; empty without any.
std::string outerConductor(const std::vector<layerData> &layers, bool isBottom);

} // namespace QvDbWrap
