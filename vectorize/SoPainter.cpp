#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoPainter.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

ORAVANE_VECTORIZE_BEGIN

namespace {

/// What the cheap tests need of a primitive, packed, since they look at it very often.
struct Extent {
    float xMin, yMin, xMax, yMax, zMin, zMax;
    PolyGon *polygon; ///< null for what is not a polygon
};

Extent extentOf(Primitive *primitive) {
    Extent e;
    primitive->getBBox().getBounds(e.xMin, e.yMin, e.xMax, e.yMax);
    e.zMin = primitive->getZmin();
    e.zMax = primitive->getZmax();
    const bool isPolygon = primitive->getTypeId() == PolyGon::getClassTypeId();
    e.polygon = isPolygon ? static_cast<PolyGon *>(primitive) : nullptr;
    return e;
}

bool isZOverlap(const Extent &p, const Extent &q) {
    return p.zMin < q.zMax;
}

bool isBBoxOverlap(const Extent &p, const Extent &q) {
    return p.xMin <= q.xMax && q.xMin <= p.xMax && p.yMin <= q.yMax && q.yMin <= p.yMax;
}

/// True when every point of `p` is in the half space that `q`'s plane normal points to (`side` true), or none
/// is. A polygon of less than three points has no plane, and counts as being on the same side.
bool isPEntirelySameSideQ(const PolyGon &p, PolyGon &q, bool side) {
    const SbPlane *plane = q.getPlane();
    for (int i = 0; plane && i < p.getNum(); ++i)
        if (static_cast<bool>(plane->isInHalfSpace(p.getPoint(i))) != side)
            return false;
    return true;
}

struct Point2 {
    double x, y;
};

Point2 pointOf(const PolyGon &polygon, int index) {
    const SbVec3f p = polygon.getPoint(index);
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

SbVec2f firstPoint(const PolyGon &polygon) {
    const SbVec3f p = polygon.getPoint(0);
    return SbVec2f(p[0], p[1]);
}

bool isPOverlapQInXYPlane(const PolyGon &p, const PolyGon &q) {
    for (int i = 0; i < p.getNum(); ++i) {
        const Point2 a = pointOf(p, i), b = pointOf(p, (i + 1) % p.getNum());
        for (int j = 0; j < q.getNum(); ++j) {
            const Point2 c = pointOf(q, j), d = pointOf(q, (j + 1) % q.getNum());
            if (boxesMeet(a, b, c, d) && crossProperly(a, b, c, d))
                return true;
        }
    }
    return p.isPointInnerXYPlane(firstPoint(q)) || q.isPointInnerXYPlane(firstPoint(p));
}

/// Whether P, which stands before Q, must change places with it; z ranges and boxes have been found to meet.
bool mustExchange(PolyGon &p, PolyGon &q) {
    if (isPEntirelySameSideQ(p, q, false) || isPEntirelySameSideQ(q, p, true))
        return false;
    // The cheaper of the remaining tests first: they have no effect on each other.
    return (isPEntirelySameSideQ(q, p, false) || isPEntirelySameSideQ(p, q, true)) &&
           isPOverlapQInXYPlane(p, q);
}

} // namespace

void SoPainter::apply() {
    m_list->sortZmax(0);
    if (!m_simple)
        exchangePass();
}

void SoPainter::exchangePass() {
    const int n = m_list->getLength();
    std::vector<Extent> extents(n);
    // zBound[j] is at least the z maximum of each primitive from j on. It starts as the sorted z maxima, and
    // lets the walk over the pairs of P end where none that follows reaches in front of P's nearest point.
    std::vector<float> zBound(n);
    for (int i = 0; i < n; ++i) {
        extents[i] = extentOf((*m_list)[i]);
        zBound[i] = extents[i].zMax;
    }
    for (int i = 0; i < n; ++i) {
        for (int j = i + 1; j < n && extents[i].zMin < zBound[j]; ++j) {
            Extent &p = extents[i];
            Extent &q = extents[j];
            if (!isZOverlap(p, q) || !isBBoxOverlap(p, q) || !p.polygon || !q.polygon ||
                !mustExchange(*p.polygon, *q.polygon))
                continue;
            std::swap(p, q);
            m_list->swap(i, j);
            for (int k = j; k > i && zBound[k] < q.zMax; --k)
                zBound[k] = q.zMax;
        }
    }
}

void SoPainter::display() {
    const int n = m_list->getLength();
    for (int i = 0; i < n; ++i) {
        Primitive *primitive = (*m_list)[i];
        primitive->print(m_hlhsr);
        Primitive::dispose(primitive);
    }
    m_list->empty();
}

ORAVANE_VECTORIZE_END
