#ifndef ORAVANE_GEOMETRY_BOXTREE_H
#define ORAVANE_GEOMETRY_BOXTREE_H

#include "geometry/PlanarSegments.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace oravane {

/// Finds those of many boxes that meet a small one without a look at all of them: the given boxes, the boxes
/// around each `FAN` of them, and so on up to one around all. It is of use where boxes that follow each other
/// lie close together, as along a line.
class BoxTree {
public:
    static constexpr std::size_t FAN = 16;

    BoxTree() = default;
    explicit BoxTree(std::vector<Plimit> boxes) : m_boxes(std::move(boxes)) {
        while (m_boxes.size() - m_start[m_top] > 1)
            addLevel();
    }

    /// Around all boxes, of which there is one at least.
    const Plimit &all() const { return m_boxes.back(); }

    /// Calls `visit(k)` for each box k that meets `limit`, in order, until one returns true; returns whether
    /// one did.
    template <class Visit>
    bool anyNear(const Plimit &limit, const Visit &visit) const {
        return !m_boxes.empty() && descend(m_top, 0, limit, visit);
    }

private:
    void addLevel() {
        const std::size_t first = m_start[m_top], end = m_boxes.size();
        for (std::size_t child = first; child < end; child += FAN) {
            Plimit around = emptyLimit();
            for (const Plimit &box : std::span(m_boxes).subspan(child, std::min(FAN, end - child))) {
                include(around, box.xmin, box.ymin);
                include(around, box.xmax, box.ymax);
            }
            m_boxes.push_back(around);
        }
        m_start[++m_top] = end;
    }

    template <class Visit>
    bool descend(std::size_t level, std::size_t index, const Plimit &limit, const Visit &visit) const {
        if (!areMeeting(m_boxes[m_start[level] + index], limit))
            return false;
        if (level == 0)
            return visit(index);
        const std::size_t end = std::min((index + 1) * FAN, m_start[level] - m_start[level - 1]);
        for (std::size_t child = index * FAN; child < end; ++child)
            if (descend(level - 1, child, limit, visit))
                return true;
        return false;
    }

    std::vector<Plimit> m_boxes;           ///< the given ones, and those of each level behind them
    std::array<std::size_t, 17> m_start{}; ///< of each level in `m_boxes`
    std::size_t m_top = 0;
};

} // namespace oravane

#endif
