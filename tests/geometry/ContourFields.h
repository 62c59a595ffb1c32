#ifndef ORAVANE_TESTS_GEOMETRY_CONTOURFIELDS_H
#define ORAVANE_TESTS_GEOMETRY_CONTOURFIELDS_H

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace oravane {

/// A field on the nodes of a grid, with levels.
struct ContourCase {
    std::string name;
    int numI, numJ;
    std::vector<float> values, levels;
};

inline std::vector<float> evenLevels(float first, float last, int count) {
    std::vector<float> levels;
    for (int k = 0; k < count; ++k)
        levels.push_back(first + (last - first) * static_cast<float>(k) / static_cast<float>(count));
    return levels;
}

template <class Value>
ContourCase contourCase(std::string name, int numI, int numJ, std::vector<float> levels, Value value) {
    ContourCase result{std::move(name), numI, numJ, {}, std::move(levels)};
    for (int i = 0; i < numI; ++i)
        for (int j = 0; j < numJ; ++j)
            result.values.push_back(static_cast<float>(value(i, j)));
    return result;
}

/// Fields that differ in what makes contouring hard.
inline std::vector<ContourCase> contourCases() {
    std::mt19937 random(17);
    const auto uniform = [&random] { return static_cast<float>(random()) / 4294967296.0f; };
    const float nan = std::numeric_limits<float>::quiet_NaN(),
                infinity = std::numeric_limits<float>::infinity();
    const auto smooth = [](int i, int j) { return std::sin(0.21 * i) * std::cos(0.17 * j) + 0.01 * i; };
    std::vector<ContourCase> cases{
        contourCase("smooth", 37, 41, evenLevels(-1, 1.5f, 12), smooth),
        contourCase("random", 29, 33, evenLevels(0.11f, 1, 5), [&](int, int) { return uniform(); }),
        contourCase("many levels in a cell", 12, 9, evenLevels(0, 1, 150),
                    [&](int, int) { return uniform(); }),
        contourCase("board of saddles", 18, 15, {-0.4f, 0.5f, 0.75f},
                    [](int i, int j) { return (i + j) % 2; }),
        contourCase("random saddles", 30, 30, {0.5f},
                    [&](int i, int j) { return 0.9f * uniform() + (i + j) % 2; }),
        contourCase("values on the levels", 25, 25, {0, 1, 2, 3},
                    [&](int, int) { return std::floor(5 * uniform()); }),
        contourCase("levels twice", 11, 11, {0.3f, 0.3f, 0.7f}, [&](int, int) { return uniform(); }),
        contourCase("levels out of order", 11, 11, {0.5f, 0.1f, 0.8f, 0.6f},
                    [&](int, int) { return uniform(); }),
        contourCase("saddles, levels out of order", 8, 8, {0.2f, 0.8f, 0.4f, 0.6f},
                    [](int i, int j) { return (i + j) % 2; }),
        contourCase("uniform", 6, 7, {1, 2, 3}, [](int, int) { return 2; }),
        contourCase("levels outside", 6, 7, {-5, 5}, [&](int, int) { return uniform(); }),
        contourCase("no levels", 6, 7, {}, smooth),
        contourCase("one cell", 2, 2, {0.5f}, [](int i, int j) { return (i + j) % 2; }),
        contourCase("one row of nodes", 1, 9, {3.5f}, [](int, int j) { return j; }),
        contourCase("one column of nodes", 9, 1, {3.5f}, [](int i, int) { return i; }),
        contourCase("no nodes", 0, 0, {1}, smooth),
        contourCase("holes", 26, 23, evenLevels(0.1f, 1, 4),
                    [&](int i, int) { return uniform() < 0.1f ? (i % 2 ? nan : -infinity) : uniform(); }),
        contourCase("a wide row", 3, 200, evenLevels(-1, 1, 7), smooth),
    };
    return cases;
}

} // namespace oravane

#endif
