#ifndef ORAVANE_GEOMETRY_GRIDPOSITIONS_H
#define ORAVANE_GEOMETRY_GRIDPOSITIONS_H

#include <cmath>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace oravane {

/// A coordinate along a crossed edge, as a linear function of the level.
///
/// In double precision: the offset is a difference of large numbers where the values of the ends are close.
class EdgeCoordinate {
public:
    EdgeCoordinate(double pa, double va, double pb, double vb)
        : m_slope((pa - pb) / (va - vb)), m_offset(pa - m_slope * va) {}
    double at(double level) const { return m_slope * level + m_offset; }

private:
    double m_slope, m_offset;
};

/// \name Where the nodes of a structured grid are
/// Each of these kinds has `node(i, j)`, and gives for the edge that leaves node (i, j) in direction i or j,
/// with the values `va` and `vb` at its ends, a function from a level to the crossing.
/// @{

/// One x and one y for each node, at i * numJ + j.
struct CartesianPositions {
    const float *x, *y;
    std::size_t numJ;

    std::size_t index(int i, int j) const { return static_cast<std::size_t>(i) * numJ + j; }
    auto between(std::size_t a, std::size_t b, float va, float vb) const {
        return
            [cx = EdgeCoordinate(x[a], va, x[b], vb), cy = EdgeCoordinate(y[a], va, y[b], vb)](float level) {
                return std::pair(static_cast<float>(cx.at(level)), static_cast<float>(cy.at(level)));
            };
    }

    std::pair<float, float> node(int i, int j) const { return {x[index(i, j)], y[index(i, j)]}; }
    auto alongI(int i, int j, float va, float vb) const {
        return between(index(i, j), index(i + 1, j), va, vb);
    }
    auto alongJ(int i, int j, float va, float vb) const {
        return between(index(i, j), index(i, j + 1), va, vb);
    }
};

/// One x for each i and one y for each j.
struct SeparablePositions {
    const float *x, *y;

    std::pair<float, float> node(int i, int j) const { return {x[i], y[j]}; }
    auto alongI(int i, int j, float va, float vb) const {
        return [c = EdgeCoordinate(x[i], va, x[i + 1], vb), own = y[j]](float level) {
            return std::pair(static_cast<float>(c.at(level)), own);
        };
    }
    auto alongJ(int i, int j, float va, float vb) const {
        return [c = EdgeCoordinate(y[j], va, y[j + 1], vb), own = x[i]](float level) {
            return std::pair(own, static_cast<float>(c.at(level)));
        };
    }
};

/// One radius for each i and one angle, in radians, for each j. A crossing of an edge with a fixed radius
/// lies on the arc, not on its chord.
class PolarPositions {
public:
    PolarPositions(const float *radius, std::span<const float> angle)
        : m_radius(radius), m_angle(angle.data()) {
        m_direction.reserve(angle.size());
        for (const float t : angle)
            m_direction.emplace_back(std::cos(static_cast<double>(t)), std::sin(static_cast<double>(t)));
    }

    std::pair<float, float> node(int i, int j) const { return scaled(m_radius[i], m_direction[j]); }
    auto alongI(int i, int j, float va, float vb) const {
        return [c = EdgeCoordinate(m_radius[i], va, m_radius[i + 1], vb), d = m_direction[j]](float level) {
            return scaled(c.at(level), d);
        };
    }
    auto alongJ(int i, int j, float va, float vb) const {
        return [c = EdgeCoordinate(m_angle[j], va, m_angle[j + 1], vb), r = m_radius[i]](float level) {
            const double t = c.at(level);
            return scaled(r, {std::cos(t), std::sin(t)});
        };
    }

private:
    static std::pair<float, float> scaled(double r, const std::pair<double, double> &direction) {
        return {static_cast<float>(r * direction.first), static_cast<float>(r * direction.second)};
    }

    const float *m_radius, *m_angle;
    std::vector<std::pair<double, double>> m_direction; ///< cosine and sine of each angle
};

/// @}

} // namespace oravane

#endif
