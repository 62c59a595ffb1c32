#include "geometry/GridContour.h"

#include <cstdlib>

namespace oravane {

namespace {

/// Calls `meet(j)` for each j below `count` with `differs(j)` not 0. Mostly nothing differs: a block is
/// passed by with one test.
template <class Differs, class Meet>
void forEachDifference(int count, Differs differs, Meet meet) {
    constexpr int block = 16;
    int j = 0;
    for (; j + block <= count; j += block) {
        std::int32_t any = 0;
        for (int k = 0; k < block; ++k)
            any |= differs(j + k);
        if (any == 0)
            continue;
        for (int k = 0; k < block; ++k)
            if (differs(j + k) != 0)
                meet(j + k);
    }
    for (; j < count; ++j)
        if (differs(j) != 0)
            meet(j);
}

} // namespace

/// Flags of the cells of one row: -1 where the cell is missing, 0 where it exists. One more cell, a missing
/// one, stands at each end, so that the edges of the border need no cases of their own.
class GridContour::CellFlags {
public:
    explicit CellFlags(int numJ) : m_flags(static_cast<std::size_t>(numJ) + 1, -1) {}
    std::int32_t *data() { return m_flags.data() + 1; }
    const std::int32_t *data() const { return m_flags.data() + 1; }
    void setAllMissing() { std::fill(m_flags.begin(), m_flags.end(), -1); }

private:
    std::vector<std::int32_t> m_flags;
};

/// One row of cells, (i, 0) to (i, numJ - 2), with the numbers of the first crossings on its edges. A number
/// is set only where the edge is crossed.
struct GridContour::Row {
    int i;
    const std::int32_t *near, *far; ///< bands of the nodes (i, .) and (i + 1, .)
    const std::int32_t *missing;
    const std::uint32_t *along;          ///< edges (i, j)-(i + 1, j)
    const std::uint32_t *onNear, *onFar; ///< edges (i, j)-(i, j + 1) and (i + 1, j)-(i + 1, j + 1)

