#ifndef ORAVANE_GEOMETRY_BORDERLOOPS_H
#define ORAVANE_GEOMETRY_BORDERLOOPS_H

#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// Finds the border of a mesh of any cells: the sides that occur an odd number of times, joined to closed
/// loops.
///
/// \code
///   BorderLoops border;
///   for (each cell, each side a-b of it) border.addSide(a, b);
///   border.join(numNodes);
///   for (std::size_t k = 0; k < border.numLoops(); ++k) draw(border.loop(k));
/// \endcode
///
/// Every node has an even number of border sides, so each walk ends where it began, also where several loops
/// meet in one node. The order of sides, and with it that of the loops and their direction, is that of a hash
/// table of 1003 chains with new sides in front; it is kept so that the same mesh always gives the same
/// polylines. Cost grows with the number of sides, and for the border with n log n. Buffers are kept from one
/// use to the next.
class BorderLoops {
public:
    void clear();
    /// A side between two nodes, in either direction; one of no length is left out. Node numbers are not
    /// negative.
    void addSide(int a, int b);
    /// Makes the loops of the sides added since `clear`. All node numbers are below `numNodes`.
    void join(int numNodes);

    std::size_t numLoops() const { return m_loopStart.size() - 1; }
    /// Nodes of a loop; the first one stands at its end once more.
    std::span<const int> loop(std::size_t index) const;

private:
    struct Side {
        std::int32_t low, high;
    };

    void keepOddSides(int numNodes);
    void sortAsChained();
    void linkNodes();
    void walkFrom(std::size_t side);

    std::vector<Side> m_sides;
    std::vector<std::uint32_t> m_start;  ///< first place of each lower end in `m_byLow`
    std::vector<std::uint32_t> m_byLow;  ///< numbers of the sides, grouped by their lower end
    std::vector<std::uint32_t> m_border; ///< numbers of the border sides, in chain order
    std::vector<std::uint8_t> m_isUsed;  ///< of each border side
    struct End {
        std::int32_t node;
        std::uint32_t side; ///< place in `m_border`
    };
    std::vector<End> m_ends;             ///< both ends of all border sides, by node and then by side
    std::vector<std::uint32_t> m_passed; ///< at the first end of each node: how many of them are used up
    std::vector<int> m_nodes;
    std::vector<std::size_t> m_loopStart{0};
};

} // namespace oravane

#endif
