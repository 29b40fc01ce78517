// A bond wire.
#pragma once

#include "host/Geometry/Vec3T.h"

#include <string>
#include <vector>

namespace EDA {

// A wire along a polyline in space. Lengths are in the board's units.
class EDAWirebond {
public:
    EDAWirebond();
    EDAWirebond(EDAWirebond const &);
    EDAWirebond(EDAWirebond &&) noexcept;
    EDAWirebond &operator=(EDAWirebond const &);
    EDAWirebond &operator=(EDAWirebond &&) noexcept;
    virtual ~EDAWirebond();

    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }

    void setModelName(std::string const &name) { modelName_ = name; }
    std::string const &getModelName() const { return modelName_; }

    void setGroupName(std::string const &name) { groupName_ = name; }
    std::string const &getGroupName() const { return groupName_; }

    void setDiameter(double diameter) { diameter_ = diameter; }
    double getDiameter() const { return diameter_; }

    void setMaterial(std::string const &material) { material_ = material; }
    std::string const &getMaterial() const { return material_; }

    void addPoint(Geometry::Vec3T<double> const &point) { points_.push_back(point); }
    std::vector<Geometry::Vec3T<double>> const &getPoints() const { return points_; }

    // Names of the layers where the wire starts and lands.
    void setStartLayer(std::string const &layer) { startLayer_ = layer; }
    std::string const &getStartLayer() const { return startLayer_; }
    void setEndLayer(std::string const &layer) { endLayer_ = layer; }
    std::string const &getEndLayer() const { return endLayer_; }

private:
    std::string name_;
    std::string modelName_;
    std::string groupName_;
    double diameter_ = 0.0;
    std::string material_;
    std::vector<Geometry::Vec3T<double>> points_;
    std::string startLayer_;
    std::string endLayer_;
};

} // namespace EDA
