#ifndef ORAVANE_GEOMETRY_GRIDCONTOUR_H
#define ORAVANE_GEOMETRY_GRIDCONTOUR_H

#include "geometry/BandFaces.h"
#include "geometry/GridPositions.h"
#include "geometry/IsoCell.h"
#include "geometry/IsoLevels.h"
#include "geometry/IsoLines.h"

#include <variant>
#include <vector>

namespace oravane {

using GridPositions = std::variant<CartesianPositions, SeparablePositions, PolarPositions>;

/// Values on the nodes of a structured grid; node (i, j) is at i * numJ + j.
struct GridField {
    int numI = 0, numJ = 0;
    const float *values = nullptr;
    const float *z = nullptr;     ///< third coordinate that crossings are interpolated from, or null for 0
    const float *nodeZ = nullptr; ///< third coordinate of the nodes themselves, or null for 0
};

/// Contours a structured grid, row of cells by row of cells.
///
/// Crossings are numbered first on all edges in direction i, i outermost, then on all edges in direction j,
/// j outermost, on an edge in ascending order of the levels. Counting comes first, so that each crossing
/// knows its number when its row is met, and a row needs nothing but the two rows of nodes beside it. A cell
/// with a node that is not finite is missing, and an edge without any cell is not crossed.
///
/// Buffers are kept from one contouring to the next.
class GridContour {
public:
    /// Fills `lines` with the lines of `levels`. Without room to number the crossings there are none.
    void makeLines(const GridField &field, const GridPositions &positions, const IsoLevels &levels,
                   IsoLines &lines);

    /// First half of making bands: how many points and pieces there can be at the most. All zero when they
    /// cannot be numbered. `levels` and what `field` points to are used again by `fillBands`.
    BandCounts countBands(const GridField &field, const IsoLevels &levels);

    /// Second half: writes all points, nodes first, to `points`, and the pieces, cell by cell, to `faces`.
    ///
    /// Merging joins cells that no level crosses to rectangles, with the mean of the four corners as their
    /// value. A rectangle starts at the first cell not yet drawn and is the one with the most cells of all
    /// that grow from there, in direction i first. The pieces of crossed cells stand in between.
    void fillBands(const GridPositions &positions, bool isMerging, Ppoint3 *points, BandFaces &faces);

private:
    class CellFlags;
    struct Row;

    bool prepare(const GridField &field, const IsoLevels &levels);
    void classify();
    void findMissing(int i, CellFlags &flags) const;
    void count();
    void countCells(BandCounts &counts) const;
    const std::int32_t *bandsOf(int i) const {
        return m_bands.data() + static_cast<std::size_t>(i) * m_field.numJ;
    }
    const float *valuesOf(int i) const { return m_field.values + static_cast<std::size_t>(i) * m_field.numJ; }
    std::uint64_t numNodes() const { return static_cast<std::uint64_t>(m_field.numI) * m_field.numJ; }

    template <class Positions>
    void placeNodes(const Positions &positions, Ppoint3 *points) const;
    template <class Positions, class Put, class Visit>
    void sweep(const Positions &positions, Put put, Visit visit);
    template <class Differs>
    void findCrossed(int count, Differs differs, const float *values);
    template <class Along, class Put>
    void placeEdge(std::size_t a, std::size_t b, std::uint32_t first, Along along, Put put) const;
    void linkRow(const Row &row);
    void linkCell(const Row &row, int j);
    IsoCell cellAt(const Row &row, int j) const;
    void fillCell(const Row &row, int j, const Ppoint3 *crossings, BandFaces &faces);
    void addRectangle(int i0, int j0, int i1, int j1, BandFaces &faces) const;
    void addMerged(int i, int j, BandFaces &faces);

    GridField m_field;
    const IsoLevels *m_levels = nullptr;
    std::vector<std::int32_t> m_bands;
    std::uint64_t m_numCrossings = 0;
    std::vector<std::uint32_t>
        m_columns;                   ///< crossings of the edges (., j)-(., j + 1): how many, where to go on
    std::vector<int> m_crossedEdges; ///< of one row, by j
    std::vector<IsoCrossing> m_crossings;
    std::vector<std::uint32_t> m_border;
    std::vector<std::uint8_t> m_done; ///< cells that stand in a rectangle already
    CellCutter m_cutter;
};

} // namespace oravane

#endif
