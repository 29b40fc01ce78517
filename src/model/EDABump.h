// A solder bump: one definition with all its locations.
#pragma once

#include "host/Geometry/Bound2D.h"
#include "model/EDAInstances.h"
#include "model/KeyWatch.h"

#include <cstddef>
#include <string>

namespace EDA {

// A bump at its own centre and at each further instance. Lengths are in the board's units.
class EDABump {
public:
    // Sizes that differ by less are the same for `isInstanceOf`.
    static constexpr double sizeTolerance = 1e-12;

    EDABump();
    EDABump(EDABump const &);
    EDABump(EDABump &&) noexcept;
    EDABump &operator=(EDABump const &);
    EDABump &operator=(EDABump &&) noexcept;
    virtual ~EDABump();

    // Stores the name and, when the group is empty, takes the group from it: in
    // "...!!GROUP_-..." it is what stands between "!!" and the next "-", without its last
    // character. That character is the separator of the sources that name bumps so.
    void setName(std::string const &name);
    std::string const &getName() const { return name_; }

    // These four store only a value greater than 0, so that the default of 0.001 survives a
    // 0 from a file.
    void setMaxDiameter(double diameter) { setSize(maxDiameter_, diameter); }
    void setTopDiameter(double diameter) { setSize(topDiameter_, diameter); }
    void setBottomDiameter(double diameter) { setSize(bottomDiameter_, diameter); }
    void setHeight(double height) { setSize(height_, height); }
    double getMaxDiameter() const { return maxDiameter_; }
    double getTopDiameter() const { return topDiameter_; }
    double getBottomDiameter() const { return bottomDiameter_; }
    double getHeight() const { return height_; }

    void setVerticalOffset(double offset) { verticalOffset_ = offset; }
    double getVerticalOffset() const { return verticalOffset_; }

    // The definition's own location.
    void setCentre(double x, double y);
    double getXCentre() const { return xCentre_; }
    double getYCentre() const { return yCentre_; }

    void setGroup(std::string const &group);
    std::string const &getGroup() const { return group_; }

    // Name of the layer that the bump stands on.
    void setLayer(std::string const &layer);
    std::string const &getLayer() const { return layer_; }

    // Appends a further location; equal ones are kept.
    void addInstance(std::string const &name, double x, double y) { instances_.add(name, x, y); }
    // Number of further locations; the definition's own does not count.
    std::size_t numInstances() const { return instances_.size(); }
    // A bad index gives an empty text and 0.0.
    std::string getInstanceName(int index) const { return instances_.getName(index); }
    double getInstanceXCentre(int index) const { return instances_.getX(index); }
    double getInstanceYCentre(int index) const { return instances_.getY(index); }

    // An empty text is ignored.
    void setMaterial(std::string const &material);
    std::string const &getMaterial() const { return material_; }

    // 0 marks a bump without geometry.
    void setBumpType(int type) { bumpType_ = type; }
    int getBumpType() const { return bumpType_; }

    // True when the four sizes are within `sizeTolerance` and material, group and layer equal
    // with case. Name, location, vertical offset and bump type don't count.
    bool isInstanceOf(EDABump const &definition) const;

    // Sets the bound to the squares of the max diameter around all locations; what it held
    // before is lost.
    void getBound(Geometry::Bound2D &bound) const;

    // For look-up tables: from now on, count changes of what `isInstanceOf` compares.
    void watchKey() const { keyWatch_.watch(); }

private:
    void setSize(double &size, double value);

    std::string name_;
    double maxDiameter_ = 0.001;
    double topDiameter_ = 0.001;
    double bottomDiameter_ = 0.001;
    double height_ = 0.001;
    double verticalOffset_ = 0.0;
    double xCentre_ = 0.0;
    double yCentre_ = 0.0;
    std::string group_;
    std::string layer_;
    EDAInstances instances_;
    std::string material_ = "Solder";
    int bumpType_ = 0;
    KeyWatch keyWatch_;
};

} // namespace EDA
