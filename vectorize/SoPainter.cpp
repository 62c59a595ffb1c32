#include <oravane/SoHLHSRVectorize.h>
#include <oravane/SoPainter.h>

#include "vectorize/PainterOrder.h"

#include <algorithm>
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
                !oravane::mustExchange(*p.polygon, *q.polygon))
                continue;
            std::swap(p, q);
            m_list->swap(i, j);
            for (int k = j; k > i && zBound[k] < q.zMax; --k)
                zBound[k] = q.zMax;
        }
    }
}

namespace {

/// Primitives lie in memory in the order of creation and are drawn in that of depth: the next ones are called
/// up in time. Their points follow the objects.
void callUp(const Primitive *primitive) {
    constexpr int kLine = 64, kLines = 4;
    for (int k = 0; k < kLines; ++k)
        __builtin_prefetch(reinterpret_cast<const char *>(primitive) + k * kLine);
}

constexpr int kAhead = 8;

} // namespace

void SoPainter::display() {
    const int n = m_list->getLength();
    for (int i = 0; i < n; ++i) {
        if (i + kAhead < n)
            callUp((*m_list)[i + kAhead]);
        Primitive *primitive = (*m_list)[i];
        primitive->print(m_hlhsr);
        Primitive::dispose(primitive);
    }
    m_list->empty();
}

ORAVANE_VECTORIZE_END
