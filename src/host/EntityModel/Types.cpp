// Definitions of the named types.
#include "host/EntityModel/Types.h"

#include <algorithm>

namespace EntityModel {

namespace {

// "Chip_Socket_t" names the type "Chip Socket". The handle is never freed: constants refer to it.
const TypeRef &makeConstant(std::string name) {
    name.resize(name.size() - 2);
    std::replace(name.begin(), name.end(), '_', ' ');
    return *new TypeRef(name);
}

} // namespace

#define EDA_TYPE(constant) const TypeRef &constant = makeConstant(#constant);
#include "host/EntityModel/TypeNames.def"
#undef EDA_TYPE

} // namespace EntityModel
