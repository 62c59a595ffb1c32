#include "mesh/Delaunay.h"

#include <oravane/PiVoronoi2D.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using Point = std::pair<float, float>;
using Points = std::vector<Point>;

/// A whole number of 1280 bits in two's complement: any finite float in units of 2^-149, and the sums of
/// products of four such numbers.
struct Whole {
    std::array<std::uint32_t, 40> limbs{};
    Whole() = default;
    explicit Whole(float value) {
        const auto bits = std::bit_cast<std::uint32_t>(value);
        const std::uint32_t exponent = bits >> 23 & 255, shift = std::max(exponent, 1u) - 1;
        const std::uint64_t mantissa = (bits & 0x7fffff) | (exponent > 0 ? 1 << 23 : 0);
        limbs[shift / 32] = static_cast<std::uint32_t>(mantissa << shift % 32);
        limbs[shift / 32 + 1] = static_cast<std::uint32_t>(mantissa << shift % 32 >> 32);
        if (bits >> 31)
            *this = Whole() - *this;
    }
    Whole operator-(const Whole &other) const {
        Whole result;
        std::int64_t carry = 0;
        for (std::size_t i = 0; i < limbs.size(); ++i, carry >>= 32) {
            carry += std::int64_t{limbs[i]} - other.limbs[i];
            result.limbs[i] = static_cast<std::uint32_t>(carry);
        }
        return result;
    }
    Whole operator+(const Whole &other) const { return *this - (Whole() - other); }
    Whole operator*(const Whole &other) const {
        Whole result;
        for (std::size_t i = 0; i < limbs.size(); ++i) {
            std::uint64_t carry = 0;
            for (std::size_t j = 0; limbs[i] != 0 && i + j < limbs.size(); ++j, carry >>= 32) {
                carry += std::uint64_t{limbs[i]} * other.limbs[j] + result.limbs[i + j];
                result.limbs[i + j] = static_cast<std::uint32_t>(carry);
            }
        }
        return result;
    }
    int sign() const { return limbs.back() >> 31 ? -1 : *this != Whole(); }
    bool operator==(const Whole &) const = default;
};

/// Twice the area of a triangle, positive when it is counter-clockwise.
Whole area(Point a, Point b, Point c) {
    const Whole x(c.first), y(c.second);
    return (Whole(a.first) - x) * (Whole(b.second) - y) - (Whole(a.second) - y) * (Whole(b.first) - x);
}

/// Positive for a point inside of the circle through counter-clockwise corners.
int circleSide(const std::array<Point, 3> &corners, Point p) {
    std::array<Whole, 3> x, y, lift;
    for (int k = 0; k < 3; ++k) {
        x[k] = Whole(corners[k].first) - Whole(p.first);
        y[k] = Whole(corners[k].second) - Whole(p.second);
        lift[k] = x[k] * x[k] + y[k] * y[k];
    }
    Whole determinant;
    for (int k = 0; k < 3; ++k) {
        const int l = (k + 1) % 3, m = (k + 2) % 3;
        determinant = determinant + lift[k] * (x[l] * y[m] - x[m] * y[l]);
    }
    return determinant.sign();
}

/// The corners of the convex hull and all points on its sides, counter-clockwise.
Points hullOf(const Points &sorted) {
    Points hull;
    const auto addChain = [&](auto begin, auto end) {
        const std::size_t first = hull.size();
        for (auto point = begin; point != end; hull.push_back(*point++))
            while (hull.size() >= first + 2 && area(hull.end()[-2], hull.back(), *point).sign() < 0)
                hull.pop_back();
        hull.pop_back();
    };
    addChain(sorted.begin(), sorted.end());
    addChain(sorted.rbegin(), sorted.rend());
    return hull;
}

std::vector<std::array<std::int32_t, 3>> triangulate(const Points &points) {
    std::vector<float> x, y;
    for (const auto &[px, py] : points) {
        x.push_back(px);
        y.push_back(py);
    }
    const oravane::Delaunay triangulation(x, y);
    std::vector<std::array<std::int32_t, 3>> triangles(triangulation.numTriangles());
    triangulation.write(triangles.empty() ? nullptr : triangles.front().data());
    return triangles;
}

