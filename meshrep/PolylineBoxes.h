#ifndef ORAVANE_MESHREP_POLYLINEBOXES_H
#define ORAVANE_MESHREP_POLYLINEBOXES_H

#include "geometry/BoxTree.h"

#include <vector>

namespace oravane {

/// Polylines with the boxes of their pieces: finds where a small area meets long lines, or many lines,
/// without looking at all of them. The points have to live as long.
class PolylineBoxes {
public:
    /// Number of the line that a program knows it by, and its points.
    void add(std::size_t number, const Ppoint_list3 &line);
    /// To be called after the last line has been added, and before the first question.
    void arrange();

    /// Whether a line other than `except` crosses or touches a side of the parallelogram, whose box is
    /// `limit`.
    bool cross(const Ppoint3 *corners, const Plimit &limit, std::size_t except = NONE) const;

    static constexpr std::size_t NONE = static_cast<std::size_t>(-1);

private:
    struct Piece {
        Plimit box;
        std::size_t line;
        const Ppoint3 *points;
        int count;
    };

    std::vector<Piece> m_pieces; ///< up to `BoxTree::FAN` segments each
    BoxTree m_tree;
};

} // namespace oravane

#endif
