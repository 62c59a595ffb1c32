#ifndef ORAVANE_PIVORONOI2D_H
#define ORAVANE_PIVORONOI2D_H

#include <oravane/OravaneApi.h>

/// Delaunay triangulation of scattered points: the triangles that cover the convex hull of the points, such
/// that no point is inside of the circumcircle of a triangle.
///
/// \code
///   const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 2, 2};
///   PiVoronoi2D triangulation;
///   triangulation.setPointsFields(4, x, y);
///   int numTriangles, *indices;
///   triangulation.getGeometry(numTriangles, indices); // 2 triangles, 6 node numbers
///   std::free(indices);
/// \endcode
///
/// The result is exact for all coordinates, large, small or nearly on one circle. Of equal points only the
/// first is used; points that are not finite are not used at all. Where more than three points are on one
/// circle the result is one of the possible triangulations, the same one for the same input.
class ORAVANE_API PiVoronoi2D {
public:
    /// `n` coordinates of points. The arrays are not copied: they have to live until `getGeometry`. A null
    /// array means no points.
    void setPointsFields(int n, const float *x, const float *y);

    /// Triangulates the points as they are now. `indices` becomes an array of three node numbers for each
    /// triangle, counter-clockwise, which comes from `malloc` and belongs to the caller, who gives it to
    /// `free`. Fewer than three distinct points, all points on one line, 2^29 points and more, and memory
    /// that runs out: 0 triangles and null.
    void getGeometry(int &numTriangles, int *&indices);

private:
    int m_numPoints = 0;
    const float *m_x = nullptr;
    const float *m_y = nullptr;
};

#endif
