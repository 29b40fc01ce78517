// A path of types that reaches an attribute from an entity.
#pragma once

#include "host/EntityModel/Type.h"

#include <vector>

namespace EntityModel {

// One step for nearly all attributes; "Conductivity" / "Value" has two.
//
// A text is one label, taken as it stands: it is neither split nor trimmed ("Pin Diameter " is a label).
class AttributePath {
public:
    AttributePath(const TypeRef &type) : first_(type) {}
    AttributePath(const char *label) : first_(TypeFactory::getType(label)) {}
    AttributePath(const std::string &label) : first_(TypeFactory::getType(label)) {}

    size_t size() const { return 1 + rest_.size(); }
    const Type &step(size_t index) const { return index == 0 ? first_ : rest_[index - 1]; }

    // The path with one step in front: Conductivity_t / AttributePath(Value_t).
    friend AttributePath operator/(const TypeRef &front, const AttributePath &path);

private:
    Type first_;
    std::vector<Type> rest_; // Empty for one step, so that a usual path allocates nothing.
};

inline AttributePath operator/(const TypeRef &front, const AttributePath &path) {
    AttributePath result(front);
    result.rest_.reserve(path.size());
    result.rest_.push_back(path.first_);
    result.rest_.insert(result.rest_.end(), path.rest_.begin(), path.rest_.end());
    return result;
}

} // namespace EntityModel
