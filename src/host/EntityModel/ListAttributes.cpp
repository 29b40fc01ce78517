// Lists of numbers and lists of such lists.
#include "host/EntityModel/Entity.h"
#include "host/EntityModel/NumberText.h"
#include "host/EntityModel/Undo.h"
#include "host/EntityModel/ValueAttributes.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace EntityModel {

namespace {

// Splits "1,2 <mm>" into its numbers and the unit's text.
bool parseNumbers(std::string_view text, std::vector<double> &values, std::string &unit) {
    const size_t open = text.rfind('<');
    if (open != std::string_view::npos) {
        std::string_view tail = trimmed(text.substr(open + 1));
        if (tail.empty() || tail.back() != '>') return false;
        tail.remove_suffix(1);
        unit = std::string(trimmed(tail));
        text = text.substr(0, open);
    }
    text = trimmed(text);
    if (text.empty()) return true;
    values.reserve(static_cast<size_t>(std::count(text.begin(), text.end(), ',')) + 1);
    for (;;) {
        double value = 0.0;
        if (!takeNumber(text, value)) return false;
        values.push_back(value);
        if (text.empty()) return true;
        if (text.front() != ',') return false;
        text.remove_prefix(1);
    }
}

template <typename Value, typename Append>
const std::string &joinNumbers(const std::vector<Value> &values, std::string &text, Append append) {
    text.clear();
    for (size_t i = 0; i < values.size(); ++i) {
        if (i > 0) text += ',';
        append(text, values[i]);
    }
    return text;
}

} // namespace

DoubleListAttribute::DoubleListAttribute(const AttributeDef *def, Entity *owner)
    : Attribute(def, owner), unit_(def->displayUnit) {}

bool DoubleListAttribute::setFromString(const std::string &text) {
    std::vector<double> values;
    std::string spelling;
    return parseNumbers(text, values, spelling) && set(std::move(values), spelling);
}

bool DoubleListAttribute::set(std::vector<double> values, const std::string &units) {
    const Unit *unit = trimmed(units).empty() ? unit_ : Units::find(*definition()->quantity, units);
    return unit && restore(std::move(values), *unit);
}

const std::string &DoubleListAttribute::getString(std::string &text) const {
    joinNumbers(values_, text, appendNumber);
    if (!values_.empty()) text.append(" <").append(unit_->label).append(">");
    return text;
}

double DoubleListAttribute::getNthStandardValue(int index) const {
    if (index < 0 || index >= getSize()) return 0.0;
    return Units::convert(values_[static_cast<size_t>(index)], *unit_, *definition()->quantity->standard);
}

double DoubleListAttribute::getNthStandardValue(int index, const std::string &units) const {
    if (index < 0 || index >= getSize()) return 0.0;
    const Unit *unit = units.empty() ? unit_ : Units::find(*definition()->quantity, units);
    return Units::convert(values_[static_cast<size_t>(index)], *unit_, unit ? *unit : *unit_);
}

void DoubleListAttribute::getBoundStandardValues(int axis, double &low, double &high) const {
    low = high = 0.0;
    for (int i = axis; axis >= 0 && i < getSize(); i += 2) {
        const double value = getNthStandardValue(i);
        low = i == axis ? value : std::min(low, value);
        high = i == axis ? value : std::max(high, value);
    }
}

bool DoubleListAttribute::restore(std::vector<double> values, const Unit &unit) {
    const auto finite = [](double value) { return std::isfinite(value); };
    if (!std::all_of(values.begin(), values.end(), finite)) return false;
    values_ = std::move(values);
    unit_ = &unit;
    return true;
}

bool DoubleListAttribute::sameValue(const Attribute *other) const {
    if (!other || !other->isDoubleListAttribute()) return false;
    const auto &list = static_cast<const DoubleListAttribute &>(*other);
    return list.values_ == values_ && list.unit_ == unit_;
}

void DoubleListAttribute::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    auto &list = static_cast<DoubleListAttribute &>(other);
    values_.swap(list.values_);
    std::swap(unit_, list.unit_);
}

