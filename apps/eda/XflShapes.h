// How much of a shape stands in an XFL file.
#pragma once

#include <cstddef>
#include <string>

namespace EDATool {

enum class ShapeState {
    Drawn,
    NotDrawn, // its kind has no points
    TooShort  // parameters are missing, so that it has no area
};

// The parameters of one shape, in the order of the file.
class ShapeParameters {
public:
    void add(const std::string &parameter);

    // What a shape of this type becomes with them. A "void_" at the front makes no difference.
    ShapeState stateOf(const std::string &type) const;

    // Whether a track along them has a length, as far as their number says it.
    bool makeLine() const { return numPoints_ > 1; }

    // Other parameters have another mark, but for a rare chance.
    std::size_t mark() const { return mark_; }

private:
    std::size_t count_ = 0;
    std::size_t numPoints_ = 0; // of a composite or a path
    std::size_t numLeft_ = 0;   // of the point that is begun
    bool hasArc_ = false;
    std::size_t mark_ = 0;
};

} // namespace EDATool
