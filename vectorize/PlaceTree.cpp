#include "vectorize/PlaceTree.h"

#include <algorithm>
#include <array>
#include <limits>

namespace oravane {

namespace {

struct Center {
    std::array<float, 3> position;
    int index;
    bool isLarge;
};

/// The middle of an extent and its sizes. In z the far end counts, for the order of the places begins with
/// it.
std::array<float, 3> middleOf(const Extent &e) {
    return {e.xMin / 2 + e.xMax / 2, e.yMin / 2 + e.yMax / 2, e.zMax};
}
std::array<float, 3> sizeOf(const Extent &e) {
    return {e.xMax - e.xMin, e.yMax - e.yMin, e.zMax - e.zMin};
}

/// Measures positions by the mean size of the extents along each axis.
class Scale {
public:
    explicit Scale(std::span<const Extent> extents) {
        std::array<double, 3> sum{};
        for (const Extent &extent : extents)
            for (int axis = 0; axis < 3; ++axis)
                sum[axis] += sizeOf(extent)[axis];
        for (int axis = 0; axis < 3; ++axis)
            m_mean[axis] = static_cast<float>(sum[axis] / static_cast<double>(extents.size()));
    }

    /// Finite, so that positions have an order.
    Center centerOf(const Extent &extent, int index) const {
        constexpr float kMost = 1e6f;
        const std::array<float, 3> middle = middleOf(extent), size = sizeOf(extent);
        Center center{{}, index, false};
        for (int axis = 0; axis < 3; ++axis) {
            const float scaled = middle[axis] / std::max(m_mean[axis], 1e-6f);
            center.position[axis] = scaled > -kMost ? std::min(scaled, kMost) : -kMost;
            center.isLarge |= axis < 2 && size[axis] > kLarge * m_mean[axis];
        }
        return center;
    }

private:
    static constexpr float kLarge = 8;

    std::array<float, 3> m_mean{};
};

int longestAxis(std::span<const Center> centers) {
    std::array<float, 3> low = centers[0].position, high = low;
    for (const Center &center : centers)
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], center.position[axis]);
            high[axis] = std::max(high[axis], center.position[axis]);
        }
    int longest = 0;
    for (int axis = 1; axis < 3; ++axis)
        if (high[axis] - low[axis] > high[longest] - low[longest])
            longest = axis;
    return longest;
}

/// Orders centres such that runs of 8, of 64 and so on are compact: a half on each side of a plane across the
/// longest axis, and so on with each half.
void splitByMedians(std::span<Center> centers) {
    constexpr std::size_t kWidth = ExtentBlock::kWidth;
    if (centers.size() <= kWidth)
        return;
    std::size_t run = kWidth;
    while (run * kWidth < centers.size())
        run *= kWidth;
    const std::size_t numRuns = (centers.size() + run - 1) / run; // two or more
    const std::size_t half = numRuns / 2 * run;
    const int axis = longestAxis(centers);
    std::nth_element(
        centers.begin(), centers.begin() + static_cast<std::ptrdiff_t>(half), centers.end(),
        [axis](const Center &a, const Center &b) { return a.position[axis] > b.position[axis]; });
    splitByMedians(centers.first(half));
    splitByMedians(centers.subspan(half));
}

} // namespace

std::vector<int> orderForTree(std::span<const Extent> extents) {
    const Scale scale(extents);
    std::vector<Center> centers;
    centers.reserve(extents.size());
    for (const Extent &extent : extents)
        centers.push_back(scale.centerOf(extent, static_cast<int>(centers.size())));
    const auto large =
        std::partition(centers.begin(), centers.end(), [](const Center &center) { return !center.isLarge; });
    const std::span<Center> all = centers;
    const auto numSmall = static_cast<std::size_t>(large - centers.begin());
    splitByMedians(all.first(numSmall));
    splitByMedians(all.subspan(numSmall));
    std::vector<int> order(centers.size());
    std::ranges::transform(centers, order.begin(), &Center::index);
    return order;
}

PlaceTree::PlaceTree(std::span<const Extent> extents, std::span<const int> places,
                     std::span<const int> order) {
    const std::size_t size = order.size();
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
