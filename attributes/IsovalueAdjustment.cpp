#include "attributes/IsovalueAdjustment.h"

#include "attributes/SortedSearch.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <vector>

namespace oravane {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr double noGap = 1e30;

std::span<const float> arrayOf(int num, const float *data) {
    return data && num > 0 ? std::span(data, std::size_t(num)) : std::span<const float>();
}

/// An isovalue, how often the field has it, and the field's values next to it.
struct Level {
    float value;
    std::size_t hits = 0;
    float below = -infinity; ///< largest field value below; minus infinity without one
    float above = infinity;
    bool hasAbove = false;
    float target = 0.0f; ///< the isovalue after its move
};

/// Open hash table of the levels, by their bits, so sparse that a value that is no level meets an empty slot
/// almost always.
class LevelFinder {
public:
    explicit LevelFinder(std::span<const Level> levels) : m_levels(levels) {
        const std::size_t size = std::bit_ceil(std::max<std::size_t>(levels.size() * 8, 4096));
        m_shift = 32 - std::countr_zero(size);
        m_slots.assign(size, -1);
        for (std::size_t i = 0; i < levels.size(); ++i)
            m_slots[find(levels[i].value)] = static_cast<std::int32_t>(i);
    }

    /// Index of the level equal to `value`, or -1.
    std::int32_t operator()(float value) const { return m_slots[find(value)]; }

private:
    std::size_t find(float value) const {
        // Adding 0 makes one of the two zeros. Evenly spaced levels have bits that differ in few places only.
        std::uint32_t bits = std::bit_cast<std::uint32_t>(value + 0.0f);
        bits = (bits ^ (bits >> 15)) * 0x2c1b3c6du;
        bits = (bits ^ (bits >> 12)) * 0x297a2d39u;
        std::size_t slot = bits >> m_shift;
        while (m_slots[slot] >= 0 && m_levels[m_slots[slot]].value != value)
            slot = slot + 1 < m_slots.size() ? slot + 1 : 0;
        return slot;
    }

    std::span<const Level> m_levels;
    std::vector<std::int32_t> m_slots;
    int m_shift = 0;
};

/// The isovalues in ascending order, each once; not-a-number never coincides and is left out.
std::vector<Level> sortedLevels(std::span<const float> isovalues) {
    std::vector<float> sorted;
    std::copy_if(isovalues.begin(), isovalues.end(), std::back_inserter(sorted),
                 [](float value) { return !std::isnan(value); });
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    std::vector<Level> levels;
    levels.reserve(sorted.size());
    for (float value : sorted)
        levels.push_back({value});
    return levels;
}

void countHits(const NodeValues &values, std::vector<Level> &levels) {
    const LevelFinder find(levels);
    for (const std::span<const float> part : values.parts)
        for (const float value : part)
            if (const std::int32_t level = find(value); level >= 0)
                ++levels[level].hits;
}

/// Fills `below` and `above`. All levels have hits, so that each is a field value that bounds its neighbours.
void findNeighbours(const NodeValues &values, std::vector<Level> &levels) {
    struct Interval {
        float low = infinity, high = -infinity;
        bool isUsed = false;
    };
    std::vector<float> bounds;
    bounds.reserve(levels.size());
    for (const Level &level : levels)
        bounds.push_back(level.value);
    std::vector<Interval> intervals(levels.size() + 1); // [i]: the field values between levels i - 1 and i
    for (const std::span<const float> part : values.parts)
        for (const float value : part) {
            const std::size_t i = firstNotBelow(bounds, value);
            if ((i < bounds.size() && bounds[i] == value) || std::isnan(value))
                continue;
            intervals[i].low = std::min(intervals[i].low, value);
            intervals[i].high = std::max(intervals[i].high, value);
            intervals[i].isUsed = true;
        }
    for (std::size_t i = 0; i < levels.size(); ++i) {
        levels[i].below = std::max(intervals[i].high, i > 0 ? bounds[i - 1] : -infinity);
        levels[i].above = std::min(intervals[i + 1].low, i + 1 < bounds.size() ? bounds[i + 1] : infinity);
        levels[i].hasAbove = intervals[i + 1].isUsed || i + 1 < bounds.size();
    }
}

/// Distances from an isovalue to the field values, beyond the nearest ones: needed only where a shift is lost
/// to rounding.
class FarDistances {
public:
    explicit FarDistances(const NodeValues &values) : m_values(values) {}

