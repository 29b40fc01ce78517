// The named types: PCB_t, Holes_t, X_Location_t and the rest of TypeNames.def.
#pragma once

#include "host/EntityModel/Type.h"

namespace EntityModel {

// Set up when the library loads; do not use them from the initialisers of other globals.
#define EDA_TYPE(constant) extern EDA_DATA const TypeRef &constant;
#include "host/EntityModel/TypeNames.def"
#undef EDA_TYPE

} // namespace EntityModel
