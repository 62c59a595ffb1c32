#include "geometry/IsoCell.h"

namespace oravane {

namespace {

double squaredPlanarDistance(const Ppoint3 &a, const Ppoint3 &b) {
    const double dx = static_cast<double>(a.x) - b.x, dy = static_cast<double>(a.y) - b.y;
    return dx * dx + dy * dy;
}

} // namespace

int saddlePartner(int side, const std::array<Ppoint3, 4> &points) {
    static constexpr int preferred[4] = {1, 2, 1, 2};
    const int a = preferred[side], b = a ^ 2, c = side ^ 2;
    const double pa = squaredPlanarDistance(points[side], points[a]);
    const double pb = squaredPlanarDistance(points[side], points[b]);
    const double ac = squaredPlanarDistance(points[a], points[c]);
    const double bc = squaredPlanarDistance(points[b], points[c]);
    if (pa <= pb && pa <= ac && pa <= bc)
        return a;
    if (pb <= pa && pb <= ac && pb <= bc)
        return b;
    return ac <= pa && ac <= pb && ac <= bc ? b : a;
}

void CellCutter::buildBoundary(const IsoCell &cell, const IsoLevels &levels, std::uint32_t numNodes) {
    m_entries.clear();
    m_lowest = *std::min_element(cell.bands.begin(), cell.bands.begin() + cell.sides);
    m_highest = *std::max_element(cell.bands.begin(), cell.bands.begin() + cell.sides);
    for (int side = 0; side < cell.sides; ++side) {
        m_entries.push_back({cell.nodes[side], cell.values[side], -1, cell.bands[side], false});
        m_sideStart[side] = static_cast<int>(m_entries.size());
        const int from = cell.bands[side], to = cell.bands[cell.next(side)];
        const int step = to > from ? 1 : -1;
        for (int i = 0, level = to > from ? from : from - 1; i < cell.numCrossings(side);
             ++i, level += step) {
            const auto point = static_cast<std::int32_t>(numNodes + cell.crossing(side, level));
            m_entries.push_back({point, levels[level], -1, level, false});
        }
    }
}

void CellCutter::append(const Entry &entry) {
    m_polygon[m_polygonSize++] = entry.point;
    m_sum += entry.value;
}

bool CellCutter::walk() {
    const int end = static_cast<int>(m_entries.size()); // stands for the first entry, met again
    while (m_start < end && m_entries[m_start].marked)
        ++m_start;
    if (m_start == end)
        return false;
    m_polygonSize = 0;
    m_sum = 0;
    m_band = m_entries[m_start].band;
    int at = m_start;
    m_entries[at].marked = true;
    do {
        append(m_entries[at]);
        if (m_entries[at].partner >= 0) {
            at = m_entries[at].partner;
            m_entries[at].marked = true;
            append(m_entries[at]);
        }
        if (++at < end)
            m_entries[at].marked = true;
    } while (at != m_start && at != end && m_polygonSize <= MAX_POINTS);
    return m_polygonSize <= MAX_POINTS;
}

} // namespace oravane
