// Layers: copying, image colour, traces and their holes.
#include "model/EDABoardLayer.h"

#include <algorithm>
#include <utility>

namespace EDA {

EDABoardLayer::EDABoardLayer(bool conductor) : conductor_(conductor) {}
EDABoardLayer::EDABoardLayer(EDABoardLayer const &) = default;
EDABoardLayer::EDABoardLayer(EDABoardLayer &&) noexcept = default;
EDABoardLayer &EDABoardLayer::operator=(EDABoardLayer const &) = default;
EDABoardLayer &EDABoardLayer::operator=(EDABoardLayer &&) noexcept = default;
EDABoardLayer::~EDABoardLayer() = default;

void EDABoardLayer::setImageConductorColour(int red, int green, int blue) {
    imageRed_ = red;
    imageGreen_ = green;
    imageBlue_ = blue;
}

void EDABoardLayer::getImageConductorColour(int &red, int &green, int &blue) const {
    red = imageRed_;
    green = imageGreen_;
    blue = imageBlue_;
}

EDATrace *EDABoardLayer::addTrace(EDATrace &trace) {
    traces_.push_back(trace);
    return &traces_.back();
}

EDATrace *EDABoardLayer::addTrace(EDATrace &&trace) {
    traces_.push_back(std::move(trace));
    return &traces_.back();
}

void EDABoardLayer::addHoleToLastTrace(EDAOutline const &hole) {
    auto const shape = std::find_if(traces_.rbegin(), traces_.rend(),
                                    [](EDATrace const &trace) { return !trace.isDefinedAsRoute(); });
    if (shape != traces_.rend()) shape->getOutline().addInternalOutline(hole);
}

void EDABoardLayer::addNet(EDANet &&net) { nets_.add(std::move(net)); }

} // namespace EDA
