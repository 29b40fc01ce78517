// How much of a shape stands in an XFL file.
#include "XflShapes.h"

#include <functional>
#include <map>

namespace EDATool {

namespace {

std::size_t numbersBehind(const std::string &word) {
    return word == "arc" || word == "rarc" || word == "arc3" ? 4 : 0;
}

// How many parameters shapes must have; a polygon needs three points.
const std::map<std::string, std::size_t> &needs() {
    static const std::map<std::string, std::size_t> table{{"rectangle", 2}, {"square", 2}, {"circle", 1},
                                                          {"oblong", 2},    {"bullet", 2}, {"finger", 2},
                                                          {"polygon", 6}};
    return table;
}

} // namespace

void ShapeParameters::add(const std::string &parameter) {
    ++count_;
    mark_ = 31 * mark_ + std::hash<std::string>()(parameter);
    if (numLeft_ > 0) {
        if (--numLeft_ == 0) ++numPoints_;
        return;
    }
    const std::size_t behind = numbersBehind(parameter);
    hasArc_ = hasArc_ || (behind > 0 && parameter != "arc3");
    numLeft_ = behind > 0 ? behind : 1;
}

ShapeState ShapeParameters::stateOf(const std::string &type) const {
    const std::string kind = type.rfind("void_", 0) == 0 ? type.substr(5) : type;
    if (kind == "composite" || type == "path")
        return numPoints_ > 2 || (numPoints_ == 2 && hasArc_) ? ShapeState::Drawn : ShapeState::TooShort;
    const auto need = needs().find(kind);
    if (need == needs().end()) return ShapeState::NotDrawn;
    return count_ < need->second ? ShapeState::TooShort : ShapeState::Drawn;
}

} // namespace EDATool