/// Triangles that are counter-clockwise, share sides in opposite directions and end at the sides of the hull
/// cover it once; by their number they use all points. That no neighbour's corner is in a circle then makes
/// all circles empty.
void expectDelaunay(const Points &points) {
    std::map<Point, std::int32_t> first;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (std::isfinite(points[i].first) && std::isfinite(points[i].second))
            first.emplace(points[i], static_cast<std::int32_t>(i));
    Points sorted;
    for (const auto &entry : first)
        sorted.push_back(entry.first);
    const auto triangles = triangulate(points);
    std::map<std::pair<Point, Point>, Point> apexes; // by directed side
    for (const auto &triangle : triangles)
        for (int k = 0; k < 3; ++k) {
            const Point a = points[triangle[k]], b = points[triangle[(k + 1) % 3]],
                        c = points[triangle[(k + 2) % 3]];
            EXPECT_EQ(first[a], triangle[k]) << "a later copy";
            EXPECT_TRUE(apexes.emplace(std::pair(a, b), c).second) << "two triangles overlap";
            EXPECT_TRUE(k > 0 || area(a, b, c).sign() > 0);
        }
    const Points hull = hullOf(sorted);
    EXPECT_EQ(triangles.size(), 2 * sorted.size() - 2 - hull.size());
    std::set<std::pair<Point, Point>> hullSides;
    for (std::size_t i = 0; i < hull.size(); ++i)
        hullSides.emplace(hull[i], hull[(i + 1) % hull.size()]);
    for (const auto &[side, apex] : apexes) {
        const auto other = apexes.find({side.second, side.first});
        EXPECT_EQ(other == apexes.end(), hullSides.count(side) == 1);
        if (other != apexes.end() && side.first < side.second) {
            EXPECT_LE(circleSide({side.first, side.second, apex}, other->second), 0);
        }
    }
}

constexpr float nan = std::numeric_limits<float>::quiet_NaN(),
                infinite = std::numeric_limits<float>::infinity();
constexpr float largest = std::numeric_limits<float>::max(), denormal = 0x1p-149F;

template <class Make>
Points listOf(int count, Make make) {
    Points points;
    for (int i = 0; i < count; ++i) {
        const auto [x, y] = make(i);
        points.emplace_back(static_cast<float>(x), static_cast<float>(y));
    }
    return points;
}

std::mt19937 numbers(1);

int whole(int below) {
    return static_cast<int>(numbers() % below);
}

double real() {
    return static_cast<double>(numbers()) * 0x1p-32;
}

std::map<std::string, Points> awkwardPoints() {
    const auto anyFloat = [] { return std::bit_cast<float>(static_cast<std::uint32_t>(numbers())); };
    const auto onCircle = [](int i) { return std::pair(std::cos(i * 0.1), std::sin(i * 0.1)); };
    const auto onWholeCircle = [](int i) {
        const int x = i / 65 - 32, y = i % 65 - 32;
        return x * x + y * y == 25 * 25 ? std::pair(x, y) : std::pair(0, 25);
    };
    const auto onLineOfAllScales = [](int i) {
        return std::pair(std::ldexp(1, 2 * i - 90), std::ldexp(i % 4 ? 3 : 3 + 0x1p-22, 2 * i - 90));
    };
    const auto nearAndFar = [](int i) {
        const double scale = i % 3 == 0 ? 1 : i % 3 == 1 ? 1e-7 : 1e-14;
        return std::pair(0.5 + scale * (real() - 0.5), scale * (real() - 0.5));
    };
    const auto extreme = [](int i) {
        return std::pair((whole(3) - 1) * (i % 2 ? largest : denormal), (whole(3) - 1) * largest);
    };
    const auto clustered = [](int i) { return std::pair(i % 7 + 1e-4 * real(), i % 5 + 1e-6 * real()); };
    return {
        {"triangle", {{0, 0}, {0, 1}, {1, 0}}},
        {"square", {{0, 0}, {0, 1}, {1, 0}, {1, 1}}},
        {"lattice", listOf(400, [](int i) { return std::pair(i * 7 % 400 / 20, i * 7 % 20); })},
        {"side on an axis",
         listOf(60, [](int i) { return i < 50 ? std::pair(i, 0) : std::pair(5, i - 70); })},
        {"all but one on a line", listOf(60, [](int i) { return std::pair(i, i == 30 ? 31 : i); })},
        {"nearly on a line", listOf(99, [](int i) { return std::pair(i * 0.1, i * 0.3); })},
        {"line of all scales", listOf(90, onLineOfAllScales)},
        {"whole points on one circle", listOf(65 * 65, onWholeCircle)},
        {"rounded points on a circle", listOf(62, onCircle)},
        {"circle with a centre", listOf(63, [&](int i) { return i < 62 ? onCircle(i) : std::pair(0., 0.); })},
        {"a hair off a circle", {{1, 0}, {0, 1}, {-1, 0}, {0, -1}, {1e-30F, -1}, {1, 1e-20F}, {-1e-38F, 1}}},
        {"slivers at the hull",
         {{0, 0}, {1, 0}, {0.5F, 1}, {0.5F, -1e-30F}, {0.2F, -denormal}, {0.7F, 1e-38F}}},
        {"near and far", listOf(300, nearAndFar)},
        {"far from the origin", listOf(200, [](int) { return std::pair(1e6 + real(), -1e6 + whole(9)); })},
        {"one far away", listOf(500, [](int i) { return std::pair(i == 9 ? -1e30 : real(), real()); })},
        {"denormal", listOf(99, [](int) { return std::pair(whole(15) * denormal, whole(15) * denormal); })},
        {"from largest to smallest", listOf(90, extreme)},
        {"largest", listOf(90, [](int) { return std::pair((2 * real() - 1) * largest, real() * largest); })},
        {"any bits", listOf(200, [&](int) { return std::pair(anyFloat(), anyFloat()); })},
        {"not finite", {{nan, 0}, {0, 0}, {1, infinite}, {1, 0}, {-infinite, nan}, {0, 2}, {nan, 1}}},
        {"signed zeros", {{0, 0}, {-0.F, 0}, {1, 0}, {0, -0.F}, {0, 1}, {1, -0.F}, {-0.F, -0.F}}},
        {"copies", listOf(300, [](int) { return std::pair(whole(9), whole(9)); })},
        {"uniform", listOf(3000, [](int) { return std::pair(real(), real()); })},
        {"clusters", listOf(3000, clustered)},
    };
}

