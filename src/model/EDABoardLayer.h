// One layer of a board's stack.
#pragma once

#include "model/EDANet.h"
#include "model/EDAOutline.h"
#include "model/EDATrace.h"
#include "model/NetList.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace EDA {

// A layer: its place in the stack and materials, loose traces in the order added, and nets
// sorted by name. Lengths are in the board's units; the uniform conductivity is the plain
// number that the source gives.
class EDABoardLayer {
public:
    using TraceIterator = std::vector<EDATrace>::const_iterator;
    using NetIterator = NetList::Iterator;

    explicit EDABoardLayer(bool conductor = true);
    EDABoardLayer(EDABoardLayer const &);
    EDABoardLayer(EDABoardLayer &&) noexcept;
    EDABoardLayer &operator=(EDABoardLayer const &);
    EDABoardLayer &operator=(EDABoardLayer &&) noexcept;
    virtual ~EDABoardLayer();

    bool isConductor() const { return conductor_; }

    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }

    void setThickness(double thickness) { thickness_ = thickness; }
    double getThickness() const { return thickness_; }

    // Distance from the board's top, as the importer reads it: that of the layer's lower face. Not greater
    // than -1000.0: none was given.
    void setTopOffset(double offset) { topOffset_ = offset; }
    double getTopOffset() const { return topOffset_; }

    // Path of an image of the layer on disk.
    void setImageFilename(std::string const &filename) { imageFilename_ = filename; }
    std::string const &getImageFilename() const { return imageFilename_; }

    // The colour that marks conductor in the image.
    void setImageConductorColour(int red, int green, int blue);
    void getImageConductorColour(int &red, int &green, int &blue) const;

    void setUniformConductivity(double conductivity) { uniformConductivity_ = conductivity; }
    double getUniformConductivity() const { return uniformConductivity_; }

    void setConductorMaterial(std::string const &material) { conductorMaterial_ = material; }
    std::string const &getConductorMaterial() const { return conductorMaterial_; }

    void setDielectricMaterial(std::string const &material) { dielectricMaterial_ = material; }
    std::string const &getDielectricMaterial() const { return dielectricMaterial_; }

    // Appends a copy to the loose traces and returns a pointer to it, valid until the next
    // addition. The argument is not changed.
    EDATrace *addTrace(EDATrace &trace);
    EDATrace *addTrace(EDATrace &&trace);
    // Makes room for so many loose traces.
    void reserveTraces(std::size_t count) { traces_.reserve(count); }
    // Takes all loose traces out, in their order.
    std::vector<EDATrace> takeTraces() { return std::exchange(traces_, {}); }
    std::size_t numTraces() const { return traces_.size(); }
    TraceIterator beginTraces() const { return traces_.begin(); }
    TraceIterator endTraces() const { return traces_.end(); }

    // Appends a copy of `hole`, whose hole flag stays as it is, to the internal outlines of the
    // last loose trace that is not a route. Without such a trace, nothing happens.
    void addHoleToLastTrace(EDAOutline const &hole);

    // Adds a copy and sorts the nets by name, without regard to case. Makes indices, pointers
    // and iterators of nets invalid.
    void addNet(EDANet const &net) { nets_.add(net); }
    void addNet(EDANet &&net);
    std::size_t numNets() const { return nets_.size(); }
    // The net at a place of the order, counted from 0. A bad index throws `std::out_of_range`.
    EDANet &getNthNet(int index) { return nets_.at(index, "EDABoardLayer::getNthNet"); }
    EDANet const &getNthNet(int index) const { return nets_.at(index, "EDABoardLayer::getNthNet"); }
    // The first net with exactly this name (case counts), or null.
    EDANet *findNet(std::string const &name) { return nets_.find(name); }
    NetIterator beginNets() const { return nets_.begin(); }
    NetIterator endNets() const { return nets_.end(); }

private:
    bool conductor_;
    std::string name_;
    double thickness_ = 0.0;
    double topOffset_ = -1001.0;
    std::string imageFilename_;
    int imageRed_ = 0;
    int imageGreen_ = 0;
    int imageBlue_ = 0;
    double uniformConductivity_ = 0.0;
    std::string conductorMaterial_;
    std::string dielectricMaterial_;
    std::vector<EDATrace> traces_;
    NetList nets_;
};

} // namespace EDA
