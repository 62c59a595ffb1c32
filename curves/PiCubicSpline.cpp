#include <oravane/PiCubicSpline.h>

#include "curves/LineInterpolation.h"

#include <algorithm>
#include <limits>

using oravane::nearestFloat;

namespace {

/// Work space of all splines, which repeated rebuilds do not allocate again. It holds numbers from one call
/// to its return only.
double *scratchFor(std::size_t need) {
    static std::vector<double> scratch;
    if (scratch.size() < need)
        scratch.resize(2 * need);
    return scratch.data();
}

/// The shares of the values and tangents of both ends of an interval in its `m` points, four numbers a point.
void hermiteWeights(std::size_t m, double *weights) {
    const float step = 1.0f / static_cast<float>(m);
    float left = 1; // of the interval; the first point is its beginning
    for (std::size_t j = 0; j < m; ++j, left -= step) {
        const double t = left, s = 1.0 - t;
        *weights++ = t * t * (1 + 2 * s);
        *weights++ = s * s * (1 + 2 * t);
        *weights++ = s * t * t;
        *weights++ = -s * s * t;
    }
}

} // namespace

void PiCubicSpline::setValues(int n, const SbVec2f *points, int subdivisions) {
    m_points2 = points;
    m_points3 = nullptr;
    m_is2D = 1;
    reset(points ? n : 0, subdivisions);
}

void PiCubicSpline::setValues(int n, const SbVec3f *points, int subdivisions) {
    m_points2 = nullptr;
    m_points3 = points;
    m_is2D = 0;
    reset(points ? n : 0, subdivisions);
}

void PiCubicSpline::reset(int n, int subdivisions) {
    m_numPoints = std::max(n, 0);
    m_numSubdivisions = std::max(subdivisions, 1);
    if ((m_numPoints - 1LL) * m_numSubdivisions >= std::numeric_limits<int>::max())
        m_numPoints = 0;
    m_dirty = 1;
}

const SbVec3f *PiCubicSpline::getPoints(int &count) {
    if (m_dirty && m_is2D)
        cubicSpline2();
    else if (m_dirty)
        cubicSpline3();
    m_dirty = 0;
    count = static_cast<int>(m_result.size());
    return m_result.empty() ? nullptr : m_result.data();
}

void PiCubicSpline::cubicSpline2() {
    sample(m_points2, 2);
}

void PiCubicSpline::cubicSpline3() {
    sample(m_points3, 3);
}

template <class Point>
void PiCubicSpline::sample(const Point *points, int numCoordinates) {
    m_result.clear();
    if (m_numPoints == 0)
        return;
    const auto n = static_cast<std::size_t>(m_numPoints), m = static_cast<std::size_t>(m_numSubdivisions);
    m_result.resize((n - 1) * m + 1, SbVec3f(0, 0, 0));
    const bool isClosed = points[0] == points[n - 1];
    double *weights = scratchFor(4 * m + 3 * n), *tangents = weights + 4 * m;
    hermiteWeights(m, weights);
    for (int k = 0; k < numCoordinates; ++k) {
        const float *coordinate = points[0].getValue() + k;
        (isClosed ? closeCubicSpline : openCubicSpline)(coordinate, numCoordinates, m_numPoints, tangents);
        SbVec3f *result = m_result.data();
        for (std::size_t i = 0; i + 1 < n; ++i) {
            (*result++)[k] = points[i][k];
            for (const double *w = weights + 4; w != weights + 4 * m; w += 4)
                (*result++)[k] = nearestFloat(w[0] * points[i][k] + w[1] * points[i + 1][k] +
                                              w[2] * tangents[i] + w[3] * tangents[i + 1]);
        }
        (*result)[k] = points[n - 1][k];
    }
}

// In both: `tangents` has room for 3 n numbers, of which the last 2 n are work space. All is linear: going
// forward, each unknown is written in terms of the next one.

void PiCubicSpline::openCubicSpline(const float *coordinate, int stride, int n, double *tangents) {
    const auto value = [=](int i) { return static_cast<double>(coordinate[std::ptrdiff_t{i} * stride]); };
    double *c = tangents + n;
    tangents[0] = 0;
    for (int i = 0; i < n && n > 1; ++i) {
        const bool isFirst = i == 0, isLast = i == n - 1;
        const double right = 3 * (value(isLast ? i : i + 1) - value(isFirst ? i : i - 1));
        const double before = isFirst ? 0 : tangents[i - 1];
        c[i] = 1 / ((isFirst || isLast ? 2 : 4) - (isFirst ? 0 : c[i - 1]));
        tangents[i] = c[i] * (right - before);
    }
    for (int i = n - 2; i >= 0; --i)
        tangents[i] -= c[i] * tangents[i + 1];
}

void PiCubicSpline::closeCubicSpline(const float *coordinate, int stride, int n, double *tangents) {
    const int last = n - 2; // of the distinct points
    std::fill_n(tangents, n, 0);
    if (last < 1)
        return;
    const auto right = [=](int i) {
        const int before = i == 0 ? last : i - 1; // point n - 1 is the first one again
        return 3 * (static_cast<double>(coordinate[std::ptrdiff_t{i + 1} * stride]) -
                    static_cast<double>(coordinate[std::ptrdiff_t{before} * stride]));
    };
    // Each unknown is tangents[i] - c[i] (next one) - e[i] (last one).
    double *c = tangents + n, *e = c + n;
    c[0] = e[0] = 1 / 4.0;
    tangents[0] = c[0] * right(0);
    for (int i = 1; i < last; ++i) {
        c[i] = 1 / (4 - c[i - 1]);
        e[i] = -c[i] * e[i - 1];
        tangents[i] = c[i] * (right(i) - tangents[i - 1]);
    }
    // Backwards: tangents[i] - e[i] (last one). The next one of the one before the last is the last itself.
    e[last - 1] += c[last - 1];
    for (int i = last - 2; i >= 0; --i) {
        tangents[i] -= c[i] * tangents[i + 1];
        e[i] -= c[i] * e[i + 1];
    }
    const double closing = (right(last) - tangents[last - 1] - tangents[0]) / (4 - e[last - 1] - e[0]);
    tangents[last] = closing;
    for (int i = 0; i < last; ++i)
        tangents[i] -= e[i] * closing;
    tangents[n - 1] = tangents[0];
}
