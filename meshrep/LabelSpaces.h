#ifndef ORAVANE_MESHREP_LABELSPACES_H
#define ORAVANE_MESHREP_LABELSPACES_H

#include <oravane/PlanarRecords.h>

#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace oravane {

/// The boxes of the labels placed so far, found by place.
class LabelSpaces {
public:
    /// Boxes are kept in squares of this side, which is to be of their size; what is no length counts as 1.
    explicit LabelSpaces(float side) : m_side(std::isnormal(side) && side > 0 ? side : 1) {}

    void add(const Plimit &box);
    /// Whether a box overlaps or touches one of those added.
    bool isTaken(const Plimit &box) const;
    /// Numbers of the boxes that overlap or touch `box`, in the order in which they were added.
    void find(const Plimit &box, std::vector<std::size_t> &found) const;

private:
    template <class Visit>
    bool visitNear(const Plimit &box, Visit visit) const;
    template <class Visit>
    bool visitSquares(const Plimit &box, Visit visit) const;
    std::int64_t squareOf(float coordinate) const;

    std::vector<Plimit> m_boxes;
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> m_squares;
    float m_side;
};

} // namespace oravane

#endif
