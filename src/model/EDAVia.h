// A drilled hole: one definition with all its locations.
#pragma once

#include "host/Geometry/Bound2D.h"
#include "model/EDAInstances.h"
#include "model/EDAOutline.h"
#include "model/KeyWatch.h"

#include <cstddef>
#include <string>

namespace EDA {

// A hole at its own centre and at each further instance, so that thousands of equal holes
// cost one definition. Lengths are in the board's units, angles in degrees.
//
// The hole type is free text, since each source format has its own words; the `is...` tests
// gather those words into kinds, without regard to case.
class EDAVia {
public:
    // Sizes that differ by less are the same for `isInstanceOf`.
    static constexpr double sizeTolerance = 1e-12;

    EDAVia();
    EDAVia(EDAVia const &);
    EDAVia(EDAVia &&) noexcept;
    EDAVia &operator=(EDAVia const &);
    EDAVia &operator=(EDAVia &&) noexcept;
    virtual ~EDAVia();

    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }

    void setPlatingStyle(std::string const &style);
    std::string const &getPlatingStyle() const { return platingStyle_; }
    // Sets the plating style to "Plated" or to the empty text.
    void setPlated(bool plated) { setPlatingStyle(plated ? "Plated" : ""); }
    // True when the plating style is "PTH" or "Plated".
    bool isPlated() const;

    void setDiameter(double diameter);
    double getDiameter() const { return diameter_; }

    void setAngle(double angle) { angle_ = angle; }
    double getAngle() const { return angle_; }

    // The definition's own location.
    void setCentre(double x, double y);
    double getXCentre() const { return xCentre_; }
    double getYCentre() const { return yCentre_; }

    // Appends a further location; equal ones are kept.
    void addInstance(std::string const &name, double x, double y) { instances_.add(name, x, y); }
    // Number of further locations; the definition's own does not count.
    std::size_t numInstances() const { return instances_.size(); }
    // A bad index gives an empty text and 0.0.
    std::string getInstanceName(int index) const { return instances_.getName(index); }
    double getInstanceXCentre(int index) const { return instances_.getX(index); }
    double getInstanceYCentre(int index) const { return instances_.getY(index); }

    void setPlatingThickness(double thickness);
    double getPlatingThickness() const { return platingThickness_; }

    void setZDimensions(double zLow, double zHigh);
    void getZDimensions(double &zLow, double &zHigh) const;

    // Reference designator of the part that the hole belongs to; "BOARD" or empty: none.
    void setAssociatedPart(std::string const &part);
    std::string const &getAssociatedPart() const { return associatedPart_; }

    void setHoleType(std::string const &type);
    std::string const &getHoleType() const { return holeType_; }

    // Names of the layers where the hole starts and ends.
    void setLayers(std::string const &startLayer, std::string const &endLayer);
    void getLayers(std::string &startLayer, std::string &endLayer) const;

    void setFillMaterial(std::string const &material);
    std::string const &getFillMaterial() const { return fillMaterial_; }

    // The shape of a hole that is not round; empty for a round one.
    EDAOutline &getOutline();
    EDAOutline const &getOutline() const { return outline_; }

    // True when the hole type is "VIA" or "ViaTerminal".
    bool isThermalVia() const;
    // True when the hole type is empty, "MTG" or "PartMountingFeature".
    bool isMountingHole() const;
    // True when the hole type is "TOOL".
    bool isToolHole() const;
    // True when the hole type is "PIN" or "ComponentTerminal".
    bool isPin() const;

    // True when the two are the same hole but for location and name: diameter and plating
    // thickness within `sizeTolerance`; plating style, hole type, layers and fill equal with
    // case. Angle and z dimensions don't count: holes at other heights match as well, which
    // is intended, and gathers equal drills of a whole board in one definition.
    // A shaped hole, or one that belongs to a part (any text but "BOARD" in upper case),
    // is never an instance and never has one.
    bool isInstanceOf(EDAVia const &definition) const;

    // Sets the bound to the squares around all locations; what it held before is lost.
    void getBound(Geometry::Bound2D &bound) const;

    // For look-up tables: from now on, count changes of what `isInstanceOf` compares.
    void watchKey() const { keyWatch_.watch(); }

private:
    bool hasAssociatedPart() const;

    std::string name_;
    std::string platingStyle_;
    double diameter_ = 0.0;
    double angle_ = 0.0;
    double xCentre_ = 0.0;
    double yCentre_ = 0.0;
    EDAInstances instances_;
    double platingThickness_ = 0.0;
    double zLow_ = 0.0;
    double zHigh_ = 0.0;
    std::string associatedPart_ = "BOARD";
    std::string holeType_ = "Other";
    std::string startLayer_;
    std::string endLayer_;
    std::string fillMaterial_;
    EDAOutline outline_;
    KeyWatch keyWatch_;
};

} // namespace EDA
