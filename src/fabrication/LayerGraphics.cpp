// Defaults of those who take a layer's objects.
#include "fabrication/LayerGraphics.h"

namespace EDA::Fabrication {

LayerSink::~LayerSink() = default;

void LayerSink::setNet(std::string_view, std::string_view) {}

bool LayerSink::isFull() const { return false; }

} // namespace EDA::Fabrication
