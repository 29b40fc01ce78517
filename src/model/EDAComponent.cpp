// Component definitions: size, power and thermal resistances from properties.
#include "model/EDAComponent.h"

#include "host/Tools/DoubleDisplay.h"
#include "text/Text.h"

#include <algorithm>
#include <cmath>

namespace EDA {

namespace {

double numberOf(std::string const &text) { return parseDouble(text, 0.0, 0.0); }

std::string displayText(std::string const &number) {
    return EntityModel::DoubleDisplay::get().getDoubleString(numberOf(number), std::string(), 0, 1000000.0);
}

} // namespace

EDAComponent::EDAComponent(std::string const &type) : type_(type) {}
EDAComponent::EDAComponent(EDAComponent const &) = default;
EDAComponent::EDAComponent(EDAComponent &&) noexcept = default;
EDAComponent &EDAComponent::operator=(EDAComponent const &) = default;
EDAComponent &EDAComponent::operator=(EDAComponent &&) noexcept = default;
EDAComponent::~EDAComponent() = default;

bool EDAComponent::isElectrical() const { return equalsIgnoreCase(type_, "ELECTRICAL"); }

void EDAComponent::setName(std::string const &name) {
    name_ = name;
    keyWatch_.keyChanged();
}

void EDAComponent::setPartNumber(std::string const &partNumber) {
    partNumber_ = partNumber;
    keyWatch_.keyChanged();
}

double EDAComponent::getSize() const {
    auto const &bound = outline_.getBound();
    double const x = bound.getXSize();
    double const y = bound.getYSize();
    return std::sqrt(y * y + x * x);
}

double EDAComponent::getPower() const {
    auto const power = std::find_if(properties_.begin(), properties_.end(),
                                    [](auto const &property) { return property.first == "POWER_OPR"; });
    return power == properties_.end() ? 0.0 : numberOf(power->second);
}

std::string EDAComponent::get2RValues() const { return valuePair("THETA_JB", "THETA_JC"); }

std::string EDAComponent::getPowerValues() const { return valuePair("POWER_MAX", "POWER_OPR"); }

std::string EDAComponent::lastProperty(char const *key) const {
    auto const found = std::find_if(properties_.rbegin(), properties_.rend(),
                                    [key](auto const &property) { return property.first == key; });
    return found == properties_.rend() ? std::string() : found->second;
}

std::string EDAComponent::valuePair(char const *firstKey, char const *secondKey) const {
    auto const first = lastProperty(firstKey);
    auto const second = lastProperty(secondKey);
    if (first.empty() && second.empty()) return {};
    return displayText(first) + "," + displayText(second);
}

} // namespace EDA
