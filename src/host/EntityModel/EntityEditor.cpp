// Edits that change values.
#include "host/EntityModel/EntityEditor.h"

#include "host/EntityModel/Undo.h"

#include <stdexcept>

namespace EntityModel {

namespace {

// Finds the attribute and gives it to `change`, which leaves it as it was when it answers false.
template <typename Change> bool edit(Entity *entity, const AttributePath &path, Change change) {
    Attribute *const attribute = entity ? entity->findAttribute(path) : nullptr;
    if (!attribute) return false;
    UndoStack &undo = UndoStack::instance();
    std::unique_ptr<Attribute> before = undo.snapshot(*attribute);
    if (!change(*attribute)) return false;
    undo.addValueChange(*attribute, std::move(before));
    return true;
}

template <typename Number> bool setNumber(Attribute &attribute, Number value) {
    switch (attribute.kind()) {
    case AttributeKind::Number: return static_cast<DoubleAttribute &>(attribute).set(value);
    case AttributeKind::Integer: return static_cast<IntegerAttribute &>(attribute).set(value);
    default: return false;
    }
}

bool setStandard(Attribute &attribute, double value) {
    if (attribute.isDoubleAttribute()) return static_cast<DoubleAttribute &>(attribute).setStandard(value);
    return setNumber(attribute, value);
}

bool setIn(DoubleAttribute &number, double value, const std::string &units) {
    const Unit *const unit = number.findUnit(units);
    return unit && number.set(value, *unit);
}

} // namespace

bool EntityEditor::setValue(Entity *entity, const AttributePath &path, const std::string &text, bool,
                            std::vector<Entity *> *, bool, bool) {
    return edit(entity, path, [&text](Attribute &attribute) { return attribute.setFromString(text); });
}

bool EntityEditor::setValue(Entity *entity, const AttributePath &path, const char *text, bool,
                            std::vector<Entity *> *, bool) {
    return setValue(entity, path, std::string(text), true);
}

bool EntityEditor::setValue(Entity *entity, const AttributePath &path, double value, bool) {
    return edit(entity, path, [value](Attribute &attribute) { return setNumber(attribute, value); });
}

bool EntityEditor::setValue(Entity *entity, const AttributePath &path, int value, bool) {
    return edit(entity, path, [value](Attribute &attribute) { return setNumber(attribute, value); });
}

bool EntityEditor::setValue(Entity *entity, const AttributePath &path, const std::vector<int> &values, bool) {
    return edit(entity, path, [&values](Attribute &attribute) {
        if (attribute.kind() != AttributeKind::IntList) return false;
        static_cast<IntListAttribute &>(attribute).set(values);
        return true;
    });
}

bool EntityEditor::setValue(Entity *entity, const AttributePath &path, std::vector<double> values,
                            const std::string &units, bool) {
    return edit(entity, path, [&](Attribute &attribute) {
        if (!attribute.isDoubleListAttribute()) return false;
        return static_cast<DoubleListAttribute &>(attribute).set(std::move(values), units);
    });
}

bool EntityEditor::setSIValue(Entity *entity, const AttributePath &path, double value, bool) {
    return edit(entity, path, [value](Attribute &attribute) { return setStandard(attribute, value); });
}

bool EntityEditor::setValueWithUnits(Entity *entity, const AttributePath &path, double value,
                                     const std::string &units, bool) {
    Attribute *const attribute = entity ? entity->findAttribute(path) : nullptr;
    if (!attribute || !attribute->isDoubleAttribute()) return false;
    const bool isSet = edit(entity, path, [value, &units](Attribute &number) {
        return setIn(static_cast<DoubleAttribute &>(number), value, units);
    });
    if (!isSet) {
        throw std::out_of_range("\"" + attribute->getType().getLabel() + "\" cannot take " +
                                std::to_string(value) + " \"" + units + "\"");
    }
    return true;
}

bool EntityEditor::setValueNoThrow(Entity *entity, const AttributePath &path, const std::string &text, bool) {
    return setValue(entity, path, text, true);
}

bool EntityEditor::setValueNoThrow(Entity *entity, const AttributePath &path, double value, bool) {
    return setValue(entity, path, value, true);
}

bool EntityEditor::setSIValueNoThrow(Entity *entity, const AttributePath &path, double value, bool) {
    return setSIValue(entity, path, value, true);
}

} // namespace EntityModel
