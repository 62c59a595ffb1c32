#ifndef ORAVANE_PAGECLIPPER_H
#define ORAVANE_PAGECLIPPER_H

#include <Inventor/SbColor.h>
#include <Inventor/SbVec4f.h>

#include <span>
#include <vector>

namespace oravane {

/// Points with a colour each.
struct ColoredPoints {
    std::vector<SbVec4f> points;
    std::vector<SbColor> colors;

    void clear();
    void add(const SbVec4f &point, const SbColor &color);
    int size() const { return static_cast<int>(points.size()); }
};

bool isFinite(const SbVec4f &point);
bool isFinite(std::span<const SbVec4f> points);
/// True as soon as a colour differs from the first one.
bool isMulticolor(std::span<const SbColor> colors);

/// Clips primitives in homogeneous clip coordinates to what a page shows: first at the near limit, a point
/// being inside when its z before the division by w is at least `near`; then, after the division, at the
/// limits -1 and 1 of x and y and at the far limit z = 1. All limits belong to the inside. The results are
/// normalised points, w = 1. A primitive with a point that is not finite is dropped, a polyline at that point
/// only, and with it a part whose numbers overflow. Planes of the scene cut before the near limit does.
///
/// The results stay valid until the next call. Colours of new points are interpolated when the primitive has
/// more than one colour.
class PageClipper {
public:
    /// The planes of the scene, in homogeneous clip coordinates: a point is inside when its product with each
    /// of them is not negative. None at first.
    void setPlanes(std::span<const SbVec4f> planes) { m_planes.assign(planes.begin(), planes.end()); }

    /// A convex polygon; the result is empty when nothing is inside. Reentrant polygon clipping, one limit
    /// after the other (I. Sutherland, G. Hodgman 1974): x min, y min, x max, y max, far.
    const ColoredPoints &polygon(std::span<const SbVec4f> points, std::span<const SbColor> colors,
                                 float nearLimit);

    /// A polyline; the result is one run of points for each part that is inside, in order.
    std::span<const ColoredPoints> polyline(std::span<const SbVec4f> points, std::span<const SbColor> colors,
                                            float nearLimit);

    /// Keeps the points that are inside, moved to the front of `points`, and returns their number.
    int marks(std::span<SbVec4f> points, float nearLimit) const;

    /// One point: normalises it and returns true when it is inside. With `testSides` false only the near and
    /// far limits count.
    bool point(SbVec4f &point, float nearLimit, bool testSides) const;

private:
    /// A growing list of runs that keeps the memory of runs that it dropped.
    struct Runs {
        std::vector<ColoredPoints> store;
        std::size_t count = 0;

        ColoredPoints &start();
        std::span<ColoredPoints> used() { return {store.data(), count}; }
    };

    std::vector<SbVec4f> m_planes;
    ColoredPoints m_polygon, m_nextPolygon;
    Runs m_runs, m_nextRuns;
};

} // namespace oravane

#endif
