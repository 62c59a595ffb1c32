#include "meshrep/PolylineBoxes.h"

#include <algorithm>

namespace oravane {

namespace {

constexpr std::size_t FANOUT = 16;

Plimit unite(std::span<const Plimit> boxes) {
    Plimit all = boxes.front();
    for (const Plimit &box : boxes)
        all = {std::min(all.xmin, box.xmin), std::max(all.xmax, box.xmax), std::min(all.ymin, box.ymin),
               std::max(all.ymax, box.ymax)};
    return all;
}

} // namespace

PolylineBoxes::PolylineBoxes(const Ppoint_list3 &line) : m_line(line), m_levels(1) {
    const int last = std::max(line.numPoints - 1, 0);
    for (int first = 0; first == 0 || first < last; first += FANOUT) {
        Plimit box{};
        const int count = std::min<int>(FANOUT + 1, line.numPoints - first);
        pcomputePolygonBBox2D(line.points + first, std::max(count, 0), &box);
        m_levels.back().push_back(box);
    }
    while (m_levels.back().size() > 1) {
        const std::span<const Plimit> below = m_levels.back();
        std::vector<Plimit> above;
        for (std::size_t first = 0; first < below.size(); first += FANOUT)
            above.push_back(unite(below.subspan(first, std::min(FANOUT, below.size() - first))));
        m_levels.push_back(std::move(above));
    }
}

bool PolylineBoxes::crossesBelow(std::size_t level, std::size_t index, const Ppoint3 *corners,
                                 const Plimit &limit) const {
    if (!pintersBBox2D(m_levels[level][index], limit))
        return false;
    const std::size_t first = index * FANOUT;
    if (level == 0) {
        const int start = static_cast<int>(first);
        return pintersParaPolyline2D(corners, m_line.points + start,
                                     std::min<int>(FANOUT + 1, m_line.numPoints - start)) != 0;
    }
    const std::size_t end = std::min(first + FANOUT, m_levels[level - 1].size());
    for (std::size_t child = first; child < end; ++child)
        if (crossesBelow(level - 1, child, corners, limit))
            return true;
    return false;
}

} // namespace oravane
