// Reads one attribute's value from the events of a JSON reader.
#pragma once

#include "host/EntityModel/ValueAttributes.h"

#include <string>
#include <string_view>
#include <vector>

namespace EntityModel {

enum class JsonKind { Null, Bool, Number, String, Key, StartObject, EndObject, StartArray, EndArray };

struct JsonEvent {
    JsonKind kind;
    std::string_view text; // Number, as it is spelt; String; Key
    bool flag = false;     // Bool
};

class ModelValueReader {
public:
    // Begins a value of `attribute`, which must be of a kind that holds one.
    void start(Attribute &attribute);

    bool isBusy() const { return attribute_ != nullptr; }

    // Takes the next event. False when it can't be part of the value; what() then tells why.
    bool take(const JsonEvent &event);

    const std::string &what() const { return what_; }

private:
    bool takeSimple(const JsonEvent &event);
    bool takeText(const JsonEvent &event);
    bool takeNumber(const JsonEvent &event);
    bool takeDoubleList(const JsonEvent &event, int base);
    bool takeDoubleListPart(const JsonEvent &event, int level);
    bool takeIntList(const JsonEvent &event);
    bool takeAttributeList(const JsonEvent &event);
    bool finishNumber();
    bool finishDoubleList(int base);
    bool addNumber(std::string_view text);
    bool addUnit(std::string_view spelling, size_t most);

    bool wrongForm();
    bool fail(const std::string &reason);
    bool done();
    std::string name() const;

    Attribute *attribute_ = nullptr;
    int depth_ = 0; // of open arrays and objects
    bool hasKey_ = false;
    bool hasText_ = false;
    bool hasNumbers_ = false;
    std::vector<double> numbers_;
    std::vector<int> integers_;
    std::vector<const Unit *> units_;
    std::string what_;
};

} // namespace EntityModel
