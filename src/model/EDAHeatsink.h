// The heatsink on a placed component.
#pragma once

#include <string>

namespace EDA {

// A plain record. Lengths are in the board's units; -1.0 means that no value was given.
class EDAHeatsink {
public:
    EDAHeatsink();
    EDAHeatsink(EDAHeatsink const &);
    EDAHeatsink(EDAHeatsink &&) noexcept;
    EDAHeatsink &operator=(EDAHeatsink const &);
    EDAHeatsink &operator=(EDAHeatsink &&) noexcept;
    virtual ~EDAHeatsink();

    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }

    void setHeatSinkType(std::string const &type) { heatSinkType_ = type; }
    std::string const &getHeatSinkType() const { return heatSinkType_; }

    void setPinShape(std::string const &shape) { pinShape_ = shape; }
    std::string const &getPinShape() const { return pinShape_; }

    void setHeatSinkMaterial(std::string const &material) { heatSinkMaterial_ = material; }
    std::string const &getHeatSinkMaterial() const { return heatSinkMaterial_; }

    void setStaggered(bool staggered) { staggered_ = staggered; }
    bool const &getStaggered() const { return staggered_; }

    void setHeatSinkLength(double length) { heatSinkLength_ = length; }
    double const &getHeatSinkLength() const { return heatSinkLength_; }

    void setHeatSinkWidth(double width) { heatSinkWidth_ = width; }
    double const &getHeatSinkWidth() const { return heatSinkWidth_; }

    void setBaseThickness(double thickness) { baseThickness_ = thickness; }
    double const &getBaseThickness() const { return baseThickness_; }

    void setLimbHeight(double height) { limbHeight_ = height; }
    double const &getLimbHeight() const { return limbHeight_; }

    void setLimbLength(double length) { limbLength_ = length; }
    double const &getLimbLength() const { return limbLength_; }

    void setLimbWidth(double width) { limbWidth_ = width; }
    double const &getLimbWidth() const { return limbWidth_; }

    void setPitchInWidth(double pitch) { pitchInWidth_ = pitch; }
    double const &getPitchInWidth() const { return pitchInWidth_; }

    void setPitchInLength(double pitch) { pitchInLength_ = pitch; }
    double const &getPitchInLength() const { return pitchInLength_; }

private:
    std::string name_;
    std::string heatSinkType_;
    std::string pinShape_;
    std::string heatSinkMaterial_;
    bool staggered_ = false;
    double heatSinkLength_ = -1.0;
    double heatSinkWidth_ = -1.0;
    double baseThickness_ = -1.0;
    double limbHeight_ = -1.0;
    double limbLength_ = -1.0;
    double limbWidth_ = -1.0;
    double pitchInWidth_ = -1.0;
    double pitchInLength_ = -1.0;
};

} // namespace EDA
