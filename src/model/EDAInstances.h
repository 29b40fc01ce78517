// The further locations of a via or bump definition.
#pragma once

#include "host/Geometry/Bound2D.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDA {

// One further location of a definition, in board units.
struct EDAInstance {
    std::string name;
    double x = 0.0;
    double y = 0.0;
};

// Instance records in the order added; equal ones are kept.
class EDAInstances {
public:
    void add(std::string const &name, double x, double y) { records_.push_back({name, x, y}); }
    std::size_t size() const { return records_.size(); }

    // A bad index gives an empty text and 0.0.
    std::string getName(int index) const { return holds(index) ? at(index).name : std::string(); }
    double getX(int index) const { return holds(index) ? at(index).x : 0.0; }
    double getY(int index) const { return holds(index) ? at(index).y : 0.0; }

    // Unites the square of this width around each location.
    void unite(double width, Geometry::Bound2D &bound) const;

private:
    bool holds(int index) const { return index >= 0 && static_cast<std::size_t>(index) < records_.size(); }
    EDAInstance const &at(int index) const { return records_[static_cast<std::size_t>(index)]; }

    std::vector<EDAInstance> records_;
};

} // namespace EDA
