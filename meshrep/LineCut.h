#ifndef ORAVANE_MESHREP_LINECUT_H
#define ORAVANE_MESHREP_LINECUT_H

#include "geometry/BoxTree.h"
#include "geometry/PolygonCrossings.h"

#include <optional>
#include <vector>

namespace oravane {

/// A closed parallelogram: its first corner stands at its end once more.
using ClosedBox = std::array<Ppoint3, 5>;

/// Cuts boxes out of a line, one after the other.
///
/// \code
///   LineCut cut(line);
///   for (const ContourLabel &label : labels) cut.cutAt(label.outer);
///   draw(cut.parts(memory));
/// \endcode
///
/// The cost of a cut follows what is near the box, not the length of the line: the parts refer to the points
/// of the line, which have to live as long, and know of their own only the ends that a cut has made.
class LineCut {
public:
    /// Of a line with a point at least.
    explicit LineCut(const Ppoint_list3 &line);

    /// Takes out what lies in the box; a part with both ends inside, which crosses no side of it, goes.
    void cutAt(const ClosedBox &box);

    /// What is left, in the order of the line. Parts without a cut are those points of the line themselves;
    /// the points of others go into `memory`.
    std::vector<Ppoint_list3> parts(std::vector<std::vector<Ppoint3>> &memory) const;

private:
    /// The points `first` to `end` - 1 of the line, and ends on the segments before and behind them, which
    /// stand in for the points `first` - 1 and `end`.
    struct Part {
        int first, end;
        std::optional<Ppoint3> head, tail;

        int firstSegment() const { return head ? first - 1 : first; }
        int endSegment() const { return tail ? end : end - 1; }
    };

    int firstOf(std::size_t piece) const { return static_cast<int>(piece * BoxTree::FAN); }
    int endOf(std::size_t piece) const {
        return std::min(firstOf(piece + 1), std::max(static_cast<int>(m_line.size()) - 1, 0));
    }
    bool isMeeting(const ClosedBox &box, const std::vector<std::size_t> &pieces) const;
    Ppoint3 pointOf(const Part &part, int number) const;
    std::vector<LineCrossing> crossingsOf(const Part &part, const ClosedBox &box,
                                          const std::vector<std::size_t> &pieces) const;
    void cut(const Part &part, const ClosedBox &box, const std::vector<std::size_t> &pieces,
             std::vector<Part> &left) const;

    std::span<Ppoint3> m_line;
    BoxTree m_tree; ///< of pieces of `BoxTree::FAN` segments
    std::vector<Part> m_parts;
};

} // namespace oravane

#endif
