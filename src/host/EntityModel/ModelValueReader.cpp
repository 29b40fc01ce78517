// Reads one attribute's value from the events of a JSON reader.
#include "host/EntityModel/ModelValueReader.h"

#include <charconv>
#include <cmath>

namespace EntityModel {

namespace {

// How each kind of value is written, for messages.
const char *formOf(AttributeKind kind) {
    switch (kind) {
    case AttributeKind::Text:
        return "a text";
    case AttributeKind::Number:
        return "a number with its unit, such as [1.5,\"mm\"]";
    case AttributeKind::Integer:
        return "a whole number";
    case AttributeKind::Choice:
        return "one of its choices as a text";
    case AttributeKind::YesNo:
        return "true or false";
    case AttributeKind::DoubleList:
        return "numbers with their unit, such as [[1,2],\"mm\"]";
    case AttributeKind::IntList:
        return "a list of whole numbers";
    default:
        return "a list of [[1,2],\"mm\"] and the like";
    }
}

template <typename Number> bool parseWhole(std::string_view text, Number &value) {
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

bool fromHex(std::string_view digits, std::string &bytes) {
    if (digits.size() % 2 != 0) return false;
    bytes.reserve(digits.size() / 2);
    for (size_t i = 0; i < digits.size(); i += 2) {
        const int high = hexDigit(digits[i]);
        const int low = hexDigit(digits[i + 1]);
        if (high < 0 || low < 0) return false;
        bytes.push_back(static_cast<char>(high * 16 + low));
    }
    return true;
}

} // namespace

void ModelValueReader::start(Attribute &attribute) {
    attribute_ = &attribute;
    depth_ = 0;
    hasKey_ = hasText_ = hasNumbers_ = false;
    numbers_.clear();
    integers_.clear();
    units_.clear();
}

std::string ModelValueReader::name() const { return "\"" + attribute_->getType().getLabel() + "\""; }

bool ModelValueReader::fail(const std::string &reason) {
    what_ = reason;
    return false;
}

bool ModelValueReader::wrongForm() { return fail(name() + " needs " + formOf(attribute_->kind())); }

bool ModelValueReader::done() {
    attribute_ = nullptr;
    return true;
}

bool ModelValueReader::take(const JsonEvent &event) {
    switch (attribute_->kind()) {
    case AttributeKind::Text:
        return takeText(event);
    case AttributeKind::Number:
        return takeNumber(event);
    case AttributeKind::DoubleList:
        return takeDoubleList(event, 0);
    case AttributeKind::IntList:
        return takeIntList(event);
    case AttributeKind::AttributeList:
        return takeAttributeList(event);
    default:
        return takeSimple(event);
    }
}

bool ModelValueReader::takeSimple(const JsonEvent &event) {
    const AttributeKind kind = attribute_->kind();
    if (kind == AttributeKind::YesNo && event.kind == JsonKind::Bool) {
        return attribute_->setFromString(event.flag ? "Yes" : "No") && done();
    }
    if (kind == AttributeKind::Choice && event.kind == JsonKind::String) {
        const std::string label(event.text);
        if (attribute_->setFromString(label)) return done();
        return fail("\"" + label + "\" is no choice of " + name());
    }
    int value = 0;
    if (kind == AttributeKind::Integer && event.kind == JsonKind::Number && parseWhole(event.text, value)) {
        return static_cast<IntegerAttribute *>(attribute_)->set(value) && done();
    }
    return wrongForm();
}

bool ModelValueReader::takeText(const JsonEvent &event) {
    if (depth_ == 0 && event.kind == JsonKind::String) {
        return attribute_->setFromString(std::string(event.text)) && done();
    }
    if (depth_ == 0 && event.kind == JsonKind::StartObject) {
        depth_ = 1;
        return true;
    }
    if (depth_ == 1 && event.kind == JsonKind::Key && event.text == "bytes" && !hasKey_) {
        return hasKey_ = true;
    }
    std::string bytes;
    if (depth_ == 1 && event.kind == JsonKind::String && fromHex(event.text, bytes)) {
        hasText_ = true;
        return attribute_->setFromString(bytes);
    }
    if (depth_ == 1 && event.kind == JsonKind::EndObject && hasText_) return done();
    return wrongForm();
}

bool ModelValueReader::addNumber(std::string_view text) {
    double value = 0.0;
    if (!parseWhole(text, value) || !std::isfinite(value)) {
        return fail(name() + " has a number out of range: " + std::string(text.substr(0, 40)));
    }
    numbers_.push_back(value);
    return true;
}

bool ModelValueReader::addUnit(std::string_view spelling, size_t most) {
    if (units_.size() == most) return wrongForm();
    const Quantity &quantity = *attribute_->definition()->quantity;
    const bool isPlain = spelling.empty() && quantity.standard->label.empty();
    const Unit *const unit = isPlain ? quantity.standard : Units::find(quantity, spelling);
    if (!unit) return fail("unknown unit \"" + std::string(spelling) + "\" of " + name());
    units_.push_back(unit);
    return true;
}

bool ModelValueReader::takeNumber(const JsonEvent &event) {
    if (depth_ == 0 && event.kind == JsonKind::StartArray) {
        depth_ = 1;
        return true;
    }
    if (event.kind == JsonKind::Number && numbers_.empty()) {
        return addNumber(event.text) && (depth_ == 1 || finishNumber());
    }
    if (depth_ == 1 && event.kind == JsonKind::String && !numbers_.empty()) return addUnit(event.text, 2);
    if (depth_ == 1 && event.kind == JsonKind::EndArray && !units_.empty()) return finishNumber();
    return wrongForm();
}

bool ModelValueReader::finishNumber() {
    auto &number = static_cast<DoubleAttribute &>(*attribute_);
    if (!number.accepts(numbers_[0])) return fail(name() + " can't be below 0");
    const Unit &unit = units_.empty() ? number.displayUnit() : *units_[0];
    const Unit &display = units_.empty() ? unit : *units_.back();
    number.restore(numbers_[0], unit, display);
    return done();
}

// Levels of a double list: 0 before it, 1 in its array, 2 among its numbers.
bool ModelValueReader::takeDoubleList(const JsonEvent &event, int base) {
    const int level = depth_ - base;
    if (level == 0 && event.kind == JsonKind::StartArray) {
        hasNumbers_ = false;
        numbers_.clear();
        units_.clear();
        ++depth_;
        return true;
    }
    if (level == 1 && event.kind == JsonKind::EndArray && !units_.empty()) {
        --depth_;
        return finishDoubleList(base);
    }
    return takeDoubleListPart(event, level);
}

bool ModelValueReader::takeDoubleListPart(const JsonEvent &event, int level) {
    if (level == 1 && event.kind == JsonKind::StartArray && !hasNumbers_) {
        hasNumbers_ = true;
        ++depth_;
        return true;
    }
    if (level == 2 && event.kind == JsonKind::Number) return addNumber(event.text);
    if (level == 2 && event.kind == JsonKind::EndArray) {
        --depth_;
        return true;
    }
    if (level == 1 && event.kind == JsonKind::String && hasNumbers_) return addUnit(event.text, 1);
    return wrongForm();
}

bool ModelValueReader::finishDoubleList(int base) {
    numbers_.shrink_to_fit();
    if (base == 0) {
        static_cast<DoubleListAttribute &>(*attribute_).restore(std::move(numbers_), *units_[0]);
        return done();
    }
    auto &list = static_cast<ListAttribute &>(*attribute_);
    const AttributeDef *const def = list.definition();
    ListAttribute::Elements element;
    element.push_back(std::make_unique<ListElement>(def, list.getOwnerEntity(), list.size() + 1));
    element.back()->restore(std::move(numbers_), *units_[0]);
    list.append(std::move(element));
    return true;
}

bool ModelValueReader::takeAttributeList(const JsonEvent &event) {
    if (depth_ == 0) {
        if (event.kind != JsonKind::StartArray) return wrongForm();
        depth_ = 1;
        return true;
    }
    if (depth_ == 1 && event.kind == JsonKind::EndArray) return done();
    return takeDoubleList(event, 1);
}

bool ModelValueReader::takeIntList(const JsonEvent &event) {
    int value = 0;
    if (depth_ == 0 && event.kind == JsonKind::StartArray) {
        depth_ = 1;
        return true;
    }
    if (depth_ == 1 && event.kind == JsonKind::Number && parseWhole(event.text, value)) {
        integers_.push_back(value);
        return true;
    }
    if (depth_ == 1 && event.kind == JsonKind::EndArray) {
        integers_.shrink_to_fit();
        static_cast<IntListAttribute &>(*attribute_).set(std::move(integers_));
        return done();
    }
    return wrongForm();
}

} // namespace EntityModel
