#ifndef ORAVANE_GEOMETRY_CONTOURWORK_H
#define ORAVANE_GEOMETRY_CONTOURWORK_H

#include "geometry/GridContour.h"
#include "geometry/IndexedContour.h"

#include <vector>

namespace oravane {

/// What a contouring engine was given, and what it computes with.
struct ContourWork {
    bool isGrid = false;

    /// \name Structured grid
    /// @{
    int numI = 0, numJ = 0;
    std::vector<float> axisI, axisJ; ///< copies of what the positions refer to, but for one x and y per node
    GridPositions positions = SeparablePositions{nullptr, nullptr};
    const float *nodeZ = nullptr;
    /// @}

    /// \name Mesh of any cells
    /// @{
    std::vector<MeshCell> cells;
    std::vector<Ppoint3> nodes;
    /// @}

    /// \name One computation
    /// @{
    const float *values = nullptr;
    const float *z = nullptr;
    IsoLevels levels;
    bool isWalled = false; ///< `inside` and `nodes` stand for the mesh
    std::vector<MeshCell> inside;
    /// @}

    GridContour grid;
    IndexedContour indexed;
    IsoLines lines;
    std::vector<std::int32_t> pieceBands;

    std::size_t numNodes() const { return isGrid ? static_cast<std::size_t>(numI) * numJ : nodes.size(); }
    GridField gridField() const { return {numI, numJ, values, z, nodeZ}; }
    MeshField meshField() const { return {isWalled ? inside : cells, nodes, values, z != nullptr}; }

    /// Makes a grid of `numX` by `numY` nodes of it, the positions of which are still to be set.
    void startGrid(int numX, int numY, const float *z3);
    /// Copies the axes of the grid just started.
    void setAxes(const float *x, const float *y);
    /// Writes the cells and nodes of the grid to `inside` and `nodes`.
    void spellOutGrid();
};

} // namespace oravane

#endif
