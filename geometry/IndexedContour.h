#ifndef ORAVANE_GEOMETRY_INDEXEDCONTOUR_H
#define ORAVANE_GEOMETRY_INDEXEDCONTOUR_H

#include "geometry/BandFaces.h"
#include "geometry/IsoCell.h"
#include "geometry/IsoLevels.h"
#include "geometry/IsoLines.h"

#include <array>
#include <span>
#include <vector>

namespace oravane {

/// Triangle or quadrangle given by node numbers, in cycle order. 0 sides: the cell is left out.
struct MeshCell {
    std::array<std::int32_t, 4> nodes;
    std::uint8_t sides;
};

/// Adds a polygon of any number of nodes as a fan from its first one: quadrangles while two new sides are
/// left, a triangle for an odd rest. Fewer than three nodes add nothing.
void addPolygon(std::span<const std::int32_t> nodes, std::vector<MeshCell> &cells);

/// Cells and nodes of any mesh.
struct MeshField {
    std::span<const MeshCell> cells;
    std::span<const Ppoint3> nodes;
    const float *values = nullptr; ///< one for each node
    bool keepsZ = true;            ///< crossings take their z from the nodes; else it is 0
};

/// Contours a mesh of triangles and quadrangles given by node numbers.
///
/// Crossings are numbered edge by edge, in the order in which the cells and their sides meet the edges, on an
/// edge in ascending order of the levels. Cells find the edges that they share in a table of the crossed
/// edges alone, whose size follows their number. A cell is left out when a node is not finite or does not
/// exist. Of more than two cells on one edge the first and the last are taken for its neighbours.
///
/// Buffers are kept from one contouring to the next.
class IndexedContour {
public:
    /// Fills `lines` with the lines of `levels`. Without room to number the crossings there are none.
    void makeLines(const MeshField &field, const IsoLevels &levels, IsoLines &lines);

    /// First half of making bands: how many points and pieces there can be at the most. All zero when they
    /// cannot be numbered. `levels` and what `field` refers to are used again by `fillBands`.
    BandCounts countBands(const MeshField &field, const IsoLevels &levels);

    /// Second half: writes all points, nodes first, to `points`, and the pieces, cell by cell, to `faces`.
    void fillBands(Ppoint3 *points, BandFaces &faces);

private:
    /// An edge that is crossed. `low` and `high` are its ends in the order of their values.
    struct Edge {
        std::int32_t low, high;
        std::uint32_t first;                ///< number of its first crossing
        std::array<std::uint32_t, 2> cells; ///< crossed cells on its sides
    };

    /// A cell with crossings, and its edges by side.
    struct CrossedCell {
        std::uint32_t cell;
        std::array<std::uint32_t, 4> edges;
    };

    bool prepare(const MeshField &field, const IsoLevels &levels);
    bool exists(const MeshCell &cell) const;
    bool isCrossed(const MeshCell &cell) const;
    std::uint64_t countCrossedSides() const;
    void findEdges();
    std::uint32_t edgeBetween(std::int32_t a, std::int32_t b, std::uint32_t crossedCell);
    IsoCell isoCell(const MeshCell &cell, const std::array<std::uint32_t, 4> &edges) const;

    template <class Put>
    void placeCrossings(Put put) const;
    void linkAll();
    std::uint32_t partnerInCell(std::uint32_t crossing, std::uint32_t crossedCell);
    std::uint32_t &linkThrough(std::uint32_t crossing, std::uint32_t crossedCell);

    MeshField m_field;
    const IsoLevels *m_levels = nullptr;
    std::vector<std::int32_t> m_bands;
    std::vector<Edge> m_edges;
    std::vector<CrossedCell> m_crossedCells;
    std::vector<std::uint32_t> m_table; ///< edges by hash of their ends; open addressing
    std::uint64_t m_numCrossings = 0;
    std::vector<IsoCrossing> m_crossings;
    std::vector<std::uint32_t> m_edgeOf; ///< edge of each crossing
    std::vector<std::uint32_t> m_border;
    CellCutter m_cutter;
};

} // namespace oravane

#endif
