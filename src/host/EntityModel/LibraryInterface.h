// The component library of the host, as the import sees it.
#pragma once

#include <map>
#include <set>
#include <string>

namespace EntityModel {

class Entity;

// A library item that gives its entity.
class LibraryItem {
public:
    virtual ~LibraryItem() = default;
    virtual Entity *getEntity() = 0;
};

// Implemented by the host and given to the importer; may be absent.
class LibraryInterface {
public:
    enum MappingType { NotMapped = 1, Mapped = 2, Approximated = 4, DoNotImport = 6 };
    using Attributes = std::map<std::string, std::string>;

    virtual ~LibraryInterface() = default;

    // The entity types that a component may become.
    virtual void setComponentTypes(const std::set<std::string> &types) = 0;

    // What a key ("NAME PARTNUMBER") is mapped to: the item's name, its path, how it is mapped.
    virtual void getMapping(std::string &result, const std::string &key, std::string &path,
                            MappingType &type) = 0;

    // A new entity of the mapped item, owned by the caller, or null.
    virtual Entity *loadItem(const std::string &name, const std::string &path, bool exact,
                             Attributes &attributes, MappingType &type) = 0;

    // The mapped item, owned by the library, or null.
    virtual LibraryItem *findItem(const std::string &name, const std::string &path, bool exact,
                                  Attributes &attributes, MappingType &type) = 0;

    // Gives a new entity the content of the selected item. False, and the entity as it was, without one.
    virtual bool supplyContent(Entity &entity) = 0;
};

} // namespace EntityModel
