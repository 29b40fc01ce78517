// Interning of types by label.
#include "host/EntityModel/Type.h"

#include <deque>
#include <mutex>
#include <unordered_map>

namespace EntityModel {

struct TypeRecord {
    std::string label;
};

namespace {

// Grows only, so a record's address stands for its label as long as the process lives.
class TypeTable {
public:
    const TypeRecord *find(std::string_view label) {
        const std::lock_guard<std::mutex> guard(mutex_);
        const auto found = byLabel_.find(label);
        if (found != byLabel_.end()) return found->second;
        const TypeRecord &record = records_.emplace_back(TypeRecord{std::string(label)});
        byLabel_.emplace(record.label, &record);
        return &record;
    }

private:
    std::mutex mutex_;
    std::deque<TypeRecord> records_;
    std::unordered_map<std::string_view, const TypeRecord *> byLabel_;
};

TypeTable &table() {
    // Never destroyed: types may be used by objects that die after it would have been.
    static TypeTable *const instance = new TypeTable;
    return *instance;
}

const TypeRecord *emptyRecord() {
    static const TypeRecord *const record = table().find("");
    return record;
}

} // namespace

Type::Type() : record_(emptyRecord()) {}

const std::string &Type::getLabel() const { return record_->label; }

bool Type::isEmpty() const { return record_->label.empty(); }

Type TypeFactory::getType(const std::string &label) { return Type(table().find(label)); }

const Type &TypeFactory::emptyType() {
    static const Type empty;
    return empty;
}

} // namespace EntityModel
