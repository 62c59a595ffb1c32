#include "curves/CurveFilling.h"

#include "curves/LineInterpolation.h"

#include <algorithm>
#include <cmath>

namespace oravane {

namespace {

constexpr double kFootShift = 0.0001, kOnThreshold = 1e-20;

// The time that the toolkit takes for triangulating polygons grows with the square of the number of corners.
// Quadrangles it takes as they are.
constexpr std::size_t kMaxCorners = 5000;

double widthOf(const std::vector<SbVec3f> &points) {
    const auto [low, high] = std::minmax_element(
        points.begin(), points.end(), [](const SbVec3f &a, const SbVec3f &b) { return a[0] < b[0]; });
    return low == points.end() ? 0 : static_cast<double>((*high)[0]) - (*low)[0];
}

/// Twice the area of a triangle; the sign tells which way it turns.
double turnOf(const SbVec3f &a, const SbVec3f &b, const SbVec3f &c) {
    return (static_cast<double>(b[0]) - a[0]) * (static_cast<double>(c[1]) - a[1]) -
           (static_cast<double>(c[0]) - a[0]) * (static_cast<double>(b[1]) - a[1]);
}

/// Lets a quadrangle with a concave corner start there: the toolkit divides quadrangles from their first
/// corner, whatever shape they have.
void startAtConcaveCorner(std::span<SbVec3f, 4> corners) {
    double turns[4];
    for (std::size_t i = 0; i < 4; ++i)
        turns[i] = turnOf(corners[(i + 3) % 4], corners[i], corners[(i + 1) % 4]);
    for (std::size_t i = 0; i < 4; ++i)
        if (turns[i] * turns[(i + 1) % 4] < 0 && turns[i] * turns[(i + 2) % 4] < 0 &&
            turns[i] * turns[(i + 3) % 4] < 0) {
            std::rotate(corners.begin(), corners.begin() + static_cast<std::ptrdiff_t>(i), corners.end());
            return;
        }
}

/// Whether x of a polygon's points only grows or only falls, apart from the first and the last one, which
/// may be feet.
bool isMonotonic(std::span<const SbVec3f> polygon) {
    const std::span<const SbVec3f> inner = polygon.subspan(1, polygon.size() - 2);
    const auto less = [](const SbVec3f &a, const SbVec3f &b) { return a[0] < b[0]; };
    const auto greater = [](const SbVec3f &a, const SbVec3f &b) { return a[0] > b[0]; };
    return std::is_sorted(inner.begin(), inner.end(), less) ||
           std::is_sorted(inner.begin(), inner.end(), greater);
}

/// Takes the points of closed lines, and cuts them into polygons.
class PolygonCutter {
public:
    PolygonCutter(float threshold, PointRuns &out) : m_threshold(threshold), m_out(out) {}

    void add(const SbVec3f &point) {
        std::vector<SbVec3f> &points = m_out.points;
        if (points.size() > m_start && points.back() == point)
            return;
        points.push_back(point);
        if (std::abs(static_cast<double>(point[1]) - m_threshold) <= kOnThreshold) {
            close();
            m_out.points.push_back(point);
        }
    }
    /// Behind the last point of a line.
    void finish() {
        close();
        m_out.points.resize(m_start);
    }

private:
    /// What has no area is taken back.
    void close() {
        const std::size_t count = m_out.points.size() - m_start;
        const std::span<SbVec3f> polygon = std::span(m_out.points).subspan(m_start);
        if (count < 3)
            m_out.points.resize(m_start);
        else if (count > kMaxCorners && isMonotonic(polygon))
            addInStrips({polygon.begin(), polygon.end()});
        else {
            if (count == 4)
                startAtConcaveCorner(polygon.first<4>());
            endPolygon();
        }
    }

    /// Cuts a polygon along the vertical at each of its points.
    void addInStrips(const std::vector<SbVec3f> &polygon) {
        std::vector<SbVec3f> &points = m_out.points;
        points.resize(m_start);
        for (std::size_t i = 0; i + 1 < polygon.size(); ++i) {
            const SbVec3f &a = polygon[i], &b = polygon[i + 1];
            if (a[0] == b[0])
                continue;
            if (i > 0) // the first and the last one are on the threshold
                points.emplace_back(a[0], m_threshold, 0.0f);
            points.push_back(a);
            points.push_back(b);
            if (i + 2 < polygon.size())
                points.emplace_back(b[0], m_threshold, 0.0f);
            endPolygon();
        }
    }

    void endPolygon() {
        m_out.counts.push_back(static_cast<std::int32_t>(m_out.points.size() - m_start));
        m_start = m_out.points.size();
    }

    float m_threshold;
    PointRuns &m_out;
    std::size_t m_start = 0; ///< of the polygon at work
};

} // namespace

PointRuns closedAtThreshold(const PointRuns &curve, float threshold) {
    const double shift = kFootShift * widthOf(curve.points);
    const auto foot = [=](const SbVec3f &end, double side) {
        return SbVec3f(nearestFloat(end[0] + side * shift), threshold, 0);
    };
    PointRuns closed;
    closed.points.reserve(curve.points.size() + 2 * curve.counts.size());
    closed.counts.reserve(curve.counts.size());
    forEachRun(curve, [&](std::span<const SbVec3f> run) {
        const std::size_t before = closed.points.size();
        const SbVec3f &first = run.front(), &last = run.back();
        if (run.size() > 1 && first[1] != threshold)
            closed.points.push_back(foot(first, -1));
        closed.points.insert(closed.points.end(), run.begin(), run.end());
        if (run.size() > 1 && last[1] != threshold)
            closed.points.push_back(foot(last, 1));
        closed.counts.push_back(static_cast<std::int32_t>(closed.points.size() - before));
    });
    return closed;
}

PointRuns fillingPolygons(const PointRuns &closedCurve, float threshold) {
    PointRuns polygons;
    polygons.points.reserve(closedCurve.points.size() + closedCurve.points.size() / 4);
    PolygonCutter cutter(threshold, polygons);
    forEachRun(closedCurve, [&](std::span<const SbVec3f> run) {
        for (std::size_t i = 0; i < run.size(); ++i) {
            cutter.add(run[i]);
            if (i + 1 == run.size())
                break;
            const SbVec3f &a = run[i], &b = run[i + 1];
            if ((a[1] < threshold && b[1] > threshold) || (a[1] > threshold && b[1] < threshold))
                cutter.add(SbVec3f(calculateInterpolation2(a, b, threshold), threshold, 0));
        }
        cutter.finish();
    });
    return polygons;
}

} // namespace oravane
