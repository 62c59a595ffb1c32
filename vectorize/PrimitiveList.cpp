#include <oravane/PrimitiveList.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

ORAVANE_VECTORIZE_BEGIN

namespace {

struct SortEntry {
    std::uint32_t key;
    Primitive *primitive;
};

/// A number that ascends where z descends, equal for equal z.
std::uint32_t descendingKey(float z) {
    const auto bits = std::bit_cast<std::uint32_t>(z + 0.0f); // -0 counts as 0
    const std::uint32_t ascending = bits & 0x80000000u ? ~bits : bits | 0x80000000u;
    return ~ascending;
}

/// Stable sort by key, 11 bits at a time from the lowest.
void radixSort(std::vector<SortEntry> &entries) {
    constexpr int kBits = 11;
    constexpr std::uint32_t kMask = (1u << kBits) - 1;
    std::vector<SortEntry> sorted(entries.size());
    for (int shift = 0; shift < 32; shift += kBits) {
        std::array<std::size_t, kMask + 1> place{};
        for (const SortEntry &entry : entries)
            ++place[entry.key >> shift & kMask];
        std::size_t sum = 0;
        for (std::size_t &count : place)
            sum += std::exchange(count, sum);
        for (const SortEntry &entry : entries)
            sorted[place[entry.key >> shift & kMask]++] = entry;
        entries.swap(sorted);
    }
}

template <class IsAbove>
void siftDown(Primitive **list, int n, int node, IsAbove isAbove) {
    for (int child = 2 * node; child <= n; child = 2 * node) {
        if (child < n && isAbove(list[child], list[child - 1]))
            ++child;
        if (!isAbove(list[child - 1], list[node - 1]))
            return;
        std::swap(list[child - 1], list[node - 1]);
        node = child;
    }
}

bool hasLowerPriority(const Primitive *a, const Primitive *b) {
    return a->getPriority() < b->getPriority();
}

} // namespace

Primitive *PrimitiveList::operator[](int index) const {
    return isIndex(index) ? m_primitives[index] : nullptr;
}

void PrimitiveList::append(Primitive *primitive) {
    if (primitive)
        m_primitives.push_back(primitive);
}

void PrimitiveList::swap(int i, int j) {
    if (isIndex(i) && isIndex(j))
        std::swap(m_primitives[i], m_primitives[j]);
}

void PrimitiveList::remove(int index) {
    if (isIndex(index))
        m_primitives.erase(m_primitives.begin() + index);
}

void PrimitiveList::sortZmax(int start) {
    const auto first = m_primitives.begin() + std::clamp(start, 0, getLength());
    // Most lists come in the order of creation, and the sort by depth keeps it.
    if (!std::is_sorted(first, m_primitives.end(), hasLowerPriority))
        std::stable_sort(first, m_primitives.end(), hasLowerPriority);
    std::vector<SortEntry> entries;
    entries.reserve(m_primitives.end() - first);
    for (auto p = first; p != m_primitives.end(); ++p)
        entries.push_back({descendingKey((*p)->getZmax()), *p});
    radixSort(entries);
    std::ranges::transform(entries, first, &SortEntry::primitive);
}

void PrimitiveList::heapSort(Primitive **list, int n, void (*verify)(Primitive **, int, int)) {
    for (int node = n / 2; node >= 1; --node)
        verify(list, n, node);
    while (n > 1) {
        std::swap(list[0], list[n - 1]);
        --n;
        verify(list, n, 1);
    }
}

void PrimitiveList::verifyHeapZmax(Primitive **list, int n, int node) {
    siftDown(list, n, node, [](Primitive *a, Primitive *b) { return a->getZmax() < b->getZmax(); });
}

void PrimitiveList::verifyHeapPriority(Primitive **list, int n, int node) {
    siftDown(list, n, node, [](Primitive *a, Primitive *b) { return a->getPriority() > b->getPriority(); });
}

ORAVANE_VECTORIZE_END
