#ifndef ORAVANE_VECTORIZE_CONVEXPOLYGON_H
#define ORAVANE_VECTORIZE_CONVEXPOLYGON_H

#include <cstddef>
#include <span>

namespace oravane {

/// True when (x, y) lies strictly inside of a convex polygon of either direction; an edge is outside, and so
/// is all of a polygon of less than three points.
template <class Point>
bool isInsideConvex(std::span<const Point> polygon, float x, float y) {
    const std::size_t n = polygon.size();
    if (n < 3)
        return false;
    float reference = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const Point &a = polygon[i];
        const Point &b = polygon[i + 1 < n ? i + 1 : 0];
        const float side = -(b[1] - a[1]) * (x - a[0]) + (b[0] - a[0]) * (y - a[1]);
        if (i == 0)
            reference = side;
        else if (!(side * reference > 0))
            return false;
    }
    return true;
}

} // namespace oravane

#endif
