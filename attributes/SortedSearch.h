#ifndef ORAVANE_ATTRIBUTES_SORTEDSEARCH_H
#define ORAVANE_ATTRIBUTES_SORTEDSEARCH_H

#include <cstddef>
#include <span>

namespace oravane {

/// Number of values for which `isBefore` holds; they stand before all others. A binary search without
/// branches: the tables searched for each node of a mesh are short, and a mispredicted branch costs more than
/// the rest.
template <class IsBefore>
std::size_t countBefore(std::span<const float> sorted, IsBefore isBefore) {
    const float *first = sorted.data();
    std::size_t count = sorted.size();
    while (count > 1) {
        const std::size_t half = count / 2;
        first += isBefore(first[half - 1]) * half;
        count -= half;
    }
    return static_cast<std::size_t>(first - sorted.data()) + (count == 1 && isBefore(*first) ? 1 : 0);
}

/// Index of the first value not below `value`: the count when there is none, 0 when `value` is not a number.
inline std::size_t firstNotBelow(std::span<const float> sorted, float value) {
    return countBefore(sorted, [value](float element) { return element < value; });
}

/// Index of the first value above `value`: the count when there is none, or when `value` is not a number.
inline std::size_t firstAbove(std::span<const float> sorted, float value) {
    return countBefore(sorted, [value](float element) { return !(element > value); });
}

} // namespace oravane

#endif