    bool isCrossed(int j) const {
        return ((near[j] ^ far[j]) | (far[j] ^ far[j + 1]) | (near[j] ^ near[j + 1])) != 0;
    }
};

void GridContour::classify() {
    m_bands.resize(numNodes());
    m_levels->classify({m_field.values, m_bands.size()}, m_bands.data());
}

void GridContour::findMissing(int i, CellFlags &flags) const {
    if (i + 1 == m_field.numI) {
        flags.setAllMissing();
        return;
    }
    const std::int32_t *near = bandsOf(i), *far = bandsOf(i + 1);
    std::int32_t *missing = flags.data();
    for (int j = 0; j + 1 < m_field.numJ; ++j)
        missing[j] = (near[j] | near[j + 1] | far[j] | far[j + 1]) >> 31;
}

void GridContour::count() {
    const int numI = m_field.numI, numJ = m_field.numJ;
    m_columns.assign(numJ, 0);
    CellFlags flagsBefore(numJ), flags(numJ);
    std::uint64_t alongI = 0, alongJ = 0;
    for (int i = 0; i < numI; ++i) {
        const std::int32_t *near = bandsOf(i), *before = flagsBefore.data(), *missing = flags.data();
        findMissing(i, flags);
        for (int j = 0; j + 1 < numJ; ++j) {
            const std::uint32_t n = std::abs(near[j] - near[j + 1]) & ~(before[j] & missing[j]);
            m_columns[j] += n;
            alongJ += n;
        }
        if (i + 1 < numI) {
            const std::int32_t *far = bandsOf(i + 1);
            for (int j = 0; j < numJ; ++j)
                alongI +=
                    static_cast<std::uint32_t>(std::abs(near[j] - far[j]) & ~(missing[j - 1] & missing[j]));
        }
        std::swap(flagsBefore, flags);
    }
    m_numCrossings = alongI + alongJ;
    auto start = static_cast<std::uint32_t>(alongI);
    for (std::uint32_t &column : m_columns)
        start += std::exchange(column, start);
}

bool GridContour::prepare(const GridField &field, const IsoLevels &levels) {
    m_field = field;
    m_levels = &levels;
    m_numCrossings = 0;
    if (field.numI < 1 || field.numJ < 1 || !field.values || numNodes() > MAX_ISO_NUMBERS)
        return false;
    classify();
    count();
    return numNodes() + m_numCrossings <= MAX_ISO_NUMBERS;
}

template <class Along, class Put>
void GridContour::placeEdge(std::size_t a, std::size_t b, std::uint32_t first, Along along, Put put) const {
    const float va = m_field.values[a], vb = m_field.values[b];
    const float *z = m_field.z;
    const std::int32_t low = std::min(m_bands[a], m_bands[b]), high = std::max(m_bands[a], m_bands[b]);
    const auto at = along(va, vb);
    const EdgeCoordinate third(z ? z[a] : 0, va, z ? z[b] : 0, vb);
    for (std::int32_t level = low; level < high; ++level) {
        const float iso = (*m_levels)[level];
        const auto [x, y] = at(iso);
        put(first + (level - low), level, Ppoint3{x, y, z ? static_cast<float>(third.at(iso)) : 0});
    }
}

/// Lists the edges of a row that are crossed. Their values are far apart in memory that was read long ago:
/// asked for all at once, they arrive while the first ones are worked on.
template <class Differs>
void GridContour::findCrossed(int count, Differs differs, const float *values) {
    m_crossedEdges.clear();
    forEachDifference(count, differs, [&](int j) {
        __builtin_prefetch(values + j);
        m_crossedEdges.push_back(j);
    });
}

/// Meets all crossings, `put(number, level, point)`, and all rows of cells, `visit(row)`, each row after the
/// crossings on its edges.
template <class Positions, class Put, class Visit>
void GridContour::sweep(const Positions &positions, Put put, Visit visit) {
    const int numI = m_field.numI, numJ = m_field.numJ;
    CellFlags flagsBefore(numJ), flags(numJ);
    std::vector<std::uint32_t> along(numJ), onNear(numJ), onFar(numJ);
    std::uint32_t next = 0;
    for (int i = 0; i < numI; ++i) {
        const std::int32_t *bands = bandsOf(i), *before = flagsBefore.data(), *missing = flags.data();
        findMissing(i, flags);
        const std::size_t node = static_cast<std::size_t>(i) * numJ;
        const float *values = m_field.values + node;
        findCrossed(
            numJ - 1, [=](int j) { return (bands[j] ^ bands[j + 1]) & ~(before[j] & missing[j]); }, values);
        for (const int j : m_crossedEdges) {
            onFar[j] = m_columns[j];
            m_columns[j] += std::abs(bands[j] - bands[j + 1]);
            placeEdge(
                node + j, node + j + 1, onFar[j],
                [&](float va, float vb) { return positions.alongJ(i, j, va, vb); }, put);
        }
        if (i > 0)
            visit(Row{i - 1, bandsOf(i - 1), bands, before, along.data(), onNear.data(), onFar.data()});
        if (i + 1 < numI) {
            const std::int32_t *far = bandsOf(i + 1);
            findCrossed(
                numJ, [=](int j) { return (bands[j] ^ far[j]) & ~(missing[j - 1] & missing[j]); },
                values + numJ);
            for (const int j : m_crossedEdges) {
                along[j] = next;
                next += std::abs(bands[j] - far[j]);
                placeEdge(
                    node + j, node + numJ + j, along[j],
                    [&](float va, float vb) { return positions.alongI(i, j, va, vb); }, put);
            }
        }
        std::swap(flagsBefore, flags);
        std::swap(onNear, onFar);
    }
}

IsoCell GridContour::cellAt(const Row &row, int j) const {
    const auto node = static_cast<std::int32_t>(static_cast<std::size_t>(row.i) * m_field.numJ + j);
    const float *near = valuesOf(row.i), *far = valuesOf(row.i + 1);
    return {4,
            {node, node + m_field.numJ, node + m_field.numJ + 1, node + 1},
            {near[j], far[j], far[j + 1], near[j + 1]},
            {row.near[j], row.far[j], row.far[j + 1], row.near[j + 1]},
            {row.along[j], row.onFar[j], row.along[j + 1], row.onNear[j]}};
}

void GridContour::linkCell(const Row &row, int j) {
    // Not by cellAt: the values are not needed here, and reading them would cost more than all the rest.
    // The cell is the second one of the edges on its sides 0 and 3, the first one of those on 1 and 2.
    static constexpr int slot[4] = {1, 0, 0, 1};
    const std::int32_t bands[4] = {row.near[j], row.far[j], row.far[j + 1], row.near[j + 1]};
    const std::uint32_t firsts[4] = {row.along[j], row.onFar[j], row.along[j + 1], row.onNear[j]};
    const auto number = [&](int side, int level) {
        return firsts[side] + (level - std::min(bands[side], bands[(side + 1) & 3]));
    };
    const auto join = [&](int one, int other, int level) {
        const std::uint32_t a = number(one, level), b = number(other, level);
        m_crossings[a].link[slot[one]] = b;
        m_crossings[b].link[slot[other]] = a;
    };
    const std::int32_t lowest = std::min(std::min(bands[0], bands[1]), std::min(bands[2], bands[3]));
    const std::int32_t highest = std::max(std::max(bands[0], bands[1]), std::max(bands[2], bands[3]));
    for (std::int32_t level = lowest; level < highest; ++level) {
        const unsigned above =
            (bands[0] > level) | (bands[1] > level) << 1 | (bands[2] > level) << 2 | (bands[3] > level) << 3;
        // The two sides between corners that the level separates.
        static constexpr std::uint8_t ends[16][2] = {{0, 0}, {0, 3}, {0, 1}, {1, 3}, {1, 2}, {0, 0},
                                                     {0, 2}, {2, 3}, {2, 3}, {0, 2}, {0, 0}, {1, 2},
                                                     {1, 3}, {0, 1}, {0, 3}, {0, 0}};
        if (above != 5 && above != 10) {
            join(ends[above][0], ends[above][1], level);
            continue;
        }
        const int partner =
            saddlePartner(0, {m_crossings[number(0, level)].point, m_crossings[number(1, level)].point,
                              m_crossings[number(2, level)].point, m_crossings[number(3, level)].point});
        join(0, partner, level);
        join(2, partner ^ 2, level);
    }
}

void GridContour::linkRow(const Row &row) {
    forEachDifference(
        m_field.numJ - 1, [&row](int j) { return row.isCrossed(j) & ~row.missing[j]; },
        [&](int j) { linkCell(row, j); });
}

void GridContour::makeLines(const GridField &field, const GridPositions &positions, const IsoLevels &levels,
                            IsoLines &lines) {
    const bool ready = prepare(field, levels);
    m_crossings.resize(ready ? m_numCrossings : 0);
    m_border.clear();
    if (ready) {
        const auto put = [this](std::uint32_t number, std::int32_t level, const Ppoint3 &point) {
            m_crossings[number] = {point, level, {NO_CROSSING, NO_CROSSING}};
        };
        std::visit([&](const auto &p) { sweep(p, put, [this](const Row &row) { linkRow(row); }); },
                   positions);
        for (std::uint32_t c = 0; c < m_crossings.size(); ++c)
            if (m_crossings[c].link[0] == NO_CROSSING || m_crossings[c].link[1] == NO_CROSSING)
                m_border.push_back(c);
    }
    joinLines(m_crossings, m_border, lines);
}

void GridContour::countCells(BandCounts &counts) const {
    CellFlags flags(m_field.numJ);
    const std::int32_t *missing = flags.data();
    std::uint64_t cells = 0, onSides = 0;
    for (int i = 0; i + 1 < m_field.numI; ++i) {
        findMissing(i, flags);
        const std::int32_t *near = bandsOf(i), *far = bandsOf(i + 1);
        for (int j = 0; j + 1 < m_field.numJ; ++j) {
            const int n = std::abs(near[j] - far[j]) + std::abs(far[j] - far[j + 1]) +
                          std::abs(far[j + 1] - near[j + 1]) + std::abs(near[j + 1] - near[j]);
            onSides += static_cast<std::uint32_t>(n & ~missing[j]);
            cells += static_cast<std::uint32_t>(1 + missing[j]);
        }
    }
    // Each crossing of a cell stands in the pieces on both sides of its segment.
    counts.pieces = cells + onSides / 2;
    counts.indices = 4 * cells + 2 * onSides + counts.pieces;
}

BandCounts GridContour::countBands(const GridField &field, const IsoLevels &levels) {
    BandCounts counts;
    if (!prepare(field, levels)) {
        m_field.numI = m_field.numJ = 0;
        return counts;
    }
    counts.points = numNodes() + m_numCrossings;
    countCells(counts);
    if (counts.indices > MAX_ISO_NUMBERS) {
        m_field.numI = m_field.numJ = 0;
        return {};
    }
    return counts;
}

template <class Positions>
void GridContour::placeNodes(const Positions &positions, Ppoint3 *points) const {
    const float *z = m_field.nodeZ;
    std::size_t node = 0;
    for (int i = 0; i < m_field.numI; ++i)
        for (int j = 0; j < m_field.numJ; ++j, ++node) {
            const auto [x, y] = positions.node(i, j);
            points[node] = {x, y, z ? z[node] : 0};
        }
}

void GridContour::addRectangle(int i0, int j0, int i1, int j1, BandFaces &faces) const {
    const auto node = [this](int i, int j) { return static_cast<std::size_t>(i) * m_field.numJ + j; };
    const std::size_t a = node(i0, j0), b = node(i1, j0), c = node(i1, j1), d = node(i0, j1);
    const float *v = m_field.values;
    const double sum = static_cast<double>(v[a]) + v[b] + v[c] + v[d];
    const std::int32_t corners[4] = {static_cast<std::int32_t>(a), static_cast<std::int32_t>(b),
                                     static_cast<std::int32_t>(c), static_cast<std::int32_t>(d)};
    faces.add(corners, static_cast<float>(sum / 4.0), m_bands[a]);
}

void GridContour::fillCell(const Row &row, int j, const Ppoint3 *crossings, BandFaces &faces) {
    m_cutter.cut(
        cellAt(row, j), *m_levels, static_cast<std::uint32_t>(numNodes()),
        [crossings](std::uint32_t number) { return crossings[number]; },
        [&faces](const CellCutter::Piece &piece) { faces.add(piece.points, piece.mean, piece.band); });
}

void GridContour::addMerged(int i0, int j0, BandFaces &faces) {
    const std::size_t rowLength = static_cast<std::size_t>(m_field.numJ) - 1;
    const auto isFree = [&](int i, int j) {
        const std::int32_t *near = bandsOf(i), *far = bandsOf(i + 1);
        return !m_done[i * rowLength + j] && near[j] >= 0 && near[j] == far[j] && near[j] == near[j + 1] &&
               near[j] == far[j + 1];
    };
    int run = m_field.numJ - 1 - j0, bestI = 0, bestJ = 0;
    std::int64_t best = 0;
    for (int i = i0; i + 1 < m_field.numI; ++i) {
        int length = 0;
        while (length < run && isFree(i, j0 + length))
            ++length;
        run = length;
        if (run == 0)
            break;
        const std::int64_t cells = static_cast<std::int64_t>(i - i0 + 1) * run;
        if (cells > best) {
            best = cells;
            bestI = i + 1;
            bestJ = j0 + run;
        }
    }
    for (int i = i0; i < bestI; ++i)
        std::fill_n(m_done.begin() + static_cast<std::ptrdiff_t>(i * rowLength + j0), bestJ - j0, 1);
    addRectangle(i0, j0, bestI, bestJ, faces);
}

void GridContour::fillBands(const GridPositions &positions, bool isMerging, Ppoint3 *points,
                            BandFaces &faces) {
    const std::size_t rowLength = static_cast<std::size_t>(m_field.numJ) - 1;
    if (isMerging && numNodes() > 0)
        m_done.assign(rowLength * (m_field.numI - 1), 0);
    Ppoint3 *crossings = points + numNodes();
    const auto put = [crossings](std::uint32_t number, std::int32_t, const Ppoint3 &point) {
        crossings[number] = point;
    };
    const auto visit = [&](const Row &row) {
        for (int j = 0; j + 1 < m_field.numJ; ++j) {
            if (row.missing[j] || (isMerging && m_done[row.i * rowLength + j]))
                continue;
            if (row.isCrossed(j))
                fillCell(row, j, crossings, faces);
            else if (isMerging)
                addMerged(row.i, j, faces);
            else
                addRectangle(row.i, j, row.i + 1, j + 1, faces);
        }
    };
    std::visit(
        [&](const auto &p) {
            placeNodes(p, points);
            sweep(p, put, visit);
        },
        positions);
}

} // namespace oravane
