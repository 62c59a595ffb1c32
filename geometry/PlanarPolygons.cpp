#include <oravane/PlanarPolygons.h>

#include "geometry/PlanarSegments.h"

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoMFVec2f.h>

#include <optional>

using oravane::Planar;
using oravane::planar;
using oravane::spanOf;

namespace {

std::span<const Ppoint> pointsOf(const Ppoint_list &list) {
    return spanOf(list.points, list.numPoints);
}
std::span<const Ppoint3> pointsOf(const Ppoint_list3 &list) {
    return spanOf(list.points, list.numPoints);
}
std::span<const SbVec2f> pointsOf(const SoMFVec2f &field) {
    return spanOf(field.getValues(0), field.getNum());
}

template <class Point, class Polygon>
int scanLine(const Point &from, const Polygon &polygon) {
    const auto vertices = pointsOf(polygon);
    if (vertices.empty())
        return 0;
    const Planar point = planar(from);
    int count = 0;
    Planar a = planar(vertices.back());
    for (const auto &vertex : vertices) {
        const Planar b = planar(vertex);
        const bool isChanging = (a.y > point.y) != (b.y > point.y);
        if (isChanging && a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x) > point.x)
            ++count;
        a = b;
    }
    return count;
}

void report(bool isFound, const Planar &crossing, int *found, Ppoint *at) {
    if (found)
        *found = isFound ? 1 : 0;
    if (isFound && at)
        *at = {static_cast<float>(crossing.x), static_cast<float>(crossing.y)};
}

/// True when both distances from a line are clearly on one side of it.
bool areBeside(double da, double db, double tolerance) {
    return std::abs(da) >= tolerance && std::abs(db) >= tolerance &&
           ((da > 0 && db > 0) || (da < 0 && db < 0));
}

