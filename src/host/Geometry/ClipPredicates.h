// Exact signs and nearly exact crossings for the clipping engine.
#pragma once

#include <cmath>

namespace Geometry {
namespace Clip {

// Sign of ax * by - ay * bx, exact for whole numbers whose products stay in range: rounding
// is monotone, so only equal rounded products need their remainders.
inline int crossSign(double ax, double ay, double bx, double by) {
    double const p = ax * by;
    double const q = ay * bx;
    if (p > q) return 1;
    if (p < q) return -1;
    if (p == 0.0) return 0;
    double const pRest = std::fma(ax, by, -p);
    double const qRest = std::fma(ay, bx, -q);
    return (pRest > qRest) - (pRest < qRest);
}

// An unevaluated sum of two doubles, about 106 bits wide.
struct Wide {
    double high = 0.0;
    double low = 0.0;
};

// The exact difference of two doubles.
inline Wide difference(double a, double b) {
    double const high = a - b;
    double const rounded = a - high;
    return {high, (a - (high + rounded)) + (rounded - b)};
}

inline Wide normalised(double high, double low) {
    double const sum = high + low;
    return {sum, low - (sum - high)};
}

inline Wide add(Wide a, Wide b) {
    double const sum = a.high + b.high;
    double const part = sum - a.high;
    double const rest = (a.high - (sum - part)) + (b.high - part);
    return normalised(sum, rest + a.low + b.low);
}

inline Wide negated(Wide a) { return {-a.high, -a.low}; }
inline Wide subtract(Wide a, Wide b) { return add(a, negated(b)); }

inline Wide multiply(Wide a, Wide b) {
    double const product = a.high * b.high;
    double const rest = std::fma(a.high, b.high, -product);
    return normalised(product, rest + (a.high * b.low + a.low * b.high));
}

inline Wide divide(Wide a, Wide b) {
    double const first = a.high / b.high;
    Wide const rest = subtract(a, multiply({first, 0.0}, b));
    return normalised(first, rest.high / b.high);
}

inline Wide scaled(Wide a, double powerOfTwo) { return {a.high * powerOfTwo, a.low * powerOfTwo}; }

// A point with wide coordinates.
struct WidePoint {
    Wide x;
    Wide y;
};

// Where the lines through (a, b) and (c, d) cross. Gives false when they are parallel.
inline bool lineCrossing(WidePoint const &a, WidePoint const &b, WidePoint const &c, WidePoint const &d,
                         WidePoint &crossing) {
    WidePoint const r{subtract(b.x, a.x), subtract(b.y, a.y)};
    WidePoint const s{subtract(d.x, c.x), subtract(d.y, c.y)};
    WidePoint const q{subtract(c.x, a.x), subtract(c.y, a.y)};
    Wide const below = subtract(multiply(r.x, s.y), multiply(r.y, s.x));
    if (below.high == 0.0) return false;
    Wide const t = divide(subtract(multiply(q.x, s.y), multiply(q.y, s.x)), below);
    crossing = {add(a.x, multiply(t, r.x)), add(a.y, multiply(t, r.y))};
    return std::isfinite(crossing.x.high) && std::isfinite(crossing.y.high);
}

} // namespace Clip
} // namespace Geometry
