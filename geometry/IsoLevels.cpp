#include "geometry/IsoLevels.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace oravane {

namespace {

/// Above this many levels a search that starts at the neighbour's band beats counting all of them.
constexpr int MAX_COUNTED_LEVELS = 64;

/// Values and bands of one block stay in the first-level cache while the levels pass over them.
constexpr std::size_t BLOCK = 1024;

} // namespace

void IsoLevels::assign(std::span<const float> levels) {
    m_levels.clear();
    m_reach.clear();
    for (const float level : levels) {
        if (std::isnan(level))
            continue;
        m_reach.push_back(m_reach.empty() ? level : std::max(m_reach.back(), level));
        m_levels.push_back(level);
    }
}

void IsoLevels::classify(std::span<const float> values, std::int32_t *bands) const {
    if (count() > MAX_COUNTED_LEVELS) {
        classifyBySearch(values, bands);
        return;
    }
    for (std::size_t start = 0; start < values.size(); start += BLOCK)
        classifyByCounting(values.subspan(start, std::min(BLOCK, values.size() - start)), bands + start);
}

void IsoLevels::classifyByCounting(std::span<const float> values, std::int32_t *bands) const {
    constexpr float greatest = std::numeric_limits<float>::max();
    const std::size_t n = values.size();
    const float *v = values.data();
    std::fill_n(bands, n, 0);
    std::size_t k = 0;
    for (; k + 4 <= m_reach.size(); k += 4) { // four at a time: fewer passes over the block
        const float l0 = m_reach[k], l1 = m_reach[k + 1], l2 = m_reach[k + 2], l3 = m_reach[k + 3];
        for (std::size_t j = 0; j < n; ++j)
            bands[j] += (l0 < v[j]) + (l1 < v[j]) + (l2 < v[j]) + (l3 < v[j]);
    }
    for (; k < m_reach.size(); ++k) {
        const float level = m_reach[k];
        for (std::size_t j = 0; j < n; ++j)
            bands[j] += level < v[j];
    }
    for (std::size_t j = 0; j < n; ++j)
        bands[j] = std::fabs(v[j]) <= greatest ? bands[j] : NO_BAND;
}

void IsoLevels::classifyBySearch(std::span<const float> values, std::int32_t *bands) const {
    const auto first = m_reach.begin(), end = m_reach.end();
    auto at = first;
    for (std::size_t j = 0; j < values.size(); ++j) {
        const float value = values[j];
        if (!std::isfinite(value)) {
            bands[j] = NO_BAND;
            continue;
        }
        // Neighbours are mostly in the same band.
        if ((at != first && !(at[-1] < value)) || (at != end && *at < value))
            at = std::lower_bound(first, end, value);
        bands[j] = static_cast<std::int32_t>(at - first);
    }
}

} // namespace oravane
