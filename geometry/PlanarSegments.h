#ifndef ORAVANE_GEOMETRY_PLANARSEGMENTS_H
#define ORAVANE_GEOMETRY_PLANARSEGMENTS_H

#include <oravane/PlanarRecords.h>

#include <Inventor/SbVec2f.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

namespace oravane {

/// x and y of any kind of point.
struct Planar {
    double x, y;
    bool operator==(const Planar &) const = default;
};

inline Planar planar(const Ppoint &point) {
    return {point.x, point.y};
}
inline Planar planar(const Ppoint3 &point) {
    return {point.x, point.y};
}
inline Planar planar(const SbVec2f &point) {
    return {point[0], point[1]};
}

template <class Point>
std::span<const Point> spanOf(const Point *points, int count) {
    return {points, points ? static_cast<std::size_t>(std::max(count, 0)) : 0};
}

/// Twice the area of the triangle, above 0 when `point` is left of the line from `a` to `b`. For coordinates
/// within some nine decimal powers of each other the sign is exact, and so is 0: differences of floats and
/// their products fit into a double.
inline double sideOf(const Planar &a, const Planar &b, const Planar &point) {
    return (b.x - a.x) * (point.y - a.y) - (b.y - a.y) * (point.x - a.x);
}

/// Crossing of the segment `a`-`b` with a line from which its ends are at the signed distances `da`, `db`.
inline bool crossLine(const Planar &a, const Planar &b, double da, double db, Planar &at) {
    if (!std::isfinite(da) || !std::isfinite(db))
        return false;
    if (db == 0) {
        at = b;
        return true;
    }
    if (da == 0 || (da < 0) == (db < 0))
        return false;
    const double t = da / (da - db);
    at = {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    return true;
}

/// Crossing of two segments; the ends `b` and `d` belong to them.
inline bool crossSegments(const Planar &a, const Planar &b, const Planar &c, const Planar &d, Planar &at) {
    if (a == b || c == d)
        return false;
    const double da = sideOf(c, d, a), db = sideOf(c, d, b);
    const bool isCrossing =
        crossLine(c, d, sideOf(a, b, c), sideOf(a, b, d), at) && crossLine(a, b, da, db, at);
    // On one line the signs say nothing about the places.
    if (isCrossing && da == 0 && db == 0)
        return (b.x - c.x) * (b.x - d.x) <= 0 && (b.y - c.y) * (b.y - d.y) <= 0;
    return isCrossing;
}

constexpr Plimit emptyLimit() {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    return {infinity, -infinity, infinity, -infinity};
}

/// Comparisons with NaN are false, which leaves it out.
inline void include(Plimit &limit, float x, float y) {
    limit.xmin = x < limit.xmin ? x : limit.xmin;
    limit.xmax = x > limit.xmax ? x : limit.xmax;
    limit.ymin = y < limit.ymin ? y : limit.ymin;
    limit.ymax = y > limit.ymax ? y : limit.ymax;
}

template <class Point>
Plimit limitOf(std::span<const Point> points) {
    Plimit limit = emptyLimit();
    for (const Point &point : points) {
        const Planar p = planar(point);
        include(limit, static_cast<float>(p.x), static_cast<float>(p.y));
    }
    return limit;
}

inline bool areMeeting(const Plimit &a, const Plimit &b) {
    return a.xmin <= b.xmax && b.xmin <= a.xmax && a.ymin <= b.ymax && b.ymin <= a.ymax;
}

/// Bits that say on which sides of the box a point lies; a segment whose ends share one misses the box.
template <class Point>
int outCode(const Point &point, const Plimit &box) {
    return static_cast<int>(point.x < box.xmin) | static_cast<int>(point.x > box.xmax) << 1 |
           static_cast<int>(point.y < box.ymin) << 2 | static_cast<int>(point.y > box.ymax) << 3;
}

/// Calls `visit(k)` for each segment k of `line` whose bounding box meets `box`, in order, until one returns
/// true; returns whether one did. Nearly all segments of a long line miss a small box, so that they are
/// dismissed by whole blocks, in loops without branches.
template <class Point, class Visit>
bool anySegmentNear(std::span<const Point> line, const Plimit &box, Visit visit) {
    constexpr std::size_t block = 64;
    std::array<int, block + 1> codes{};
    for (std::size_t first = 0; first + 1 < line.size(); first += block) {
        const std::size_t count = std::min(block, line.size() - 1 - first);
        for (std::size_t i = 0; i <= count; ++i)
            codes[i] = outCode(line[first + i], box);
        int isNear = 0;
        for (std::size_t i = 0; i < count; ++i)
            isNear |= static_cast<int>((codes[i] & codes[i + 1]) == 0);
        if (isNear == 0)
            continue;
        for (std::size_t i = 0; i < count; ++i)
            if ((codes[i] & codes[i + 1]) == 0 && visit(first + i))
                return true;
    }
    return false;
}

} // namespace oravane

#endif
