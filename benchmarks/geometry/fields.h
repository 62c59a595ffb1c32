#ifndef ORAVANE_BENCHMARKS_GEOMETRY_FIELDS_H
#define ORAVANE_BENCHMARKS_GEOMETRY_FIELDS_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

/// Deterministic fields, so that all libraries are measured on the same numbers, on any machine.
namespace fields {

class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15ull + 0x1234567ull) {}
    /// In [0, 1).
    double uniform() {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1.0p-53;
    }
    double uniform(double a, double b) { return a + (b - a) * uniform(); }

private:
    std::uint64_t m_state;
};

/// SMOOTH: hills and a gentle wave, few long lines. ROUGH: a wave 12 times finer and 4 times higher,
/// thousands of closed lines.
enum Kind { SMOOTH, ROUGH };

/// n x n samples over the unit square, the second index running fastest.
inline std::vector<float> grid(int n, Kind kind) {
    const double waves = kind == SMOOTH ? 4 : 48, amplitude = kind == SMOOTH ? 0.1 : 0.4;
    struct Hill {
        double x, y, w, a;
    };
    std::array<Hill, 24> hills{};
    Random random(31);
    for (Hill &hill : hills) {
        hill.x = random.uniform();
        hill.y = random.uniform();
        const double s = random.uniform(0.04, 0.15);
        hill.w = 1 / (2 * s * s);
        hill.a = random.uniform(-1.0, 1.0);
    }
    const auto position = [n](int i) { return static_cast<double>(i) / (n - 1); };
    const auto bump = [](double w, double d) { return std::exp(-w * d * d); };
    std::vector<double> along(hills.size() * n);
    for (std::size_t k = 0; k < hills.size(); ++k)
        for (int i = 0; i < n; ++i)
            along[k * n + i] = bump(hills[k].w, position(i) - hills[k].x);
    std::vector<double> row(n);
    std::vector<float> values;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j)
            row[j] = amplitude * std::sin(2 * std::numbers::pi * waves * position(i)) *
                     std::sin(2 * std::numbers::pi * waves * position(j));
        for (std::size_t k = 0; k < hills.size(); ++k) {
            const double s = hills[k].a * bump(hills[k].w, position(i) - hills[k].y);
            for (int j = 0; j < n; ++j)
                row[j] += s * along[k * n + j];
        }
        values.insert(values.end(), row.begin(), row.end());
    }
    return values;
}

/// `count` levels strictly inside of the range of `values`, evenly spaced.
inline std::vector<float> levels(const std::vector<float> &values, int count) {
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    const double min = *low, max = *high;
    std::vector<float> result;
    for (int k = 0; k < count; ++k)
        result.push_back(static_cast<float>(min + (max - min) * (k + 1.0) / (count + 1.0)));
    return result;
}

} // namespace fields

#endif
