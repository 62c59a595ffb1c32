#ifndef ORAVANE_CURVES_CURVESHAPE_H
#define ORAVANE_CURVES_CURVESHAPE_H

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// What is drawn through points. Numbered as the values of the kits' field `curveRep`.
enum class CurveShape : int {
    None = 0, ///< as Polyline
    Polyline = 1,
    Smooth = 2,
    StairsX = 3,
    StairsY = 4,
    HistoX = 5,
    HistoY = 6,
    Stairs2X = 7,
    Stairs2Y = 8,
};

/// Points of lines or polygons: the next `counts[0]`, the next `counts[1]` and so on belong together.
struct PointRuns {
    std::vector<SbVec3f> points;
    std::vector<std::int32_t> counts;
};

/// Calls `take` with each run, in order.
template <class Take>
void forEachRun(const PointRuns &runs, Take take) {
    const SbVec3f *first = runs.points.data();
    for (const std::int32_t count : runs.counts) {
        take(std::span(first, static_cast<std::size_t>(count)));
        first += count;
    }
}

bool hasPosition(const SbVec2f &point);
bool hasPosition(const SbVec3f &point);

/// The curve through points. It has a gap where a point has no finite position: a run for each stretch of
/// points between gaps, of one point or more. Shapes other than the polyline have no point twice in
/// succession, unless a smooth curve stands still.
PointRuns curveThrough(CurveShape shape, std::span<const SbVec2f> points);
/// The shapes that a curve in space can have: smooth, and a polyline for all others.
PointRuns curveThrough(CurveShape shape, std::span<const SbVec3f> points);

} // namespace oravane

#endif
