#ifndef ORAVANE_VECTORIZE_CALLUP_H
#define ORAVANE_VECTORIZE_CALLUP_H

#include <oravane/PrimitiveList.h>

namespace oravane {

/// Primitives lie in memory in the order of creation and are worked on in another one: the one that comes a
/// few steps after number `step` is called up in time, points and all, which follow the object.
/// `placeOf(step)` is where a step finds its primitive.
template <class PlaceOf>
void callUpAhead(const PrimitiveList &list, int step, int numSteps, const PlaceOf &placeOf) {
    constexpr int kAhead = 8, kLine = 64, kLines = 3;
    if (step + kAhead >= numSteps)
        return;
    const auto *memory = reinterpret_cast<const char *>(list[placeOf(step + kAhead)]);
    for (int k = 0; k < kLines; ++k)
        __builtin_prefetch(memory + k * kLine);
}

} // namespace oravane

#endif
