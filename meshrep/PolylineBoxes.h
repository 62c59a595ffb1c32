#ifndef ORAVANE_MESHREP_POLYLINEBOXES_H
#define ORAVANE_MESHREP_POLYLINEBOXES_H

#include <oravane/PlanarPolygons.h>

#include <span>
#include <vector>

namespace oravane {

/// Bounding boxes of the pieces of a polyline, in a tree: finds where a small area meets a long line without
/// looking at all of it. The line has to live as long as its boxes.
class PolylineBoxes {
public:
    explicit PolylineBoxes(const Ppoint_list3 &line);

    /// Box of the whole line.
    const Plimit &box() const { return m_levels.back().front(); }

    /// Whether the line crosses or touches a side of the parallelogram, whose box is `limit`.
    bool crosses(const Ppoint3 *corners, const Plimit &limit) const {
        return crossesBelow(m_levels.size() - 1, 0, corners, limit);
    }

private:
    bool crossesBelow(std::size_t level, std::size_t index, const Ppoint3 *corners,
                      const Plimit &limit) const;

    Ppoint_list3 m_line;
    /// Boxes of 16 segments each, then of 16 boxes each, up to a single one.
    std::vector<std::vector<Plimit>> m_levels;
};

} // namespace oravane

#endif
