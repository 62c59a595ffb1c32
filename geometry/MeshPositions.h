#ifndef ORAVANE_GEOMETRY_MESHPOSITIONS_H
#define ORAVANE_GEOMETRY_MESHPOSITIONS_H

#include "geometry/GridPositions.h"

#include <oravane/PbCartesianGrid2D.h>
#include <oravane/PbParalCartesianGrid2D.h>
#include <oravane/PbPolarGrid2D.h>
#include <oravane/PbRegularCartesianGrid2D.h>

namespace oravane {

/// \name Where the nodes of a mesh are, for those who draw it
/// The result refers to the arrays of the grid and is valid while the grid stays as it is.
/// @{

inline CartesianPositions positionsOf(const PbCartesianGrid2D &grid) {
    int nx = 0, ny = 0;
    const float *x = nullptr, *y = nullptr;
    grid.getGeometry(nx, ny, x, y);
    return {x, y, static_cast<std::size_t>(ny)};
}

inline SeparablePositions positionsOf(const PbParalCartesianGrid2D &grid) {
    int nx = 0, ny = 0;
    const float *x = nullptr, *y = nullptr;
    grid.PbGrid2D::getGeometry(nx, ny, x, y);
    return {x, y};
}

inline PolarPositions positionsOf(const PbPolarGrid2D &grid) {
    int nx = 0, ny = 0;
    const float *radius = nullptr, *angle = nullptr;
    grid.getGeometry(nx, ny, radius, angle);
    return {radius, {angle, static_cast<std::size_t>(ny)}};
}

/// Nodes at equal steps, each reached by adding the step to the one before; in double precision, since in
/// floats the last of thousands would miss the bound by a good part of a cell.
class SteppedPositions {
public:
    explicit SteppedPositions(const PbRegularCartesianGrid2D &grid) {
        int nx = 0, ny = 0;
        float xmin = 0, ymin = 0, xmax = 0, ymax = 0;
        grid.getGeometry(nx, ny, xmin, ymin, xmax, ymax);
        m_x = steps(nx, xmin, xmax);
        m_y = steps(ny, ymin, ymax);
    }
    std::pair<float, float> node(int i, int j) const { return {m_x[i], m_y[j]}; }
    SeparablePositions separable() const { return {m_x.data(), m_y.data()}; }

private:
    static std::vector<float> steps(int count, float min, float max) {
        const double step = count > 1 ? (static_cast<double>(max) - min) / (count - 1) : 0;
        std::vector<float> positions;
        double position = min;
        for (int k = 0; k < count; ++k, position += step)
            positions.push_back(static_cast<float>(position));
        return positions;
    }

    std::vector<float> m_x, m_y;
};

inline SteppedPositions positionsOf(const PbRegularCartesianGrid2D &grid) {
    return SteppedPositions(grid);
}

/// @}

} // namespace oravane

#endif
