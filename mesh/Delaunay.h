#ifndef ORAVANE_MESH_DELAUNAY_H
#define ORAVANE_MESH_DELAUNAY_H

#include "mesh/ExactPredicates.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace oravane {

/// Delaunay triangulation of points in the plane: triangles that cover the convex hull of the points, whose
/// circumcircles hold no point inside.
///
/// \code
///   const Delaunay triangulation(x, y);
///   std::vector<std::int32_t> nodes(3 * triangulation.numTriangles());
///   triangulation.write(nodes.data());
/// \endcode
///
/// Points that are not finite are left out, and so are later copies of a point. All points on one line, or
/// fewer than three distinct ones, have no triangles. The decisions are exact (see `inCircle`), so that the
/// result is a Delaunay triangulation for every input. Where more than three points are on one circle the
/// result is one of the possible ones; it depends on the coordinates and their order alone.
///
/// Method: insertion one by one in a spatial order (see `spatialOrder`). The triangles whose circumcircle
/// holds the new point make up a star-shaped cavity, which a fan around the point fills (A. Bowyer and D. F.
/// Watson, both in The Computer Journal 24, 1981). The outside of the hull is made of triangles too: each
/// edge of the hull has one to a vertex at infinity, and its circle is the half plane beyond the edge. The
/// cost is nearly proportional to the number of points, with about 80 bytes of memory a point beside the
/// result.
class Delaunay {
public:
    /// Triangulates; `x` and `y` have the same length, below 2^29 (there are no triangles beyond that). They
    /// are not referred to afterwards.
    Delaunay(std::span<const float> x, std::span<const float> y);

    /// At most 2 n - 5 for n points.
    std::size_t numTriangles() const { return m_numTriangles; }

    /// Writes the numbers of the three points of each triangle, in counter-clockwise order. `indices` has
    /// room for 3 * numTriangles().
    void write(std::int32_t *indices) const;

private:
    /// Side s % 4 (0 to 2) of triangle s / 4: from the vertex of that number to the next.
    using Side = std::uint32_t;

    /// Three vertices and three sides; the fourth ones are unused, so that a triangle is in one cache line.
    struct alignas(32) Triangle {
        std::int32_t vertices[4]; ///< sites, counter-clockwise; `infinity` in a triangle beyond the hull
        Side twins[4];            ///< the same sides as seen from the triangles beyond them
    };

    static constexpr std::int32_t infinity = -1;

    static Side nextSide(Side side) { return (side & ~3U) | ((0b001001U >> 2 * (side & 3)) & 3); }
    static Side previousSide(Side side) { return (side & ~3U) | ((0b010010U >> 2 * (side & 3)) & 3); }
    std::int32_t start(Side side) const { return m_triangles[side / 4].vertices[side & 3]; }
    std::int32_t end(Side side) const { return start(nextSide(side)); }
    Side twin(Side side) const { return m_triangles[side / 4].twins[side & 3]; }
    /// True for one of the triangles beyond the hull.
    static bool isOutside(const Triangle &triangle) {
        return (triangle.vertices[0] | triangle.vertices[1] | triangle.vertices[2]) < 0;
    }

    bool findFirstTriangle();
    void makeFirstTriangle();
    void insert(std::int32_t number);
    std::uint32_t locate(Site site, bool &isOnLine) const;
    bool joinCopy(std::uint32_t triangle, std::int32_t number);
    bool isInConflict(const Triangle &triangle, Site site) const;
    bool isBeyondHull(const Triangle &triangle, Site site) const;
    void findCavity(std::uint32_t triangle, Site site);
    void fillCavity(std::int32_t number);
    void link(Side a, Side b);

    std::vector<Site> m_sites;           ///< in the order of insertion
    std::vector<std::int32_t> m_numbers; ///< what the sites are called in the input
    std::unique_ptr<Triangle[]> m_triangles;
    std::uint32_t m_numSlots = 0;        ///< triangles in use, those beyond the hull included
    std::size_t m_numTriangles = 0;      ///< of the result
    std::uint32_t m_latest = 0;          ///< a triangle of the latest site
    std::vector<std::uint32_t> m_cavity; ///< triangles to be replaced
    std::vector<Side> m_rim;             ///< sides that look into the cavity from outside, counter-clockwise
    std::vector<Side> m_pending;         ///< sides of cavity triangles not yet looked beyond
};

} // namespace oravane

#endif
