// A cross and rings about one point, united.
#pragma once

#include "model/EDAOutline.h"

#include <cstddef>
#include <vector>

namespace EDA {

// Unites what overlaps of the parts of a moire as `Aperture` would part by part, but in one go: which rings
// meet follows from their radii.
class MoireShape {
public:
    explicit MoireShape(EDAOutline cross) : cross_(std::move(cross)) {}

    // A ring of a closed line of one radius and one of another; of rings about one point all lines are alike.
    // The sign of a radius plays no part.
    void addRing(EDAOutline ring, double radius, double otherRadius);

    // The pieces that are left, that of the cross first. The parts are gone then.
    std::vector<EDAOutline> takePieces();

private:
    struct Ring {
        EDAOutline outline;
        double low;
        double high;
    };
    using Group = std::vector<std::size_t>; // of rings, ascending

    std::vector<Group> groupsByRadius() const;
    std::vector<EDAOutline> unitedGroups();
    bool joinCross(std::vector<EDAOutline> &pieces);

    EDAOutline cross_;
    std::vector<Ring> rings_;
};

} // namespace EDA
