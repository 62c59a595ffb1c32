#include "vectorize/PlaceTree.h"

#include "vectorize/RadixSort.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace oravane {

namespace {

/// The centre of an extent on each axis, and its sizes.
struct Middle {
    std::array<float, 3> center, size;
};

Middle middleOf(const Extent &e) {
    return {{e.xMin / 2 + e.xMax / 2, e.yMin / 2 + e.yMax / 2, -e.zMax}, // the far ones first
            {e.xMax - e.xMin, e.yMax - e.yMin, e.zMax - e.zMin}};
}

/// Turns centres into the cells of the curve's grid.
class CurveGrid {
public:
    explicit CurveGrid(std::span<const Extent> extents) {
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        std::array<double, 3> sum{}, range{};
        m_low = {kInfinity, kInfinity, kInfinity};
        std::array<float, 3> high = {-kInfinity, -kInfinity, -kInfinity};
        for (const Extent &extent : extents) {
            const Middle m = middleOf(extent);
            for (int axis = 0; axis < 3; ++axis) {
                sum[axis] += m.size[axis];
                m_low[axis] = std::min(m_low[axis], m.center[axis]);
                high[axis] = std::max(high[axis], m.center[axis]);
            }
        }
        double longest = 1;
        for (int axis = 0; axis < 3; ++axis) {
            range[axis] = double(high[axis]) - m_low[axis];
            m_meanSize[axis] = sum[axis] / static_cast<double>(extents.size());
            longest = std::max(longest, cellsOf(range[axis], m_meanSize[axis]));
        }
        for (int axis = 0; axis < 3; ++axis)
            m_scale[axis] = range[axis] > 0
                                ? cellsOf(range[axis], m_meanSize[axis]) / longest * kMaxCell / range[axis]
                                : 0;
    }

    std::uint32_t keyOf(const Extent &extent) const {
        const Middle m = middleOf(extent);
        std::uint32_t key = 0;
        std::uint32_t sizeClass = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const double cell = (double(m.center[axis]) - m_low[axis]) * m_scale[axis];
            key |= spread(cell > 0 ? static_cast<std::uint32_t>(std::min(cell, kMaxCell)) : 0) << axis;
            if (axis < 2)
                for (double limit = 4 * m_meanSize[axis]; sizeClass < 3 && m.size[axis] > limit; limit *= 4)
                    ++sizeClass;
        }
        return key | sizeClass << 30;
    }

private:
    static constexpr double kMaxCell = 1023;

    static double cellsOf(double range, double meanSize) {
        return range > 0 ? std::clamp(range / meanSize, 1.0, 4096.0) : 1.0;
    }

    /// Puts two zero bits ahead of each of 10 bits.
    static std::uint32_t spread(std::uint32_t bits) {
        bits = (bits | bits << 16) & 0x030000FFu;
        bits = (bits | bits << 8) & 0x0300F00Fu;
        bits = (bits | bits << 4) & 0x030C30C3u;
        return (bits | bits << 2) & 0x09249249u;
    }

    std::array<float, 3> m_low;
    std::array<double, 3> m_meanSize{}, m_scale{};
};

} // namespace

std::vector<int> orderAlongCurve(std::span<const Extent> extents) {
    const CurveGrid grid(extents);
    std::vector<Keyed<int>> entries;
    entries.reserve(extents.size());
    for (const Extent &extent : extents)
        entries.push_back({grid.keyOf(extent), static_cast<int>(entries.size())});
    radixSort(entries);
    std::vector<int> order(entries.size());
    std::ranges::transform(entries, order.begin(), &Keyed<int>::value);
    return order;
}

PlaceTree::PlaceTree(std::span<const Extent> extents, std::span<const int> places,
                     std::span<const int> order) {
    std::size_t size = order.size();
    m_levels.emplace_back(std::max<std::size_t>(1, (size + kFanOut - 1) / kFanOut));
    for (std::size_t i = 0; i < size; ++i) {
        Block &block = m_levels[0][i / kFanOut];
        block.extents.set(static_cast<int>(i % kFanOut), extents[order[i]]);
        block.setItem(static_cast<int>(i % kFanOut), places[order[i]]);
    }
    while (m_levels.back().size() > 1) {
        const std::vector<Block> &below = m_levels.back();
        std::vector<Block> blocks((below.size() + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < below.size(); ++i)
            blocks[i / kFanOut].setNode(static_cast<int>(i % kFanOut), below[i]);
        m_levels.push_back(std::move(blocks));
    }
}

void PlaceTree::Block::setNode(int lane, const Block &below) {
    Extent all = ExtentBlock().get(0);
    for (int k = 0; k < kFanOut; ++k) {
        // A bound that is not a number is passed over, for nothing meets the extent that has it.
        const Extent e = below.extents.get(k);
        all.xMin = std::min(all.xMin, e.xMin);
        all.yMin = std::min(all.yMin, e.yMin);
        all.xMax = std::max(all.xMax, e.xMax);
        all.yMax = std::max(all.yMax, e.yMax);
        all.zMax = std::max(all.zMax, e.zMax);
    }
    extents.set(lane, all);
    setPlaces(lane, below, 0);
}

/// True if this changes the lane. Lanes of a block that is not full count as place 0.
bool PlaceTree::Block::setPlaces(int lane, const Block &below, int firstLive) {
    int low = std::numeric_limits<int>::max(), high = 0;
    for (int k = 0; k < kFanOut; ++k) {
        if (below.largest[k] >= firstLive)
            low = std::min(low, below.least[k]);
        high = std::max(high, below.largest[k]);
    }
    const bool isChange = low != least[lane] || high != largest[lane];
    least.set(lane, low);
    largest.set(lane, high);
    return isChange;
}

void PlaceTree::move(int item, int place, int firstLive) {
    auto index = static_cast<std::size_t>(item);
    m_levels[0][index / kFanOut].setItem(item % kFanOut, place);
    for (std::size_t level = 1; level < m_levels.size(); ++level) {
        index /= kFanOut;
        Block &block = m_levels[level][index / kFanOut];
        if (!block.setPlaces(static_cast<int>(index % kFanOut), m_levels[level - 1][index], firstLive))
            return;
    }
}

} // namespace oravane
