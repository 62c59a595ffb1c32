#include "geometry/BorderLoops.h"

#include <algorithm>

namespace oravane {

void BorderLoops::clear() {
    m_sides.clear();
}

void BorderLoops::addSide(int a, int b) {
    if (a != b)
        m_sides.push_back({std::min(a, b), std::max(a, b)});
}

std::span<const int> BorderLoops::loop(std::size_t index) const {
    return std::span(m_nodes).subspan(m_loopStart[index], m_loopStart[index + 1] - m_loopStart[index]);
}

// Of a side that occurs an odd number of times, the last occurrence stays: the one that a table would hold
// which takes sides in and out by turns.
void BorderLoops::keepOddSides(int numNodes) {
    m_start.assign(static_cast<std::size_t>(numNodes) + 2, 0);
    for (const Side &side : m_sides)
        ++m_start[side.low + 2];
    for (std::size_t node = 2; node < m_start.size(); ++node)
        m_start[node] += m_start[node - 1];
    m_byLow.resize(m_sides.size());
    for (std::uint32_t k = 0; k < m_sides.size(); ++k)
        m_byLow[m_start[m_sides[k].low + 1]++] = k;
    m_border.clear();
    for (int node = 0; node < numNodes; ++node) {
        const auto begin = m_byLow.begin() + m_start[node], end = m_byLow.begin() + m_start[node + 1];
        std::sort(begin, end, [this](std::uint32_t a, std::uint32_t b) {
            return m_sides[a].high != m_sides[b].high ? m_sides[a].high < m_sides[b].high : a < b;
        });
        for (auto first = begin; first != end;) {
            auto next = first + 1;
            while (next != end && m_sides[*next].high == m_sides[*first].high)
                ++next;
            if ((next - first) % 2 == 1)
                m_border.push_back(*(next - 1));
            first = next;
        }
    }
}

void BorderLoops::sortAsChained() {
    const auto chainOf = [this](std::uint32_t k) {
        constexpr std::int64_t numChains = 1003;
        const std::int64_t low = m_sides[k].low, high = m_sides[k].high;
        return (low + high + (low + 1) % numChains * ((high + 1) % numChains)) % numChains;
    };
    std::sort(m_border.begin(), m_border.end(), [&](std::uint32_t a, std::uint32_t b) {
        const std::int64_t chainA = chainOf(a), chainB = chainOf(b);
        return chainA != chainB ? chainA < chainB : a > b;
    });
}

void BorderLoops::linkNodes() {
    m_ends.clear();
    for (std::uint32_t k = 0; k < m_border.size(); ++k) {
        m_ends.push_back({m_sides[m_border[k]].low, k});
        m_ends.push_back({m_sides[m_border[k]].high, k});
    }
    std::sort(m_ends.begin(), m_ends.end(), [](const End &a, const End &b) {
        return a.node != b.node ? a.node < b.node : a.side < b.side;
    });
    m_passed.assign(m_ends.size(), 0);
}

// From the higher end of a side around to its lower end, always along the first side in order that is left.
void BorderLoops::walkFrom(std::size_t side) {
    const auto nextFrom = [this](std::int32_t node) {
        const auto first = std::lower_bound(m_ends.begin(), m_ends.end(), node,
                                            [](const End &end, std::int32_t n) { return end.node < n; });
        std::uint32_t &passed = m_passed[first - m_ends.begin()];
        while (m_isUsed[first[passed].side])
            ++passed;
        return first[passed].side;
    };
    const Side &first = m_sides[m_border[side]];
    m_isUsed[side] = 1;
    m_nodes.push_back(first.high);
    for (std::int32_t node = first.high; node != first.low;) {
        const std::uint32_t next = nextFrom(node);
        m_isUsed[next] = 1;
        const Side &step = m_sides[m_border[next]];
        node = step.low == node ? step.high : step.low;
        m_nodes.push_back(node);
    }
    m_nodes.push_back(first.high);
    m_loopStart.push_back(m_nodes.size());
}

void BorderLoops::join(int numNodes) {
    keepOddSides(numNodes);
    sortAsChained();
    linkNodes();
    m_nodes.clear();
    m_loopStart.assign(1, 0);
    m_isUsed.assign(m_border.size(), 0);
    for (std::size_t side = 0; side < m_border.size(); ++side)
        if (!m_isUsed[side])
            walkFrom(side);
}

} // namespace oravane
