#include "geometry/BorderLoops.h"

#include <algorithm>
#include <numeric>
#include <utility>

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

/// `forEach` calls what it is given with each node and its entry. Entries of a node keep their order; those
/// of node n stand from `m_start[n]` to `m_start[n + 1]`.
template <class Entry, class ForEach>
void BorderLoops::groupByNode(int numNodes, std::vector<Entry> &grouped, ForEach forEach) {
    m_start.assign(static_cast<std::size_t>(numNodes) + 2, 0);
    forEach([this](int node, const Entry &) { ++m_start[node + 2]; });
    std::partial_sum(m_start.begin(), m_start.end(), m_start.begin());
    grouped.resize(m_start.back());
    forEach([&](int node, const Entry &entry) { grouped[m_start[node + 1]++] = entry; });
}

// Of a side that occurs an odd number of times, the last occurrence stays: the one that a table would hold
// which takes sides in and out by turns.
void BorderLoops::keepOddSides(int numNodes) {
    groupByNode(numNodes, m_byLow, [this](auto take) {
        for (std::uint32_t k = 0; k < m_sides.size(); ++k)
            take(m_sides[k].low, {m_sides[k].high, k});
    });
    m_border.clear();
    for (int node = 0; node < numNodes; ++node) {
        const auto begin = m_byLow.begin() + m_start[node], end = m_byLow.begin() + m_start[node + 1];
        std::sort(begin, end, [](const Numbered &a, const Numbered &b) {
            return a.high != b.high ? a.high < b.high : a.side < b.side;
        });
        for (auto first = begin; first != end;) {
            auto next = first + 1;
            while (next != end && next->high == first->high)
                ++next;
            if ((next - first) % 2 == 1)
                m_border.push_back((next - 1)->side);
            first = next;
        }
    }
}

void BorderLoops::sortAsChained() {
    std::vector<std::pair<std::int64_t, std::uint32_t>> chained;
    chained.reserve(m_border.size());
    for (const std::uint32_t k : m_border) {
        constexpr std::int64_t numChains = 1003;
        const std::int64_t low = m_sides[k].low, high = m_sides[k].high;
        chained.emplace_back((low + high + (low + 1) % numChains * ((high + 1) % numChains)) % numChains, k);
    }
    std::sort(chained.begin(), chained.end(), [](const auto &a, const auto &b) {
        return a.first != b.first ? a.first < b.first : a.second > b.second;
    });
    std::transform(chained.begin(), chained.end(), m_border.begin(),
                   [](const auto &side) { return side.second; });
}

void BorderLoops::linkNodes(int numNodes) {
    groupByNode(numNodes, m_ends, [this](auto take) {
        for (std::uint32_t k = 0; k < m_border.size(); ++k) {
            take(m_sides[m_border[k]].low, k);
            take(m_sides[m_border[k]].high, k);
        }
    });
}

// From the higher end of a side around to its lower end, always along the first side in order that is left.
void BorderLoops::walkFrom(std::size_t side) {
    const auto nextFrom = [this](std::int32_t node) {
        std::uint32_t &place = m_start[node]; // moves on: what is used up is never looked at again
        while (m_isUsed[m_ends[place]])
            ++place;
        return m_ends[place];
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
    linkNodes(numNodes);
    m_nodes.clear();
    m_loopStart.assign(1, 0);
    m_isUsed.assign(m_border.size(), 0);
    for (std::size_t side = 0; side < m_border.size(); ++side)
        if (!m_isUsed[side])
            walkFrom(side);
}

} // namespace oravane
