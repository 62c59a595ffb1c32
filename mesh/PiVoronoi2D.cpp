#include <oravane/PiVoronoi2D.h>

#include "mesh/Delaunay.h"

#include <cstdlib>
#include <new>

void PiVoronoi2D::setPointsFields(int n, const float *x, const float *y) {
    m_numPoints = n;
    m_x = x;
    m_y = y;
}

void PiVoronoi2D::getGeometry(int &numTriangles, int *&indices) {
    numTriangles = 0;
    indices = nullptr;
    if (m_numPoints < 3 || !m_x || !m_y)
        return;
    try {
        const auto count = static_cast<std::size_t>(m_numPoints);
        const oravane::Delaunay triangulation({m_x, count}, {m_y, count});
        const std::size_t size = 3 * triangulation.numTriangles();
        indices = size > 0 ? static_cast<int *>(std::malloc(size * sizeof(int))) : nullptr;
        if (!indices)
            return;
        triangulation.write(indices);
        numTriangles = static_cast<int>(triangulation.numTriangles());
    } catch (const std::bad_alloc &) {
        // Nothing was allocated for the caller yet.
    }
}
