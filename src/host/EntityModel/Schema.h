// What entity types exist and which attributes each has: the compiled-in schema, as data.
#pragma once

#include "host/EntityModel/Type.h"
#include "host/EntityModel/Units.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace EntityModel {

class Attribute;

enum class AttributeKind {
    Group,         // composite that serves to be locked; its members are found from the entity as well
    Composite,     // composite whose members take part in paths: "Conductivity" / "Value"
    Text,          // any text, verbatim
    Number,        // a number with units
    Integer,       // a whole number
    Choice,        // one of a list of labels
    YesNo,         //
    DoubleList,    // numbers with one unit, "x,y,... <unit>"
    IntList,       //
    AttributeList, // a growable list of DoubleList attributes labelled "Hole 1", "Hole 2", ...
    EntityList,    // owned child entities in creation order
    OwningLink,    // at most one owned child entity
    ReferenceLink  // another entity, not owned
};

// One attribute of an entity type.
struct AttributeDef {
    Type type;
    std::vector<Type> aliases; // Further labels of the same attribute.
    AttributeKind kind = AttributeKind::Text;
    int index = 0;                      // Its place in EntityType::attributes().
    int group = -1;                     // Index of the group or composite that holds it, or -1.
    const Quantity *quantity = nullptr; // Number and DoubleList.
    const Unit *displayUnit = nullptr;  // Number and DoubleList: the unit of a value that names none.
    bool nonNegative = false;           // Number: refuses values below 0.
    std::vector<Type> choices;          // Choice: the labels, in order.
    std::vector<Type> childTypes;       // Lists and links: the entity types that they take.
    std::string elementLabel;           // AttributeList: "Hole" for elements "Hole 1", "Hole 2", ...
    bool hidden = false;                // A dialog does not show it.
    Type enabledBy;   // The choice of the same entity that enables it; empty: always enabled.
    Type enabledWhen; // What that choice must be.
    std::unique_ptr<Attribute> defaultAttribute; // Unowned; what an entity has until it is told otherwise.

    bool takesChild(const Type &childType) const;
};

// A child that every new entity of a type comes with.
struct DefaultChild {
    Type list;
    Type type;
    std::string name;
};

class EntityType {
public:
    explicit EntityType(const Type &type);
    ~EntityType();

    const Type &type() const { return type_; }
    const std::vector<std::unique_ptr<AttributeDef>> &attributes() const { return attributes_; }
    const std::vector<DefaultChild> &defaultChildren() const { return defaultChildren_; }

    // The attribute of a label at any depth of groups, the first in schema order, or null.
    const AttributeDef *find(const Type &label) const;

    // The same among the members of one group or composite.
    const AttributeDef *findWithin(const AttributeDef &group, const Type &label) const;

    // The attribute list that could hold an element of this label ("Hole 3"), with the element's place
    // counted from 0, or null.
    const AttributeDef *findElementList(const std::string &label, int &element) const;

private:
    friend class SchemaLoader;

    Type type_;
    std::vector<std::unique_ptr<AttributeDef>> attributes_;
    std::unordered_map<Type, int> byLabel_;
    std::vector<DefaultChild> defaultChildren_;
};

// All entity types. Read once, at first use, from the schema that is compiled in; never changed afterwards.
class Schema {
public:
    static const Schema &instance();

    // The entity type of this name, or null.
    const EntityType *find(const Type &type) const;

    // In the order of the schema file.
    const std::vector<std::unique_ptr<EntityType>> &types() const { return types_; }

private:
    friend class SchemaLoader;
    Schema();

    std::vector<std::unique_ptr<EntityType>> types_;
    std::unordered_map<Type, const EntityType *> byType_;
};

} // namespace EntityModel
