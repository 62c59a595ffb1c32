#ifndef ORAVANE_GEOMETRY_ISOLEVELS_H
#define ORAVANE_GEOMETRY_ISOLEVELS_H

#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// The levels of a contouring, and the band of each node between them.
///
/// The band of a value is the number of levels that stand before the first level not below it. The levels
/// that cross an edge are then exactly those numbered from the lower band of its ends up to, and without, the
/// higher one: all further questions of "is there a crossing" are comparisons of small integers.
class IsoLevels {
public:
    /// Band of a node whose value is not finite: its cells are neither crossed nor filled.
    static constexpr std::int32_t NO_BAND = -1;

    /// Takes `levels`, ascending as a rule; out of order, a level is passed by where an earlier one reaches
    /// higher. Levels that are not numbers are left out.
    void assign(std::span<const float> levels);

    int count() const { return static_cast<int>(m_levels.size()); }
    float operator[](int index) const { return m_levels[index]; }

    /// Writes the band of each value to `bands`, which has room for `values.size()`.
    void classify(std::span<const float> values, std::int32_t *bands) const;

private:
    void classifyByCounting(std::span<const float> values, std::int32_t *bands) const;
    void classifyBySearch(std::span<const float> values, std::int32_t *bands) const;

    std::vector<float> m_levels;
    /// Running maximum of the levels: the first level not below a value is where this first is not below it.
    std::vector<float> m_reach;
};

} // namespace oravane

#endif
