// Keepouts: their kinds and sides.
#include "model/EDAKeepout.h"

#include "text/Text.h"

namespace EDA {

EDAKeepout::EDAKeepout(std::string const &type) : type_(type) {}
EDAKeepout::EDAKeepout(EDAKeepout const &) = default;
EDAKeepout::EDAKeepout(EDAKeepout &&) noexcept = default;
EDAKeepout &EDAKeepout::operator=(EDAKeepout const &) = default;
EDAKeepout &EDAKeepout::operator=(EDAKeepout &&) noexcept = default;
EDAKeepout::~EDAKeepout() = default;

bool EDAKeepout::isOnBoardTop() const { return equalsIgnoreCase(boardSide_, "TOP"); }

bool EDAKeepout::isOnBoardBottom() const { return equalsIgnoreCase(boardSide_, "BOTTOM"); }

bool EDAKeepout::isOnBoardBothSides() const {
    return equalsIgnoreCase(boardSide_, "BOTH") || equalsIgnoreCase(boardSide_, "ALL");
}

bool EDAKeepout::isComponentKeepout() const {
    return equalsIgnoreCase(type_, "PLACE_KEEPOUT") || equalsIgnoreCase(type_, "ComponentPlacement");
}

bool EDAKeepout::isViaKeepout() const {
    return equalsIgnoreCase(type_, "VIA_KEEPOUT") || equalsIgnoreCase(type_, "Via");
}

bool EDAKeepout::isRoutingKeepout() const { return equalsIgnoreCase(type_, "Route"); }

} // namespace EDA
