// Reads the schema of the entity types from its JSON text.
#pragma once

#include "host/EntityModel/Schema.h"

#include <memory>
#include <string_view>

namespace EntityModel {

// The text has three members. "types" lists the entity types in order; "everyType" holds the attributes that
// all of them start with; "mixins" names lists of attributes, and a mixin's name in a list of attributes
// stands for its list. Where an attribute's default differs between the types that share a mixin, the type's
// "defaults" tells it.
class SchemaLoader {
public:
    // Throws std::logic_error, which names the place and what is wrong, for a text that is no schema: it is
    // part of the program.
    static std::unique_ptr<Schema> load(std::string_view json);

    // The text that is compiled in.
    static std::string_view builtIn();

private:
    class Work;
};

} // namespace EntityModel
