#include "mesh/SpatialOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace oravane {

namespace {

/// Position on Hilbert's curve of the cell (x, y) in a square of 2^bits by 2^bits cells.
std::uint32_t hilbertKey(std::uint32_t x, std::uint32_t y, int bits) {
    // How the curve stands in the current quadrant: mirrored in both axes, mirrored in the diagonal.
    std::uint32_t key = 0, isFlipped = 0, isSwapped = 0;
    for (int bit = bits - 1; bit >= 0; --bit) {
        const std::uint32_t u = ((x >> bit) & 1) ^ isFlipped, v = ((y >> bit) & 1) ^ isFlipped;
        const std::uint32_t difference = (u ^ v) & isSwapped;
        const std::uint32_t i = u ^ difference, j = v ^ difference;
        key = key << 2 | ((3 * i) ^ j);
        isFlipped ^= i & ~j;
        isSwapped ^= ~j & 1;
    }
    return key;
}

/// The square cells that a set of points, not empty, is sorted into.
class CellGrid {
public:
    CellGrid(std::span<const std::int32_t> points, std::span<const float> x, std::span<const float> y) {
        float xMax = -std::numeric_limits<float>::infinity(), yMax = xMax, xMin = -xMax, yMin = -xMax;
        for (const std::int32_t point : points) {
            xMin = std::min(xMin, x[point]);
            xMax = std::max(xMax, x[point]);
            yMin = std::min(yMin, y[point]);
            yMax = std::max(yMax, y[point]);
        }
        // About four cells a point, and never so few that a division makes no progress.
        m_bits = std::clamp((static_cast<int>(std::bit_width(points.size())) + 1) / 2 + 1, 4, 15);
        m_x = xMin;
        m_y = yMin;
        m_side = std::max(double{xMax} - xMin, double{yMax} - yMin);
        m_scale = (std::uint32_t{1} << m_bits) / m_side;
    }

    /// True when all points are equal.
    bool isPoint() const { return m_side == 0; }

    int keyBits() const { return 2 * m_bits; }

    std::uint32_t keyOf(float x, float y) const {
        const std::uint32_t last = (std::uint32_t{1} << m_bits) - 1;
        const auto i = static_cast<std::uint32_t>((x - m_x) * m_scale);
        const auto j = static_cast<std::uint32_t>((y - m_y) * m_scale);
        return hilbertKey(std::min(i, last), std::min(j, last), m_bits);
    }

private:
    int m_bits;
    double m_x, m_y, m_side, m_scale;
};

/// A point's number below the key that it is sorted by.
using KeyedPoint = std::uint64_t;

std::uint32_t keyOf(KeyedPoint entry) {
    return static_cast<std::uint32_t>(entry >> 32);
}

/// Sorts by key, stable: points of one key keep their order.
void radixSort(std::vector<KeyedPoint> &entries, int keyBits) {
    constexpr int digitBits = 11;
    constexpr std::uint32_t mask = (1U << digitBits) - 1;
    std::vector<KeyedPoint> sorted(entries.size());
    for (int shift = 0; shift < keyBits; shift += digitBits) {
        std::array<std::uint32_t, mask + 1> starts{};
        for (const KeyedPoint entry : entries)
            ++starts[(keyOf(entry) >> shift) & mask];
        std::uint32_t start = 0;
        for (std::uint32_t &count : starts)
            start += std::exchange(count, start);
        for (const KeyedPoint entry : entries)
            sorted[starts[(keyOf(entry) >> shift) & mask]++] = entry;
        entries.swap(sorted);
    }
}

/// Puts points in the order of the curve. Cells of many points are ordered by a curve of their own, so that a
/// cluster of any scale comes out as well as even points.
void sortAlongCurve(std::span<std::int32_t> points, std::span<const float> x, std::span<const float> y) {
    constexpr std::ptrdiff_t few = 16;
    if (points.empty())
        return;
    const CellGrid grid(points, x, y);
    if (grid.isPoint())
        return;
    std::vector<KeyedPoint> entries(points.size());
    std::transform(points.begin(), points.end(), entries.begin(), [&](std::int32_t point) {
        return KeyedPoint{grid.keyOf(x[point], y[point])} << 32 | static_cast<std::uint32_t>(point);
    });
    if (entries.size() < 256)
        std::sort(entries.begin(), entries.end());
    else
        radixSort(entries, grid.keyBits());
    std::transform(entries.begin(), entries.end(), points.begin(),
                   [](KeyedPoint entry) { return static_cast<std::int32_t>(entry); });
    for (auto first = entries.begin(); first != entries.end();) {
        const auto last = std::find_if(
            first, entries.end(), [key = keyOf(*first)](KeyedPoint entry) { return keyOf(entry) != key; });
        if (last - first > few)
            sortAlongCurve(points.subspan(first - entries.begin(), last - first), x, y);
        first = last;
    }
}

/// A number without visible relation to `value` (the final steps of the hash function MurmurHash3).
std::uint64_t scrambled(std::uint64_t value) {
    value = (value ^ (value >> 33)) * 0xff51afd7ed558ccdULL;
    value = (value ^ (value >> 33)) * 0xc4ceb9fe1a85ec53ULL;
    return value ^ (value >> 33);
}

} // namespace

std::vector<std::int32_t> spatialOrder(std::span<const float> x, std::span<const float> y) {
    // Round r from the end holds every 8^r-th point; there are no rounds of a handful of points.
    constexpr int maxRounds = 10;
    const int numRounds = std::clamp((static_cast<int>(std::bit_width(x.size())) - 6) / 3 + 1, 1, maxRounds);
    const auto isFinite = [&](std::size_t i) { return std::isfinite(x[i]) && std::isfinite(y[i]); };
    const auto roundOf = [&](std::size_t i) {
        return numRounds - 1 - std::min(std::countr_zero(scrambled(i + 1)) / 3, numRounds - 1);
    };
    std::array<std::size_t, maxRounds + 1> ends{};
    for (std::size_t i = 0; i < x.size(); ++i)
        if (isFinite(i))
            ++ends[roundOf(i) + 1];
    for (int round = 0; round < maxRounds; ++round)
        ends[round + 1] += ends[round];
    std::vector<std::int32_t> order(ends[maxRounds]);
    for (std::size_t i = 0; i < x.size(); ++i)
        if (isFinite(i))
            order[ends[roundOf(i)]++] = static_cast<std::int32_t>(i);
    std::size_t start = 0;
    for (int round = 0; round < numRounds; ++round) {
        sortAlongCurve(std::span(order).subspan(start, ends[round] - start), x, y);
        start = ends[round];
    }
    return order;
}

} // namespace oravane
