#ifndef ORAVANE_VECTORIZE_PLACETREE_H
#define ORAVANE_VECTORIZE_PLACETREE_H

#include "vectorize/ExtentBlock.h"

#include <bit>
#include <cstddef>
#include <span>
#include <vector>

namespace oravane {

/// Indices of extents in the order in which a `PlaceTree` needs them: neighbours in x, y and z stand
/// together, distances being measured by the mean size of the extents along each axis, and large extents
/// stand apart from small ones. The time is that of n log n.
std::vector<int> orderForTree(std::span<const Extent> extents);

/// Finds polygons by what they take up of the view and by their place in the drawing order. Extents never
/// change, while places do: an R-tree packed from items in the order of the view, in which each node knows
/// the range of the places below it, or a wider one.
class PlaceTree {
public:
    /// Item number k has `extents[order[k]]` and place `places[order[k]]`.
    PlaceTree(std::span<const Extent> extents, std::span<const int> places, std::span<const int> order);

    /// Gives an item a new place. Places below `firstLive` are never asked for again.
    void move(int item, int place, int firstLive);

    /// The least place beyond `after` and below `end` of an item before whose farthest point `p` reaches, and
    /// for which `isWanted(item)` holds; `end` if there is none. `numVisited` is increased by the number of
    /// blocks that were looked at.
    template <class IsWanted>
    int firstPlace(const Extent &p, int after, int end, const IsWanted &isWanted, int &numVisited) const {
        return search(static_cast<int>(m_levels.size()) - 1, 0, p, after, end, isWanted, numVisited);
    }

private:
    static constexpr int kFanOut = ExtentBlock::kWidth;

    struct Block {
        ExtentBlock extents;
        Lanes<int> least, largest; ///< places

        void setItem(int lane, int place) {
            least.set(lane, place);
            largest.set(lane, place);
        }
        void setNode(int lane, const Block &below);
        bool setPlaces(int lane, const Block &below, int firstLive);
    };

    template <class IsWanted>
    int search(int level, std::size_t index, const Extent &p, int after, int end, const IsWanted &isWanted,
               int &numVisited) const {
        const Block &block = m_levels[level][index];
        ++numVisited;
        unsigned lanes = lanesThatPass([&](int h) {
            return block.extents.metBy(p, h) & (block.largest.half(h) > after) & (block.least.half(h) < end);
        });
        for (; lanes; lanes &= lanes - 1) {
            const int lane = std::countr_zero(lanes);
            if (block.least[lane] >= end)
                continue;
            const std::size_t child = index * kFanOut + lane;
            if (level > 0)
                end = search(level - 1, child, p, after, end, isWanted, numVisited);
            else if (isWanted(static_cast<int>(child)))
                end = block.least[lane];
        }
        return end;
    }

    std::vector<std::vector<Block>> m_levels; ///< the items, then the nodes above them, up to one block
};

} // namespace oravane

#endif
