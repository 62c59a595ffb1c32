#ifndef ORAVANE_MESHREP_FINITERUNS_H
#define ORAVANE_MESHREP_FINITERUNS_H

#include <cstddef>

namespace oravane {

/// Calls `take(first, length)` for each run of at least two neighbours among 0 to `count` - 1 for which
/// `isSound` holds: a line goes on where its points have positions, and breaks where one has not.
template <class IsSound, class Take>
void forEachRun(std::size_t count, IsSound isSound, Take take) {
    for (std::size_t first = 0; first < count;) {
        std::size_t end = first;
        while (end < count && isSound(end))
            ++end;
        if (end > first + 1)
            take(first, end - first);
        first = end + 1;
    }
}

} // namespace oravane

#endif