TEST(ExactPredicates, SignsAreRightForAnyPoints) {
    const auto sign = [](double value) { return (value > 0) - (value < 0); };
    const auto site = [](Point point) { return oravane::Site{point.first, point.second}; };
    for (const auto &[name, points] : awkwardPoints())
        for (int round = 0; round < 200 && name != "not finite" && name != "any bits"; ++round) {
            const auto any = [&points = points] { return points[whole(static_cast<int>(points.size()))]; };
            const Point a = any(), b = any(), c = any(), p = any();
            EXPECT_EQ(sign(oravane::orientation(site(a), site(b), site(c))), area(a, b, c).sign()) << name;
            EXPECT_EQ(sign(oravane::inCircle(site(a), site(b), site(c), site(p))), circleSide({a, b, c}, p))
                << name;
        }
}

TEST(Delaunay, IsExactForEveryInput) {
    for (const auto &[name, points] : awkwardPoints()) {
        SCOPED_TRACE(name);
        expectDelaunay(points);
    }
    for (int round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("lattice " + std::to_string(round));
        const int width = 2 + whole(6);
        Points points = listOf(1 + whole(30), [&](int) { return std::pair(whole(width), whole(width)); });
        points.insert(points.end(), {{0, 0}, {1, 0}, {0, 1}});
        expectDelaunay(points);
    }
}

TEST(Delaunay, PointsOnOneLineHaveNoTriangles) {
    for (const Points &points : {Points(), Points{{nan, 0}, {0, 0}, {1, 1}},
                                 Points{{-largest, -largest}, {largest, largest}, {denormal, denormal}},
                                 listOf(50, [](int) { return std::pair(0.1, 0.7); }),
                                 listOf(50, [](int i) { return std::pair(0.1, i * 0.7); }),
                                 listOf(50, [](int i) { return std::pair(i * i % 11, 3 * (i * i % 11)); })})
        EXPECT_TRUE(triangulate(points).empty()) << points.size();
}

TEST(PiVoronoi2D, GivesTrianglesToTheCaller) {
    const float x[] = {0, 1, 0, 1, 0}, y[] = {0, 0, 0, 1, 1};
    const struct {
        int n;
        const float *x, *y;
        int numTriangles;
    } rows[] = {{5, x, y, 2},  {4, x, y, 1},       {3, x, y, 0},      {2, x, y, 0},
                {-1, x, y, 0}, {5, nullptr, y, 0}, {5, x, nullptr, 0}};
    PiVoronoi2D triangulation;
    for (const auto &[n, xs, ys, expected] : rows) {
        triangulation.setPointsFields(n, xs, ys);
        int count = -1, stale = 0, *indices = &stale;
        triangulation.getGeometry(count, indices);
        EXPECT_EQ(count, expected) << n;
        EXPECT_EQ(indices == nullptr, count == 0);
        for (int i = 0; i < 3 * count; ++i)
            EXPECT_TRUE(indices[i] >= 0 && indices[i] < n && indices[i] != 2) << "the copy of node 0";
        std::free(indices);
    }
}

} // namespace