IntersectType meetingOf(const Planar &a, const Planar &b, const Planar &c, const Planar &d,
                        double tolerance) {
    const double turn = (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
    if (!std::isfinite(turn) || a == b || c == d ||
        areBeside(oravane::sideOf(a, b, c), oravane::sideOf(a, b, d), tolerance) ||
        areBeside(oravane::sideOf(c, d, a), oravane::sideOf(c, d, b), tolerance))
        return INTERSECT_NONE;
    if (turn != 0 && std::abs(turn) >= tolerance)
        return INTERSECT_PROPER;
    const auto isBetween = [tolerance](double end, double from, double to) {
        return (end - to) * (end - from) <= tolerance;
    };
    const auto isWithin = [&](const Planar &end) {
        return isBetween(end.x, a.x, b.x) && isBetween(end.y, a.y, b.y);
    };
    return isWithin(c) || isWithin(d) ? INTERSECT_OVERLAP : INTERSECT_NONE;
}

template <class Corner, class Point>
int crossesParallelogram(const Corner *corners, std::span<const Point> line) {
    constexpr double tolerance = 1e-20;
    if (!corners)
        return 0;
    const auto isCrossing = [&](std::size_t k) {
        for (int side = 0; side < 4; ++side)
            if (meetingOf(planar(corners[side]), planar(corners[(side + 1) % 4]), planar(line[k]),
                          planar(line[k + 1]), tolerance) != INTERSECT_NONE)
                return true;
        return false;
    };
    const Plimit box = oravane::limitOf(spanOf(corners, 4));
    return oravane::anySegmentNear(line, box, isCrossing) ? 1 : 0;
}

template <class Point>
void computeLimit(std::span<const Point> points, Plimit *limit) {
    if (limit)
        *limit = oravane::limitOf(points);
}

/// Coordinates of a point whose distances are measured.
std::array<double, 2> coordinates(const Ppoint &point) {
    return {point.x, point.y};
}
std::array<double, 3> coordinates(const Ppoint3 &point) {
    return {point.x, point.y, point.z};
}
Ppoint pointAt(const std::array<double, 2> &c) {
    return {static_cast<float>(c[0]), static_cast<float>(c[1])};
}
Ppoint3 pointAt(const std::array<double, 3> &c) {
    return {static_cast<float>(c[0]), static_cast<float>(c[1]), static_cast<float>(c[2])};
}

template <std::size_t N>
double squaredDistance(const std::array<double, N> &a, const std::array<double, N> &b) {
    double sum = 0;
    for (std::size_t i = 0; i < N; ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return sum;
}

/// The place in 0 to 1 where a segment of squared length `length2`, whose ends are at the squared distances
/// `first2` and `last2` from the centre, leaves the sphere; its last end is outside.
std::optional<double> exitOf(double first2, double last2, double length2, double radius2) {
    // The squared distance at t is first2 + slope t + length2 t^2; the larger root is the exit.
    const double slope = last2 - first2 - length2, excess = first2 - radius2;
    const double root = std::sqrt(slope * slope - 4 * length2 * excess);
    // Of the two ways to write the root, the one that subtracts no near numbers.
    const double t = slope > 0 ? -2 * excess / (slope + root) : (root - slope) / (2 * length2);
    if (excess <= 0 && std::isfinite(t))
        return std::clamp(t, 0.0, 1.0); // it is between the ends, up to rounding
    return t >= 0 && t <= 1 ? std::optional(t) : std::nullopt;
}

/// Walks from point `k`, of which the neighbour behind is `k - step`, to the first point outside.
template <class Point>
std::optional<Point> leaveSphere(std::span<const Point> line, int k, int step, const Point &center,
                                 double radius2) {
    const auto middle = coordinates(center);
    for (; k >= 0 && k < static_cast<int>(line.size()); k += step) {
        const auto last = coordinates(line[k]);
        const double last2 = squaredDistance(last, middle);
        if (!(last2 > radius2))
            continue;
        auto first = coordinates(line[k - step]);
        const auto t = exitOf(squaredDistance(first, middle), last2, squaredDistance(first, last), radius2);
        if (!t)
            return std::nullopt;
        for (std::size_t i = 0; i < first.size(); ++i)
            first[i] += *t * (last[i] - first[i]);
        return pointAt(first);
    }
    return std::nullopt;
}

template <class Point>
int leaveOnBothSides(std::span<const Point> line, int segment, const Point &center, double radius2,
                     Point *ahead, Point *behind) {
    if (segment < 0 || segment >= static_cast<int>(line.size()) - 1)
        return 0;
    const std::optional<Point> next = leaveSphere(line, segment + 1, 1, center, radius2);
    const std::optional<Point> previous = next ? leaveSphere(line, segment, -1, center, radius2) : next;
    if (!previous)
        return 0;
    if (ahead)
        *ahead = *next;
    if (behind)
        *behind = *previous;
    return 1;
}

/// The centre by value: it may be one of the points.
template <class Vector>
void rotate(const Vector center, double cosine, double sine, int count, Vector *points) {
    for (int i = 0; points && i < count; ++i) {
        const double x = static_cast<double>(points[i][0]) - center[0];
        const double y = static_cast<double>(points[i][1]) - center[1];
        points[i][0] = static_cast<float>(center[0] + cosine * x - sine * y);
        points[i][1] = static_cast<float>(center[1] + sine * x + cosine * y);
    }
}

} // namespace

int pscanLine2D(const Ppoint &point, const Ppoint_list &polygon) {
    return scanLine(point, polygon);
}
int pscanLine2D(const Ppoint &point, const Ppoint_list3 &polygon) {
    return scanLine(point, polygon);
}
int pscanLine2D(const Ppoint &point, const SoMFVec2f &polygon) {
    return scanLine(point, polygon);
}
int pscanLine2D(const Ppoint3 &point, const Ppoint_list &polygon) {
    return scanLine(point, polygon);
}
int pscanLine2D(const Ppoint3 &point, const Ppoint_list3 &polygon) {
    return scanLine(point, polygon);
}
int pscanLine2D(const Ppoint3 &point, const SoMFVec2f &polygon) {
    return scanLine(point, polygon);
}

void pintersSegmentLine2D(const Ppoint &a, const Ppoint &b, const Ppoint &onLine, const Pvec &normal,
                          int *found, Ppoint *at) {
    const Planar from = planar(a), to = planar(b), origin = planar(onLine);
    const auto distance = [&](const Planar &point) {
        return normal.dx * (point.x - origin.x) + normal.dy * (point.y - origin.y);
    };
    const bool isDegenerate = from == to || (normal.dx == 0 && normal.dy == 0);
    Planar crossing{};
    const bool isFound =
        !isDegenerate && oravane::crossLine(from, to, distance(from), distance(to), crossing);
    report(isFound, crossing, found, at);
}

void pintersSegmentSegment2D(const Ppoint &a, const Ppoint &b, const Ppoint &c, const Ppoint &d, int *found,
                             Ppoint *at) {
    Planar crossing{};
    const bool isFound = oravane::crossSegments(planar(a), planar(b), planar(c), planar(d), crossing);
    report(isFound, crossing, found, at);
}

IntersectType pintersSegmentSegment2D(const Ppoint &a, const Ppoint &b, const Ppoint &c, const Ppoint &d,
                                      float tolerance) {
    return meetingOf(planar(a), planar(b), planar(c), planar(d), tolerance);
}

int pintersBBox2D(const Plimit &a, const Plimit &b) {
    return oravane::areMeeting(a, b) ? 1 : 0;
}

int pintersBoundingBoxParals2D(const Ppoint *a, const Ppoint *b) {
    return pintersBBox2D(oravane::limitOf(spanOf(a, 4)), oravane::limitOf(spanOf(b, 4)));
}

int pintersParaPolyline2D(const Ppoint *corners, const Ppoint *points, int count) {
    return crossesParallelogram(corners, spanOf(points, count));
}
int pintersParaPolyline2D(const Ppoint *corners, const Ppoint3 *points, int count) {
    return crossesParallelogram(corners, spanOf(points, count));
}
int pintersParaPolyline2D(const Ppoint3 *corners, const Ppoint3 *points, int count) {
    return crossesParallelogram(corners, spanOf(points, count));
}

void pcomputePolygonBBox2D(const Ppoint *points, int count, Plimit *limit) {
    computeLimit(spanOf(points, count), limit);
}
void pcomputePolygonBBox2D(const Ppoint3 *points, int count, Plimit *limit) {
    computeLimit(spanOf(points, count), limit);
}
void pcomputePolygonBBox2D(const Ppoint_list &list, Plimit *limit) {
    computeLimit(pointsOf(list), limit);
}
void pcomputePolygonBBox2D(const Ppoint_list3 &list, Plimit *limit) {
    computeLimit(pointsOf(list), limit);
}
void pcomputePolygonBBox2D(const SoMFVec2f &points, Plimit *limit) {
    computeLimit(pointsOf(points), limit);
}

int ppolylineIntersCircle2D(const Ppoint_list &line, int segment, const Ppoint &center, float radius2,
                            Ppoint *ahead, Ppoint *behind) {
    return leaveOnBothSides(pointsOf(line), segment, center, radius2, ahead, behind);
}
int ppolylineIntersSphere3D(const Ppoint_list3 &line, int segment, const Ppoint3 &center, float radius2,
                            Ppoint3 *ahead, Ppoint3 *behind) {
    return leaveOnBothSides(pointsOf(line), segment, center, radius2, ahead, behind);
}

void protatePointsAroundPoint2D(const SbVec2f &center, float cosine, float sine, int count, SbVec2f *points) {
    rotate(center, cosine, sine, count, points);
}
void protatePointsAroundPoint2D(const SbVec3f &center, float cosine, float sine, int count, SbVec3f *points) {
    rotate(center, cosine, sine, count, points);
}
