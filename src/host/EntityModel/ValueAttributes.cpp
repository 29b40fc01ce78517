// Texts, choices and numbers.
#include "host/EntityModel/ValueAttributes.h"

#include "host/EntityModel/NumberText.h"
#include "host/EntityModel/Types.h"

#include <cmath>
#include <limits>
#include <utility>

namespace EntityModel {

bool TextAttribute::setFromString(const std::string &text) {
    text_ = text;
    return true;
}

void TextAttribute::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    text_.swap(static_cast<TextAttribute &>(other).text_);
}

bool IntegerAttribute::setFromString(const std::string &text) {
    std::string_view rest = text;
    double number = 0.0;
    return takeNumber(rest, number) && rest.empty() && number == std::floor(number) && set(number);
}

bool IntegerAttribute::set(double value) {
    const double rounded = std::round(value);
    if (!(std::fabs(rounded) <= std::numeric_limits<int>::max())) return false;
    value_ = static_cast<int>(rounded);
    return true;
}

void IntegerAttribute::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    std::swap(value_, static_cast<IntegerAttribute &>(other).value_);
}

int ChoiceAttribute::indexOfChoice(const std::string &label) const {
    const auto &choices = definition()->choices;
    for (size_t i = 0; i < choices.size(); ++i) {
        if (choices[i].getLabel() == label) return static_cast<int>(i);
    }
    return -1;
}

bool ChoiceAttribute::setFromString(const std::string &label) {
    const int index = indexOfChoice(label);
    if (index < 0) return false;
    index_ = index;
    return true;
}

const Type &ChoiceAttribute::value() const { return definition()->choices[static_cast<size_t>(index_)]; }

const std::string &ChoiceAttribute::getString(std::string &text) const { return text = value().getLabel(); }

void ChoiceAttribute::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    std::swap(index_, static_cast<ChoiceAttribute &>(other).index_);
}

bool YesNoAttribute::setFromString(const std::string &text) {
    const bool yes = text == "Yes" || text == "true";
    if (!yes && text != "No" && text != "false") return false;
    value_ = yes;
    return true;
}

bool YesNoAttribute::isValue(const TypeRef &value) const {
    static const TypeRef no("No");
    return value == (value_ ? Yes_t : no);
}

void YesNoAttribute::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    std::swap(value_, static_cast<YesNoAttribute &>(other).value_);
}

DoubleAttribute::DoubleAttribute(const AttributeDef *def, Entity *owner)
    : Attribute(def, owner), unit_(def->displayUnit), display_(def->displayUnit) {}

bool DoubleAttribute::accepts(double value) const {
    return std::isfinite(value) && (value >= 0.0 || !definition()->nonNegative);
}

const Unit *DoubleAttribute::findUnit(const std::string &spelling) const {
    return trimmed(spelling).empty() ? display_ : Units::find(*definition()->quantity, spelling);
}

bool DoubleAttribute::set(double value, const Unit &unit) {
    if (!accepts(value)) return false;
    value_ = value;
    unit_ = display_ = &unit;
    return true;
}

bool DoubleAttribute::set(double value) { return set(value, *display_); }

bool DoubleAttribute::setStandard(double value) {
    if (!accepts(value)) return false;
    value_ = value;
    unit_ = definition()->quantity->standard;
    return true;
}

void DoubleAttribute::restore(double value, const Unit &unit, const Unit &display) {
    value_ = value;
    unit_ = &unit;
    display_ = &display;
}

bool DoubleAttribute::setFromString(const std::string &text) {
    std::string_view rest = text;
    double number = 0.0;
    if (!takeNumber(rest, number)) return false;
    const Unit *unit = findUnit(std::string(rest));
    return unit && set(number, *unit);
}

const std::string &DoubleAttribute::getString(std::string &text) const {
    text.clear();
    appendNumber(text, Units::convert(value_, *unit_, *display_));
    if (!display_->label.empty()) text.append(" ").append(display_->label);
    return text;
}

double DoubleAttribute::getStandardValue() const {
    return Units::convert(value_, *unit_, *definition()->quantity->standard);
}

double DoubleAttribute::getValueIn(const std::string &units) const {
    const Unit *unit = findUnit(units);
    return Units::convert(value_, *unit_, unit ? *unit : *display_);
}

bool DoubleAttribute::isDefault() const {
    if (isLocked() || getFlag()) return false;
    const auto *initial = static_cast<const DoubleAttribute *>(definition()->defaultAttribute.get());
    return initial && value_ == initial->value_ && std::signbit(value_) == std::signbit(initial->value_) &&
           unit_ == initial->unit_ && display_ == initial->display_;
}

bool DoubleAttribute::sameValue(const Attribute *other) const {
    if (!other || !other->isDoubleAttribute()) return false;
    const auto &number = static_cast<const DoubleAttribute &>(*other);
    if (number.definition()->quantity != definition()->quantity) return false;
    return Units::convert(number.value_, *number.unit_, *unit_) == value_;
}

void DoubleAttribute::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    auto &number = static_cast<DoubleAttribute &>(other);
    std::swap(value_, number.value_);
    std::swap(unit_, number.unit_);
    std::swap(display_, number.display_);
}

} // namespace EntityModel
