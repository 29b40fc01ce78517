// Places the shapes of an IPC-2581 document.
#include "host/QvDbWrap/IpcGeometry.h"

#include <algorithm>
#include <cmath>

namespace QvDbWrap {

namespace {

constexpr double pi = 3.14159265358979323846;

// A turn by degrees, exact at right angles.
struct Turn {
    explicit Turn(double degrees) {
        const double rest = std::remainder(degrees, 360); // -180 to 180
        if (rest == 0 || std::fabs(rest) == 90 || std::fabs(rest) == 180) {
            cosine = rest == 0 ? 1 : (std::fabs(rest) == 180 ? -1 : 0);
            sine = std::fabs(rest) == 90 ? rest / 90 : 0;
        } else {
            cosine = std::cos(rest * pi / 180);
            sine = std::sin(rest * pi / 180);
        }
    }

    double cosine = 1;
    double sine = 0;
};

class Mapping {
public:
    explicit Mapping(const IpcPlacement &placement) : placement_(placement), turn_(placement.rotation) {}

    _mFPOINT operator()(const _mFPOINT &point) const {
        const double x = point.x + placement_.xOffset, y = point.y + placement_.yOffset;
        const double across = x * turn_.cosine - y * turn_.sine, up = x * turn_.sine + y * turn_.cosine;
        return {placement_.x + placement_.scale * (placement_.isMirrored ? -across : across),
                placement_.y + placement_.scale * up};
    }

    // Keeps the direction in which the ring runs.
    Ring operator()(const Ring &ring) const {
        Ring mapped;
        mapped.reserve(ring.size());
        for (const _mFPOINT &point : ring)
            mapped.push_back((*this)(point));
        if (placement_.isMirrored) std::reverse(mapped.begin(), mapped.end());
        return mapped;
    }

private:
    const IpcPlacement &placement_;
    const Turn turn_;
};

} // namespace

_mFPOINT IpcPlacement::apply(const _mFPOINT &point) const { return Mapping(*this)(point); }

Areas IpcPlacement::apply(const Areas &areas) const {
    const Mapping mapping(*this);
    Areas mapped(areas.size());
    for (std::size_t i = 0; i < areas.size(); ++i) {
        mapped[i].outer = mapping(areas[i].outer);
        mapped[i].holes.reserve(areas[i].holes.size());
        for (const Ring &hole : areas[i].holes)
            mapped[i].holes.push_back(mapping(hole));
    }
    return mapped;
}

} // namespace QvDbWrap
