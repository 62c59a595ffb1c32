#ifndef ORAVANE_VECTORIZE_RADIXSORT_H
#define ORAVANE_VECTORIZE_RADIXSORT_H

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace oravane {

template <class Value>
struct Keyed {
    std::uint32_t key;
    Value value;
};

/// Stable sort by ascending key, 11 bits at a time from the lowest: linear in the number of entries.
template <class Value>
void radixSort(std::vector<Keyed<Value>> &entries) {
    constexpr int kBits = 11;
    constexpr std::uint32_t kMask = (1u << kBits) - 1;
    std::vector<Keyed<Value>> sorted(entries.size());
    for (int shift = 0; shift < 32; shift += kBits) {
        std::array<std::size_t, kMask + 1> place{};
        for (const auto &entry : entries)
            ++place[entry.key >> shift & kMask];
        std::size_t sum = 0;
        for (std::size_t &count : place)
            sum += std::exchange(count, sum);
        for (const auto &entry : entries)
            sorted[place[entry.key >> shift & kMask]++] = entry;
        entries.swap(sorted);
    }
}

} // namespace oravane

#endif
