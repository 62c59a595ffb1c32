#ifndef ORAVANE_SOHIDDENLINES_H
#define ORAVANE_SOHIDDENLINES_H

#include <oravane/OravaneApi.h>

#include <Inventor/SbColor.h>
#include <Inventor/SbVec4f.h>

#include <memory>

ORAVANE_VECTORIZE_BEGIN

/// Finds the visible parts of lines among polygons, for drawings that consist of lines only. Polygons hide
/// what lies behind them and show their outlines; polylines hide nothing.
///
/// \code
///   SoHiddenLines lines;
///   lines.addPolygon(square, 4, SbColor(0, 0, 0), 1, 0xFFFF);
///   lines.addPolyline(path, 2, SbColor(1, 0, 0), 2, 0xFFFF);
///   int count;
///   std::unique_ptr<SoHiddenLines::Polyline[]> visible(lines.computeHiddenLines(count));
/// \endcode
///
/// Points are normalised: x and y of the picture from -1 to 1, z growing away from the viewer; w is not read.
/// What lies in the plane of a polygon is not hidden by it: neighbours show their common edge, and lines
/// drawn on a surface are seen. Lines that end or bend behind nothing keep their points exactly; crossings
/// with outlines and planes are exact to about a millionth.
///
/// The cost grows with n log n for polygons of like size: each line looks only at polygons along it, the near
/// ones first, in a tree of boxes. Polygons that are not convex are cut into triangles, in a time that grows
/// with the square of their corners.
class ORAVANE_API SoHiddenLines {
public:
    /// What a line is drawn with.
    struct Appearance {
        SbColor color;
        float width = 1; ///< as given
        unsigned short pattern = 0xFFFF;
    };

    /// A visible piece of one input, with its appearance. z and w of the points are 0.
    struct Polyline {
        std::unique_ptr<SbVec4f[]> points;
        int num = 0; ///< number of points, 2 at least
        SbColor color;
        float width = 1;
        unsigned short pattern = 0xFFFF;
    };

    SoHiddenLines();
    SoHiddenLines(const SoHiddenLines &) = delete;
    SoHiddenLines &operator=(const SoHiddenLines &) = delete;
    ~SoHiddenLines();

    /// `points` are copied: the corners of a plane polygon in either direction; the ring closes by itself, or
    /// by a last point that repeats the first. What holds a point that is not finite is left out, a polyline
    /// at that point only.
    void addPolygon(const SbVec4f *points, int n, const SbColor &color, float width, unsigned short pattern);
    void addPolyline(const SbVec4f *points, int n, const SbColor &color, float width, unsigned short pattern);

    /// The visible pieces, in the order in which their inputs were added and along them; pieces that follow
    /// each other are one polyline. An edge that several polygons with the same appearance share is returned
    /// with the first of them. What is seen as a point only is left out. Returns an array that the caller
    /// deletes (`delete[]`), and null with `count` 0 when nothing is visible.
    Polyline *computeHiddenLines(int &count);

private:
    struct Lines;

    std::unique_ptr<Lines> m_lines;
};

ORAVANE_VECTORIZE_END

#endif
