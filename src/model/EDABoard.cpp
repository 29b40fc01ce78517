// Boards: copying, layers, and what needs more than one line.
#include "model/EDABoard.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace EDA {

EDABoard::EDABoard() = default;
EDABoard::EDABoard(EDABoard const &) = default;
EDABoard::EDABoard(EDABoard &&) noexcept = default;
EDABoard &EDABoard::operator=(EDABoard const &) = default;
EDABoard &EDABoard::operator=(EDABoard &&) noexcept = default;
EDABoard::~EDABoard() = default;

void EDABoard::getSourceFilename(std::string &board, std::string &library) const {
    board = sourceBoardFile_;
    library = sourceLibraryFile_;
}

void EDABoard::rotateInternalOutline(int index, double angle, double x, double y) {
    outline_.rotateInternalOutline(index, angle, x, y);
}

void EDABoard::addLayer(EDABoardLayer &&layer) { layers_.push_back(std::move(layer)); }

void EDABoard::checkLayer(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= layers_.size())
        throw std::out_of_range("Index out of range in EDABoard::getNthLayer");
}

EDABoardLayer &EDABoard::getNthLayer(int index) {
    checkLayer(index);
    return layers_[static_cast<std::size_t>(index)];
}

EDABoardLayer const &EDABoard::getNthLayer(int index) const {
    checkLayer(index);
    return layers_[static_cast<std::size_t>(index)];
}

EDABoardLayer const *EDABoard::findLayer(std::string const &name) const {
    auto const found = std::find_if(layers_.begin(), layers_.end(),
                                    [&](EDABoardLayer const &layer) { return layer.getName() == name; });
    return found == layers_.end() ? nullptr : &*found;
}

std::optional<EDABoardLayer> EDABoard::getLayer(std::string const &name) const {
    auto const *layer = findLayer(name);
    return layer ? std::optional<EDABoardLayer>(*layer) : std::nullopt;
}

std::size_t EDABoard::numLayersAndTraces() const {
    auto count = static_cast<std::uint32_t>(layers_.size());
    for (auto const &layer : layers_) {
        count += static_cast<std::uint32_t>(layer.numTraces());
        std::for_each(layer.beginNets(), layer.endNets(),
                      [&](EDANet const &net) { count += static_cast<std::uint32_t>(net.numTraces()); });
    }
    return count;
}

} // namespace EDA
