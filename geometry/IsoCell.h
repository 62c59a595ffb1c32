#ifndef ORAVANE_GEOMETRY_ISOCELL_H
#define ORAVANE_GEOMETRY_ISOCELL_H

#include "geometry/IsoLevels.h"

#include <oravane/PlanarRecords.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// One cell as the contouring sees it: corners in cycle order, side s between corner s and the next one.
struct IsoCell {
    int sides = 0;                       ///< 3 or 4
    std::array<std::int32_t, 4> nodes{}; ///< point numbers of the corners
    std::array<float, 4> values{};       ///< values of the corners
    std::array<std::int32_t, 4> bands{}; ///< bands of the corners
    std::array<std::uint32_t, 4>
        firsts{}; ///< number of the lowest crossing of each side; unused if uncrossed

    int next(int side) const { return side + 1 == sides ? 0 : side + 1; }
    int lowBand(int side) const { return std::min(bands[side], bands[next(side)]); }
    int highBand(int side) const { return std::max(bands[side], bands[next(side)]); }
    int numCrossings(int side) const { return highBand(side) - lowBand(side); }
    bool isCrossed(int side, int level) const { return lowBand(side) <= level && level < highBand(side); }
    /// Number of the crossing of `level` with a side that it crosses.
    std::uint32_t crossing(int side, int level) const { return firsts[side] + (level - lowBand(side)); }
};

/// Which sides of a quadrangle a level joins when it crosses all four of them.
///
/// Of the two possible pairings the one that holds the shortest segment wins. Equal distances are decided as
/// seen from `side`, the side whose crossing has the lowest number: it prefers the partner named first in the
/// table below. `points` are the crossings by side; only x and y count. Returns the partner of `side`; the
/// two others belong together.
int saddlePartner(int side, const std::array<Ppoint3, 4> &points);

/// Cuts cells into one polygon for each band.
class CellCutter {
public:
    /// A polygon with more points is not drawn and ends the cutting of its cell.
    static constexpr int MAX_POINTS = 9;

    struct Piece {
        std::span<const std::int32_t> points; ///< point numbers, valid until the next piece
        float mean;                           ///< mean of the values at these points
        std::int32_t band;                    ///< a band that the piece is in, or next to
    };

    /// Calls `emit(piece)` for each piece of `cell`, in the order in which a walk along the boundary of the
    /// cell meets them. `numNodes` is added to the number of a crossing to give its point number, `crossing`
    /// gives the position of a crossing by number.
    template <class Position, class Emit>
    void cut(const IsoCell &cell, const IsoLevels &levels, std::uint32_t numNodes, Position position,
             Emit emit) {
        buildBoundary(cell, levels, numNodes);
        for (int level = m_lowest; level < m_highest; ++level)
            joinCrossings(cell, level, position);
        m_start = 0;
        while (walk())
            emit(Piece{{m_polygon.data(), static_cast<std::size_t>(m_polygonSize)},
                       static_cast<float>(m_sum / m_polygonSize),
                       m_band});
    }

private:
    /// A corner or a crossing on the boundary of the cell, in the order in which they follow each other.
    struct Entry {
        std::int32_t point;
        float value;
        std::int32_t partner; ///< entry across the cell on the same level; -1 for a corner
        std::int32_t band;    ///< band of a corner, level of a crossing
        bool marked;
    };

    void buildBoundary(const IsoCell &cell, const IsoLevels &levels, std::uint32_t numNodes);

    int entryOf(const IsoCell &cell, int side, int level) const {
        const bool ascending = cell.bands[cell.next(side)] > cell.bands[side];
        return m_sideStart[side] + (ascending ? level - cell.lowBand(side) : cell.highBand(side) - 1 - level);
    }

    void join(int one, int other) {
        m_entries[one].partner = other;
        m_entries[other].partner = one;
    }

    template <class Position>
    void joinCrossings(const IsoCell &cell, int level, Position position) {
        std::array<int, 4> crossed{};
        int count = 0;
        for (int side = 0; side < cell.sides; ++side)
            if (cell.isCrossed(side, level))
                crossed[count++] = side;
        if (count == 2) {
            join(entryOf(cell, crossed[0], level), entryOf(cell, crossed[1], level));
            return;
        }
        const int side = firstSide(cell);
        std::array<Ppoint3, 4> points{};
        for (int s = 0; s < 4; ++s)
            points[s] = position(cell.crossing(s, level));
        const int partner = saddlePartner(side, points);
        join(entryOf(cell, side, level), entryOf(cell, partner, level));
        const int rest = side ^ 2;
        join(entryOf(cell, rest, level), entryOf(cell, partner ^ 2, level));
    }

    static int firstSide(const IsoCell &cell) {
        return static_cast<int>(std::min_element(cell.firsts.begin(), cell.firsts.end()) -
                                cell.firsts.begin());
    }

    bool walk();
    void append(const Entry &entry);

    std::vector<Entry> m_entries;
    std::array<int, 4> m_sideStart{};
    int m_lowest = 0, m_highest = 0;
    int m_start = 0;
    std::array<std::int32_t, MAX_POINTS + 2> m_polygon{};
    int m_polygonSize = 0;
    double m_sum = 0;
    std::int32_t m_band = 0;
};

} // namespace oravane

#endif