bool IntListAttribute::setFromString(const std::string &text) {
    std::vector<double> numbers;
    std::string unit;
    if (!parseNumbers(text, numbers, unit) || !unit.empty()) return false;
    std::vector<int> values;
    values.reserve(numbers.size());
    for (const double number : numbers) {
        if (number != std::floor(number) || std::fabs(number) > 2147483647.0) return false;
        values.push_back(static_cast<int>(number));
    }
    values_ = std::move(values);
    return true;
}

const std::string &IntListAttribute::getString(std::string &text) const {
    return joinNumbers(values_, text, [](std::string &out, int value) { out.append(std::to_string(value)); });
}

void IntListAttribute::swapValue(Attribute &other) {
    Attribute::swapValue(other);
    values_.swap(static_cast<IntListAttribute &>(other).values_);
}

ListElement::ListElement(const AttributeDef *listDef, Entity *owner, int number)
    : DoubleListAttribute(listDef, owner),
      label_(TypeFactory::getType(listDef->elementLabel + ' ' + std::to_string(number))) {}

bool ListElement::isDefault() const { return getSize() == 0 && !isLocked() && !getFlag(); }

ListAttribute::ListAttribute(const ListAttribute &other) : Attribute(other) {
    elements_.reserve(other.elements_.size());
    for (const auto &element : other.elements_) {
        elements_.emplace_back(static_cast<ListElement *>(element->clone()));
    }
}

Attribute *ListAttribute::clone() const { return new ListAttribute(*this); }

DoubleListAttribute *ListAttribute::at(int index) const {
    return index >= 0 && index < size() ? elements_[static_cast<size_t>(index)].get() : nullptr;
}

namespace {

// Holds the elements that the model does not have now.
class ResizeRecord : public UndoRecord {
public:
    ResizeRecord(ListAttribute &list, int oldSize, int newSize, ListAttribute::Elements cut)
        : list_(list), oldSize_(oldSize), newSize_(newSize), held_(std::move(cut)) {}

    void undo() override { swapTail(newSize_, oldSize_); }
    void redo() override { swapTail(oldSize_, newSize_); }

private:
    void swapTail(int from, int to) {
        if (to < from) {
            held_ = list_.cut(to);
        } else {
            list_.append(std::move(held_));
        }
    }

    ListAttribute &list_;
    int oldSize_;
    int newSize_;
    ListAttribute::Elements held_;
};

} // namespace

ListAttribute::Elements ListAttribute::cut(int size) {
    const auto from = elements_.begin() + std::min(size, this->size());
    Elements tail(std::make_move_iterator(from), std::make_move_iterator(elements_.end()));
    elements_.erase(from, elements_.end());
    return tail;
}

void ListAttribute::append(Elements elements) {
    elements_.insert(elements_.end(), std::make_move_iterator(elements.begin()),
                     std::make_move_iterator(elements.end()));
}

void ListAttribute::resize(int size) {
    const int oldSize = this->size();
    const Entity *const owner = getOwnerEntity();
    if (size < 0 || size == oldSize || (owner && owner->isHeldByStep())) return;
    UndoStack &undo = UndoStack::instance();
    if (!undo.isRecording() && owner && owner->model()) undo.noteUnrecordedRemoval();
    Elements removed = cut(size);
    for (int i = oldSize; i < size; ++i) {
        elements_.push_back(std::make_unique<ListElement>(definition(), getOwnerEntity(), i + 1));
    }
    if (!undo.needsRecord(*this)) return;
    undo.add(std::make_unique<ResizeRecord>(*this, oldSize, size, std::move(removed)));
}

bool ListAttribute::isDefault() const { return elements_.empty() && !isLocked() && !getFlag(); }

bool ListAttribute::sameValue(const Attribute *other) const {
    if (!other || other->kind() != kind()) return false;
    const auto &list = static_cast<const ListAttribute &>(*other);
    return std::equal(elements_.begin(), elements_.end(), list.elements_.begin(), list.elements_.end(),
                      [](const auto &a, const auto &b) { return a->sameValue(b.get()); });
}

} // namespace EntityModel
