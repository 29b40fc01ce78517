// A component definition: what is placed on a board.
#pragma once

#include "model/EDAOutline.h"
#include "model/KeyWatch.h"

#include <string>
#include <utility>
#include <vector>

namespace EDA {

// A body outline, a height and free-form properties. Lengths are in the component's own
// units, -1.0 a mold size that was not given.
class EDAComponent {
public:
    using PropertyIterator = std::vector<std::pair<std::string, std::string>>::const_iterator;

    // `type`: "ELECTRICAL" or "MECHANICAL", or another word of the source.
    explicit EDAComponent(std::string const &type);
    EDAComponent(EDAComponent const &);
    EDAComponent(EDAComponent &&) noexcept;
    EDAComponent &operator=(EDAComponent const &);
    EDAComponent &operator=(EDAComponent &&) noexcept;
    virtual ~EDAComponent();

    std::string const &getType() const { return type_; }
    // True when the type is "ELECTRICAL", without regard to case.
    bool isElectrical() const;

    void setName(std::string const &name);
    std::string const &getName() const { return name_; }

    void setManufacturer(std::string const &manufacturer) { manufacturer_ = manufacturer; }
    std::string const &getManufacturer() const { return manufacturer_; }

    void setPartNumber(std::string const &partNumber);
    std::string const &getPartNumber() const { return partNumber_; }

    void setUnits(std::string const &units) { units_ = units; }
    std::string const &getUnits() const { return units_; }

    void setHeight(double height) { height_ = height; }
    double getHeight() const { return height_; }

    // Left out of the import.
    void setFiltered(bool filtered) { filtered_ = filtered; }
    bool isFiltered() const { return filtered_; }

    // The entity type chosen for the import.
    void setImportToType(std::string const &type) { importToType_ = type; }
    std::string const &getImportToType() const { return importToType_; }

    void setCylinderOriginToCentre(bool const &centre) { cylinderOriginToCentre_ = centre; }
    // Reads the flag and, in spite of its name, changes nothing: this is intended.
    bool const &resetCylinderOriginToCentre() const { return cylinderOriginToCentre_; }

    EDAOutline &getOutline() { return outline_; }
    EDAOutline const &getOutline() const { return outline_; }
    // `EDAOutline::addPoint` on the outline.
    void addPoint(int outline, double x, double y, double angle) { outline_.addPoint(outline, x, y, angle); }
    // True when the outline has a stored point.
    bool hasGeometry() const { return !outline_.empty(); }
    // Diagonal of the outline's own bound; 0 without geometry.
    double getSize() const;

    // Appends the pair; an earlier one with the same key stays.
    void addProperty(std::string const &key, std::string const &value) {
        properties_.emplace_back(key, value);
    }
    PropertyIterator beginProperties() const { return properties_.begin(); }
    PropertyIterator endProperties() const { return properties_.end(); }

    // Value of the first property "POWER_OPR" (with case), in milliwatts; 0.0 without one or
    // where it is no number.
    double getPower() const;
    // "junction to board,junction to case" from the last "THETA_JB" and the last "THETA_JC",
    // one that is missing as the text for 0. Empty when both are missing or empty.
    std::string get2RValues() const;
    // The same from the last "POWER_MAX" and the last "POWER_OPR".
    std::string getPowerValues() const;

    void setMoldEnabled(bool enabled) { moldEnabled_ = enabled; }
    bool isMoldEnabled() const { return moldEnabled_; }

    void setMoldMaterialName(std::string const &name) { moldMaterialName_ = name; }
    std::string const &getMoldMaterialName() const { return moldMaterialName_; }

    void setMoldLength(double length) { moldLength_ = length; }
    double const &getMoldLength() const { return moldLength_; }
    void setMoldWidth(double width) { moldWidth_ = width; }
    double const &getMoldWidth() const { return moldWidth_; }
    // Stores into the mold width: this is intended. The height stays "not given", and the
    // last call of either setter is the width; the import relies on both.
    void setMoldHeight(double height) { moldWidth_ = height; }
    double const &getMoldHeight() const { return moldHeight_; }

    // For look-up tables: from now on, count changes of name and part number.
    void watchKey() const { keyWatch_.watch(); }

private:
    std::string lastProperty(char const *key) const;
    std::string valuePair(char const *firstKey, char const *secondKey) const;

    std::string type_;
    std::string name_;
    std::string manufacturer_;
    std::string partNumber_;
    std::string units_;
    double height_ = 0.0;
    bool filtered_ = false;
    std::string importToType_;
    bool cylinderOriginToCentre_ = false;
    EDAOutline outline_;
    std::vector<std::pair<std::string, std::string>> properties_;
    bool moldEnabled_ = false;
    std::string moldMaterialName_;
    double moldLength_ = -1.0;
    double moldWidth_ = -1.0;
    double moldHeight_ = -1.0;
    KeyWatch keyWatch_;
};

} // namespace EDA
