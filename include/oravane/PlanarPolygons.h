#ifndef ORAVANE_PLANARPOLYGONS_H
#define ORAVANE_PLANARPOLYGONS_H

#include <oravane/OravaneApi.h>
#include <oravane/PlanarRecords.h>

class SbVec2f;
class SbVec3f;
class SoMFVec2f;

/// \file
/// Toolbox of functions on points, segments, polylines and polygons of the x-y plane: what places labels
/// along lines, cuts lines at them, and measures boxes. A form for `Ppoint3` does the same on x and y and
/// carries z along.
///
/// \code
///   Ppoint square[5] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
///   Ppoint line[2] = {{-1, 0.5f}, {2, 0.5f}};
///   Ppoint_list_list outside;
///   pdiffPolygons2D({2, line}, {5, square}, &outside); // (-1, 0.5) to (0, 0.5), and (1, 0.5) to (2, 0.5)
///   for (int k = 0; k < outside.numLists; ++k)
///       delete[] outside.lists[k].points;
///   delete[] outside.lists;
/// \endcode
///
/// For all functions: segment k of a polyline joins its points k and k + 1. A polygon is closed when its last
/// point equals the first. A null array, a null list inside of a record, and a count below 0 count as no
/// points; null in the place of a result means that it is not wanted. A segment of length 0, or with a
/// coordinate that is NaN or infinite, crosses nothing. Inputs are never changed, nor kept. Work is done in
/// double precision.

/// How two segments meet, for a tolerance.
enum IntersectType {
    INTERSECT_NONE = 0,
    INTERSECT_OVERLAP = 1, ///< on one line, and an end of the second within the first
    INTERSECT_PROPER = 2,  ///< they cross in one point
};

/// Number of edges of `polygon` that the ray from `point` toward +x crosses: odd when the point is inside.
/// The edge from the last point to the first belongs to it, so that the polygon may repeat its first point or
/// not. A vertex exactly at the height of the point counts as below it.
ORAVANE_API int pscanLine2D(const Ppoint &point, const Ppoint_list &polygon);
ORAVANE_API int pscanLine2D(const Ppoint &point, const Ppoint_list3 &polygon);
ORAVANE_API int pscanLine2D(const Ppoint &point, const SoMFVec2f &polygon);
ORAVANE_API int pscanLine2D(const Ppoint3 &point, const Ppoint_list &polygon);
ORAVANE_API int pscanLine2D(const Ppoint3 &point, const Ppoint_list3 &polygon);
ORAVANE_API int pscanLine2D(const Ppoint3 &point, const SoMFVec2f &polygon);

/// Crossing of the segment `a`-`b` with the line through `onLine` whose normal, of any length, is `normal`
/// (0, 0: no crossing). `*found` becomes 1 or 0, `*at` the crossing; `*at` stays as it is when there is none.
/// An end `b` on the line counts and an end `a` does not: a polyline that passes through the line at a vertex
/// crosses it once.
ORAVANE_API void pintersSegmentLine2D(const Ppoint &a, const Ppoint &b, const Ppoint &onLine,
                                      const Pvec &normal, int *found, Ppoint *at);

/// Crossing of the segments `a`-`b` and `c`-`d`, with results as above. The ends `b` and `d` belong to their
/// segments, the ends `a` and `c` do not. Two segments on one line cross at `b`, if `c`-`d` holds it.
ORAVANE_API void pintersSegmentSegment2D(const Ppoint &a, const Ppoint &b, const Ppoint &c, const Ppoint &d,
                                         int *found, Ppoint *at);

/// How the segments `a`-`b` and `c`-`d` meet; all ends belong to them. What is closer to 0 than `tolerance`
/// counts as 0: the area spanned by a segment and an end of the other, the area spanned by the directions,
/// and, of segments on one line, the products of coordinate differences that tell whether `c` or `d` is
/// between `a` and `b`. Of two segments on one line, a first one that lies strictly within the second gives
/// `INTERSECT_NONE`; touching ends give `INTERSECT_OVERLAP`.
ORAVANE_API IntersectType pintersSegmentSegment2D(const Ppoint &a, const Ppoint &b, const Ppoint &c,
                                                  const Ppoint &d, float tolerance);

