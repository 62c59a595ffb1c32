#include "vectorize/PageClipper.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oravane {

namespace {

struct Limit {
    int axis;
    float value;
    bool isLowest;

    bool contains(const SbVec4f &point) const {
        return isLowest ? value <= point[axis] : point[axis] <= value;
    }
    float share(const SbVec4f &a, const SbVec4f &b) const { return (value - a[axis]) / (b[axis] - a[axis]); }
    void settle(SbVec4f &point) const { point[axis] = value; } // exactly, so that the result lies inside
};

struct Plane {
    SbVec4f normal;

    bool contains(const SbVec4f &point) const { return normal.dot(point) >= 0; }
    float share(const SbVec4f &a, const SbVec4f &b) const {
        const float before = normal.dot(a);
        return before / (before - normal.dot(b));
    }
    void settle(SbVec4f &) const {}
};

constexpr Limit kXMin{0, -1.0f, true}, kXMax{0, 1.0f, false};
constexpr Limit kYMin{1, -1.0f, true}, kYMax{1, 1.0f, false};
constexpr Limit kFar{2, 1.0f, false};

// The order is that of the results' points and runs, and so a part of what a page shows.
constexpr Limit kPolygonLimits[] = {kXMin, kYMin, kXMax, kYMax, kFar};
constexpr Limit kPolylineLimits[] = {kFar, kXMin, kXMax, kYMin, kYMax};

/// Counts from the inside: neighbours, which run along their common edge against each other, get one point.
template <class Border>
void addCrossing(const ColoredPoints &run, int inside, int outside, const Border &limit, bool multi,
                 ColoredPoints &result) {
    const SbVec4f &a = run.points[inside];
    const SbVec4f &b = run.points[outside];
    const float t = limit.share(a, b);
    SbVec4f point = a + (b - a) * t;
    limit.settle(point);
    const SbColor &color = run.colors[inside];
    result.add(point, multi ? SbColor(color + (run.colors[outside] - color) * t) : color);
}

void divideByW(std::vector<SbVec4f> &points) {
    for (SbVec4f &p : points)
        p.setValue(p[0] / p[3], p[1] / p[3], p[2] / p[3], 1.0f);
}

bool insideSides(const SbVec4f &p) {
    return std::ranges::all_of(kPolygonLimits, [&](const Limit &limit) { return limit.contains(p); });
}

template <class Border>
void clipRing(const ColoredPoints &ring, ColoredPoints &result, const Border &limit, bool multi) {
    result.clear();
    const int n = ring.size();
    for (int i = 0; i < n; ++i) {
        const int next = i + 1 < n ? i + 1 : 0;
        const bool inside = limit.contains(ring.points[i]);
        if (inside)
            result.add(ring.points[i], ring.colors[i]);
        if (inside != limit.contains(ring.points[next]))
            addCrossing(ring, inside ? i : next, inside ? next : i, limit, multi, result);
    }
}

} // namespace

bool isFinite(const SbVec4f &point) {
    // 0 times an infinity or NaN is NaN: one comparison instead of four.
    return point[0] * 0.0f + point[1] * 0.0f + point[2] * 0.0f + point[3] * 0.0f == 0.0f;
}

bool isFinite(std::span<const SbVec4f> points) {
    return std::ranges::all_of(points, [](const SbVec4f &p) { return isFinite(p); });
}

bool isMulticolor(std::span<const SbColor> colors) {
    return std::ranges::any_of(colors, [&](const SbColor &c) {
        return c[0] != colors[0][0] || c[1] != colors[0][1] || c[2] != colors[0][2];
    });
}

void ColoredPoints::clear() {
    points.clear();
    colors.clear();
}

void ColoredPoints::add(const SbVec4f &point, const SbColor &color) {
    points.push_back(point);
    colors.push_back(color);
}

ColoredPoints &PageClipper::Runs::start() {
    if (count == store.size())
        store.emplace_back();
    store[count].clear();
    return store[count++];
}

const ColoredPoints &PageClipper::polygon(std::span<const SbVec4f> points, std::span<const SbColor> colors,
                                          float nearLimit) {
    m_polygon.points.assign(points.begin(), points.end());
    m_polygon.colors.assign(colors.begin(), colors.end());
    const bool multi = isMulticolor(colors);
    const auto pass = [&](const auto &limit) {
        if (std::ranges::all_of(m_polygon.points, [&](const SbVec4f &p) { return limit.contains(p); }))
            return;
        clipRing(m_polygon, m_nextPolygon, limit, multi);
        std::swap(m_polygon, m_nextPolygon);
    };
    if (!isFinite(points)) {
        m_polygon.clear();
        return m_polygon;
    }
    for (const SbVec4f &plane : m_planes)
        pass(Plane{plane});
    pass(Limit{2, nearLimit, true});
    divideByW(m_polygon.points);
    for (const Limit &limit : kPolygonLimits)
        pass(limit);
    if (!isFinite(m_polygon.points))
        m_polygon.clear();
    return m_polygon;
}

namespace {

/// Hands the parts of a run that lie within the limit to `start()`, a new part's buffer.
template <class Border, class Start>
void clipRun(const ColoredPoints &run, const Border &limit, bool multi, Start start) {
    ColoredPoints *part = nullptr;
    for (int i = 0; i < run.size(); ++i) {
        const bool inside = limit.contains(run.points[i]);
        if (i > 0 && inside != limit.contains(run.points[i - 1])) {
            if (inside)
                part = &start();
            addCrossing(run, inside ? i : i - 1, inside ? i - 1 : i, limit, multi, *part);
        } else if (inside && !part) {
            part = &start();
        }
        if (inside)
            part->add(run.points[i], run.colors[i]);
    }
}

} // namespace

std::span<const ColoredPoints> PageClipper::polyline(std::span<const SbVec4f> points,
                                                     std::span<const SbColor> colors, float nearLimit) {
    m_runs.count = 0;
    ColoredPoints *run = nullptr;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!isFinite(points[i])) {
            run = nullptr;
            continue;
        }
        if (!run)
            run = &m_runs.start();
        run->add(points[i], colors[i]);
    }
    const bool multi = isMulticolor(colors);
    const auto pass = [&](const auto &limit) {
        m_nextRuns.count = 0;
        for (const ColoredPoints &whole : m_runs.used())
            clipRun(whole, limit, multi, [&]() -> ColoredPoints & { return m_nextRuns.start(); });
        std::swap(m_runs, m_nextRuns);
    };
    for (const SbVec4f &plane : m_planes)
        pass(Plane{plane});
    pass(Limit{2, nearLimit, true});
    for (ColoredPoints &inFront : m_runs.used())
        divideByW(inFront.points);
    for (const Limit &limit : kPolylineLimits)
        pass(limit);
    for (ColoredPoints &part : m_runs.used())
        if (!isFinite(part.points))
            part.clear();
    return m_runs.used();
}

bool PageClipper::point(SbVec4f &p, float nearLimit, bool testSides) const {
    if (!isFinite(p) || !(nearLimit <= p[2]) ||
        !std::ranges::all_of(m_planes, [&](const SbVec4f &plane) { return Plane{plane}.contains(p); }))
        return false;
    p.setValue(p[0] / p[3], p[1] / p[3], p[2] / p[3], 1.0f);
    return isFinite(p) && (testSides ? insideSides(p) : kFar.contains(p));
}

int PageClipper::marks(std::span<SbVec4f> points, float nearLimit) const {
    int kept = 0;
    for (SbVec4f p : points)
        if (point(p, nearLimit, true))
            points[kept++] = p;
    return kept;
}

} // namespace oravane
