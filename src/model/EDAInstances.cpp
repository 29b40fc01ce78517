// Instance records: their bound.
#include "model/EDAInstances.h"

namespace EDA {

void EDAInstances::unite(double width, Geometry::Bound2D &bound) const {
    double const half = width / 2.0;
    for (auto const &record : records_) {
        bound.unite(record.x - half, record.y - half);
        bound.unite(record.x + half, record.y + half);
    }
}

} // namespace EDA
