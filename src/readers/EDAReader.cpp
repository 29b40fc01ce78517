// What a reader answers that has nothing special to say.
#include "readers/EDAReader.h"

namespace EDA {

EDAReader::~EDAReader() = default;

bool EDAReader::readLayerDetails() { return true; }

bool EDAReader::canBeComponent() { return false; }

void EDAReader::updateGeometryConversionOptions(GeometryConversionOptions & /*options*/) {}

} // namespace EDA
