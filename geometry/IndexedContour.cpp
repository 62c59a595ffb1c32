#include "geometry/IndexedContour.h"

#include <bit>
#include <limits>
#include <utility>

namespace oravane {

namespace {

constexpr std::uint32_t NO_CELL = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t NO_EDGE = std::numeric_limits<std::uint32_t>::max();

/// The same for both directions of an edge; the high bits are the well mixed ones.
std::uint64_t hashOfEnds(std::int32_t a, std::int32_t b) {
    const auto low = static_cast<std::uint32_t>(std::min(a, b)),
               high = static_cast<std::uint32_t>(std::max(a, b));
    std::uint64_t key = (static_cast<std::uint64_t>(low) << 32 | high) * 0x9e3779b97f4a7c15u;
    return (key ^ key >> 32) * 0xd6e8feb86659fd93u;
}

int nextSide(const MeshCell &cell, int side) {
    return side + 1 == cell.sides ? 0 : side + 1;
}

} // namespace

void addPolygon(std::span<const std::int32_t> nodes, std::vector<MeshCell> &cells) {
    std::size_t last = 1;
    for (; last + 2 < nodes.size(); last += 2)
        cells.push_back({{nodes[0], nodes[last], nodes[last + 1], nodes[last + 2]}, 4});
    if (last + 1 < nodes.size())
        cells.push_back({{nodes[0], nodes[last], nodes[last + 1], 0}, 3});
}

bool IndexedContour::exists(const MeshCell &cell) const {
    if (cell.sides != 3 && cell.sides != 4)
        return false;
    for (int s = 0; s < cell.sides; ++s)
        if (cell.nodes[s] < 0 || static_cast<std::size_t>(cell.nodes[s]) >= m_bands.size() ||
            m_bands[cell.nodes[s]] < 0)
            return false;
    return true;
}

bool IndexedContour::isCrossed(const MeshCell &cell) const {
    const std::int32_t band = m_bands[cell.nodes[0]];
    return m_bands[cell.nodes[1]] != band || m_bands[cell.nodes[2]] != band ||
           (cell.sides == 4 && m_bands[cell.nodes[3]] != band);
}

std::uint64_t IndexedContour::countCrossedSides() const {
    std::uint64_t count = 0;
    for (const MeshCell &cell : m_field.cells)
        if (exists(cell))
            for (int s = 0; s < cell.sides; ++s)
                count += m_bands[cell.nodes[s]] != m_bands[cell.nodes[nextSide(cell, s)]];
    return count;
}

std::uint32_t IndexedContour::edgeBetween(std::int32_t a, std::int32_t b, std::uint32_t crossedCell) {
    const std::size_t mask = m_table.size() - 1;
    std::size_t slot = hashOfEnds(a, b) >> 32 & mask;
    for (; m_table[slot] != NO_EDGE; slot = (slot + 1) & mask) {
        Edge &edge = m_edges[m_table[slot]];
        if ((edge.low == a && edge.high == b) || (edge.low == b && edge.high == a)) {
            edge.cells[1] = crossedCell;
            return m_table[slot];
        }
    }
    if (m_field.values[a] > m_field.values[b])
        std::swap(a, b);
    m_edges.push_back({a, b, static_cast<std::uint32_t>(m_numCrossings), {crossedCell, NO_CELL}});
    m_numCrossings += static_cast<std::uint32_t>(m_bands[b] - m_bands[a]);
    return m_table[slot] = static_cast<std::uint32_t>(m_edges.size() - 1);
}

void IndexedContour::findEdges() {
    const std::uint64_t sides = countCrossedSides();
    m_table.assign(std::bit_ceil(sides + sides / 2 + 1), NO_EDGE);
    for (std::size_t c = 0; c < m_field.cells.size() && m_numCrossings <= MAX_ISO_NUMBERS; ++c) {
        const MeshCell &cell = m_field.cells[c];
        if (!exists(cell) || !isCrossed(cell))
            continue;
        const auto crossedCell = static_cast<std::uint32_t>(m_crossedCells.size());
        CrossedCell &crossed = m_crossedCells.emplace_back(
            CrossedCell{static_cast<std::uint32_t>(c), {NO_EDGE, NO_EDGE, NO_EDGE, NO_EDGE}});
        for (int s = 0; s < cell.sides; ++s) {
            const std::int32_t a = cell.nodes[s], b = cell.nodes[nextSide(cell, s)];
            if (m_bands[a] != m_bands[b])
                crossed.edges[s] = edgeBetween(a, b, crossedCell);
        }
    }
}

bool IndexedContour::prepare(const MeshField &field, const IsoLevels &levels) {
    m_field = field;
    m_levels = &levels;
    m_edges.clear();
    m_crossedCells.clear();
    m_numCrossings = 0;
    if (!field.values || field.nodes.size() > MAX_ISO_NUMBERS || field.cells.size() > MAX_ISO_NUMBERS)
        return false;
    m_bands.resize(field.nodes.size());
    levels.classify({field.values, field.nodes.size()}, m_bands.data());
    findEdges();
    return field.nodes.size() + m_numCrossings <= MAX_ISO_NUMBERS;
}

IsoCell IndexedContour::isoCell(const MeshCell &cell, const std::array<std::uint32_t, 4> &edges) const {
    IsoCell result;
    result.sides = cell.sides;
    result.nodes = cell.nodes;
    for (int s = 0; s < cell.sides; ++s) {
        result.values[s] = m_field.values[cell.nodes[s]];
        result.bands[s] = m_bands[cell.nodes[s]];
        result.firsts[s] = edges[s] == NO_EDGE ? NO_CROSSING : m_edges[edges[s]].first;
    }
    return result;
}

/// Meets all crossings in order of number: `put(number, edge, level, point)`.
template <class Put>
void IndexedContour::placeCrossings(Put put) const {
    for (std::uint32_t e = 0; e < m_edges.size(); ++e) {
        const Edge &edge = m_edges[e];
        const Ppoint3 &a = m_field.nodes[edge.low], &b = m_field.nodes[edge.high];
        const double low = m_field.values[edge.low], high = m_field.values[edge.high];
        const std::int32_t band = m_bands[edge.low];
        for (std::int32_t level = band; level < m_bands[edge.high]; ++level) {
            const double t = ((*m_levels)[level] - low) / (high - low);
            const auto between = [t](double pa, double pb) { return static_cast<float>(pa + (pb - pa) * t); };
            put(edge.first + (level - band), e, level,
                Ppoint3{between(a.x, b.x), between(a.y, b.y), m_field.keepsZ ? between(a.z, b.z) : 0});
        }
    }
}

std::uint32_t &IndexedContour::linkThrough(std::uint32_t crossing, std::uint32_t crossedCell) {
    return m_crossings[crossing].link[m_edges[m_edgeOf[crossing]].cells[0] == crossedCell ? 0 : 1];
}

/// The crossing of the same level that `crossing` is joined to through a cell, or NO_CROSSING.
std::uint32_t IndexedContour::partnerInCell(std::uint32_t crossing, std::uint32_t crossedCell) {
    const CrossedCell &crossed = m_crossedCells[crossedCell];
    const IsoCell cell = isoCell(m_field.cells[crossed.cell], crossed.edges);
    const int level = m_crossings[crossing].level;
    std::array<Ppoint3, 4> points{};
    std::uint32_t other = NO_CROSSING, unlinked = NO_CROSSING;
    int count = 0, own = 0, linked = 0;
    for (int s = 0; s < cell.sides; ++s) {
        if (!cell.isCrossed(s, level))
            continue;
        ++count;
        const std::uint32_t number = cell.crossing(s, level);
        points[s] = m_crossings[number].point;
        if (number == crossing) {
            own = s;
            continue;
        }
        if (other == NO_CROSSING)
            other = number;
        if (linkThrough(number, crossedCell) == NO_CROSSING)
            unlinked = number;
        else
            ++linked;
    }
    if (count < 4)
        return other;
    // Two of the four are joined already: what is left belongs together, also where distances are equal.
    return linked == 2 ? unlinked : cell.crossing(saddlePartner(own, points), level);
}

void IndexedContour::linkAll() {
    m_border.clear();
    for (std::uint32_t c = 0; c < m_crossings.size(); ++c) {
        const Edge &edge = m_edges[m_edgeOf[c]];
        for (int side = 0; side < 2; ++side) {
            if (m_crossings[c].link[side] != NO_CROSSING || edge.cells[side] == NO_CELL)
                continue;
            const std::uint32_t partner = partnerInCell(c, edge.cells[side]);
            if (partner == NO_CROSSING)
                continue;
            m_crossings[c].link[side] = partner;
            linkThrough(partner, edge.cells[side]) = c;
        }
        if (edge.cells[1] == NO_CELL)
            m_border.push_back(c);
    }
}

void IndexedContour::makeLines(const MeshField &field, const IsoLevels &levels, IsoLines &lines) {
    const bool ready = prepare(field, levels);
    m_crossings.resize(ready ? m_numCrossings : 0);
    m_edgeOf.resize(m_crossings.size());
    m_border.clear();
    if (ready) {
        placeCrossings(
            [this](std::uint32_t number, std::uint32_t edge, std::int32_t level, const Ppoint3 &point) {
                m_crossings[number] = {point, level, {NO_CROSSING, NO_CROSSING}};
                m_edgeOf[number] = edge;
            });
        linkAll();
    }
    joinLines(m_crossings, m_border, lines);
}

BandCounts IndexedContour::countBands(const MeshField &field, const IsoLevels &levels) {
    BandCounts counts;
    const bool ready = prepare(field, levels);
    if (ready) {
        std::uint64_t sides = 0, onSides = 0;
        for (const MeshCell &cell : field.cells) {
            if (!exists(cell))
                continue;
            std::uint32_t crossings = 0;
            for (int s = 0; s < cell.sides; ++s)
                crossings += static_cast<std::uint32_t>(
                    std::abs(m_bands[cell.nodes[s]] - m_bands[cell.nodes[nextSide(cell, s)]]));
            counts.pieces += 1 + crossings / 2;
            sides += static_cast<std::uint32_t>(cell.sides);
            onSides += crossings;
        }
        counts.points = field.nodes.size() + m_numCrossings;
        // Each crossing of a cell stands in the pieces on both sides of its segment.
        counts.indices = sides + 2 * onSides + counts.pieces;
    }
    if (ready && counts.indices <= MAX_ISO_NUMBERS)
        return counts;
    m_field = {};
    m_edges.clear();
    return {};
}

void IndexedContour::fillBands(Ppoint3 *points, BandFaces &faces) {
    Ppoint3 *crossings = std::copy(m_field.nodes.begin(), m_field.nodes.end(), points);
    placeCrossings([crossings](std::uint32_t number, std::uint32_t, std::int32_t, const Ppoint3 &point) {
        crossings[number] = point;
    });
    auto crossed = m_crossedCells.begin();
    for (std::uint32_t c = 0; c < m_field.cells.size(); ++c) {
        const MeshCell &cell = m_field.cells[c];
        if (crossed != m_crossedCells.end() && crossed->cell == c) {
            m_cutter.cut(
                isoCell(cell, crossed->edges), *m_levels, static_cast<std::uint32_t>(m_field.nodes.size()),
                [crossings](std::uint32_t number) { return crossings[number]; },
                [&faces](const CellCutter::Piece &piece) {
                    faces.add(piece.points, piece.mean, piece.band);
                });
            ++crossed;
        } else if (exists(cell)) {
            double sum = 0;
            for (int s = 0; s < cell.sides; ++s)
                sum += m_field.values[cell.nodes[s]];
            faces.add({cell.nodes.data(), static_cast<std::size_t>(cell.sides)},
                      static_cast<float>(sum / cell.sides), m_bands[cell.nodes[0]]);
        }
    }
}

} // namespace oravane
