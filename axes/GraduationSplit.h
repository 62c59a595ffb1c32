#ifndef ORAVANE_AXES_GRADUATIONSPLIT_H
#define ORAVANE_AXES_GRADUATIONSPLIT_H

#include <cstddef>
#include <span>
#include <vector>

namespace oravane {

/// Which graduations of an axis are main ones, with a text.
struct TickRule {
    bool isPeriod = true; ///< whether `count` is the period of main graduations, else the number of sub ticks
    int count = 1;        ///< between two main ones; a period below 1 counts as 1
    int first = 1;        ///< the first main graduation, from 1 at the start
    int last = 1;         ///< the last one, from 1 at the end; what is below 1 counts as 1
};

struct SplitGraduations {
    std::vector<std::size_t> main; ///< indices, ascending
    std::vector<float> sub;        ///< coordinates
};

/// Divides the graduations at `coords`, which run from `start` towards `end` (in either direction). By
/// period, all that are not main are sub graduations. By number, sub graduations part the distance of the
/// main ones, and go on beyond them up to start and end; with fewer than two main ones the multiples of
/// `step` around the ends give the distance, or there is none when `step` is 0. More than `kMaxGraduations`
/// sub graduations are none.
SplitGraduations splitGraduations(const TickRule &rule, float start, float end, float step,
                                  std::span<const float> coords);

} // namespace oravane

#endif
