#ifndef ORAVANE_GEOMETRY_CONTOURWORK_H
#define ORAVANE_GEOMETRY_CONTOURWORK_H

#include "geometry/GridContour.h"
#include "geometry/IndexedContour.h"
#include "geometry/MeshPositions.h"

#include <optional>
#include <vector>

namespace oravane {

/// What a contouring engine was given, and what it computes with.
struct ContourWork {
    bool isGrid = false;

    /// \name Structured grid
    /// @{
    int numI = 0, numJ = 0;
    std::optional<SteppedPositions> steps; ///< of a regular grid: what the positions refer to
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

    /// Writes the cells and nodes of the grid to `inside` and `nodes`.
    void spellOutGrid();
};

} // namespace oravane

#endif
