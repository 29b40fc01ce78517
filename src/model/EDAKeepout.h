// A region that components, vias or routes must keep out of.
#pragma once

#include "model/EDAOutline.h"

#include <string>

namespace EDA {

// A keepout region with a kind and a side, both free text of the source; the `is...` tests
// gather the words of the formats into kinds, without regard to case. Lengths are in the
// board's units.
class EDAKeepout {
public:
    explicit EDAKeepout(std::string const &type);
    EDAKeepout(EDAKeepout const &);
    EDAKeepout(EDAKeepout &&) noexcept;
    EDAKeepout &operator=(EDAKeepout const &);
    EDAKeepout &operator=(EDAKeepout &&) noexcept;
    virtual ~EDAKeepout();

    void setName(std::string const &name) { name_ = name; }
    std::string const &getName() const { return name_; }

    // The kind, as given at construction.
    std::string const &getType() const { return type_; }

    void setBoardSide(std::string const &side) { boardSide_ = side; }
    std::string const &getBoardSide() const { return boardSide_; }

    void setHeight(double height) { height_ = height; }
    double getHeight() const { return height_; }

    EDAOutline &getOutline() { return outline_; }
    EDAOutline const &getOutline() const { return outline_; }

    // `EDAOutline::addPoint` on the outline.
    void addPoint(int outline, double x, double y, double angle) { outline_.addPoint(outline, x, y, angle); }

    // True when the board side is "TOP". An empty side is none of the three.
    bool isOnBoardTop() const;
    // True when the board side is "BOTTOM".
    bool isOnBoardBottom() const;
    // True when the board side is "BOTH" or "ALL".
    bool isOnBoardBothSides() const;

    // True when the type is "PLACE_KEEPOUT" or "ComponentPlacement".
    bool isComponentKeepout() const;
    // True when the type is "VIA_KEEPOUT" or "Via".
    bool isViaKeepout() const;
    // True when the type is "Route".
    bool isRoutingKeepout() const;

private:
    std::string name_;
    std::string type_;
    std::string boardSide_;
    double height_ = 0.0;
    EDAOutline outline_;
};

} // namespace EDA
