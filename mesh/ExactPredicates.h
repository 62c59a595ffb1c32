#ifndef ORAVANE_MESH_EXACTPREDICATES_H
#define ORAVANE_MESH_EXACTPREDICATES_H

#include <cmath>

namespace oravane {

/// A point of the plane. Two points are equal when their coordinates are, so 0 and -0 are.
struct Site {
    float x = 0, y = 0;
    bool operator==(const Site &) const = default;
};

/// \name Predicates whose sign is right for all finite points
///
/// A determinant is computed in double precision, and its sign believed when its magnitude reaches a bound of
/// the rounding error; otherwise it is computed again without any. Method and bounds: J. R. Shewchuk,
/// "Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric Predicates", Discrete &
/// Computational Geometry 18 (1997). Of coordinates in single precision nothing overflows or underflows: the
/// terms are below 2^530, and whole multiples of 2^-596.
/// @{

/// Rounding unit of a double: half the distance from 1 to the next one.
constexpr double roundingUnit = 0x1p-53;

/// The predicates without the first try.
double orientationExactly(Site a, Site b, Site c);
double inCircleExactly(Site a, Site b, Site c, Site p);

/// Above 0 when the way from `a` over `b` to `c` turns left, below 0 when it turns right, 0 when the points
/// are on one line. Only the sign has a meaning.
inline double orientation(Site a, Site b, Site c) {
    const double left = (double{a.x} - c.x) * (double{b.y} - c.y);
    const double right = (double{a.y} - c.y) * (double{b.x} - c.x);
    const double bound = (3 + 16 * roundingUnit) * roundingUnit * (std::abs(left) + std::abs(right));
    return std::abs(left - right) >= bound ? left - right : orientationExactly(a, b, c);
}

/// Above 0 when `p` is inside of the circle through `a`, `b` and `c`, below 0 when it is outside, 0 when it
/// is on it, where the three points turn left. Only the sign has a meaning.
inline double inCircle(Site a, Site b, Site c, Site p) {
    const double ax = double{a.x} - p.x, ay = double{a.y} - p.y;
    const double bx = double{b.x} - p.x, by = double{b.y} - p.y;
    const double cx = double{c.x} - p.x, cy = double{c.y} - p.y;
    const double aLift = ax * ax + ay * ay, bLift = bx * bx + by * by, cLift = cx * cx + cy * cy;
    const double determinant =
        aLift * (bx * cy - cx * by) + bLift * (cx * ay - ax * cy) + cLift * (ax * by - bx * ay);
    // The error is below (10 + 96 u) u sum(aLift (|bx cy| + |cx by|)), and the sum of the two products is at
    // most (bLift + cLift) / 2.
    const double bound = 11 * roundingUnit * (aLift * bLift + bLift * cLift + cLift * aLift);
    return std::abs(determinant) >= bound ? determinant : inCircleExactly(a, b, c, p);
}

/// @}

} // namespace oravane

#endif