/// All crossings, as of the form with `found`, of the segments of `p` and `q`. They run along `p`: by segment
/// of `p`, in one segment by distance from its first end, and then by segment of `q`. Returns their number.
///
/// `out->points` gets the points and `out->numPoints` their number, `*indexP` and `*indexQ` the segments of
/// `p` and `q` that cross. z is that of the segment of `q`. The caller brings each array with room for
/// `*capacity` entries, made by `new[]`, or null; where this is too little, `*capacity` is doubled until it
/// is enough, and each array is replaced by a larger one. They belong to the caller, who frees them by
/// `delete[]`. With a null `capacity` the crossings are only counted.
///
/// The time grows with the number of points and crossings, not with the product of the numbers of segments,
/// unless the lines run along each other.
ORAVANE_API int pintersPolygons2D(const Ppoint_list &p, const Ppoint_list &q, int *capacity, Ppoint_list *out,
                                  int **indexP, int **indexQ);
ORAVANE_API int pintersPolygons2D(const Ppoint_list3 &p, const Ppoint_list3 &q, int *capacity,
                                  Ppoint_list3 *out, int **indexP, int **indexQ);

/// The parts of the polyline `p` outside of the polygon `q`, in their order along `p`. What `out` held before
/// is overwritten. The caller frees, by `delete[]`, the points of each list and then `out->lists`.
///
/// Crossings of the two switch between outside and inside. The first point of `p` is inside when `q` is
/// closed and `pscanLine2D` says so; without any crossing the result is a copy of `p` even then, which a
/// caller has to test who wants to drop it. A line that touches `q` at one of its own vertices has one
/// crossing there and is taken to be inside from there on. New points get the z of `p`, linear between its
/// points.
ORAVANE_API void pdiffPolygons2D(const Ppoint_list &p, const Ppoint_list &q, Ppoint_list_list *out);
ORAVANE_API void pdiffPolygons2D(const Ppoint_list3 &p, const Ppoint_list3 &q, Ppoint_list_list3 *out);

/// 1 when the boxes overlap or touch, otherwise 0; 0 if a bound is NaN.
ORAVANE_API int pintersBBox2D(const Plimit &a, const Plimit &b);

/// The same of the bounding boxes of two parallelograms of 4 corners each.
ORAVANE_API int pintersBoundingBoxParals2D(const Ppoint *a, const Ppoint *b);

/// 1 when the polyline of `count` points crosses or touches a side of the parallelogram of 4 corners,
/// otherwise 0. A polyline wholly inside crosses no side. The time is that of a look at each point.
ORAVANE_API int pintersParaPolyline2D(const Ppoint *corners, const Ppoint *points, int count);
ORAVANE_API int pintersParaPolyline2D(const Ppoint *corners, const Ppoint3 *points, int count);
ORAVANE_API int pintersParaPolyline2D(const Ppoint3 *corners, const Ppoint3 *points, int count);

/// Bounding box. NaN coordinates are left out. Without points the box is empty: its minimums are +infinity
/// and its maximums -infinity, it overlaps nothing.
ORAVANE_API void pcomputePolygonBBox2D(const Ppoint *points, int count, Plimit *limit);
ORAVANE_API void pcomputePolygonBBox2D(const Ppoint3 *points, int count, Plimit *limit);
ORAVANE_API void pcomputePolygonBBox2D(const Ppoint_list &list, Plimit *limit);
ORAVANE_API void pcomputePolygonBBox2D(const Ppoint_list3 &list, Plimit *limit);
ORAVANE_API void pcomputePolygonBBox2D(const SoMFVec2f &points, Plimit *limit);

/// Where a polyline that passes the circle around `center`, of squared radius `radius2`, leaves it. `*ahead`
/// is found by walking on from point `segment` + 1, `*behind` by walking back from point `segment`: on the
/// segment that leads to the first point outside. Returns 1 when both are found. Otherwise 0, and both stay
/// as they are: an end of the line is reached inside the circle, the circle misses the segment, or there is
/// no such segment.
ORAVANE_API int ppolylineIntersCircle2D(const Ppoint_list &line, int segment, const Ppoint &center,
                                        float radius2, Ppoint *ahead, Ppoint *behind);
/// The same with a sphere: z counts in all distances.
ORAVANE_API int ppolylineIntersSphere3D(const Ppoint_list3 &line, int segment, const Ppoint3 &center,
                                        float radius2, Ppoint3 *ahead, Ppoint3 *behind);

/// Rotates `count` points in place about `center` by the angle of the given cosine and sine,
/// counter-clockwise; z stays. `center` may be one of the points.
ORAVANE_API void protatePointsAroundPoint2D(const SbVec2f &center, float cosine, float sine, int count,
                                            SbVec2f *points);
ORAVANE_API void protatePointsAroundPoint2D(const SbVec3f &center, float cosine, float sine, int count,
                                            SbVec3f *points);

#endif