    /// The smallest distance above `previous` and below `noGap`, else `noGap`.
    double next(float isovalue, double previous) {
        // The first few by looking at all values; a sorted copy pays when many isovalues need it.
        if (++m_calls <= 16)
            return nextByScan(isovalue, previous);
        if (m_sorted.empty())
            sort();
        const auto middle = std::lower_bound(m_sorted.begin(), m_sorted.end(), isovalue);
        const auto isNear = [=](float value) { return std::abs(double(value) - isovalue) <= previous; };
        const auto above = std::partition_point(middle, m_sorted.end(), isNear);
        const auto below = std::partition_point(std::reverse_iterator(middle), m_sorted.rend(), isNear);
        double gap = noGap;
        if (above != m_sorted.end())
            gap = std::min(gap, std::abs(double(*above) - isovalue));
        if (below != m_sorted.rend())
            gap = std::min(gap, std::abs(double(*below) - isovalue));
        return gap;
    }

private:
    double nextByScan(float isovalue, double previous) const {
        double gap = noGap;
        for (const std::span<const float> part : m_values.parts)
            for (const float value : part) {
                const double distance = std::abs(double(value) - isovalue);
                if (distance > previous && distance < gap)
                    gap = distance;
            }
        return gap;
    }

    void sort() {
        for (const std::span<const float> part : m_values.parts)
            std::copy_if(part.begin(), part.end(), std::back_inserter(m_sorted),
                         [](float value) { return std::isfinite(value); });
        std::sort(m_sorted.begin(), m_sorted.end());
    }

    const NodeValues &m_values;
    std::vector<float> m_sorted;
    int m_calls = 0;
};

float plus(float isovalue, double shift) {
    return static_cast<float>(isovalue + shift);
}

/// The isovalue of `level`, moved. One per cent of the gap to the nearest value, up to ten where that is lost
/// to rounding, then the same with the next larger gap.
float moved(const Level &level, FarDistances &distances) {
    const double direction = level.hasAbove ? 1.0 : -1.0;
    float isovalue = level.value;
    double gap = std::min({noGap, double(isovalue) - level.below, double(level.above) - isovalue});
    for (;;) {
        const float start = isovalue;
        double factor = 0.01;
        isovalue = plus(isovalue, gap * factor * direction);
        while (isovalue == start && factor < 0.1) {
            factor += 0.01;
            isovalue = plus(isovalue, gap * factor * direction);
        }
        // Without a farther value no round to come could differ from this one.
        if (isovalue != start || !(gap < noGap))
            return isovalue;
        isovalue = plus(isovalue, gap); // upwards, whatever the direction
        gap = distances.next(isovalue, gap);
    }
}

} // namespace

NodeValues::NodeValues(int num1, const float *data1, int num2, const float *data2, int num3,
                       const float *data3)
    : parts{arrayOf(num1, data1), arrayOf(num2, data2), arrayOf(num3, data3)} {}

int adjustIsovalues(const NodeValues &values, std::span<float> isovalues) {
    std::vector<Level> levels = sortedLevels(isovalues);
    countHits(values, levels);
    std::erase_if(levels, [](const Level &level) { return level.hits == 0; });
    // The total of all arrays is compared with the first alone: deliberate.
    const std::size_t constant = values.parts[0].size();
    const auto isMoved = [=](const Level &level) { return level.hits != constant; };
    if (std::none_of(levels.begin(), levels.end(), isMoved))
        return 0;
    findNeighbours(values, levels);
    FarDistances distances(values);
    for (Level &level : levels)
        if (isMoved(level))
            level.target = moved(level, distances);
    for (float &isovalue : isovalues) {
        const auto level = std::lower_bound(levels.begin(), levels.end(), isovalue,
                                            [](const Level &a, float value) { return a.value < value; });
        if (level != levels.end() && level->value == isovalue && isMoved(*level))
            isovalue = level->target;
    }
    return 1;
}

} // namespace oravane
