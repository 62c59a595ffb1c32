#include "geometry/BorderLoops.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <list>
#include <random>

namespace {

using Side = std::array<int, 2>;
using Loops = std::vector<std::vector<int>>;

Loops loopsOf(const std::vector<Side> &sides, int numNodes) {
    oravane::BorderLoops border;
    for (int use = 0; use < 2; ++use) { // buffers of a former use must not show
        border.clear();
        for (const Side &side : sides)
            border.addSide(side[use], side[1 - use]);
        border.join(numNodes);
    }
    Loops loops;
    for (std::size_t k = 0; k < border.numLoops(); ++k)
        loops.emplace_back(border.loop(k).begin(), border.loop(k).end());
    return loops;
}

/// The table that the order refers to, built side by side.
Loops loopsByTable(const std::vector<Side> &sides) {
    std::vector<std::list<Side>> chains(1003);
    for (const Side &side : sides) {
        const Side key{std::min(side[0], side[1]), std::max(side[0], side[1])};
        auto &chain = chains[(key[0] + key[1] + (key[0] + 1) % 1003 * ((key[1] + 1) % 1003)) % 1003];
        const auto found = std::find(chain.begin(), chain.end(), key);
        if (found != chain.end())
            chain.erase(found);
        else
            chain.push_front(key);
    }
    std::vector<Side> left;
    for (const auto &chain : chains)
        left.insert(left.end(), chain.begin(), chain.end());
    Loops loops;
    while (!left.empty()) {
        const Side first = left.front();
        left.erase(left.begin());
        std::vector<int> loop{first[1]};
        while (loop.back() != first[0]) {
            const auto next = std::find_if(left.begin(), left.end(), [&](const Side &side) {
                return side[0] == loop.back() || side[1] == loop.back();
            });
            loop.push_back((*next)[0] == loop.back() ? (*next)[1] : (*next)[0]);
            left.erase(next);
        }
        loop.push_back(first[1]);
        loops.push_back(loop);
    }
    return loops;
}

TEST(BorderLoops, HaveTheOrderOfTheTableForAnySides) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        // Triangles thrown on few nodes: sides of one, two, three and more cells, and nodes of many loops.
        const int numNodes = 4 + round * 3;
        std::vector<Side> sides;
        for (int triangle = 0; triangle < 4 * round; ++triangle) {
            const int start = static_cast<int>(random() % numNodes), a = (start + 1) % numNodes,
                      b = (start + 2 + static_cast<int>(random() % 5)) % numNodes;
            sides.insert(sides.end(), {{start, a}, {a, b}, {start, b}});
        }
        std::erase_if(sides, [](const Side &side) { return side[0] == side[1]; });
        EXPECT_EQ(loopsOf(sides, numNodes), loopsByTable(sides)) << round;
    }
}

TEST(BorderLoops, OfSidesThatCancelAreNone) {
    EXPECT_TRUE(loopsOf({{0, 1}, {1, 0}, {2, 2}}, 3).empty());
    EXPECT_TRUE(loopsOf({}, 0).empty());
}

} // namespace
