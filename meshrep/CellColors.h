#ifndef ORAVANE_MESHREP_CELLCOLORS_H
#define ORAVANE_MESHREP_CELLCOLORS_H

#include <Inventor/SbVec3f.h>

#include <cmath>
#include <span>

class PbDataMapping;
class SoMFVec3f;

namespace oravane {

inline bool isFinite(const SbVec3f &point) {
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

/// Moves the points without a finite position, which no shape may use, to the origin. Text files have no
/// words for them, and could not be read again.
void clearUndefinedPoints(SoMFVec3f &points);

/// The value that colours a cell: the mean of its corners. Under a mapping with transparency, a cell that
/// touches the region beyond an enabled threshold takes the value of that threshold, the upper one first;
/// otherwise its mean could lie in the visible range.
class CellValue {
public:
    explicit CellValue(const PbDataMapping &mapping);

    template <class... Values>
    float operator()(Values... corners) const {
        if (m_hasMax && !(... && (corners < m_max)) && !(... || std::isnan(corners)))
            return m_max;
        if (m_hasMin && !(... && (corners > m_min)) && !(... || std::isnan(corners)))
            return m_min;
        return static_cast<float>((... + static_cast<double>(corners)) /
                                  static_cast<double>(sizeof...(corners)));
    }

    /// The value of a cell of any number of nodes. Beyond both thresholds, the last node in order that is
    /// beyond one decides between them.
    float ofPolygon(std::span<const int> nodes, const float *values) const;

private:
    float m_min = 0, m_max = 0;
    bool m_hasMin = false, m_hasMax = false;
};

} // namespace oravane

#endif
