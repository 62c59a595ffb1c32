#ifndef ORAVANE_PICUBICSPLINE_H
#define ORAVANE_PICUBICSPLINE_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>

#include <vector>

/// A smooth curve through points: a cubic for each interval, one unit of parameter long, whose first and
/// second derivatives go on over the points. An open curve ends without curvature; one whose last point
/// equals its first exactly is closed, and goes on smoothly over that point too.
///
/// \code
///   PiCubicSpline spline;
///   spline.setValues(n, points, 10);
///   int count = 0;
///   const SbVec3f *curve = spline.getPoints(count);   // (n - 1) 10 + 1 points
/// \endcode
///
/// Each coordinate is a spline of its own, so a coordinate that is not finite spoils all results of that
/// coordinate. A closed curve of fewer than three distinct points has tangents of length 0: it goes straight
/// to the other point and back, or stays where it is.
///
/// The tangents are those of the uniform cubic spline; they cost a time linear in n.
class ORAVANE_API PiCubicSpline {
public:
    /// The points are borrowed, and read by the first `getPoints` that follows. Each interval gives
    /// `subdivisions` results; below 1 counts as 1. No points, null, or more results than an `int` counts: no
    /// curve. z of the results of the 2D form is 0.
    void setValues(int n, const SbVec2f *points, int subdivisions);
    void setValues(int n, const SbVec3f *points, int subdivisions);

    /// The points themselves, exactly, and `subdivisions` - 1 points between each two: for n points
    /// (n - 1) subdivisions + 1. They belong to the spline, and are valid until its next `getPoints`. Null
    /// and 0 without a curve.
    const SbVec3f *getPoints(int &count);

private:
    void reset(int n, int subdivisions);
    void cubicSpline2();
    void cubicSpline3();
    template <class Point>
    void sample(const Point *points, int numCoordinates);
    static void openCubicSpline(const float *coordinate, int stride, int n, double *tangents);
    static void closeCubicSpline(const float *coordinate, int stride, int n, double *tangents);

    const SbVec2f *m_points2 = nullptr;
    const SbVec3f *m_points3 = nullptr;
    int m_numPoints = 0;
    int m_numSubdivisions = 1;
    int m_is2D = 1;
    int m_dirty = 0;
    std::vector<SbVec3f> m_result;
};

#endif
