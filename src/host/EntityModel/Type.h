// The names of entity types, attributes, choice values, quantities and units.
#pragma once

#include "Export.h"

#include <functional>
#include <string>
#include <string_view>

namespace EntityModel {

struct TypeRecord;

// A value that names an entity type, an attribute, a choice value or a unit.
//
// Types are interned by label: two types are equal exactly when their labels are. Every label has a type;
// an unknown label makes a new one and is no error. Labels are kept verbatim, blanks and case included.
// Copying is as cheap as copying a pointer. Any thread may make types.
class Type {
public:
    // The empty type, whose label is the empty text.
    Type();

    const std::string &getLabel() const;
    bool isEmpty() const;

    friend bool operator==(const Type &a, const Type &b) { return a.record_ == b.record_; }
    friend bool operator!=(const Type &a, const Type &b) { return a.record_ != b.record_; }

private:
    friend class TypeFactory;
    friend struct std::hash<Type>;
    explicit Type(const TypeRecord *record) : record_(record) {}

    const TypeRecord *record_;
};

class TypeFactory {
public:
    // The type of a label. A unit such as "mm" has a type like any other label.
    static Type getType(const std::string &label);

    static const Type &emptyType();
};

// A light handle on a type, made from a type or from a label.
class TypeRef {
public:
    TypeRef() = default;
    TypeRef(const Type &type) : type_(type) {}
    explicit TypeRef(const char *label) : type_(TypeFactory::getType(label)) {}
    explicit TypeRef(const std::string &label) : type_(TypeFactory::getType(label)) {}

    operator const Type &() const { return type_; }
    const std::string &getLabel() const { return type_.getLabel(); }

    bool operator==(const TypeRef &other) const { return type_ == other.type_; }
    bool operator!=(const TypeRef &other) const { return type_ != other.type_; }

private:
    Type type_;
};

inline bool operator==(const Type &type, const TypeRef &ref) { return type == static_cast<const Type &>(ref); }
inline bool operator!=(const Type &type, const TypeRef &ref) { return !(type == ref); }

} // namespace EntityModel

template <> struct std::hash<EntityModel::Type> {
    size_t operator()(const EntityModel::Type &type) const noexcept {
        return std::hash<const void *>()(type.record_);
    }
};
