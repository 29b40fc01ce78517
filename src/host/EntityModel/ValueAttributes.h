// Attributes that hold a value: text, numbers, choices, lists of numbers.
#pragma once

#include "host/EntityModel/Attribute.h"

#include <string>
#include <vector>

namespace EntityModel {

// Any text, kept verbatim: line feeds, trailing blanks and all.
class TextAttribute : public Attribute {
public:
    TextAttribute(const AttributeDef *def, Entity *owner) : Attribute(def, owner) {}

    bool setFromString(const std::string &text) override;
    const std::string &getString(std::string &text) const override { return text = text_; }
    const std::string &text() const { return text_; }
    Attribute *clone() const override { return new TextAttribute(*this); }
    void swapValue(Attribute &other) override;

private:
    std::string text_;
};

// A number with units.
//
// It keeps the number as it came with the unit that it came in, so that a value read back in that unit is
// bit-equal, and a display unit (its "own" unit), in which texts are written and plain numbers are understood.
class DoubleAttribute : public Attribute {
public:
    DoubleAttribute(const AttributeDef *def, Entity *owner);

    // "1.5 mm": the number in the C locale, the rest, trimmed, is the unit and becomes the display unit. No
    // unit means the own unit.
    bool setFromString(const std::string &text) override;
    const std::string &getString(std::string &text) const override;

    bool set(double value);                        // in the own unit
    bool setStandard(double value);                // in the standard unit; the own unit stays
    bool set(double value, const Unit &unit);      // and makes `unit` the own unit
    bool accepts(double value) const;              // finite, and not negative where sizes are asked
    const Unit *findUnit(const std::string &) const; // of this quantity; empty: the own unit; null: unknown

    double getStandardValue() const override;
    double getValueIn(const std::string &units) const override;
    double value() const { return value_; }
    const Unit &unit() const { return *unit_; }
    const Unit &displayUnit() const { return *display_; }
    void restore(double value, const Unit &unit, const Unit &display);

    bool isDefault() const override;
    bool sameValue(const Attribute *other) const override;
    Attribute *clone() const override { return new DoubleAttribute(*this); }
    void swapValue(Attribute &other) override;

private:
    double value_ = 0.0;
    const Unit *unit_;    // the unit of value_
    const Unit *display_; // the own unit
};

class IntegerAttribute : public Attribute {
public:
    IntegerAttribute(const AttributeDef *def, Entity *owner) : Attribute(def, owner) {}

    bool setFromString(const std::string &text) override;
    const std::string &getString(std::string &text) const override { return text = std::to_string(value_); }
    bool set(double value); // rounds; false when it is not finite or too large
    int value() const { return value_; }
    double getStandardValue() const override { return value_; }
    double getValueIn(const std::string &) const override { return value_; }
    Attribute *clone() const override { return new IntegerAttribute(*this); }
    void swapValue(Attribute &other) override;

private:
    int value_ = 0;
};

class ChoiceAttribute : public Attribute {
public:
    ChoiceAttribute(const AttributeDef *def, Entity *owner) : Attribute(def, owner) {}

    bool setFromString(const std::string &label) override; // exact label; unknown: false, value kept
    const std::string &getString(std::string &text) const override;
    bool isValue(const TypeRef &value) const override { return this->value() == value; }
    int indexOfChoice(const std::string &label) const; // -1 if the choice does not exist
    const Type &value() const;
    Attribute *clone() const override { return new ChoiceAttribute(*this); }
    void swapValue(Attribute &other) override;

private:
    int index_ = 0;
};

// Takes "Yes", "No", "true" and "false"; reads as "Yes" or "No".
class YesNoAttribute : public Attribute {
public:
    YesNoAttribute(const AttributeDef *def, Entity *owner) : Attribute(def, owner) {}

    bool setFromString(const std::string &text) override;
    const std::string &getString(std::string &text) const override { return text = value_ ? "Yes" : "No"; }
    bool isValue(const TypeRef &value) const override;
    bool getBool() const override { return value_; }
    Attribute *clone() const override { return new YesNoAttribute(*this); }
    void swapValue(Attribute &other) override;

private:
    bool value_ = false;
};

// Numbers with one unit: outlines (x and z in pairs) and placements. Text form "x,y,... <unit>"; "<>" or no
// unit at all is the own unit.
class DoubleListAttribute : public Attribute {
public:
    DoubleListAttribute(const AttributeDef *def, Entity *owner);

    AttributeKind kind() const override { return AttributeKind::DoubleList; }
    bool setFromString(const std::string &text) override; // any bad or non-finite entry: false, old list kept
    const std::string &getString(std::string &text) const override;
    bool set(std::vector<double> values, const std::string &units); // the same without a text

    int getSize() const { return static_cast<int>(values_.size()); }
    double getNthStandardValue(int index) const; // 0.0 for a bad index
    double getNthStandardValue(int index, const std::string &units) const;

    // The least and greatest standard value of one axis (0 is x, 1 is y) of the pairs; 0, 0 when there are none.
    void getBoundStandardValues(int axis, double &low, double &high) const;

    const std::vector<double> &values() const { return values_; } // in unit()
    const Unit &unit() const { return *unit_; }
    bool restore(std::vector<double> values, const Unit &unit);

    bool sameValue(const Attribute *other) const override;
    Attribute *clone() const override { return new DoubleListAttribute(*this); }
    void swapValue(Attribute &other) override;

private:
    std::vector<double> values_;
    const Unit *unit_;
};

class IntListAttribute : public Attribute {
public:
    IntListAttribute(const AttributeDef *def, Entity *owner) : Attribute(def, owner) {}

    bool setFromString(const std::string &text) override; // "1,2,3"
    const std::string &getString(std::string &text) const override;
    void set(std::vector<int> values) { values_ = std::move(values); }
    const std::vector<int> &values() const { return values_; }
    Attribute *clone() const override { return new IntListAttribute(*this); }
    void swapValue(Attribute &other) override;

private:
    std::vector<int> values_;
};

// An element of a ListAttribute, with a label of its own: "Hole 3".
class ListElement final : public DoubleListAttribute {
public:
    ListElement(const AttributeDef *listDef, Entity *owner, int number);

    const Type &getType() const override { return label_; }
    bool isDefault() const override;
    Attribute *clone() const override { return new ListElement(*this); }

private:
    Type label_;
};

// A list of DoubleList attributes. Element n, counted from 1, has the label "Hole n" (the word is the
// schema's) and is found from its entity by that label.
class ListAttribute : public Attribute {
public:
    using Elements = std::vector<std::unique_ptr<ListElement>>;

    ListAttribute(const AttributeDef *def, Entity *owner) : Attribute(def, owner) {}

    int size() const { return static_cast<int>(elements_.size()); }
    DoubleListAttribute *at(int index) const; // null outside
    void resize(int size);                    // undoable; new elements are empty; negative: does nothing

    // Without undo: cuts the elements from `size` on off and gives them; puts elements behind the others.
    Elements cut(int size);
    void append(Elements elements);

    bool isDefault() const override;
    bool sameValue(const Attribute *other) const override;
    Attribute *clone() const override;

private:
    ListAttribute(const ListAttribute &other);

    Elements elements_;
};

} // namespace EntityModel
