#ifndef ORAVANE_VECTORIZE_PAINTERSHAPES_H
#define ORAVANE_VECTORIZE_PAINTERSHAPES_H

#include <oravane/SoVectorizePrimitives.h>

#include <cstddef>
#include <span>
#include <vector>

namespace oravane {

/// The polygons of a view as the painter's plane tests need them: planes and points lie packed, in the order
/// in which they were added.
class PainterShapes {
public:
    void reserve(std::size_t numPolygons);

    /// Adds a polygon of three points or more.
    void add(PolyGon &polygon);

    /// Whether polygon `p`, which is drawn before `q`, must change places with it, given that their z ranges
    /// and boxes meet: neither lies on the right side of the other's plane, but one does on the wrong side,
    /// and they overlap in x and y.
    bool mustExchange(int p, int q) const;

private:
    struct Plane {
        SbVec3f normal; ///< towards the viewer
        float distance;
    };

    std::span<const SbVec3f> pointsOf(int polygon) const {
        return {m_points.data() + m_firstPoints[polygon], m_points.data() + m_firstPoints[polygon + 1]};
    }

    std::vector<Plane> m_planes;
    std::vector<std::size_t> m_firstPoints{0}; ///< and one more at the end
    std::vector<SbVec3f> m_points;
};

} // namespace oravane

#endif
