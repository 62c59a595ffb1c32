#ifndef ORAVANE_TESTS_GEOMETRY_CONTOURFIELDS_H
#define ORAVANE_TESTS_GEOMETRY_CONTOURFIELDS_H

#include <oravane/PlanarRecords.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

inline bool operator==(const Ppoint3 &a, const Ppoint3 &b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

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
    const auto noise = [&random](int, int) { return static_cast<float>(random()) / 4294967296.0f; };
    const auto smooth = [](int i, int j) { return std::sin(0.21 * i) * std::cos(0.17 * j) + 0.01 * i; };
    const auto board = [](int i, int j) { return (i + j) % 2; };
    const auto roughBoard = [=](int i, int j) {
        return 0.9f * noise(i, j) + static_cast<float>(board(i, j));
    };
    const auto steps = [=](int i, int j) { return std::floor(5 * noise(i, j)); };
    const auto holes = [=](int i, int j) {
        return noise(i, j) < 0.1f ? (i % 2 ? NAN : -INFINITY) : noise(i, j);
    };
    return {
        contourCase("smooth", 37, 41, evenLevels(-1, 1.5f, 12), smooth),
        contourCase("random", 29, 33, evenLevels(0.11f, 1, 5), noise),
        contourCase("many levels in a cell", 12, 9, evenLevels(0, 1, 150), noise),
        contourCase("board of saddles", 18, 15, {-0.4f, 0.5f, 0.75f}, board),
        contourCase("random saddles", 30, 30, {0.5f}, roughBoard),
        contourCase("values on the levels", 25, 25, {0, 1, 2, 3, 4}, steps),
        contourCase("levels twice", 11, 11, {0.3f, 0.3f, 0.7f}, noise),
        contourCase("levels out of order", 11, 11, {0.5f, 0.1f, 0.8f, 0.6f}, noise),
        contourCase("saddles, levels out of order", 8, 8, {0.2f, 0.8f, 0.4f, 0.6f}, board),
        contourCase("levels outside", 6, 7, {-5, 5}, noise),
        contourCase("no levels", 6, 7, {}, smooth),
        contourCase("one cell", 2, 2, {0.5f}, board),
        contourCase("one row of nodes", 1, 9, {0.5f}, board),
        contourCase("one column of nodes", 9, 1, {0.5f}, board),
        contourCase("no nodes", 0, 0, {1}, smooth),
        contourCase("holes", 26, 23, evenLevels(0.1f, 1, 4), holes),
        contourCase("a wide row", 3, 200, evenLevels(-1, 1, 7), smooth),
    };
}

/// The polygons of a list of point numbers with a -1 behind each.
inline std::vector<std::vector<int>> polygonsOf(std::span<const std::int32_t> indices) {
    std::vector<std::vector<int>> polygons;
    std::vector<int> polygon;
    for (const int index : indices)
        if (index >= 0)
            polygon.push_back(index);
        else
            polygons.push_back(std::exchange(polygon, {}));
    return polygons;
}

/// Sum of the areas of polygons in the plane; those that go round clockwise count as negative.
inline double areaOf(const std::vector<std::vector<int>> &polygons, const std::vector<Ppoint3> &points) {
    double twice = 0;
    for (const std::vector<int> &polygon : polygons)
        for (std::size_t k = 0; k < polygon.size(); ++k) {
            const Ppoint3 &p = points[polygon[k]], &q = points[polygon[(k + 1) % polygon.size()]];
            twice += static_cast<double>(p.x) * q.y - static_cast<double>(q.x) * p.y;
        }
    return twice / 2;
}

} // namespace oravane

#endif
