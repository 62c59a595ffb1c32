#include "curves/CurveShape.h"

#include <oravane/PiCubicSpline.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace oravane {

namespace {

constexpr int kSubdivisions = 10;

/// The corners that a shape has between two neighbours a and b; m is in the middle of them.
using CornerFunction = void (*)(const SbVec2f &a, const SbVec2f &b, const SbVec2f &m, SbVec2f *corners);

struct Corners {
    int count = 0;
    CornerFunction between = nullptr;
};

/// By shape. In front of all corners stands the first point, and behind them the last one.
const Corners cornersOf[] = {
    {}, // None
    {}, // Polyline
    {}, // Smooth
    {2,
     [](const SbVec2f &a, const SbVec2f &b, const SbVec2f &, SbVec2f *corners) {
         corners[0].setValue(b[0], a[1]);
         corners[1] = b;
     }},
    {2,
     [](const SbVec2f &a, const SbVec2f &b, const SbVec2f &, SbVec2f *corners) {
         corners[0].setValue(a[0], b[1]);
         corners[1] = b;
     }},
    {2,
     [](const SbVec2f &a, const SbVec2f &b, const SbVec2f &m, SbVec2f *corners) {
         corners[0].setValue(a[0], m[1]);
         corners[1].setValue(b[0], m[1]);
     }},
    {2,
     [](const SbVec2f &a, const SbVec2f &b, const SbVec2f &m, SbVec2f *corners) {
         corners[0].setValue(m[0], a[1]);
         corners[1].setValue(m[0], b[1]);
     }},
    {4,
     [](const SbVec2f &a, const SbVec2f &b, const SbVec2f &m, SbVec2f *corners) {
         corners[0].setValue(a[0], m[1]);
         corners[1] = m;
         corners[2].setValue(m[0], b[1]);
         corners[3] = b;
     }},
    {4,
     [](const SbVec2f &a, const SbVec2f &b, const SbVec2f &m, SbVec2f *corners) {
         corners[0].setValue(m[0], a[1]);
         corners[1] = m;
         corners[2].setValue(b[0], m[1]);
         corners[3] = b;
     }},
};
static_assert(std::size(cornersOf) == static_cast<std::size_t>(CurveShape::Stairs2Y) + 1);

SbVec3f inSpace(const SbVec2f &point) {
    return {point[0], point[1], 0};
}
SbVec3f inSpace(const SbVec3f &point) {
    return point;
}

void addCorners(const Corners &corners, std::span<const SbVec2f> run, std::vector<SbVec3f> &out) {
    out.push_back(inSpace(run.front()));
    const auto add = [&out](const SbVec2f &point) {
        if (const SbVec3f added = inSpace(point); added != out.back())
            out.push_back(added);
    };
    std::array<SbVec2f, 4> between;
    for (std::size_t i = 0; i + 1 < run.size(); ++i) {
        const SbVec2f &a = run[i], &b = run[i + 1];
        const SbVec2f middle(std::midpoint(a[0], b[0]), std::midpoint(a[1], b[1]));
        corners.between(a, b, middle, between.data());
        std::for_each_n(between.begin(), corners.count, add);
    }
    add(run.back());
}

template <class Point>
void addSmooth(PiCubicSpline &spline, std::span<const Point> run, std::vector<SbVec3f> &out) {
    spline.setValues(static_cast<int>(run.size()), run.data(), kSubdivisions);
    int count = 0;
    const SbVec3f *points = spline.getPoints(count);
    out.insert(out.end(), points, points + count);
}

/// `add(run, points)` adds the curve through a stretch of points.
template <class Point, class Add>
PointRuns curveOfStretches(std::span<const Point> points, std::size_t pointsPerPoint, Add add) {
    PointRuns curve;
    curve.points.reserve(points.size() * pointsPerPoint);
    for (auto at = points.begin(); at != points.end();) {
        const auto first = std::find_if(at, points.end(), [](const Point &p) { return hasPosition(p); });
        at = std::find_if_not(first, points.end(), [](const Point &p) { return hasPosition(p); });
        if (first == at)
            continue;
        const std::size_t before = curve.points.size();
        add(std::span<const Point>(first, at), curve.points);
        curve.counts.push_back(static_cast<std::int32_t>(curve.points.size() - before));
    }
    return curve;
}

template <class Point>
PointRuns smoothThrough(std::span<const Point> points) {
    PiCubicSpline spline;
    return curveOfStretches(
        points, kSubdivisions,
        [&](std::span<const Point> run, std::vector<SbVec3f> &out) { addSmooth(spline, run, out); });
}

template <class Point>
PointRuns polylineThrough(std::span<const Point> points) {
    return curveOfStretches(points, 1, [](std::span<const Point> run, std::vector<SbVec3f> &out) {
        for (const Point &point : run)
            out.push_back(inSpace(point));
    });
}

} // namespace

bool hasPosition(const SbVec2f &point) {
    return std::isfinite(point[0]) && std::isfinite(point[1]);
}

bool hasPosition(const SbVec3f &point) {
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

PointRuns curveThrough(CurveShape shape, std::span<const SbVec2f> points) {
    if (shape == CurveShape::Smooth)
        return smoothThrough(points);
    const auto index = static_cast<std::size_t>(shape);
    const Corners corners = index < std::size(cornersOf) ? cornersOf[index] : Corners{};
    if (!corners.between)
        return polylineThrough(points);
    return curveOfStretches(
        points, static_cast<std::size_t>(corners.count),
        [&](std::span<const SbVec2f> run, std::vector<SbVec3f> &out) { addCorners(corners, run, out); });
}

PointRuns curveThrough(CurveShape shape, std::span<const SbVec3f> points) {
    return shape == CurveShape::Smooth ? smoothThrough(points) : polylineThrough(points);
}

} // namespace oravane
