#include "vectorize/PainterShapes.h"

#include "vectorize/ConvexPolygon.h"

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

using Points = std::span<const SbVec3f>;

struct Point2 {
    double x, y;
};

Point2 pointOf(const SbVec3f &p) {
    return {p[0], p[1]};
}

double cross(const Point2 &a, const Point2 &b, const Point2 &c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

constexpr double kTolerance = 1e-20;

/// True when both of two values are on one side of 0, neither within the tolerance.
bool onOneSide(double u, double v) {
    return std::fabs(u) >= kTolerance && std::fabs(v) >= kTolerance && u * v > 0;
}

/// True when the segments a-b and c-d meet and are not parallel.
bool crossProperly(const Point2 &a, const Point2 &b, const Point2 &c, const Point2 &d) {
    if (onOneSide(cross(a, b, c), cross(a, b, d)) || onOneSide(cross(c, d, a), cross(c, d, b)))
        return false;
    return std::fabs((b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x)) >= kTolerance;
}

bool boxesMeet(const Point2 &a, const Point2 &b, const Point2 &c, const Point2 &d) {
    return std::max(a.x, b.x) >= std::min(c.x, d.x) && std::max(c.x, d.x) >= std::min(a.x, b.x) &&
           std::max(a.y, b.y) >= std::min(c.y, d.y) && std::max(c.y, d.y) >= std::min(a.y, b.y);
}

bool edgesCross(Points p, Points q) {
    Point2 a = pointOf(p.back());
    for (const SbVec3f &endOfP : p) {
        const Point2 b = pointOf(endOfP);
        Point2 c = pointOf(q.back());
        for (const SbVec3f &endOfQ : q) {
            const Point2 d = pointOf(endOfQ);
            if (boxesMeet(a, b, c, d) && crossProperly(a, b, c, d))
                return true;
            c = d;
        }
        a = b;
    }
    return false;
}

} // namespace

void PainterShapes::reserve(std::size_t numPolygons) {
    m_planes.reserve(numPolygons);
    m_firstPoints.reserve(numPolygons + 1);
    m_points.reserve(3 * numPolygons);
}

void PainterShapes::add(PolyGon &polygon) {
    const SbPlane &plane = *polygon.getPlane();
    m_planes.push_back({plane.getNormal(), plane.getDistanceFromOrigin()});
    for (int i = 0; i < polygon.getNum(); ++i)
        m_points.push_back(polygon.getPoint(i));
    m_firstPoints.push_back(m_points.size());
}

namespace {

/// The toolkit's half-space test, in its arithmetic: points of neighbours lie in the plane but for rounding.
bool isInHalfSpace(const SbVec3f &normal, float distance, const SbVec3f &p) {
    const double along = static_cast<double>(p[0]) * normal[0] + static_cast<double>(p[1]) * normal[1] +
                         static_cast<double>(p[2]) * normal[2];
    return static_cast<float>(along) - distance >= 0;
}

} // namespace

bool PainterShapes::mustExchange(int p, int q) const {
    const auto numInHalfSpace = [](const Plane &plane, Points points) {
        std::size_t count = 0;
        for (const SbVec3f &point : points)
            count += isInHalfSpace(plane.normal, plane.distance, point);
        return count;
    };
    const Points pPoints = pointsOf(p), qPoints = pointsOf(q);
    const std::size_t pInQ = numInHalfSpace(m_planes[q], pPoints);
    if (pInQ == 0)
        return false; // P lies behind Q's plane
    const std::size_t qInP = numInHalfSpace(m_planes[p], qPoints);
    if (qInP == qPoints.size() || (qInP > 0 && pInQ < pPoints.size()))
        return false; // Q lies before P's plane, or nothing tells
    return edgesCross(pPoints, qPoints) || isInsideConvex(pPoints, qPoints[0][0], qPoints[0][1]) ||
           isInsideConvex(qPoints, pPoints[0][0], pPoints[0][1]);
}

} // namespace oravane
