#ifndef ORAVANE_CURVES_LINEINTERPOLATION_H
#define ORAVANE_CURVES_LINEINTERPOLATION_H

#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace oravane {

/// Of a number beyond the greatest one, that one.
inline float nearestFloat(double value) {
    constexpr double GREATEST = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -GREATEST, GREATEST));
}

/// The y that the line through `a` and `b` has at `x`; of a vertical one the smaller y of both. Exact at `a`
/// and `b`.
inline float calculateInterpolation(const SbVec3f &a, const SbVec3f &b, float x) {
    if (a[0] == b[0])
        return std::min(a[1], b[1]);
    const double t = (static_cast<double>(x) - a[0]) / (static_cast<double>(b[0]) - a[0]);
    return static_cast<float>(std::lerp(static_cast<double>(a[1]), static_cast<double>(b[1]), t));
}

/// The x at which the line through `a` and `b` reaches `y`; of a horizontal one the middle.
inline float calculateInterpolation2(const SbVec3f &a, const SbVec3f &b, float y) {
    if (a[0] == b[0])
        return a[0];
    if (a[1] == b[1])
        return std::midpoint(a[0], b[0]);
    const double t = (static_cast<double>(y) - a[1]) / (static_cast<double>(b[1]) - a[1]);
    return static_cast<float>(std::lerp(static_cast<double>(a[0]), static_cast<double>(b[0]), t));
}

} // namespace oravane

#endif
