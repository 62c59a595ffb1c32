// Scattered points, the same in every run and with every compiler: the numbers are those of splitmix64.
#ifndef ORAVANE_BENCHMARKS_MESH_POINTS_H
#define ORAVANE_BENCHMARKS_MESH_POINTS_H

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace points {

enum Kind { UNIFORM, CLUSTERED, LATTICE };

class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}
    std::uint64_t next() {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    /// In [0, 1).
    double uniform() { return static_cast<double>(next() >> 11) * 0x1p-53; }

private:
    std::uint64_t m_state;
};

struct Points {
    std::vector<float> x, y;
    void add(double px, double py) {
        x.push_back(static_cast<float>(px));
        y.push_back(static_cast<float>(py));
    }
};

/// 50 clusters in the unit square, each nearly normal with a spread of 0.001 to 0.02.
inline void addClusters(Points &made, std::size_t count, Random &random) {
    for (std::size_t i = 0; i < count; ++i) {
        Random cluster(1000 + random.next() % 50);
        const double x = cluster.uniform(), y = cluster.uniform();
        const double spread = 0.001 + 0.019 * cluster.uniform();
        double a = -3, b = -3;
        for (int k = 0; k < 6; ++k) {
            a += random.uniform();
            b += random.uniform();
        }
        made.add(x + spread * a, y + spread * b);
    }
}

/// Whole coordinates in random order: all cells have four points on one circle.
inline void addLattice(Points &made, std::size_t count, Random &random) {
    const auto side = static_cast<std::size_t>(std::sqrt(static_cast<double>(count)));
    std::vector<std::size_t> ids(side * side);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const std::size_t other = random.next() % (i + 1);
        ids[i] = std::exchange(ids[other], i);
    }
    for (const std::size_t id : ids)
        made.add(static_cast<double>(id % side), static_cast<double>(id / side));
}

inline Points make(Kind kind, std::size_t count) {
    Random random(41);
    Points made;
    if (kind == CLUSTERED)
        addClusters(made, count, random);
    else if (kind == LATTICE)
        addLattice(made, count, random);
    else
        for (std::size_t i = 0; i < count; ++i)
            made.add(random.uniform(), random.uniform());
    return made;
}

} // namespace points

#endif
