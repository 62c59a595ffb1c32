#ifndef ORAVANE_GEOMETRY_BANDFACES_H
#define ORAVANE_GEOMETRY_BANDFACES_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace oravane {

/// The bands that pieces are coloured by: the values of the list as the application gave it, where the lines
/// between the pieces follow the adjusted levels.
class BandTable {
public:
    /// Takes the values in any order; those that are not numbers bound no band.
    void assign(std::span<const float> values) {
        m_bounds.clear();
        std::copy_if(values.begin(), values.end(), std::back_inserter(m_bounds),
                     [](float value) { return !std::isnan(value); });
        std::sort(m_bounds.begin(), m_bounds.end());
    }

    int numBands() const { return static_cast<int>(m_bounds.size()) + 1; }

    /// The bounds in ascending order; band b lies between bounds b - 1 and b, and holds its lower bound.
    std::span<const float> bounds() const { return m_bounds; }

    /// Number of bounds not above `value`. The search starts at `guess`, mostly right or next to it.
    int find(float value, int guess) const {
        const int count = static_cast<int>(m_bounds.size());
        int band = std::clamp(guess, 0, count);
        while (band < count && m_bounds[band] <= value)
            ++band;
        while (band > 0 && m_bounds[band - 1] > value)
            --band;
        return band;
    }

private:
    std::vector<float> m_bounds;
};

/// How much room the pieces of a contouring need at the most.
struct BandCounts {
    std::uint64_t points = 0;  ///< nodes and crossings
    std::uint64_t pieces = 0;  ///< polygons
    std::uint64_t indices = 0; ///< point numbers of all polygons, and a -1 behind each
};

/// Writes pieces into memory sized by BandCounts.
class BandFaces {
public:
    /// `indices` receives the polygons, `bands` the band of each.
    BandFaces(const BandTable &table, std::int32_t *indices, std::int32_t *bands)
        : m_table(table), m_firstIndex(indices), m_firstBand(bands), m_index(indices), m_band(bands) {}

    /// Adds a polygon whose values have the mean `mean`; `guess` as in BandTable::find.
    void add(std::span<const std::int32_t> points, float mean, int guess) {
        *m_band++ = m_table.find(mean, guess);
        m_index = std::copy(points.begin(), points.end(), m_index);
        *m_index++ = -1;
    }

    /// Takes out the pieces of bands for which `isDrawn(band)` is false.
    template <class IsDrawn>
    void keepOnly(IsDrawn isDrawn) {
        std::int32_t *index = m_firstIndex, *band = m_firstBand;
        const std::int32_t *from = m_firstIndex;
        for (const std::int32_t *piece = m_firstBand; piece != m_band; ++piece) {
            const std::int32_t *end = std::find(from, static_cast<const std::int32_t *>(m_index), -1) + 1;
            if (isDrawn(*piece)) {
                index = std::copy(from, end, index);
                *band++ = *piece;
            }
            from = end;
        }
        m_index = index;
        m_band = band;
    }

    std::span<const std::int32_t> pieceBands() const { return {m_firstBand, m_band}; }
    std::size_t numIndices() const { return static_cast<std::size_t>(m_index - m_firstIndex); }
    std::size_t numPieces() const { return static_cast<std::size_t>(m_band - m_firstBand); }

private:
    const BandTable &m_table;
    std::int32_t *const m_firstIndex, *const m_firstBand;
    std::int32_t *m_index, *m_band;
};

} // namespace oravane

#endif
